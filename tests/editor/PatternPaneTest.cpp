#include <iostream>
#include <limits>
#include <sstream>

#include "editor/EditorFixture.h"
#include "foundation/regional.h"

namespace vantrelix {
namespace {

using test::Cut;
using test::EditorTest;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kAzimuthTitle = "Invalid Azimuth Value";
constexpr const char* kAngleTitle = "Invalid Angle Value";

// What is written to the debugger's log meanwhile.
class DebugLog {
 public:
  std::string text() const { return written_.str(); }
  DebugLog() : former_(std::clog.rdbuf(written_.rdbuf())) {}
  ~DebugLog() { std::clog.rdbuf(former_); }
  DebugLog(const DebugLog&) = delete;
  DebugLog& operator=(const DebugLog&) = delete;

 private:
  std::ostringstream written_;
  std::streambuf* former_;
};

class PatternPaneTest : public EditorTest {
 protected:
  void openPanel() {
    addPanel();
    open();
    select(0);
  }
  PatternPane& az() { return form().azimuth; }
  PatternPane& el() { return form().elevation; }
  static std::vector<std::string> column(const PatternPane& pane, int column) {
    std::vector<std::string> texts;
    for (int row = 0; row < pane.grid.dataRowCount(); ++row) texts.push_back(pane.grid.cellText(row, column));
    return texts;
  }
  static bool typeAngle(PatternPane& pane, int row, const std::string& text) {
    return pane.grid.userEdit(row, pane.colAngle(), text);
  }
  static bool typeGain(PatternPane& pane, int row, const std::string& text) {
    return pane.grid.userEdit(row, pane.colGain(), text);
  }
  // For the forms to come.
  static void displayIn(const std::string& units) {
    setINI("System Units", "Antenna Gain Units", getDefaultsINI(), units);
  }
};

TEST_F(PatternPaneTest, EachGridHasItsColumnsWithCaptionsAndFormats) {
  openPanel();
  for (PatternPane* pane : {&az(), &el()}) {
    const DataGrid& grid = pane->grid;
    ASSERT_EQ(grid.columnCount(), 3);
    EXPECT_EQ(pane->colID(), grid.columnOf("ATYPE_ID"));
    EXPECT_EQ(pane->colAngle(), grid.columnOf(pane->plane.angleField));
    EXPECT_EQ(pane->colGain(), grid.columnOf(pane->plane.gainField));
    EXPECT_FALSE(grid.column(pane->colID()).visible);
    EXPECT_TRUE(grid.column(pane->colAngle()).visible);
    EXPECT_TRUE(grid.column(pane->colGain()).visible);
    EXPECT_EQ(grid.column(pane->colAngle()).numberFormat, "##0.000");
    EXPECT_EQ(grid.column(pane->colGain()).numberFormat, kFormatTextEvent);
    EXPECT_EQ(grid.column(pane->colGain()).caption, "Gain");
  }
  EXPECT_EQ(az().grid.column(az().colAngle()).caption, "Azimuth");
  EXPECT_EQ(el().grid.column(el().colAngle()).caption, "Angle");
  EXPECT_EQ(az().plane.angleField, std::string("HOR_AZ"));
  EXPECT_EQ(el().plane.gainField, std::string("VERT_FIELD"));
}

TEST_F(PatternPaneTest, TheIDColumnsShowWhereTheSettingSaysSo) {
  setINI("Antenna Editor", "ShowID", getSuiteINI(), "-1");
  openPanel();
  for (PatternPane* pane : {&az(), &el()}) {
    EXPECT_TRUE(pane->grid.column(pane->colID()).visible);
    EXPECT_EQ(pane->grid.cellText(0, pane->colID()), kFirst);
  }
}

TEST_F(PatternPaneTest, ColumnsComeBackAsWideAsTheyWereButNoneIsHidden) {
  setINI("frmHDAntEditor", "TDBGridAHD Col Widths", getDefaultsINI(), "100|2200|3300");
  setINI("frmHDAntEditor", "TDBGridAHD Col Visible", getDefaultsINI(), "-1|0|0");
  openPanel();
  EXPECT_EQ(az().grid.column(az().colAngle()).width, 2200);
  EXPECT_EQ(az().grid.column(az().colGain()).width, 3300);
  EXPECT_TRUE(az().grid.column(az().colAngle()).visible);
  EXPECT_TRUE(az().grid.column(az().colGain()).visible);
  EXPECT_FALSE(az().grid.column(az().colID()).visible);
  EXPECT_EQ(el().grid.column(el().colAngle()).width, kGridColumnWidth);
}

TEST_F(PatternPaneTest, ValuesShowInTheUnitsOfDisplay) {
  displayIn("dBd");
  openPanel();
  EXPECT_THAT(column(az(), az().colAngle()), ElementsAre("0.000", "90.000", "180.000", "270.000"));
  EXPECT_THAT(column(az(), az().colGain()), ElementsAre("10.350", "1.850", "-22.150", "1.850"));
  EXPECT_THAT(column(el(), el().colAngle()), ElementsAre("-90.000", "0.000", "90.000"));
  EXPECT_THAT(column(el(), el().colGain()), ElementsAre("-14.150", "10.350", "-17.150"));
}

TEST_F(PatternPaneTest, RelativeValuesShowAtTheGainOfTheAntenna) {
  displayIn("dBd");
  add("Relative", 10, "REL", {{0, 90, 180}, {1, 0.5, 0}}, {{}, {}});
  open();
  select(0);
  EXPECT_THAT(column(az(), az().colGain()), ElementsAre("10.000", "3.979", "0.000"));
}

TEST_F(PatternPaneTest, ABlankValueShowsAsBlank) {
  openPanel();
  az().grid.setValue(1, "HOR_FIELD", Value());
  az().grid.setValue(2, "HOR_AZ", Value());
  EXPECT_THAT(column(az(), az().colGain()), ElementsAre(testing::_, "", testing::_, testing::_));
  EXPECT_EQ(az().grid.cellText(2, az().colAngle()), "");
  EXPECT_EQ(az().grid.cellText(4, az().colGain()), "");
}

TEST_F(PatternPaneTest, APointThatAnotherProgramDeletedReadsAsBlankUntilTheNextQuery) {
  openPanel();
  const RecordsetPtr other = DBEngine::OpenDatabase(getAntennasPath())->OpenRecordset("select * from AHDT0001");
  other->MoveNext();
  other->Delete();
  EXPECT_EQ(az().grid.cellText(1, az().colGain()), "");
  EXPECT_EQ(az().grid.cellText(1, az().colAngle()), "");
  form().AntPreview();
  EXPECT_THAT(column(az(), az().colAngle()), ElementsAre("0.000", "180.000", "270.000"));
}

// --- Angles.

TEST_F(PatternPaneTest, AnAzimuthOutsideTheCircleIsRefused) {
  openPanel();
  for (const char* text : {"360", "-0.001", "-1", "720"}) {
    EXPECT_FALSE(typeAngle(az(), 1, text)) << text;
    EXPECT_THAT(heard(), ElementsAre(std::string(kAzimuthTitle) +
                                     ": The azimuth value must be greater than or equal to zero and less than 360."));
    EXPECT_EQ(az().grid.cellText(1, az().colAngle()), "90.000");
    EXPECT_FALSE(az().grid.dataChanged());
  }
  EXPECT_THAT(azimuths(), testing::Contains(std::string(kFirst) + "|90|4"));
}

TEST_F(PatternPaneTest, AzimuthsUpToTheLimitAreTaken) {
  openPanel();
  EXPECT_TRUE(typeAngle(az(), 3, "359.999"));
  EXPECT_TRUE(typeAngle(az(), 0, "0"));
  EXPECT_TRUE(az().grid.update());
  EXPECT_THAT(heard(), IsEmpty());
  EXPECT_THAT(azimuths(), testing::Contains(std::string(kFirst) + "|359.999|4"));
}

TEST_F(PatternPaneTest, AnElevationMayReachBothEnds) {
  openPanel();
  for (const char* text : {"180", "-180"}) EXPECT_TRUE(typeAngle(el(), 0, text)) << text;
  EXPECT_THAT(heard(), IsEmpty());
  for (const char* text : {"180.001", "-180.001"}) {
    EXPECT_FALSE(typeAngle(el(), 0, text)) << text;
    EXPECT_THAT(heard(), ElementsAre(std::string(kAngleTitle) +
                                     ": The vertical angle value must be greater than or equal to -180 and less than "
                                     "or equal to +180."));
  }
  EXPECT_EQ(el().grid.cellText(0, el().colAngle()), "-180.000");
}

TEST_F(PatternPaneTest, AnAngleThatIsNoNumberIsRefusedByTheTableAndStaysInTheCell) {
  openPanel();
  EXPECT_TRUE(typeAngle(az(), 1, "north"));
  EXPECT_THROW(az().grid.update(), RunTimeFailure);
  EXPECT_TRUE(az().grid.dataChanged());
  EXPECT_THAT(azimuths(), testing::Contains(std::string(kFirst) + "|90|4"));
}

// --- Gains.

TEST_F(PatternPaneTest, AGainUpToThatOfTheAntennaIsTakenInTheUnitsOfDisplay) {
  displayIn("dBd");
  openPanel();
  EXPECT_TRUE(typeGain(az(), 1, "10.350"));
  EXPECT_TRUE(typeGain(az(), 2, "-5"));
  EXPECT_TRUE(az().grid.update());
  EXPECT_TRUE(typeGain(el(), 2, "2"));
  EXPECT_TRUE(el().grid.update());
  EXPECT_THAT(heard(), IsEmpty());
  EXPECT_THAT(azimuths(), ElementsAre(std::string(kFirst) + "|0|12.5", std::string(kFirst) + "|90|12.5",
                                      std::string(kFirst) + "|180|-2.85", std::string(kFirst) + "|270|4"));
  EXPECT_THAT(rows("AVDT0001", {"VERT_ANGLE", "VERT_FIELD"}), ElementsAre("-90|-12", "0|12.5", "90|4.15"));
  EXPECT_EQ(az().grid.cellText(2, az().colGain()), "-5.000");
}

TEST_F(PatternPaneTest, AGainAboveThatOfTheAntennaIsRefused) {
  displayIn("dBd");
  openPanel();
  const std::string hint = "You can change the antenna gain above first, then enter the value for the ";
  EXPECT_FALSE(typeGain(az(), 1, "10.351"));
  EXPECT_THAT(heard(), ElementsAre("Invalid Gain Value: The azimuth gain values may not be greater than the antenna "
                                   "gain specified above." +
                                   std::string(kBlankLine) + hint + "azimuth gain."));
  EXPECT_FALSE(typeGain(el(), 1, "11"));
  EXPECT_THAT(heard(), ElementsAre("Invalid Gain Value: The elevation gain values may not be greater than the antenna "
                                   "gain specified above." +
                                   std::string(kBlankLine) + hint + "elevation gain."));
  EXPECT_EQ(az().grid.cellText(1, az().colGain()), "1.850");
  EXPECT_FALSE(az().grid.dataChanged());
}

TEST_F(PatternPaneTest, AGainTypedAboveCountsAtOnce) {
  displayIn("dBi");
  openPanel();
  ASSERT_TRUE(form().TDBGridAMS.userEdit(0, form().TDBGridAMS.columnOf("GAIN"), "14"));
  EXPECT_TRUE(typeGain(az(), 1, "13.5"));
  EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(PatternPaneTest, RelativeValuesAreTypedInDecibels) {
  displayIn("dBd");
  add("Relative", 10, "REL", {{0, 90}, {1, 0.5}}, {{}, {}});
  open();
  select(0);
  EXPECT_TRUE(typeGain(az(), 1, "-10"));
  EXPECT_TRUE(az().grid.update());
  EXPECT_THAT(azimuths(), testing::Contains(std::string(kFirst) + "|90|0.1"));
  EXPECT_EQ(az().grid.cellText(1, az().colGain()), "-10.000");
}

TEST_F(PatternPaneTest, ARelativeZeroStaysZero) {
  displayIn("REL");
  add("Relative", 10, "REL", {{0, 90}, {1, 0.5}}, {{}, {}});
  open();
  select(0);
  EXPECT_EQ(az().grid.cellText(1, az().colGain()), "0.500");
  EXPECT_TRUE(typeGain(az(), 1, "0"));
  EXPECT_TRUE(az().grid.update());
  EXPECT_THAT(azimuths(), testing::Contains(std::string(kFirst) + "|90|0"));
}

TEST_F(PatternPaneTest, AGainThatIsNoNumberIsRefusedByTheTableAndABlankEmptiesTheCell) {
  openPanel();
  EXPECT_TRUE(typeGain(az(), 1, "loud"));
  EXPECT_THROW(az().grid.update(), RunTimeFailure);
  EXPECT_TRUE(az().grid.userCancelRow());
  EXPECT_TRUE(typeGain(az(), 1, ""));
  EXPECT_TRUE(az().grid.update());
  EXPECT_THAT(azimuths(), testing::Contains(std::string(kFirst) + "|90|"));
}

TEST_F(PatternPaneTest, EntriesGoToTheDebuggersLog) {
  openPanel();
  const DebugLog log;
  typeAngle(az(), 1, "91.50");
  typeGain(el(), 1, "99");
  EXPECT_EQ(log.text(),
            "TDBGridAHD_BeforeColUpdate strvalue |91.50| dvalue = 91.5\n"
            "TDBGridAVD_BeforeColUpdate strvalue |99| dvalue = 99\n");
}

TEST_F(PatternPaneTest, AnIDIsTakenAsItIsTyped) {
  setINI("Antenna Editor", "ShowID", getSuiteINI(), "-1");
  openPanel();
  EXPECT_TRUE(az().grid.userEdit(0, az().colID(), "999"));
  EXPECT_TRUE(az().grid.update());
  EXPECT_THAT(heard(), IsEmpty());
  EXPECT_THAT(azimuths(), testing::Contains("999|0|12.5"));
}

// --- New rows.

TEST_F(PatternPaneTest, ANewPointGetsTheIDAndTheGainOfItsAntenna) {
  displayIn("dBd");
  addPanel("First");
  addPanel("Second");
  open();
  select(1);
  EXPECT_TRUE(typeAngle(az(), 4, "45"));
  EXPECT_EQ(az().grid.cellText(4, az().colGain()), "10.350");
  EXPECT_TRUE(az().grid.update());
  EXPECT_TRUE(typeAngle(el(), 3, "10"));
  EXPECT_TRUE(typeGain(el(), 3, "3"));
  EXPECT_TRUE(el().grid.update());
  EXPECT_EQ(azimuths().back(), std::string(kSecond) + "|45|12.5");
  EXPECT_EQ(rows("AVDT0001", {"ATYPE_ID", "VERT_ANGLE", "VERT_FIELD"}).back(), std::string(kSecond) + "|10|5.15");
}

TEST_F(PatternPaneTest, APointThatIsRefusedBeginsNoRow) {
  openPanel();
  EXPECT_FALSE(typeAngle(az(), 4, "400"));
  EXPECT_FALSE(az().grid.dataChanged());
  EXPECT_TRUE(az().grid.update());
  EXPECT_EQ(azimuths().size(), 4U);
}

TEST_F(PatternPaneTest, WithoutOneSelectedAntennaAnEditSelectsTheCurrentOneInstead) {
  addPanel("First");
  addPanel("Second");
  open();
  select(1);
  form().TDBGridAMS.selBookmarks().add(form().TDBGridAMS.bookmarkOf(0));
  EXPECT_FALSE(typeGain(az(), 1, "1"));
  EXPECT_EQ(form().activeWidget(), &form().TDBGridAMS);
  EXPECT_EQ(form().TDBGridAMS.selBookmarks().count(), 1);
  EXPECT_EQ(azimuths()[5], std::string(kSecond) + "|90|4");
  EXPECT_TRUE(typeGain(az(), 1, "1"));
  EXPECT_TRUE(az().grid.update());
  EXPECT_EQ(azimuths()[5], std::string(kSecond) + "|90|3.15");
  form().TDBGridAMS.selBookmarks().clear();
  EXPECT_FALSE(typeAngle(el(), 3, "1"));
  EXPECT_FALSE(el().grid.addingRow());
}

TEST_F(PatternPaneTest, WhereItsPatternsCannotBeShownNothingIsEdited) {
  openPanel();
  form().TDBGridAMS.selBookmarks().clear();
  const std::string path = setPathName(getAntennasPath(), "AHDT0001.DBF");
  platform::current().rename(path, path + ".kept");
  EXPECT_FALSE(typeGain(az(), 1, "1"));
  EXPECT_FALSE(az().grid.dataChanged());
  EXPECT_EQ(form().activeWidget(), &form().TDBGridAMS);
  EXPECT_THAT(heard(), ElementsAre(HasSubstr("There is no table")));
}

TEST_F(PatternPaneTest, AClickOnACellStoresTheEntryUnderWay) {
  openPanel();
  ASSERT_TRUE(typeAngle(az(), 1, "91"));
  az().grid.userClick(1, az().colGain());
  EXPECT_FALSE(az().grid.dataChanged());
  EXPECT_EQ(azimuths()[1], std::string(kFirst) + "|91|4");
}

// --- The cut as a whole.

TEST_F(PatternPaneTest, ThePointsComeInTheOrderOfTheGridAsStored) {
  displayIn("dBd");
  add("Mixed", 12.5, "dBi", {{270, 0, 90}, {-3, 12.5, 4}}, {{0, 10}, {12.5, 2}});
  open();
  select(0);
  std::int16_t n = 0;
  std::vector<double> angles(7, 7), gains;
  form().GetHPat(n, angles, gains);
  EXPECT_EQ(n, 3);
  EXPECT_THAT(angles, ElementsAre(0, 90, 270));
  EXPECT_THAT(gains, ElementsAre(12.5, 4, -3));
  form().GetVPat(n, angles, gains);
  EXPECT_EQ(n, 2);
  EXPECT_THAT(angles, ElementsAre(0, 10));
}

TEST_F(PatternPaneTest, BlankPointsCountAsZeroThere) {
  openPanel();
  az().grid.setValue(1, "HOR_FIELD", Value());
  std::int16_t n = 0;
  std::vector<double> angles, gains;
  form().GetHPat(n, angles, gains);
  EXPECT_THAT(gains, ElementsAre(12.5, 0, -20, 4));
}

TEST_F(PatternPaneTest, AnEmptyCutLeavesTheArraysAlone) {
  open();
  std::int16_t n = 5;
  std::vector<double> angles{1, 2}, gains{3};
  form().GetVPat(n, angles, gains);
  EXPECT_EQ(n, 0);
  EXPECT_THAT(angles, ElementsAre(1, 2));
  EXPECT_THAT(gains, ElementsAre(3));
}

TEST_F(PatternPaneTest, MorePointsThanACountCanHoldAreAnOverflow) {
  addPanel();
  const auto table = DbfFile::open(setPathName(getAntennasPath(), "AHDT0001.DBF"));
  std::vector<unsigned char> row = table->blankRecord(), rows;
  table->put(row.data(), static_cast<std::size_t>(table->fieldIndex("ATYPE_ID")), Value(kFirst));
  for (int i = 0; i < 32765; ++i) rows.insert(rows.end(), row.begin(), row.end());
  table->append(rows.data(), 32765);
  open();
  select(0);
  std::int16_t n = 0;
  std::vector<double> angles, gains;
  try {
    form().GetHPat(n, angles, gains);
    FAIL();
  } catch (const RunTimeFailure& overflow) {
    EXPECT_EQ(overflow.number(), failure::overflow);
  }
}

}  // namespace
}  // namespace vantrelix
