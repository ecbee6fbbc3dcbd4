#include "import/tiltek.h"

#include "foundation/text.h"
#include "import/TextLines.h"
#include "import/pairedFiles.h"
#include "import/patternLines.h"

namespace vantrelix {

namespace {

std::string cleanedLine(TextLines& lines) { return trim(CleanChars(TextLines::keptText(lines.next()))); }

void readHeader(TextLines& lines, ImportedAntenna& antenna) {
  antenna.AntName = cleanedLine(lines);
  const std::string plane = upperCase(leftCharacters(cleanedLine(lines), 1));
  antenna.PolLetter = plane == "E" ? "E" : "H";
  for (int unused = 0; unused < 2; ++unused) lines.next();
  antenna.Gain = 0;
  antenna.GainUnits = "dBd";
}

double oppositeAzimuth(double angle) { return wrapAzimuth(360 - angle); }

void readAzimuth(TextLines& lines, ImportedAntenna& antenna) {
  readAzimuthLines(lines, antenna, {.angle = oppositeAzimuth, .absoluteLevels = true});
  raiseGainToPeak(antenna);
}

void readElevation(TextLines& lines, ImportedAntenna& antenna) {
  readElevationLines(lines, antenna, {.angle = keptElevation, .absoluteLevels = true});
}

std::string partnerOf(const std::string& path, const ImportedAntenna& antenna) {
  return antenna.PolLetter == "E" ? withLastReplaced(path, "EL", "AZ") : withLastReplaced(path, "AZ", "EL");
}

constexpr PairRules kRules = {readHeader, readAzimuth, readElevation, "H", "E", partnerOf};

}  // namespace

void readTilTek(ImportSource& source, ImportedAntenna& antenna) { readPair(source, antenna, kRules); }

}  // namespace vantrelix
