#include "controls/LineFixture.h"
#include "controls/scLookLine.h"
#include "dialogs/frmListSelect.h"
#include "foundation/text.h"
#include "support/TempFolder.h"

namespace vantrelix {
namespace {

constexpr const char* kSection = "Line Lookup";

class LookLine : public test::LineTest {
 protected:
  LookLine() {
    control.NewAlert.listen([this] { events += "alert "; });
    control.ChangeLine.listen([this] { events += "line "; });
  }
  std::string heard() { return std::exchange(events, ""); }
  static void enter(TextBox& box, const std::string& text) {
    box.userType(text);
    box.userBlur();
  }
  // The line at 100 MHz and 100 ft, where the loss is the table's own figure.
  void show(const char* id = "L1") {
    control.sValueFile("LMST0001");
    control.sValueID(id);
    control.sValueLen("100");
    control.sValueFreq(100);
  }

  scLookLine control;
  std::string events;
};

TEST_F(LookLine, OffersItsUnitsInOrderAndBeginsWithFeet) {
  EXPECT_EQ(control.cboUnit.entries(), (std::vector<std::string>{"ft", "in", "m", "cm"}));
  EXPECT_EQ(control.sValueUnit(), "ft");
  EXPECT_TRUE(control.Valid());
}

TEST_F(LookLine, BeginsWithTheUnitTheUserChoseLast) {
  keep(kSection, "Units", "m");
  EXPECT_EQ(scLookLine().sValueUnit(), "m");
  keep(kSection, "Units", " ");
  EXPECT_EQ(scLookLine().sValueUnit(), "ft");
  keep(kSection, "Units", "furlong");
  EXPECT_EQ(scLookLine().sValueUnit(), "ft");
}

TEST_F(LookLine, TakesTheLoggedInUsersUnit) {
  // The login's own defaults file holds another unit.
  control.ZORUserLogin("ann");
  keep(kSection, "Units", "cm");
  scLookLine other;
  other.ZORUserLogin("bob");
  EXPECT_EQ(other.sValueUnit(), "ft");
  other.ZORUserLogin("ann");
  EXPECT_EQ(other.sValueUnit(), "cm");
}

TEST_F(LookLine, HasNoFrequencyAtFirst) {
  EXPECT_EQ(control.sValueFreq(), "-88");
  EXPECT_EQ(control.lblFreq.caption(), "");
}

TEST_F(LookLine, SaysInvalidFreqForANullAlone) {
  control.sValueFreq(Value());
  EXPECT_EQ(control.lblFreq.caption(), "Invalid Freq");
  EXPECT_EQ(control.sValueFreq(), "-88");
  control.sValueFreq(-88);
  EXPECT_EQ(control.lblFreq.caption(), "-88.00MHz");
}

TEST_F(LookLine, ShowsAFrequencyWithTwoPlacesThatCount) {
  const std::pair<double, const char*> shown[] = {
      {0, "0.00MHz"},    {451.25, "451.25MHz"}, {1, "1.00MHz"},          {1.5, "1.50MHz"},       {0.5, "0.500MHz"},
      {0.1, "0.100MHz"}, {0.05, "0.0500MHz"},   {-0.002, "-0.00200MHz"}, {10000, "10000.00MHz"},
  };
  for (const auto& [frequency, text] : shown) {
    control.sValueFreq(frequency);
    EXPECT_EQ(control.lblFreq.caption(), text) << frequency;
  }
  control.sValueFreq("151.9x");
  EXPECT_EQ(control.lblFreq.caption(), "151.90MHz");
}

TEST_F(LookLine, KeepsTheLabelWhereFreqIsPut) {
  control.sValueFreq(150);
  control.Freq(450);
  EXPECT_EQ(control.lblFreq.caption(), "150.00MHz");
  EXPECT_EQ(control.sValueFreq(), "450");
}

TEST_F(LookLine, ComputesTheLossOfALine) {
  makeLines();
  show();
  EXPECT_EQ(control.sValueLoss(), "1.00");
  control.sValueFreq(1000);
  EXPECT_EQ(control.sValueLoss(), "10.00");
  control.sValueFreq(316.2278);
  EXPECT_EQ(control.sValueLoss(), "3.16");
  EXPECT_EQ(control.Alerts(), "");
}

TEST_F(LookLine, FollowsTheLengthAndTheUnit) {
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

TEST_F(LookLine, TellsTheHostOfALengthThatDidNotChange) {
  control.txtLen.userBlur();
  EXPECT_EQ(heard(), "line ");
  EXPECT_FALSE(control.bDirty());
}

TEST_F(LookLine, KeepsABlankLengthBlankThroughAChangeOfUnit) {
  control.cboUnit.userSelect(2);
  EXPECT_EQ(control.sValueLen(), "");
  control.txtLen.userBlur();
  EXPECT_EQ(control.sValueLen(), "");
}

TEST_F(LookLine, ShowsASmallLengthWithPlacesThatCount) {
  control.sValueLen("1");
  control.sValueUnit("cm");
  EXPECT_EQ(control.sValueLen(), "30.48");
  control.sValueLen("1");
  control.sValueUnit("m");
  EXPECT_EQ(control.sValueLen(), "0.0100");
}

TEST_F(LookLine, TakesTheUsersUnitForATextThatIsNone) {
  keep(kSection, "Units", "in");
  control.sValueUnit("yard");
  EXPECT_EQ(control.sValueUnit(), "in");
  control.sValueUnit("M");
  EXPECT_EQ(control.sValueUnit(), "m");
}

TEST_F(LookLine, LosesNothingInALengthOfZeroWithoutAskingTheTables) {
  show();
  EXPECT_NE(control.Alerts(), "");
  control.Alerts("");
  enter(control.txtLen, "0");
  EXPECT_EQ(control.sValueLoss(), "0.00");
  EXPECT_EQ(control.Alerts(), "");
}

TEST_F(LookLine, LeavesTheLossWhereTheValuesDoNotAskForOne) {
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

TEST_F(LookLine, AlertsWhereTheFrequencyIsNone) {
  makeLines();
  show();
  control.Freq(-88);
  EXPECT_EQ(control.sValueLoss(), "");
  EXPECT_EQ(control.Alerts(), "Frequency must be greater than zero.");
  EXPECT_EQ(heard(), "alert ");
}

TEST_F(LookLine, AlertsWhereTheCalculationIsRefused) {
  makeLines();
  show("L9");
  EXPECT_EQ(control.sValueLoss(), "");
  EXPECT_EQ(control.Alerts(), "No records found for this line type.");
}

TEST_F(LookLine, AlertsAndLosesNothingWhereTheLibraryHasBeenDeleted) {
  makeLines();
  show();
  platform::current().remove(table("LMST0001"));
  control.txtLen.userBlur();
  EXPECT_EQ(control.sValueLoss(), "0.00");
  EXPECT_EQ(control.Alerts(), "Transmission line library not found:\r\nLMST0001");
}

TEST_F(LookLine, FindsALibraryWhoseNameIsInSmallLetters) {
  makeLines();
  show();
  control.sValueFile("lmst0001");
  control.RefreshAlerts();
  EXPECT_EQ(control.sValueLoss(), "1.00");
}

TEST_F(LookLine, ReportsPointsThatAreGoneAndShowsNoLoss) {
  makeLines();
  show();
  platform::current().remove(table("LNDT0001"));
  control.RefreshAlerts();
  EXPECT_EQ(control.sValueLoss(), "");
  ASSERT_EQ(screen.shown().size(), 1U);
  EXPECT_NE(screen.shown()[0].message.text.find("3011"), std::string::npos) << screen.shown()[0].message.text;
}

TEST_F(LookLine, SaysThatASinglePointGivesNoLoss) {
  makeLibrary("T0001");
  addLine("T0001", "L1", "Short table", {{100, 1}});
  show();
  EXPECT_EQ(control.sValueLoss(), "");
  EXPECT_NE(control.Alerts(), "");
}

TEST_F(LookLine, TurnsToASpecifiedLossWithTheFirstDigitTyped) {
  makeLines();
  show();
  control.sValueDesc("Seven eighths foam");
  control.txtLoss.userKey('3');
  EXPECT_EQ(control.sValueFile(), "");
  EXPECT_EQ(control.sValueID(), "");
  EXPECT_EQ(control.sValueDesc(), "Specified Loss");
  EXPECT_TRUE(control.bDirty());
}

TEST_F(LookLine, KeepsASpecifiedLossThroughLengthUnitAndFrequency) {
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

TEST_F(LookLine, TakesNoLetterAsALoss) {
  makeLines();
  show();
  int key = 'x';
  control.txtLoss.keyPress(key);
  EXPECT_EQ(key, 0);
  EXPECT_EQ(control.sValueFile(), "LMST0001");
  EXPECT_FALSE(control.bDirty());
}

TEST_F(LookLine, LeavesALossThatWasOnlyPassedThrough) {
  control.sValueLoss("2");
  control.txtLoss.userFocus();
  control.txtLoss.userBlur();
  EXPECT_EQ(heard(), "");
  EXPECT_EQ(control.sValueLoss(), "2.00");
}

TEST_F(LookLine, ClearBlanksTheValuesAlone) {
  makeLines();
  show();
  control.sValueDesc("Seven eighths foam");
  control.Clear(true);
  EXPECT_EQ(
      control.sValueFile() + control.sValueID() + control.sValueDesc() + control.sValueLen() + control.sValueLoss(),
      "");
  EXPECT_EQ(control.sValueUnit(), "ft");
  EXPECT_EQ(heard(), "");
}

TEST_F(LookLine, IsLockedAndColouredAsTheAntennaControl) {
  control.Locked(true);
  EXPECT_TRUE(control.Locked() && control.txtLen.locked() && control.txtLoss.locked() && control.cboUnit.locked());
  EXPECT_FALSE(control.cmdLook.enabled());
  EXPECT_TRUE(control.BackLtGray());
  EXPECT_EQ(control.txtLoss.backColor(), color::buttonFace);
  control.Locked(false);
  EXPECT_FALSE(control.Locked() || control.txtLen.locked() || control.txtLoss.locked() || control.cboUnit.locked());
  EXPECT_TRUE(control.cmdLook.enabled() && control.BackWhite());
  control.BackRed(true);
  EXPECT_TRUE(control.BackRed());
  EXPECT_EQ(control.cboUnit.backColor(), color::red);
  EXPECT_FALSE(control.txtFile.enabled() || control.txtID.enabled());
}

TEST_F(LookLine, DescIsTheDescription) {
  control.Desc("a line");
  EXPECT_EQ(control.sValueDesc(), "a line");
  EXPECT_EQ(control.Desc(), "a line");
}

TEST_F(LookLine, NamesTheLineInTheListAndTakesItsFileIdAndText) {
  makeLines();
  control.sValueLen("100");
  control.sValueFreq(100);
  screen.onModal["frmListSelect"] = [](Form& form) {
    auto& list = dynamic_cast<frmListSelect&>(form);
    EXPECT_EQ(list.caption(), "Select Transmission Line");
    EXPECT_TRUE(list.List1.fixedPitch());
    ASSERT_EQ(list.List1.entries().size(), 2U);
    list.List1.userSelect(1);
    list.cmdContinue.userClick();
  };
  control.cmdLook.userClick();
  EXPECT_EQ(control.sValueFile(), "LMST0001");
  EXPECT_EQ(control.sValueID(), "L2");
  EXPECT_EQ(control.sValueDesc(), "Half inch foam");
  EXPECT_EQ(control.sValueLoss(), "2.00");
  EXPECT_EQ(heard(), "line ");
  EXPECT_TRUE(control.bDirty());
}

TEST_F(LookLine, ListsTheLinesInColumns) {
  makeLibrary("T0001");
  addLine("T0001", "L1", "Foam", {{100, 1}, {1000, 10}});
  addLine("T0001", "LONGER", "A much longer name", {{1.5, 1}, {10, 10}});
  std::vector<std::string> rows;
  screen.onModal["frmListSelect"] = [&](Form& form) { rows = dynamic_cast<frmListSelect&>(form).List1.entries(); };
  control.cmdLook.userClick();
  EXPECT_EQ(rows, (std::vector<std::string>{"Foam                100 - 1000 MHz  LMST0001  L1",
                                            "A much longer name  1.5 - 10 MHz    LMST0001  LONGER"}));
}

TEST_F(LookLine, StandsOnItsOwnLineInTheListCaseAside) {
  makeLines();
  show("l2");
  control.sValueFile("lmst0001");
  int at = -1;
  screen.onModal["frmListSelect"] = [&](Form& form) { at = dynamic_cast<frmListSelect&>(form).List1.listIndex(); };
  control.cmdLook.userClick();
  EXPECT_EQ(at, 1);
}

TEST_F(LookLine, OfTwoLinesOfOneNameTakesTheOneThatIsChosen) {
  makeLines();
  makeLibrary("T0002");
  addLine("T0002", "M1", "Half inch foam", {{100, 3}, {1000, 30}});
  screen.onModal["frmListSelect"] = [](Form& form) {
    auto& list = dynamic_cast<frmListSelect&>(form);
    list.List1.userSelect(2);
    list.cmdContinue.userClick();
  };
  control.cmdLook.userClick();
  EXPECT_EQ(control.sValueFile(), "LMST0002");
  EXPECT_EQ(control.sValueID(), "M1");
}

TEST_F(LookLine, LeavesAllAsItWasWhereTheListIsCancelled) {
  makeLines();
  show();
  control.sValueDesc("mine");
  control.sValueLoss("4");
  std::string blanked = "?";
  screen.onModal["frmListSelect"] = [&](Form& form) {
    dynamic_cast<frmListSelect&>(form).List1.userSelect(1);
    blanked = control.txtLoss.text();
    form.userClose();
  };
  control.cmdLook.userClick();
  EXPECT_EQ(blanked, " ");
  EXPECT_EQ(control.sValueDesc() + control.sValueID() + control.sValueLoss(), "mineL14.00");
  EXPECT_EQ(heard(), "");
}

TEST_F(LookLine, TellsTheBandOfTheLineTheUserStandsOn) {
  makeLines();
  addLine("T0001", "L3", "No points", {});
  addLine("T0001", "L4", "From zero", {{0, 1}, {10, 2}});
  std::vector<std::pair<std::string, Color>> told;
  screen.onModal["frmListSelect"] = [&](Form& form) {
    auto& list = dynamic_cast<frmListSelect&>(form);
    for (const int row : {0, 2, 3, 1}) {
      list.List1.userSelect(row);
      told.emplace_back(list.Label1.caption(), list.Label1.foreColor());
    }
  };
  control.cmdLook.userClick();
  ASSERT_EQ(told.size(), 4U);
  EXPECT_EQ(told[0].first, "100 MHz to 1000 MHz");
  EXPECT_EQ(told[1], (std::pair<std::string, Color>{"Invalid Data; File: LMST0001 ID: L3", color::red}));
  EXPECT_EQ(told[2], (std::pair<std::string, Color>{"Invalid Data; File: LMST0001 ID: L4", color::red}));
  EXPECT_EQ(told[3], (std::pair<std::string, Color>{"100 MHz to 1000 MHz", color::windowText}));
}

TEST_F(LookLine, ReadsTheLibrariesAnewAtEachLook) {
  makeLines();
  std::size_t count = 0;
  screen.onModal["frmListSelect"] = [&](Form& form) {
    count = dynamic_cast<frmListSelect&>(form).List1.entries().size();
  };
  control.cmdLook.userClick();
  EXPECT_EQ(count, 2U);
  addLine("T0001", "L3", "One more", {{1, 1}, {2, 2}});
  control.cmdLook.userClick();
  EXPECT_EQ(count, 3U);
}

TEST_F(LookLine, LogsALineWithoutAnIdAndPassesItOver) {
  makeLines();
  addLine("T0001", "  ", "Nameless", {});
  control.LookListLoad();
  std::string file, id;
  control.GetLineFileID("Nameless", file, id);
  EXPECT_EQ(file + id, "");
  control.GetLineFileID("  Half inch foam ", file, id);
  EXPECT_EQ(file + " " + id, "LMST0001 L2");
  double low = -1, high = -1;
  control.GetLineFreqRange("Half inch foam", low, high);
  EXPECT_EQ(low, 100);
  EXPECT_EQ(high, 1000);
  EXPECT_NE(suite.log().find("Bad TX Line in LMST0001"), std::string::npos);
}

TEST_F(LookLine, MayBeDroppedByItsHostInAnyEvent) {
  makeLines();
  auto own = std::make_unique<scLookLine>();
  own->ChangeLine.listen([&] { own.reset(); });
  own->txtLen.userBlur();
  EXPECT_EQ(own, nullptr);
}

}  // namespace
}  // namespace vantrelix
