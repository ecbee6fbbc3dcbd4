// The antenna list: what it shows, what it stores, how it is sorted and coloured, and new rows.
#include <set>
#include <utility>

#include "EditorFixture.h"
#include "support/MeasuredPlatform.h"

namespace vantrelix::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class AntennaListTest : public EditorTest {
 protected:
  DataGrid& grid() { return form().TDBGridAMS; }
  const GridColumn& column(const std::string& field) { return grid().column(grid().columnOf(field)); }
  int columnIndex(const std::string& field) { return grid().columnOf(field); }
  std::string cell(int row, const std::string& field) { return grid().cellText(row, columnIndex(field)); }
  bool edit(int row, const std::string& field, const std::string& text) {
    return grid().userEdit(row, columnIndex(field), text) && grid().update();
  }
  std::vector<std::string> list(const std::string& field) {
    std::vector<std::string> texts;
    for (int row = 0; row < grid().dataRowCount(); ++row) texts.push_back(cell(row, field));
    return texts;
  }
  bool coloured(int row) { return grid().rowStyle(row).back == Color{0x8080FF}; }
  static void displayIn(const char* units) {
    setINI("System Units", "Antenna Gain Units", getDefaultsINI(), units);
    resetSuitePaths();
  }
  // A row as another program writes it.
  static void addRow(const GridFields& fields) {
    const RecordsetPtr rows = DBEngine::OpenDatabase(getAntennasPath())->OpenRecordset("select * from AMST0001");
    rows->AddNew();
    for (const auto& [field, value] : fields) rows->put(field, value);
    rows->Update();
  }
  static std::vector<std::string> stored(const std::vector<std::string>& fields) { return rows("AMST0001", fields); }
};

// --- Columns.

TEST_F(AntennaListTest, ShowsNameGainAndBandAndHidesUnitsPowerAndID) {
  displayIn("dBi");
  open();
  std::vector<std::string> captions;
  for (const GridColumn& own : grid().columns()) {
    if (own.visible) captions.push_back(own.caption);
  }
  EXPECT_THAT(captions, ElementsAre("Antenna", "Gain (dBi)", "Low Freq (MHz)", "High Freq (MHz)"));
}

TEST_F(AntennaListTest, ShowsTheIDWhereTheSuiteSaysSo) {
  open();
  EXPECT_FALSE(column("ATYPE_ID").visible);
  setINI("Antenna Editor", "ShowID", getSuiteINI(), "-1");
  open();
  EXPECT_TRUE(column("ATYPE_ID").visible);
}

TEST_F(AntennaListTest, ANameHasRoomUntilTheUserLaysTheColumnsOut) {
  open();
  EXPECT_EQ(column("ANTENNA").width, 6000);
  EXPECT_EQ(column("GAIN").width, 1500);
  grid().setColumnWidth(columnIndex("ANTENNA"), 2500);
  form().unload();
  open();
  EXPECT_EQ(column("ANTENNA").width, 2500);
}

TEST_F(AntennaListTest, AColumnThatWasMadeTooNarrowOrHiddenComesBackAtItsSmallestWidth) {
  open();
  grid().setColumnWidth(columnIndex("ANTENNA"), 1999);
  grid().setColumnWidth(columnIndex("GAIN"), 999);
  grid().setColumnVisible(columnIndex("F_LOW"), false);
  grid().setColumnWidth(columnIndex("F_HIGH"), 1500);
  form().unload();
  open();
  EXPECT_EQ(column("ANTENNA").width, 2000);
  EXPECT_EQ(column("GAIN").width, 1000);
  EXPECT_TRUE(column("F_LOW").visible);
  EXPECT_EQ(column("F_LOW").width, 1000);
  EXPECT_EQ(column("F_HIGH").width, 1500);
}

TEST_F(AntennaListTest, AWideColumnThatWasHiddenComesBackAtItsSmallestWidth) {
  open();
  grid().setColumnWidth(columnIndex("ANTENNA"), 3000);
  grid().setColumnVisible(columnIndex("ANTENNA"), false);
  form().unload();
  open();
  EXPECT_TRUE(column("ANTENNA").visible);
  EXPECT_EQ(column("ANTENNA").width, 2000);
}

// --- Texts.

TEST_F(AntennaListTest, ShowsGainInDisplayUnitsAndTheBandInMHz) {
  displayIn("dBi");
  addRow({{"ATYPE_ID", "T00010000001"},
          {"ANTENNA", "A"},
          {"GAIN", 10},
          {"GAIN_UN", "dBd"},
          {"F_LOW", 1.5},
          {"F_HIGH", 2},
          {"FREQ_UN", "GHz"}});
  open();
  EXPECT_EQ(cell(0, "ANTENNA"), "A");
  EXPECT_EQ(cell(0, "GAIN"), "12.150");
  EXPECT_EQ(cell(0, "F_LOW"), "1500.000");
  EXPECT_EQ(cell(0, "F_HIGH"), "2000.000");
}

TEST_F(AntennaListTest, UnitsThatAreNoneCountAsDisplayUnitsAndMHz) {
  displayIn("dBd");
  addRow({{"ANTENNA", "none"}, {"GAIN", 3}, {"F_LOW", 5}});
  addRow({{"ANTENNA", "other"}, {"GAIN", 3}, {"GAIN_UN", "dbi"}, {"F_LOW", 5}, {"FREQ_UN", "ghz"}});
  open();
  for (int row : {0, 1}) {
    EXPECT_EQ(form().ValidGainUn(row), "dBd");
    EXPECT_EQ(form().ValidFreqUn(row), "MHz");
    EXPECT_EQ(cell(row, "GAIN"), "3.000");
    EXPECT_EQ(cell(row, "F_LOW"), "5.000");
    EXPECT_EQ(form().amsCellText(row, "GAIN_UN"), "dBd");
    EXPECT_EQ(form().amsCellText(row, "FREQ_UN"), "MHz");
  }
}

TEST_F(AntennaListTest, KnownUnitsStandAsTheyAre) {
  displayIn("dBd");
  const std::vector<std::string> gains{"dBd", "dBi", "REL"};
  const std::vector<std::string> freqs{"MHz", "GHz", "KHz", "Hz"};
  for (std::size_t i = 0; i < freqs.size(); ++i) {
    addRow({{"ANTENNA", std::string(1, static_cast<char>('A' + i))},
            {"GAIN_UN", gains[i % gains.size()]},
            {"FREQ_UN", freqs[i]}});
  }
  open();
  for (int row = 0; row < 4; ++row) {
    EXPECT_EQ(form().ValidGainUn(row), gains[static_cast<std::size_t>(row) % gains.size()]);
    EXPECT_EQ(form().ValidFreqUn(row), freqs[static_cast<std::size_t>(row)]);
  }
}

TEST_F(AntennaListTest, ARowOfNullsShowsZeroesAndNoID) {
  addRow({{"ANTENNA", "Bare"}});
  open();
  EXPECT_EQ(cell(0, "GAIN"), "0.000");
  EXPECT_EQ(cell(0, "F_HIGH"), "0.000");
  grid().userMoveTo(0, columnIndex("ANTENNA"));
  EXPECT_EQ(form().txtID.text(), "Ant ID: ID ERROR");
}

TEST_F(AntennaListTest, ARowThatAnotherProgramDeletedReadsAsBlank) {
  addPanel();
  addPanel("Other");
  open();
  const RecordsetPtr other = DBEngine::OpenDatabase(getAntennasPath())->OpenRecordset("select * from AMST0001");
  other->Delete();
  EXPECT_EQ(cell(1, "ANTENNA"), "");
  grid().userSelectRow(1);
  form().DataAMS.Requery();
  EXPECT_THAT(list("ANTENNA"), ElementsAre("Other"));
}

// --- What is typed.

TEST_F(AntennaListTest, ATypedGainIsKeptInTheRowsUnit) {
  displayIn("dBi");
  addRow({{"ATYPE_ID", "T00010000001"}, {"ANTENNA", "A"}, {"GAIN", 10}, {"GAIN_UN", "dBd"}});
  open();
  ASSERT_TRUE(edit(0, "GAIN", "2.15"));
  EXPECT_THAT(stored({"GAIN", "GAIN_UN"}), ElementsAre("0|dBd"));
  EXPECT_EQ(cell(0, "GAIN"), "2.150");
}

TEST_F(AntennaListTest, ATypedBandIsKeptInTheRowsUnit) {
  addRow({{"ANTENNA", "A"}, {"GAIN", 10}, {"F_LOW", 1}, {"F_HIGH", 2}, {"FREQ_UN", "GHz"}});
  open();
  ASSERT_TRUE(edit(0, "F_LOW", "1710"));
  ASSERT_TRUE(edit(0, "F_HIGH", "1880.5"));
  EXPECT_THAT(stored({"F_LOW", "F_HIGH", "FREQ_UN"}), ElementsAre("1.71|1.8805|GHz"));
}

TEST_F(AntennaListTest, ATypedNameIsStoredAsItIs) {
  addPanel();
  open();
  ASSERT_TRUE(edit(0, "ANTENNA", "Andere Antenne"));
  EXPECT_THAT(stored({"ANTENNA"}), ElementsAre("Andere Antenne"));
}

TEST_F(AntennaListTest, AWordInPlaceOfAGainStaysInTheCellAndOutOfTheTable) {
  addPanel();
  open();
  ASSERT_TRUE(grid().userEdit(0, columnIndex("GAIN"), "much"));
  EXPECT_THROW(grid().update(), RunTimeFailure);
  EXPECT_TRUE(grid().dataChanged());
  EXPECT_EQ(grid().value(0, "GAIN").asText(), "much");
  EXPECT_THAT(stored({"GAIN"}), ElementsAre("12.5"));
}

TEST_F(AntennaListTest, ANameThatIsTooLongStaysInTheCellAndOutOfTheTable) {
  addPanel();
  open();
  ASSERT_TRUE(grid().userEdit(0, columnIndex("ANTENNA"), std::string(300, 'x')));
  EXPECT_THROW(grid().update(), RunTimeFailure);
  EXPECT_TRUE(grid().dataChanged());
  EXPECT_THAT(stored({"ANTENNA"}), ElementsAre("Panel"));
}

TEST_F(AntennaListTest, ARatioOf0OrLessHasNoGainInDecibelsAndIsRefused) {
  displayIn("REL");
  addRow({{"ANTENNA", "A"}, {"GAIN", 10}, {"GAIN_UN", "dBd"}});
  open();
  for (const char* ratio : {"-1", "0"}) {
    EXPECT_FALSE(grid().userEdit(0, columnIndex("GAIN"), ratio));
    EXPECT_THAT(heard(), ElementsAre("Invalid Gain Value: A ratio of 0 or less has no value in dBd."));
    EXPECT_FALSE(grid().dataChanged());
  }
  EXPECT_THAT(stored({"GAIN"}), ElementsAre("10"));
}

TEST_F(AntennaListTest, AnEditOfARowThatAnotherProgramDeletedStaysInTheCell) {
  addPanel("A");
  addPanel("B");
  open();
  select(0);
  ASSERT_TRUE(grid().userEdit(0, columnIndex("ANTENNA"), "Too late"));
  DBEngine::OpenDatabase(getAntennasPath())->OpenRecordset("select * from AMST0001")->Delete();
  EXPECT_THROW(grid().update(), RunTimeFailure);
  EXPECT_TRUE(grid().dataChanged());
  EXPECT_THAT(stored({"ANTENNA"}), ElementsAre("B"));
  form().DataAMS.Requery();
  EXPECT_FALSE(grid().dataChanged());
  EXPECT_THAT(list("ANTENNA"), ElementsAre("B"));
}

TEST_F(AntennaListTest, ADescriptionInAnotherScriptIsShownAndKeptUnlessItIsTyped) {
  addPanel("A");
  open();
  const std::string name = "Antenne \u00FCber K\u00F6ln";
  ASSERT_TRUE(edit(0, "ANTENNA", name));
  EXPECT_EQ(cell(0, "ANTENNA"), name);
  ASSERT_TRUE(edit(0, "GAIN", "7"));
  EXPECT_EQ(stored({"ANTENNA"}), std::vector<std::string>{name});
}

TEST_F(AntennaListTest, AClickOnACellStoresTheEntryUnderWay) {
  addPanel();
  open();
  ASSERT_TRUE(grid().userEdit(0, columnIndex("ANTENNA"), "Clicked"));
  EXPECT_THAT(stored({"ANTENNA"}), ElementsAre("Panel"));
  grid().userClick(0, columnIndex("GAIN"));
  EXPECT_THAT(stored({"ANTENNA"}), ElementsAre("Clicked"));
}

TEST_F(AntennaListTest, AFailureAtTheClickIsIgnoredAndTheEntryStays) {
  addPanel();
  open();
  ASSERT_TRUE(grid().userEdit(0, columnIndex("ANTENNA"), std::string(300, 'x')));
  grid().userClick(0, columnIndex("GAIN"));
  EXPECT_TRUE(grid().dataChanged());
  EXPECT_THAT(heard(), IsEmpty());
}

// --- Selection.

TEST_F(AntennaListTest, AMoveToARowShowsItsIDAndSelectsIt) {
  addPanel("A");
  addPanel("B");
  open();
  grid().userMoveTo(1, columnIndex("ANTENNA"));
  EXPECT_EQ(form().selectedRow(), 1);
  EXPECT_EQ(form().txtID.text(), std::string("Ant ID: ") + kSecond);
  grid().userMove(GridMove::up);
  EXPECT_EQ(form().selectedRow(), 0);
  EXPECT_EQ(form().txtID.text(), std::string("Ant ID: ") + kFirst);
}

TEST_F(AntennaListTest, AMoveWithinARowReadsNothingAnew) {
  addPanel();
  open();
  select(0);
  const int turns = screen.turns();
  grid().userMoveTo(0, columnIndex("F_HIGH"));
  EXPECT_EQ(screen.turns(), turns);
}

TEST_F(AntennaListTest, AnEmptyTableGivesOneBlankRowAndNothingToSelect) {
  open();
  EXPECT_EQ(grid().rowCount(), 1);
  form().SelectAntenna();
  EXPECT_EQ(grid().selBookmarks().count(), 0);
  EXPECT_EQ(form().TDBGridAHD.dataRowCount(), 0);
  EXPECT_EQ(form().TDBGridAVD.dataRowCount(), 0);
}

TEST_F(AntennaListTest, OneSelectedRowIsASelectionAndAnythingElseSelectsTheCurrentRow) {
  addPanel("A");
  addPanel("B");
  open();
  grid().userMoveTo(1, columnIndex("ANTENNA"));
  EXPECT_TRUE(form().IsAntSelected());
  for (const std::vector<std::string>& wrong :
       {std::vector<std::string>{}, {grid().bookmarkOf(0), grid().bookmarkOf(1)}}) {
    grid().selBookmarks().assign(wrong);
    form().setFocus(form().txtFreqDelta);
    EXPECT_FALSE(form().IsAntSelected());
    EXPECT_EQ(form().selectedRow(), 1);
    EXPECT_EQ(form().activeWidget(), &form().TDBGridAHD);
  }
}

// --- Order.

TEST_F(AntennaListTest, AHeadingSortsUpThenDownThenUpAgain) {
  addPanel("B");
  add("C", 1, "dBi", {{0, 90}, {1, 0}}, {{0, 10}, {1, 0}});
  addPanel("A");
  open();
  EXPECT_THAT(list("ANTENNA"), ElementsAre("A", "B", "C"));
  grid().userHeadClick(columnIndex("ANTENNA"));
  EXPECT_THAT(list("ANTENNA"), ElementsAre("A", "B", "C"));
  EXPECT_EQ(grid().sortField(), "ANTENNA");
  EXPECT_TRUE(grid().sortAscending());
  grid().userHeadClick(columnIndex("ANTENNA"));
  EXPECT_THAT(list("ANTENNA"), ElementsAre("C", "B", "A"));
  EXPECT_FALSE(grid().sortAscending());
  grid().userHeadClick(columnIndex("ANTENNA"));
  EXPECT_THAT(list("ANTENNA"), ElementsAre("A", "B", "C"));
  grid().userHeadClick(columnIndex("GAIN"));
  EXPECT_EQ(list("ANTENNA")[0], "C");
  EXPECT_EQ(grid().sortField(), "GAIN");
  EXPECT_TRUE(grid().sortAscending());
}

TEST_F(AntennaListTest, SortingLeavesNothingSelectedAndThePatternsBlank) {
  addPanel();
  open();
  select(0);
  form().AntPreview();
  grid().userHeadClick(columnIndex("GAIN"));
  EXPECT_EQ(form().selectedRow(), -1);
  EXPECT_EQ(form().TDBGridAHD.dataRowCount(), 0);
  EXPECT_EQ(form().TDBGridAVD.dataRowCount(), 0);
  EXPECT_THAT(form().picHor.lines(), IsEmpty());
  EXPECT_THAT(form().picVer.lines(), IsEmpty());
  grid().userMoveTo(0, columnIndex("ANTENNA"));
  EXPECT_EQ(form().selectedRow(), 0);
}

TEST_F(AntennaListTest, AnEntryInAPatternIsStoredBeforeTheListIsSorted) {
  addPanel();
  open(" ", 0, kFirst);
  DataGrid& points = form().TDBGridAHD;
  ASSERT_TRUE(points.userEdit(0, points.columnOf("HOR_AZ"), "3"));
  grid().userHeadClick(columnIndex("GAIN"));
  EXPECT_EQ(azimuths()[0], std::string(kFirst) + "|3|12.5");
  EXPECT_EQ(grid().sortField(), "GAIN");
}

TEST_F(AntennaListTest, AnEntryThatCannotBeStoredKeepsTheOrder) {
  addPanel();
  open();
  grid().userHeadClick(columnIndex("ANTENNA"));
  select(0);
  for (DataGrid* points : {&form().TDBGridAHD, &form().TDBGridAVD}) {
    ASSERT_TRUE(points->userEdit(0, 2, "much"));
    grid().userHeadClick(columnIndex("GAIN"));
    EXPECT_THAT(heard(), testing::SizeIs(1));
    EXPECT_TRUE(points->dataChanged());
    EXPECT_EQ(grid().sortField(), "ANTENNA");
    EXPECT_EQ(form().selectedRow(), 0);
    EXPECT_TRUE(points->userCancelRow());
  }
}

TEST_F(AntennaListTest, ATableThatCannotBeSortedStaysAsItIsShown) {
  addPanel();
  open();
  grid().userHeadClick(columnIndex("ANTENNA"));
  select(0);
  const std::string table = platform::current().toMachine(setPathName(getAntennasPath(), "AMST0001.DBF"));
  std::filesystem::rename(table, table + ".kept");
  grid().userHeadClick(columnIndex("GAIN"));
  EXPECT_THAT(heard(), testing::SizeIs(1));
  EXPECT_EQ(grid().sortField(), "ANTENNA");
  EXPECT_EQ(form().selectedRow(), 0);
  EXPECT_EQ(form().TDBGridAHD.dataRowCount(), 4);
  std::filesystem::rename(table + ".kept", table);
  grid().userHeadClick(columnIndex("GAIN"));
  EXPECT_EQ(grid().sortField(), "GAIN");
  EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(AntennaListTest, SortingGivesTheColumnsTheirSmallestWidthsBack) {
  open();
  grid().setColumnWidth(columnIndex("ANTENNA"), 300);
  form().unload();
  grid().userHeadClick(columnIndex("GAIN"));
  EXPECT_EQ(column("ANTENNA").width, 2000);
}

TEST_F(AntennaListTest, SortingTakesInWhatOthersHaveAdded) {
  addPanel("B");
  open();
  addPanel("A");
  grid().userHeadClick(columnIndex("ANTENNA"));
  EXPECT_THAT(list("ANTENNA"), ElementsAre("A", "B"));
}

// --- The frequency of interest.

TEST_F(AntennaListTest, RowsThatDoNotCoverTheFrequencyAreColoured) {
  add("Covers", 1, "dBi", {{0}, {1}}, {{0}, {1}}, 824, 896);
  add("Edges", 1, "dBi", {{0}, {1}}, {{0}, {1}}, 850, 850);
  add("Higher", 1, "dBi", {{0}, {1}}, {{0}, {1}}, 851, 900);
  add("Lower", 1, "dBi", {{0}, {1}}, {{0}, {1}}, 800, 849);
  add("None", 1, "dBi", {{0}, {1}}, {{0}, {1}}, 0, 0);
  add("NoBottom", 1, "dBi", {{0}, {1}}, {{0}, {1}}, 0, 896);
  add("NoTop", 1, "dBi", {{0}, {1}}, {{0}, {1}}, 824, 0);
  open("LOOKUP", 850);
  std::vector<std::string> marked;
  for (int row = 0; row < grid().dataRowCount(); ++row) {
    if (coloured(row)) marked.push_back(cell(row, "ANTENNA"));
  }
  EXPECT_THAT(marked, ElementsAre("Higher", "Lower", "NoBottom", "None", "NoTop"));
}

TEST_F(AntennaListTest, ARowWithoutABandIsColouredWhateverTheTolerance) {
  add("None", 1, "dBi", {{0}, {1}}, {{0}, {1}}, 0, 0);
  setINI("Antenna Data Path", "FreqRange", getSuiteINI(), "0|500|MHz");
  open(" ", 100);
  EXPECT_TRUE(coloured(0));
}

TEST_F(AntennaListTest, WithoutAFrequencyNoRowIsColoured) {
  add("None", 1, "dBi", {{0}, {1}}, {{0}, {1}}, 0, 0);
  open(" ", 0);
  EXPECT_FALSE(coloured(0));
}

TEST_F(AntennaListTest, TheToleranceWidensTheBandOnceItIsLeft) {
  add("Higher", 1, "dBi", {{0}, {1}}, {{0}, {1}}, 851, 900);
  open("LOOKUP", 850);
  EXPECT_EQ(form().FreqDelta, 0);
  EXPECT_TRUE(coloured(0));
  form().txtFreqDelta.userType("1");
  EXPECT_TRUE(coloured(0));
  form().txtFreqDelta.userBlur();
  EXPECT_EQ(form().FreqDelta, 1);
  EXPECT_FALSE(coloured(0));
  form().cboFreqDelta.userSelect(1);
  EXPECT_EQ(form().FreqDelta, 0.001);
  EXPECT_TRUE(coloured(0));
}

TEST_F(AntennaListTest, TheToleranceWidensTheBandUpwardToo) {
  add("Lower", 1, "dBi", {{0}, {1}}, {{0}, {1}}, 800, 849);
  open("LOOKUP", 850);
  EXPECT_TRUE(coloured(0));
  form().txtFreqDelta.setText("1");
  form().txtFreqDelta.userBlur();
  EXPECT_FALSE(coloured(0));
}

TEST_F(AntennaListTest, WhileTheSessionLoadsTheToleranceIsLeftAlone) {
  open("LOOKUP", 850);
  form().txtFreqDelta.setText("5");
  form().Loading = true;
  form().txtFreqDelta.userBlur();
  form().cboFreqDelta.userSelect(1);
  EXPECT_EQ(form().FreqDelta, 0);
  form().Loading = false;
  form().txtFreqDelta.userBlur();
  EXPECT_EQ(form().FreqDelta, 0.005);
}

TEST_F(AntennaListTest, ANegativeToleranceCountsAsNone) {
  open("LOOKUP", 850);
  form().FreqDelta = 3;
  form().txtFreqDelta.setText("-1");
  EXPECT_EQ(form().CalcFreqDelta(), 0);
  EXPECT_EQ(form().FreqDelta, 3);
  form().txtFreqDelta.userBlur();
  EXPECT_EQ(form().FreqDelta, 0);
}

TEST_F(AntennaListTest, TheToleranceTakesNumbersAndEnterLeavesIt) {
  open("LOOKUP", 850);
  form().txtFreqDelta.userType("1a2.5");
  EXPECT_EQ(form().txtFreqDelta.text(), "12.5");
  form().setFocus(form().txtFreqDelta);
  form().txtFreqDelta.userKey(13);
  EXPECT_NE(form().activeWidget(), &form().txtFreqDelta);
}

TEST_F(AntennaListTest, EnterBelongsToTheToleranceWhileThatHasTheKeyboard) {
  open("LOOKUP", 850);
  CommandButton* usual = form().defaultButton();
  ASSERT_NE(usual, nullptr);
  form().txtFreqDelta.userFocus();
  EXPECT_EQ(form().defaultButton(), nullptr);
  form().txtFreqDelta.userBlur();
  EXPECT_EQ(form().defaultButton(), usual);
}

// --- New rows.

TEST_F(AntennaListTest, ANewRowGetsItsIDItsUnitsAndDefaults) {
  displayIn("dBi");
  addPanel();
  open();
  ASSERT_TRUE(grid().userEdit(1, columnIndex("ANTENNA"), "New"));
  EXPECT_TRUE(form().NewRow);
  ASSERT_TRUE(grid().update());
  EXPECT_FALSE(form().NewRow);
  EXPECT_THAT(stored({"ATYPE_ID", "ANTENNA", "GAIN", "GAIN_UN", "F_LOW", "F_HIGH", "FREQ_UN"}),
              ElementsAre("T00010000001|Panel|12.5|dBi|824|896|MHz", "T00010000003|New|0|dBi|0|0|MHz"));
  EXPECT_EQ(form().txtID.text(), "Ant ID: T00010000003");
  EXPECT_EQ(form().selectedRow(), 1);
  EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(AntennaListTest, ANewRowWithoutUnitsIsInDecibelsOverADipole) {
  displayIn("dBi");
  open();
  ASSERT_TRUE(grid().userEdit(0, columnIndex("ANTENNA"), "New"));
  grid().setValue(0, "GAIN_UN", Value());
  ASSERT_TRUE(grid().update());
  EXPECT_THAT(stored({"GAIN", "GAIN_UN"}), ElementsAre("-2.15|dBd"));
}

// The row is there already when its ID is made, and counts.
TEST_F(AntennaListTest, ANewRowOfANewLibraryHasTheIDBehindItsOwnNumber) {
  open();
  ASSERT_TRUE(edit(0, "GAIN", "7.5"));
  EXPECT_THAT(stored({"ATYPE_ID", "GAIN"}), ElementsAre("T00010000002|7.5"));
}

TEST_F(AntennaListTest, ANewRowIsFilledWhereTheUserSortsTheListMeanwhile) {
  addPanel("Z");
  addPanel("A");
  open();
  ASSERT_TRUE(grid().userEdit(2, columnIndex("ANTENNA"), "M"));
  bool sorted = false;
  screen.onTurn = [&] {
    if (sorted) return;
    sorted = true;
    grid().userHeadClick(columnIndex("GAIN"));
  };
  ASSERT_TRUE(grid().update());
  screen.onTurn = {};
  ASSERT_TRUE(sorted);
  EXPECT_THAT(stored({"ATYPE_ID", "ANTENNA", "GAIN", "F_LOW"}),
              ElementsAre("T00010000001|Z|12.5|824", "T00010000002|A|12.5|824", "T00010000004|M|0|0"));
  EXPECT_EQ(form().amsCell("ANTENNA"), "M");
  EXPECT_EQ(form().amsCellText(form().selectedRow(), "ANTENNA"), "M");
  EXPECT_EQ(form().txtID.text(), "Ant ID: T00010000004");
  EXPECT_FALSE(form().NewRow);
}

// Its row stands there without an ID while one is sought.
TEST_F(AntennaListTest, ANewRowAndAnAntennaImportedMeanwhileGetDifferentIDs) {
  MeasuredPlatform machine;
  const platform::Substitute substitute(machine);
  open();
  ASSERT_TRUE(grid().userEdit(0, columnIndex("ANTENNA"), "New"));
  const int formerWait = DbfFile::lockWait();
  DbfFile::setLockWait(0);
  bool importing = false;
  std::string refused;
  machine.onRead = [&] {
    if (std::exchange(importing, true)) return;
    const std::string reason = HDwrtAntDBF("T0001", "Imported", 1, "dBd", 1, {0}, {0}, 1, {0}, {0}, 0, 0);
    if (!reason.empty()) refused = reason;
    importing = false;
  };
  EXPECT_TRUE(grid().update());
  machine.onRead = {};
  DbfFile::setLockWait(formerWait);
  EXPECT_THAT(refused, testing::HasSubstr("is locked by another user"));
  const std::vector<std::string> ids = stored({"ATYPE_ID"});
  EXPECT_EQ(std::set<std::string>(ids.begin(), ids.end()).size(), ids.size());
}

TEST_F(AntennaListTest, AFailureInTheNewRowIsTold) {
  open();
  ASSERT_TRUE(grid().userEdit(0, columnIndex("ANTENNA"), "New"));
  bool gone = false;
  screen.onTurn = [&] {
    if (gone) return;
    gone = true;
    DBEngine::OpenDatabase(getAntennasPath())->OpenRecordset("select * from AMST0001")->Delete();
  };
  grid().update();
  screen.onTurn = {};
  EXPECT_THAT(heard(), testing::SizeIs(1));
  EXPECT_TRUE(form().NewRow);
}

TEST_F(AntennaListTest, AnEditOfAnOldRowMakesNoID) {
  addRow({{"ANTENNA", "Bare"}});
  open();
  ASSERT_TRUE(edit(0, "ANTENNA", "Still bare"));
  EXPECT_EQ(stored({"ATYPE_ID", "ANTENNA"}), std::vector<std::string>{"|Still bare"});
}

TEST_F(AntennaListTest, ANewRowLeavesTheTitleCountingIt) {
  open();
  ASSERT_TRUE(edit(0, "ANTENNA", "New"));
  EXPECT_EQ(form().caption(), "Antenna Database Editor: Test Library (AMST0001)  1 records");
}

}  // namespace
}  // namespace vantrelix::test
