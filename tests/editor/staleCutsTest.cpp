// What the operations do where the pattern grids still show the antenna selected before, since the cuts of the selected
// one could not be loaded, or where its gain has been typed since it was selected.
#include <filesystem>

#include "EditorFixture.h"
#include "editor/antCopy.h"
#include "editor/antExport.h"
#include "editor/antPrint.h"
#include "editor/correctAntPattern.h"
#include "editor/frmGetSequentialValues.h"
#include "editor/okAntPattern.h"
#include "tables/DbfFile.h"

namespace vantrelix::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

class StaleCutsTest : public EditorTest {
 protected:
  static constexpr const char* kTables[] = {"AHDT0001", "AVDT0001"};

  static std::vector<std::string> elevations() { return rows("AVDT0001", {"ATYPE_ID", "VERT_ANGLE", "VERT_FIELD"}); }
  static std::string tableFile(const std::string& table) {
    return platform::current().toMachine(setPathName(getAntennasPath(), table + ".DBF"));
  }
  static void takeAway(const std::string& table) {
    std::filesystem::rename(tableFile(table), tableFile(table) + ".kept");
  }
  static void bringBack(const std::string& table) {
    std::filesystem::rename(tableFile(table) + ".kept", tableFile(table));
  }
  // The second antenna is selected while the table of a cut is away: its grid shows the first one's points.
  void openOnOther(const std::string& table) {
    open();
    select(0);
    takeAway(table);
    select(1);
    heard();
  }
  void addTwo() {
    add("First", 10, "dBd", {{0, 90}, {7, 10}}, {{-45, 0, 45}, {-2, 7, 1}});
    add("Second", 20, "dBd", {{0, 90}, {17, 20}}, {{-45, 0, 45}, {8, 17, 11}});
  }
  void enter(const std::array<std::string, 3>& texts) {
    screen.onModal["frmGetSequentialValues"] = [texts](Form& shown) {
      auto& dialog = dynamic_cast<frmGetSequentialValues&>(shown);
      for (std::size_t i = 0; i < 3; ++i) dialog.Text1[i].userType(texts[i]);
      dialog.Command1[frmGetSequentialValues::continuing].userClick();
    };
  }
  void press(frmHDAntEditor::Button button) { form().Command1[button].userClick(); }
};

TEST_F(StaleCutsTest, ACorrectionOfAnotherAntennasCutIsNone) {
  addTwo();
  screen.policy = ScriptedDesktop::assume(ScriptedDesktop::Assume::yes);
  for (const char* table : kTables) {
    openOnOther(table);
    EXPECT_EQ(CorrectAntPattern(form()).result, correction::failed) << table;
    bringBack(table);
    EXPECT_THAT(elevations(), Contains(std::string(kFirst) + "|0|7"));
    EXPECT_THAT(elevations(), Contains(std::string(kSecond) + "|0|17"));
  }
  // Now that they can be read.
  openOnOther("AVDT0001");
  bringBack("AVDT0001");
  EXPECT_EQ(CorrectAntPattern(form()).result, correction::corrected);
  EXPECT_THAT(elevations(), Contains(std::string(kFirst) + "|0|7"));
  EXPECT_THAT(elevations(), Contains(std::string(kSecond) + "|0|20"));
}

TEST_F(StaleCutsTest, AnAntennaIsNotAcceptedForAnotherOnesCuts) {
  add("First", 10, "dBd", {{0}, {10}}, {{0}, {10}});
  add("Second", 10, "dBd", {{0}, {5}}, {{0}, {5}});
  for (const char* table : kTables) {
    openOnOther(table);
    EXPECT_FALSE(OKAntPattern(form())) << table;
    // The second time the grid shows nothing any more.
    EXPECT_FALSE(OKAntPattern(form())) << table;
    EXPECT_THAT(heard(), ElementsAre(StartsWith("Error in "), StartsWith("Error in ")));
    bringBack(table);
    EXPECT_FALSE(OKAntPattern(form()));
    EXPECT_THAT(heard(), ElementsAre(StartsWith("Antenna Pattern Warning: The maximum azimuth gain")));
  }
}

TEST_F(StaleCutsTest, ACutThatIsNotShownIsTestedAllTheSame) {
  add("First", 10, "dBd", {{0}, {10}}, {{0}, {5}});
  open();
  select(0);
  form().DataAVD.clear();
  EXPECT_FALSE(OKAntPattern(form()));
  EXPECT_THAT(heard(), ElementsAre(StartsWith("Antenna Pattern Warning: The maximum elevation gain")));
}

TEST_F(StaleCutsTest, AnAntennaThatNeedsNoTestNeedsNoCuts) {
  addTwo();
  setINI("HDAntenna", "SkipValid", getDefaultsINI(), "1");
  openOnOther("AHDT0001");
  EXPECT_TRUE(OKAntPattern(form()));
  EXPECT_THAT(heard(), ::testing::IsEmpty());
}

TEST_F(StaleCutsTest, ACopyHasThePointsOfItsOriginal) {
  addTwo();
  openOnOther("AHDT0001");
  press(frmHDAntEditor::copying);
  EXPECT_THAT(heard(), Contains(StartsWith("Error in ")));
  EXPECT_EQ(rows("AMST0001", {"ATYPE_ID"}).size(), 2U);
  bringBack("AHDT0001");
  EXPECT_EQ(azimuths().size(), 4U);
  openOnOther("AHDT0001");
  bringBack("AHDT0001");
  press(frmHDAntEditor::copying);
  EXPECT_EQ(azimuths().size(), 6U);
  EXPECT_THAT(azimuths(), Contains("T00010000004|0|17"));
}

TEST_F(StaleCutsTest, ASequenceIsMissedInTheCutOfItsOwnAntenna) {
  addTwo();
  openOnOther("AHDT0001");
  enter({"0", "45", "45"});
  press(frmHDAntEditor::addingAzimuths);
  EXPECT_THAT(heard(), Contains(StartsWith("Error in ")));
  bringBack("AHDT0001");
  EXPECT_EQ(azimuths().size(), 4U);
  openOnOther("AHDT0001");
  bringBack("AHDT0001");
  press(frmHDAntEditor::addingAzimuths);
  EXPECT_EQ(azimuths().size(), 5U);
  EXPECT_EQ(azimuths().back(), std::string(kSecond) + "|45|20");
  EXPECT_EQ(form().fraAHD.caption(), "Az Pat: Second");
}

TEST_F(StaleCutsTest, AMissingElevationTableHindersNoAzimuths) {
  addTwo();
  openOnOther("AVDT0001");
  enter({"0", "45", "45"});
  press(frmHDAntEditor::addingAzimuths);
  EXPECT_EQ(azimuths().back(), std::string(kSecond) + "|45|20");
}

TEST_F(StaleCutsTest, NothingIsTypedIntoAnotherAntennasCut) {
  addTwo();
  openOnOther("AHDT0001");
  DataGrid& grid = form().TDBGridAHD;
  EXPECT_FALSE(grid.userEdit(0, form().azimuth.colGain(), "3"));
  EXPECT_FALSE(grid.userEdit(2, form().azimuth.colAngle(), "3"));
  EXPECT_THAT(heard(), ElementsAre(StartsWith("Error in "), StartsWith("Error in ")));
  EXPECT_FALSE(grid.dataChanged());
  bringBack("AHDT0001");
  // The attempt shows the right rows, the next one edits them.
  EXPECT_FALSE(grid.userEdit(0, form().azimuth.colGain(), "3"));
  EXPECT_EQ(form().fraAHD.caption(), "Az Pat: Second");
  EXPECT_TRUE(grid.userEdit(0, form().azimuth.colGain(), "3"));
  EXPECT_TRUE(grid.update());
  EXPECT_THAT(azimuths(), Contains(std::string(kFirst) + "|0|7"));
  EXPECT_THAT(azimuths(), Contains(std::string(kSecond) + "|0|3"));
}

TEST_F(StaleCutsTest, AnEntryThatCouldNotBeStoredMayBeMendedAndGoesToItsOwnAntenna) {
  addTwo();
  open();
  select(0);
  DataGrid& grid = form().TDBGridAHD;
  ASSERT_TRUE(grid.userEdit(1, form().azimuth.colAngle(), "north"));
  select(1);
  EXPECT_TRUE(grid.userEdit(1, form().azimuth.colAngle(), "91"));
  form().SelectAntenna();
  EXPECT_THAT(azimuths(), Contains(std::string(kFirst) + "|91|10"));
  EXPECT_EQ(form().fraAHD.caption(), "Az Pat: Second");
}

TEST_F(StaleCutsTest, AnEntryThatCannotBeStoredStopsACopyOfAnotherAntenna) {
  addTwo();
  open();
  select(0);
  ASSERT_TRUE(form().TDBGridAHD.userEdit(1, form().azimuth.colAngle(), "north"));
  select(1);
  press(frmHDAntEditor::copying);
  EXPECT_EQ(rows("AMST0001", {"ATYPE_ID"}).size(), 2U);
  EXPECT_EQ(form().TDBGridAHD.cellText(1, form().azimuth.colAngle()), "north");
}

// --- A gain typed since.

TEST_F(StaleCutsTest, ASequenceStandsAtTheGainJustTyped) {
  addTwo();
  open();
  select(0);
  ASSERT_TRUE(form().TDBGridAMS.userEdit(0, form().TDBGridAMS.columnOf("GAIN"), "15"));
  enter({"0", "45", "45"});
  press(frmHDAntEditor::addingAzimuths);
  EXPECT_EQ(azimuths().back(), std::string(kFirst) + "|45|15");
  EXPECT_EQ(form().AntGain, 15);
}

TEST_F(StaleCutsTest, ACorrectionReachesTheGainJustTyped) {
  add("First", 12, "dBd", {{0, 90}, {7, 10}}, {{-45, 0, 45}, {-2, 7, 1}});
  open();
  select(0);
  ASSERT_TRUE(form().TDBGridAMS.userEdit(0, form().TDBGridAMS.columnOf("GAIN"), "10"));
  ASSERT_TRUE(form().TDBGridAMS.update());
  screen.policy = ScriptedDesktop::assume(ScriptedDesktop::Assume::yes);
  EXPECT_EQ(CorrectAntPattern(form()).result, correction::corrected);
  EXPECT_THAT(elevations(), Contains(std::string(kFirst) + "|0|10"));
}

TEST_F(StaleCutsTest, RelativePointsAreShownByTheGainJustTyped) {
  add("Relative", 10, "REL", {{0, 90}, {1, 0.5}}, {{0}, {1}});
  open();
  select(0);
  const long azimuthRevision = form().TDBGridAHD.revision(), elevationRevision = form().TDBGridAVD.revision();
  ASSERT_TRUE(form().TDBGridAMS.userEdit(0, form().TDBGridAMS.columnOf("GAIN"), "13"));
  ASSERT_TRUE(form().TDBGridAMS.update());
  EXPECT_EQ(form().TDBGridAHD.cellText(0, form().azimuth.colGain()), "13.000");
  EXPECT_GT(form().TDBGridAHD.revision(), azimuthRevision);
  EXPECT_GT(form().TDBGridAVD.revision(), elevationRevision);
}

TEST_F(StaleCutsTest, TheGainOfARowThatIsNotSelectedIsNotThatOfTheCuts) {
  addTwo();
  open();
  select(0);
  DataGrid& list = form().TDBGridAMS;
  list.selBookmarks().assign({list.bookmarkOf(1)});
  ASSERT_TRUE(list.userEdit(0, list.columnOf("GAIN"), "15"));
  ASSERT_TRUE(list.update());
  EXPECT_EQ(form().AntGain, 10);
}

// --- What others have done since.

TEST_F(StaleCutsTest, ACopyLeavesOutThePointsThatAnotherProgramDeleted) {
  addTwo();
  open();
  select(0);
  const RecordsetPtr other = DBEngine::OpenDatabase(getAntennasPath())->OpenRecordset("select * from AHDT0001");
  other->Delete();
  press(frmHDAntEditor::copying);
  EXPECT_THAT(azimuths(), Contains("T00010000004|90|10"));
  EXPECT_EQ(azimuths().size(), 4U);
}

TEST_F(StaleCutsTest, AnAntennaThatAnotherProgramDeletedIsNotCopied) {
  addTwo();
  open();
  select(0);
  const RecordsetPtr other = DBEngine::OpenDatabase(getAntennasPath())->OpenRecordset("select * from AMST0001");
  other->Delete();
  press(frmHDAntEditor::copying);
  EXPECT_THAT(heard(), Contains(StartsWith("Error in ")));
  EXPECT_THAT(rows("AMST0001", {"ATYPE_ID"}), ElementsAre(kSecond));
  EXPECT_EQ(azimuths().size(), 4U);
}

TEST_F(StaleCutsTest, AnglesThatAnotherProgramAddedAreNotAddedAgain) {
  addTwo();
  open();
  select(0);
  screen.onModal["frmGetSequentialValues"] = [](Form& shown) {
    const RecordsetPtr other = DBEngine::OpenDatabase(getAntennasPath())->OpenRecordset("select * from AHDT0001");
    other->AddNew();
    other->put("ATYPE_ID", kFirst);
    other->put("HOR_AZ", 45);
    other->put("HOR_FIELD", 1);
    other->Update();
    auto& dialog = dynamic_cast<frmGetSequentialValues&>(shown);
    for (std::size_t i = 0; i < 3; ++i) dialog.Text1[i].userType(i == 0 ? "0" : "45");
    dialog.Command1[frmGetSequentialValues::continuing].userClick();
  };
  press(frmHDAntEditor::addingAzimuths);
  EXPECT_EQ(azimuths().size(), 5U);
  EXPECT_EQ(form().TDBGridAHD.dataRowCount(), 3);
}

TEST_F(StaleCutsTest, AnExportOfAnotherAntennasCutsIsNone) {
  addTwo();
  for (const char* table : kTables) {
    openOnOther(table);
    EXPECT_FALSE(exportAntenna(form(), suite.file("out.ANT"))) << table;
    EXPECT_FALSE(suite.folder().exists("out.ANT"));
    bringBack(table);
    heard();
  }
  EXPECT_TRUE(exportAntenna(form(), suite.file("out.ANT")));
  EXPECT_THAT(suite.folder().read("out.ANT"), HasSubstr("NAME Second\r\nFrequency 824\r\nGAIN 20 dBd\r\n"
                                                        "HORIZONTAL 2\r\n0.00 3.00\r\n"));
}

TEST_F(StaleCutsTest, ATabulationOfAnotherAntennasCutIsNone) {
  addTwo();
  openOnOther("AVDT0001");
  EXPECT_THROW(tabulation(form(), 1), RunTimeFailure);
  bringBack("AVDT0001");
  EXPECT_THAT(tabulation(form(), 1), HasSubstr(" 0.000      17.000"));
}

}  // namespace
}  // namespace vantrelix::test
