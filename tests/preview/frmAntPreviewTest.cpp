#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <optional>

#include "foundation/getINI.h"
#include "foundation/suitePaths.h"
#include "platform/RunTimeFailure.h"
#include "preview/frmAntPreview.h"
#include "support/TempSuite.h"
#include "ui/ScriptedDesktop.h"

namespace vantrelix::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using Numbers = std::vector<double>;
using Line = PictureBox::Line;

constexpr std::size_t kAxes = 2;
constexpr double kInfinite = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

struct Points {
  Numbers angles;
  Numbers values;

  std::int16_t count() const { return static_cast<std::int16_t>(angles.size()); }
};

Points circle(double first, double last, double step, double value) {
  Points cut;
  for (double angle = first; angle <= last; angle += step) {
    cut.angles.push_back(angle);
    cut.values.push_back(value);
  }
  return cut;
}

class AntPreviewForm : public testing::Test {
 protected:
  void draw(double gain, const std::string& units, Points azimuth, const Points& elevation = {}, double hLow = 0,
            double vLow = 0) {
    form.AntPreview("Panel", gain, units, hLow, vLow, azimuth.count(), azimuth.angles, azimuth.values,
                    elevation.count(), elevation.angles, elevation.values);
  }
  long ask(double gain, const std::string& units, const Points& azimuth, const Points& elevation = {}, double hLow = 0,
           double vLow = 0) {
    long action = -1;
    form.lAntPreview("From here", "Panel", gain, units, hLow, vLow, azimuth.count(), azimuth.angles, azimuth.values,
                     elevation.count(), elevation.angles, elevation.values, action);
    return action;
  }
  // Where the points of a drawn cut lie, the closing line's end left out.
  static Numbers radii(const PictureBox& picture) {
    Numbers result;
    for (std::size_t i = kAxes; i < picture.lines().size(); ++i) {
      const Line& line = picture.lines()[i];
      result.push_back(std::round(std::hypot(line.x1, line.y1) * 1e6) / 1e6);
    }
    return result;
  }
  static std::size_t cutLines(const PictureBox& picture) { return picture.lines().size() - kAxes; }
  static double halfWidth(const PictureBox& picture) { return picture.scale().top; }

  TempSuite suite;
  ScriptedDesktop screen;
  DesktopInUse inUse{screen};
  frmAntPreview form;
};

TEST_F(AntPreviewForm, HasItsFramesItsPicturesAndFourAnswers) {
  EXPECT_EQ(form.name(), "frmAntPreview");
  EXPECT_EQ(form.caption(), "Antenna Preview");
  EXPECT_EQ(form.fraAnt.caption(), "Antenna");
  EXPECT_EQ(form.fraHor.caption(), "Azimuth Pattern");
  EXPECT_EQ(form.fraVer.caption(), "Elevation Pattern");
  std::vector<std::string> captions, tips;
  for (const CommandButton& button : form.Command1) {
    captions.push_back(button.caption());
    tips.push_back(button.toolTip());
    EXPECT_TRUE(button.reachable()) << button.caption();
    EXPECT_EQ(button.tabIndex(), static_cast<int>(tips.size()) - 1);
  }
  EXPECT_THAT(captions, ElementsAre("Add", "Skip", "Cancel", "No Preview"));
  EXPECT_THAT(tips, ElementsAre("Add this antenna", "Do NOT add this antenna", "Cancel this process",
                                "Continue without previews"));
  std::vector<std::string> names;
  for (const Widget* widget : form.widgets()) names.push_back(widget->name());
  EXPECT_THAT(names, ElementsAre("fraAnt", "lblAnt", "fraHor", "picHor", "fraVer", "picVer", "Command1_0", "Command1_1",
                                 "Command1_2", "Command1_3"));
}

TEST_F(AntPreviewForm, EachAnswerIsKeptAndHidesTheForm) {
  const long values[] = {6, 7, 2, 5};
  for (std::size_t i = 0; i < 4; ++i) {
    bool hidden = false;
    screen.onModal["frmAntPreview"] = [&](Form&) {
      form.Command1[i].userClick();
      hidden = !form.visible();
    };
    EXPECT_EQ(ask(10, "dBd", circle(0, 90, 10, 10)), values[i]);
    EXPECT_TRUE(hidden);
    EXPECT_EQ(form.lAction(), values[i]);
  }
}

TEST_F(AntPreviewForm, TheFrameCancels) {
  form.lAction(6);
  EXPECT_EQ(ask(10, "dBd", {}), 2);
}

TEST_F(AntPreviewForm, EnterAddsAndEscapeCancelsAndTheKeyboardStartsOnAddEachTime) {
  EXPECT_EQ(form.defaultButton(), &form.Command1[0]);
  EXPECT_EQ(form.cancelButton(), &form.Command1[2]);
  for (int i = 0; i < 2; ++i) {
    screen.onModal["frmAntPreview"] = [&](Form&) {
      EXPECT_EQ(form.activeWidget(), &form.Command1[0]);
      form.setFocus(form.Command1[1]);
    };
    ask(10, "dBd", {});
  }
  EXPECT_THAT(screen.formsShown(), SizeIs(2));
}

TEST_F(AntPreviewForm, TheActionStaysAsItWasPutUntilTheNextClick) {
  EXPECT_EQ(form.lAction(), 0);
  form.lAction(-32768);
  draw(10, "dBd", circle(0, 90, 10, 10));
  EXPECT_EQ(form.lAction(), -32768);
  screen.onModal["frmAntPreview"] = [&](Form&) {
    EXPECT_EQ(form.lAction(), -32768);
    form.Command1[1].userClick();
  };
  EXPECT_EQ(ask(10, "dBd", {}), 7);
}

TEST_F(AntPreviewForm, AFormThatIsHiddenWithoutAnAnswerGivesTheActionAsItWas) {
  form.lAction(7);
  screen.onModal["frmAntPreview"] = [&](Form&) { form.hide(); };
  EXPECT_EQ(ask(10, "dBd", {}), 7);
}

TEST_F(AntPreviewForm, DrawingAloneDoesNotShowIt) {
  draw(10, "dBd", circle(0, 90, 10, 10));
  EXPECT_FALSE(form.visible());
  EXPECT_THAT(screen.formsShown(), IsEmpty());
}

TEST_F(AntPreviewForm, TheTextNamesTheAntennaItsGainAndThePoints) {
  draw(7.256, "dBi", circle(0, 359, 1, 7), circle(-90, 90, 1, 7));
  EXPECT_EQ(form.lblAnt.caption(), "Panel\r\nGain: 7.26 dBi\r\n360 Azimuths; 181 Elevations");
  draw(7.25, "REL", circle(0, 90, 10, 1));
  EXPECT_EQ(form.lblAnt.caption(), "Panel\r\nGain: 7.25 REL\r\n10 Azimuths;  ");
  draw(-0.5, "", {}, circle(0, 9, 1, 0));
  EXPECT_EQ(form.lblAnt.caption(), "Panel\r\nGain: -0.50 \r\n 10 Elevations");
  draw(0, "dBd", {});
  EXPECT_EQ(form.lblAnt.caption(), "Panel\r\nGain: 0.00 dBd\r\n  ");
}

TEST_F(AntPreviewForm, TheModalOneBeginsWithTheLinesGiven) {
  ask(1234.5, "dBd", circle(0, 90, 10, 10));
  EXPECT_EQ(form.lblAnt.caption(), "From here\r\nPanel\r\nGain: 1234.50 dBd\r\n10 Azimuths;  ");
}

TEST_F(AntPreviewForm, AnOmniIsACircleOfItsGainAboutAFloorOfZero) {
  draw(6, "dBd", circle(0, 359, 1, 6), circle(-90, 90, 10, 6), 6, 6);
  EXPECT_DOUBLE_EQ(halfWidth(form.picHor), 1.05 * 6);
  EXPECT_DOUBLE_EQ(halfWidth(form.picVer), 1.05 * 6);
  EXPECT_THAT(radii(form.picHor), testing::AllOf(SizeIs(360), testing::Each(6)));
}

TEST_F(AntPreviewForm, AnOmniWithoutGainIsDrawnInAScaleOfOne) {
  draw(0, "dBd", circle(0, 359, 1, 0), {}, 0);
  EXPECT_DOUBLE_EQ(halfWidth(form.picHor), 1.05);
  EXPECT_THAT(radii(form.picHor), testing::Each(0));
  draw(-4, "dBd", circle(0, 359, 1, -4), {}, -4);
  EXPECT_DOUBLE_EQ(halfWidth(form.picHor), 1.05);
  EXPECT_THAT(radii(form.picHor), testing::Each(0));
}

TEST_F(AntPreviewForm, ACutOfHalfACircleStaysOpen) {
  draw(10, "dBd", circle(10, 170, 10, 10));
  EXPECT_EQ(cutLines(form.picHor), 16U);
}

TEST_F(AntPreviewForm, ANullBelowTheFloorFallsOnTheCentre) {
  const Points cut{{0, 90, 180}, {10, -35, -29}};
  draw(10, "dBd", cut, cut, -35, -35);
  EXPECT_DOUBLE_EQ(halfWidth(form.picHor), 1.05 * 40);
  EXPECT_EQ(form.picHor.lines()[kAxes].x2, 0);
  EXPECT_EQ(form.picHor.lines()[kAxes].y2, 0);
  EXPECT_EQ(ask(10, "dBd", cut, cut, -35, -35), 2);
  EXPECT_EQ(form.picVer.lines()[kAxes].y2, 0);
  EXPECT_NEAR(form.picVer.lines()[kAxes + 1].x2, -1, 1e-6);
}

TEST_F(AntPreviewForm, TheFloorComesFromTheDefaults) {
  setINI("HDAntenna", "GainMinPlot", getDefaultsINI(), "-10");
  draw(10, "dBd", {{0, 90}, {10, -35}}, {}, -35);
  EXPECT_DOUBLE_EQ(halfWidth(form.picHor), 1.05 * 20);
}

TEST_F(AntPreviewForm, EachCutHasAFloorOfItsOwn) {
  draw(10, "dBd", {{0, 90}, {10, -5}}, {{0, 90}, {10, -20}}, -5, -20);
  EXPECT_DOUBLE_EQ(halfWidth(form.picHor), 1.05 * 15);
  EXPECT_DOUBLE_EQ(halfWidth(form.picVer), 1.05 * 30);
  ask(10, "dBd", {{0, 90}, {10, -5}}, {{0, 90}, {10, -20}}, -5, -20);
  EXPECT_DOUBLE_EQ(halfWidth(form.picHor), 1.05 * 15);
  EXPECT_DOUBLE_EQ(halfWidth(form.picVer), 1.05 * 30);
}

TEST_F(AntPreviewForm, AFullAzimuthCutIsClosed) {
  draw(10, "dBd", circle(0, 359, 1, 10));
  EXPECT_EQ(cutLines(form.picHor), 360U);
  ask(10, "dBd", circle(0, 359, 1, 10));
  EXPECT_EQ(cutLines(form.picHor), 360U);
}

TEST_F(AntPreviewForm, OppositePointsCloseByTheFoldedDirections) {
  draw(10, "dBd", {{1, 90, 180}, {10, 10, 10}});
  EXPECT_EQ(cutLines(form.picHor), 3U);
  ask(10, "dBd", {{1, 90, 180}, {10, 10, 10}}, {{89, 180, 271}, {10, 10, 10}});
  EXPECT_EQ(cutLines(form.picHor), 3U);
  EXPECT_EQ(cutLines(form.picVer), 3U);
}

TEST_F(AntPreviewForm, APointOnTheHorizontalHasTheDirectionNinety) {
  draw(10, "dBd", {}, {{0, 45, 3}, {10, 10, 10}});
  EXPECT_EQ(cutLines(form.picVer), 3U);
  draw(10, "dBd", {}, {{0, 45, 90}, {10, 10, 10}});
  EXPECT_EQ(cutLines(form.picVer), 2U);
}

TEST_F(AntPreviewForm, TheAzimuthCutIsSortedBeforeItIsDrawnAndTheElevationCutIsNot) {
  Numbers az{200, 10, 100}, azGain{3, 1, 2};
  form.AntPreview("Panel", 3, "dBd", 0, 0, 3, az, azGain, 3, {20, -10, 5}, {3, 1, 2});
  EXPECT_THAT(az, ElementsAre(10, 100, 200));
  EXPECT_THAT(azGain, ElementsAre(1, 2, 3));
  EXPECT_THAT(radii(form.picHor), ElementsAre(1, 2));
  EXPECT_THAT(radii(form.picVer), ElementsAre(3, 1));
}

TEST_F(AntPreviewForm, TheModalOneDrawsInTheOrderGiven) {
  ask(3, "dBd", {{200, 10, 100}, {3, 1, 2}});
  EXPECT_THAT(radii(form.picHor), ElementsAre(3, 1));
}

TEST_F(AntPreviewForm, RelativePatternsRunFromZeroToOneWhateverTheGain) {
  draw(8, "REL", {{0, 90}, {1, 0.5}}, {}, 0.5);
  EXPECT_DOUBLE_EQ(halfWidth(form.picHor), 1.05);
  EXPECT_DOUBLE_EQ(form.picHor.lines()[kAxes].x2, 0.5 * std::sin(90 * kRadiansPerDegree));
  ask(8, "REL", {{0, 90}, {1, 0.5}}, {}, 0.5);
  EXPECT_DOUBLE_EQ(halfWidth(form.picHor), 1.05);
}

TEST_F(AntPreviewForm, OnlyUnitsOfDecibelsHaveAFloorInTheModalOne) {
  const Points cut{{0, 90}, {10, -5}};
  for (const char* units : {"dBd", "DBi", "dB", "db of its own"}) {
    ask(10, units, cut, {}, -5);
    EXPECT_DOUBLE_EQ(halfWidth(form.picHor), 1.05 * 15) << units;
    EXPECT_NEAR(form.picHor.lines()[kAxes].x2, 0, 1e-6) << units;
  }
  for (const char* units : {"", "d", "W", "xdB"}) {
    ask(10, units, cut, {}, -5);
    EXPECT_DOUBLE_EQ(halfWidth(form.picHor), 1.05 * 10) << units;
    EXPECT_NEAR(form.picHor.lines()[kAxes].x2, -5, 1e-6) << units;
    draw(10, units, cut, {}, -5);
    EXPECT_DOUBLE_EQ(halfWidth(form.picHor), 1.05 * 15) << units;
  }
}

TEST_F(AntPreviewForm, InDecibelsAValueBelowTheFloorFallsOnTheCentreInTheModalOneToo) {
  ask(10, "dBd", {{0, 90}, {10, -12}}, {}, -5);
  EXPECT_EQ(form.picHor.lines()[kAxes].x2, 0);
}

TEST_F(AntPreviewForm, EmptyCutsLeaveThePicturesBlank) {
  draw(10, "dBd", circle(0, 90, 10, 10), circle(0, 90, 10, 10));
  draw(10, "dBd", {});
  EXPECT_THAT(form.picHor.lines(), IsEmpty());
  EXPECT_THAT(form.picVer.lines(), IsEmpty());
  ask(10, "dBd", circle(0, 90, 10, 10));
  EXPECT_THAT(form.picHor.lines(), SizeIs(kAxes + 9));
  EXPECT_THAT(form.picVer.lines(), IsEmpty());
}

TEST_F(AntPreviewForm, CountsBeyondTheArraysAndBelowZeroDrawWhatThereIs) {
  Numbers az{0, 90, 180}, azGain{10, 5};
  form.AntPreview("", 10, "dBd", 0, 0, 32767, az, azGain, -1, {0, 1}, {10, 10});
  EXPECT_EQ(cutLines(form.picHor), 1U);
  EXPECT_THAT(form.picVer.lines(), IsEmpty());
  EXPECT_EQ(form.lblAnt.caption(), "\r\nGain: 10.00 dBd\r\n32767 Azimuths;  ");
  Numbers three{0, 90, 180}, threeGains{10, 5, 2};
  form.AntPreview("", 10, "dBd", 0, 0, 2, three, threeGains, 1, {0, 1}, {10, 10});
  EXPECT_EQ(cutLines(form.picHor), 1U);
  EXPECT_EQ(cutLines(form.picVer), 0U);
}

TEST_F(AntPreviewForm, ValuesThatAreNoNumbersAreAnOverflowAndLeaveNoAntennaDrawn) {
  for (const double bad : {kInfinite, -kInfinite, kNoNumber}) {
    draw(10, "dBd", circle(0, 90, 10, 10), circle(0, 90, 10, 10));
    EXPECT_THROW(draw(bad, "dBd", circle(0, 90, 10, 10)), RunTimeFailure) << bad;
    EXPECT_THAT(form.picHor.lines(), IsEmpty());
    EXPECT_THAT(form.picVer.lines(), IsEmpty());
    EXPECT_THROW(draw(10, "dBd", {{0, bad, 20}, {10, 10, 10}}), RunTimeFailure) << bad;
    EXPECT_THAT(form.picHor.lines(), IsEmpty());
  }
  EXPECT_THROW(draw(10, "dBd", {{0, 1}, {10, kInfinite}}), RunTimeFailure);
  EXPECT_THROW(draw(10, "dBd", {{0, 1}, {10, kNoNumber}}), RunTimeFailure);
  EXPECT_THROW(ask(10, "W", {{0, 1}, {10, -kInfinite}}), RunTimeFailure);
  EXPECT_THAT(screen.formsShown(), IsEmpty());
}

TEST_F(AntPreviewForm, AFullCutOfThirtyTwoThousandPointsIsDrawnWhole) {
  Points cut;
  for (int i = 32766; i >= 0; --i) {
    cut.angles.push_back(i * 360.0 / 32767);
    cut.values.push_back(i % 40 - 20);
  }
  draw(10, "dBd", cut, cut, -30, -30);
  EXPECT_EQ(cutLines(form.picHor), 32767U);
  EXPECT_EQ(cutLines(form.picVer), 32766U);
}

TEST_F(AntPreviewForm, ComesBackWhereItWasLeft) {
  std::optional<frmAntPreview> first(std::in_place);
  const Rectangle centred = first->geometry();
  EXPECT_EQ(centred.left, (1920 * 15 - centred.width) / 2);
  first->moveTo(1500, 900);
  first.reset();
  EXPECT_EQ(getINIStr("CONFIG", "frmAntPreview-X", ""), "1500");
  EXPECT_EQ(getINIStr("CONFIG", "frmAntPreview-Y", ""), "900");
  const frmAntPreview second;
  EXPECT_EQ(second.geometry().left, 1500);
  EXPECT_EQ(second.geometry().top, 900);
  EXPECT_EQ(second.geometry().width, centred.width);
}

TEST_F(AntPreviewForm, AMaximisedFormKeepsThePlaceItHadBefore) {
  {
    frmAntPreview left;
    left.moveTo(1500, 900);
  }
  {
    frmAntPreview left;
    left.setWindowState(Form::WindowState::maximised);
    left.moveTo(0, 0);
  }
  EXPECT_EQ(getINIStr("CONFIG", "frmAntPreview-X", ""), "1500");
}

TEST(AntPreviewWithoutAScreen, KeepsNoPlace) {
  const TempSuite suite;
  ScriptedDesktop screen;
  screen.screens.monitors.clear();
  const DesktopInUse inUse(screen);
  { const frmAntPreview form; }
  EXPECT_EQ(getINIStr("CONFIG", "frmAntPreview-X", "none"), "none");
}

void expectSorted(Numbers angles, Numbers gains, const Numbers& sortedAngles, const Numbers& sortedGains,
                  std::int16_t n) {
  SortPattern(n, angles, gains);
  EXPECT_EQ(angles, sortedAngles);
  EXPECT_EQ(gains, sortedGains);
}

TEST(SortPattern, SortsAnglesUpwardAndTheGainsWithThem) {
  expectSorted({350, -10, 0, 90}, {1, 2, 3, 4}, {-10, 0, 90, 350}, {2, 3, 4, 1}, 4);
  expectSorted({5}, {1}, {5}, {1}, 1);
  expectSorted({}, {}, {}, {}, 0);
}

TEST(SortPattern, LeavesWhatGoesBeyondTheCountOrTheShorterArray) {
  expectSorted({3, 2, 1}, {1, 2, 3}, {2, 3, 1}, {2, 1, 3}, 2);
  expectSorted({3, 2, 1}, {1, 2}, {2, 3, 1}, {2, 1}, 32767);
  expectSorted({3, 2, 1}, {1, 2, 3}, {3, 2, 1}, {1, 2, 3}, -1);
}

TEST(SortPattern, KeepsEveryPointOfEqualAngles) {
  Numbers angles{10, 5, 10, 5}, gains{1, 2, 3, 4};
  SortPattern(4, angles, gains);
  EXPECT_THAT(angles, ElementsAre(5, 5, 10, 10));
  EXPECT_THAT(Numbers(gains.begin(), gains.begin() + 2), testing::UnorderedElementsAre(2, 4));
  EXPECT_THAT(Numbers(gains.begin() + 2, gains.end()), testing::UnorderedElementsAre(1, 3));
}

TEST(SortPattern, PutsAnglesThatAreNoNumbersLast) {
  Numbers angles{kNoNumber, 5, kInfinite, kNoNumber, -kInfinite, 1}, gains{1, 2, 3, 4, 5, 6};
  SortPattern(6, angles, gains);
  EXPECT_THAT(Numbers(angles.begin(), angles.begin() + 4), ElementsAre(-kInfinite, 1, 5, kInfinite));
  EXPECT_TRUE(std::isnan(angles[4]) && std::isnan(angles[5]));
  EXPECT_THAT(Numbers(gains.begin(), gains.begin() + 4), ElementsAre(5, 6, 2, 3));
}

}  // namespace
}  // namespace vantrelix::test
