#include "controls/LookAntFixture.h"

namespace vantrelix {
namespace {

class Unit : public test::LookAntTest {
 protected:
  void choose(const char* unit) { control.cboUnit.userSelect(modSetComboBoxIndex(unit)); }
  // With a unit and a gain as a host sets them.
  void start(const char* unit, const char* gain) {
    control.sValueUnit(unit);
    control.sValueGain(gain);
  }
  int modSetComboBoxIndex(const std::string& unit) const {
    const auto& entries = control.cboUnit.entries();
    for (std::size_t i = 0; i < entries.size(); ++i) {
      if (entries[i] == unit) return static_cast<int>(i);
    }
    return -1;
  }
};

TEST_F(Unit, AcceptsTheThreeUnitsAndTheirCapitals) {
  for (const char* unit : {"dBd", "dBi", "REL"}) {
    control.sValueUnit(unit);
    EXPECT_EQ(control.sValueUnit(), unit);
  }
  control.sValueUnit("DBI");
  EXPECT_EQ(control.sValueUnit(), "dBi");
  control.sValueUnit("DBD");
  EXPECT_EQ(control.sValueUnit(), "dBd");
}

TEST_F(Unit, AnyOtherTextFallsBackToTheUsersDefault) {
  for (const Value& other : {Value("dbd"), Value(""), Value("rel"), Value(" dBd"), Value()}) {
    control.sValueUnit("REL");
    setDefault("Antenna Lookup", "Units", "dBi");
    control.sValueUnit(other);
    EXPECT_EQ(control.sValueUnit(), "dBi");
  }
}

TEST_F(Unit, WithoutADefaultOrWithABlankOneItIsDbd) {
  control.sValueUnit("");
  EXPECT_EQ(control.sValueUnit(), "dBd");
  control.sValueUnit("REL");
  setDefault("Antenna Lookup", "Units", "");
  control.sValueUnit("");
  EXPECT_EQ(control.sValueUnit(), "dBd");
}

TEST_F(Unit, ADefaultThatIsNoUnitSelectsNone) {
  start("dBi", "5");
  setDefault("Antenna Lookup", "Units", "dBx");
  control.sValueUnit("");
  EXPECT_EQ(control.cboUnit.listIndex(), -1);
  EXPECT_EQ(control.sValueGain(), "");
  EXPECT_EQ(defaultUnit(), "dBx");
}

TEST_F(Unit, AChangeConvertsTheGainBetweenDecibels) {
  start("dBd", "10");
  choose("dBi");
  EXPECT_EQ(control.sValueGain(), "12.15");
  choose("dBd");
  EXPECT_EQ(control.sValueGain(), "10.00");
  EXPECT_TRUE(control.bDirty());
}

TEST_F(Unit, AChangeConvertsTheGainToARatioAndBackWithTheLossOfItsTwoDecimals) {
  start("dBd", "3");
  choose("REL");
  EXPECT_EQ(control.sValueGain(), "2.00");
  choose("dBd");
  EXPECT_EQ(control.sValueGain(), "3.01");
  choose("REL");
  choose("dBi");
  EXPECT_EQ(control.sValueGain(), "5.16");
}

TEST_F(Unit, ARatioOfZeroOrLessBlanksTheGainAndLeavesTheDefault) {
  for (const char* gain : {"0", "-1", "abc"}) {
    start("REL", gain);
    control.sValueGain(gain);
    setDefault("Antenna Lookup", "Units", "(kept)");
    choose("dBd");
    EXPECT_EQ(control.sValueGain(), "");
    EXPECT_EQ(defaultUnit(), "(kept)");
    EXPECT_EQ(control.sValueUnit(), "dBd");
  }
}

TEST_F(Unit, AGainBeyondTheRangeOfNumbersIsBlanked) {
  start("dBd", "1E+300");
  choose("REL");
  EXPECT_EQ(control.sValueGain(), "");
}

TEST_F(Unit, AfterABlankedGainTheNewUnitIsTheOneToConvertFrom) {
  start("REL", "0");
  choose("dBi");
  control.sValueGain("5");
  choose("dBd");
  EXPECT_EQ(control.sValueGain(), "2.85");
}

TEST_F(Unit, TheGainIsReadAsFarAsItIsANumber) {
  start("dBd", "1");
  control.sValueGain("12.5 dB");
  choose("dBi");
  EXPECT_EQ(control.sValueGain(), "14.65");
}

TEST_F(Unit, TheLastChoiceBecomesTheDefaultOfLaterControls) {
  start("dBd", "10");
  choose("REL");
  EXPECT_EQ(defaultUnit(), "REL");
  scLookAnt another;
  another.ZORUserLogin("");
  EXPECT_EQ(another.sValueUnit(), "REL");
}

TEST_F(Unit, AUsersClickOnTheUnitThatIsSelectedConvertsToo) {
  start("dBd", "10.129");
  setDefault("Antenna Lookup", "Units", "(kept)");
  choose("dBd");
  EXPECT_EQ(control.sValueGain(), "10.13");
  EXPECT_EQ(defaultUnit(), "dBd");
}

TEST_F(Unit, AProgramThatSelectsWhatIsSelectedChangesNothing) {
  start("dBi", "about 5");
  setDefault("Antenna Lookup", "Units", "(kept)");
  control.sValueUnit("dBi");
  EXPECT_EQ(control.sValueGain(), "about 5");
  EXPECT_EQ(defaultUnit(), "(kept)");
}

TEST_F(Unit, AProgramThatSelectsAnotherUnitConvertsAndRaisesNoEvent) {
  start("dBd", "10");
  control.sValueUnit("dBi");
  EXPECT_EQ(control.sValueGain(), "12.15");
  EXPECT_EQ(defaultUnit(), "dBi");
  EXPECT_EQ(heard(), "");
}

TEST_F(Unit, AGainIsConvertedFromADefaultThatIsWrittenInOtherCase) {
  setDefault("Antenna Lookup", "Units", "DBI");
  control.ZORUserLogin("");
  EXPECT_EQ(control.sValueUnit(), "dBi");
  control.sValueGain("12.15");
  choose("dBd");
  EXPECT_EQ(control.sValueGain(), "10.00");
}

TEST_F(Unit, BeforeALoginNoUnitIsSelectedAndNothingIsConverted) {
  EXPECT_EQ(control.cboUnit.listIndex(), -1);
  control.sValueGain("10");
  choose("dBi");
  EXPECT_EQ(control.sValueGain(), "");
  EXPECT_EQ(defaultUnit(), "(none)");
}

TEST_F(Unit, WhileLoadingOnlyTheUnitToConvertFromFollows) {
  start("dBd", "10");
  setDefault("Antenna Lookup", "Units", "(kept)");
  {
    const ControlLoading loading(control);
    control.sValueUnit("dBi");
    choose("dBi");
  }
  EXPECT_EQ(control.sValueGain(), "10.00");
  EXPECT_EQ(defaultUnit(), "(kept)");
  choose("dBd");
  EXPECT_EQ(control.sValueGain(), "7.85");
}

TEST_F(Unit, ADefaultThatCannotBeKeptIsLoggedAndTheGainConvertedAllTheSame) {
  suite.folder().write("QVDEFAULTS_dir.INI/in the way", "");
  control.ZORUserLogin("dir");
  start("dBd", "10");
  choose("dBi");
  EXPECT_EQ(control.sValueGain(), "12.15");
  EXPECT_NE(suite.log().find("The gain units could not be kept as the default in " +
                             suite.folder().machine("QVDEFAULTS_dir.INI")),
            std::string::npos);
}

TEST_F(Unit, ALoginSelectsTheUsersOwnDefault) {
  suite.folder().write("QVDEFAULTS_ann.INI", "[Antenna Lookup]\r\nUnits=REL\r\n");
  control.ZORUserLogin("ann");
  EXPECT_EQ(control.sValueUnit(), "REL");
  EXPECT_EQ(userLogin(), "ann");
  EXPECT_EQ(getDefaultsINI(), suite.file("QVDEFAULTS_ann.INI"));
  control.sValueGain("100");
  choose("dBd");
  EXPECT_EQ(control.sValueGain(), "20.00");
  EXPECT_EQ(suite.folder().read("QVDEFAULTS_ann.INI"), "[Antenna Lookup]\r\nUnits=dBd\r\n");
}

}  // namespace
}  // namespace vantrelix
