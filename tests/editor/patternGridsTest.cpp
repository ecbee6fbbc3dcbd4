#include "editor/EditorFixture.h"

namespace vantrelix {
namespace {

using test::Cut;
using test::EditorTest;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// What SetAntPreview gives.
struct Preview {
  std::string name, gainUn;
  double gain = -1, hLow = -1, vLow = -1;
  std::int16_t nHor = -1, nVer = -1;
  std::vector<double> az, azGain, el, elGain;
  bool failed = true;
};

class PatternGridsTest : public EditorTest {
 protected:
  Preview preview() {
    Preview got;
    form().SetAntPreview(got.name, got.gain, got.gainUn, got.hLow, got.vLow, got.nHor, got.az, got.azGain, got.nVer,
                         got.el, got.elGain, got.failed);
    return got;
  }
  static std::vector<std::string> angles(const PatternPane& pane) {
    std::vector<std::string> texts;
    for (int row = 0; row < pane.grid.dataRowCount(); ++row) texts.push_back(pane.grid.cellText(row, pane.colAngle()));
    return texts;
  }
  static std::string keptOrder() { return getINIStr("Antenna Editor", "VertPatSort", "none"); }
  static constexpr std::size_t kAxes = 2;
};

// --- What the thumbnails get.

TEST_F(PatternGridsTest, ThePreviewHasBothCutsInTheAntennasOwnUnits) {
  addPanel();
  open();
  select(0);
  const Preview got = preview();
  EXPECT_FALSE(got.failed);
  EXPECT_EQ(got.name, "Panel");
  EXPECT_EQ(got.gain, 12.5);
  EXPECT_EQ(got.gainUn, "dBi");
  EXPECT_EQ(got.nHor, 4);
  EXPECT_THAT(got.az, ElementsAre(0, 90, 180, 270));
  EXPECT_THAT(got.azGain, ElementsAre(12.5, 4, -20, 4));
  EXPECT_EQ(got.hLow, -20);
  EXPECT_EQ(got.nVer, 3);
  EXPECT_THAT(got.el, ElementsAre(-90, 0, 90));
  EXPECT_THAT(got.elGain, ElementsAre(-12, 12.5, -15));
  EXPECT_EQ(got.vLow, -15);
}

TEST_F(PatternGridsTest, TheLowestGainOfACutWithoutNegativeOnesIsZero) {
  add("Positive", 10, "dBd", {{0, 90}, {10, 4}}, {{0, 1}, {10, 2}});
  open();
  select(0);
  EXPECT_EQ(preview().hLow, 0);
  EXPECT_EQ(preview().vLow, 0);
}

TEST_F(PatternGridsTest, PointsWithABlankAreLeftOut) {
  addPanel();
  open();
  select(0);
  form().TDBGridAHD.setValue(1, "HOR_FIELD", Value());
  form().TDBGridAVD.setValue(2, "VERT_ANGLE", Value());
  const Preview got = preview();
  EXPECT_EQ(got.nHor, 3);
  EXPECT_THAT(got.az, ElementsAre(0, 180, 270));
  EXPECT_THAT(got.azGain, ElementsAre(12.5, -20, 4));
  EXPECT_EQ(got.nVer, 2);
  EXPECT_EQ(got.vLow, -12);
}

TEST_F(PatternGridsTest, ThePreviewIsReadAnew) {
  addPanel();
  open();
  select(0);
  const RecordsetPtr other = DBEngine::OpenDatabase(getAntennasPath())->OpenRecordset("select * from AHDT0001");
  other->Edit();
  other->put("HOR_AZ", 300);
  other->Update();
  other->AddNew();
  other->put("ATYPE_ID", kFirst);
  other->put("HOR_AZ", 45);
  other->put("HOR_FIELD", 1);
  other->Update();
  EXPECT_THAT(preview().az, ElementsAre(45, 90, 180, 270, 300));
  EXPECT_THAT(angles(form().azimuth), ElementsAre("45.000", "90.000", "180.000", "270.000", "300.000"));
}

TEST_F(PatternGridsTest, AFailureLeavesThePreviewMarkedAsFailed) {
  addPanel();
  open();
  select(0);
  Preview got;
  got.failed = false;
  form().DataAVD.recordset()->Close();
  EXPECT_THROW(form().SetAntPreview(got.name, got.gain, got.gainUn, got.hLow, got.vLow, got.nHor, got.az, got.azGain,
                                    got.nVer, got.el, got.elGain, got.failed),
               RunTimeFailure);
  EXPECT_TRUE(got.failed);
}

// --- The thumbnails.

TEST_F(PatternGridsTest, TheThumbnailsShowTheCutsInThatColumnsWay) {
  add("Plain", 10, "dBd", {{0, 90, 180, 270}, {10, 0, -10, 0}}, {{0, 90}, {10, -40}});
  open();
  select(0);
  const PictureBox& azimuth = form().picHor;
  EXPECT_NEAR(azimuth.scale().left, -21, 1e-9);
  ASSERT_EQ(azimuth.lines().size(), kAxes + 3);
  EXPECT_NEAR(azimuth.lines()[2].y1, 20, 1e-6);
  EXPECT_NEAR(azimuth.lines()[2].x2, 10, 1e-6);
  EXPECT_EQ(azimuth.lines()[2].colour, color::red);
  // A gain below the lowest one drawn falls on the origin, and 10 above it is 40 away.
  EXPECT_NEAR(form().picVer.scale().left, -42, 1e-9);
  EXPECT_NEAR(form().picVer.lines()[2].x2, 0, 1e-6);
  EXPECT_NEAR(form().picVer.lines()[2].y2, 0, 1e-6);
}

TEST_F(PatternGridsTest, AFlatCutKeepsItsFloor) {
  add("Omni", -3, "dBd", {{0, 120, 240}, {-3, -3, -3}}, {{}, {}});
  open();
  select(0);
  EXPECT_NEAR(form().picHor.scale().left, -1.05, 1e-9);
  EXPECT_NEAR(form().picHor.lines()[2].y1, 0, 1e-9);
  EXPECT_THAT(form().picVer.lines(), IsEmpty());
}

TEST_F(PatternGridsTest, AGapOfTwentyFiveDegreesIsClosedAndHalfACircleStaysOpen) {
  add("Round", 10, "dBd", {{0, 120, 240, 335}, {10, 10, 10, 10}}, {{0, 90, 180}, {10, 10, 10}});
  add("Half", 10, "dBd", {{0, 90, 180}, {10, 10, 10}}, {{}, {}});
  open();
  select(1);
  EXPECT_EQ(form().picHor.lines().size(), kAxes + 4);
  select(0);
  EXPECT_EQ(form().picHor.lines().size(), kAxes + 2);
}

TEST_F(PatternGridsTest, BothRefreshButtonsShowWhatHasChanged) {
  addPanel();
  open();
  select(0);
  for (const auto button : {frmHDAntEditor::refreshingAzimuth, frmHDAntEditor::refreshingElevation}) {
    const auto before = form().picHor.lines();
    form().TDBGridAHD.setValue(1, "HOR_FIELD", static_cast<int>(button));
    EXPECT_EQ(form().picHor.lines(), before);
    form().Command1[button].userClick();
    EXPECT_NE(form().picHor.lines(), before);
  }
}

TEST_F(PatternGridsTest, WithoutAnAntennaTheyStayBlank) {
  addPanel();
  open();
  form().Command1[frmHDAntEditor::refreshingAzimuth].userClick();
  EXPECT_THAT(heard(), IsEmpty());
  EXPECT_THAT(form().picHor.lines(), IsEmpty());
}

TEST_F(PatternGridsTest, ClearingShowsNeitherRowsNorThumbnails) {
  addPanel();
  open();
  select(0);
  form().clearPatterns();
  EXPECT_EQ(form().TDBGridAHD.dataRowCount() + form().TDBGridAVD.dataRowCount(), 0);
  EXPECT_THAT(form().picHor.lines(), IsEmpty());
  EXPECT_THAT(form().picVer.lines(), IsEmpty());
}

// --- The order of the elevation grid.

TEST_F(PatternGridsTest, TheMenuTurnsTheElevationsRoundAndKeepsTheOrder) {
  addPanel();
  open();
  select(0);
  form().mnuConfigVertSortDESC.click();
  EXPECT_EQ(form().VertSort, "DESC");
  EXPECT_EQ(keptOrder(), "DESC");
  EXPECT_TRUE(form().mnuConfigVertSortDESC.checked());
  EXPECT_FALSE(form().mnuConfigVertSortASC.checked());
  EXPECT_THAT(angles(form().elevation), ElementsAre("90.000", "0.000", "-90.000"));
  EXPECT_EQ(form().fraAVD.caption(), "El Pat: Panel");
  form().mnuConfigVertSortASC.click();
  EXPECT_EQ(keptOrder(), "ASC");
  EXPECT_FALSE(form().mnuConfigVertSortDESC.checked());
  EXPECT_TRUE(form().mnuConfigVertSortASC.checked());
  EXPECT_THAT(angles(form().elevation), ElementsAre("-90.000", "0.000", "90.000"));
  EXPECT_THAT(angles(form().azimuth), testing::SizeIs(4));
}

TEST_F(PatternGridsTest, AnOrderChosenWithoutAnAntennaServesTheNextOne) {
  addPanel();
  open();
  form().mnuConfigVertSortDESC.click();
  EXPECT_THAT(heard(), IsEmpty());
  EXPECT_FALSE(form().DataAVD.hasRecordset());
  select(0);
  EXPECT_THAT(angles(form().elevation), ElementsAre("90.000", "0.000", "-90.000"));
}

TEST_F(PatternGridsTest, AnEntryIsStoredBeforeTheRowsTurnRound) {
  addPanel();
  open();
  select(0);
  ASSERT_TRUE(form().TDBGridAVD.userEdit(2, form().elevation.colAngle(), "80"));
  form().mnuConfigVertSortDESC.click();
  EXPECT_THAT(angles(form().elevation), ElementsAre("80.000", "0.000", "-90.000"));
}

TEST_F(PatternGridsTest, ATableThatIsHeldLeavesTheElevationsAsTheyAre) {
  addPanel();
  open();
  select(0);
  const std::string path = setPathName(getAntennasPath(), "AVDT0001.DBF");
  platform::current().rename(path, path + ".kept");
  form().mnuConfigVertSortDESC.click();
  EXPECT_THAT(heard(), ElementsAre(HasSubstr("There is no table")));
  EXPECT_THAT(angles(form().elevation), ElementsAre("-90.000", "0.000", "90.000"));
}

}  // namespace
}  // namespace vantrelix
