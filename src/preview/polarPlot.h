// The polar drawing of a cut: one routine for all places, with the few decisions in which they differ.
//
// Radius is the value above the plot's floor. Azimuth: 0 degrees up, clockwise. Elevation: 0 degrees to the right,
// counter-clockwise. The scale is square about the centre, 1.05 times the range on each side.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "ui/widgets.h"

namespace vantrelix {

enum class Plane { azimuth, elevation };

// 0.0174532925 and 57.29577957855229: this system's own constants, kept as they are so that plots stay the same.
inline constexpr double kRadiansPerDegree = 0.0174532925;
inline constexpr double kDegreesPerRadian = 57.29577957855229;

// A cut as a preview takes it. A cut without points becomes one point (angle 0, value 1), which shows as bare axes.
struct ShownCut {
  std::vector<double> angles;
  std::vector<double> values;
  double minimum = 0;  // sought from 0 down in the azimuth plane, from 888888 in the elevation plane
  bool drawn = false;  // whether there were points
};
ShownCut shownCut(Plane plane, std::int16_t count, const std::vector<double>& angles,
                  const std::vector<double>& values);

struct PolarScale {
  double top = 0;    // the value at the outer edge
  double floor = 0;  // the value at the centre
};

// Top and floor of a plot: 1 and 0 for "REL"; otherwise the gain, and the cut's minimum raised to GainMinPlot of
// section HDAntenna (default -30).
PolarScale polarScale(double gain, const std::string& gainUnits, double minimum);

// The decisions in which the places differ.
struct PolarOptions {
  // What a floor at or above the top does: become 0, or stay, which makes the range 1.
  bool flatFloorStays = false;
  // Directions for the closing line by the bare arc tangent (-90 to 90), close when less than 5 degrees apart;
  // otherwise by quadrant (0 to 360), close when at most 30 or at least 330 apart.
  bool foldedDirections = false;
  // Without a floor the radius is the value itself, a negative one to the opposite side.
  bool withoutFloor = false;
};
PolarOptions lookupOptions();
PolarOptions thumbnailOptions();
PolarOptions previewOptions();
// In the import loop: only units that begin with "DB", in any case, have a floor.
PolarOptions importPreviewOptions(const std::string& gainUnits);

// Draws one cut: erase; set the scale; axes in blue; the points in order joined in red; the closing line where first
// and last direction are close. A cut without points leaves the picture blank. Throws 6, with the picture blank, where
// the numbers leave the range of a double.
void drawCut(PictureBox& picture, Plane plane, PolarScale scale, const std::vector<double>& angles,
             const std::vector<double>& values, const PolarOptions& options = lookupOptions());

// A line from the centre to the edge of the picture in the direction of the angle.
void drawPointer(PictureBox& picture, Plane plane, double angle, Color colour);

}  // namespace vantrelix
