#include "preview/polarPlot.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "foundation/getINI.h"
#include "foundation/text.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {

namespace {

constexpr double kNoMinimumYet = 888888;
constexpr double kMargin = 1.05;
constexpr Color kAxisColour = color::blue;
constexpr Color kCutColour = color::red;

struct Point {
  double x = 0;
  double y = 0;
};

Point pointAt(Plane plane, double radius, double degrees) {
  const double angle = degrees * kRadiansPerDegree;
  const double sine = radius * std::sin(angle);
  const double cosine = radius * std::cos(angle);
  return plane == Plane::azimuth ? Point{sine, cosine} : Point{cosine, sine};
}

double foldedDirection(const Point& point) {
  return point.y == 0 ? 90 : std::atan(point.x / point.y) * kDegreesPerRadian;
}

double quadrantDirection(const Point& point) {
  if (point.y == 0) return 0;
  const double direction = std::atan(point.x / point.y) * kDegreesPerRadian;
  if (point.y < 0) return direction + 180;
  return point.x < 0 ? direction + 360 : direction;
}

bool closes(const Point& first, const Point& last, bool folded) {
  if (folded) return std::abs(foldedDirection(first) - foldedDirection(last)) < 5;
  const double apart = std::abs(quadrantDirection(first) - quadrantDirection(last));
  return apart <= 30 || apart >= 330;
}

void requireFinite(double value) {
  if (std::isfinite(value)) return;
  throw RunTimeFailure(failure::overflow, "The pattern cannot be drawn: a gain of the cut is out of range.");
}

void setPolarScale(PictureBox& picture, double range) {
  const double half = kMargin * range;
  requireFinite(2 * half);
  picture.setScale({-half, half, 2 * half, -2 * half});
}

void drawAxes(PictureBox& picture) {
  const double half = picture.scale().top;
  picture.drawLine(-half, 0, half, 0, kAxisColour);
  picture.drawLine(0, -half, 0, half, kAxisColour);
}

std::vector<Point> pointsOf(Plane plane, double floor, double smallestRadius, const std::vector<double>& angles,
                            const std::vector<double>& values) {
  std::vector<Point> points;
  points.reserve(values.size());
  for (std::size_t i = 0; i < std::min(angles.size(), values.size()); ++i) {
    points.push_back(pointAt(plane, std::max(values[i] - floor, smallestRadius), angles[i]));
    requireFinite(points.back().x + points.back().y);
  }
  return points;
}

void join(PictureBox& picture, const Point& from, const Point& to) {
  picture.drawLine(from.x, from.y, to.x, to.y, kCutColour);
}

}  // namespace

ShownCut shownCut(Plane plane, std::int16_t count, const std::vector<double>& angles,
                  const std::vector<double>& values) {
  ShownCut cut;
  cut.minimum = plane == Plane::azimuth ? 0 : kNoMinimumYet;
  cut.drawn = count > 0;
  if (!cut.drawn) {
    cut.angles = {0};
    cut.values = {1};
    return cut;
  }
  cut.angles = angles;
  cut.values = values;
  for (const double value : values) cut.minimum = std::min(cut.minimum, value);
  return cut;
}

PolarScale polarScale(double gain, const std::string& gainUnits, double minimum) {
  if (equalIgnoringCase(trim(gainUnits), "REL")) return {1, 0};
  return {gain, std::max(minimum, getINIDbl("HDAntenna", "GainMinPlot", -30))};
}

PolarOptions lookupOptions() { return {}; }

PolarOptions thumbnailOptions() { return {.flatFloorStays = true}; }

PolarOptions previewOptions() { return {.foldedDirections = true}; }

PolarOptions importPreviewOptions(const std::string& gainUnits) {
  return {.foldedDirections = true, .withoutFloor = upperCase(gainUnits.substr(0, 2)) != "DB"};
}

void drawCut(PictureBox& picture, Plane plane, PolarScale scale, const std::vector<double>& angles,
             const std::vector<double>& values, const PolarOptions& options) {
  picture.Cls();
  if (angles.empty() || values.empty()) return;
  if (options.withoutFloor || (scale.floor >= scale.top && !options.flatFloorStays)) scale.floor = 0;
  const double range = scale.top - scale.floor;
  requireFinite(range);
  const double smallestRadius = options.withoutFloor ? std::numeric_limits<double>::lowest() : 0;
  const std::vector<Point> points = pointsOf(plane, scale.floor, smallestRadius, angles, values);
  setPolarScale(picture, range > 0 ? range : 1);
  drawAxes(picture);
  for (std::size_t i = 1; i < points.size(); ++i) join(picture, points[i - 1], points[i]);
  if (points.size() > 1 && closes(points.front(), points.back(), options.foldedDirections)) {
    join(picture, points.back(), points.front());
  }
}

void drawPointer(PictureBox& picture, Plane plane, double angle, Color colour) {
  const double halfWidth = std::abs(picture.scale().width / 2);
  const double halfHeight = std::abs(picture.scale().height / 2);
  const Point direction = pointAt(plane, 1, angle);
  picture.drawLine(0, 0, halfWidth * direction.x, halfHeight * direction.y, colour);
}

}  // namespace vantrelix
