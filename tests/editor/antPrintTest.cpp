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
