// The antenna description control and its host's record.
#include <gmock/gmock.h>

#include "controls/LookAntDescFixture.h"
#include "platform/RunTimeFailure.h"
#include "tables/cursorTables.h"

namespace vantrelix {
namespace {

using test::DescValue;
using test::kDescValues;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;

using LookAntDescRecord = test::LookAntDescTest;

TEST_F(LookAntDescRecord, ReadsTheFourValuesOfATable) {
  bindDesc();
  desc.txtDesc.userKey('x');
  desc.UpdateDBF();
  EXPECT_EQ(shown(), "AMSN0001|ID1|Whip");
  EXPECT_FALSE(desc.bDirty());
  EXPECT_EQ(frequency(), "451.25");
  EXPECT_EQ(events(), "");
  EXPECT_FALSE(desc.txtDesc.locked());
  // The row names an antenna of a library, which owns its description once the host opens the control.
  desc.Locked(false);
  EXPECT_TRUE(desc.txtDesc.locked());
  record->MoveNext();
  desc.UpdateDBF();
  EXPECT_EQ(shown(), "||");
  desc.Locked(false);
  EXPECT_FALSE(desc.txtDesc.locked());
}

TEST_F(LookAntDescRecord, ARecordIsTheLibrarysOnlyWhereItNamesFileAndId) {
  for (const auto& [file, id] : {std::pair{"AMSN0001", " "}, {" ", "ID1"}}) {
    bindDesc();
    record->Edit();
    record->put("TX_A1FNM", file);
    record->put("TX_A1TID", id);
    record->Update();
    desc.UpdateDBF();
    desc.Locked(false);
    EXPECT_FALSE(desc.txtDesc.locked()) << shown();
  }
}

TEST_F(LookAntDescRecord, StopsAtTheFirstHookThatIsMissing) {
  for (std::size_t i = 0; i < std::size(kDescValues); ++i) {
    bindDesc();
    put("f", "i", "d");
    desc.sValueFreq(1);
    (desc.*kDescValues[i].dbf)(nullptr);
    desc.UpdateDBF();
    EXPECT_THAT(suite.log(), HasSubstr(std::string("Error in scLookAnt_Desc.Update at flag ") +
                                       kDescValues[i].tableFlag + "\r\n91 "));
    EXPECT_EQ(shown(), std::string(i > 0 ? "AMSN0001|" : "f|") + (i > 1 ? "ID1|" : "i|") + (i > 2 ? "Whip" : "d"));
  }
  EXPECT_TRUE(screen.shown().empty());
  screen.answers = {MsgAnswer::ok};
  desc.cmdClear.userClick();
  EXPECT_EQ(events(), "");
}

TEST_F(LookAntDescRecord, ReadsTheFourKeysOfAFile) {
  for (const auto& [key, text] :
       {std::pair{"TX_A1FNM", "AMSN0001"}, {"TX_A1TID", "ID1"}, {"TX_A1TYP", "Whip"}, {"TX_FREQMHZ", "460"}}) {
    setINI("Site", key, ini, text);
  }
  desc.UpdateINI();
  EXPECT_EQ(shown(), "||");
  desc.HookINI(masterHook());
  desc.UpdateINI();
  EXPECT_EQ(shown(), "AMSN0001|ID1|Whip");
  EXPECT_EQ(frequency(), "460");
  for (const DescValue& value : kDescValues) {
    EXPECT_EQ((desc.*value.ini)()->INIVariable(), value.field);
    EXPECT_EQ((desc.*value.ini)()->INISection(), "Site");
  }
}

TEST_F(LookAntDescRecord, UpdateReadsTheTableThenTheFile) {
  bindDesc();
  setINI("Site", "TX_A1TYP", ini, "from the file");
  desc.HookINI(masterHook());
  desc.Update();
  EXPECT_EQ(shown(), "||from the file");
}

TEST_F(LookAntDescRecord, AFailureOfTheFileIsToldWithItsFlag) {
  desc.HookINI(masterHook());
  setINI("Site", "TX_A1TYP", ini, "Whip");
  const Connection fault =
      desc.txtDesc.changed.connect([] { throw RunTimeFailure(failure::overflow, "surface lost"); });
  desc.UpdateINI();
  ASSERT_EQ(screen.shown().size(), 1U);
  EXPECT_EQ(screen.shown()[0].message.text, "3400 scLookAnt_Desc:UPdateINI");
}

TEST_F(LookAntDescRecord, SavesAllButTheFrequency) {
  bindDesc();
  desc.HookINI(masterHook());
  put("AMSN0002", "ID2", "Yagi");
  desc.sValueFreq(900);
  EXPECT_EQ(desc.Save(), "");
  EXPECT_EQ(inTable("TX_A1FNM") + "|" + inTable("TX_A1TID") + "|" + inTable("TX_A1TYP"), "AMSN0002|ID2|Yagi");
  EXPECT_EQ(inTable("TX_FREQMHZ"), "451.25");
  for (const DescValue& value : kDescValues) (desc.*value.ini)()->INISection("Site");
  EXPECT_EQ(desc.Save(), "");
  EXPECT_EQ(inFile("TX_A1FNM") + "|" + inFile("TX_A1TID") + "|" + inFile("TX_A1TYP"), "AMSN0002|ID2|Yagi");
  EXPECT_EQ(inFile("TX_FREQMHZ"), "(none)");
}

TEST_F(LookAntDescRecord, AFieldThatDoesNotTakeItsTextEndsTheSaving) {
  bindDesc();
  put("AMSN0002", "an ID that is too wide", "Yagi");
  EXPECT_THAT(desc.Save(),
              AllOf(StartsWith("Error in Antenna Lookup SaveDBF\r\nField: TX_A1TID Value: an ID that is too wide"),
                    HasSubstr(" Error: 3163 ")));
  EXPECT_EQ(inTable("TX_A1FNM"), "AMSN0002");
  EXPECT_EQ(inTable("TX_A1TYP"), "Whip");
}

TEST_F(LookAntDescRecord, FindsItsHooksAndValuesByField) {
  bindDesc();
  for (const DescValue& value : kDescValues) EXPECT_EQ(desc.HookArray(value.field), (desc.*value.dbf)()) << value.name;
  EXPECT_EQ(desc.HookArray("tx_a1fnm"), nullptr);
  desc.UpdateDBF();
  EXPECT_EQ(desc.sHookDBFValue("tx_a1fnm"), "AMSN0001");
  EXPECT_EQ(desc.sHookDBFValue("TX_A1TID"), "ID1");
  EXPECT_EQ(desc.sHookDBFValue("TX_A1TYP"), "Whip");
  EXPECT_EQ(desc.sHookDBFValue("TX_FREQMHZ"), "451.25");
  EXPECT_EQ(desc.sHookDBFValue("TX_A1GAIN"), "");
  desc.LookupOnly(false);
  desc.sHookDBFValue("tx_freqmhz", "928.5");
  desc.sHookDBFValue("TX_A1TYP", "Yagi");
  EXPECT_EQ(frequency() + desc.sValueDesc(), "928.5Yagi");
  desc.Locked(true);
  desc.sHookDBFValue("TX_A1TYP", "Whip");
  EXPECT_EQ(desc.sValueDesc(), "Yagi");
  EXPECT_FALSE(desc.bDirty());
}

TEST_F(LookAntDescRecord, NeedsAllFourHooksForHookArray) {
  for (const DescValue& value : kDescValues) {
    scLookAnt_Desc fresh;
    record = open();
    for (const DescValue& each : kDescValues) (fresh.*each.dbf)(hookFor(record, each.field));
    (fresh.*value.dbf)(nullptr);
    EXPECT_EQ(test::failureNumberOf([&] { fresh.HookArray("TX_A1FNM"); }), failure::objectNotSet) << value.name;
  }
}

TEST_F(LookAntDescRecord, LetsGoOfAllFourHooks) {
  bindDesc();
  const IOHooksDBFPtr file = desc.HookDBFFile();
  EXPECT_TRUE(desc.DisconnectDBF().isNull());
  EXPECT_EQ(file->DBFField(), "");
  for (const DescValue& value : kDescValues) EXPECT_EQ((desc.*value.dbf)(), nullptr) << value.name;
  desc.HookINI(masterHook());
  std::vector<IOHooksINIPtr> former;
  for (const DescValue& value : kDescValues) former.push_back((desc.*value.ini)());
  desc.HookINI(nullptr);
  for (std::size_t i = 0; i < std::size(kDescValues); ++i) EXPECT_NE((desc.*kDescValues[i].ini)(), former[i]);
}

TEST_F(LookAntDescRecord, EndsItsHooksWithItself) {
  const IOHooksDBFPtr hook = hookFor(open(), "TX_A1TYP");
  {
    scLookAnt_Desc brief;
    brief.HookDBFDesc(hook);
  }
  EXPECT_EQ(hook->DBFField(), "");
}

TEST_F(LookAntDescRecord, BindsThreeFieldsOfADevelopersTableAndLeavesTheFrequency) {
  desc.TestInit();
  EXPECT_EQ(shown(), "||");
  for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ((desc.*kDescValues[i].dbf)()->DBFField(), kDescValues[i].field);
  EXPECT_EQ(desc.HookDBFFreq(), nullptr);
  desc.HookDBFFreq(hookFor(desc.HookDBFFile()->DBFRS(), "TX_A1ORIEN"));
  desc.TestInit();
  desc.UpdateDBF();
  EXPECT_EQ(shown(), "AMSN0001|ID1|Whip");
  EXPECT_EQ(frequency(), "120");
}

// --- The host's edit.

TEST_F(LookAntDescRecord, LetsTheHostDeclareItsEdit) {
  Value advice;
  EXPECT_FALSE(desc.bEdit(false, &advice).boolean());
  ASSERT_EQ(screen.shown().size(), 1U);
  EXPECT_EQ(screen.shown()[0].message.title, "No Access");
  EXPECT_THAT(advice.text(), StartsWith("scLookAnt_Desc\r\n"));
  bindDesc();
  EXPECT_TRUE(desc.bEdit().boolean());
  const auto active = [this] { return desc.Save().find("Error: 3020 ") != std::string::npos; };
  EXPECT_TRUE(active());
  desc.CancelEdit();
  EXPECT_FALSE(active());
  desc.Edit();
  EXPECT_TRUE(active());
  desc.EditUpdate();
  EXPECT_FALSE(active());
}

}  // namespace
}  // namespace vantrelix
