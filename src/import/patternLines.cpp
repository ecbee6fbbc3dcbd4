#include "import/patternLines.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "foundation/numbers.h"
#include "foundation/text.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {

namespace {

constexpr double kTurn = 360;
// Above this stepping by turns takes too long, or never changes the number at all.
constexpr double kStepwise = 1000 * kTurn;

void addPoint(PatternCut& cut, double angle, double value) {
  if (cut.count == std::numeric_limits<std::int16_t>::max()) {
    throw RunTimeFailure(failure::overflow, "Overflow: a cut of more than 32767 points cannot be imported");
  }
  ++cut.count;
  cut.angles.push_back(angle);
  cut.values.push_back(value);
}

struct Point {
  double angle = 0;
  double value = 0;
};

// The point of a line that has one, which also lowers the cut's minimum.
std::optional<Point> readPoint(const std::string& line, const PatternLineRules& rules, double Gain, PatternCut& cut) {
  const PatternFields fields = splitPatternLine(line, rules.delimiter);
  if (!isNumeric(fields.angle) || !isNumeric(fields.value)) return std::nullopt;
  const double value = patternValue(CValP(fields.value), rules, Gain, cut);
  return Point{rules.angle(CValP(fields.angle)), value};
}

}  // namespace

double finite(double number) {
  if (!std::isfinite(number)) throw RunTimeFailure(failure::overflow, "Overflow: a pattern value is out of range");
  return number;
}

double wrapAzimuth(double angle) {
  if (std::abs(angle) > kStepwise) {
    const bool downwards = angle > 0;
    angle = std::fmod(angle, kTurn);
    // Steps down end at 360, steps up at 0.
    if (downwards && angle == 0) return kTurn;
  }
  while (angle < 0) angle += kTurn;
  while (angle > kTurn) angle -= kTurn;
  return angle;
}

double keptElevation(double angle) { return angle < -180 ? angle + kTurn : angle; }

double negatedElevation(double angle) { return keptElevation(negatedAngle(angle)); }

double unchangedAngle(double angle) { return angle; }

// Taken from 0, so that 0 has no sign.
double negatedAngle(double angle) { return 0 - angle; }

PatternCut horizontalCut(ImportedAntenna& antenna) {
  return {antenna.HorCount, antenna.HorAngle, antenna.HorValue, antenna.MinHor};
}

PatternCut verticalCut(ImportedAntenna& antenna) {
  return {antenna.VerCount, antenna.VerAngle, antenna.VerValue, antenna.MinVer};
}

double patternValue(double field, const PatternLineRules& rules, double Gain, PatternCut& cut) {
  const double value = finite(rules.absoluteLevels ? field : Gain - std::abs(field));
  if (!rules.minimumAboveMinus50 || field > -50) cut.minimum = std::min(cut.minimum, value);
  return value;
}

std::string singleBlanks(std::string_view line) {
  std::string result;
  for (char c : line) {
    if (c == '\t') c = ' ';
    if (c != ' ' || (!result.empty() && result.back() != ' ')) result += c;
  }
  if (!result.empty() && result.back() == ' ') result.pop_back();
  return result;
}

PatternFields splitPatternLine(const std::string& line, std::string_view delimiter) {
  const bool blanks = delimiter.empty() && line.find('\t') == std::string::npos;
  const std::string text = blanks ? singleBlanks(line) : line;
  const std::string between = delimiter.empty() ? TabOrBlank(!blanks) : std::string(delimiter);
  return {sAWK6(text, between, 1, " "), sAWK6(text, between, 2, " ")};
}

void readPatternLines(TextLines& lines, const PatternLineRules& rules, double Gain, PatternCut cut) {
  while (!lines.atEnd()) {
    const std::string line = lines.next();
    if (rules.endsCut != nullptr && rules.endsCut(line)) return;
    if (getLenTrim(line) == 0) continue;
    if (const std::optional<Point> point = readPoint(line, rules, Gain, cut)) addPoint(cut, point->angle, point->value);
  }
}

void readAzimuthLines(TextLines& lines, ImportedAntenna& antenna) { readAzimuthLines(lines, antenna, {}); }

void readAzimuthLines(TextLines& lines, ImportedAntenna& antenna, const PatternLineRules& rules) {
  antenna.MinHor = kAboveAnyAzimuth;
  readPatternLines(lines, rules, antenna.Gain, horizontalCut(antenna));
}

void readElevationLines(TextLines& lines, ImportedAntenna& antenna, const PatternLineRules& rules) {
  antenna.MinVer = kAboveAnyElevation;
  readPatternLines(lines, rules, antenna.Gain, verticalCut(antenna));
}

void raiseGainToPeak(ImportedAntenna& antenna) {
  for (const double value : antenna.HorValue) antenna.Gain = std::max(antenna.Gain, value);
}

void readCountedLines(TextLines& lines, const PatternLineRules& rules, double Gain, std::int16_t count,
                      PatternCut cut) {
  const auto size = static_cast<std::size_t>(count);
  cut.count = count;
  cut.angles.assign(size, 0);
  cut.values.assign(size, 0);
  for (std::size_t i = 0; i < size && !lines.atEnd(); ++i) {
    const std::string line = lines.next();
    if (lines.atEnd()) return;
    const Point point = readPoint(line, rules, Gain, cut).value_or(Point());
    cut.angles[i] = point.angle;
    cut.values[i] = point.value;
  }
}

}  // namespace vantrelix
