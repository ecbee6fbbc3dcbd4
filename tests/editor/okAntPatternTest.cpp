// The acceptance test of the editor: what it finds, how it says it, what the user may accept.
#include "EditorFixture.h"
#include "editor/okAntPattern.h"
#include "editor/showCuts.h"

namespace vantrelix::test {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr const char* kTitle = "Antenna Pattern Warning";
constexpr const char* kQuestion =
    "\r\n\r\nDo you want to use this antenna anyway?"
    "\r\n\r\nClick Yes to use the antenna with the known problem(s)"
    "\r\n\t*** Using this antenna may generate incorrect results ***"
    "\r\nClick No to cancel this operation and return to the Antenna Editor"
    "\r\n\tYou will be have the option to select another antenna OR"
    "\r\n\tto have ZOR attempt to automatically correct the pattern.";
constexpr const char* kAzimuthBlankAngle =
    "The Azimuth pattern contains one or more empty entries in the Azimuth column.";
constexpr const char* kAzimuthBlankGain = "The Azimuth pattern contains one or more empty entries in the Gain column.";
constexpr const char* kNoGain = "You must enter a Major Lobe Gain value for the Antenna Manufacturer Specs.";

std::string azimuthTooHigh(const std::string& azimuth, const std::string& value, const std::string& gain) {
  return "The Azimuth pattern contains one or more entries in the Gain column that exceed the specified major lobe "
         "gain by more than 0.10\r\nAzimuth " +
         azimuth + " Gain: " + value + "\r\nMajor Lobe Gain: " + gain +
         "\r\n\r\nThe pattern gain values must be less than or equal to the Major Lobe Gain value."
         "\r\n\r\nYou can change either the Major Lobe Gain or the gain value on one or more azimuths in the pattern "
         "to correct this problem.";
}

std::string azimuthTooLow(const std::string& maximum, const std::string& azimuth, const std::string& gain) {
  return "The maximum azimuth gain in the azimuth pattern is less than the Major Lobe Gain for this antenna (by at "
         "least 0.10)\r\nMaximum azimuth gain: " +
         maximum + " on Azimuth " + azimuth + "\r\nMajor Lobe Gain: " + gain +
         "\r\n\r\nThe azimuth pattern must have at least one value equal to the Major Lobe Gain."
         "\r\n\r\nYou can change either the Major Lobe Gain or the gain value on one or more azimuths in the pattern "
         "to correct this problem.";
}

class OKAntPatternTest : public EditorTest {
 protected:
  // The antenna of a cut or two, with a gain of 10 dBd unless told, chosen in an open session.
  void openWith(const Cut& azimuth, const Cut& elevation = {}, double gain = 10, const std::string& unit = "dBd") {
    add("Panel", gain, unit, azimuth, elevation);
    open();
    choose();
  }
  void choose() { showCuts(form(), 0); }
  // An antenna without any points.
  static void addBare(const Value& gain, const std::string& unit, double low = 824, double high = 896) {
    const RecordsetPtr row = DBEngine::OpenDatabase(getAntennasPath())->OpenRecordset("select * from AMST0001");
    row->AddNew();
    row->put("ATYPE_ID", kFirst);
    row->put("ANTENNA", "Panel");
    row->put("GAIN", gain);
    row->put("GAIN_UN", unit);
    row->put("F_LOW", low);
    row->put("F_HIGH", high);
    row->put("FREQ_UN", "MHz");
    row->Update();
  }
  void openBare(const Value& gain, const std::string& unit, double low = 824, double high = 896) {
    addBare(gain, unit, low, high);
    open();
    choose();
  }
  static void displayIn(const char* units) {
    setINI("System Units", "Antenna Gain Units", getDefaultsINI(), units);
    resetSuitePaths();
  }
  // As another program writes it, before the antenna is chosen.
  static void put(const std::string& table, const std::string& criterion, const std::string& field,
                  const Value& value) {
    const RecordsetPtr rows = DBEngine::OpenDatabase(getAntennasPath())->OpenRecordset("select * from " + table);
    rows->FindFirst(criterion);
    ASSERT_FALSE(rows->NoMatch());
    rows->Edit();
    rows->put(field, value);
    rows->Update();
  }
  std::string problems() { return findPatternProblems(form()).text; }
  const Message& last() { return screen.shown().back().message; }
};

// --- What is no fault.

TEST_F(OKAntPatternTest, AnAntennaWhoseCutsReachItsGainPassesInSilence) {
  openWith({{0, 90}, {10, 4}}, {{-90, 0}, {-12, 10}});
  EXPECT_TRUE(OKAntPattern(form()));
  EXPECT_THAT(heard(), IsEmpty());
  EXPECT_EQ(suite.log(), "");
}

TEST_F(OKAntPatternTest, AnAntennaWithoutAnyPointsPasses) {
  openBare(10, "dBd");
  EXPECT_TRUE(OKAntPattern(form()));
}

TEST_F(OKAntPatternTest, ADifferenceOfTheToleranceItselfPasses) {
  openWith({{0, 90}, {10.1, 4}}, {{0, 90}, {9.9, 4}});
  EXPECT_EQ(problems(), "");
}

TEST_F(OKAntPatternTest, SkipValidPassesAnyAntenna) {
  openWith({{0, 90}, {99, 4}});
  put("AHDT0001", "HOR_AZ = 90", "HOR_FIELD", Value());
  setINI("HDAntenna", "SkipValid", getDefaultsINI(), "1");
  choose();
  EXPECT_TRUE(OKAntPattern(form()));
  EXPECT_THAT(heard(), IsEmpty());
}

// --- The faults of the azimuth cut.

TEST_F(OKAntPatternTest, NamesTheFirstAzimuthAboveTheGain) {
  openWith({{0, 45, 90}, {10, 10.11, 12}});
  EXPECT_EQ(problems(), azimuthTooHigh("45", "10.11", "10"));
}

TEST_F(OKAntPatternTest, NamesTheLargestAzimuthGainThatIsTooSmall) {
  openWith({{0, 22.5, 45, 90}, {-3, 9.89, 9.89, 4}});
  EXPECT_EQ(problems(), azimuthTooLow("9.89", "22.5", "10"));
}

TEST_F(OKAntPatternTest, ReportsTheFirstBlankOfEachColumnAndComparesAllTheSame) {
  openWith({{0, 45, 90, 135}, {9, 8, 7, 6}});
  for (const char* azimuth : {"HOR_AZ = 45", "HOR_AZ = 135"}) put("AHDT0001", azimuth, "HOR_AZ", Value());
  for (const char* azimuth : {"HOR_AZ = 0", "HOR_AZ = 90"}) put("AHDT0001", azimuth, "HOR_FIELD", Value());
  choose();
  EXPECT_EQ(problems(), std::string(kAzimuthBlankAngle) + "\r\n\r\n" + kAzimuthBlankGain + "\r\n\r\n" +
                            azimuthTooLow("8", "", "10"));
}

TEST_F(OKAntPatternTest, ABlankGainNeitherExceedsTheCeilingNorStandsAsTheMaximum) {
  openWith({{0, 90}, {-10, -10.5}}, {}, -10);
  put("AHDT0001", "HOR_AZ = 0", "HOR_FIELD", Value());
  choose();
  EXPECT_EQ(problems(), std::string(kAzimuthBlankGain) + "\r\n\r\n" + azimuthTooLow("-10.5", "90", "-10"));
}

TEST_F(OKAntPatternTest, ABlankRelativeGainIsNoMaximumAlthoughItHasNoLogarithm) {
  openWith({{0, 90}, {1, 0.5}}, {}, 0.1, "REL");  // -10 dBd
  put("AHDT0001", "HOR_AZ = 0", "HOR_FIELD", Value());
  choose();
  EXPECT_EQ(problems(), std::string(kAzimuthBlankGain) + "\r\n\r\n" + azimuthTooLow("-16.0206", "90", "-10"));
}

TEST_F(OKAntPatternTest, ARelativeGainOfZeroCountsAsZero) {
  openWith({{0, 90}, {1, 0}}, {}, 0.1, "REL");
  EXPECT_EQ(problems(), azimuthTooHigh("90", "0", "-10"));
}

TEST_F(OKAntPatternTest, AllBlankGainsLeaveTheirStandInAsTheMaximum) {
  openWith({{0}, {10}});
  put("AHDT0001", "HOR_AZ = 0", "HOR_FIELD", Value());
  choose();
  EXPECT_EQ(problems(), std::string(kAzimuthBlankGain) + "\r\n\r\n" + azimuthTooLow("-8888", "0", "10"));
}

// --- The antenna's own gain.

TEST_F(OKAntPatternTest, ABlankGainOfTheAntennaIsReportedWithWhatThePatternsShow) {
  openWith({{0}, {10}});
  put("AMST0001", "ANTENNA = 'Panel'", "GAIN", Value());
  open();
  choose();
  EXPECT_EQ(problems(), std::string(kNoGain) + "\r\n\r\n" + azimuthTooHigh("0", "10", "-8880"));
  EXPECT_THAT(rows("AMST0001", {"GAIN"}), ElementsAre(""));
}

TEST_F(OKAntPatternTest, ABlankGainAloneIsAFaultThatTheUserMayAccept) {
  openBare(Value(), "dBd");
  EXPECT_FALSE(OKAntPattern(form()));
  EXPECT_EQ(last().text, std::string(kNoGain) + kQuestion);
}

TEST_F(OKAntPatternTest, ABlankRelativeGainStandsFarBelowThePattern) {
  openWith({{0}, {1}}, {}, 2, "REL");
  put("AMST0001", "ANTENNA = 'Panel'", "GAIN", Value());
  open();
  choose();
  EXPECT_THAT(problems(), HasSubstr("\r\nMajor Lobe Gain: -8880\r\n"));
}

// --- The elevation cut.

TEST_F(OKAntPatternTest, TheElevationCutHasItsOwnWords) {
  openWith({}, {{-5, 5}, {10.2, 3}});
  put("AVDT0001", "VERT_ANGLE = 5", "VERT_ANGLE", Value());
  choose();
  EXPECT_EQ(problems(),
            "The Elevation pattern contains one or more empty entries in the Angle column."
            "\r\n\r\nThe Elevation pattern contains one or more entries in the Gain column that exceed the specified "
            "major lobe gain by more than 0.10"
            "\r\nElevation -5 Gain: 10.2"
            "\r\nMajor Lobe Gain: 10"
            "\r\n\r\nThe pattern gain values must be less than or equal to the Major Lobe Gain value."
            "\r\n\r\nYou can change either the Major Lobe Gain or the gain value on one or more elevations in the "
            "pattern to correct this problem.");
}

TEST_F(OKAntPatternTest, TheElevationMaximumHasItsOwnWords) {
  openWith({}, {{-5, 5}, {3, 9.5}});
  put("AVDT0001", "VERT_ANGLE = -5", "VERT_FIELD", Value());
  choose();
  EXPECT_EQ(problems(),
            "The Elevation pattern contains one or more empty entries in the Gain column."
            "\r\n\r\nThe maximum elevation gain in the elevation pattern is less than the Major Lobe Gain for this "
            "antenna (by at least 0.10)"
            "\r\nMaximum elevation gain: 9.5 on Elevation 5"
            "\r\nMajor Lobe Gain: 10"
            "\r\n\r\nThe elevation pattern must have at least one value equal to the Major Lobe Gain."
            "\r\n\r\nYou can change either the Major Lobe Gain or the gain value on one or more elevations in the "
            "pattern to correct this problem.");
}

TEST_F(OKAntPatternTest, AFaultOfTheAzimuthCutDoesNotStopTheTestOfTheElevationCut) {
  openWith({{0}, {9}}, {{0}, {8}});
  EXPECT_THAT(problems(), testing::StartsWith(azimuthTooLow("9", "0", "10") + "\r\n\r\nThe maximum elevation gain "));
}

// --- Units.

TEST_F(OKAntPatternTest, ComparesInDisplayUnits) {
  displayIn("dBi");
  openWith({{0}, {10.2}});
  EXPECT_EQ(problems(), azimuthTooHigh("0", "12.35", "12.15"));
}

TEST_F(OKAntPatternTest, TheToleranceOfRelativeUnitsIsATenthOfARatio) {
  displayIn("REL");
  openWith({{0}, {10}}, {}, 10);
  // A power ratio of 10 against a field ratio of 1 to the major lobe.
  EXPECT_EQ(problems(), azimuthTooLow("1", "0", "10"));
}

TEST_F(OKAntPatternTest, UnknownUnitsOfTheRowAreTheDisplayUnits) {
  displayIn("dBi");
  openWith({{0}, {10}});
  put("AMST0001", "ANTENNA = 'Panel'", "GAIN_UN", "dbx");
  open();
  choose();
  EXPECT_EQ(problems(), "");
}

// --- Where the grids stand afterwards.

TEST_F(OKAntPatternTest, EachGridStandsOnItsFirstFault) {
  openWith({{0, 90, 180}, {12, 10, 4}}, {{-90, 0, 90}, {3, 10, 11}});
  put("AHDT0001", "HOR_AZ = 180", "HOR_FIELD", Value());
  choose();
  problems();
  EXPECT_EQ(form().TDBGridAHD.currentRow(), 2);  // the blank was found before the ceiling
  EXPECT_EQ(form().TDBGridAVD.currentRow(), 2);
}

TEST_F(OKAntPatternTest, GridsWithoutAFaultStayWhereTheyStood) {
  openWith({{0, 90, 180}, {10, 9, 8}}, {{-90, 0, 90}, {3, 5, 4}});
  form().TDBGridAHD.setCurrentRow(1);
  problems();
  EXPECT_EQ(form().TDBGridAHD.currentRow(), 1);
  EXPECT_EQ(form().TDBGridAVD.currentRow(), -1);  // a maximum that is too small has no row
}

// --- The verdict.

TEST_F(OKAntPatternTest, AsksWhetherToUseAFaultyAntennaAnyway) {
  openWith({{0}, {9}});
  EXPECT_FALSE(OKAntPattern(form()));
  EXPECT_EQ(last().title, kTitle);
  EXPECT_EQ(last().text, azimuthTooLow("9", "0", "10") + kQuestion);
  EXPECT_EQ(last().buttons, MsgButtons::yesNo);
  EXPECT_EQ(last().defaultButton, 2);
  EXPECT_EQ(suite.log(), "");
}

TEST_F(OKAntPatternTest, AnAcceptedFaultStandsInTheLog) {
  openWith({{0}, {9}});
  screen.answers = {MsgAnswer::yes};
  EXPECT_TRUE(OKAntPattern(form()));
  EXPECT_THAT(suite.log(), HasSubstr(":  \r\nAntenna Editor Warning ignored\r\nAnt ID: T00010000001: Panel\r\n" +
                                     azimuthTooLow("9", "0", "10") + "  ("));
}

TEST_F(OKAntPatternTest, ABlankCellInEitherCutCannotBeAccepted) {
  openWith({{0}, {9}}, {{0}, {10}});
  put("AVDT0001", "VERT_ANGLE = 0", "VERT_FIELD", Value());
  choose();
  screen.answers = {MsgAnswer::yes};
  EXPECT_FALSE(OKAntPattern(form()));
  EXPECT_EQ(last().title, kTitle);
  EXPECT_EQ(last().buttons, MsgButtons::ok);
  EXPECT_EQ(last().icon, MsgIcon::information);
  EXPECT_EQ(last().text, findPatternProblems(form()).text);
  EXPECT_THAT(last().text, Not(HasSubstr("anyway")));
}

TEST_F(OKAntPatternTest, ARunTimeFailureIsShownAndRefusesTheAntenna) {
  openWith({{0}, {10}});
  form().DataAHD.recordset()->Close();
  EXPECT_FALSE(OKAntPattern(form()));
  EXPECT_THAT(heard(), ElementsAre(HasSubstr("Error in ")));
  EXPECT_THAT(suite.log(), HasSubstr("Procedure: 5401; Flag 300"));
}

TEST_F(OKAntPatternTest, APatternOfTenThousandPointsIsTestedInWhole) {
  Cut cut;
  for (int i = 0; i < 10000; ++i) {
    cut.angles.push_back(i / 100.0);
    cut.values.push_back(i == 9999 ? 10.5 : 1);
  }
  openWith(cut);
  EXPECT_EQ(problems(), azimuthTooHigh("99.99", "10.5", "10"));
}

// --- The default antenna.

class OKNewAntTest : public OKAntPatternTest {
 protected:
  bool ask(const std::string& prefix = "") {
    bool ok = false;
    OKNewAnt(form(), prefix, ok);
    return ok;
  }
};

TEST_F(OKNewAntTest, AnAntennaWithAGainOrALimitOfItsBandIsNoNewOne) {
  addBare(0.01, "dBd", 0, 0);
  addBare(0, "dBd", 1, 0);
  addBare(0, "dBd", 0, 1);
  open();
  for (int row = 0; row < 3; ++row) {
    showCuts(form(), row);
    EXPECT_TRUE(ask());
  }
  EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(OKNewAntTest, WarnsOfADefaultAntennaAndTakesCancelForNo) {
  openBare(0, "dBd", 0, 0);
  EXPECT_FALSE(ask());
  EXPECT_EQ(last().title, "New Antenna");
  EXPECT_EQ(last().icon, MsgIcon::information);
  EXPECT_EQ(last().buttons, MsgButtons::okCancel);
  EXPECT_EQ(last().defaultButton, 2);
  EXPECT_EQ(last().text,
            "The current antenna has a unity gain (0.00dBd)\r\nand undefined frequency limits."
            "\r\n\r\nClick OK to continue with this antenna"
            "\r\nClick CANCEL to cancel this operation and edit the antenna values.");
}

TEST_F(OKNewAntTest, ShowsTheAdviceAndGoesOnWithOK) {
  openBare(0, "dBd", 0, 0);
  screen.answers = {MsgAnswer::ok};
  EXPECT_TRUE(ask("Enter the gain first."));
  EXPECT_EQ(last().text,
            "The current antenna has a unity gain (0.00dBd)\r\nand undefined frequency limits."
            "\r\n\r\nEnter the gain first."
            "\r\n\r\nClick OK to continue with this antenna"
            "\r\nClick CANCEL to cancel this operation and edit the antenna values.");
}

TEST_F(OKNewAntTest, ABlankGainCountsAsZero) {
  openBare(Value(), "dBd", 0, 0);
  EXPECT_FALSE(ask());
}

TEST_F(OKNewAntTest, UnityGainIsThatOfADipole) {
  displayIn("dBi");
  openBare(2.15, "dBi", 0, 0);
  EXPECT_FALSE(ask());
  EXPECT_THAT(last().text, HasSubstr("(2.15dBi)"));
}

TEST_F(OKNewAntTest, ARelativeGainOfZeroIsNoUnityGain) {
  displayIn("REL");
  openBare(0, "REL", 0, 0);
  EXPECT_TRUE(ask());
}

}  // namespace
}  // namespace vantrelix::test
