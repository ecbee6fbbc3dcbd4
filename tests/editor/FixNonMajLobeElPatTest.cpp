// The diagnosis of an elevation cut off the major lobe and its shift, on arrays alone.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "editor/correctAntPattern.h"
#include "support/TempSuite.h"

namespace vantrelix::test {
namespace {

using ::testing::DoubleNear;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

constexpr const char* kPlease =
    "\r\nPanel\r\n\r\nPlease send the QVTECSUP.TXT file, along with a description of what you were trying to do when "
    "this error happened, to:\r\n\r\nyour ZOR supplier";

class FixNonMajLobeElPatTest : public testing::Test {
 protected:
  int fix(double gain, const std::string& unit = "dBd") {
    int result = -1;
    FixNonMajLobeElPat(gain, unit, static_cast<std::int16_t>(az.size() - 1), az, azGain,
                       static_cast<std::int16_t>(el.size() - 1), el, elGain, "Lib (AMST0001) ", "Ant ID: X", log,
                       result);
    return result;
  }
  void expectFailure(const std::string& firstLine) {
    ASSERT_EQ(suite.messages.size(), 1U);
    EXPECT_EQ(suite.messages[0].title, "Error in FixNonMajLobeElPat");
    EXPECT_EQ(suite.messages[0].icon, MsgIcon::critical);
    EXPECT_EQ(suite.messages[0].buttons, MsgButtons::ok);
    EXPECT_EQ(suite.messages[0].text, firstLine + kPlease);
    EXPECT_THAT(suite.log(), HasSubstr(":  " + firstLine + kPlease + "\r\nLib (AMST0001)  : Ant ID: X  ("));
    EXPECT_EQ(log, "Panel");
  }

  TempSuite suite;
  std::vector<double> az{0, 90, 180}, azGain{7.05, 10, 3};
  std::vector<double> el{-45, 0, 45}, elGain{-2, 7, 1};
  std::string log = "Panel";
};

TEST_F(FixNonMajLobeElPatTest, ShiftsACutThatWasTakenOffTheMajorLobe) {
  EXPECT_EQ(fix(10), correction::corrected);
  EXPECT_THAT(elGain, ElementsAre(1, 10, 4));
  EXPECT_EQ(log,
            "Panel\r\nNon Major-Lobe El Pattern Cut corrected\r\nLib (AMST0001)  : Ant ID: X\r\nGain values adjusted "
            "by 3.00 dBd");
  EXPECT_THAT(suite.messages, IsEmpty());
  EXPECT_THAT(suite.log(), HasSubstr(":  " + log + "  ("));
}

TEST_F(FixNonMajLobeElPatTest, ABlankLogTextTakesNoLineBreakInFront) {
  log = "";
  EXPECT_EQ(fix(10), correction::corrected);
  EXPECT_THAT(log, StartsWith("Non Major-Lobe"));
}

TEST_F(FixNonMajLobeElPatTest, MultipliesRelativeValues) {
  az = {0, 90};
  azGain = {0.5, 1};
  elGain = {0.1, 0.5, 0.2};
  EXPECT_EQ(fix(1, "REL"), correction::corrected);
  EXPECT_THAT(elGain, ElementsAre(0.2, 1, 0.4));
  EXPECT_THAT(log, HasSubstr("\r\nGain values adjusted by 2.00 REL"));
}

TEST_F(FixNonMajLobeElPatTest, AMaximumAboveTheGainIsShiftedDown) {
  azGain = {10.05, 10, 3};
  elGain = {-2, 10.14, 1};
  EXPECT_EQ(fix(10), correction::corrected);
  EXPECT_THAT(elGain[1], DoubleNear(10, 1e-9));
  EXPECT_THAT(elGain[0], DoubleNear(-2.14, 1e-9));
}

TEST_F(FixNonMajLobeElPatTest, ACutThatPeaksElsewhereCannotBeExplained) {
  azGain[0] = 7.2;
  EXPECT_EQ(fix(10), correction::unexplained);
  EXPECT_THAT(elGain, ElementsAre(-2, 7, 1));
  expectFailure("Unable to correct problem with elevation pattern");
}

TEST_F(FixNonMajLobeElPatTest, AnAzimuthCutThatDoesNotReachTheGainIsAFault) {
  azGain[1] = 9.8;
  EXPECT_EQ(fix(10), correction::azimuthFault);
  EXPECT_THAT(elGain, ElementsAre(-2, 7, 1));
  expectFailure("Error on Az Pattern");
}

TEST_F(FixNonMajLobeElPatTest, AnElevationMaximumNearTheGainNeedsNothing) {
  elGain = {-2, 9.95, 1};
  EXPECT_EQ(fix(10), correction::nothingToCorrect);
  EXPECT_THAT(elGain, ElementsAre(-2, 9.95, 1));
  EXPECT_THAT(suite.messages, IsEmpty());
  EXPECT_EQ(suite.log(), "");
  EXPECT_EQ(log, "Panel");
}

TEST_F(FixNonMajLobeElPatTest, TheAzimuthNearestZeroCountsAndTheFirstOfTwo) {
  az = {-10, 5, -5};
  azGain = {10, 7, 4};
  EXPECT_EQ(fix(10), correction::corrected);
  azGain = {10, 4, 7};
  elGain = {-2, 7, 1};
  log = "Panel";
  EXPECT_EQ(fix(10), correction::unexplained);
}

TEST_F(FixNonMajLobeElPatTest, DifferencesOfTheToleranceItselfPass) {
  // Halves and quarters, which binary numbers hold exactly, round a tolerance that they do not.
  azGain = {7, 10.0625, 3};
  EXPECT_EQ(fix(10), correction::corrected);
  azGain = {7, 10.125, 3};
  EXPECT_EQ(fix(10), correction::azimuthFault);
  azGain = {0.1, 1, 0};
  elGain = {0, -1, 0};
  log = "Panel";
  EXPECT_EQ(fix(1), correction::corrected);  // |0 - 0.1| is no more than 0.1
  azGain = {0.1, 0, 0};
  elGain = {0, -1, 0};
  EXPECT_EQ(fix(0.1), correction::nothingToCorrect);
  azGain = {0, 0, 0};
  EXPECT_EQ(fix(0.1), correction::nothingToCorrect);
}

TEST_F(FixNonMajLobeElPatTest, NegativeGainsThroughoutLeaveTheMaximumAtZero) {
  azGain = {-3, -3, -5};
  elGain = {-6, -6, -6};
  EXPECT_EQ(fix(-0.05), correction::nothingToCorrect);
  EXPECT_EQ(fix(-3), correction::azimuthFault);
  EXPECT_THAT(elGain, ElementsAre(-6, -6, -6));
}

TEST_F(FixNonMajLobeElPatTest, AFactorWithoutAMaximumIsARunTimeFailure) {
  azGain = {0.05, 1, 0.5};
  elGain = {0, 0, -1};
  EXPECT_EQ(fix(1, "REL"), correction::failed);
  EXPECT_THAT(elGain, ElementsAre(0, 0, -1));
  expectFailure("Error 11: Division by zero: the elevation pattern has no gain above 0");
}

TEST_F(FixNonMajLobeElPatTest, ArraysShorterThanTheirCountsAreARunTimeFailure) {
  azGain.pop_back();
  EXPECT_EQ(fix(10), correction::failed);
  expectFailure("Error 9: Subscript out of range: a cut has fewer points than its count says");
}

TEST_F(FixNonMajLobeElPatTest, AShortElevationCutFailsBeforeAnyValueIsChanged) {
  elGain.pop_back();
  EXPECT_EQ(fix(10), correction::failed);
  EXPECT_THAT(elGain, ElementsAre(-2, 7));
}

TEST_F(FixNonMajLobeElPatTest, AnEmptyAzimuthCutHasAMaximumOfZero) {
  az.clear();
  azGain.clear();
  EXPECT_EQ(fix(10), correction::azimuthFault);
}

TEST_F(FixNonMajLobeElPatTest, TakesTheLargestCountThereIs) {
  az.assign(32768, 90);
  az.back() = 0;
  azGain.assign(32768, 10);
  azGain.back() = 7;
  el.assign(32768, 0);
  elGain.assign(32768, 7);
  EXPECT_EQ(fix(10), correction::corrected);
  EXPECT_EQ(elGain.back(), 10);
}

}  // namespace
}  // namespace vantrelix::test
