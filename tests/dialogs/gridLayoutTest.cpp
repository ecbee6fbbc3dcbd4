#include <gmock/gmock.h>

#include "dialogs/PlacementFixture.h"
#include "dialogs/gridLayout.h"
#include "foundation/regional.h"
#include "foundation/suitePaths.h"

namespace vantrelix {
namespace {

using testing::ElementsAre;

class GridLayout : public test::PlacementFixture {
 protected:
  static GridColumn column(const std::string& caption, int width = 700) {
    GridColumn made;
    made.caption = caption;
    made.dataField = caption;
    made.width = width;
    return made;
  }
  static void fill(DataGrid& into, const std::vector<std::string>& captions = {"Name", "Gain", "Band"}) {
    std::vector<GridColumn> columns;
    for (const std::string& caption : captions) columns.push_back(column(caption));
    into.setColumns(std::move(columns));
  }
  static std::vector<int> widths(const DataGrid& from) {
    std::vector<int> all;
    for (const GridColumn& each : from.columns()) all.push_back(each.width);
    return all;
  }
  static std::vector<bool> shown(const DataGrid& from) {
    std::vector<bool> all;
    for (const GridColumn& each : from.columns()) all.push_back(each.visible);
    return all;
  }
  void get(DataGrid& from) const { GetGridCols("", "frmTest", from, "Grid"); }
  void save(const DataGrid& from) const { SaveGridCols("", "frmTest", "Grid", from); }
  void keep(const std::string& suffix, const std::string& value) const { store("Grid" + suffix, value, "frmTest"); }
  std::string kept(const std::string& suffix) const { return stored("Grid" + suffix, "frmTest"); }
  std::vector<int> widthsAfter(const std::string& list) {
    keep(" Col Widths", list);
    fill(grid);
    get(grid);
    return widths(grid);
  }
  std::vector<bool> shownAfter(const std::string& list) {
    keep(" Col Visible", list);
    fill(grid, {"Name", "Ant ID", "Band"});
    get(grid);
    return shown(grid);
  }
  int rowHeightAfter(const std::string& height) {
    keep(" Row Height", height);
    grid.setRowHeight(240);
    get(grid);
    return grid.rowHeight();
  }

  DataGrid grid{"TDBGrid"};
};

TEST_F(GridLayout, SavingWritesWidthsFlagsAndRowHeight) {
  fill(grid);
  grid.setColumnWidth(2, 1200);
  grid.setRowHeight(300);
  save(grid);
  EXPECT_EQ(kept(" Col Widths"), "700|700|1200");
  EXPECT_EQ(kept(" Col Visible"), "-1|-1|-1");
  EXPECT_EQ(kept(" Row Height"), "300");
}

TEST_F(GridLayout, AHiddenColumnIsStoredAsZero) {
  fill(grid);
  grid.setColumnVisible(0, false);
  save(grid);
  EXPECT_EQ(kept(" Col Widths"), "0|700|700");
  EXPECT_EQ(kept(" Col Visible"), "0|-1|-1");
  EXPECT_EQ(kept(" Row Height"), "0");
}

TEST_F(GridLayout, ALayoutSurvivesARestart) {
  fill(grid);
  grid.setColumnWidth(0, 2500);
  grid.setColumnVisible(1, false);
  grid.setRowHeight(450);
  save(grid);
  resetSuitePaths();
  setSuiteDir(suite.path());
  DataGrid again("TDBGrid");
  fill(again);
  get(again);
  EXPECT_THAT(widths(again), ElementsAre(2500, 700, 700));
  EXPECT_THAT(shown(again), ElementsAre(true, false, true));
  EXPECT_EQ(again.rowHeight(), 450);
}

TEST_F(GridLayout, ANewGridHidesItsIdColumnsAndGivesTheOthersAWidthOf1500) {
  fill(grid,
       {"Name", "Antenna ID", "PARENT KEY", "ID of it", "ID_A", "A_ID", "IDLE", "Parent key", "Valid gain", "ID"});
  get(grid);
  EXPECT_THAT(shown(grid), ElementsAre(true, false, false, false, false, false, true, true, true, true));
  EXPECT_EQ(grid.column(0).width, 1500);
  EXPECT_EQ(grid.column(9).width, 1500);
  EXPECT_EQ(grid.rowHeight(), 0);
  EXPECT_EQ(defaultsFile(), "");
}

TEST_F(GridLayout, StoredFlagsHoldWhateverTheCaptionsSay) {
  EXPECT_THAT(shownAfter("0|-1|0"), ElementsAre(false, true, false));
  EXPECT_THAT(shownAfter("true| 1 |False"), ElementsAre(true, true, false));
}

TEST_F(GridLayout, FlagsThatAreNotThereOrAreNoneGoByTheCaption) {
  EXPECT_THAT(shownAfter("0"), ElementsAre(false, false, true));
  EXPECT_THAT(shownAfter("abc|abc|"), ElementsAre(true, false, true));
  EXPECT_THAT(shownAfter(""), ElementsAre(true, false, true));
  EXPECT_THAT(shownAfter("2|-2|--1"), ElementsAre(true, false, true));
}

TEST_F(GridLayout, AShortListOfWidthsGivesTheRestTheDefault) {
  EXPECT_THAT(widthsAfter("900"), ElementsAre(900, 1500, 1500));
  EXPECT_THAT(widthsAfter(""), ElementsAre(1500, 1500, 1500));
}

TEST_F(GridLayout, FieldsBeyondTheLastColumnArePassedOver) {
  EXPECT_THAT(widthsAfter("900|800|750|600|500"), ElementsAre(900, 800, 750));
  EXPECT_THAT(shownAfter("-1|-1|-1|0|0"), ElementsAre(true, true, true));
}

TEST_F(GridLayout, AWidthOfZeroOrLessLeavesTheColumnsOwn) {
  EXPECT_THAT(widthsAfter("0|-5|0."), ElementsAre(700, 700, 700));
}

TEST_F(GridLayout, AHiddenColumnThatIsShownAgainHasAWidth) {
  fill(grid);
  grid.setColumnVisible(1, false);
  save(grid);
  get(grid);
  grid.setColumnVisible(1, true);
  EXPECT_EQ(grid.column(1).width, 700);
}

TEST_F(GridLayout, WidthsAreReadAsLenientlyAsAnyNumber) {
  EXPECT_THAT(widthsAfter("1500.| 900 |8E2"), ElementsAre(1500, 900, 800));
  EXPECT_THAT(widthsAfter("900.4|900.6|800 twips"), ElementsAre(900, 901, 800));
}

TEST_F(GridLayout, TheDefaultWidthIsTheSameWhereACommaIsTheDecimalCharacter) {
  const RegionalCharacters former = regionalCharacters();
  regionalCharacters() = {",", "."};
  EXPECT_THAT(widthsAfter("abc|900"), ElementsAre(1500, 900, 1500));
  regionalCharacters() = former;
}

TEST_F(GridLayout, AWidthThatIsNoneGetsTheDefault) {
  EXPECT_THAT(widthsAfter("abc||x1y"), ElementsAre(1500, 1500, 1500));
  EXPECT_THAT(widthsAfter("1E300|99999999999999999999|144001"), ElementsAre(1500, 1500, 1500));
  EXPECT_THAT(widthsAfter("144000|-1E300|1E999"), ElementsAre(144000, 700, 1500));
  EXPECT_TRUE(screen.shown().empty());
}

TEST_F(GridLayout, ARowHeightAboveZeroIsApplied) {
  EXPECT_EQ(rowHeightAfter("300"), 300);
  EXPECT_EQ(rowHeightAfter("14400"), 14400);
  for (const char* text : {"0", "-5", "abc", "", "14401", "1E300"}) EXPECT_EQ(rowHeightAfter(text), 240) << text;
}

TEST_F(GridLayout, ReadingALayoutWritesNothing) {
  keep(" Col Widths", "abc|1E300");
  keep(" Col Visible", "x|0|0|0|0|0");
  keep(" Row Height", "tall");
  const std::string before = defaultsFile();
  fill(grid);
  get(grid);
  EXPECT_EQ(defaultsFile(), before);
  EXPECT_TRUE(screen.shown().empty());
}

TEST_F(GridLayout, AGridWithoutColumnsHasNoLayoutToSave) {
  keep(" Col Widths", "900|800");
  const std::string before = defaultsFile();
  get(grid);
  save(grid);
  EXPECT_EQ(defaultsFile(), before);
}

TEST_F(GridLayout, SavingLeavesAllOtherKeysOfTheFile) {
  keep(" Note", "mine");
  store("Other", "yours");
  fill(grid);
  save(grid);
  EXPECT_EQ(kept(" Note"), "mine");
  EXPECT_EQ(stored("Other"), "yours");
}

TEST_F(GridLayout, ANamedFileTakesThePlaceOfTheDefaultsFile) {
  fill(grid);
  grid.setColumnWidth(0, 900);
  SaveGridCols(suite.file("OTHER.INI"), "frmTest", "Grid", grid);
  EXPECT_EQ(defaultsFile(), "");
  grid.setColumnWidth(0, 100);
  GetGridCols(suite.file("OTHER.INI"), "frmTest", grid, "Grid");
  EXPECT_EQ(grid.column(0).width, 900);
}

TEST_F(GridLayout, ABlankSectionIsConfig) {
  fill(grid);
  SaveGridCols("", "", "Grid", grid);
  EXPECT_EQ(stored("Grid Col Widths", "CONFIG"), "700|700|700");
  store("Grid Col Widths", "900");
  GetGridCols("", " ", grid, "Grid");
  EXPECT_EQ(grid.column(0).width, 900);
}

TEST_F(GridLayout, ALayoutIsOneChangeOfTheGrid) {
  fill(grid);
  int changes = 0;
  grid.changed.listen([&changes] { ++changes; });
  get(grid);
  EXPECT_EQ(changes, 1);
}

TEST_F(GridLayout, ColumnsThatShowNoFieldAreRemoved) {
  fill(grid, {"Name", "Gain", "Band", "Power"});
  for (const int unbound : {0, 2, 3}) {
    GridColumn changed = grid.column(unbound);
    changed.dataField = unbound == 2 ? "  " : "";
    grid.setColumn(unbound, changed);
  }
  modTGDRemCols(grid);
  ASSERT_EQ(grid.columnCount(), 1);
  EXPECT_EQ(grid.column(0).dataField, "Gain");
  modTGDRemCols(grid);
  EXPECT_EQ(grid.columnCount(), 1);
}

}  // namespace
}  // namespace vantrelix
