// The ASCII antenna file and the dialog that asks for its name.
#include "EditorFixture.h"
#include "editor/antExport.h"
#include "editor/antennaFile.h"
#include "import/ImportFormat.h"
#include "import/importRun.h"
#include "platform/FaultPlatform.h"

namespace vantrelix::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class AntExportTest : public EditorTest {
 protected:
  static std::string suiteValue(const char* key) {
    std::string file = getSuiteINI();
    return getINIStr("Antenna Editor", key, "(none)", file);
  }
  static void setSuiteValue(const char* key, const std::string& value) {
    ASSERT_TRUE(setINI("Antenna Editor", key, getSuiteINI(), value));
  }
  std::string exported(const std::string& name = "out.ANT") {
    screen.filesToSave.push_back(suite.file(name));
    form().Command1[frmHDAntEditor::exporting].userClick();
    return suite.folder().exists(name) ? suite.folder().read(name) : "(no file)";
  }
};

TEST_F(AntExportTest, WritesNameFrequencyGainAndBothCutsAsLosses) {
  add("Panel", 12.5, "dBi", {{0, 90.25}, {12.5, 4}}, {{-5, 0, 5}, {1.005, 12.5, -20}}, 824.5, 896);
  open(" ", 0, kFirst);
  EXPECT_EQ(exported(),
            "NAME Panel\r\nFrequency 824.5\r\nGAIN 12.5 dBi\r\nHORIZONTAL 2\r\n0.00 0.00\r\n90.25 8.50\r\n"
            "VERTICAL 3\r\n5.00 11.50\r\n0.00 0.00\r\n-5.00 32.50\r\n");
  EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(AntExportTest, ACutWithoutRowsHasNoBlock) {
  add("Flat", 1, "dBd", {{0, 180}, {1, 0}}, {{}, {}});
  open(" ", 0, kFirst);
  EXPECT_EQ(exported(), "NAME Flat\r\nFrequency 824\r\nGAIN 1 dBd\r\nHORIZONTAL 2\r\n0.00 0.00\r\n180.00 1.00\r\n");
}

TEST_F(AntExportTest, RelativeValuesAreSubtractedAsTheyStand) {
  add("Ratio", 4, "REL", {{0, 180}, {1, 0.25}}, {{}, {}});
  open(" ", 0, kFirst);
  EXPECT_THAT(exported(), HasSubstr("GAIN 4 REL\r\nHORIZONTAL 2\r\n0.00 3.00\r\n180.00 3.75\r\n"));
}

TEST_F(AntExportTest, AnAntennaOfNullsGetsTheDefaults) {
  const RecordsetPtr rows = DBEngine::OpenDatabase(getAntennasPath())->OpenRecordset("select * from AMST0001");
  rows->AddNew();
  rows->put("ATYPE_ID", kFirst);
  rows->Update();
  open(" ", 0, kFirst);
  screen.filesToSave.push_back(suite.file("none.ANT"));
  form().Command1[frmHDAntEditor::exporting].userClick();
  EXPECT_EQ(screen.saveDialogs().back().name, "UNKNOWN ANTENNA.ANT");
  EXPECT_THAT(suite.folder().read("none.ANT"), HasSubstr("NAME UNKNOWN ANTENNA\r\nFrequency 0\r\nGAIN 0 "));
}

TEST_F(AntExportTest, WhatStandsInACellIsStoredFirst) {
  addPanel();
  open(" ", 0, kFirst);
  ASSERT_TRUE(form().TDBGridAMS.userEdit(0, form().TDBGridAMS.columnOf("ANTENNA"), "Renamed"));
  EXPECT_THAT(exported(), HasSubstr("NAME Renamed\r\n"));
  EXPECT_THAT(rows("AMST0001", {"ANTENNA"}), ElementsAre("Renamed"));
}

TEST_F(AntExportTest, WhatCannotBeStoredIsToldAndNothingIsWritten) {
  addPanel();
  open(" ", 0, kFirst);
  ASSERT_TRUE(form().TDBGridAMS.userEdit(0, form().TDBGridAMS.columnOf("GAIN"), "much"));
  EXPECT_EQ(exported(), "(no file)");
  EXPECT_THAT(heard(), testing::SizeIs(1));
  EXPECT_THAT(screen.saveDialogs(), IsEmpty());
}

TEST_F(AntExportTest, OfSeveralSelectedAntennasTheCurrentOneIsWritten) {
  addPanel("First");
  addPanel("Second");
  open();
  select(1);
  form().TDBGridAMS.selBookmarks().add(form().TDBGridAMS.bookmarkOf(0));
  EXPECT_THAT(exported(), HasSubstr("NAME Second\r\n"));
}

TEST_F(AntExportTest, ANameInAnotherScriptStandsInTheFileAndInItsName) {
  const std::string name = "Antenne \u00FCber K\u00F6ln";
  addPanel(name);
  open(" ", 0, kFirst);
  EXPECT_THAT(exported(), HasSubstr("NAME " + name + "\r\n"));
  EXPECT_EQ(screen.saveDialogs().back().name, name + ".ANT");
}

TEST_F(AntExportTest, WhatRoundsTo0HasNoSign) {
  add("Panel", 1, "dBd", {{0, 90}, {1.001, 1}}, {{0.001, 5}, {1, 1}});
  open(" ", 0, kFirst);
  EXPECT_THAT(exported(), HasSubstr("HORIZONTAL 2\r\n0.00 0.00\r\n90.00 0.00\r\nVERTICAL 2\r\n0.00 0.00\r\n"));
}

TEST_F(AntExportTest, AFolderThatIsGoneIsTold) {
  addPanel();
  open(" ", 0, kFirst);
  EXPECT_EQ(exported("gone/out.ANT"), "(no file)");
  EXPECT_THAT(heard(), testing::SizeIs(1));
}

// --- The dialog.

TEST_F(AntExportTest, SuggestsTheNameWithoutWhatAFileNameCannotHold) {
  addPanel("A/B: 90");
  open(" ", 0, kFirst);
  exported();
  const Desktop::SaveFile& asked = screen.saveDialogs().back();
  EXPECT_EQ(asked.title, "ASCII Antenna File to Write");
  EXPECT_EQ(asked.name, "A_B_ 90.ANT");
  EXPECT_EQ(asked.extension, "ANT");
}

TEST_F(AntExportTest, OffersTheAntennasFolderUntilAnotherWasChosen) {
  addPanel();
  open(" ", 0, kFirst);
  exported();
  EXPECT_EQ(screen.saveDialogs().back().folder, getAntennasPath());
  exported("again.TXT");
  EXPECT_EQ(screen.saveDialogs().back().folder, ExtractFolder(suite.file("out.ANT")));
  EXPECT_EQ(suiteValue("FileExt"), "TXT");
  exported("third.PAT");
  EXPECT_EQ(screen.saveDialogs().back().name, "Panel.TXT");
}

TEST_F(AntExportTest, TheKindOfTheLastTimeComesFirst) {
  const auto filter = [](std::initializer_list<std::string> parts) {
    std::string text;
    for (const std::string& part : parts) text += (text.empty() ? "" : std::string(1, '\0')) + part;
    return text;
  };
  const std::string ant = filter({"ASCII Antenna File (*.ANT)", "*.ANT"});
  const std::string txt = filter({"Text Files (*.TXT)", "*.TXT"});
  const std::string all = filter({"All Files (*.*)", "*.*"});
  addPanel();
  open(" ", 0, kFirst);
  exported();
  EXPECT_EQ(screen.saveDialogs().back().filter, filter({ant, txt, all}));
  setSuiteValue("FileExt", "TXT");
  exported();
  EXPECT_EQ(screen.saveDialogs().back().filter, filter({txt, ant, all}));
  setSuiteValue("FileExt", "PAT");
  exported();
  EXPECT_EQ(screen.saveDialogs().back().filter, filter({"ASCII Antenna File (*.PAT)", "*.PAT", ant, txt, all}));
}

TEST_F(AntExportTest, CancelledItKeepsAndWritesNothing) {
  addPanel();
  open(" ", 0, kFirst);
  form().Command1[frmHDAntEditor::exporting].userClick();
  EXPECT_EQ(screen.saveDialogs().size(), 1U);
  EXPECT_EQ(suiteValue("ExportPath"), "(none)");
  EXPECT_EQ(suiteValue("FileExt"), "(none)");
}

TEST_F(AntExportTest, WithoutASelectionItSaysWhatToDo) {
  addPanel();
  open();
  form().Command1[frmHDAntEditor::exporting].userClick();
  EXPECT_THAT(heard(), ElementsAre("No Antenna Selected: You must select an antenna by clicking the selection button "
                                   "to the left of the row to highlight the antenna.\r\n\r\nThen click the Export "
                                   "button to write the antenna information to an ASCII file."));
  EXPECT_THAT(screen.saveDialogs(), IsEmpty());
}

TEST_F(AntExportTest, AFileThatCannotBeWrittenStaysAsItWasAndTheReasonIsShown) {
  addPanel();
  open(" ", 0, kFirst);
  exported();
  const std::string before = suite.folder().read("out.ANT");
  addPanel("Other");
  open(" ", 0, kSecond);
  platform::FaultPlatform faults(platform::operatingSystem());
  const platform::Substitute substitute(faults);
  int call = 1;
  for (;; ++call) {
    faults.failAt(call, failure::diskFull);
    if (exportAntenna(form(), suite.file("out.ANT"))) break;
    EXPECT_EQ(suite.folder().read("out.ANT"), before) << "call " << call;
    EXPECT_EQ(heard().size(), 1U);
  }
  EXPECT_GT(call, 2);
  EXPECT_NE(suite.folder().read("out.ANT"), before);
}

TEST_F(AntExportTest, SelectedRowsWithoutACurrentOneAreNoSelection) {
  addPanel("First");
  addPanel("Second");
  open();
  DataGrid& list = form().TDBGridAMS;
  list.selBookmarks().assign({list.bookmarkOf(0), list.bookmarkOf(1)});
  EXPECT_EQ(exported(), "(no file)");
  EXPECT_THAT(heard(), ElementsAre(testing::StartsWith("No Antenna Selected: ")));
}

// --- The order of the file.

TEST_F(AntExportTest, TheBlockFromTheTableGoesUpwardByAngle) {
  add("Panel", 10, "dBd", {{0}, {10}}, {{5, -90, 0}, {1, 2, 10}});
  setINI("Antenna Editor", "VertPatSort", getDefaultsINI(), "DESC");
  open(" ", 0, kFirst);
  std::string file;
  bool failed = true;
  SavAntPLAVerRS(file, 10, kFirst, form().elevation, failed);
  EXPECT_FALSE(failed);
  EXPECT_EQ(file, "VERTICAL 3\r\n90.00 8.00\r\n0.00 0.00\r\n-5.00 9.00\r\n");
  EXPECT_EQ(form().TDBGridAVD.cellText(0, form().elevation.colAngle()), "-90.000");
  EXPECT_THAT(form().DataAVD.RecordSource, testing::EndsWith(" Order by [VERT_ANGLE]"));
}

TEST_F(AntExportTest, TheBlockOfAnIDWithAQuoteIsFound) {
  for (const char* table : {"AMST0001", "AVDT0001"}) {
    const RecordsetPtr row =
        DBEngine::OpenDatabase(getAntennasPath())->OpenRecordset(std::string("select * from ") + table);
    row->AddNew();
    row->put("ATYPE_ID", "T0001'O'0001");
    row->Update();
  }
  open();
  std::string file;
  bool failed = true;
  SavAntPLAVerRS(file, 3, "T0001'O'0001", form().elevation, failed);
  EXPECT_FALSE(failed);
  EXPECT_EQ(file, "VERTICAL 1\r\n0.00 3.00\r\n");
}

// --- There and back.

TEST_F(AntExportTest, TheGenericFilterReadsTheSameAntenna) {
  for (const char* units : {"dBd", "dBi", "REL"}) {
    const double gain = std::string(units) == "REL" ? 1 : 12.5;
    add(std::string("Panel ") + units, gain, units, {{0, 90, 180, 270}, {gain, gain / 2, gain / 5, gain / 2}},
        {{-90, 0, 90}, {gain / 5, gain, gain / 10}});
  }
  for (const char* id : {kFirst, kSecond, "T00010000003"}) {
    open(" ", 0, id);
    const std::string name = std::string(id) + ".ANT";
    ASSERT_NE(exported(name), "(no file)");
    const RecordsetPtr none;
    const ImportResult result =
        importFiles(*findImportFormat("generic"), "T0001", none, none, none, {suite.file(name)}, false);
    ASSERT_EQ(result.added.size(), 1U) << id;
    const auto points = [&](const std::string& table, const std::string& own, const char* angle, const char* value) {
      std::vector<std::string> found;
      for (const std::string& row : rows(table, {"ATYPE_ID", angle, value})) {
        if (row.rfind(own, 0) == 0) found.push_back(row.substr(own.size()));
      }
      std::sort(found.begin(), found.end());
      return found;
    };
    EXPECT_EQ(points("AHDT0001", result.added[0].id, "HOR_AZ", "HOR_FIELD"),
              points("AHDT0001", id, "HOR_AZ", "HOR_FIELD"));
    EXPECT_EQ(points("AVDT0001", result.added[0].id, "VERT_ANGLE", "VERT_FIELD"),
              points("AVDT0001", id, "VERT_ANGLE", "VERT_FIELD"));
  }
}

}  // namespace
}  // namespace vantrelix::test
