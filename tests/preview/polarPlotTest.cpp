#include <cmath>
#include <gtest/gtest.h>
#include <limits>

#include "foundation/getINI.h"
#include "foundation/suitePaths.h"
#include "platform/RunTimeFailure.h"
#include "preview/polarPlot.h"
#include "support/TempSuite.h"

namespace vantrelix {
namespace {

using Line = PictureBox::Line;
using Numbers = std::vector<double>;

constexpr std::size_t kAxes = 2;

void expectLine(const Line& line, double x1, double y1, double x2, double y2) {
  EXPECT_NEAR(line.x1, x1, 1e-6);
  EXPECT_NEAR(line.y1, y1, 1e-6);
  EXPECT_NEAR(line.x2, x2, 1e-6);
  EXPECT_NEAR(line.y2, y2, 1e-6);
}

// The lines of the cut itself that a drawing has.
std::size_t cutLines(Plane plane, const Numbers& angles, const PolarOptions& options = {}) {
  PictureBox picture("pic");
  drawCut(picture, plane, {1, 0}, angles, Numbers(angles.size(), 1.0), options);
  return picture.lines().size() - kAxes;
}

Numbers range(double first, double last, double step) {
  Numbers angles;
  for (double angle = first; angle <= last; angle += step) angles.push_back(angle);
  return angles;
}

TEST(ShownCut, TheMinimumIsSoughtFromZeroDownInTheAzimuthPlaneAndFromAboveInTheElevationPlane) {
  const ShownCut azimuth = shownCut(Plane::azimuth, 2, {0, 90}, {5, 3});
  EXPECT_EQ(azimuth.minimum, 0);
  EXPECT_TRUE(azimuth.drawn);
  EXPECT_EQ(shownCut(Plane::azimuth, 2, {0, 90}, {5, -3}).minimum, -3);
  EXPECT_EQ(shownCut(Plane::elevation, 2, {0, 90}, {5, 3}).minimum, 3);
  EXPECT_EQ(shownCut(Plane::elevation, 0, {0}, {0}).minimum, 888888);
}

TEST(ShownCut, WithoutPointsItIsTheOnePointOneAtZeroDegrees) {
  const ShownCut cut = shownCut(Plane::azimuth, 0, {0}, {0});
  EXPECT_FALSE(cut.drawn);
  EXPECT_EQ(cut.angles, Numbers{0});
  EXPECT_EQ(cut.values, Numbers{1});
}

TEST(PolarScale, RelativePatternsRunFromZeroToOne) {
  test::TempSuite suite;
  const PolarScale scale = polarScale(7.5, "REL", -3);
  EXPECT_EQ(scale.top, 1);
  EXPECT_EQ(scale.floor, 0);
}

TEST(PolarScale, DecibelPatternsRunFromTheirMinimumButNotBelowThePlotFloorToTheGain) {
  test::TempSuite suite;
  EXPECT_EQ(polarScale(10, "dBd", -12).top, 10);
  EXPECT_EQ(polarScale(10, "dBd", -12).floor, -12);
  EXPECT_EQ(polarScale(10, "dBi", -35).floor, -30);
  setINI("HDAntenna", "GainMinPlot", getDefaultsINI(), "-20");
  EXPECT_EQ(polarScale(10, "dBd", -35).floor, -20);
}

TEST(DrawCut, TheScaleIsSquareAboutTheCentreAndTheAxesRunFromEdgeToEdge) {
  PictureBox picture("pic");
  drawCut(picture, Plane::azimuth, {10, -30}, {0}, {10});
  const PictureBox::Scale& scale = picture.scale();
  EXPECT_DOUBLE_EQ(scale.left, -42);
  EXPECT_DOUBLE_EQ(scale.top, 42);
  EXPECT_DOUBLE_EQ(scale.width, 84);
  EXPECT_DOUBLE_EQ(scale.height, -84);
  ASSERT_EQ(picture.lines().size(), kAxes);
  expectLine(picture.lines()[0], -42, 0, 42, 0);
  expectLine(picture.lines()[1], 0, -42, 0, 42);
  for (const Line& line : picture.lines()) EXPECT_EQ(line.colour, Color{0xFF0000});
}

TEST(DrawCut, AzimuthGoesClockwiseFromTheTop) {
  PictureBox picture("pic");
  drawCut(picture, Plane::azimuth, {10, 0}, {0, 90, 180}, {10, 5, 2});
  ASSERT_EQ(picture.lines().size(), kAxes + 2);
  expectLine(picture.lines()[2], 0, 10, 5, 0);
  expectLine(picture.lines()[3], 5, 0, 0, -2);
  EXPECT_EQ(picture.lines()[2].colour, Color{255});
}

TEST(DrawCut, ElevationGoesCounterClockwiseFromTheRight) {
  PictureBox picture("pic");
  drawCut(picture, Plane::elevation, {10, 0}, {0, 90, 180}, {10, 5, 2});
  ASSERT_EQ(picture.lines().size(), kAxes + 2);
  expectLine(picture.lines()[2], 10, 0, 0, 5);
  expectLine(picture.lines()[3], 0, 5, -2, 0);
}

TEST(DrawCut, ValuesBelowTheFloorFallOnTheCentre) {
  PictureBox picture("pic");
  drawCut(picture, Plane::azimuth, {10, -30}, {0, 90, 180}, {10, -35, 0});
  ASSERT_EQ(picture.lines().size(), kAxes + 2);
  expectLine(picture.lines()[2], 0, 40, 0, 0);
  expectLine(picture.lines()[3], 0, 0, 0, -30);
}

TEST(DrawCut, DegreesBecomeRadiansByTheSystemsOwnFactor) {
  PictureBox picture("pic");
  drawCut(picture, Plane::azimuth, {1, 0}, {0, 180}, {1, 1});
  ASSERT_EQ(picture.lines().size(), kAxes + 1);
  EXPECT_DOUBLE_EQ(picture.lines()[2].x2, std::sin(180 * 0.0174532925));
}

TEST(DrawCut, AFlatCutIsACircleAboutAFloorOfZero) {
  PictureBox picture("pic");
  drawCut(picture, Plane::elevation, {8, 8}, {0, 90}, {8, 8});
  EXPECT_DOUBLE_EQ(picture.scale().width, 16.8);
  expectLine(picture.lines()[2], 8, 0, 0, 8);
}

TEST(DrawCut, AFlatCutOfNoGainHasTheRangeOne) {
  PictureBox picture("pic");
  drawCut(picture, Plane::elevation, {-4, -4}, {0, 90}, {-4, -4});
  EXPECT_DOUBLE_EQ(picture.scale().width, 2.1);
  expectLine(picture.lines()[2], 0, 0, 0, 0);
}

TEST(DrawCut, WithTheFloorToStayAFlatCutHasTheRangeOneAndLiesOnTheCentre) {
  PictureBox picture("pic");
  drawCut(picture, Plane::elevation, {8, 8}, {0, 90}, {8, 8}, thumbnailOptions());
  EXPECT_DOUBLE_EQ(picture.scale().width, 2.1);
  expectLine(picture.lines()[2], 0, 0, 0, 0);
}

TEST(DrawCut, ACutThatGoesAllTheWayRoundIsClosed) {
  EXPECT_EQ(cutLines(Plane::azimuth, range(0, 350, 10)), 36u);
  EXPECT_EQ(cutLines(Plane::azimuth, range(0, 359, 1)), 360u);
  EXPECT_EQ(cutLines(Plane::elevation, range(-179, 179, 1)), 359u);
}

TEST(DrawCut, ACutThatStopsAtHalfACircleStaysOpen) {
  EXPECT_EQ(cutLines(Plane::azimuth, range(0, 180, 10)), 18u);
  EXPECT_EQ(cutLines(Plane::elevation, range(-90, 90, 10)), 18u);
}

TEST(DrawCut, ItIsClosedUpToThirtyDegreesApart) {
  EXPECT_EQ(cutLines(Plane::azimuth, {10, 100, 200, 341}), 4u);
  EXPECT_EQ(cutLines(Plane::azimuth, {10, 100, 200, 339}), 3u);
  EXPECT_EQ(cutLines(Plane::azimuth, {10, 25, 39}), 3u);
  EXPECT_EQ(cutLines(Plane::azimuth, {10, 25, 41}), 2u);
}

TEST(DrawCut, APointOnTheHorizontalCountsAsDirectionZero) {
  // The elevation angle 0 lies on it: its direction is that of 90 degrees, the straight up.
  EXPECT_EQ(cutLines(Plane::elevation, {0, 45, 80}), 3u);
  EXPECT_EQ(cutLines(Plane::elevation, {0, 45, 30}), 2u);
}

TEST(DrawCut, FoldedDirectionsCloseOppositePointsAndOnlyWhatIsLessThanFiveApart) {
  const PolarOptions options = previewOptions();
  EXPECT_EQ(cutLines(Plane::azimuth, {1, 90, 180}, options), 3u);
  EXPECT_EQ(cutLines(Plane::azimuth, range(0, 359, 1), options), 360u);
  EXPECT_EQ(cutLines(Plane::azimuth, range(0, 350, 10), options), 35u);
  EXPECT_EQ(cutLines(Plane::elevation, {0, 45, 3}, options), 3u);
}

TEST(DrawCut, FoldedDirectionsOfFiveDegreesApartAreNotClosed) {
  EXPECT_EQ(cutLines(Plane::azimuth, {10, 40, 14.9}, previewOptions()), 3u);
  EXPECT_EQ(cutLines(Plane::azimuth, {10, 40, 15.1}, previewOptions()), 2u);
}

TEST(DrawCut, TheThumbnailsCloseAsTheLookupControlDoes) {
  for (const Numbers& angles : {range(0, 359, 1), range(0, 180, 10), Numbers{10, 25, 39}, Numbers{1, 90, 180}}) {
    EXPECT_EQ(cutLines(Plane::azimuth, angles, thumbnailOptions()), cutLines(Plane::azimuth, angles, lookupOptions()));
  }
}

TEST(DrawCut, AFloorAboveTheTopCountsAsOneAtIt) {
  PictureBox picture("pic");
  drawCut(picture, Plane::elevation, {8, 12}, {0, 90}, {8, 13}, lookupOptions());
  EXPECT_DOUBLE_EQ(picture.scale().width, 16.8);
  drawCut(picture, Plane::elevation, {8, 12}, {0, 90}, {8, 13}, thumbnailOptions());
  EXPECT_DOUBLE_EQ(picture.scale().width, 2.1);
  expectLine(picture.lines()[2], 0, 0, 0, 1);
}

TEST(DrawCut, WithoutAFloorANegativeValueLiesOnTheOppositeSide) {
  PictureBox picture("pic");
  drawCut(picture, Plane::azimuth, {10, -30}, {0, 90}, {10, -4}, importPreviewOptions("W"));
  EXPECT_DOUBLE_EQ(picture.scale().width, 21);
  expectLine(picture.lines()[2], 0, 10, -4, 0);
  drawCut(picture, Plane::azimuth, {10, -30}, {0, 90}, {10, -4}, importPreviewOptions("dBd"));
  expectLine(picture.lines()[2], 0, 40, 26, 0);
}

TEST(DrawCut, ErasesWhatWasThereAndLeavesACutWithoutPointsBlank) {
  PictureBox picture("pic");
  drawCut(picture, Plane::azimuth, {1, 0}, {0, 10}, {1, 1});
  drawCut(picture, Plane::azimuth, {1, 0}, {0, 10}, {1, 1});
  EXPECT_EQ(picture.lines().size(), kAxes + 2);
  drawCut(picture, Plane::azimuth, {1, 0}, {}, {});
  EXPECT_TRUE(picture.lines().empty());
}

TEST(DrawCut, NumbersBeyondTheRangeOfADoubleAreAnOverflow) {
  PictureBox picture("pic");
  try {
    drawCut(picture, Plane::azimuth, {1.7e308, -1.7e308}, {0, 10}, {1, 1});
    FAIL() << "drawn";
  } catch (const RunTimeFailure& failure) {
    EXPECT_EQ(failure.number(), failure::overflow);
  }
  EXPECT_TRUE(picture.lines().empty());
  EXPECT_THROW(drawCut(picture, Plane::azimuth, {1, 0}, {0, 1}, {1, std::numeric_limits<double>::infinity()}),
               RunTimeFailure);
}

TEST(DrawPointer, RunsFromTheCentreToTheEdgeOfThePicture) {
  PictureBox picture("pic");
  picture.setScale({-21, 21, 42, -42});
  drawPointer(picture, Plane::azimuth, 90, 0x00FF00);
  drawPointer(picture, Plane::elevation, 90, color::windowText);
  ASSERT_EQ(picture.lines().size(), 2u);
  expectLine(picture.lines()[0], 0, 0, 21, 0);
  EXPECT_EQ(picture.lines()[0].colour, Color{0x00FF00});
  expectLine(picture.lines()[1], 0, 0, 0, 21);
}

}  // namespace
}  // namespace vantrelix
