// The loss of the line lookup control where the tables of the library are not as they should be.
#include "controls/LookLineFixture.h"

namespace vantrelix {
namespace {

class LookLineBadLibrary : public test::LookLineTest {};

TEST_F(LookLineBadLibrary, AlertsAndLosesNothingWhereTheLibraryHasBeenDeleted) {
  makeLines();
  show();
  platform::current().remove(table("LMST0001"));
  control.txtLen.userBlur();
  EXPECT_EQ(control.sValueLoss(), "0.00");
  EXPECT_EQ(control.Alerts(), "Transmission line library not found:\r\nLMST0001");
}

TEST_F(LookLineBadLibrary, ReportsPointsThatAreGoneAndShowsNoLoss) {
  makeLines();
  show();
  platform::current().remove(table("LNDT0001"));
  control.RefreshAlerts();
  EXPECT_EQ(control.sValueLoss(), "");
  ASSERT_EQ(screen.shown().size(), 1U);
  EXPECT_NE(screen.shown()[0].message.text.find("3011"), std::string::npos) << screen.shown()[0].message.text;
}

TEST_F(LookLineBadLibrary, SaysThatASinglePointGivesNoLoss) {
  makeLibrary("T0001");
  addLine("T0001", "L1", "Short table", {{100, 1}});
  show();
  EXPECT_EQ(control.sValueLoss(), "");
  EXPECT_NE(control.Alerts(), "");
}

TEST_F(LookLineBadLibrary, GivesNoLossOfALineWithoutPoints) {
  makeLibrary("T0001");
  addLine("T0001", "L1", "No points", {});
  show();
  EXPECT_EQ(control.sValueLoss(), "");
  EXPECT_EQ(control.Alerts(), "No records found for this line type.");
}

TEST_F(LookLineBadLibrary, MayHaveItsPointsInAnyOrder) {
  makeLibrary("T0001");
  addLine("T0001", "L1", "Out of order", {{1000, 10}, {10, 0.1}, {100, 1}});
  show();
  EXPECT_EQ(control.sValueLoss(), "1.00");
  control.sValueFreq(10);
  EXPECT_EQ(control.sValueLoss(), "0.10");
  control.sValueFreq(1000);
  EXPECT_EQ(control.sValueLoss(), "10.00");
}

TEST_F(LookLineBadLibrary, GivesTheFirstPointOfAFrequencyThatRepeats) {
  makeLibrary("T0001");
  addLine("T0001", "L1", "Twice", {{100, 1}, {100, 4}, {1000, 40}});
  show();
  EXPECT_EQ(control.sValueLoss(), "1.00");
  control.sValueFreq(1000);
  EXPECT_EQ(control.sValueLoss(), "40.00");
  EXPECT_EQ(control.Alerts(), "");
  EXPECT_TRUE(screen.shown().empty());
}

TEST_F(LookLineBadLibrary, WarnsOfAnAttenuationOfZeroOrBelowAndGoesOn) {
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

TEST_F(LookLineBadLibrary, MayLoseTheControlInItsWarning) {
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

TEST_F(LookLineBadLibrary, IsNeverWritten) {
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

TEST_F(LookLineBadLibrary, IsReportedWhereItsTableIsNoneOfALineLibrary) {
  makeLines();
  platform::current().remove(table("LNDT0001"));
  DbfFile::create(table("LNDT0001"), {{"LTYPE_ID", 'C', 10, 0}, {"LENGTH", 'N', 12, 4}});
  control.sValueLoss("9");
  show();
  EXPECT_EQ(control.sValueLoss(), "");
  EXPECT_EQ(screen.shown().size(), 1U);
  EXPECT_EQ(heard(), "");
}

}  // namespace
}  // namespace vantrelix
