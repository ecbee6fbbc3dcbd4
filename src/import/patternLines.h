// The readers of pattern lines, shared by the formats: an angle and a level on each line.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "import/ImportFormat.h"
#include "import/TextLines.h"

namespace vantrelix {

// Into 0 to 360 degrees by whole turns, as steps of 360 from outside would do: 360 stays 360, 720 becomes 360 and -720
// becomes 0. A number that is not finite is not wrapped to any angle.
double wrapAzimuth(double angle);
// Below -180 degrees, one turn is added; else the angle as it is.
double keptElevation(double angle);
// Upward-positive to downward-positive degrees; below -180, one turn is added.
double negatedElevation(double angle);
// For the formats that neither wrap nor add a turn.
double unchangedAngle(double angle);
double negatedAngle(double angle);

// The number itself; fails with 6 where an operation has left the range of numbers.
double finite(double number);

// How a format's pattern lines are read.
struct PatternLineRules {
  // The library's angle for a file's angle; both in degrees.
  double (*angle)(double field) = wrapAzimuth;
  // True where the file holds levels as they are; false where it holds the attenuation below Gain with either sign.
  bool absoluteLevels = false;
  // True where only a field above -50, as written, may lower the minimum.
  bool minimumAboveMinus50 = false;
  // Between the two fields; blank means a tab where the line holds one and else one blank, runs of blanks counting as
  // one.
  std::string_view delimiter = {};
  // Tells the line behind which the cut ends; null where it goes on to the end of the file.
  bool (*endsCut)(std::string_view line) = nullptr;
};

// Where the points of a cut go.
struct PatternCut {
  std::int16_t& count;
  std::vector<double>& angles;
  std::vector<double>& values;
  double& minimum;
};
PatternCut horizontalCut(ImportedAntenna& antenna);
PatternCut verticalCut(ImportedAntenna& antenna);

// Where the minima start: above any value of a cut.
inline constexpr double kAboveAnyAzimuth = 888888;
inline constexpr double kAboveAnyElevation = 88888;

// The value of a point by its field as a number, in the units of Gain; lowers the cut's minimum. 6 where it is out of
// range.
double patternValue(double field, const PatternLineRules& rules, double Gain, PatternCut& cut);

// Appends the points of a cut. Lines without two numbers are passed over. A cut of more than 32767 points fails with 6.
void readPatternLines(TextLines& lines, const PatternLineRules& rules, double Gain, PatternCut cut);

// A whole cut to the end of the file, behind the points that the antenna has; MinHor and MinVer start above any value.
void readAzimuthLines(TextLines& lines, ImportedAntenna& antenna);
void readAzimuthLines(TextLines& lines, ImportedAntenna& antenna, const PatternLineRules& rules);
void readElevationLines(TextLines& lines, ImportedAntenna& antenna, const PatternLineRules& rules);

// Gain becomes the highest value of the azimuth cut, where that is above it.
void raiseGainToPeak(ImportedAntenna& antenna);

// Makes a cut of `count` points, 0 or more, and reads as many lines, each for the point of its place. A line without
// two numbers leaves its point at angle 0 and value 0, and so does the end of the file for all that are not reached: it
// is no failure, but the line that reaches it, the last of the file, is not used.
void readCountedLines(TextLines& lines, const PatternLineRules& rules, double Gain, std::int16_t count, PatternCut cut);

// The two fields of a pattern line, as they stand between the delimiters; a blank where there is none.
struct PatternFields {
  std::string angle;
  std::string value;
};
PatternFields splitPatternLine(const std::string& line, std::string_view delimiter);

// The line with its tabs as blanks, trimmed, every run of blanks as one.
std::string singleBlanks(std::string_view line);

}  // namespace vantrelix
