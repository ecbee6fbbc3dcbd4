#include <gmock/gmock.h>

#include "controls/LookAntFixture.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {
namespace {

using ::testing::HasSubstr;

constexpr int kOnTheCentre = 0;

class Pattern : public test::LookAntLibraryTest {
 protected:
  // The directions of the lines of a cut's points as drawn, from 0 up clockwise (azimuth) or 0 right counter-clockwise.
  static std::vector<int> azimuths(const PictureBox& picture) {
    return degrees(picture, [](double x, double y) { return std::atan2(x, y); });
  }
  static std::vector<int> elevations(const PictureBox& picture) {
    return degrees(picture, [](double x, double y) { return std::atan2(y, x); });
  }

 private:
  template <class Direction>
  static std::vector<int> degrees(const PictureBox& picture, Direction direction) {
    std::vector<int> result;
    for (std::size_t i = 2; i < picture.lines().size(); ++i) {
      const PictureBox::Line& line = picture.lines()[i];
      const auto of = [&](double x, double y) {
        return static_cast<int>(std::lround(direction(x, y) * 180 / 3.14159265358979));
      };
      if (i == 2) result.push_back(of(line.x1, line.y1));
      result.push_back(of(line.x2, line.y2));
    }
    return result;
  }
};

TEST_F(Pattern, AFileAndAnIdBecomeTheLibrarysValues) {
  addPanel();
  control.sValueUnit("dBd");
  control.sValueGain("1");
  show();
  EXPECT_EQ(control.sValueDesc(), "Panel");
  EXPECT_EQ(control.sValueUnit(), "dBi");
  EXPECT_EQ(control.sValueGain(), "12.50");
  EXPECT_TRUE(control.bPatAz() && control.bPatEl());
  EXPECT_EQ(control.Alerts(), "");
  EXPECT_TRUE(screen.shown().empty());
}

TEST_F(Pattern, TheUnitFollowsTheLibraryAndBecomesTheDefault) {
  addPanel();
  control.sValueUnit("REL");
  control.sValueGain("2");
  show();
  EXPECT_EQ(control.sValueUnit(), "dBi");
  EXPECT_EQ(defaultUnit(), "dBi");
}

TEST_F(Pattern, DescriptionGainAndUnitAreLockedUnlessTheDefaultsSayOtherwise) {
  addPanel();
  show();
  EXPECT_TRUE(control.txtDesc.locked() && control.txtGain.locked() && control.cboUnit.locked());
  EXPECT_EQ(control.txtGain.backColor(), color::buttonFace);
  setDefault("Antenna Lookup", "NoGainLock", "True");
  control.GetAntPat();
  EXPECT_FALSE(control.txtDesc.locked() || control.txtGain.locked() || control.cboUnit.locked());
  EXPECT_EQ(control.txtGain.backColor(), color::white);
}

TEST_F(Pattern, WithoutAFileOrAnIdNothingIsRead) {
  addPanel();
  control.sValueDesc("typed");
  control.sValueUnit("dBd");
  control.sValueGain("3");
  control.sValueID("T00010000001");
  control.GetAntPat();
  control.sValueFile("AMST0001");
  control.sValueID(" ");
  control.GetAntPat();
  EXPECT_EQ(control.sValueDesc() + " " + control.sValueGain() + " " + control.sValueUnit(), "typed 3.00 dBd");
  EXPECT_FALSE(control.bPatAz() || control.bPatEl());
  EXPECT_TRUE(control.picHor.lines().empty() && control.picVer.lines().empty());
  EXPECT_EQ(control.Alerts(), "");
}

TEST_F(Pattern, ThePlaceholdersOfABlankRowAreBlanked) {
  control.sValueFile("File");
  control.sValueID("ID");
  control.GetAntPat();
  EXPECT_EQ(control.sValueFile() + control.sValueID(), "");
  control.sValueFile("FILE");
  control.sValueID("");
  control.GetAntPat();
  EXPECT_EQ(control.sValueFile(), "FILE");
}

TEST_F(Pattern, AMissingAntennaIsZeroDbdWithAnAlertAndNoBox) {
  addPanel();
  control.sValueDesc("old");
  show("T00019999999");
  EXPECT_EQ(control.sValueGain() + " " + control.sValueUnit(), "0.00 dBd");
  EXPECT_EQ(control.sValueDesc(), "");
  EXPECT_THAT(control.Alerts(), HasSubstr("The specified antenna was not found:"));
  EXPECT_EQ(heard(), "alert ");
  EXPECT_TRUE(control.txtGain.locked());
  EXPECT_TRUE(screen.shown().empty());
  EXPECT_TRUE(control.picHor.lines().empty());
}

TEST_F(Pattern, TheAlertComesBehindTheValuesAndTheirLock) {
  bool ready = false;
  control.NewAlert.listen([&] { ready = control.sValueGain() == "0.00" && control.txtGain.locked(); });
  show("T00019999999");
  EXPECT_TRUE(ready);
}

TEST_F(Pattern, AHostMayReadAnotherAntennaInTheAlert) {
  addPanel();
  bool once = false;
  control.NewAlert.listen([&] {
    if (!std::exchange(once, true)) show();
  });
  show("T00019999999");
  EXPECT_EQ(control.sValueGain() + " " + control.sValueUnit(), "12.50 dBi");
  EXPECT_TRUE(control.bPatAz() && control.bPatEl());
  EXPECT_EQ(control.picHor.lines().size(), 2u + 3u);
}

TEST_F(Pattern, AMissingLibraryIsToldInTheAlerts) {
  control.sValueFile("AMSNONE1");
  control.sValueID("1");
  control.GetAntPat();
  EXPECT_THAT(control.Alerts(), HasSubstr("The specified antenna data base was not found:"));
  EXPECT_EQ(control.sValueGain() + " " + control.sValueUnit(), "0.00 dBd");
  EXPECT_TRUE(screen.shown().empty());
}

TEST_F(Pattern, BothCutsAreDrawnAboutTheirOwnFloors) {
  addPanel();
  show();
  EXPECT_EQ(control.picHor.lines().size(), 2u + 3u);
  EXPECT_EQ(control.picVer.lines().size(), 2u + 2u);
  EXPECT_DOUBLE_EQ(control.picHor.scale().width, 2.1 * 32.5);
  EXPECT_DOUBLE_EQ(control.picVer.scale().width, 2.1 * 27.5);
  EXPECT_EQ(azimuths(control.picHor)[0], 0);
}

TEST_F(Pattern, APositiveAzimuthCutHasTheFloorZeroAndAnElevationCutItsOwnMinimum) {
  add("Flat", 6, "dBd", {{0, 180}, {6, 4}}, {{-90, 0}, {2, 6}});
  show();
  EXPECT_DOUBLE_EQ(control.picHor.scale().width, 2.1 * 6);
  EXPECT_DOUBLE_EQ(control.picVer.scale().width, 2.1 * 4);
}

TEST_F(Pattern, ARelativeAntennaIsDrawnFromZeroToOne) {
  add("Relative", 8, "REL", {{0, 180}, {1, 0.5}}, {{-90, 0}, {0.25, 1}});
  show();
  EXPECT_EQ(control.sValueGain() + " " + control.sValueUnit(), "8.00 REL");
  EXPECT_DOUBLE_EQ(control.picHor.scale().width, 2.1);
  EXPECT_DOUBLE_EQ(control.picVer.scale().width, 2.1);
}

TEST_F(Pattern, ThePlotFloorComesFromTheDefaults) {
  addPanel();
  setDefault("HDAntenna", "GainMinPlot", "-10");
  show();
  EXPECT_DOUBLE_EQ(control.picHor.scale().width, 2.1 * 22.5);
}

TEST_F(Pattern, TheOrientationTurnsTheAzimuthCut) {
  add("Turned", 10, "dBd", {{0, 60, 90}, {10, 9, 8}}, {{0, 10}, {10, 9}});
  control.sValueOrient("20");
  show();
  EXPECT_EQ(azimuths(control.picHor), (std::vector<int>{20, 80, 110}));
  EXPECT_EQ(elevations(control.picVer)[0], 0);
}

TEST_F(Pattern, BothTiltsMoveTheElevationCutAndInversionTurnsTheSign) {
  add("Tilted", 10, "dBd", {{0, 60}, {10, 9}}, {{0, 30, 60, 90}, {10, 9, 8, 2}});
  control.sValueEtilt("-2");
  control.sValueMtilt("-3");
  control.sValueMazim("90");
  show();
  EXPECT_EQ(elevations(control.picVer), (std::vector<int>{-5, 25, 55, kOnTheCentre}));
  control.sValueInvert(true);
  control.GetAntPat();
  EXPECT_EQ(elevations(control.picVer), (std::vector<int>{5, -25, -55, kOnTheCentre}));
}

TEST_F(Pattern, LeavingABoxRedrawsAndTheTiltAzimuthDoesNot) {
  addPanel();
  show();
  const auto before = control.picHor.lines();
  control.txtOrient.setText("45");
  control.txtMAzim.userBlur();
  EXPECT_EQ(control.picHor.lines(), before);
  control.txtOrient.userBlur();
  EXPECT_NE(control.picHor.lines(), before);
}

TEST_F(Pattern, TheInversionIsDrawnBeforeTheHostIsTold) {
  addPanel();
  show();
  const auto before = control.picVer.lines();
  bool redrawn = false;
  control.ChangeMounting.listen([&] { redrawn = control.picVer.lines() != before; });
  control.sValueEtilt("-4");
  control.chkInvert.userClick();
  EXPECT_TRUE(redrawn);
}

TEST_F(Pattern, WhileLoadingLeavingABoxDoesNotRead) {
  addPanel();
  name();
  const ControlLoading loading(control);
  control.txtOrient.userBlur();
  control.txtETilt.userBlur();
  control.chkInvert.userClick();
  EXPECT_EQ(control.sValueDesc(), "");
}

TEST_F(Pattern, AnAntennaWithOneCutShowsBareAxesForTheOther) {
  add("Azimuth only", 10, "dBd", {{0, 90, 180, 270}, {10, 5, 0, 5}}, {});
  show();
  EXPECT_TRUE(control.bPatAz());
  EXPECT_FALSE(control.bPatEl());
  EXPECT_EQ(control.picVer.lines().size(), 2u);
  control.SeeElevation(10, color::red);
  EXPECT_EQ(control.picVer.lines().size(), 2u);
  const std::size_t lines = control.picHor.lines().size();
  control.SeeAzimuth(10, color::red);
  EXPECT_EQ(control.picHor.lines().size(), lines + 1);
}

TEST_F(Pattern, PointersRunToTheEdgeAndStayUntilTheNextRedraw) {
  addPanel();
  show();
  const std::size_t lines = control.picVer.lines().size();
  control.SeeAzimuth(90, 0x00FF00);
  control.SeeElevation(90);
  const PictureBox::Line azimuth = control.picHor.lines().back();
  EXPECT_NEAR(azimuth.x2, 1.05 * 32.5, 1e-6);
  EXPECT_NEAR(azimuth.y2, 0, 1e-6);
  EXPECT_EQ(azimuth.colour, Color{0x00FF00});
  const PictureBox::Line elevation = control.picVer.lines().back();
  EXPECT_NEAR(elevation.y2, 1.05 * 27.5, 1e-6);
  control.GetAntPat();
  EXPECT_EQ(control.picVer.lines().size(), lines);
}

TEST_F(Pattern, WithoutAnAntennaPointersDrawNothing) {
  control.GetAntPat();
  control.SeeAzimuth(10);
  control.SeeElevation(10);
  EXPECT_TRUE(control.picHor.lines().empty() && control.picVer.lines().empty());
}

TEST_F(Pattern, ACutThatStopsAtHalfACircleIsNotClosed) {
  add("Half", 10, "dBd", {{0, 45, 90, 135, 180}, {10, 9, 8, 7, 6}}, {{0, 5}, {10, 9}});
  show();
  EXPECT_EQ(control.picHor.lines().size(), 2u + 4u);
}

TEST_F(Pattern, ANewReadWithoutAnAntennaErasesWhatWasDrawn) {
  addPanel();
  show();
  control.sValueID("");
  control.GetAntPat();
  EXPECT_TRUE(control.picHor.lines().empty() && control.picVer.lines().empty());
  EXPECT_FALSE(control.txtDesc.locked());
}

TEST_F(Pattern, AFailureOfTheDrawingIsLoggedAndGoesNoFurther) {
  addPanel();
  bool fail = true;
  control.picVer.changed.listen([&] {
    if (fail) throw RunTimeFailure(failure::overflow, "surface lost");
  });
  EXPECT_NO_THROW(show());
  EXPECT_THAT(suite.log(), HasSubstr("Error in SeeAntPreview\r\nError 6: surface lost"));
  EXPECT_TRUE(screen.shown().empty());
  EXPECT_EQ(control.sValueGain(), "12.50");
  fail = false;
  control.GetAntPat();
  EXPECT_FALSE(control.picVer.lines().empty());
}

TEST_F(Pattern, AFailureOfTheSurfaceIsReportedAndLeavesNoPattern) {
  addPanel();
  show();
  control.picHor.changed.listen([] { throw std::bad_alloc(); });
  EXPECT_NO_THROW(control.GetAntPat());
  EXPECT_EQ(screen.shown().size(), 1u);
  EXPECT_FALSE(control.bPatAz() || control.bPatEl());
  const std::size_t lines = control.picVer.lines().size();
  control.SeeElevation(10);
  EXPECT_EQ(control.picVer.lines().size(), lines);
}

TEST_F(Pattern, ADamagedCutIsReportedAndTheAntennaShownWithoutIt) {
  addPanel();
  suite.folder().write("ANTENNAS/AHDT0001.DBF", "no table");
  EXPECT_NO_THROW(show());
  EXPECT_EQ(screen.shown().size(), 1u);
  EXPECT_EQ(control.sValueDesc() + " " + control.sValueGain() + " " + control.sValueUnit(), "Panel 12.50 dBi");
  EXPECT_FALSE(control.bPatAz());
  EXPECT_TRUE(control.picHor.lines().empty());
}

TEST_F(Pattern, AFailureThatCannotEvenBeLoggedIsToldInOneBox) {
  addPanel();
  suite.folder().write("ANTENNAS/AMST0001.DBF", "no table");
  suite.folder().write("QVTECSUP.TXT/in the way", "");
  EXPECT_NO_THROW(show());
  ASSERT_EQ(screen.shown().size(), 1u);
  const Message& message = screen.shown()[0].message;
  EXPECT_THAT(message.title, HasSubstr("Error in "));
  EXPECT_THAT(message.text, HasSubstr("QVTECSUP.TXT"));
  EXPECT_THAT(message.text, HasSubstr("AMST0001"));
  EXPECT_EQ(message.icon, MsgIcon::critical);
}

TEST_F(Pattern, AnAntennasFolderThatIsAFileIsNoMoreThanAMissingLibrary) {
  suite.folder().write("other/ANTENNAS", "");
  setSuiteDir(suite.file("other"));
  EXPECT_NO_THROW(show());
  EXPECT_THAT(control.Alerts(), HasSubstr("The specified antenna data base was not found:"));
  EXPECT_TRUE(control.picHor.lines().empty());
}

TEST_F(Pattern, AFailureOfTheReadIsReportedAndTheControlStaysUsable) {
  addPanel();
  suite.folder().write("ANTENNAS/AMST0001.DBF", "no table");
  EXPECT_NO_THROW(show());
  EXPECT_EQ(screen.shown().size(), 1u);
  EXPECT_THAT(suite.log(), HasSubstr("Error "));
  EXPECT_TRUE(control.picHor.lines().empty());
  control.sValueID("");
  EXPECT_NO_THROW(control.GetAntPat());
}

}  // namespace
}  // namespace vantrelix
