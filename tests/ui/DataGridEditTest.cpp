// Entries, new rows and removed rows.
#include "ui/DataGridFixture.h"

namespace vantrelix {
namespace {

using DataGridEdit = test::DataGridTest;

TEST_F(DataGridEdit, AnEntryIsKeptForTheRowAndStoredWhenTheRowIsLeft) {
  EXPECT_TRUE(grid.userEdit(0, 0, "Horn"));
  EXPECT_EQ(grid.cellText(0, 0), "Horn");
  EXPECT_EQ(rows->value(0, "NAME"), Value("Dish"));
  EXPECT_TRUE(grid.dataChanged());
  EXPECT_TRUE(grid.userMove(GridMove::right));
  EXPECT_TRUE(grid.dataChanged()) << "another cell of the row";
  EXPECT_TRUE(grid.userMove(GridMove::down));
  EXPECT_FALSE(grid.dataChanged());
  EXPECT_EQ(rows->value(0, "NAME"), Value("Horn"));
  EXPECT_EQ(events, (Texts{"beforeColEdit 0", "beforeColUpdate Horn", "afterColUpdate 0", "rowColChange 1,0",
                           "beforeUpdate", "afterUpdate", "rowColChange 1,1"}));
}

TEST_F(DataGridEdit, TheSameTextIsNoEntry) {
  EXPECT_TRUE(grid.userEdit(0, 1, "12.500"));
  EXPECT_FALSE(grid.dataChanged());
  EXPECT_EQ(events, (Texts{"rowColChange 1,0", "beforeColEdit 1"}));
}

TEST_F(DataGridEdit, ARefusedValueLeavesTheOldOne) {
  refused = "beforeColUpdate";
  EXPECT_FALSE(grid.userEdit(0, 1, "99"));
  EXPECT_EQ(grid.cellText(0, 1), "12.500");
  EXPECT_FALSE(grid.dataChanged());
  refused = "";
  EXPECT_TRUE(grid.userEdit(0, 1, "98"));
  refused = "beforeColUpdate";
  EXPECT_FALSE(grid.userEdit(0, 1, "99"));
  EXPECT_EQ(grid.cellText(0, 1), "98.000") << "the entry so far stays";
}

TEST_F(DataGridEdit, AListenerSeesTheOldValueAndMayReplaceTheNewOne) {
  Value seen;
  grid.beforeColUpdate.listen([&](GridColumnUpdate& update) {
    seen = update.oldValue;
    if (update.value.isNumber()) update.value = update.value.number() - 2.15;
  });
  EXPECT_TRUE(grid.userEdit(0, 1, "2.15"));
  EXPECT_EQ(seen, Value(12.5));
  EXPECT_EQ(grid.value(0, "GAIN"), Value(0.0));
}

TEST_F(DataGridEdit, WhatIsTypedIntoANumbersColumnIsANumberABlankIsNullAndTextStaysText) {
  grid.userEdit(0, 1, " 7.5 ");
  EXPECT_EQ(grid.value(0, "GAIN"), Value(7.5));
  grid.userEdit(0, 1, " ");
  EXPECT_TRUE(grid.value(0, "GAIN").isNull());
  grid.userEdit(0, 1, "x");
  EXPECT_EQ(grid.value(0, "GAIN"), Value("x"));
  grid.userEdit(0, 0, "8");
  EXPECT_EQ(grid.value(0, "NAME"), Value("8"));
}

TEST_F(DataGridEdit, NothingIsEditedWhereItIsNotAllowed) {
  const auto tries = [this] { return grid.userBeginEdit(0, 0) || grid.userEdit(0, 0, "x"); };
  grid.setLocked(true);
  EXPECT_FALSE(tries());
  grid.setLocked(false);
  grid.setAllowUpdate(false);
  EXPECT_FALSE(tries());
  grid.setAllowUpdate(true);
  grid.setEnabled(false);
  EXPECT_FALSE(tries());
  grid.setEnabled(true);
  GridColumn column = grid.column(0);
  column.locked = true;
  grid.setColumn(0, column);
  EXPECT_FALSE(tries());
  EXPECT_FALSE(grid.userEdit(3, 1, "x"));
  refused = "beforeColEdit";
  EXPECT_FALSE(grid.userEdit(0, 1, "x"));
  EXPECT_EQ(events, (Texts{"rowColChange 1,0", "beforeColEdit 1"}));
  EXPECT_FALSE(grid.dataChanged());
}

TEST_F(DataGridEdit, EachEditAsksOnceBeforehandAndAgainAfterItWasLeft) {
  EXPECT_TRUE(grid.userBeginEdit(0, 0));
  EXPECT_TRUE(grid.userBeginEdit(0, 0));
  EXPECT_EQ(events, Texts{"beforeColEdit 0"});
  grid.userEndEdit();
  EXPECT_TRUE(grid.userBeginEdit(0, 0));
  EXPECT_EQ(events.size(), 2u);
}

TEST_F(DataGridEdit, AnEditThatWasLeftByAMoveOrABindingBeginsAnew) {
  grid.userBeginEdit(0, 0);
  grid.setCurrentRow(1);
  grid.setCurrentRow(0);
  grid.userBeginEdit(0, 0);
  grid.setRows(rows);
  grid.userBeginEdit(0, 0);
  EXPECT_EQ(events, (Texts{"beforeColEdit 0", "beforeColEdit 0", "beforeColEdit 0"}));
}

TEST_F(DataGridEdit, AnEditWhoseListenerMovesElsewhereIsNotBegun) {
  const Connection connection = grid.beforeColEdit.connect([this](int, bool&) { grid.setCurrentRow(2); });
  EXPECT_FALSE(grid.userEdit(0, 0, "x"));
  EXPECT_EQ(names(), (Texts{"Dish", "Panel", "Yagi"}));
}

TEST_F(DataGridEdit, ANewRowWhoseListenerForbidsItIsNotBegun) {
  grid.setAllowAddNew(true);
  grid.beforeInsert.listen([this](bool&) { grid.setAllowAddNew(false); });
  EXPECT_FALSE(grid.userEdit(3, 0, "x"));
  EXPECT_FALSE(grid.dataChanged());
}

TEST_F(DataGridEdit, AListenerMayDropTheEntryInsteadOfStoringIt) {
  grid.beforeUpdate.listen([this](bool&) { grid.cancelUpdate(); });
  grid.userEdit(0, 0, "Horn");
  events.clear();
  EXPECT_TRUE(grid.update());
  EXPECT_EQ(events, Texts{"beforeUpdate"});
  EXPECT_EQ(rows->value(0, "NAME"), Value("Dish"));
}

TEST_F(DataGridEdit, AProgramsValueForTheBlankRowLeavesAnEntryElsewhereAlone) {
  grid.setAllowAddNew(true);
  grid.userEdit(0, 0, "Horn");
  grid.setValue(3, "NAME", "Loop");
  EXPECT_EQ(grid.cellText(0, 0), "Horn");
  EXPECT_FALSE(grid.addingRow());
}

TEST_F(DataGridEdit, ANewRowStoredWhereNoMoreMayBeAddedLeavesNoBlankRow) {
  grid.setAllowAddNew(true);
  grid.userEdit(3, 0, "Horn");
  grid.setAllowAddNew(false);
  int inserts = 0;
  grid.rowsChanged.listen([&](const GridChange& change) { inserts += change.kind == GridChange::Kind::insert; });
  EXPECT_TRUE(grid.update());
  EXPECT_EQ(grid.rowCount(), 4);
  EXPECT_EQ(inserts, 0);
}

TEST_F(DataGridEdit, ARefusedStoringKeepsTheRowAndItsEntry) {
  grid.userEdit(0, 0, "Horn");
  refused = "beforeUpdate";
  EXPECT_FALSE(grid.userMoveTo(1, 0));
  EXPECT_FALSE(grid.setCurrentRow(2));
  EXPECT_FALSE(grid.setBookmark(grid.bookmark()));
  EXPECT_EQ(grid.currentRow(), 0);
  EXPECT_TRUE(grid.dataChanged());
  EXPECT_TRUE(grid.userCancelRow());
  EXPECT_EQ(grid.cellText(0, 0), "Dish");
  EXPECT_FALSE(grid.userCancelRow());
  EXPECT_TRUE(grid.userMoveTo(1, 0));
}

TEST_F(DataGridEdit, SettingTheBookmarkAgainStoresTheEntry) {
  grid.userEdit(0, 0, "Horn");
  EXPECT_TRUE(grid.setBookmark(grid.bookmark()));
  EXPECT_FALSE(grid.dataChanged());
  EXPECT_EQ(rows->value(0, "NAME"), Value("Horn"));
}

TEST_F(DataGridEdit, ANewRowBeginsWithTheFirstEntryAndIsStoredAtItsEnd) {
  grid.setAllowAddNew(true);
  grid.onAddNew.listen([this] { grid.setValue(grid.currentRow(), "NOTE", "preset"); });
  EXPECT_TRUE(grid.userMoveTo(3, 0));
  EXPECT_FALSE(grid.addingRow());
  events.clear();
  EXPECT_TRUE(grid.userEdit(3, 0, "Horn"));
  EXPECT_TRUE(grid.addingRow());
  EXPECT_EQ(grid.cellText(3, 2), "preset");
  EXPECT_EQ(rows->count(), 3);
  EXPECT_EQ(grid.rowCount(), 4);
  EXPECT_TRUE(grid.userMove(GridMove::down));
  EXPECT_EQ(rows->count(), 4);
  EXPECT_EQ(rows->value(3, "NOTE"), Value("preset"));
  EXPECT_EQ(grid.currentRow(), 4);
  EXPECT_EQ(events, (Texts{"beforeColEdit 0", "beforeInsert", "onAddNew", "beforeColUpdate Horn", "afterColUpdate 0",
                           "beforeUpdate", "afterInsert", "afterUpdate", "rowColChange 4,0"}));
}

TEST_F(DataGridEdit, ANewRowWhoseFirstValueIsRefusedWasNeverBegun) {
  grid.setAllowAddNew(true);
  refused = "beforeColUpdate";
  EXPECT_FALSE(grid.userEdit(3, 0, "Horn"));
  EXPECT_FALSE(grid.addingRow());
  EXPECT_EQ(grid.rowCount(), 4);
  refused = "beforeInsert";
  EXPECT_FALSE(grid.userEdit(3, 0, "Horn"));
  EXPECT_FALSE(grid.dataChanged());
  EXPECT_TRUE(grid.userMoveTo(0, 0));
  EXPECT_EQ(rows->count(), 3);
}

TEST_F(DataGridEdit, ANewRowIsDroppedByCancelling) {
  grid.setAllowAddNew(true);
  grid.userEdit(3, 0, "Horn");
  grid.setAllowAddNew(false);
  EXPECT_EQ(grid.rowCount(), 4) << "the entry keeps its row";
  EXPECT_TRUE(grid.userCancelRow());
  EXPECT_EQ(grid.rowCount(), 3);
  EXPECT_EQ(grid.currentRow(), 2);
}

TEST_F(DataGridEdit, WithoutLeaveToAddAnExistingRowIsStillEditedAndTheOtherWayRound) {
  grid.setAllowAddNew(true);
  grid.setAllowUpdate(false);
  EXPECT_FALSE(grid.editable(0, 0));
  EXPECT_TRUE(grid.editable(3, 0));
  EXPECT_TRUE(grid.anyEditable());
  grid.setAllowAddNew(false);
  EXPECT_FALSE(grid.anyEditable());
}

TEST_F(DataGridEdit, DeletingAsksForEachSelectedRowAndGoesOnToTheNext) {
  grid.userSelectRow(0);
  grid.userSelectRow(1, true);
  events.clear();
  EXPECT_TRUE(grid.userDeleteRows());
  EXPECT_EQ(names(), Texts{"Yagi"});
  EXPECT_EQ(grid.selBookmarks().count(), 0);
  EXPECT_EQ(grid.currentRow(), 0);
  EXPECT_EQ(events, (Texts{"rowColChange 2,0", "beforeDelete", "afterDelete", "rowColChange 1,0", "beforeDelete",
                           "afterDelete", "rowColChange 2,0"}));
}

TEST_F(DataGridEdit, ABookmarkThatNoRowHasDoesNotKeepTheOthersFromBeingDeleted) {
  grid.selBookmarks().add("99");
  grid.selBookmarks().add(grid.bookmarkOf(1));
  EXPECT_TRUE(grid.userDeleteRows());
  EXPECT_EQ(names(), (Texts{"Dish", "Yagi"}));
}

TEST_F(DataGridEdit, ARefusedDeleteKeepsTheRowAndTheRest) {
  grid.userSelectRow(0);
  grid.userSelectRow(1, true);
  refused = "beforeDelete";
  EXPECT_FALSE(grid.userDeleteRows());
  EXPECT_EQ(rows->count(), 3);
}

TEST_F(DataGridEdit, NothingIsDeletedWithoutASelectedRowOrWhereItIsNotAllowed) {
  EXPECT_FALSE(grid.userDeleteRows());
  grid.userSelectRow(0);
  grid.setAllowDelete(false);
  EXPECT_FALSE(grid.userDeleteRows());
  grid.setAllowDelete(true);
  grid.setLocked(true);
  EXPECT_FALSE(grid.userDeleteRows());
  grid.setLocked(false);
  grid.setEnabled(false);
  EXPECT_FALSE(grid.userDeleteRows());
  EXPECT_EQ(rows->count(), 3);
}

TEST_F(DataGridEdit, DeletingTheRowUnderEntryDropsTheEntry) {
  grid.userSelectRow(1);
  grid.userEdit(1, 0, "Horn");
  EXPECT_TRUE(grid.userDeleteRows());
  EXPECT_FALSE(grid.dataChanged());
  EXPECT_EQ(names(), (Texts{"Dish", "Yagi"}));
}

TEST_F(DataGridEdit, ARefusedDeleteKeepsTheEntryToo) {
  grid.userSelectRow(1);
  grid.userEdit(1, 0, "Horn");
  refused = "beforeDelete";
  EXPECT_FALSE(grid.userDeleteRows());
  EXPECT_EQ(grid.cellText(1, 0), "Horn");
}

TEST_F(DataGridEdit, DeletingTheLastRowLeavesTheCurrentOneOnTheNewLast) {
  grid.userSelectRow(2);
  EXPECT_TRUE(grid.userDeleteRows());
  EXPECT_EQ(grid.currentRow(), 1);
}

TEST_F(DataGridEdit, AListenerMayEndTheGrid) {
  const auto endsIn = [this](auto connect, auto act) {
    auto own = std::make_unique<DataGrid>("own");
    own->setColumns(grid.columns());
    own->setAllowAddNew(true);
    auto source = std::make_shared<ArrayRows>(Texts{"NAME"});
    source->add({"a"});
    source->add({"b"});
    own->setRows(source);
    own->selBookmarks().add(own->bookmarkOf(0));
    connect(*own, [&own](auto&&...) { own.reset(); });
    act(*own);
    return own == nullptr;
  };
  const auto edit = [](DataGrid& own) { EXPECT_FALSE(own.userEdit(0, 0, "x")); };
  const auto add = [](DataGrid& own) { EXPECT_FALSE(own.userEdit(2, 0, "x")); };
  const auto remove = [](DataGrid& own) { EXPECT_FALSE(own.userDeleteRows()); };
  const auto leave = [](DataGrid& own) {
    EXPECT_TRUE(own.userEdit(0, 0, "x"));
    EXPECT_FALSE(own.userMoveTo(1, 0));
  };
  EXPECT_TRUE(endsIn([](DataGrid& own, auto end) { own.beforeColEdit.listen(end); }, edit));
  EXPECT_TRUE(endsIn([](DataGrid& own, auto end) { own.beforeColUpdate.listen(end); }, edit));
  EXPECT_TRUE(endsIn([](DataGrid& own, auto end) { own.rowsChanged.listen(end); }, edit));
  EXPECT_TRUE(endsIn([](DataGrid& own, auto end) { own.changed.listen(end); }, edit));
  EXPECT_TRUE(endsIn([](DataGrid& own, auto end) { own.beforeInsert.listen(end); }, add));
  EXPECT_TRUE(endsIn([](DataGrid& own, auto end) { own.onAddNew.listen(end); }, add));
  EXPECT_TRUE(endsIn([](DataGrid& own, auto end) { own.rowColChange.listen(end); }, add));
  EXPECT_TRUE(endsIn([](DataGrid& own, auto end) { own.beforeDelete.listen(end); }, remove));
  EXPECT_TRUE(endsIn([](DataGrid& own, auto end) { own.afterDelete.listen(end); }, remove));
  EXPECT_TRUE(endsIn([](DataGrid& own, auto end) { own.changed.listen(end); }, remove));
  EXPECT_TRUE(endsIn([](DataGrid& own, auto end) { own.beforeUpdate.listen(end); }, leave));
  EXPECT_TRUE(endsIn([](DataGrid& own, auto end) { own.afterUpdate.listen(end); }, leave));
  EXPECT_TRUE(endsIn([](DataGrid& own, auto end) { own.rowColChange.listen(end); }, leave));
}

TEST_F(DataGridEdit, AListenerMayBindTheGridAnewInTheMiddle) {
  const auto other = std::make_shared<ArrayRows>(Texts{"NAME"});
  grid.beforeColUpdate.listen([&](GridColumnUpdate&) { grid.setRows(other); });
  EXPECT_FALSE(grid.userEdit(2, 0, "x"));
  EXPECT_FALSE(grid.dataChanged());
  EXPECT_EQ(other->count(), 0);
  grid.setRows(rows);
  grid.userSelectRow(2);
  grid.beforeDelete.listen([&](bool&) { grid.setRows(other); });
  EXPECT_TRUE(grid.userDeleteRows());
  EXPECT_EQ(rows->count(), 3);
}

}  // namespace
}  // namespace vantrelix
