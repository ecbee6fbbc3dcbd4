// Copying the selected antenna.
#include "EditorFixture.h"
#include "SlowMachine.h"
#include "editor/antCopy.h"

namespace vantrelix::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class AntCopyTest : public EditorTest {
 protected:
  void openOn(int row) {
    open();
    select(row);
  }
  void copy() { form().Command1[frmHDAntEditor::copying].userClick(); }
  static std::vector<std::string> elevations() { return rows("AVDT0001", {"ATYPE_ID", "VERT_ANGLE", "VERT_FIELD"}); }
  static std::vector<std::string> antennas() { return rows("AMST0001", {"ATYPE_ID", "ANTENNA"}); }
  // Changes the first antenna as another program would.
  static void setFirst(const GridFields& fields) {
    const RecordsetPtr row = DBEngine::OpenDatabase(getAntennasPath())->OpenRecordset("select * from AMST0001");
    row->Edit();
    for (const auto& [field, value] : fields) row->put(field, value);
    row->Update();
  }
};

TEST_F(AntCopyTest, CopiesTheRowAndBothCutsUnderANewID) {
  addPanel("Alpha");
  addPanel("Beta");
  setFirst({{"POWER", 500}, {"POWER_UN", "W"}, {"FREQ_UN", "GHz"}});
  openOn(0);
  // Its number starts from the count of rows, its own among them.
  copy();
  EXPECT_THAT(heard(), IsEmpty());
  EXPECT_THAT(
      rows("AMST0001", {"ATYPE_ID", "ANTENNA", "GAIN", "GAIN_UN", "F_LOW", "F_HIGH", "FREQ_UN", "POWER", "POWER_UN"}),
      Contains("T00010000004|Copy of Alpha|12.5|dBi|824|896|GHz|500|W"));
  const std::vector<std::string> azimuth = azimuths(), elevation = elevations();
  ASSERT_EQ(azimuth.size(), 12U);
  EXPECT_THAT(std::vector<std::string>(azimuth.begin() + 8, azimuth.end()),
              ElementsAre("T00010000004|0|12.5", "T00010000004|90|4", "T00010000004|180|-20", "T00010000004|270|4"));
  ASSERT_EQ(elevation.size(), 9U);
  EXPECT_THAT(std::vector<std::string>(elevation.begin() + 6, elevation.end()),
              ElementsAre("T00010000004|-90|-12", "T00010000004|0|12.5", "T00010000004|90|-15"));
}

TEST_F(AntCopyTest, GoesToTheCopy) {
  addPanel("Alpha");
  openOn(0);
  copy();
  EXPECT_EQ(form().amsCell("ANTENNA"), "Copy of Alpha");
  EXPECT_EQ(form().selectedRow(), form().TDBGridAMS.currentRow());
  EXPECT_EQ(form().activeWidget(), &form().TDBGridAMS);
  EXPECT_EQ(form().DataAHD.RecordCount(), 4);
  EXPECT_EQ(form().DataAVD.RecordCount(), 3);
  EXPECT_EQ(form().TDBGridAHD.value(0, "ATYPE_ID").asText(), "T00010000003");
  EXPECT_EQ(form().TDBGridAHD.selBookmarks().count(), 0);
  EXPECT_EQ(form().TDBGridAVD.selBookmarks().count(), 0);
  EXPECT_FALSE(form().picHor.lines().empty());
  EXPECT_THAT(form().caption(), ::testing::EndsWith(" 2 records"));
  EXPECT_FALSE(form().NewRow);
  EXPECT_TRUE(form().Command1[frmHDAntEditor::copying].enabled());
}

TEST_F(AntCopyTest, ANameThatFillsTheFieldLosesItsEnd) {
  addPanel(std::string(60, 'x'));
  openOn(0);
  const std::size_t width = static_cast<std::size_t>(form().DataAMS.recordset()->Fields("ANTENNA").Size());
  copy();
  const std::string name = rows("AMST0001", {"ANTENNA"}).back();
  EXPECT_EQ(name, "Copy of " + std::string(std::min<std::size_t>(60, width - 8), 'x'));
  EXPECT_LE(name.size(), width);
}

// The table counts characters of its code page, not bytes of the text.
TEST_F(AntCopyTest, TheEndIsLostByWholeCharacters) {
  std::string name;
  for (int i = 0; i < 60; ++i) name += "\xC3\xA9";  // e with an acute accent
  addPanel(name);
  openOn(0);
  const auto width = static_cast<std::size_t>(form().DataAMS.recordset()->Fields("ANTENNA").Size());
  copy();
  const std::size_t left = std::min<std::size_t>(60, width - 8);
  EXPECT_EQ(rows("AMST0001", {"ANTENNA"}).back(), "Copy of " + name.substr(0, 2 * left));
}

TEST_F(AntCopyTest, ASortOfTheListMeanwhileLosesNoPoints) {
  addPanel("Alpha");
  addPanel("Beta");
  for (int turn = 1; turn <= 6; ++turn) {
    openOn(0);
    const std::size_t antennasBefore = antennas().size(), pointsBefore = azimuths().size();
    int left = turn;
    screen.onTurn = [&] {
      if (--left == 0) form().TDBGridAMS.userHeadClick(form().TDBGridAMS.columnOf("ANTENNA"));
    };
    copy();
    screen.onTurn = nullptr;
    EXPECT_THAT(heard(), IsEmpty()) << turn;
    EXPECT_EQ(antennas().size(), antennasBefore + 1) << turn;
    EXPECT_EQ(azimuths().size(), pointsBefore + 4) << turn;
    EXPECT_THAT(azimuths().back(), StartsWith(rows("AMST0001", {"ATYPE_ID"}).back())) << turn;
  }
}

TEST_F(AntCopyTest, ACopyThatGetsNoIDGetsNoPoints) {
  addPanel("Alpha");
  openOn(0);
  RecordsetPtr other;
  screen.onTurn = [&] {
    if (other || antennas().size() < 2) return;
    other = DBEngine::OpenDatabase(getAntennasPath())->OpenRecordset("select * from AMST0001");
    other->MoveLast();
    other->LockEdits(true);
    other->Edit();
  };
  copy();
  ASSERT_TRUE(other);
  other.reset();
  screen.onTurn = nullptr;
  EXPECT_THAT(heard(), ElementsAre(StartsWith("Error in ")));
  EXPECT_THAT(antennas(), ElementsAre("T00010000001|Alpha", "|Copy of Alpha"));
  EXPECT_EQ(azimuths().size(), 4U);
  EXPECT_EQ(elevations().size(), 3U);
  copy();
  EXPECT_THAT(antennas(), Contains(::testing::EndsWith("4|Copy of Alpha")));
}

TEST_F(AntCopyTest, NullsGetTheirDefaults) {
  addPanel("Alpha");
  openOn(0);
  // Behind the selection, which fills units in.
  setFirst(
      {{"ANTENNA", Value()}, {"GAIN_UN", Value()}, {"FREQ_UN", Value()}, {"POWER", Value()}, {"POWER_UN", Value()}});
  copy();
  EXPECT_EQ(rows("AMST0001", {"ANTENNA", "GAIN", "GAIN_UN", "FREQ_UN", "POWER", "POWER_UN"}).back(),
            "Copy of UNKNOWN ANTENNA|12.5|dBd|MHz||W");
}

TEST_F(AntCopyTest, AnAntennaWithoutPointsIsCopiedWithoutPoints) {
  addPanel("Bare");
  setFirst({{"ATYPE_ID", "T0001BARE"}});
  openOn(0);
  copy();
  EXPECT_THAT(antennas(), ElementsAre("T0001BARE|Bare", "T00010000003|Copy of Bare"));
  EXPECT_EQ(azimuths().size(), 4U);
  EXPECT_EQ(elevations().size(), 3U);
}

TEST_F(AntCopyTest, WithoutASelectionTellsHowToSelectAndWritesNothing) {
  addPanel();
  open();
  copy();
  EXPECT_THAT(heard(),
              ElementsAre("No Antenna Selected: You must select an antenna by clicking the selection button to "
                          "the left of the row to highlight the antenna.\r\n\r\nThen click the copy button to "
                          "make a copy of that antenna."));
  EXPECT_EQ(antennas().size(), 1U);
}

TEST_F(AntCopyTest, CopiesOfCopiesHaveIDsOfTheirOwn) {
  addPanel("A");
  openOn(0);
  copy();
  copy();
  EXPECT_THAT(antennas(), ElementsAre("T00010000001|A", "T00010000003|Copy of A", "T00010000004|Copy of Copy of A"));
  EXPECT_EQ(azimuths().size(), 12U);
}

TEST_F(AntCopyTest, ASecondClickWhileItWorksDoesNothing) {
  addPanel("A");
  openOn(0);
  screen.onTurn = [this] { copy(); };
  copy();
  EXPECT_EQ(antennas().size(), 2U);
}

TEST_F(AntCopyTest, AnEntryUnderWayIsPartOfTheCopy) {
  addPanel("A");
  openOn(0);
  DataGrid& grid = form().TDBGridAMS;
  ASSERT_TRUE(grid.userEdit(0, grid.columnOf("ANTENNA"), "B"));
  copy();
  EXPECT_THAT(antennas(), ElementsAre("T00010000001|B", "T00010000003|Copy of B"));
}

// Typed in dBd, stored in dBi.
TEST_F(AntCopyTest, APointUnderWayIsPartOfTheCopy) {
  addPanel("A");
  openOn(0);
  ASSERT_TRUE(form().TDBGridAHD.userEdit(0, form().azimuth.colGain(), "7"));
  copy();
  EXPECT_THAT(azimuths(), Contains("T00010000001|0|9.15"));
  EXPECT_THAT(azimuths(), Contains("T00010000003|0|9.15"));
  const int row = static_cast<int>(form().DataAVD.RecordCount()) - 1;
  const std::string angle = form().TDBGridAVD.value(row, "VERT_ANGLE").asText();
  ASSERT_TRUE(form().TDBGridAVD.userEdit(row, form().elevation.colGain(), "8"));
  copy();
  EXPECT_THAT(elevations(), Contains("T00010000003|" + angle + "|10.15"));
  EXPECT_THAT(elevations(), Contains("T00010000004|" + angle + "|10.15"));
}

TEST_F(AntCopyTest, AnEntryThatIsRefusedStopsTheCopy) {
  addPanel("A");
  const auto refuse = [](bool& refused) { refused = true; };
  openOn(0);
  DataGrid& list = form().TDBGridAMS;
  list.beforeUpdate.listen(refuse);
  ASSERT_TRUE(list.userEdit(0, list.columnOf("ANTENNA"), "B"));
  copy();
  EXPECT_EQ(antennas().size(), 1U);
  for (const Plane plane : {Plane::azimuth, Plane::elevation}) {
    openOn(0);
    PatternPane& pane = form().pane(plane);
    pane.grid.beforeUpdate.listen(refuse);
    ASSERT_TRUE(pane.grid.userEdit(0, pane.colGain(), "-5"));
    copy();
    EXPECT_EQ(antennas().size(), 1U);
  }
}

TEST_F(AntCopyTest, AFailureHalfwayLeavesTheRowsWrittenAndIsReported) {
  addPanel("A");
  openOn(0);
  screen.onTurn = [this] {
    if (antennas().size() == 2) suite.folder().write("ANTENNAS/AVDT0001.DBF", "damaged");
  };
  copy();
  EXPECT_THAT(heard(), Contains(StartsWith("Error in ")));
  EXPECT_EQ(antennas().size(), 2U);
  EXPECT_EQ(azimuths().size(), 8U);
  EXPECT_TRUE(form().Command1[frmHDAntEditor::copying].enabled());
}

TEST_F(AntCopyTest, CancellingTheProgressLeavesNothingOfTheCopy) {
  // The window comes up behind a few points: in the first cut, and in the second.
  const Cut few{{0, 1}, {1, 1}}, many{{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}, std::vector<double>(12, 1)};
  add("First", 12.5, "dBi", many, few);
  add("Second", 12.5, "dBi", few, many);
  for (const int row : {0, 1}) {
    openOn(row);
    SlowMachine slow;
    const platform::Substitute inPlace(slow);
    ImpatientUser user;
    const DesktopInUse at(user);
    copy();
    EXPECT_THAT(user.formsShown(), ElementsAre("frmProgress (modeless)"));
    EXPECT_EQ(antennas().size(), 2U);
    EXPECT_EQ(azimuths().size(), 14U);
    EXPECT_EQ(elevations().size(), 14U);
    EXPECT_EQ(form().selectedRow(), row);
    EXPECT_EQ(form().TDBGridAMS.dataRowCount(), 2);
  }
}

TEST_F(AntCopyTest, ShowsItsProgressWhereItTakesLong) {
  add("Long", 12.5, "dBi", {{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}, std::vector<double>(12, 1)}, {{0}, {1}});
  openOn(0);
  SlowMachine slow;
  const platform::Substitute inPlace(slow);
  copy();
  EXPECT_EQ(screen.formsShown().back(), "frmProgress (modeless)");
  EXPECT_EQ(azimuths().size(), 24U);
}

}  // namespace
}  // namespace vantrelix::test
