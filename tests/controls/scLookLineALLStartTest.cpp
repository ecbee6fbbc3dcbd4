// How the all-lines control comes up: with what its user chose last.
#include "controls/LookLineAllFixture.h"

namespace vantrelix {
namespace {

constexpr const char* kSection = "Line Lookup ALL";

class LookLineAllStart : public test::LookLineAllTest {};

TEST_F(LookLineAllStart, KeepsEachChoiceAtOnce) {
  control.ZORUserLogin("ann");
  choose(1);
  EXPECT_EQ(kept(kSection, "LineType"), "Half inch foam");
  length("12.5");
  EXPECT_EQ(kept(kSection, "Length"), "12.50");
  control.cboUnit.userSelect(2);
  EXPECT_EQ(kept(kSection, "Units"), "m");
  EXPECT_EQ(control.sValueLen(), "3.81");
}

TEST_F(LookLineAllStart, ComesUpAsItWasLeft) {
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

TEST_F(LookLineAllStart, IsFilledByTheLoginAlone) {
  EXPECT_TRUE(control.cboLinesTX.entries().empty());
  control.ZORUserLogin("ann");
  EXPECT_EQ(control.cboLinesTX.entries().size(), 2U);
  EXPECT_EQ(control.cboLinesTX.listIndex(), -1);
  EXPECT_EQ(control.sValueUnit(), "ft");
}

TEST_F(LookLineAllStart, SelectsNothingForALineThatIsGone) {
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

TEST_F(LookLineAllStart, FillsItselfForDevelopers) {
  control.TestInit();
  EXPECT_EQ(control.cboLinesTX.entries().size(), 2U);
}

TEST_F(LookLineAllStart, ComesUpWithTheLengthInTheUnitThatWasChosenLast) {
  control.ZORUserLogin("ann");
  choose(1);
  length("100");
  control.cboUnit.userSelect(2);
  EXPECT_EQ(kept(kSection, "Length"), "30.48");
  scLookLineALL again;
  again.ZORUserLogin("ann");
  EXPECT_EQ(again.sValueLen() + again.sValueUnit(), "30.48m");
  again.sValueFreq(100);
  EXPECT_EQ(again.sValueLoss(), "2.00");
  again.cboUnit.userSelect(0);
  EXPECT_EQ(again.sValueLen(), "100.00");
}

TEST_F(LookLineAllStart, WritesNothingWhileItComesUp) {
  const std::string choices = "[Line Lookup ALL]\r\nLineType =  Half inch foam\r\nUnits = m\r\nLength = 7\r\n";
  suite.folder().write("QVDEFAULTS_ann.INI", choices);
  control.ZORUserLogin("ann");
  EXPECT_EQ(control.sValueID() + control.sValueUnit() + control.sValueLen(), "L2m7");
  EXPECT_EQ(suite.folder().read("QVDEFAULTS_ann.INI"), choices);
}

TEST_F(LookLineAllStart, SelectsALineInItsVerySpelling) {
  addLine("T0001", "L3", "HALF INCH FOAM", {{1, 1}, {2, 2}});
  control.ZORUserLogin("ann");
  control.sValueDesc("HALF INCH FOAM");
  EXPECT_EQ(control.sValueID(), "L3");
  scLookLineALL again;
  again.ZORUserLogin("ann");
  EXPECT_EQ(again.sValueID(), "L3");
  again.sValueDesc("half inch foam");
  EXPECT_EQ(again.cboLinesTX.listIndex(), -1);
}

TEST_F(LookLineAllStart, ReportsAListThatCannotBeShown) {
  const Connection fault =
      control.cboLinesTX.changed.connect([] { throw RunTimeFailure(failure::overflow, "surface lost"); });
  control.ZORUserLogin("ann");
  ASSERT_EQ(screen.shown().size(), 1U);
  EXPECT_NE(screen.shown()[0].message.text.find("surface lost"), std::string::npos);
}

TEST_F(LookLineAllStart, ForgetsTheLineOfTheUserBefore) {
  control.ZORUserLogin("ann");
  control.sValueFreq(100);
  choose(0);
  length("100");
  control.ZORUserLogin("bob");
  EXPECT_EQ(control.cboLinesTX.listIndex(), -1);
  EXPECT_EQ(control.sValueFile() + control.sValueID() + control.sValueLen() + control.sValueLoss(), "");
  keep(kSection, "LineType", "Long ago");
  keep(kSection, "Length", "100");
  control.ZORUserLogin("ann");
  EXPECT_EQ(control.sValueLoss(), "1.00");
  control.ZORUserLogin("bob");
  EXPECT_EQ(control.sValueLen() + control.sValueLoss(), "100");
}

TEST_F(LookLineAllStart, AlertsOnceThatItHasNoFrequencyWhereItComesUpWithALine) {
  control.ZORUserLogin("ann");
  choose(0);
  length("100");
  control.Alerts("");
  alerts = 0;
  control.ZORUserLogin("ann");
  EXPECT_EQ(control.Alerts(), "Frequency must be greater than zero.");
  EXPECT_EQ(alerts, 1);
}

TEST_F(LookLineAllStart, ComesUpWithTheKeptUnitAndWithFeetWhereItIsNone) {
  keep(kSection, "Units", "cm");
  control.ZORUserLogin("");
  EXPECT_EQ(control.sValueUnit(), "cm");
  keep(kSection, "Units", "furlong");
  control.ZORUserLogin("");
  EXPECT_EQ(control.sValueUnit(), "ft");
}

TEST_F(LookLineAllStart, KeepsABlankLength) {
  control.ZORUserLogin("ann");
  length("5");
  length("");
  EXPECT_EQ(control.txtLen.text(), "");
  EXPECT_EQ(getINIStr(kSection, "Length", ""), "");
}

TEST_F(LookLineAllStart, ListsNothingWithoutALibrary) {
  platform::current().remove(table("LMST0001"));
  control.ZORUserLogin("ann");
  EXPECT_TRUE(control.cboLinesTX.entries().empty());
  EXPECT_TRUE(screen.shown().empty());
}

}  // namespace
}  // namespace vantrelix
