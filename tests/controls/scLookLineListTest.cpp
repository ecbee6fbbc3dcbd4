// The line lookup control and the list of the lines of all libraries.
#include "controls/LookLineFixture.h"
#include "dialogs/frmListSelect.h"

namespace vantrelix {
namespace {

class LookLineList : public test::LookLineTest {};

TEST_F(LookLineList, NamesTheLineInTheListAndTakesItsFileIdAndText) {
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

TEST_F(LookLineList, ListsTheLinesInColumns) {
  makeLibrary("T0001");
  addLine("T0001", "L1", "Foam", {{100, 1}, {1000, 10}});
  addLine("T0001", "LONGER", "A much longer name", {{1.5, 1}, {10, 10}});
  std::vector<std::string> rows;
  screen.onModal["frmListSelect"] = [&](Form& form) { rows = dynamic_cast<frmListSelect&>(form).List1.entries(); };
  control.cmdLook.userClick();
  EXPECT_EQ(rows, (std::vector<std::string>{"Foam                100 - 1000 MHz  LMST0001  L1",
                                            "A much longer name  1.5 -   10 MHz  LMST0001  LONGER"}));
}

TEST_F(LookLineList, StandsOnItsOwnLineInTheListCaseAside) {
  makeLines();
  show("l2");
  control.sValueFile("lmst0001");
  int at = -1;
  screen.onModal["frmListSelect"] = [&](Form& form) { at = dynamic_cast<frmListSelect&>(form).List1.listIndex(); };
  control.cmdLook.userClick();
  EXPECT_EQ(at, 1);
}

TEST_F(LookLineList, OfTwoLinesOfOneNameTakesTheOneThatIsChosen) {
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

TEST_F(LookLineList, LeavesAllAsItWasWhereTheListIsCancelled) {
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

TEST_F(LookLineList, TellsTheBandOfTheLineTheUserStandsOn) {
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

TEST_F(LookLineList, ReadsTheLibrariesAnewAtEachLook) {
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

TEST_F(LookLineList, TellsTheBandOfTheCurrentLineAtOnce) {
  makeLines();
  show();
  std::string told, loss;
  screen.onModal["frmListSelect"] = [&](Form& form) {
    told = dynamic_cast<frmListSelect&>(form).Label1.caption();
    loss = control.txtLoss.text();
  };
  control.cmdLook.userClick();
  EXPECT_EQ(told, "100 MHz to 1000 MHz");
  EXPECT_EQ(loss, "1.00");
}

TEST_F(LookLineList, StandsOnNoLineWhereTheCurrentOneIsOfAnotherLibrary) {
  makeLines();
  show();
  int at = 7;
  screen.onModal["frmListSelect"] = [&](Form& form) { at = dynamic_cast<frmListSelect&>(form).List1.listIndex(); };
  control.sValueFile("LMST0002");
  control.cmdLook.userClick();
  EXPECT_EQ(at, -1);
  control.sValueFile("LMST0001");
  control.sValueID("L9");
  at = 7;
  control.cmdLook.userClick();
  EXPECT_EQ(at, -1);
}

TEST_F(LookLineList, ALineTakenFromItEndsASpecifiedLoss) {
  makeLines();
  show();
  enter(control.txtLoss, "3");
  heard();
  screen.onModal["frmListSelect"] = [](Form& form) { dynamic_cast<frmListSelect&>(form).List1.userDoubleClick(0); };
  control.cmdLook.userClick();
  EXPECT_EQ(control.sValueFile() + control.sValueID() + control.sValueDesc(), "LMST0001L1Seven eighths foam");
  EXPECT_EQ(control.sValueLoss(), "1.00");
  EXPECT_EQ(heard(), "line ");
}

TEST_F(LookLineList, ALineTakenFromItTellsWhyItHasNoLossBeforeItTellsOfTheLine) {
  makeLines();
  addLine("T0001", "L3", "No points", {});
  show();
  screen.onModal["frmListSelect"] = [](Form& form) { dynamic_cast<frmListSelect&>(form).List1.userDoubleClick(2); };
  control.cmdLook.userClick();
  EXPECT_EQ(control.sValueID() + control.txtLoss.text(), "L3");
  EXPECT_EQ(heard(), "alert line ");
}

TEST_F(LookLineList, KeepsItsColumnsStraightForLettersOutsideAscii) {
  makeLibrary("T0001");
  addLine("T0001", "L1", "K\u00E4bel", {{1, 1}, {2, 2}});
  addLine("T0001", "L2", "Cable", {});
  std::vector<std::string> rows;
  screen.onModal["frmListSelect"] = [&](Form& form) { rows = dynamic_cast<frmListSelect&>(form).List1.entries(); };
  control.cmdLook.userClick();
  EXPECT_EQ(rows, (std::vector<std::string>{"K\u00E4bel  1 - 2 MHz  LMST0001  L1", "Cable             LMST0001  L2"}));
}

}  // namespace
}  // namespace vantrelix
