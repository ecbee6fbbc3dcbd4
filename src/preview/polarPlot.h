// The polar drawing of a cut: one routine for all places, with the few decisions in which they differ.
//
// Radius is the value above the plot's floor. Azimuth: 0 degrees up, clockwise. Elevation: 0 degrees to the right,
// counter-clockwise. The scale is square about the centre, 1.05 times the range on each side.
#pragma once

#include <string>
#include <vector>

#include "ui/widgets.h"

namespace vantrelix {

enum class Plane { azimuth, elevation };

// 0.0174532925 and 57.29577957855229: this system's own constants, kept as they are so that plots stay the same.
inline constexpr double kRadiansPerDegree = 0.0174532925;
inline constexpr double kDegreesPerRadian = 57.29577957855229;

struct PolarScale {
  double top = 0;    // the value at the outer edge
  double floor = 0;  // the value at the centre
};

// Top and floor of a plot: 1 and 0 for "REL"; otherwise the gain, and the cut's minimum raised to GainMinPlot of section
// HDAntenna (default -30).
PolarScale polarScale(double gain, const std::string& gainUnits, double minimum);

// Draws one cut as the lookup control and the editor's thumbnails do: erase; a floor at or above the top becomes 0; axes in
// blue; the points in order in red; the closing line where first and last direction differ by at most 30 or at least 330
// degrees. A cut without points leaves the picture blank.
void drawCut(PictureBox& picture, Plane plane, PolarScale scale, const std::vector<double>& angles,
             const std::vector<double>& values);

// A line from the centre to the edge of the picture in the direction of the angle.
void drawPointer(PictureBox& picture, Plane plane, double angle, Color colour);

}  // namespace vantrelix
