// The current cell, selected rows, marked cells, what is in view, headings and keys.
#include "ui/DataGridFixture.h"

namespace vantrelix {
namespace {

class DataGridMove : public test::DataGridTest {
 protected:
  // As many rows as that, named by their place.
  void fill(int count) {
    rows->clear();
    for (int row = 0; row < count; ++row) rows->add({"row " + std::to_string(row)});
    grid.setRows(rows);
  }
  GridCell after(GridMove move) {
    grid.userMove(move);
    return {grid.currentRow(), grid.currentColumn()};
  }
};

TEST_F(DataGridMove, AProgramsMoveRaisesNoEventAndAUsersTellsWhatWasLeft) {
  EXPECT_TRUE(grid.setCurrent(1, 2));
  EXPECT_TRUE(events.empty());
  EXPECT_TRUE(grid.userMoveTo(2, 0));
  EXPECT_EQ(events, Texts{"rowColChange 2,2"});
  EXPECT_TRUE(grid.userMoveTo(2, 0));
  EXPECT_EQ(events.size(), 1u) << "no move";
  EXPECT_FALSE(grid.userMoveTo(3, 0));
  EXPECT_FALSE(grid.userMoveTo(0, 3));
  EXPECT_FALSE(grid.setCurrentRow(-1));
  EXPECT_EQ(grid.bookmark(), grid.bookmarkOf(2));
}

TEST_F(DataGridMove, AGridThatHasLeftItsRowsStandsOnNoneUntilTheNextMove) {
  grid.setCurrent(1, 1);
  EXPECT_TRUE(grid.leaveRows());
  EXPECT_TRUE(events.empty());
  grid.setColumnWidth(0, 700);
  grid.refresh();
  EXPECT_EQ(grid.currentRow(), -1);
  EXPECT_EQ(grid.bookmark(), "");
  EXPECT_EQ(grid.copyText(), "");
  EXPECT_FALSE(grid.userMove(GridMove::up));
  EXPECT_FALSE(grid.userMove(GridMove::right));
  EXPECT_TRUE(grid.userMove(GridMove::down, true));
  EXPECT_EQ(grid.currentRow(), 0);
  EXPECT_FALSE(grid.hasRange());
  EXPECT_EQ(events, Texts{"rowColChange ,1"});
  grid.leaveRows();
  grid.userSelectRow(1, false, true);
  EXPECT_EQ(grid.selBookmarks().count(), 2);
  grid.leaveRows();
  grid.setRows(rows);
  EXPECT_EQ(grid.currentRow(), 0);
}

TEST_F(DataGridMove, AnEntryIsStoredBeforeTheRowsAreLeft) {
  grid.userEdit(1, 0, "Patch");
  refused = "beforeUpdate";
  EXPECT_FALSE(grid.leaveRows());
  EXPECT_EQ(grid.currentRow(), 1);
  refused = "";
  EXPECT_TRUE(grid.leaveRows());
  EXPECT_EQ(names()[1], "Patch");
  EXPECT_FALSE(grid.dataChanged());
}

TEST_F(DataGridMove, ADisabledOrHiddenGridTakesNothing) {
  const auto tries = [this] {
    grid.userClick(1, 1);
    grid.userDoubleClick(1, 1);
    grid.userHeadClick(0);
    grid.userSelectAll();
    return grid.userMove(GridMove::down) || grid.userSelectRow(1) || grid.userFind("p", false) || grid.userKey('a') ||
           grid.hasRange() || !events.empty();
  };
  grid.setEnabled(false);
  EXPECT_FALSE(tries());
  grid.setEnabled(true);
  grid.setVisible(false);
  EXPECT_FALSE(tries());
}

TEST_F(DataGridMove, AClickComesBehindTheMove) {
  int row = -1;
  grid.click.listen([&] { row = grid.currentRow(); });
  grid.userClick(2, 1);
  grid.userDoubleClick(2, 1);
  EXPECT_EQ(row, 2);
  EXPECT_EQ(events, (Texts{"rowColChange 1,0", "click", "doubleClick"}));
  grid.userClick(8, 1);
  EXPECT_EQ(events.size(), 3u);
}

TEST_F(DataGridMove, TheKeyboardMovesAsInASpreadsheet) {
  fill(40);
  grid.userVisibleRows(11);
  EXPECT_EQ(after(GridMove::up), (GridCell{0, 0}));
  EXPECT_EQ(after(GridMove::left), (GridCell{0, 0}));
  EXPECT_EQ(after(GridMove::down), (GridCell{1, 0}));
  EXPECT_EQ(after(GridMove::right), (GridCell{1, 1}));
  EXPECT_EQ(after(GridMove::rowEnd), (GridCell{1, 2}));
  EXPECT_EQ(after(GridMove::right), (GridCell{1, 2}));
  EXPECT_EQ(after(GridMove::pageDown), (GridCell{11, 2}));
  EXPECT_EQ(after(GridMove::left), (GridCell{11, 1}));
  EXPECT_EQ(after(GridMove::rowStart), (GridCell{11, 0}));
  EXPECT_EQ(after(GridMove::pageUp), (GridCell{1, 0}));
  EXPECT_EQ(after(GridMove::pageUp), (GridCell{0, 0}));
  EXPECT_EQ(after(GridMove::bottom), (GridCell{39, 2}));
  EXPECT_EQ(after(GridMove::down), (GridCell{39, 2}));
  EXPECT_EQ(after(GridMove::pageDown), (GridCell{39, 2}));
  EXPECT_EQ(after(GridMove::top), (GridCell{0, 0}));
}

TEST_F(DataGridMove, TheTabKeyGoesThroughTheVisibleColumnsRowByRowAndOutAtTheEnds) {
  grid.setColumnVisible(1, false);
  EXPECT_FALSE(grid.userMove(GridMove::previous));
  EXPECT_EQ(after(GridMove::next), (GridCell{0, 2}));
  EXPECT_EQ(after(GridMove::next), (GridCell{1, 0}));
  EXPECT_EQ(after(GridMove::previous), (GridCell{0, 2}));
  grid.setCurrent(2, 2);
  EXPECT_FALSE(grid.userMove(GridMove::next));
}

TEST_F(DataGridMove, TheBottomIsTheLastStoredRow) {
  grid.setAllowAddNew(true);
  EXPECT_EQ(after(GridMove::bottom).row, 2);
  EXPECT_EQ(after(GridMove::down).row, 3);
}

TEST_F(DataGridMove, AGridWithoutRowsOrColumnsMovesNowhere) {
  grid.setRows(nullptr);
  for (const auto move : {GridMove::down, GridMove::pageDown, GridMove::pageUp, GridMove::top, GridMove::bottom}) {
    EXPECT_FALSE(grid.userMove(move));
  }
  EXPECT_EQ(grid.copyText(), "");
  grid.setRows(rows);
  grid.setColumns({});
  EXPECT_EQ(grid.currentColumn(), -1);
  EXPECT_FALSE(grid.userMove(GridMove::right));
  EXPECT_TRUE(grid.userMove(GridMove::down));
  EXPECT_FALSE(grid.userFind("p", false));
}

TEST_F(DataGridMove, DownOnTheLastRowStaysThereWithItsEntry) {
  grid.setCurrentRow(2);
  grid.userEdit(2, 0, "Loop");
  EXPECT_FALSE(grid.userMove(GridMove::down));
  EXPECT_TRUE(grid.dataChanged());
}

// --- Selected rows.

TEST_F(DataGridMove, ASelectedRowIsTheCurrentOneAndTheSelectionEndsWithTheNextMoveToAnother) {
  EXPECT_TRUE(grid.userSelectRow(1));
  EXPECT_EQ(grid.currentRow(), 1);
  EXPECT_EQ(grid.selBookmarks().items(), Texts{grid.bookmarkOf(1)});
  EXPECT_EQ(events, (Texts{"rowColChange 1,0", "selChange"}));
  grid.userMove(GridMove::right);
  EXPECT_EQ(grid.selBookmarks().count(), 1);
  grid.userMove(GridMove::down);
  EXPECT_EQ(grid.selBookmarks().count(), 0);
}

TEST_F(DataGridMove, CtrlTogglesARowAndShiftTakesAllBetween) {
  fill(10);
  grid.userSelectRow(2);
  grid.userSelectRow(5, true);
  EXPECT_EQ(grid.selBookmarks().items(), (Texts{grid.bookmarkOf(2), grid.bookmarkOf(5)}));
  grid.userSelectRow(2, true);
  EXPECT_EQ(grid.selBookmarks().items(), Texts{grid.bookmarkOf(5)});
  grid.userSelectRow(4);
  grid.userSelectRow(6, false, true);
  EXPECT_EQ(grid.selBookmarks().count(), 3);
  grid.userSelectRow(3, false, true);
  EXPECT_EQ(grid.selBookmarks().items(), (Texts{grid.bookmarkOf(3), grid.bookmarkOf(4)})) << "from where it began";
}

TEST_F(DataGridMove, ShiftWithoutASelectionBeginsAtTheCurrentRow) {
  fill(10);
  grid.setCurrentRow(3);
  grid.userSelectRow(5, false, true);
  EXPECT_EQ(grid.selBookmarks().count(), 3);
  grid.userSelectRow(2, false, true);
  EXPECT_EQ(grid.selBookmarks().items(), (Texts{grid.bookmarkOf(2), grid.bookmarkOf(3)}));
}

TEST_F(DataGridMove, ANewBindingForgetsWhereASelectionBegan) {
  grid.userSelectRow(1);
  grid.setRows(rows);
  grid.userSelectRow(2, false, true);
  EXPECT_EQ(grid.selBookmarks().count(), 3);
}

TEST_F(DataGridMove, ASingleSelectionKnowsNoModifiersAndNoneSelectsNothing) {
  grid.setMultiSelect(DataGrid::MultiSelect::simple);
  grid.userSelectRow(0);
  grid.userSelectRow(2, true, true);
  EXPECT_EQ(grid.selBookmarks().items(), Texts{grid.bookmarkOf(2)});
  grid.setMultiSelect(DataGrid::MultiSelect::none);
  grid.userSelectRow(1);
  EXPECT_EQ(grid.selBookmarks().count(), 0);
  EXPECT_EQ(grid.currentRow(), 1);
}

TEST_F(DataGridMove, WhatTheUserSelectsStandsOverWhatAListenerOfTheMoveSelects) {
  grid.rowColChange.listen([this](const std::string&, int) {
    while (grid.selBookmarks().count() > 0) grid.selBookmarks().remove(0);
    grid.selBookmarks().add(grid.bookmark());
  });
  grid.userSelectRow(0);
  grid.userSelectRow(2, true);
  EXPECT_EQ(grid.selBookmarks().count(), 2);
  grid.userMove(GridMove::up);
  EXPECT_EQ(grid.selBookmarks().items(), Texts{grid.bookmarkOf(1)});
}

TEST_F(DataGridMove, TheBlankRowIsNeverSelected) {
  grid.setAllowAddNew(true);
  EXPECT_TRUE(grid.userSelectRow(3));
  EXPECT_EQ(grid.selBookmarks().count(), 0);
  grid.selBookmarks().add("");
  EXPECT_EQ(grid.selBookmarks().count(), 0);
}

TEST_F(DataGridMove, ABookmarkIsInTheListOnce) {
  grid.selBookmarks().add("1");
  grid.selBookmarks().add("1");
  EXPECT_EQ(grid.selBookmarks().count(), 1);
  EXPECT_TRUE(grid.selBookmarks().contains("1"));
  grid.selBookmarks().remove(0);
  EXPECT_FALSE(grid.selBookmarks().contains("1"));
  EXPECT_THROW(grid.selBookmarks().item(0), std::out_of_range);
}

// --- Copying.

TEST_F(DataGridMove, CopiesTheCurrentCellTheSelectedRowsInOrderOrTheMarkedCells) {
  grid.setCurrent(1, 1);
  EXPECT_EQ(grid.copyText(), "2.000");
  grid.userSelectRow(2);
  grid.userSelectRow(0, true);
  EXPECT_EQ(grid.copyText(), "Dish\t12.500\ta\nYagi\t9.250\tc");
  grid.userMoveTo(1, 1);
  grid.userMove(GridMove::down, true);
  grid.userMove(GridMove::right, true);
  EXPECT_EQ(grid.copyText(), "2.000\tb\n9.250\tc");
  grid.userMove(GridMove::top, true);
  EXPECT_EQ(grid.copyText(), "Dish\t12.500\nPanel\t2.000");
  grid.userMove(GridMove::down);
  EXPECT_FALSE(grid.hasRange());
}

TEST_F(DataGridMove, ABookmarkThatNoRowHasIsPassedOverInACopy) {
  grid.userSelectRow(1);
  grid.selBookmarks().add("99");
  EXPECT_EQ(grid.copyText(), "Panel\t2.000\tb");
}

TEST_F(DataGridMove, AListCopiesItsCurrentRow) {
  grid.setAllowUpdate(false);
  grid.setCurrent(1, 1);
  EXPECT_EQ(grid.copyText(), "Panel\t2.000\tb");
  grid.setEnabled(false);
  EXPECT_TRUE(grid.marksRow());
}

TEST_F(DataGridMove, RowsThatGoUnmarkTheCells) {
  grid.userSelectAll();
  grid.removeRow(2);
  EXPECT_FALSE(grid.hasRange());
  EXPECT_EQ(grid.extent(), (GridCell{0, 0}));
}

TEST_F(DataGridMove, AllCellsAreMarkedWithoutAMoveAndHiddenColumnsAreNotCopied) {
  grid.setColumnVisible(1, false);
  rows->store(0, {{"NAME", Value()}, {"NOTE", Value("two\r\nlines\tand a tab")}});
  grid.setCurrentRow(1);
  grid.setAllowAddNew(true);
  grid.userSelectAll();
  EXPECT_EQ(grid.currentRow(), 1);
  EXPECT_EQ(grid.copyText(), "\ttwo  lines and a tab\nPanel\tb\nYagi\tc");
  EXPECT_TRUE(events.empty());
}

// --- What is in view.

TEST_F(DataGridMove, AMoveBringsTheRowIntoViewWithTheLeastScrolling) {
  fill(100);
  EXPECT_EQ(grid.visibleRows(), 10);
  grid.setCurrentRow(9);
  EXPECT_EQ(grid.firstRow(), 0);
  grid.setCurrentRow(10);
  EXPECT_EQ(grid.firstRow(), 1);
  grid.setCurrentRow(0);
  EXPECT_EQ(grid.firstRow(), 0);
  grid.ensureVisible(99);
  EXPECT_EQ(grid.firstRow(), 90);
  EXPECT_EQ(grid.currentRow(), 0);
  grid.ensureVisible(100);
  EXPECT_EQ(grid.firstRow(), 90);
}

TEST_F(DataGridMove, TheTopRowCanBeSetAndRowsInViewAreKnown) {
  fill(100);
  grid.setFirstRow(50);
  EXPECT_TRUE(grid.rowInView(50));
  EXPECT_TRUE(grid.rowInView(59));
  EXPECT_FALSE(grid.rowInView(60));
  EXPECT_FALSE(grid.rowInView(49));
  grid.setCurrentRow(50);
  EXPECT_EQ(grid.firstRow(), 50);
  grid.setFirstRow(500);
  EXPECT_EQ(grid.firstRow(), 99);
  grid.setFirstRow(-1);
  EXPECT_EQ(grid.firstRow(), 0);
  grid.userScroll(7);
  EXPECT_EQ(grid.firstRow(), 7);
  grid.userVisibleRows(0);
  EXPECT_EQ(grid.visibleRows(), 1);
}

TEST_F(DataGridMove, ACurrentRowInViewStaysSoInASmallerViewAndOneOutOfViewDoesNotPullTheView) {
  fill(100);
  grid.setCurrentRow(9);
  grid.userVisibleRows(6);
  EXPECT_EQ(grid.firstRow(), 4);
  grid.setFirstRow(50);
  grid.userVisibleRows(5);
  EXPECT_EQ(grid.firstRow(), 50);
}

TEST_F(DataGridMove, ARowCanBePutInTheMiddleOfTheView) {
  fill(100);
  grid.setFirstRow(60 - grid.visibleRows() / 2);
  EXPECT_TRUE(grid.setVisualRow(grid.visibleRows() / 2));
  EXPECT_EQ(grid.currentRow(), 60);
  EXPECT_EQ(grid.visualRow(), 5);
  EXPECT_EQ(grid.firstRow(), 55);
}

TEST_F(DataGridMove, ALessNumberOfRowsPullsTheTopRowBack) {
  fill(100);
  grid.setFirstRow(80);
  while (rows->count() > 5) rows->remove(0);
  grid.refresh();
  EXPECT_EQ(grid.firstRow(), 4);
}

// --- Headings.

TEST_F(DataGridMove, AHeadingSortsUpThenDownThenUpAgainAndKeepsTheCurrentRow) {
  grid.setAllowSort(true);
  grid.setCurrentRow(0);
  grid.userHeadClick(1);
  EXPECT_EQ(names(), (Texts{"Panel", "Yagi", "Dish"}));
  EXPECT_EQ(grid.currentRow(), 2);
  EXPECT_EQ(grid.sortField(), "GAIN");
  grid.userHeadClick(1);
  EXPECT_EQ(names(), (Texts{"Dish", "Yagi", "Panel"}));
  EXPECT_FALSE(grid.sortAscending());
  grid.userHeadClick(1);
  EXPECT_EQ(names(), (Texts{"Panel", "Yagi", "Dish"}));
  grid.userHeadClick(0);
  EXPECT_EQ(names(), (Texts{"Dish", "Panel", "Yagi"}));
  EXPECT_TRUE(grid.sortAscending());
  EXPECT_EQ(events, (Texts{"headClick 1", "headClick 1", "headClick 1", "headClick 0"}));
}

TEST_F(DataGridMove, SortingBringsTheCurrentRowIntoView) {
  fill(100);
  grid.setAllowSort(true);
  grid.userHeadClick(0);
  EXPECT_EQ(grid.currentRow(), 0);
  grid.userHeadClick(0);
  EXPECT_EQ(grid.currentRow(), 99);
  EXPECT_EQ(grid.firstRow(), 90);
}

TEST_F(DataGridMove, WithoutLeaveToSortAHeadingOnlyTellsOfItsClick) {
  grid.userHeadClick(1);
  EXPECT_EQ(names(), (Texts{"Dish", "Panel", "Yagi"}));
  EXPECT_EQ(grid.sortField(), "");
  EXPECT_EQ(events, Texts{"headClick 1"});
  grid.userHeadClick(9);
  EXPECT_EQ(events.size(), 1u);
}

TEST_F(DataGridMove, SortingStoresTheEntryFirstAndWaitsWhereThatIsRefused) {
  grid.setAllowSort(true);
  grid.userEdit(0, 0, "Zepp");
  refused = "beforeUpdate";
  grid.userHeadClick(0);
  EXPECT_EQ(grid.sortField(), "");
  refused = "";
  grid.userHeadClick(0);
  EXPECT_EQ(names(), (Texts{"Panel", "Yagi", "Zepp"}));
  EXPECT_EQ(grid.currentRow(), 2);
}

TEST_F(DataGridMove, AUsersWidthIsKeptAndToldAndAWidthOfNothingIsNot) {
  grid.userResizeColumn(1, 777);
  grid.userResizeColumn(1, 0);
  grid.userResizeColumn(5, 100);
  EXPECT_EQ(grid.column(1).width, 777);
  EXPECT_EQ(events, Texts{"colResize 1"});
}

// --- Keys.

TEST_F(DataGridMove, AListenerSwallowsAKey) {
  grid.keyPress.listen([](int& key) {
    if (key == 'b') key = 0;
  });
  EXPECT_TRUE(grid.userKey('a'));
  EXPECT_FALSE(grid.userKey('b'));
  EXPECT_FALSE(grid.userKey(0));
}

TEST_F(DataGridMove, TypingGoesToTheFirstRowThatBeginsWithItCaseAside) {
  rows->add({"Pannier"});
  rows->add({"\xC3\x84ther"});
  grid.refresh();
  EXPECT_TRUE(grid.userFind("p", false));
  EXPECT_EQ(grid.currentRow(), 1);
  EXPECT_TRUE(grid.userFind("an", true));
  EXPECT_TRUE(grid.userFind("N", true));
  EXPECT_EQ(grid.currentRow(), 3);
  EXPECT_FALSE(grid.userFind("x", true));
  EXPECT_EQ(grid.currentRow(), 3);
  EXPECT_TRUE(grid.userFind("y", false));
  EXPECT_EQ(grid.currentRow(), 2);
  EXPECT_TRUE(grid.userFind("\xC3\xA4", false));
  EXPECT_EQ(grid.currentRow(), 4);
  grid.setColumnVisible(0, false);
  EXPECT_TRUE(grid.userFind("9", false)) << "by the first visible column";
  EXPECT_EQ(grid.currentRow(), 2);
}

}  // namespace
}  // namespace vantrelix
