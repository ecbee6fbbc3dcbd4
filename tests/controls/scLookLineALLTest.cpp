#include "controls/LineFixture.h"
#include "controls/scLookLineALL.h"

namespace vantrelix {
namespace {

constexpr const char* kSection = "Line Lookup ALL";

class LookLineAll : public test::LineTest {
 protected:
  LookLineAll() {
    makeLines();
    control.NewAlert.listen([this] { ++alerts; });
  }
  void choose(int row) { control.cboLinesTX.userSelect(row); }
  void length(const std::string& text) {
    control.txtLen.userType(text);
    control.txtLen.userBlur();
  }

  scLookLineALL control;
  int alerts = 0;
};

TEST_F(LookLineAll, ListsEveryLineOfEveryLibrary) {
  makeLibrary("T0002");
  addLine("T0002", "M1", Value(), {{1, 1}, {2, 2}});
  control.InitLines();
  EXPECT_EQ(control.cboLinesTX.entries(),
            (std::vector<std::string>{"Seven eighths foam", "Half inch foam", "NO DESCRIPTION"}));
  std::string file, id;
  control.GetLineFileID("NO DESCRIPTION", file, id);
  EXPECT_EQ(file + " " + id, "LMST0002 M1");
}

TEST_F(LookLineAll, LogsALineWithoutAnId) {
  addLine("T0001", Value(), "Nameless", {});
  control.InitLines();
  EXPECT_EQ(control.cboLinesTX.entries().size(), 2U);
  EXPECT_NE(suite.log().find("Bad TX line in LMST0001"), std::string::npos) << suite.log();
  EXPECT_NE(suite.log().find("BLANK ID"), std::string::npos);
}

TEST_F(LookLineAll, ComputesTheLossOfTheChosenLine) {
  control.ZORUserLogin("ann");
  control.sValueFreq(100);
  choose(1);
  length("100");
  EXPECT_EQ(control.sValueFile() + " " + control.sValueID(), "LMST0001 L2");
  EXPECT_EQ(control.sValueDesc(), "Half inch foam");
  EXPECT_EQ(control.sValueLoss(), "2.00");
  control.sValueFreq(1000);
  EXPECT_EQ(control.sValueLoss(), "20.00");
  choose(0);
  EXPECT_EQ(control.sValueLoss(), "10.00");
}

TEST_F(LookLineAll, KeepsEachChoiceAtOnce) {
  control.ZORUserLogin("ann");
  choose(1);
  EXPECT_EQ(kept(kSection, "LineType"), "Half inch foam");
  length("12.5");
  EXPECT_EQ(kept(kSection, "Length"), "12.50");
  control.cboUnit.userSelect(2);
  EXPECT_EQ(kept(kSection, "Units"), "m");
  EXPECT_EQ(control.sValueLen(), "3.81");
}

TEST_F(LookLineAll, ComesUpAsItWasLeft) {
  control.ZORUserLogin("ann");
  choose(1);
  control.cboUnit.userSelect(2);
  length("30.48");
  scLookLineALL again;
  again.ZORUserLogin("ann");
  EXPECT_EQ(again.sValueDesc(), "Half inch foam");
  EXPECT_EQ(again.sValueUnit(), "m");
  EXPECT_EQ(again.sValueLen(), "30.48");
  again.sValueFreq(100);
  EXPECT_EQ(again.sValueLoss(), "2.00");
}

TEST_F(LookLineAll, IsFilledByTheLoginAlone) {
  EXPECT_TRUE(control.cboLinesTX.entries().empty());
  control.ZORUserLogin("ann");
  EXPECT_EQ(control.cboLinesTX.entries().size(), 2U);
  EXPECT_EQ(control.cboLinesTX.listIndex(), -1);
  EXPECT_EQ(control.sValueUnit(), "ft");
}

TEST_F(LookLineAll, SelectsNothingForALineThatIsGone) {
  control.ZORUserLogin("ann");
  keep(kSection, "LineType", "Long ago");
  keep(kSection, "Length", "100");
  scLookLineALL again;
  again.sValueFreq(100);
  again.ZORUserLogin("ann");
  EXPECT_EQ(again.cboLinesTX.listIndex(), -1);
  EXPECT_EQ(again.sValueLen(), "100");
  EXPECT_EQ(again.sValueLoss(), "");
  EXPECT_EQ(again.Alerts(), "");
}

TEST_F(LookLineAll, SaysInvalidFreqForANull) {
  control.sValueFreq(Value());
  EXPECT_EQ(control.lblFreq.caption(), "Invalid Freq");
  control.sValueFreq(0.5);
  EXPECT_EQ(control.lblFreq.caption(), "0.500MHz");
}

TEST_F(LookLineAll, AlertsWhereTheLibraryHasBeenDeleted) {
  control.ZORUserLogin("ann");
  control.sValueFreq(100);
  choose(0);
  platform::current().remove(table("LMST0001"));
  length("10");
  EXPECT_EQ(control.Alerts(), "Transmission line library not found:\r\nLMST0001");
  EXPECT_EQ(control.sValueLoss(), "0.00");
  EXPECT_EQ(alerts, 1);
}

TEST_F(LookLineAll, ClearBlanksFileIdLengthAndLoss) {
  control.ZORUserLogin("ann");
  control.sValueFreq(100);
  choose(0);
  length("100");
  control.Clear();
  EXPECT_EQ(control.sValueFile() + control.sValueID() + control.sValueLen() + control.sValueLoss(), "");
  EXPECT_EQ(control.sValueDesc(), "Seven eighths foam");
}

TEST_F(LookLineAll, HidesItsWorkingValues) {
  EXPECT_FALSE(control.txtFile.visible());
  EXPECT_FALSE(control.txtID.visible());
}

TEST_F(LookLineAll, OfTwoLinesOfOneNameTakesTheOneThatIsChosen) {
  makeLibrary("T0002");
  addLine("T0002", "M1", "Half inch foam", {{100, 3}, {1000, 30}});
  control.ZORUserLogin("ann");
  choose(2);
  EXPECT_EQ(control.sValueFile() + " " + control.sValueID(), "LMST0002 M1");
}

TEST_F(LookLineAll, TakesNoLetterAsALength) {
  control.ZORUserLogin("ann");
  int key = 'x';
  control.txtLen.keyPress(key);
  EXPECT_EQ(key, 0);
  key = '7';
  control.txtLen.keyPress(key);
  EXPECT_EQ(key, '7');
}

TEST_F(LookLineAll, FillsItselfForDevelopers) {
  control.TestInit();
  EXPECT_EQ(control.cboLinesTX.entries().size(), 2U);
}

}  // namespace
}  // namespace vantrelix
