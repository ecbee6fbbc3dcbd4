#include "import/bluewave.h"

#include <algorithm>
#include <string_view>

#include "foundation/numbers.h"
#include "foundation/regional.h"
#include "foundation/text.h"
#include "import/TextLines.h"
#include "import/pairedFiles.h"
#include "import/patternLines.h"

namespace vantrelix {

namespace {

constexpr std::string_view kFreqMark = "F=";
constexpr std::string_view kFreqUnit = "MHz";
constexpr std::string_view kDigits = "0123456789";
constexpr double kNoGain = -88888;

// The digits that the text begins with. A title's decimals stand behind a point, or behind the regional character.
double leadingNumber(std::string_view text) {
  const std::string& decimal = regionalCharacters().decimalCharacter;
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  const std::size_t whole = std::min(text.find_first_not_of(kDigits), text.size());
  const std::string_view behind = text.substr(whole);
  const std::size_t mark = behind.starts_with(decimal) ? decimal.size() : behind.starts_with('.') ? 1 : 0;
  const std::string_view decimals = behind.substr(mark, behind.find_first_not_of(kDigits, mark) - mark);
  return CValP(std::string(text.substr(0, whole)) + decimal + std::string(decimals));
}

double freqOf(std::string_view title) {
  const std::size_t mark = title.find(kFreqMark);
  if (mark == std::string_view::npos) return 0;
  const std::string_view behind = title.substr(mark + kFreqMark.size());
  return behind.find(kFreqUnit) == std::string_view::npos ? 0 : leadingNumber(behind);
}

void readTitle(TextLines& lines, ImportedAntenna& antenna) {
  antenna.GainUnits = "dBd";
  antenna.AntName = trim(CleanChars(lines.next()));
  antenna.Freq = antenna.FreqLow = antenna.FreqHigh = freqOf(antenna.AntName);
  antenna.PolLetter = upperCase(antenna.AntName).ends_with('V') ? "V" : "H";
}

void readAzimuth(TextLines& lines, ImportedAntenna& antenna) {
  readAzimuthLines(lines, antenna, {.absoluteLevels = true});
  raiseGainToPeak(antenna);
}

void readElevation(TextLines& lines, ImportedAntenna& antenna) {
  readElevationLines(lines, antenna, {.angle = negatedElevation, .absoluteLevels = true});
}

std::string partnerOf(const std::string& path, const ImportedAntenna& antenna) {
  return antenna.PolLetter == "V" ? withLastReplaced(path, "V", "H") : withLastReplaced(path, "H", "V");
}

constexpr PairRules kRules = {readTitle, readAzimuth, readElevation, "H", "V", partnerOf};

}  // namespace

void readBluewave(ImportSource& source, ImportedAntenna& antenna) {
  antenna.Gain = kNoGain;
  readPair(source, antenna, kRules);
}

}  // namespace vantrelix
