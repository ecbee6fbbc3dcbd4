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

TEST_F(LookLineLoss, AlertsAndLosesNothingWhereTheLibraryHasBeenDeleted) {
  makeLines();
  show();
  platform::current().remove(table("LMST0001"));
  control.txtLen.userBlur();
  EXPECT_EQ(control.sValueLoss(), "0.00");
  EXPECT_EQ(control.Alerts(), "Transmission line library not found:\r\nLMST0001");
}

TEST_F(LookLineLoss, FindsALibraryWhoseNameIsInSmallLetters) {
  makeLines();
  show();
  control.sValueFile("lmst0001");
  control.RefreshAlerts();
  EXPECT_EQ(control.sValueLoss(), "1.00");
}

TEST_F(LookLineLoss, ReportsPointsThatAreGoneAndShowsNoLoss) {
  makeLines();
  show();
  platform::current().remove(table("LNDT0001"));
  control.RefreshAlerts();
  EXPECT_EQ(control.sValueLoss(), "");
  ASSERT_EQ(screen.shown().size(), 1U);
  EXPECT_NE(screen.shown()[0].message.text.find("3011"), std::string::npos) << screen.shown()[0].message.text;
}

TEST_F(LookLineLoss, SaysThatASinglePointGivesNoLoss) {
  makeLibrary("T0001");
  addLine("T0001", "L1", "Short table", {{100, 1}});
  show();
  EXPECT_EQ(control.sValueLoss(), "");
  EXPECT_NE(control.Alerts(), "");
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

TEST_F(LookLineLoss, OfALineWithoutPointsIsBlank) {
  makeLibrary("T0001");
  addLine("T0001", "L1", "No points", {});
  show();
  EXPECT_EQ(control.sValueLoss(), "");
  EXPECT_EQ(control.Alerts(), "No records found for this line type.");
}

TEST_F(LookLineLoss, DoesNotDependOnTheOrderOfThePoints) {
  makeLibrary("T0001");
  addLine("T0001", "L1", "Out of order", {{1000, 10}, {10, 0.1}, {100, 1}});
  show();
  EXPECT_EQ(control.sValueLoss(), "1.00");
  control.sValueFreq(10);
  EXPECT_EQ(control.sValueLoss(), "0.10");
  control.sValueFreq(1000);
  EXPECT_EQ(control.sValueLoss(), "10.00");
}

TEST_F(LookLineLoss, OfAFrequencyThatRepeatsIsThatOfItsFirstPoint) {
  makeLibrary("T0001");
  addLine("T0001", "L1", "Twice", {{100, 1}, {100, 4}, {1000, 40}});
  show();
  EXPECT_EQ(control.sValueLoss(), "1.00");
  control.sValueFreq(1000);
  EXPECT_EQ(control.sValueLoss(), "40.00");
  EXPECT_EQ(control.Alerts(), "");
  EXPECT_TRUE(screen.shown().empty());
}

TEST_F(LookLineLoss, WarnsOfAnAttenuationOfZeroOrBelowAndGoesOn) {
  makeLibrary("T0001");
  addLine("T0001", "L1", "Zero", {{100, 0}, {1000, 10}});
  addLine("T0001", "L2", "Below", {{100, -3}, {1000, 10}});
  for (const char* id : {"L1", "L2"}) {
    control.sValueFreq(Value());
    show(id);
    ASSERT_FALSE(screen.shown().empty()) << id;
    EXPECT_EQ(screen.shown().back().message.title, "Math Error") << id;
    EXPECT_EQ(control.sValueLoss(), "1.00") << id;
  }
}

TEST_F(LookLineLoss, MayLoseItsControlInAWarning) {
  makeLibrary("T0001");
  addLine("T0001", "L1", "Zero", {{100, 0}, {1000, 10}});
  auto own = std::make_unique<scLookLine>();
  own->sValueFile("LMST0001");
  own->sValueID("L1");
  own->sValueLen("100");
  int raised = 0;
  own->ChangeLine.listen([&] { ++raised; });
  screen.policy = [&](const Message&) {
    own.reset();
    return MsgAnswer::ok;
  };
  own->Freq(100);
  EXPECT_EQ(own, nullptr);
  EXPECT_EQ(raised, 0);
}

TEST_F(LookLineLoss, IsReadOnlyWorkThroughout) {
  makeLines();
  addLine("T0001", "L3", "Zero", {{100, 0}, {100, -1}});
  const auto bytes = [this] { return std::pair(suite.log(), libraryBytes()); };
  const auto before = bytes();
  for (const char* id : {"L1", "L3", "L9"}) {
    for (const double frequency : {1.0, 100.0, 500.0}) {
      show(id);
      control.sValueFreq(frequency);
      enter(control.txtLen, "7");
    }
  }
  EXPECT_EQ(bytes(), before);
}

TEST_F(LookLineLoss, IsBlankAndReportedWhereTheTableIsNoneOfALineLibrary) {
  makeLines();
  platform::current().remove(table("LNDT0001"));
  DbfFile::create(table("LNDT0001"), {{"LTYPE_ID", 'C', 10, 0}, {"LENGTH", 'N', 12, 4}});
  control.sValueLoss("9");
  show();
  EXPECT_EQ(control.sValueLoss(), "");
  EXPECT_EQ(screen.shown().size(), 1U);
  EXPECT_EQ(heard(), "");
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
