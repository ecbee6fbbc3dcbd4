#include "import/ems.h"

#include "foundation/extract.h"
#include "foundation/numbers.h"
#include "foundation/text.h"
#include "import/TextLines.h"
#include "import/pairedFiles.h"
#include "import/patternLines.h"

namespace vantrelix {

namespace {

// The numbers of line 1 have no use, but a line that holds something else is no line of this format.
void requireWholeNumbers(const std::string& line) {
  for (int field = 1; field <= 3; ++field) {
    const std::string text = sAWK6(line, ",", field, "-88");
    if (getLenTrim(text) > 0) CInt(CDbl(TextLines::keptText(text)));
  }
}

void readHeader(TextLines& lines, ImportedAntenna& antenna) {
  requireWholeNumbers(lines.next());
  antenna.Freq = antenna.FreqLow = antenna.FreqHigh = CValP(lines.next());
  antenna.GainUnits = "dBd";
}

void readAzimuth(TextLines& lines, ImportedAntenna& antenna) { readAzimuthLines(lines, antenna, {.delimiter = ","}); }

void readElevation(TextLines& lines, ImportedAntenna& antenna) {
  readElevationLines(lines, antenna, {.angle = negatedAngle, .minimumAboveMinus50 = true, .delimiter = ","});
}

// The base name without its last character, and that character.
struct NameParts {
  std::string stem;
  std::string last;
};

NameParts partsOf(const std::string& path) {
  const std::string base = trim(ExtractBaseName(path));
  const std::size_t length = characterCount(base);
  if (length == 0) return {};
  return {leftCharacters(base, length - 1), midCharacters(base, length)};
}

std::string partnerOf(const std::string& path, const ImportedAntenna& antenna) {
  const NameParts parts = partsOf(path);
  if (parts.last.empty()) return "";
  return withBaseName(path, parts.stem + (antenna.PolLetter == "H" ? "e" : "a"));
}

constexpr PairRules kRules = {readHeader, readAzimuth, readElevation, "H", "V", partnerOf};

}  // namespace

ImportNotice emsNotice() {
  return {"EMS ASCII Files",
          std::string("Note that the ASCII files for EMS antennas do not include major-lobe gain information.") +
              kBlankLine +
              "The patterns you import from these files will be assigned a gain of 0dBd, and all of the azimuth and "
              "elevation gain values will be measured as dB BELOW 0dBd." +
              kBlankLine +
              "You can use the ZOR Antenna Editor to enter the actual gain value you want to use for the major lobe of "
              "the antenna, and the azimuth and elevation gains will be normalized to this value."};
}

void readEms(ImportSource& source, ImportedAntenna& antenna) {
  antenna.AntName = ExtractBaseName(source.path());
  const std::string plane = upperCase(partsOf(source.path()).last);
  if (plane == "A") antenna.PolLetter = "H";
  if (plane == "E") antenna.PolLetter = "V";
  readPair(source, antenna, kRules);
}

}  // namespace vantrelix
