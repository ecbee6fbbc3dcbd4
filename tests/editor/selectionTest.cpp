#include <filesystem>
#include <fstream>

#include "editor/EditorFixture.h"

namespace vantrelix {
namespace {

using test::Cut;
using test::EditorTest;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class SelectionTest : public EditorTest {
 protected:
  // Cuts of 1 degree steps from -90 to 90 with the gain 0 everywhere but at 0.
  static Cut fan() {
    Cut cut;
    for (int angle = -90; angle <= 90; ++angle) {
      cut.angles.push_back(angle);
      cut.values.push_back(angle == 0 ? 10 : 0);
    }
    return cut;
  }
  void openFan(const std::string& order = "ASC") {
    setINI("Antenna Editor", "VertPatSort", getDefaultsINI(), order);
    add("Fan", 10, "dBd", {{0, 90}, {10, 0}}, fan());
    open();
  }
  static std::vector<std::string> angles(const PatternPane& pane) {
    std::vector<std::string> texts;
    for (int row = 0; row < pane.grid.dataRowCount(); ++row) texts.push_back(pane.grid.cellText(row, pane.colAngle()));
    return texts;
  }
  DataGrid& list() { return form().TDBGridAMS; }
  DataGrid& elevations() { return form().TDBGridAVD; }
  std::string currentAngle() { return elevations().cellText(elevations().currentRow(), form().elevation.colAngle()); }
  static std::string tableFile(const std::string& table) {
    return platform::current().toMachine(setPathName(getAntennasPath(), table + ".DBF"));
  }
  // Puts a value into the table from elsewhere; a null blanks the field.
  static void put(const std::string& table, std::uint32_t row, const std::string& field, const Value& value) {
    const auto file = DbfFile::open(setPathName(getAntennasPath(), table + ".DBF"));
    file->update(
        row, [&](unsigned char* bytes) { file->put(bytes, static_cast<std::size_t>(file->fieldIndex(field)), value); });
  }
};

TEST_F(SelectionTest, AClickShowsTheAntennaWithItsCuts) {
  addPanel("First");
  add("Second", 3, "dBd", {{10, 5}, {3, 1}}, {{30, -30, 0}, {1, 2, 3}});
  open();
  select(1);
  EXPECT_EQ(form().txtID.text(), std::string("Ant ID: ") + kSecond);
  EXPECT_EQ(form().fraAHD.caption(), "Az Pat: Second");
  EXPECT_EQ(form().fraAVD.caption(), "El Pat: Second");
  EXPECT_THAT(angles(form().azimuth), ElementsAre("5.000", "10.000"));
  EXPECT_THAT(angles(form().elevation), ElementsAre("-30.000", "0.000", "30.000"));
  EXPECT_EQ(form().AntGain, 3);
  EXPECT_EQ(form().AntGainUn, "dBd");
  EXPECT_TRUE(form().Command1[frmHDAntEditor::continuing].enabled());
  EXPECT_THAT(form().picHor.lines(), testing::Not(IsEmpty()));
  EXPECT_THAT(form().picVer.lines(), testing::Not(IsEmpty()));
  EXPECT_FALSE(form().TDBGridAHD.held());
  EXPECT_FALSE(form().TDBGridAVD.held());
  EXPECT_TRUE(form().TDBGridAHD.allowAddNew());
  EXPECT_TRUE(form().TDBGridAVD.allowAddNew());
}

TEST_F(SelectionTest, TheQueriesAreAsToldWithTheIDInUpperCase) {
  addPanel();
  put("AMST0001", 0, "ATYPE_ID", "  ab1 ");
  put("AHDT0001", 1, "ATYPE_ID", "Ab1");
  open();
  select(0);
  EXPECT_EQ(form().DataAHD.RecordSource, "select * from [AHDT0001] where ucase(atype_id) = 'AB1' Order by [HOR_AZ]");
  EXPECT_EQ(form().DataAVD.RecordSource,
            "select * from [AVDT0001] where ucase(atype_id) = 'AB1' Order by [VERT_ANGLE] ASC");
  EXPECT_THAT(angles(form().azimuth), ElementsAre("90.000"));
}

TEST_F(SelectionTest, AnIDWithAQuoteIsFound) {
  addPanel();
  put("AMST0001", 0, "ATYPE_ID", "O'B''\"");
  put("AHDT0001", 1, "ATYPE_ID", "O'B''\"");
  open();
  select(0);
  EXPECT_THAT(heard(), IsEmpty());
  EXPECT_THAT(angles(form().azimuth), ElementsAre("90.000"));
}

TEST_F(SelectionTest, TheOrderOfElevationsIsDescendingUnlessItBeginsWithAsc) {
  addPanel();
  for (const auto& [kept, order] : {std::pair{"ASC", "ASC"}, {"ascending", "ASC"}, {"DESC", "DESC"}, {"x", "DESC"}}) {
    setINI("Antenna Editor", "VertPatSort", getDefaultsINI(), kept);
    open();
    select(0);
    EXPECT_THAT(form().DataAVD.RecordSource, testing::EndsWith(std::string("Order by [VERT_ANGLE] ") + order)) << kept;
  }
}

TEST_F(SelectionTest, WhileItLoadsTheFramesSaySoAndTheGridsTakeNothing) {
  addPanel("First");
  addPanel("Second");
  open();
  select(0);
  std::vector<std::string> captions;
  std::vector<bool> held, adding;
  std::vector<std::size_t> lines;
  screen.onTurn = [&] {
    if (!form().TDBGridAHD.held()) return;  // the turn of the row change
    captions.push_back(form().fraAHD.caption() + "/" + form().fraAVD.caption());
    held.push_back(form().TDBGridAVD.held());
    adding.push_back(form().TDBGridAHD.allowAddNew() || form().TDBGridAVD.allowAddNew());
    lines.push_back(form().picHor.lines().size() + form().picVer.lines().size());
  };
  select(1);
  EXPECT_THAT(captions, ElementsAre("Get Az Pat: Second/Get El Pat: Second", "Get Az Pat: Second/Get El Pat: Second",
                                    "Az Pat: Second/Get El Pat: Second"));
  EXPECT_THAT(held, ElementsAre(true, true, true));
  EXPECT_THAT(adding, ElementsAre(false, false, false));
  EXPECT_THAT(lines, ElementsAre(0U, 0U, 0U));
}

TEST_F(SelectionTest, InTheLookUpTheGridsTakeNoRowsAfterwardsEither) {
  addPanel();
  open("LOOKUP");
  select(0);
  EXPECT_FALSE(form().TDBGridAHD.allowAddNew());
  EXPECT_FALSE(form().TDBGridAVD.allowAddNew());
  EXPECT_THAT(angles(form().azimuth), testing::SizeIs(4));
}

// --- What the list may hold.

TEST_F(SelectionTest, ARowWithoutIDClearsThePatterns) {
  addPanel("First");
  addPanel("Second");
  put("AMST0001", 1, "ATYPE_ID", Value());
  open();
  select(0);
  select(1);
  EXPECT_FALSE(form().DataAHD.hasRecordset());
  EXPECT_FALSE(form().DataAVD.hasRecordset());
  EXPECT_THAT(form().picHor.lines(), IsEmpty());
  EXPECT_THAT(form().picVer.lines(), IsEmpty());
  EXPECT_EQ(form().fraAHD.caption(), "Az Pat: Second");
  EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(SelectionTest, TwoSelectedRowsDisableContinueAndLeaveThePatterns) {
  addPanel("First");
  addPanel("Second");
  open();
  select(0);
  list().selBookmarks().add(list().bookmarkOf(1));
  form().selectionChanged();
  EXPECT_FALSE(form().Command1[frmHDAntEditor::continuing].enabled());
  EXPECT_EQ(form().fraAHD.caption(), "Az Pat: First");
  EXPECT_THAT(angles(form().azimuth), testing::SizeIs(4));
  select(1);
  EXPECT_TRUE(form().Command1[frmHDAntEditor::continuing].enabled());
}

TEST_F(SelectionTest, AnAntennaWithoutGainGetsZeroInItsRow) {
  addPanel();
  put("AMST0001", 0, "GAIN", Value());
  open();
  form().AntGain = 7;
  select(0);
  EXPECT_EQ(form().AntGain, 0);
  EXPECT_EQ(form().AntGainUn, "dBi");
  EXPECT_THAT(rows("AMST0001", {"GAIN", "GAIN_UN"}), ElementsAre("0|dBi"));
  EXPECT_THAT(angles(form().azimuth), testing::SizeIs(4));
}

TEST_F(SelectionTest, AnAntennaWithoutUnitsIsTakenInThoseOfDisplayAndItsGainGoesIntoTheirCell) {
  addPanel();
  put("AMST0001", 0, "GAIN_UN", Value());
  put("AMST0001", 0, "GAIN", 9.0);
  open();
  select(0);
  EXPECT_EQ(form().AntGain, 9);
  EXPECT_EQ(form().AntGainUn, form().GainUnits);
  EXPECT_THAT(rows("AMST0001", {"GAIN", "GAIN_UN"}), ElementsAre("9|9"));
  select(0);
  EXPECT_EQ(form().AntGainUn, form().GainUnits);
  EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(SelectionTest, UnknownUnitsCountAsThoseOfDisplayToo) {
  addPanel();
  put("AMST0001", 0, "GAIN_UN", "dBx");
  open();
  select(0);
  EXPECT_EQ(form().AntGainUn, form().GainUnits);
  EXPECT_EQ(form().TDBGridAHD.cellText(0, form().azimuth.colGain()), "12.500");
  EXPECT_THAT(rows("AMST0001", {"GAIN_UN"}), ElementsAre("dBx"));
}

TEST_F(SelectionTest, AnAntennaWithoutElevationsShowsItsAzimuthsAndMayGetElevations) {
  add("Flat", 10, "dBd", {{0, 90}, {10, 0}}, {{}, {}});
  open();
  select(0);
  EXPECT_EQ(form().fraAVD.caption(), "El Pat: Flat");
  EXPECT_THAT(form().picHor.lines(), testing::Not(IsEmpty()));
  EXPECT_THAT(form().picVer.lines(), IsEmpty());
  EXPECT_EQ(elevations().currentRow(), -1);
  EXPECT_EQ(elevations().firstRow(), 0);
  EXPECT_TRUE(elevations().allowAddNew());
}

TEST_F(SelectionTest, APatternOfTenThousandPointsIsShownWhole) {
  Cut cut;
  for (int i = 0; i < 10000; ++i) {
    cut.angles.push_back(i * 0.036);
    cut.values.push_back(i % 20);
  }
  add("Long", 20, "dBd", cut, {{0}, {20}});
  open();
  select(0);
  EXPECT_EQ(form().DataAHD.RecordCount(), 10000);
  EXPECT_GT(form().picHor.lines().size(), 9999U);
}

// --- Scrolling.

TEST_F(SelectionTest, TheAngleNearestZeroStandsInTheMiddleOfTheRowsInView) {
  openFan();
  elevations().userVisibleRows(9);
  select(0);
  EXPECT_EQ(currentAngle(), "0.000");
  EXPECT_EQ(elevations().currentRow(), 90);
  EXPECT_EQ(elevations().firstRow(), 86);
  EXPECT_EQ(elevations().visualRow(), 4);
}

TEST_F(SelectionTest, InDescendingOrderItIsFoundAtItsPlaceThere) {
  setINI("Antenna Editor", "VertPatSort", getDefaultsINI(), "DESC");
  Cut cut;
  for (int angle = -40; angle <= 60; ++angle) {
    cut.angles.push_back(angle);
    cut.values.push_back(0);
  }
  add("Fan", 10, "dBd", {{0, 90}, {10, 0}}, cut);
  open();
  elevations().userVisibleRows(10);
  select(0);
  EXPECT_EQ(currentAngle(), "0.000");
  EXPECT_EQ(elevations().currentRow(), 60);
  EXPECT_EQ(elevations().firstRow(), 55);
}

TEST_F(SelectionTest, ARowThatFitsInViewIsGoneToAsItIs) {
  add("Fan", 10, "dBd", {{0, 90}, {10, 0}}, {{-30, -20, -10, 0, 10, 20}, {1, 1, 1, 10, 1, 1}});
  open();
  elevations().userVisibleRows(3);
  select(0);
  EXPECT_EQ(elevations().currentRow(), 3);
  EXPECT_EQ(elevations().firstRow(), 1);
  elevations().userVisibleRows(2);
  select(0);
  form().SelectAntenna();
  EXPECT_EQ(elevations().currentRow(), 3);
  EXPECT_EQ(elevations().firstRow(), 2);
}

TEST_F(SelectionTest, OfAnglesEquallyNearTheFirstOneMetWins) {
  add("Fan", 10, "dBd", {{0, 90}, {10, 0}}, {{1, -1, 5}, {1, 2, 3}});
  for (const auto& [order, angle] : {std::pair{"ASC", "-1.000"}, {"DESC", "1.000"}}) {
    setINI("Antenna Editor", "VertPatSort", getDefaultsINI(), order);
    open();
    select(0);
    EXPECT_EQ(currentAngle(), angle);
  }
}

TEST_F(SelectionTest, WithoutTheSettingNothingIsScrolled) {
  setINI("Antenna Editor", "SETV0", getDefaultsINI(), "0");
  openFan();
  select(0);
  EXPECT_EQ(elevations().currentRow(), -1);
  EXPECT_EQ(elevations().firstRow(), 0);
  EXPECT_EQ(form().fraAVD.caption(), "El Pat: Fan");
  EXPECT_THAT(form().picVer.lines(), testing::Not(IsEmpty()));
}

// --- What happens meanwhile.

TEST_F(SelectionTest, WhoSelectsAnotherAntennaMeanwhileSeesThatOne) {
  for (const char* name : {"First", "Second", "Third"}) addPanel(name);
  put("AHDT0001", 8, "HOR_AZ", 33.0);
  open();
  for (int turn = 1; turn <= 4; ++turn) {
    select(0);
    int left = turn;
    int within = 0, deepest = 0;
    screen.onTurn = [&] {
      deepest = std::max(deepest, ++within);
      if (--left == 0) select(2);
      --within;
    };
    select(1);
    screen.onTurn = nullptr;
    EXPECT_EQ(form().fraAHD.caption(), "Az Pat: Third") << turn;
    EXPECT_EQ(form().fraAVD.caption(), "El Pat: Third") << turn;
    EXPECT_THAT(angles(form().azimuth), Contains("33.000")) << turn;
    EXPECT_EQ(form().selectedRow(), 2) << turn;
    EXPECT_LE(deepest, 2) << turn;
    EXPECT_FALSE(form().TDBGridAHD.held());
    EXPECT_TRUE(form().TDBGridAHD.allowAddNew());
  }
}

TEST_F(SelectionTest, WhoGoesOnByTheKeyboardMeanwhileSeesTheLastAntenna) {
  for (const char* name : {"First", "Second", "Third"}) addPanel(name);
  put("AHDT0001", 8, "HOR_AZ", 33.0);
  open();
  for (int turn = 1; turn <= 4; ++turn) {
    select(0);
    int left = turn;
    screen.onTurn = [&] {
      if (--left == 0) list().userMove(GridMove::down);
    };
    list().userMove(GridMove::down);
    screen.onTurn = nullptr;
    EXPECT_EQ(form().fraAHD.caption(), "Az Pat: Third") << turn;
    EXPECT_THAT(angles(form().azimuth), Contains("33.000")) << turn;
    EXPECT_EQ(form().selectedRow(), 2) << turn;
  }
}

TEST_F(SelectionTest, TheListMayBeSortedMeanwhile) {
  addPanel("First");
  addPanel("Second");
  open();
  select(0);
  int left = 3;
  screen.onTurn = [&] {
    if (--left == 0) list().userHeadClick(list().columnOf("ANTENNA"));
  };
  select(1);
  screen.onTurn = nullptr;
  EXPECT_FALSE(form().TDBGridAHD.held());
  select(1);
  EXPECT_EQ(form().fraAHD.caption(), "Az Pat: Second");
}

TEST_F(SelectionTest, AnEntryInThePatternIsStoredForTheAntennaThatItBelongsTo) {
  addPanel("First");
  addPanel("Second");
  open();
  select(0);
  ASSERT_TRUE(form().TDBGridAHD.userEdit(1, form().azimuth.colAngle(), "91"));
  select(1);
  EXPECT_EQ(azimuths()[1], std::string(kFirst) + "|91|4");
  EXPECT_THAT(angles(form().azimuth), ElementsAre("0.000", "90.000", "180.000", "270.000"));
}

// --- What goes wrong.

TEST_F(SelectionTest, AnEntryThatCannotBeStoredStaysWithItsRows) {
  addPanel("First");
  addPanel("Second");
  open();
  select(0);
  ASSERT_TRUE(form().TDBGridAHD.userEdit(1, form().azimuth.colAngle(), "north"));
  select(1);
  EXPECT_THAT(heard(), testing::SizeIs(1));
  EXPECT_EQ(form().TDBGridAHD.cellText(1, form().azimuth.colAngle()), "north");
  EXPECT_EQ(form().fraAHD.caption(), "Az Pat: First");
  EXPECT_TRUE(form().TDBGridAHD.userCancelRow());
  form().SelectAntenna();
  EXPECT_EQ(form().fraAHD.caption(), "Az Pat: Second");
}

TEST_F(SelectionTest, ATableThatIsGoneLeavesThePatternsAsTheyAre) {
  addPanel("First");
  addPanel("Second");
  for (const char* table : {"AHDT0001", "AVDT0001"}) {
    open();
    select(0);
    const std::string kept = tableFile(table) + ".kept";
    std::filesystem::rename(tableFile(table), kept);
    select(1);
    EXPECT_THAT(heard(), ElementsAre(HasSubstr("There is no table"))) << table;
    EXPECT_THAT(angles(form().azimuth), testing::SizeIs(4));
    EXPECT_THAT(angles(form().elevation), testing::SizeIs(3));
    EXPECT_EQ(form().fraAVD.caption(), "El Pat: First");
    EXPECT_FALSE(form().TDBGridAHD.held());
    EXPECT_TRUE(form().TDBGridAVD.allowAddNew());
    std::filesystem::rename(kept, tableFile(table));
    form().SelectAntenna();
    EXPECT_EQ(form().fraAVD.caption(), "El Pat: Second");
  }
}

TEST_F(SelectionTest, ATableThatIsDamagedOrHeldByAnotherIsReportedOnce) {
  addPanel("First");
  addPanel("Second");
  open();
  select(0);
  {
    const auto held = DbfFile::open(setPathName(getAntennasPath(), "AHDT0001.DBF"), false, Sharing::shared);
    form().DataAHD.clear();
  }
  const std::string kept = tableFile("AHDT0001") + ".kept";
  std::filesystem::rename(tableFile("AHDT0001"), kept);
  std::ofstream(tableFile("AHDT0001")) << "no table at all";
  select(1);
  EXPECT_THAT(heard(), testing::SizeIs(1));
  std::filesystem::remove(tableFile("AHDT0001"));
  std::filesystem::rename(kept, tableFile("AHDT0001"));
  {
    const auto held = DbfFile::open(setPathName(getAntennasPath(), "AHDT0001.DBF"), false, Sharing::exclusive);
    form().SelectAntenna();
    EXPECT_THAT(heard(), testing::SizeIs(1));
  }
  form().SelectAntenna();
  EXPECT_THAT(heard(), IsEmpty());
  EXPECT_EQ(form().fraAHD.caption(), "Az Pat: Second");
}

}  // namespace
}  // namespace vantrelix
