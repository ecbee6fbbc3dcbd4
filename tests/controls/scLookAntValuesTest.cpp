#include "controls/LookAntFixture.h"
#include "foundation/regional.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {
namespace {

using Values = test::LookAntTest;

// The text properties that take a text as it stands, and their boxes.
struct TextProperty {
  const char* name;
  TextBox scLookAnt::*box;
  std::string (scLookAnt::*get)() const;
  void (scLookAnt::*put)(const Value&);
};
constexpr TextProperty kTextProperties[] = {
    {"file", &scLookAnt::txtFile, &scLookAnt::sValueFile, &scLookAnt::sValueFile},
    {"ID", &scLookAnt::txtID, &scLookAnt::sValueID, &scLookAnt::sValueID},
    {"description", &scLookAnt::txtDesc, &scLookAnt::sValueDesc, &scLookAnt::sValueDesc},
    {"orientation", &scLookAnt::txtOrient, &scLookAnt::sValueOrient, &scLookAnt::sValueOrient},
    {"electrical tilt", &scLookAnt::txtETilt, &scLookAnt::sValueEtilt, &scLookAnt::sValueEtilt},
    {"mechanical tilt", &scLookAnt::txtMTilt, &scLookAnt::sValueMtilt, &scLookAnt::sValueMtilt},
    {"tilt azimuth", &scLookAnt::txtMAzim, &scLookAnt::sValueMazim, &scLookAnt::sValueMazim},
};

TEST_F(Values, ATextGoesIntoItsBoxAsItStandsAndComesBackTrimmed) {
  for (const TextProperty& property : kTextProperties) {
    SCOPED_TRACE(property.name);
    (control.*property.put)(" 7 a ");
    EXPECT_EQ((control.*property.box).text(), " 7 a ");
    EXPECT_EQ((control.*property.get)(), "7 a");
    (control.*property.put)(-2.5);
    EXPECT_EQ((control.*property.get)(), "-2.5");
  }
  EXPECT_EQ(heard(), "");
  EXPECT_FALSE(control.bDirty());
}

TEST_F(Values, NullShowsBlankEverywhereButInTheFile) {
  for (const TextProperty& property : kTextProperties) {
    SCOPED_TRACE(property.name);
    (control.*property.put)("x");
    (control.*property.put)(Value());
    EXPECT_EQ((control.*property.box).text(), std::string(property.name) == "file" ? "NULL" : "");
  }
  control.sValueGain("1");
  control.sValueGain(Value());
  EXPECT_EQ(control.txtGain.text(), "");
}

TEST_F(Values, TheGainHasTwoDecimalsAndWhatIsNoNumberStays) {
  control.sValueGain("12.345");
  EXPECT_EQ(control.txtGain.text(), "12.35");
  control.sValueGain(7);
  EXPECT_EQ(control.sValueGain(), "7.00");
  control.sValueGain(" about 7 ");
  EXPECT_EQ(control.txtGain.text(), " about 7 ");
  EXPECT_EQ(control.sValueGain(), "about 7");
}

TEST_F(Values, ThePolarisationIsFoundFoldedAndTrimmedOrNoneIsSelected) {
  control.sValuePol(" hORIZONTAL ");
  EXPECT_EQ(control.sValuePol(), "Horizontal");
  control.sValuePol("hor");
  EXPECT_EQ(control.cboPol.listIndex(), -1);
  control.sValuePol("None");
  EXPECT_EQ(control.cboPol.listIndex(), 0);
  control.sValuePol(Value());
  EXPECT_EQ(control.sValuePol(), "");
  EXPECT_EQ(heard(), "");
}

TEST_F(Values, InversionIsTrueWhenTheBoxIsCheckedAtAll) {
  control.sValueInvert("-1");
  EXPECT_EQ(control.chkInvert.value(), 1);
  control.chkInvert.setValue(2);
  EXPECT_TRUE(control.sValueInvert());
  control.sValueInvert(Value());
  EXPECT_FALSE(control.sValueInvert());
  control.sValueInvert(true);
  EXPECT_TRUE(control.sValueInvert());
  EXPECT_EQ(heard(), "");
}

TEST_F(Values, TheListsHoldTheirEntriesInOrder) {
  using Entries = std::vector<std::string>;
  EXPECT_EQ(control.cboUnit.entries(), (Entries{"dBd", "dBi", "REL"}));
  EXPECT_EQ(control.cboPol.entries(), (Entries{"None", "Horizontal", "Vertical", "Circular", "Helical", "Other"}));
}

TEST_F(Values, ClearBlanksTheBoxesAndLeavesTheLists) {
  for (const TextProperty& property : kTextProperties) (control.*property.put)("1");
  control.sValueUnit("REL");
  control.sValueGain("1");
  control.sValuePol("Other");
  control.sValueInvert(true);
  control.Clear(true);
  for (const TextProperty& property : kTextProperties) EXPECT_EQ((control.*property.box).text(), "") << property.name;
  EXPECT_EQ(control.txtGain.text(), "");
  EXPECT_EQ(control.sValueUnit(), "REL");
  EXPECT_EQ(control.sValuePol(), "Other");
  EXPECT_TRUE(control.sValueInvert());
  EXPECT_EQ(heard(), "");
}

TEST_F(Values, TheControlIsValidWithABlankFileAndARedBackground) {
  control.sValueFile("");
  control.BackRed(true);
  EXPECT_TRUE(control.Valid());
}

TEST_F(Values, AlertsGatherOnLinesOfTheirOwnAndABlankTextClearsThem) {
  control.Alerts("a");
  control.Alerts("b");
  EXPECT_EQ(control.Alerts(), "a\r\nb");
  EXPECT_EQ(heard(), "alert alert ");
  control.Alerts(control.Alerts());
  EXPECT_EQ(control.Alerts(), "a\r\nb\r\na\r\nb");
  heard();
  control.Alerts(" ");
  EXPECT_EQ(control.Alerts(), "");
  EXPECT_EQ(heard(), "");
}

TEST_F(Values, NoEventIsRaisedWhileValuesAreLoaded) {
  {
    const ControlLoading loading(control);
    control.Alerts("a");
    control.SeePreview(false);
    control.cboPol.userSelect(1);
    control.chkInvert.userClick();
    enter(control.txtGain, "5");
    enter(control.txtMAzim, "5");
    enter(control.txtOrient, "5");
    enter(control.txtETilt, "5");
    EXPECT_EQ(heard(), "");
  }
  EXPECT_EQ(control.Alerts(), "a");
  control.cboPol.userSelect(1);
  EXPECT_EQ(heard(), "mounting ");
}

TEST_F(Values, WhileValuesAreLoadedClicksLeaveTheControlCleanAndLeavingABoxStillTidiesIt) {
  const ControlLoading loading(control);
  control.cboPol.userSelect(1);
  control.chkInvert.userClick();
  control.cboUnit.userSelect(1);
  EXPECT_FALSE(control.bDirty());
  enter(control.txtGain, "5");
  EXPECT_EQ(control.txtGain.text(), "5.00");
  enter(control.txtMTilt, "-180");
  EXPECT_EQ(control.txtMTilt.text(), "");
  EXPECT_EQ(screen.shown().size(), 1u);
}

TEST_F(Values, AFillThatFailedKeepsTheControlSilent) {
  {
    ControlLoading loading(control);
    loading.stay();
  }
  control.cboPol.userSelect(1);
  EXPECT_EQ(heard(), "");
  { const ControlLoading good(control); }
  control.cboPol.userSelect(1);
  EXPECT_EQ(heard(), "mounting ");
}

TEST_F(Values, CreationKeepsTheRegionalCharactersForTheNextStart) {
  EXPECT_EQ(getINIStr("CONFIG", "Last Decimal", ""), regionalCharacters().decimalCharacter);
}

TEST_F(Values, CreationWarnsWhenTheRegionalCharactersHaveChanged) {
  setDefault("CONFIG", "Last Decimal", "#");
  const scLookAnt another;
  ASSERT_EQ(screen.shown().size(), 1u);
  EXPECT_EQ(screen.shown()[0].message.title, "Regional Settings Changed");
}

TEST_F(Values, CreationDoesNotFailWhereTheWarningCannotBeLogged) {
  setDefault("CONFIG", "Last Decimal", "#");
  suite.folder().write("QVTECSUP.TXT/in the way", "");
  EXPECT_NO_THROW(const scLookAnt another);
  EXPECT_EQ(screen.shown().size(), 1u);
}

}  // namespace
}  // namespace vantrelix
