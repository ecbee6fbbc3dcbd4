// The print tabulations.
#include "EditorFixture.h"
#include "dialogs/PrtOutUtils.h"
#include "editor/antPrint.h"

namespace vantrelix::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class AntPrintTest : public EditorTest {
 protected:
  AntPrintTest() { setPrintProgram("true"); }
  ~AntPrintTest() override { setPrintProgram(""); }

  static std::string printed() { return platform::readWholeFile(setPathName(getWorkPath(), "QVPrnFil.TXT")); }
};

TEST_F(AntPrintTest, TheAzimuthTabulationStandsUnderItsHeadings) {
  add("Panel", 12.5, "dBi", {{0, 90.25}, {12.5, -40.125}}, {{-5, 5}, {1, 2}});
  open(" ", 0, kFirst);
  form().Command1[frmHDAntEditor::printingAzimuth].userClick();
  EXPECT_EQ(printed(), "Panel\r\n12.50 dBi\r\n  AZIM   HOR FIELD\r\n 0.000      12.500\r\n90.250     -40.125\r\n");
}

TEST_F(AntPrintTest, TheElevationTabulationStandsUnderItsHeadings) {
  add("Panel", 12.5, "dBi", {{0, 90}, {12.5, 1}}, {{-170.5, 5}, {1, 2}});
  open(" ", 0, kFirst);
  form().Command1[frmHDAntEditor::printingElevation].userClick();
  EXPECT_EQ(printed(), "Panel\r\n12.50 dBi\r\n ANGLE   VER FIELD\r\n-170.500       1.000\r\n 5.000       2.000\r\n");
}

TEST_F(AntPrintTest, ACutWithoutRowsHasItsHeadingsAlone) {
  add("Flat", 0, "dBd", {{0}, {0}}, {{}, {}});
  open(" ", 0, kFirst);
  form().Command1[frmHDAntEditor::printingElevation].userClick();
  EXPECT_EQ(printed(), "Flat\r\n0.00 dBd\r\n ANGLE   VER FIELD\r\n");
}

TEST_F(AntPrintTest, WhatRoundsTo0HasNoSign) {
  add("Panel", -0.001, "dBi", {{0, 90}, {-0.0001, -0.0006}}, {{-0.0004}, {-1}});
  open(" ", 0, kFirst);
  EXPECT_EQ(tabulation(form(), 0),
            "Panel\r\n0.00 dBi\r\n  AZIM   HOR FIELD\r\n 0.000       0.000\r\n90.000      -0.001\r\n");
  EXPECT_EQ(tabulation(form(), 1), "Panel\r\n0.00 dBi\r\n ANGLE   VER FIELD\r\n 0.000      -1.000\r\n");
}

TEST_F(AntPrintTest, WhatStandsInACellIsStoredFirstAndWhatCannotBeIsTold) {
  addPanel();
  open(" ", 0, kFirst);
  DataGrid& points = form().TDBGridAHD;
  ASSERT_TRUE(points.userEdit(0, points.columnOf("HOR_FIELD"), "2.5"));
  form().Command1[frmHDAntEditor::printingAzimuth].userClick();
  EXPECT_FALSE(points.dataChanged());
  const std::string before = printed();
  EXPECT_THAT(before, testing::HasSubstr(" 0.000       4.650\r\n"));
  ASSERT_TRUE(points.userEdit(0, points.columnOf("HOR_FIELD"), "much"));
  form().Command1[frmHDAntEditor::printingAzimuth].userClick();
  EXPECT_THAT(heard(), testing::SizeIs(1));
  EXPECT_EQ(printed(), before);
}

TEST_F(AntPrintTest, OfSeveralSelectedAntennasTheCurrentOneIsPrinted) {
  addPanel("First");
  addPanel("Second");
  open();
  select(1);
  form().TDBGridAMS.selBookmarks().add(form().TDBGridAMS.bookmarkOf(0));
  form().Command1[frmHDAntEditor::printingAzimuth].userClick();
  EXPECT_THAT(printed(), testing::StartsWith("Second\r\n"));
  EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(AntPrintTest, ThereIsNoThirdCut) {
  addPanel();
  open(" ", 0, kFirst);
  AntPrint(form(), 2);
  EXPECT_EQ(tabulation(form(), -1), "");
  EXPECT_THROW(printed(), RunTimeFailure);
}

TEST_F(AntPrintTest, WithoutASelectionItNamesTheCopyButton) {
  addPanel();
  open();
  form().Command1[frmHDAntEditor::printingAzimuth].userClick();
  EXPECT_THAT(heard(), ElementsAre("No Antenna Selected: You must select an antenna by clicking the selection button "
                                   "to the left of the row to highlight the antenna.\r\n\r\nThen click the copy "
                                   "button to make a copy of that antenna."));
}

TEST_F(AntPrintTest, APrintFileThatCannotBeWrittenIsTold) {
  addPanel();
  open(" ", 0, kFirst);
  std::filesystem::create_directories(platform::current().toMachine(setPathName(getWorkPath(), "QVPrnFil.TXT")));
  form().Command1[frmHDAntEditor::printingAzimuth].userClick();
  EXPECT_EQ(heard().size(), 1U);
}

TEST_F(AntPrintTest, PlotsAreNotMadeAndTheirButtonsNotShown) {
  addPanel();
  open(" ", 0, kFirst);
  AntPlot(form(), 0);
  AntPlot(form(), 1);
  EXPECT_THAT(heard(), IsEmpty());
  EXPECT_FALSE(form().Command1[frmHDAntEditor::plottingAzimuth].visible());
  EXPECT_FALSE(form().Command1[frmHDAntEditor::plottingElevation].visible());
}

}  // namespace
}  // namespace vantrelix::test
