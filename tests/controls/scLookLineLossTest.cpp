// The loss of the line lookup control, and what stands against it.
#include "controls/LookLineFixture.h"

namespace vantrelix {
namespace {

constexpr const char* kSection = "Line Lookup";

class LookLineLoss : public test::LookLineTest {};

TEST_F(LookLineLoss, ComputesTheLossOfALine) {
  makeLines();
  show();
  EXPECT_EQ(control.sValueLoss(), "1.00");
  control.sValueFreq(1000);
  EXPECT_EQ(control.sValueLoss(), "10.00");
  control.sValueFreq(316.2278);
  EXPECT_EQ(control.sValueLoss(), "3.16");
  EXPECT_EQ(control.Alerts(), "");
}

TEST_F(LookLineLoss, FollowsTheLengthAndTheUnit) {
  makeLines();
  show();
  enter(control.txtLen, "200");
  EXPECT_EQ(control.sValueLen(), "200.00");
  EXPECT_EQ(control.sValueLoss(), "2.00");
  EXPECT_EQ(heard(), "line ");
  control.cboUnit.userSelect(2);
  EXPECT_EQ(control.sValueLen(), "60.96");
  EXPECT_EQ(control.sValueLoss(), "2.00");
  EXPECT_EQ(kept(kSection, "Units"), "m");
  EXPECT_TRUE(control.bDirty());
}

TEST_F(LookLineLoss, TellsTheHostOfALengthThatDidNotChange) {
  control.txtLen.userBlur();
  EXPECT_EQ(heard(), "line ");
  EXPECT_FALSE(control.bDirty());
}

TEST_F(LookLineLoss, LosesNothingInALengthOfZeroWithoutAskingTheTables) {
  show();
  EXPECT_NE(control.Alerts(), "");
  control.Alerts("");
  enter(control.txtLen, "0");
  EXPECT_EQ(control.sValueLoss(), "0.00");
  EXPECT_EQ(control.Alerts(), "");
}

TEST_F(LookLineLoss, LeavesTheLossWhereTheValuesDoNotAskForOne) {
  makeLines();
  show();
  const auto unchanged = [this] {
    control.sValueLoss("7");
    control.RefreshAlerts();
    return control.sValueLoss() == "7.00" && control.Alerts().empty();
  };
  control.sValueLen("-1");
  EXPECT_TRUE(unchanged()) << "negative length";
  control.sValueLen("100");
  control.Freq(0.99);
  EXPECT_TRUE(unchanged()) << "frequency below 1 MHz";
  control.Freq(100);
  control.sValueID("");
  EXPECT_TRUE(unchanged()) << "no ID";
  control.sValueID("L1");
  control.sValueFile(" ");
  EXPECT_TRUE(unchanged()) << "no file";
  control.sValueFile("LMST0001");
  control.cboUnit.setListIndex(-1);
  EXPECT_TRUE(unchanged()) << "no unit";
}

TEST_F(LookLineLoss, AlertsWhereTheFrequencyIsNone) {
  makeLines();
  show();
  control.Freq(-88);
  EXPECT_EQ(control.sValueLoss(), "");
  EXPECT_EQ(control.Alerts(), "Frequency must be greater than zero.");
  EXPECT_EQ(heard(), "alert ");
}

TEST_F(LookLineLoss, AlertsWhereTheCalculationIsRefused) {
  makeLines();
  show("L9");
  EXPECT_EQ(control.sValueLoss(), "");
  EXPECT_EQ(control.Alerts(), "No records found for this line type.");
}

TEST_F(LookLineLoss, FindsALibraryWhoseNameIsInSmallLetters) {
  makeLines();
  show();
  control.sValueFile("lmst0001");
  control.RefreshAlerts();
  EXPECT_EQ(control.sValueLoss(), "1.00");
}

TEST_F(LookLineLoss, TurnsToASpecifiedLossWithTheFirstDigitTyped) {
  makeLines();
  show();
  control.sValueDesc("Seven eighths foam");
  control.txtLoss.userKey('3');
  EXPECT_EQ(control.sValueFile(), "");
  EXPECT_EQ(control.sValueID(), "");
  EXPECT_EQ(control.sValueDesc(), "Specified Loss");
  EXPECT_TRUE(control.bDirty());
}

TEST_F(LookLineLoss, KeepsASpecifiedLossThroughLengthUnitAndFrequency) {
  makeLines();
  show();
  enter(control.txtLoss, "3.456");
  EXPECT_EQ(control.sValueLoss(), "3.46");
  EXPECT_EQ(heard(), "line ");
  enter(control.txtLen, "500");
  control.sValueFreq(900);
  control.cboUnit.userSelect(3);
  EXPECT_EQ(control.sValueLoss(), "3.46");
}

TEST_F(LookLineLoss, TakesNoLetterAsALoss) {
  makeLines();
  show();
  int key = 'x';
  control.txtLoss.keyPress(key);
  EXPECT_EQ(key, 0);
  EXPECT_EQ(control.sValueFile(), "LMST0001");
  EXPECT_FALSE(control.bDirty());
}

TEST_F(LookLineLoss, LeavesALossThatWasOnlyPassedThrough) {
  control.sValueLoss("2");
  control.txtLoss.userFocus();
  control.txtLoss.userBlur();
  EXPECT_EQ(heard(), "");
  EXPECT_EQ(control.sValueLoss(), "2.00");
}

TEST_F(LookLineLoss, FollowsAFrequencyThatIsPutInSilence) {
  makeLines();
  show();
  control.Freq(1000);
  EXPECT_EQ(control.sValueLoss(), "10.00");
}

TEST_F(LookLineLoss, OfABlankLengthIsNone) {
  makeLines();
  show();
  enter(control.txtLen, "");
  EXPECT_EQ(control.sValueLen() + " " + control.sValueLoss(), " 0.00");
  EXPECT_EQ(control.Alerts(), "");
}

TEST_F(LookLineLoss, IsBlankOutsideTheBandOfTheLineAndEachAlertStandsOnALine) {
  makeLines();
  show();
  control.sValueFreq(99);
  EXPECT_EQ(control.sValueLoss(), "");
  control.sValueFreq(1001);
  EXPECT_EQ(control.sValueLoss(), "");
  EXPECT_EQ(control.Alerts(), "Frequency is below minimum for this line.\r\nFrequency is above maximum for this line.");
  EXPECT_EQ(heard(), "alert alert ");
  control.sValueFreq(100);
  EXPECT_EQ(control.sValueLoss(), "1.00");
}

TEST_F(LookLineLoss, IsComputedForANegativeFrequencyOnlyToBeRefused) {
  makeLines();
  show();
  control.Freq(-0.5);
  EXPECT_EQ(control.Alerts(), "");
  EXPECT_EQ(control.sValueLoss(), "1.00");
  control.Freq(-1);
  EXPECT_EQ(control.Alerts(), "Frequency must be greater than zero.");
}

TEST_F(LookLineLoss, CountsBackspaceAsTyping) {
  show();
  control.txtLoss.userKey(kBackspaceKey);
  EXPECT_EQ(control.sValueFile() + control.sValueID() + control.sValueDesc(), "Specified Loss");
}

TEST_F(LookLineLoss, CannotBeTypedIntoALockedControl) {
  show();
  control.Locked(true);
  EXPECT_FALSE(control.txtLoss.userKey('3'));
  EXPECT_EQ(control.sValueFile(), "LMST0001");
}

TEST_F(LookLineLoss, StaysBlankWhereTheUserEmptiesIt) {
  enter(control.txtLoss, "4");
  heard();
  control.txtLoss.userKey(kBackspaceKey);
  control.txtLoss.userText("");
  control.txtLoss.userBlur();
  EXPECT_EQ(control.txtLoss.text(), "");
  EXPECT_EQ(heard(), "line ");
}

TEST_F(LookLineLoss, IsComputedAnewOnLeavingItWhereTheLineStands) {
  makeLines();
  show();
  enter(control.txtLen, "50");
  control.txtDesc.userKey('x');
  heard();
  control.sValueLoss("9");
  control.txtLoss.userBlur();
  EXPECT_EQ(heard(), "line ");
  EXPECT_EQ(control.sValueLoss(), "0.50");
}

TEST_F(LookLineLoss, MayLoseItsControlOnLeavingTheBox) {
  auto own = std::make_unique<scLookLine>();
  own->ChangeLine.listen([&] { own.reset(); });
  own->txtLoss.userType("3");
  own->txtLoss.userBlur();
  EXPECT_EQ(own, nullptr);
}

}  // namespace
}  // namespace vantrelix
