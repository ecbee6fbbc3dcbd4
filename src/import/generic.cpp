#include "import/generic.h"

#include <algorithm>
#include <string_view>

#include "foundation/numbers.h"
#include "foundation/text.h"
#include "import/TextLines.h"
#include "import/patternLines.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {

namespace {

constexpr std::string_view kVertical = "VERTICAL";

bool opensVerticalBlock(std::string_view line) { return upperCase(line.substr(0, kVertical.size())) == kVertical; }

// What stands behind the keyword and its blank.
std::string restOf(const std::string& line, std::size_t keywordLength) {
  return line.size() > keywordLength ? trim(std::string_view(line).substr(keywordLength + 1)) : std::string();
}

double gainOf(const std::string& text) {
  if (!isNumeric(text)) {
    throw RunTimeFailure(failure::typeMismatch, "Type mismatch: the GAIN line holds \"" + TextLines::shownText(text) +
                                                    "\" where a number is to stand; correct the line");
  }
  return CDbl(text);
}

// One header line. True where it ends the header.
bool readHeaderLine(const std::string& line, ImportedAntenna& antenna, std::string& fileName) {
  const std::string keyword = upperCase(sAWK6(line, " ", 1));
  if (keyword == "FILENAME") {
    fileName = TextLines::keptText(restOf(line, keyword.size()));
  } else if (keyword == "NAME") {
    antenna.AntName = trim(CleanChars(TextLines::keptText(restOf(line, keyword.size()))));
  } else if (keyword == "FREQUENCY") {
    antenna.Freq = antenna.FreqLow = antenna.FreqHigh = CValP(sAWK6(line, " ", 2, "0"));
  } else if (keyword == "GAIN") {
    antenna.Gain = gainOf(sAWK6(line, " ", 2, "0"));
    antenna.GainUnits = TextLines::keptText(sAWK6(line, " ", 3, "dBd"));
  } else if (keyword == "HORIZONTAL" || keyword == kVertical) {
    antenna.PolLetter = keyword.substr(0, 1);
    return true;
  }
  return false;
}

void readHeader(TextLines& lines, ImportedAntenna& antenna) {
  std::string fileName;
  while (!readHeaderLine(singleBlanks(lines.next()), antenna, fileName)) {
  }
  if (getLenTrim(antenna.AntName) == 0 && getLenTrim(fileName) != 0) antenna.AntName = fileName;
}

void readAzimuth(TextLines& lines, ImportedAntenna& antenna) {
  antenna.HorCount = 0;
  antenna.MinHor = 0;
  readPatternLines(lines, {.endsCut = opensVerticalBlock}, antenna.Gain, horizontalCut(antenna));
}

void readElevation(TextLines& lines, ImportedAntenna& antenna) {
  antenna.VerCount = 0;
  readElevationLines(lines, antenna, {.angle = negatedElevation});
}

double relativeFactor(double Gain, double peak) {
  if (peak == 0) {
    throw RunTimeFailure(
        failure::divisionByZero,
        "Division by zero: the largest value of the horizontal pattern is 0, so it has no relative form");
  }
  return (peak < 1 ? 1 : Gain) / peak;
}

// Shifts the horizontal cut so that its peak equals the gain.
void normaliseAzimuth(ImportedAntenna& antenna) {
  double peak = -88888;
  for (const double value : antenna.HorValue) peak = std::max(peak, value);
  const std::string kind = upperCase(leftCharacters(antenna.GainUnits, 2));
  if (kind == "DB") {
    const double offset = antenna.Gain - peak;
    for (double& value : antenna.HorValue) value = finite(value + offset);
    antenna.MinHor += offset;
  } else if (kind == "RE") {
    const double factor = relativeFactor(antenna.Gain, peak);
    for (double& value : antenna.HorValue) value = finite(value * factor);
    antenna.MinHor *= factor;
  }
}

}  // namespace

void readGeneric(TextLines& lines, ImportedAntenna& antenna) {
  readHeader(lines, antenna);
  if (antenna.PolLetter == "H") {
    readAzimuth(lines, antenna);
    normaliseAzimuth(antenna);
    readElevation(lines, antenna);
  } else {
    // The elevation reader takes a horizontal block that follows for its own points: only files that begin with the
    // horizontal block are read as they are meant.
    readElevation(lines, antenna);
    readAzimuth(lines, antenna);
    normaliseAzimuth(antenna);
  }
}

}  // namespace vantrelix
