#include "import/antel.h"

#include <string>
#include <string_view>

#include "foundation/numbers.h"
#include "foundation/text.h"
#include "import/TextLines.h"
#include "import/patternLines.h"

namespace vantrelix {

namespace {

std::string delimiterOf(std::string_view line) { return TabOrBlank(line.find('\t') != std::string_view::npos); }

void passOver(TextLines& lines, int count) {
  for (; count > 0; --count) lines.next();
}

// Only these lines bear anything: 1, 3, 7 and 9.
void readHeader(TextLines& lines, ImportedAntenna& antenna) {
  const std::string delimiter = delimiterOf(lines.next());
  passOver(lines, 1);
  antenna.Freq = antenna.FreqLow = antenna.FreqHigh = CValP(trim(sAWK6(lines.next(), delimiter, 2, "0")));
  passOver(lines, 3);
  const std::string gainLine = lines.next();
  antenna.Gain = CValP(sAWK6(gainLine, delimiter, 2, "0"));
  antenna.GainUnits = TextLines::keptText(sAWK6(gainLine, delimiter, 3, "dBd"));
  passOver(lines, 1);
  antenna.AntName = CleanChars(TextLines::keptText(sAWK6(lines.next(), delimiter, 2)));
}

// The number of points that a line such as "HORIZONTAL 360" announces; 0 where it is no such line.
std::int16_t pointCount(const std::string& line, std::string_view keyword) {
  const std::string delimiter = delimiterOf(line);
  return upperCase(sAWK6(line, delimiter, 1)) == keyword ? CIntP(sAWK6(line, delimiter, 2, "0")) : std::int16_t{0};
}

void readCut(TextLines& lines, std::string_view keyword, const PatternLineRules& rules, ImportedAntenna& antenna,
             const PatternCut& cut) {
  const std::string line = lines.next();
  const std::int16_t count = pointCount(line, keyword);
  if (count <= 0) {
    antenna.fail("\"" + std::string(keyword) + "\" and a number of points above 0 were expected, but \"" +
                 TextLines::shownText(line) + "\" stands there");
    return;
  }
  readCountedLines(lines, rules, antenna.Gain, count, cut);
}

}  // namespace

void readAntel(TextLines& lines, ImportedAntenna& antenna) {
  readHeader(lines, antenna);
  antenna.MinHor = kAboveAnyAzimuth;
  readCut(lines, "HORIZONTAL", {}, antenna, horizontalCut(antenna));
  if (antenna.ErrFlag != 0) return;
  antenna.MinVer = kAboveAnyElevation;
  readCut(lines, "VERTICAL", {.angle = keptElevation, .minimumAboveMinus50 = true}, antenna, verticalCut(antenna));
}

}  // namespace vantrelix
