// Columns, rows, cell texts and bookmarks.
#include <algorithm>

#include "platform/RunTimeFailure.h"
#include "ui/DataGridFixture.h"

namespace vantrelix {
namespace {

using DataGridRows = test::DataGridTest;

TEST_F(DataGridRows, AColumnIsFoundByItsFieldWithoutRegardToCase) {
  EXPECT_EQ(grid.columnOf("gain"), 1);
  EXPECT_EQ(grid.columnOf("POWER"), -1);
  EXPECT_EQ(grid.column(0).width, 1500);
  EXPECT_THROW(grid.column(3), std::out_of_range);
}

TEST_F(DataGridRows, ColumnsCanBeHiddenWidenedRenamedAndRemoved) {
  grid.setColumnVisible(0, false);
  grid.setColumnWidth(1, 2345);
  grid.setColumnCaption(1, "Gain (dBd)");
  EXPECT_FALSE(grid.columns()[0].visible);
  EXPECT_EQ(grid.columns()[1].width, 2345);
  EXPECT_EQ(grid.columns()[1].caption, "Gain (dBd)");
  EXPECT_EQ(grid.currentColumn(), 1) << "the hidden column can't be the current one";
  grid.removeColumn(0);
  EXPECT_EQ(grid.columnOf("GAIN"), 0);
  EXPECT_EQ(grid.currentColumn(), 0);
  grid.removeColumn(7);
  EXPECT_EQ(grid.columnCount(), 2);
}

TEST_F(DataGridRows, TheSameColumnsSetAgainChangeNothing) {
  grid.userSelectAll();
  const long before = grid.revision();
  grid.setColumns(grid.columns());
  EXPECT_EQ(grid.revision(), before);
  EXPECT_TRUE(grid.hasRange());
}

TEST_F(DataGridRows, ANumberFormatGoverningAColumnGovernsNumbersAndTextsThatHoldOne) {
  rows->store(1, {{"GAIN", Value("3.5")}});
  rows->store(2, {{"GAIN", Value("unknown")}});
  EXPECT_EQ(grid.cellText(0, 1), "12.500");
  EXPECT_EQ(grid.cellText(1, 1), "3.500");
  EXPECT_EQ(grid.cellText(2, 1), "unknown");
  grid.setColumnNumberFormat(1, "");
  EXPECT_EQ(grid.cellText(0, 1), "12.5");
}

TEST_F(DataGridRows, ANullIsBlankAndSoIsWhatLiesOutsideTheRows) {
  rows->store(0, {{"NAME", Value()}});
  EXPECT_EQ(grid.cellText(0, 0), "");
  EXPECT_EQ(grid.cellText(3, 0), "");
  EXPECT_EQ(grid.cellText(-1, 0), "");
  EXPECT_EQ(grid.cellText(0, 9), "");
  EXPECT_TRUE(grid.value(-1, "NAME").isNull());
}

TEST_F(DataGridRows, AColumnThatAsksForItsTextsGetsThemFromTheListenerNullsIncluded) {
  rows->store(2, {{"GAIN", Value()}});
  grid.setColumnNumberFormat(1, kFormatTextEvent);
  EXPECT_EQ(grid.cellText(0, 1), "12.5") << "without a listener the plain text stands";
  grid.formatText.listen([](GridCellText& cell) {
    cell.text = std::to_string(cell.cell.row) + ":" + (cell.value.isNull() ? "none" : cell.text + " dBd");
  });
  EXPECT_EQ(grid.cellText(0, 1), "0:12.5 dBd");
  EXPECT_EQ(grid.cellText(2, 1), "2:none");
}

TEST_F(DataGridRows, AnUnboundColumnIsFetchedByCallback) {
  grid.addColumn({"Number", "", 500, true, "000"});
  grid.unboundColumnFetch.listen([](GridCell cell, Value& value) { value = cell.row + 1; });
  EXPECT_EQ(grid.cellText(2, 3), "003");
  EXPECT_FALSE(grid.editable(2, 3));
}

TEST_F(DataGridRows, RowsAreColouredByCallbackUntilThatIsSwitchedOff) {
  grid.fetchRowStyle.listen([this](int row, GridRowStyle& style) {
    if (rows->value(row, "GAIN").number() < 10) style.back = 0x8080FF;
  });
  EXPECT_FALSE(grid.rowStyle(0).back);
  EXPECT_EQ(grid.rowStyle(1).back, Color{0x8080FF});
  grid.setFetchRowStyle(false);
  EXPECT_FALSE(grid.rowStyle(1).back);
}

TEST_F(DataGridRows, TheBlankRowIsAskedForNeitherTextNorColour) {
  grid.setAllowAddNew(true);
  grid.setColumnNumberFormat(1, kFormatTextEvent);
  grid.formatText.listen([](GridCellText& cell) { cell.text = "0.000"; });
  grid.fetchRowStyle.listen([](int, GridRowStyle& style) { style.back = 255; });
  ASSERT_TRUE(grid.isAddRow(3));
  EXPECT_EQ(grid.cellText(3, 1), "");
  EXPECT_FALSE(grid.rowStyle(3).back);
  EXPECT_EQ(grid.bookmarkOf(3), "");
}

TEST_F(DataGridRows, AnEmptySourceThatMayGrowHasOneBlankRowAndOneThatMayNotHasNone) {
  grid.setRows(std::make_shared<ArrayRows>(Texts{"NAME"}));
  EXPECT_EQ(grid.rowCount(), 0);
  EXPECT_EQ(grid.currentRow(), -1);
  EXPECT_EQ(grid.bookmark(), "");
  grid.setAllowAddNew(true);
  EXPECT_EQ(grid.rowCount(), 1);
  EXPECT_EQ(grid.currentRow(), 0);
  EXPECT_EQ(grid.dataRowCount(), 0);
  grid.setRows(nullptr);
  EXPECT_EQ(grid.rowCount(), 0);
  EXPECT_EQ(grid.rows(), nullptr);
}

TEST_F(DataGridRows, BindingGoesToTheFirstRowAndForgetsSelectionAndEntry) {
  grid.selBookmarks().add(grid.bookmarkOf(1));
  grid.setCurrentRow(2);
  grid.setFirstRow(2);
  ASSERT_TRUE(grid.userEdit(2, 0, "x"));
  grid.setRows(rows);
  EXPECT_EQ(grid.currentRow(), 0);
  EXPECT_EQ(grid.firstRow(), 0);
  EXPECT_EQ(grid.selBookmarks().count(), 0);
  EXPECT_FALSE(grid.dataChanged());
  EXPECT_EQ(rows->value(2, "NAME"), Value("Yagi"));
}

TEST_F(DataGridRows, ARefreshKeepsTheRowsByTheirBookmarks) {
  grid.setCurrentRow(1);
  grid.selBookmarks().add(grid.bookmarkOf(0));
  grid.selBookmarks().add(grid.bookmarkOf(2));
  rows->remove(0);
  rows->insert(0, {"Horn"});
  rows->insert(0, {"Loop"});
  grid.refresh();
  EXPECT_EQ(grid.cellText(grid.currentRow(), 0), "Panel");
  ASSERT_EQ(grid.selBookmarks().count(), 1);
  EXPECT_EQ(grid.rowOf(grid.selBookmarks().item(0)), 3);
}

TEST_F(DataGridRows, ARefreshWithoutTheCurrentRowStaysNearIt) {
  grid.setCurrentRow(2);
  rows->remove(2);
  grid.refresh();
  EXPECT_EQ(grid.currentRow(), 1);
  rows->clear();
  grid.refresh();
  EXPECT_EQ(grid.currentRow(), -1);
  rows->add({"Horn"});
  rows->add({"Loop"});
  grid.refresh();
  EXPECT_EQ(grid.currentRow(), 0);
}

TEST_F(DataGridRows, ARefreshOnTheBlankRowStaysThere) {
  grid.setAllowAddNew(true);
  grid.setCurrentRow(3);
  rows->add({"Horn"});
  grid.refresh();
  EXPECT_EQ(grid.currentRow(), 4);
}

TEST_F(DataGridRows, ARowIsAddedAndRemovedByTheProgramWithoutAnEvent) {
  grid.setCurrentRow(2);
  EXPECT_EQ(grid.appendRow({{"name", Value("Horn")}}), 3);
  EXPECT_EQ(names(), (Texts{"Dish", "Panel", "Yagi", "Horn"}));
  grid.removeRow(0);
  EXPECT_EQ(grid.cellText(grid.currentRow(), 0), "Yagi");
  grid.removeRow(1);
  EXPECT_EQ(grid.cellText(grid.currentRow(), 0), "Horn");
  EXPECT_TRUE(events.empty());
}

TEST_F(DataGridRows, RemovingARowDropsItFromTheSelection) {
  grid.selBookmarks().add(grid.bookmarkOf(0));
  grid.selBookmarks().add(grid.bookmarkOf(1));
  grid.removeRow(0);
  ASSERT_EQ(grid.selBookmarks().count(), 1);
  EXPECT_EQ(grid.rowOf(grid.selBookmarks().item(0)), 0);
}

TEST_F(DataGridRows, AProgramsValueGoesIntoTheSourceAtOnceOrIntoTheEntryUnderWay) {
  grid.setValue(1, "NAME", "Horn");
  EXPECT_EQ(rows->value(1, "NAME"), Value("Horn"));
  ASSERT_TRUE(grid.userEdit(0, 0, "Loop"));
  grid.setValue(0, "NOTE", "new");
  EXPECT_EQ(rows->value(0, "NOTE"), Value("a"));
  EXPECT_EQ(grid.cellText(0, 2), "new");
  grid.setValue(9, "NOTE", "nowhere");
  EXPECT_TRUE(grid.update());
  EXPECT_EQ(rows->value(0, "NOTE"), Value("new"));
}

TEST_F(DataGridRows, ChangesOfRowsAreToldOneByOneAndOnlyOthersNeedAllRowsAnew) {
  std::vector<std::string> told;
  grid.rowsChanged.listen([&](const GridChange& change) {
    const char* kinds[] = {"cells", "insert", "remove"};
    told.push_back(std::string(kinds[static_cast<int>(change.kind)]) + std::to_string(change.first) + "-" +
                   std::to_string(change.last));
  });
  const long before = grid.revision();
  grid.appendRow({});
  grid.removeRow(1);
  grid.setValue(2, "NAME", "x");
  grid.refreshCells();
  grid.setFetchRowStyle(false);
  grid.setFetchRowStyle(false);
  EXPECT_EQ(told, (Texts{"insert3-3", "remove1-1", "cells2-2", "cells0-2", "cells0-2"}));
  EXPECT_EQ(grid.revision(), before + 5);
  grid.refresh();
  EXPECT_EQ(told.size(), 5u);
  EXPECT_EQ(grid.revision(), before + 6);
}

TEST_F(DataGridRows, WidthsPlacesAndSelectionAreNoChangeOfTheRows) {
  const long before = grid.revision();
  grid.setColumnWidth(0, 99);
  grid.setColumnVisible(2, false);
  grid.setCurrentRow(2);
  grid.selBookmarks().add(grid.bookmark());
  grid.setRowHeight(400);
  grid.setFirstRow(1);
  EXPECT_EQ(grid.revision(), before);
  grid.setColumnNumberFormat(1, "0");
  EXPECT_EQ(grid.revision(), before + 1);
}

TEST_F(DataGridRows, WhileHeldItSaysNothingAndOnReleaseOnce) {
  int changes = 0, rowsTold = 0, holds = 0;
  grid.changed.listen([&] { ++changes; });
  grid.rowsChanged.listen([&](const GridChange&) { ++rowsTold; });
  grid.heldChanged.listen([&] { ++holds; });
  {
    const GridHold outer(grid);
    const GridHold inner(grid);
    grid.appendRow({});
    grid.setColumnWidth(0, 10);
    grid.setCurrentRow(1);
    grid.setRows(rows);
    EXPECT_TRUE(grid.held());
    EXPECT_EQ(changes, 0);
  }
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(rowsTold, 0);
  EXPECT_EQ(holds, 2);
  { const GridHold idle(grid); }
  EXPECT_EQ(changes, 1) << "nothing happened meanwhile";
  grid.release();
  EXPECT_FALSE(grid.held()) << "a release too many is harmless";
}

TEST(GridHold, MayOutliveItsGrid) {
  auto grid = std::make_unique<DataGrid>("grid");
  const GridHold hold(*grid);
  grid.reset();
  EXPECT_EQ(grid, nullptr);
}

// --- The rows in memory.

TEST_F(DataGridRows, ABookmarkStaysValidHoweverTheRowsMoveAndIsNeverGivenAgain) {
  const std::string panel = rows->bookmark(1);
  const std::string yagi = rows->bookmark(2);
  EXPECT_EQ(rows->rowOf(panel), 1);
  rows->insert(0, {"Horn"});
  EXPECT_EQ(rows->rowOf(panel), 2);
  rows->remove(0);
  EXPECT_EQ(rows->rowOf(panel), 1);
  rows->sort("NAME", false);
  EXPECT_EQ(rows->rowOf(yagi), 0);
  rows->remove(0);
  EXPECT_EQ(rows->rowOf(yagi), -1);
  rows->add({"Loop"});
  EXPECT_NE(rows->bookmark(2), yagi);
  EXPECT_EQ(rows->rowOf(rows->bookmark(2)), 2);
  EXPECT_EQ(rows->rowOf(""), -1);
}

TEST(ArrayRows, AShortRowIsFilledUpAndAnUnknownFieldIsNull) {
  ArrayRows rows({"A", "B"});
  rows.add({"x"});
  EXPECT_TRUE(rows.value(0, "B").isNull());
  EXPECT_TRUE(rows.value(0, "C").isNull());
  EXPECT_EQ(rows.row(0).size(), 2u);
  rows.store(0, {{"C", Value(1)}, {"b", Value(2)}});
  EXPECT_EQ(rows.value(0, "B"), Value(2));
  EXPECT_THROW(rows.row(1), std::out_of_range);
}

TEST(ArrayRows, SortsNullsThenNumbersBySizeThenTextsWithoutCaseAndStably) {
  ArrayRows rows({"A", "N"});
  int number = 0;
  for (const Value& value : {Value("b"), Value(10), Value("A"), Value(9), Value(), Value("B"), Value("a")}) {
    rows.add({value, Value(number++)});
  }
  const auto order = [&] {
    std::string text;
    for (int row = 0; row < rows.count(); ++row) text += rows.value(row, "N").asText();
    return text;
  };
  EXPECT_TRUE(rows.sort("a", true));
  EXPECT_EQ(order(), "4312605");
  rows.sort("N", true);
  EXPECT_TRUE(rows.sort("A", false));
  EXPECT_EQ(order(), "0526134");
  EXPECT_FALSE(rows.sort("C", true));
}

TEST(ArrayRows, SortsManyEqualRowsStably) {
  ArrayRows rows({"A", "N"});
  for (int n = 0; n < 200; ++n) rows.add({n % 2, n});
  rows.sort("A", false);
  for (int n = 1; n < 100; ++n) EXPECT_LT(rows.value(n - 1, "N").number(), rows.value(n, "N").number());
}

// --- A source with bookmarks of its own, such as a table's cursor has.

class CursorRows : public GridRows {
 public:
  int count() const override { return static_cast<int>(keys.size()); }
  std::string bookmark(int row) const override { return "key " + std::to_string(keys.at(at(row))); }
  int rowOf(const std::string& bookmark) const override {
    for (int row = 0; row < count(); ++row) {
      if (this->bookmark(row) == bookmark) return row;
    }
    return -1;
  }
  Value value(int row, const std::string& field) const override {
    const auto found = table.at(keys.at(at(row))).find(field);
    return found == table.at(keys.at(at(row))).end() ? Value() : found->second;
  }
  void store(int row, const GridFields& fields) override {
    if (broken) throw RunTimeFailure(failure::locked, "locked");
    for (const auto& [field, value] : fields) table[keys.at(at(row))][field] = value;
  }
  int append(const GridFields& fields) override {
    if (broken) throw RunTimeFailure(failure::locked, "locked");
    table[++lastKey] = fields;
    keys.insert(addsInFront ? keys.begin() : keys.end(), lastKey);
    return addsInFront ? 0 : count() - 1;
  }
  void remove(int row) override { keys.erase(keys.begin() + row); }

  static std::size_t at(int row) { return static_cast<std::size_t>(row); }
  std::map<int, GridFields> table;
  std::vector<int> keys;
  int lastKey = 40;
  bool broken = false;
  bool addsInFront = false;
};

class DataGridOverACursor : public testing::Test {
 protected:
  DataGridOverACursor() {
    for (const char* name : {"x", "y", "z"}) cursor->append({{"NAME", Value(name)}});
    grid.setColumns({{"Name", "NAME"}});
    grid.setAllowAddNew(true);
    grid.setRows(cursor);
  }
  std::shared_ptr<CursorRows> cursor = std::make_shared<CursorRows>();
  DataGrid grid{"grid"};
};

TEST_F(DataGridOverACursor, BookmarksAreTheSources) {
  EXPECT_EQ(grid.bookmark(), "key 41");
  EXPECT_TRUE(grid.setBookmark("key 43"));
  EXPECT_EQ(grid.currentRow(), 2);
  EXPECT_FALSE(grid.setBookmark("key 1"));
  EXPECT_EQ(grid.currentRow(), 2);
}

TEST_F(DataGridOverACursor, AFailureToStorePassesOnAndTheEntryStays) {
  ASSERT_TRUE(grid.userEdit(0, 0, "new"));
  cursor->broken = true;
  EXPECT_THROW(grid.userMoveTo(1, 0), RunTimeFailure);
  EXPECT_EQ(grid.currentRow(), 0);
  EXPECT_TRUE(grid.dataChanged());
  EXPECT_EQ(grid.cellText(0, 0), "new");
  cursor->broken = false;
  EXPECT_TRUE(grid.userMoveTo(1, 0));
  EXPECT_EQ(cursor->table[41]["NAME"], Value("new"));
}

TEST_F(DataGridOverACursor, AFailureToAddKeepsTheNewRowsEntry) {
  ASSERT_TRUE(grid.userEdit(3, 0, "new"));
  cursor->broken = true;
  EXPECT_THROW(grid.update(), RunTimeFailure);
  EXPECT_TRUE(grid.addingRow());
  EXPECT_EQ(grid.cellText(3, 0), "new");
}

TEST_F(DataGridOverACursor, AnEntryIntoARowThatIsGoneFailsAsADeletedRecord) {
  ASSERT_TRUE(grid.userEdit(0, 0, "new"));
  cursor->keys.erase(cursor->keys.begin());
  try {
    grid.update();
    FAIL() << "nothing was thrown";
  } catch (const RunTimeFailure& failure) {
    EXPECT_EQ(failure.number(), failure::recordDeleted);
  }
  grid.refresh();
  EXPECT_FALSE(grid.dataChanged());
  EXPECT_EQ(grid.bookmark(), "key 42");
}

TEST_F(DataGridOverACursor, ANewRowMayLandInFront) {
  cursor->addsInFront = true;
  ASSERT_TRUE(grid.userEdit(3, 0, "new"));
  int told = 0;
  grid.rowsChanged.listen([&](const GridChange&) { ++told; });
  EXPECT_TRUE(grid.update());
  EXPECT_EQ(told, 0) << "all rows are to be shown anew";
  EXPECT_EQ(grid.currentRow(), 0);
  EXPECT_EQ(grid.cellText(0, 0), "new");
  EXPECT_EQ(grid.appendRow({}), 0);
  EXPECT_EQ(grid.currentRow(), 1);
}

TEST_F(DataGridOverACursor, AHeadingClickAsksTheListenerForTheOrder) {
  std::string asked;
  grid.setAllowSort(true);
  grid.sortRequested.listen([&](const std::string& field, bool ascending) {
    asked = field + (ascending ? " ASC" : " DESC");
    std::reverse(cursor->keys.begin(), cursor->keys.end());
    grid.refresh();
  });
  grid.userHeadClick(0);
  EXPECT_EQ(asked, "NAME ASC");
  EXPECT_EQ(grid.sortField(), "NAME");
  EXPECT_TRUE(grid.sortAscending());
  grid.userHeadClick(0);
  EXPECT_EQ(asked, "NAME DESC");
  EXPECT_FALSE(grid.sortAscending());
  grid.userHeadClick(0);
  EXPECT_EQ(asked, "NAME ASC");
}

}  // namespace
}  // namespace vantrelix
