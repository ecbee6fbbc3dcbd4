#include "import/nsmaFcc.h"

#include <array>
#include <string>

#include "foundation/getINI.h"
#include "foundation/numbers.h"
#include "foundation/text.h"
#include "import/TextLines.h"
#include "import/patternLines.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {

namespace {

// One of the two blocks of points, and how a line opens it.
struct Block {
  std::string marker;  // in capitals
  std::size_t width;   // of the marker's columns; the number of points stands behind them
  PatternLineRules rules;
  double minimum;  // where MinHor or MinVer starts
  bool dropsClosingPoint;
  PatternCut cut;
};

std::string markerOf(const char* key, const char* fallback) {
  return upperCase(trim(getINIStr("Antenna Data Path", key, fallback)));
}

Block azimuthBlock(ImportedAntenna& antenna) {
  return {markerOf("NSMA (FCC) AZ", "HH"), 2, {}, kAboveAnyAzimuth, true, horizontalCut(antenna)};
}

Block elevationBlock(ImportedAntenna& antenna) {
  const PatternLineRules rules = {.angle = unchangedAngle, .minimumAboveMinus50 = true};
  return {markerOf("NSMA (FCC) EL", "ELVV"), 4, rules, kAboveAnyElevation, false, verticalCut(antenna)};
}

// The maker up to its first blank, and the model.
std::string nameOf(const std::string& makerLine, const std::string& modelLine) {
  const std::string maker = trim(makerLine);
  return CleanChars(maker.substr(0, maker.find(' ') + 1) + " " + trim(modelLine));
}

void readBand(const std::string& line, ImportedAntenna& antenna) {
  if (line.find('-') == std::string::npos) {
    antenna.Freq = antenna.FreqLow = antenna.FreqHigh = CValP(line);
    return;
  }
  antenna.FreqLow = CValP(sAWK6(line, "-", 1, "0"));
  antenna.FreqHigh = CValP(sAWK6(line, "-", 2, "0"));
  antenna.Freq = antenna.FreqLow / 2 + antenna.FreqHigh / 2;
}

void readHeader(TextLines& lines, ImportedAntenna& antenna) {
  std::array<std::string, 10> header;
  for (std::string& line : header) line = TextLines::keptText(lines.next());
  antenna.AntName = nameOf(header[0], header[1]);
  readBand(header[7], antenna);
  antenna.Gain = CValP(header[8]);
  antenna.GainUnits = "dBi";
}

// A line of a block, which another line must follow.
std::string nextPointLine(TextLines& lines) {
  if (!lines.atEnd()) {
    std::string line = TextLines::keptText(lines.next());
    if (!lines.atEnd()) return line;
  }
  throw RunTimeFailure(failure::inputPastEnd,
                       "Input past end of file: a block has fewer points than it announces, or no line follows it");
}

void dropClosingPoint(PatternCut& cut) {
  if (cut.count == 0 || cut.angles.back() != cut.angles.front()) return;
  --cut.count;
  cut.angles.pop_back();
  cut.values.pop_back();
}

void readBlock(TextLines& lines, std::int16_t count, double Gain, Block& block) {
  if (count < 0) {
    throw RunTimeFailure(failure::subscript,
                         "Subscript out of range: a block announces " + std::to_string(count) + " points");
  }
  PatternCut& cut = block.cut;
  cut.count = 0;
  cut.angles.clear();
  cut.values.clear();
  cut.minimum = block.minimum;
  while (cut.count < count) {
    const PatternFields fields = splitPatternLine(nextPointLine(lines), block.rules.delimiter);
    cut.angles.push_back(block.rules.angle(CDbl(fields.angle)));
    cut.values.push_back(patternValue(CDbl(fields.value), block.rules, Gain, cut));
    ++cut.count;
  }
  if (block.dropsClosingPoint) dropClosingPoint(cut);
}

}  // namespace

void readNsmaFcc(TextLines& lines, ImportedAntenna& antenna) {
  readHeader(lines, antenna);
  Block blocks[] = {azimuthBlock(antenna), elevationBlock(antenna)};
  while (!lines.atEnd()) {
    const std::string line = TextLines::keptText(lines.next());
    for (Block& block : blocks) {
      if (upperCase(leftCharacters(line, block.width)) != block.marker) continue;
      readBlock(lines, CIntP(midCharacters(line, block.width + 1)), antenna.Gain, block);
      break;
    }
  }
}

}  // namespace vantrelix
