#include "import/celwave.h"

#include <string>
#include <string_view>
#include <vector>

#include "foundation/extract.h"
#include "foundation/numbers.h"
#include "foundation/text.h"
#include "import/TextLines.h"
#include "import/pairedFiles.h"
#include "import/patternLines.h"

namespace vantrelix {

namespace {

// ---- Headers ----

enum class PlaneText { firstLetter, wholeLine };

// Which line of a header holds what, counted from 1. The plane line ends the header.
struct HeaderRules {
  int nameLines[3];
  std::string_view nameJoin;
  int untrimmedNameLine;  // 0 for none
  int frequencyLine;
  int gainLine;
  int bandLine;  // 0 where the band is derived from the frequency
  int planeLine;
  PlaneText planeText;
  std::string_view planes;  // the letters that pass; blank where all do
};

constexpr HeaderRules kCelwaveHeader = {{2, 15, 3}, " ", 3, 3, 6, 8, 18, PlaneText::firstLetter, "HE"};
constexpr HeaderRules kSinclairHeader = {{1, 5, 6}, ":", 0, 2, 3, 0, 7, PlaneText::wholeLine, ""};
constexpr HeaderRules kDecibelHeader = {{1, 5, 6}, ":", 0, 2, 4, 0, 7, PlaneText::wholeLine, "HV"};

// The lines of a header by their numbers.
class HeaderLines {
 public:
  HeaderLines(TextLines& lines, int count) {
    for (; count > 0; --count) lines_.push_back(lines.next());
  }
  const std::string& operator[](int number) const { return lines_[static_cast<std::size_t>(number) - 1]; }

 private:
  std::vector<std::string> lines_;
};

std::string nameOf(const HeaderLines& header, const HeaderRules& rules) {
  std::string name;
  for (const int line : rules.nameLines) {
    if (line != rules.nameLines[0]) name += rules.nameJoin;
    name += line == rules.untrimmedNameLine ? header[line] : trim(header[line]);
  }
  return CleanChars(TextLines::keptText(name));
}

double edge(std::string_view text, double Freq) {
  const double number = CValP(text);
  return number <= 0 ? Freq : number;
}

// Low and high edge with "-" between, or one number for both.
void readBand(std::string_view line, ImportedAntenna& antenna) {
  const std::size_t dash = line.find('-');
  antenna.FreqLow = edge(line.substr(0, dash), antenna.Freq);
  antenna.FreqHigh = dash == std::string_view::npos ? antenna.FreqLow : edge(line.substr(dash + 1), antenna.Freq);
}

// An antenna without a frequency counts for all of them.
void deriveBand(ImportedAntenna& antenna) {
  const bool known = antenna.Freq > 0;
  antenna.FreqLow = known ? antenna.Freq : 0.00001;
  antenna.FreqHigh = known ? antenna.Freq : 99999;
}

std::string otherPlane(std::string_view line, std::string_view planes) {
  return "The plane of the cut must be \"" + std::string(planes.substr(0, 1)) + "\" or \"" +
         std::string(planes.substr(1)) + "\", but the line holds \"" + TextLines::shownText(line) + "\"";
}

template <const HeaderRules& rules>
void readHeader(TextLines& lines, ImportedAntenna& antenna) {
  const HeaderLines header(lines, rules.planeLine);
  antenna.AntName = nameOf(header, rules);
  antenna.Freq = CValP(header[rules.frequencyLine]);
  antenna.Gain = CValP(header[rules.gainLine]);
  antenna.GainUnits = "dBd";
  if (rules.bandLine > 0) {
    readBand(header[rules.bandLine], antenna);
  } else {
    deriveBand(antenna);
  }
  const std::string plane = upperCase(trim(header[rules.planeLine]));
  antenna.PolLetter = rules.planeText == PlaneText::firstLetter ? plane.substr(0, 1) : plane;
  const bool passes = antenna.PolLetter.size() == 1 && rules.planes.find(antenna.PolLetter) != std::string_view::npos;
  if (!rules.planes.empty() && !passes) antenna.fail(otherPlane(header[rules.planeLine], rules.planes));
}

// ---- Cuts ----

// Sinclair azimuths run the other way round and begin a quarter of a turn aside.
double sinclairAzimuth(double field) { return wrapAzimuth(180 - (field + 90)); }

double sinclairElevation(double field) {
  const double negated = 0 - field;
  return negated >= 270 ? 360 - negated : negated;
}

template <double (*angle)(double)>
void readHorizontal(TextLines& lines, ImportedAntenna& antenna) {
  readAzimuthLines(lines, antenna, {.angle = angle});
}

template <double (*angle)(double), bool minimumAboveMinus50>
void readVertical(TextLines& lines, ImportedAntenna& antenna) {
  readElevationLines(lines, antenna, {.angle = angle, .minimumAboveMinus50 = minimumAboveMinus50});
}

// ---- The other file ----

// The path with a letter of its base name replaced; blank where `at` is none.
std::string withBaseLetter(const std::string& path, std::size_t at, char letter) {
  std::string base = ExtractBaseName(path);
  if (at == std::string::npos) return "";
  base[at] = letter;
  return withBaseName(path, base);
}

std::string partnerByBaseName(const std::string& path, const ImportedAntenna& antenna) {
  const std::string base = ExtractBaseName(path);
  if (antenna.PolLetter == "H") {
    const std::size_t at = base.find_first_of("Hh");
    const std::string vertical = withBaseLetter(path, at, 'V');
    return partnerExists(vertical) ? vertical : withBaseLetter(path, at, 'E');
  }
  const std::size_t v = base.find_first_of("Vv");
  return withBaseLetter(path, v != std::string::npos ? v : base.find_first_of("Ee"), 'H');
}

// A path with its only letter in the name of a folder leads to another folder.
std::string partnerByPath(const std::string& path, const ImportedAntenna& antenna) {
  return antenna.PolLetter == "H" ? withLastReplaced(path, "H", "V") : withLastReplaced(path, "V", "H");
}

}  // namespace

void readCelwave(ImportSource& source, ImportedAntenna& antenna) {
  readPair(source, antenna,
           {readHeader<kCelwaveHeader>, readHorizontal<wrapAzimuth>, readVertical<keptElevation, true>, "H", "E",
            partnerByBaseName});
}

void readSinclair(ImportSource& source, ImportedAntenna& antenna) {
  readPair(source, antenna,
           {readHeader<kSinclairHeader>, readHorizontal<sinclairAzimuth>, readVertical<sinclairElevation, false>, "H",
            "V", partnerByBaseName});
}

void readDecibel(ImportSource& source, ImportedAntenna& antenna) {
  readPair(source, antenna,
           {readHeader<kDecibelHeader>, readHorizontal<wrapAzimuth>, readVertical<negatedElevation, false>, "H", "V",
            partnerByPath});
}

}  // namespace vantrelix
