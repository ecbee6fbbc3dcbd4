#include "import/scala.h"

#include "foundation/extract.h"
#include "foundation/numbers.h"
#include "foundation/text.h"
#include "import/TextLines.h"
#include "import/pairedFiles.h"
#include "import/patternLines.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {

namespace {

constexpr int kNameLine = 2;
constexpr int kHeaderLines = 6;

// The place, counted from 1, of the letter that tells the cut.
std::size_t placeOfPlane(const std::string& base) {
  const std::size_t length = characterCount(base);
  if (length < 2) {
    throw RunTimeFailure(failure::subscript,
                         "Subscript out of range: the letter before the last of the file's base name tells its cut, "
                         "but the base name is \"" +
                             base + "\"");
  }
  return length - 1;
}

std::string planeOf(const std::string& path) {
  const std::string base = ExtractBaseName(path);
  return upperCase(midCharacters(base, placeOfPlane(base), 1));
}

void readNameLine(const std::string& line, ImportedAntenna& antenna) {
  if (line.find('(') == std::string::npos) {
    antenna.fail("The name line has no \"(\" before its frequency, but holds \"" + TextLines::shownText(line) + "\"");
    return;
  }
  antenna.AntName = trim(CleanChars(sAWK6(line, "(", 1)));
  antenna.Freq = antenna.FreqLow = antenna.FreqHigh = CValP(sAWK6(line, "(", 2));
}

void readHeader(TextLines& lines, ImportedAntenna& antenna) {
  antenna.GainUnits = "dBd";
  for (int number = 1; number <= kHeaderLines; ++number) {
    const std::string line = lines.next();
    if (number == kNameLine) readNameLine(line, antenna);
    if (antenna.ErrFlag != 0) return;
  }
}

void readElevation(TextLines& lines, ImportedAntenna& antenna) {
  readElevationLines(lines, antenna, {.angle = keptElevation, .minimumAboveMinus50 = true});
}

// An elevation file under the letter "E" is not sought from an azimuth file.
std::string partnerOf(const std::string& path, const ImportedAntenna& antenna) {
  const std::string base = ExtractBaseName(path);
  const std::size_t place = placeOfPlane(base);
  const std::string other = antenna.PolLetter == "H" ? "V" : "H";
  return withBaseName(path, leftCharacters(base, place - 1) + other + midCharacters(base, place + 1));
}

constexpr PairRules kRules = {readHeader, readAzimuthLines, readElevation, "H", "VE", partnerOf};

}  // namespace

void readScala(ImportSource& source, ImportedAntenna& antenna) {
  antenna.PolLetter = planeOf(source.path());
  readPair(source, antenna, kRules);
}

}  // namespace vantrelix
