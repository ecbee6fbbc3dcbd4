// Filling a cut with evenly spaced angles.
#include "EditorFixture.h"
#include "editor/addSequence.h"
#include "editor/frmGetSequentialValues.h"
#include "foundation/dateTime.h"
#include "tables/RowBatch.h"

namespace vantrelix::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

using Texts = std::array<std::string, 3>;

class AddSequenceTest : public EditorTest {
 protected:
  static constexpr const char* kAdvice =
      "You must select an antenna by clicking the selection button to the left of the row to highlight the "
      "antenna.\r\n\r\n";

  // The editor with the only antenna selected.
  void openOn(const Cut& azimuth, const Cut& elevation, double gain = 12.5, const char* unit = "dBi") {
    add("Panel", gain, unit, azimuth, elevation);
    open();
    select(0);
  }
  // The same, its azimuth cut empty.
  void openOnEmpty() {
    add("Panel", 12.5, "dBi", {{0}, {1}}, {{0}, {12.5}});
    const RecordsetPtr row = DBEngine::OpenDatabase(getAntennasPath())->OpenRecordset("select * from AHDT0001");
    row->Delete();
    open();
    select(0);
  }
  void openOnPanel() { openOn({{0, 90}, {12.5, 4}}, {{-90, 0}, {3, 12.5}}); }
  // What the user enters in the dialog.
  void enter(const Texts& entered) {
    screen.onModal["frmGetSequentialValues"] = [this, entered](Form& shown) {
      auto& dialog = dynamic_cast<frmGetSequentialValues&>(shown);
      place_ = dialog.geometry();
      title_ = dialog.caption();
      offered_ = {dialog.Text1[0].text(), dialog.Text1[1].text(), dialog.Text1[2].text()};
      for (std::size_t i = 0; i < 3; ++i) dialog.Text1[i].userType(entered[i]);
      dialog.Command1[frmGetSequentialValues::continuing].userClick();
    };
  }
  void addAzimuths(const Texts& entered) {
    enter(entered);
    form().Command1[frmHDAntEditor::addingAzimuths].userClick();
  }
  void addElevations(const Texts& entered) {
    enter(entered);
    form().Command1[frmHDAntEditor::addingElevations].userClick();
  }
  static std::vector<std::string> elevations() { return rows("AVDT0001", {"ATYPE_ID", "VERT_ANGLE", "VERT_FIELD"}); }
  // Beside the note that the library is being opened.
  std::vector<std::string> dialogs() const {
    std::vector<std::string> shown = screen.formsShown();
    std::erase(shown, "frmMsgFloat (modeless)");
    return shown;
  }
  static std::string kept(const char* key) { return getINIStr("Antenna Editor", key, "nothing"); }

  Rectangle place_;
  std::string title_;
  Texts offered_;
};

TEST_F(AddSequenceTest, AddsTheMissingAnglesAtTheGainAndLeavesThoseThatAreThere) {
  openOnPanel();
  addAzimuths({"0", "180", "45"});
  EXPECT_THAT(azimuths(), ElementsAre("T00010000001|0|12.5", "T00010000001|90|4", "T00010000001|45|12.5",
                                      "T00010000001|135|12.5", "T00010000001|180|12.5"));
  addElevations({"-90", "90", "90"});
  EXPECT_THAT(elevations(), ElementsAre("T00010000001|-90|3", "T00010000001|0|12.5", "T00010000001|90|12.5"));
  EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(AddSequenceTest, ShowsTheNewRowsBehindTheOthers) {
  openOnPanel();
  const long revision = form().TDBGridAHD.revision();
  addAzimuths({"0", "180", "45"});
  EXPECT_GT(form().TDBGridAHD.revision(), revision);
  EXPECT_EQ(form().TDBGridAHD.dataRowCount(), 5);
  EXPECT_EQ(form().TDBGridAHD.value(4, "HOR_AZ").asNumber(), 180);
  EXPECT_EQ(form().DataAHD.RecordCount(), 5);
}

TEST_F(AddSequenceTest, FromZeroTo360By10Gives37Rows) {
  openOnEmpty();
  addAzimuths({"0", "360", "10"});
  EXPECT_EQ(azimuths().size(), 37U);
  EXPECT_THAT(azimuths(), Contains("T00010000001|360|12.5"));
}

TEST_F(AddSequenceTest, ASecondRunWithTheSameValuesAddsNothing) {
  openOnPanel();
  addAzimuths({"0", "360", "10"});
  const auto before = azimuths();
  addAzimuths({"0", "360", "10"});
  EXPECT_EQ(azimuths(), before);
}

TEST_F(AddSequenceTest, TheStopIsReachedOnlyWhereAStepFallsOnIt) {
  openOnEmpty();
  addAzimuths({"5", "20", "10"});
  EXPECT_THAT(azimuths(), ElementsAre("T00010000001|5|12.5", "T00010000001|15|12.5"));
}

TEST_F(AddSequenceTest, FractionsAreRoundedHalvesToEvenBehindTheChecks) {
  openOnEmpty();
  addAzimuths({"0.5", "5.5", "2.5"});
  EXPECT_THAT(azimuths(),
              ElementsAre("T00010000001|0|12.5", "T00010000001|2|12.5", "T00010000001|4|12.5", "T00010000001|6|12.5"));
  EXPECT_EQ(kept("AzimAngStrt"), "0.5");
}

TEST_F(AddSequenceTest, AnAngleBetweenWholeOnesIsNoneOfTheSequence) {
  openOn({{0.5}, {1}}, {{0}, {1}});
  addAzimuths({"0", "1", "1"});
  EXPECT_EQ(azimuths().size(), 3U);
}

TEST_F(AddSequenceTest, ARelativeAntennaGetsOnes) {
  openOn({{0}, {1}}, {{0}, {1}}, 3, "REL");
  addAzimuths({"0", "10", "10"});
  addElevations({"0", "10", "10"});
  EXPECT_THAT(azimuths(), ElementsAre("T00010000001|0|1", "T00010000001|10|1"));
  EXPECT_THAT(elevations(), ElementsAre("T00010000001|0|1", "T00010000001|10|1"));
}

TEST_F(AddSequenceTest, OffersTheTablesDefaultsAndThenWhatWasTakenLast) {
  openOnPanel();
  addAzimuths({"10", "20", "5"});
  EXPECT_EQ(title_, "Azimuth Values");
  EXPECT_EQ(offered_, (Texts{"0", "360", "1"}));
  EXPECT_EQ(kept("AzimAngStrt"), "10");
  EXPECT_EQ(kept("AzimAngStop"), "20");
  EXPECT_EQ(kept("AzimAngStep"), "5");
  addAzimuths({"10", "20", "5"});
  EXPECT_EQ(offered_, (Texts{"10", "20", "5"}));
  addElevations({"-20", "-10", "5"});
  EXPECT_EQ(title_, "Elevation Values");
  EXPECT_EQ(offered_, (Texts{"-180", "180", "1"}));
  EXPECT_EQ(kept("ElevAngStrt"), "-20");
  EXPECT_EQ(kept("ElevAngStop"), "-10");
  EXPECT_EQ(kept("ElevAngStep"), "5");
}

TEST_F(AddSequenceTest, AStoredLimitThatIsNoNumberIsOfferedAsZero) {
  openOnPanel();
  setINI("Antenna Editor", "AzimAngStep", getDefaultsINI(), "every");
  addAzimuths({"0", "10", "10"});
  EXPECT_EQ(offered_[2], "0");
}

TEST_F(AddSequenceTest, EachCutHasItsOwnLimits) {
  openOnPanel();
  const auto tried = [this](bool elevation, const Texts& entered) {
    int rounds = 0;
    screen.onModal["frmGetSequentialValues"] = [&rounds, entered](Form& shown) {
      auto& dialog = dynamic_cast<frmGetSequentialValues&>(shown);
      if (++rounds > 1) return dialog.Command1[frmGetSequentialValues::cancelling].userClick();
      for (std::size_t i = 0; i < 3; ++i) dialog.Text1[i].userType(entered[i]);
      dialog.Command1[frmGetSequentialValues::continuing].userClick();
    };
    elevation ? AddSeqAVD(form()) : AddSeqAHD(form());
    return heard();
  };
  EXPECT_THAT(tried(false, {"-1", "10", "1"}), ElementsAre("Azimuth Values: Start must be at least 0"));
  EXPECT_THAT(tried(false, {"361", "10", "1"}), ElementsAre("Azimuth Values: Start cannot exceed 360"));
  EXPECT_THAT(tried(false, {"0", "-1", "1"}), ElementsAre("Azimuth Values: Stop must be at least 0"));
  EXPECT_THAT(tried(false, {"0", "361", "1"}), ElementsAre("Azimuth Values: Stop cannot exceed 360"));
  EXPECT_THAT(tried(false, {"0", "10", "0"}), ElementsAre("Azimuth Values: Step must be at least 1"));
  EXPECT_THAT(tried(false, {"0", "10", "361"}), ElementsAre("Azimuth Values: Step cannot exceed 360"));
  EXPECT_THAT(tried(true, {"-181", "10", "1"}), ElementsAre("Elevation Values: Start must be at least -180"));
  EXPECT_THAT(tried(true, {"181", "10", "1"}), ElementsAre("Elevation Values: Start cannot exceed 180"));
  EXPECT_THAT(tried(true, {"0", "-181", "1"}), ElementsAre("Elevation Values: Stop must be at least -180"));
  EXPECT_THAT(tried(true, {"0", "181", "1"}), ElementsAre("Elevation Values: Stop cannot exceed 180"));
  EXPECT_THAT(tried(true, {"0", "10", "0.5"}), ElementsAre("Elevation Values: Step must be at least 1"));
  EXPECT_THAT(tried(true, {"0", "10", "181"}), ElementsAre("Elevation Values: Step cannot exceed 180"));
  EXPECT_EQ(azimuths().size(), 2U);
  EXPECT_EQ(kept("AzimAngStrt"), "nothing");
}

TEST_F(AddSequenceTest, CancelAddsNothingAndKeepsNothing) {
  openOnPanel();
  AddSeqAHD(form());
  EXPECT_THAT(dialogs(), ElementsAre("frmGetSequentialValues"));
  EXPECT_EQ(azimuths().size(), 2U);
  EXPECT_EQ(kept("AzimAngStrt"), "nothing");
}

TEST_F(AddSequenceTest, StandsBelowTheCornerOfTheThumbnail) {
  openOnPanel();
  form().setGeometry({1000, 2000, 9000, 7000});
  form().fraHor.setGeometry({300, 400, 1500, 1500});
  form().fraVer.setGeometry({3000, 500, 1500, 1500});
  addAzimuths({"0", "0", "1"});
  EXPECT_EQ(place_.left, 1400);
  EXPECT_EQ(place_.top, 2500);
  addElevations({"0", "0", "1"});
  EXPECT_EQ(place_.left, 4100);
  EXPECT_EQ(place_.top, 2600);
}

TEST_F(AddSequenceTest, IsCentredOnTheEditorWhereThePlaceDoesNotFit16Bits) {
  openOnPanel();
  form().fraHor.setGeometry({300, 400, 1500, 1500});
  for (const auto& [left, top] : {std::pair{70000, 2000}, std::pair{2000, 70000}, std::pair{-9000, 2000}}) {
    form().setGeometry({left, top, 9000, 7000});
    addAzimuths({"0", "0", "1"});
    EXPECT_EQ(place_.left, left + (9000 - place_.width) / 2);
    EXPECT_EQ(place_.top, top + (7000 - place_.height) / 2);
  }
}

TEST_F(AddSequenceTest, IsCentredOnTheEditorWhereNoWindowShowsTheThumbnail) {
  openOnPanel();
  form().setGeometry({1000, 2000, 9000, 7000});
  addAzimuths({"0", "0", "1"});
  EXPECT_EQ(place_.left, 1000 + (9000 - place_.width) / 2);
}

TEST_F(AddSequenceTest, WithoutASelectedAntennaTellsHowToSelectOne) {
  addPanel();
  open();
  AddSeqAHD(form());
  AddSeqAVD(form());
  EXPECT_THAT(heard(),
              ElementsAre("No Antenna Selected: " + std::string(kAdvice) +
                              "Then click the Add Sequential button to create new azimuths for that antenna.",
                          "No Antenna Selected: " + std::string(kAdvice) +
                              "Then click the Add Sequential button to create new elevation angles for that antenna."));
  EXPECT_THAT(dialogs(), IsEmpty());
}

TEST_F(AddSequenceTest, WithoutRowsShownTellsToSelectTheAntennaAbove) {
  openOnPanel();
  const std::string text =
      "No Antenna Selected.: Select the antenna above by clicking on the selection button to the left of the row.  "
      "When the antenna is selected you can add and edit azimuths.";
  form().DataAHD.clear();
  form().DataAVD.clear();
  AddSeqAHD(form());
  AddSeqAVD(form());
  EXPECT_THAT(heard(), ElementsAre(text, text));
  EXPECT_EQ(screen.shown().back().message.icon, MsgIcon::critical);
  EXPECT_THAT(dialogs(), IsEmpty());
}

TEST_F(AddSequenceTest, AnAntennaWithoutAnIDGetsNoPoints) {
  openOnPanel();
  // Another program takes it away, so that the points are shown still.
  const RecordsetPtr row = DBEngine::OpenDatabase(getAntennasPath())->OpenRecordset("select * from AMST0001");
  row->Edit();
  row->put("ATYPE_ID", Value());
  row->Update();
  const auto before = azimuths();
  addAzimuths({"0", "360", "10"});
  EXPECT_EQ(azimuths(), before);
  EXPECT_THAT(heard(), Contains(StartsWith("No Antenna Selected.: Select the antenna above")));
}

TEST_F(AddSequenceTest, WarnsOfAnAntennaInItsDefaultStateAndStopsWhereTheUserDoes) {
  openOn({{0}, {0}}, {{0}, {0}}, 0, "dBd");
  const RecordsetPtr row = DBEngine::OpenDatabase(getAntennasPath())->OpenRecordset("select * from AMST0001");
  row->Edit();
  row->put("F_LOW", 0);
  row->put("F_HIGH", 0);
  row->Update();
  open();
  select(0);
  screen.answers = {MsgAnswer::cancel, MsgAnswer::cancel, MsgAnswer::ok};
  addAzimuths({"0", "90", "90"});
  addElevations({"0", "90", "90"});
  EXPECT_THAT(dialogs(), IsEmpty());
  const auto questions = heard();
  ASSERT_EQ(questions.size(), 2U);
  EXPECT_THAT(questions[0], ::testing::HasSubstr("You may want to set these values before adding azimuth values."));
  EXPECT_THAT(questions[1], ::testing::HasSubstr("You may want to set these values before adding elevation angles."));
  addAzimuths({"0", "90", "90"});
  EXPECT_EQ(azimuths().size(), 2U);
}

TEST_F(AddSequenceTest, TellsThatItIsAtWorkAndClearsThatBehindIt) {
  openOnPanel();
  std::vector<std::string> told;
  form().lblAzPat.changed.listen([&] { told.push_back(form().lblAzPat.caption()); });
  form().lblElPat.changed.listen([&] { told.push_back(form().lblElPat.caption()); });
  const int turns = screen.quietTurns();
  addAzimuths({"0", "0", "1"});
  EXPECT_GT(screen.quietTurns(), turns);
  addElevations({"0", "0", "1"});
  EXPECT_THAT(told, ElementsAre("Adding azimuths...", "", "Adding angles...", ""));
}

TEST_F(AddSequenceTest, AFailureIsReportedAndLeavesTheFormUsable) {
  openOnPanel();
  const auto before = azimuths();
  form().DataAHD.recordset()->Close();
  addAzimuths({"0", "360", "10"});
  EXPECT_THAT(heard(), Contains(StartsWith("Error in ")));
  EXPECT_EQ(form().lblAzPat.caption(), "");
  EXPECT_EQ(azimuths(), before);
}

TEST_F(AddSequenceTest, AnEntryUnderWayIsStoredFirst) {
  openOnPanel();
  DataGrid& grid = form().TDBGridAHD;
  grid.setColumns({{.caption = "Azimuth", .dataField = "HOR_AZ"}, {.caption = "Gain", .dataField = "HOR_FIELD"}});
  ASSERT_TRUE(grid.userMoveTo(1, 0));
  ASSERT_TRUE(grid.userEdit(1, 0, "45"));
  addAzimuths({"0", "90", "45"});
  EXPECT_THAT(azimuths(), ElementsAre("T00010000001|0|12.5", "T00010000001|45|4", "T00010000001|90|12.5"));
}

TEST_F(AddSequenceTest, AnEntryThatIsRefusedStopsTheSequence) {
  openOnPanel();
  const auto refuse = [](bool& refused) { refused = true; };
  DataGrid& list = form().TDBGridAMS;
  const auto refusing = list.beforeUpdate.connect(refuse);
  ASSERT_TRUE(list.userEdit(0, list.columnOf("ANTENNA"), "B"));
  addAzimuths({"0", "90", "45"});
  EXPECT_EQ(azimuths().size(), 2U);
  list.cancelUpdate();
  form().TDBGridAHD.beforeUpdate.listen(refuse);
  ASSERT_TRUE(form().TDBGridAHD.userEdit(0, form().azimuth.colGain(), "-5"));
  addAzimuths({"0", "90", "45"});
  EXPECT_EQ(azimuths().size(), 2U);
  EXPECT_THAT(dialogs(), IsEmpty());
}

}  // namespace
}  // namespace vantrelix::test
