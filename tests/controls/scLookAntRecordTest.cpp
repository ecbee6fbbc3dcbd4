// The antenna lookup control filled from its host's record.
#include <gmock/gmock.h>

#include "controls/RecordFixture.h"

namespace vantrelix {
namespace {

using test::BoundValue;
using test::kBoundValues;
using test::shownIn;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

class LookAntRecord : public test::RecordTest {
 protected:
  LookAntRecord() { control.SeePreview(false); }
};

TEST_F(LookAntRecord, FillsEveryValueFromItsField) {
  bind();
  putOthers();
  heard();
  control.Update();
  expectRowUpTo(kBoundValues.size(), "");
  EXPECT_EQ(heard(), "");
  EXPECT_FALSE(control.bDirty());
  EXPECT_TRUE(clicksAreTold());
}

TEST_F(LookAntRecord, FillsFromARowOfNulls) {
  bind();
  control.UpdateDBF();
  record->MoveNext();
  control.UpdateDBF();
  EXPECT_THAT(shownIn(control), ElementsAre("", "", "", "", "dBd", "", "", "", "", "False", "None", "0"));
}

TEST_F(LookAntRecord, FillsANullByTheDefaultOfItsHook) {
  bind();
  control.HookDBFOrient()->DBFSDefault("15");
  control.HookDBFFile()->DBFSDefault("NULL");
  control.HookDBFInvert()->DBFBDefault(true);
  control.HookDBFPol()->DBFSDefault("hel");
  record->MoveNext();
  control.UpdateDBF();
  EXPECT_EQ(control.sValueOrient() + control.sValueFile() + control.sValuePol(), "15NULLHelical");
  EXPECT_TRUE(control.sValueInvert());
}

TEST_F(LookAntRecord, TakesTextWithoutThePaddingOfItsField) {
  bind();
  control.UpdateDBF();
  EXPECT_EQ(control.txtFile.text(), "AMSN0001");
  EXPECT_EQ(control.txtDesc.text(), "Whip");
  record->MoveNext();
  control.HookDBFDesc()->DBFSDefault("  in front  ");
  control.UpdateDBF();
  EXPECT_EQ(control.txtDesc.text(), "  in front");
}

TEST_F(LookAntRecord, TakesTheNumberInFrontOfAFrequencysUnit) {
  bind();
  control.HookDBFFreq()->DBFField("TX_A1TYP");
  record->Edit();
  record->put("TX_A1TYP", "900.5 MHz");
  record->Update();
  control.UpdateDBF();
  EXPECT_EQ(test::frequencyOf(control), 900.5);
}

TEST_F(LookAntRecord, ConvertsNoGainAndKeepsTheUsersUnitThroughAFill) {
  bind();
  control.sValueUnit("dBi");
  setDefault("Antenna Lookup", "Units", "dBi");
  control.UpdateDBF();
  EXPECT_EQ(control.sValueGain() + control.sValueUnit(), "6.50REL");
  EXPECT_EQ(defaultUnit(), "dBi");
}

TEST_F(LookAntRecord, AMissingHookEndsTheFillThereAndTheLogTellsTheFlag) {
  for (std::size_t i = 0; i < kBoundValues.size(); ++i) {
    const BoundValue& value = kBoundValues[i];
    bind();
    putOthers();
    (control.*value.dbf)(nullptr);
    suite.folder().write("QVTECSUP.TXT", "");
    control.UpdateDBF();
    EXPECT_THAT(suite.log(), HasSubstr(std::string("Error in scLookAnt.Update at flag ") + value.tableFlag +
                                       "\r\n91 HookDBF" + value.name + " is not set."));
    expectRowUpTo(i, value.name);
    EXPECT_FALSE(clicksAreTold()) << value.name;
  }
  EXPECT_TRUE(screen.shown().empty());
}

TEST_F(LookAntRecord, AFailedFillKeepsTheControlSilentUntilAGoodOne) {
  bind();
  control.HookDBFETilt()->DBFField("TX_GONE");
  control.sValueDesc("typed");
  enter(control.txtDesc, "x");
  control.Alerts("before");
  heard();
  control.Update();
  EXPECT_THAT(suite.log(), HasSubstr("Error in scLookAnt.Update at flag 1500\r\n3265 "));
  EXPECT_EQ(control.Alerts(), "");
  EXPECT_TRUE(control.bDirty());
  control.chkInvert.userClick();
  control.Alerts("unheard");
  control.SeePreview(false);
  EXPECT_EQ(heard(), "");
  control.HookDBFETilt()->DBFField("TX_A1ETILT");
  control.Update();
  EXPECT_FALSE(control.bDirty());
  EXPECT_TRUE(clicksAreTold());
}

TEST_F(LookAntRecord, ARowThatCannotBeReadIsLogged) {
  bind();
  record->MoveLast();
  record->MoveNext();
  control.Update();
  EXPECT_THAT(suite.log(), HasSubstr("at flag 1000\r\n3021 "));
  record->Close();
  control.Update();
  EXPECT_THAT(suite.log(), HasSubstr("at flag 1000\r\n91 "));
  control.HookDBFFile(std::make_shared<IOHooksDBF>());
  control.Update();
  EXPECT_THAT(suite.log(), HasSubstr("at flag 1000\r\n3044 "));
  EXPECT_TRUE(screen.shown().empty());
  EXPECT_FALSE(clicksAreTold());
}

TEST_F(LookAntRecord, ATextThatIsNoFlagIsLogged) {
  bind();
  control.HookDBFInvert()->DBFField("TX_A1TYP");
  control.Update();
  EXPECT_THAT(suite.log(), HasSubstr("at flag 1800\r\n13 "));
}

TEST_F(LookAntRecord, AFailureOfAnotherKindIsLoggedAsAnInternalError) {
  bind();
  control.txtGain.changed.listen([] { throw std::bad_alloc(); });
  EXPECT_NO_THROW(control.Update());
  EXPECT_THAT(suite.log(), HasSubstr("at flag 1200\r\n51 std::bad_alloc"));
}

TEST_F(LookAntRecord, ALogThatCannotBeWrittenLeavesTheFailureQuiet) {
  suite.folder().write("QVTECSUP.TXT/in the way", "");
  EXPECT_NO_THROW(control.Update());
  EXPECT_FALSE(clicksAreTold());
  EXPECT_TRUE(screen.shown().empty());
}

}  // namespace
}  // namespace vantrelix
