// The antenna lookup control saved into its host's record.
#include "controls/RecordFixture.h"

namespace vantrelix {
namespace {

using test::BoundValue;
using test::kBoundValues;
using test::kSaved;

constexpr std::size_t kInvert = 9;

class LookAntSave : public test::RecordTest {
 protected:
  LookAntSave() { control.SeePreview(false); }

  void putNumbers(const std::string& text) {
    for (TextBox* box :
         {&control.txtGain, &control.txtOrient, &control.txtETilt, &control.txtMTilt, &control.txtMAzim}) {
      box->setText(text);
    }
  }
  static constexpr const char* kNumbers[] = {"TX_A1GAIN", "TX_A1ORIEN", "TX_A1ETILT", "TX_A1MTILT", "TX_A1MDIR"};
};

TEST_F(LookAntSave, WritesEveryValueToItsFieldButTheFrequency) {
  bind();
  putOthers();
  EXPECT_EQ(control.Save(), "");
  for (std::size_t i = 0; i < kSaved; ++i) {
    const BoundValue& value = kBoundValues[i];
    EXPECT_EQ(inTable(value.field), i == kInvert ? "False" : value.stored) << value.name;
  }
  EXPECT_EQ(inTable("TX_FREQMHZ"), "451.25");
  EXPECT_FALSE(record->editing());
}

TEST_F(LookAntSave, WritesToTheRowOnWhichTheRecordStands) {
  bind();
  record->MoveNext();
  putOthers();
  EXPECT_EQ(control.Save(), "");
  EXPECT_EQ(inTable("TX_A1TID"), "ID1");
  record->MoveFirst();
  record->MoveNext();
  EXPECT_EQ(trim(record->value("TX_A1TID").asText()), "ID2");
}

TEST_F(LookAntSave, RaisesNoEventAndLeavesTheControlDirty) {
  bind();
  control.txtDesc.userType("x");
  heard();
  EXPECT_EQ(control.Save(), "");
  EXPECT_EQ(heard(), "");
  EXPECT_TRUE(control.bDirty());
}

TEST_F(LookAntSave, WritesAFlagAsAWholeNumberOfSixteenBits) {
  bind();
  for (const bool inverted : {true, false}) {
    control.sValueInvert(inverted);
    const auto stored = [this](const char* field) {
      control.HookDBFInvert()->DBFField(field);
      EXPECT_EQ(control.Save(), "");
      return open()->value(field);
    };
    EXPECT_EQ(stored("TX_A1INVRT"), Value(inverted));
    EXPECT_EQ(stored("TX_A1MDIR"), Value(inverted ? -1 : 0));
    EXPECT_EQ(trim(stored("TX_A1TYP").asText()), inverted ? "-1" : "0");
  }
}

TEST_F(LookAntSave, WritesAPolarisationThatIsNotChosenAsNone) {
  bind();
  control.cboPol.setListIndex(-1);
  EXPECT_EQ(control.Save(), "");
  EXPECT_EQ(inTable("TX_A1POL"), "none");
}

TEST_F(LookAntSave, WritesANullForANumberThatIsNone) {
  bind();
  for (const char* text : {"12 degrees", "", "-"}) {
    control.UpdateDBF();
    putNumbers("7");
    ASSERT_EQ(control.Save(), "");
    putNumbers(text);
    EXPECT_EQ(control.Save(), "");
    for (const char* field : kNumbers) EXPECT_EQ(inTable(field), "(null)") << field << " " << text;
  }
}

TEST_F(LookAntSave, WritesABlankTextAsANull) {
  bind();
  control.Clear();
  EXPECT_EQ(control.Save(), "");
  for (const char* field : {"TX_A1FNM", "TX_A1TID", "TX_A1TYP", "TX_A1GNUN"}) {
    EXPECT_EQ(inTable(field), "(null)") << field;
  }
}

TEST_F(LookAntSave, WritesATextThatIsNoNumberWhereTextBelongs) {
  bind();
  control.sValueDesc("'quoted' - 3/4\"");
  EXPECT_EQ(control.Save(), "");
  EXPECT_EQ(inTable("TX_A1TYP"), "'quoted' - 3/4\"");
}

TEST_F(LookAntSave, WritesNoTableWithoutTheHookOfTheId) {
  control.HookDBFFile(hookFor(open(), "TX_A1FNM"));
  putOthers();
  EXPECT_EQ(control.Save(), "");
  EXPECT_EQ(inTable("TX_A1FNM"), "AMSN0001");
}

TEST_F(LookAntSave, WritesNothingWithoutHooks) {
  putOthers();
  EXPECT_EQ(control.Save(), "");
  EXPECT_FALSE(suite.folder().exists("FACILITY.INI"));
  EXPECT_FALSE(control.HookINI.isSet());
}

TEST_F(LookAntSave, WritesEachHookToItsOwnTable) {
  bind();
  DbfFile::create(suite.file("MASTS.DBF"), {{"TILT", 'N', 8, 2}});
  addRow([](const BoundValue&) { return Value(); });
  const auto masts = DbfFile::open(suite.file("MASTS.DBF"));
  masts->append(masts->blankRecord().data());
  control.HookDBFMTilt(hookFor(open("Select * from [MASTS]"), "TILT"));
  putOthers();
  EXPECT_EQ(control.Save(), "");
  EXPECT_EQ(inTable("TX_A1MTILT"), "1.5");
  EXPECT_EQ(open("Select * from [MASTS]")->value("TILT"), Value(2.5));
}

TEST_F(LookAntSave, WritesEveryValueToItsKeyButTheFrequency) {
  bindINI();
  putOthers();
  EXPECT_EQ(control.Save(), "");
  for (std::size_t i = 0; i < kBoundValues.size(); ++i) {
    const BoundValue& value = kBoundValues[i];
    EXPECT_EQ(inFile(value.variable), i < kSaved ? value.stored : "(none)") << value.name;
  }
  control.sValueInvert(true);
  EXPECT_EQ(control.Save(), "");
  EXPECT_EQ(inFile("TX_A1INVRT"), "-1");
}

TEST_F(LookAntSave, WritesKeysIntoTheFacilitysSectionWhereNoFillHasNamedAnother) {
  control.HookINI(masterHook());
  putOthers();
  EXPECT_EQ(control.Save(), "");
  EXPECT_EQ(getPrivateProfileString("Facility Data", "TX_A1TID", "", 2000, ini), "ID2");
}

TEST_F(LookAntSave, LeavesTheKeyOfANumberThatIsNone) {
  bindINI();
  putOthers();
  putNumbers("7");
  ASSERT_EQ(control.Save(), "");
  control.sValueDesc("after");
  control.sValuePol("Helical");
  for (const char* text : {"12 degrees", ""}) {
    putNumbers(text);
    EXPECT_EQ(control.Save(), "");
    for (const char* key : kNumbers) EXPECT_EQ(inFile(key), "7") << key << " " << text;
  }
  EXPECT_EQ(inFile("TX_A1TYP") + inFile("TX_A1POL"), "afterhel");
}

TEST_F(LookAntSave, WritesNoFileWithoutAMasterThatNamesOne) {
  bindINI();
  putOthers();
  for (const char* file : {"", "   "}) {
    control.HookINI()->iniFile(file);
    EXPECT_EQ(control.Save(), "");
  }
  EXPECT_FALSE(suite.folder().exists("FACILITY.INI"));
}

TEST_F(LookAntSave, MakesTheKeysOfAllValues) {
  control.HookINI(masterHook());
  putNumbers("none");
  EXPECT_EQ(control.Save(), "");
  control.HookINI()->iniFile("C:\\LATER.INI");
  for (const BoundValue& value : kBoundValues) EXPECT_EQ((control.*value.ini)()->iniFile(), ini) << value.name;
}

TEST_F(LookAntSave, WritesTableAndFile) {
  bind();
  bindINI();
  putOthers();
  EXPECT_EQ(control.Save(), "");
  EXPECT_EQ(inTable("TX_A1TID") + inFile("TX_A1TID"), "ID2ID2");
}

TEST_F(LookAntSave, PassesOverAKeyThatIsBoundToNothing) {
  bindINI();
  control.HookINIDesc()->INIVariable("");
  control.HookINIUnit()->INISection(" ");
  control.HookINIOrient()->iniFile("");
  putOthers();
  EXPECT_EQ(control.Save(), "");
  EXPECT_EQ(inFile("TX_A1TYP") + inFile("TX_A1GNUN") + inFile("TX_A1ORIEN"), "(none)(none)(none)");
  EXPECT_EQ(inFile("TX_A1POL"), "cir");
}

}  // namespace
}  // namespace vantrelix
