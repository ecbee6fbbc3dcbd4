#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "import/patternLines.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {

namespace {

using ::testing::DoubleEq;
using ::testing::ElementsAre;

ImportedAntenna readHorizontal(const std::string& text, const PatternLineRules& rules = {}, double Gain = 10) {
  ImportedAntenna antenna;
  antenna.MinHor = 888888;
  TextLines lines(text);
  readPatternLines(lines, rules, Gain, horizontalCut(antenna));
  return antenna;
}

TEST(WrapAzimuth, BringsAnAngleIntoOneTurn) {
  EXPECT_DOUBLE_EQ(wrapAzimuth(0), 0);
  EXPECT_DOUBLE_EQ(wrapAzimuth(360), 360);
  EXPECT_DOUBLE_EQ(wrapAzimuth(370), 10);
  EXPECT_DOUBLE_EQ(wrapAzimuth(-10), 350);
  EXPECT_DOUBLE_EQ(wrapAzimuth(720), 360);
}

TEST(WrapAzimuth, EndsAtTheTurnFromAboveAndAtZeroFromBelowHoweverFar) {
  for (const double angle : {720.0, 360000.0, 360360.0, 720000.0, 3.6e17}) {
    EXPECT_EQ(wrapAzimuth(angle), 360) << angle;
    EXPECT_EQ(wrapAzimuth(-angle), 0) << angle;
  }
  EXPECT_DOUBLE_EQ(wrapAzimuth(360361), 1);
  EXPECT_DOUBLE_EQ(wrapAzimuth(-360361), 359);
  EXPECT_DOUBLE_EQ(wrapAzimuth(1e15), 280);
  EXPECT_DOUBLE_EQ(wrapAzimuth(-1e15), 80);
}

TEST(WrapAzimuth, EndsForAnglesThatStepsWouldNeverBringHome) {
  for (const double angle : {1e300, -1e300, 1e17, -3.6e8}) {
    EXPECT_GE(wrapAzimuth(angle), 0) << angle;
    EXPECT_LE(wrapAzimuth(angle), 360) << angle;
  }
}

TEST(NegatedElevation, TurnsUpwardIntoDownward) {
  EXPECT_DOUBLE_EQ(negatedElevation(10), -10);
  EXPECT_DOUBLE_EQ(negatedElevation(190), 170);
  EXPECT_DOUBLE_EQ(negatedElevation(180), -180);
  EXPECT_DOUBLE_EQ(negatedElevation(-90), 90);
  EXPECT_FALSE(std::signbit(negatedElevation(0)));
}

TEST(PatternLines, HoldAttenuationWithEitherSign) {
  const ImportedAntenna antenna = readHorizontal("0 3.5\n10 -3.5\n");
  EXPECT_THAT(antenna.HorValue, ElementsAre(6.5, 6.5));
  EXPECT_THAT(antenna.HorAngle, ElementsAre(0, 10));
  EXPECT_EQ(antenna.HorCount, 2);
}

TEST(PatternLines, MayHoldLevelsAsTheyAre) {
  PatternLineRules rules;
  rules.absoluteLevels = true;
  EXPECT_THAT(readHorizontal("0 3.5\n10 -3.5\n", rules).HorValue, ElementsAre(3.5, -3.5));
}

TEST(PatternLines, ArePassedOverWhereTheyAreBlankOrNotNumeric) {
  const ImportedAntenna antenna = readHorizontal("\n  \ntitle line\n0 1\n10 one\nten 1\n20\n30 2 extra\n");
  EXPECT_THAT(antenna.HorAngle, ElementsAre(0, 30));
  EXPECT_THAT(antenna.HorValue, ElementsAre(9, 8));
}

TEST(PatternLines, AreSplitAtTabsWhereTheyHoldOneAndElseAtRunsOfBlanks) {
  EXPECT_THAT(readHorizontal("0\t1\n   10    2  \n20 \t 3\n").HorAngle, ElementsAre(0, 10, 20));
  EXPECT_EQ(readHorizontal("\t0\t1\n").HorCount, 0);
  EXPECT_EQ(readHorizontal("0 1\t2\n").HorCount, 0);
}

TEST(PatternLines, MayHaveADelimiterOfTheirOwn) {
  PatternLineRules rules;
  rules.delimiter = ",";
  EXPECT_THAT(readHorizontal("0,1\n10, 2\n20 3\n", rules).HorAngle, ElementsAre(0, 10));
}

TEST(PatternLines, KeepTheLowestValue) {
  EXPECT_THAT(readHorizontal("0 1\n10 70\n20 2\n").MinHor, DoubleEq(-60));
  PatternLineRules rules;
  rules.minimumAboveMinus50 = true;
  EXPECT_THAT(readHorizontal("0 -1\n10 -50\n20 -49\n", rules).MinHor, DoubleEq(-39));
}

TEST(PatternLines, EndAtTheFormatsMarker) {
  PatternLineRules rules;
  rules.endsCut = [](std::string_view line) { return line == "END"; };
  EXPECT_THAT(readHorizontal("0 1\nEND\n10 1\n", rules).HorAngle, ElementsAre(0));
}

TEST(PatternLines, FailCleanlyAboveTheLargestCount) {
  std::string text;
  for (int i = 0; i < 32767; ++i) text += "1 1\n";
  EXPECT_EQ(readHorizontal(text).HorCount, 32767);
  try {
    readHorizontal(text + "1 1\n");
    FAIL() << "no failure";
  } catch (const RunTimeFailure& failure) {
    EXPECT_EQ(failure.number(), 6);
  }
}

TEST(PatternLines, FailWhereAValueLeavesTheRangeOfNumbers) {
  EXPECT_THROW(readHorizontal("0 1.7E308\n", {}, -1.7e308), RunTimeFailure);
  EXPECT_EQ(readHorizontal("0 1E999\n").HorCount, 0);
}

TEST(PatternLines, GoIntoEitherCut) {
  ImportedAntenna antenna;
  antenna.MinVer = 88888;
  TextLines lines("10 1\n");
  PatternLineRules rules;
  rules.angle = negatedElevation;
  readPatternLines(lines, rules, 5, verticalCut(antenna));
  EXPECT_EQ(antenna.VerCount, 1);
  EXPECT_THAT(antenna.VerAngle, ElementsAre(-10));
  EXPECT_THAT(antenna.VerValue, ElementsAre(4));
  EXPECT_DOUBLE_EQ(antenna.MinVer, 4);
}

}  // namespace

}  // namespace vantrelix
