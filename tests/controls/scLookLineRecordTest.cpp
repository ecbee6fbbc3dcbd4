// The line lookup control and its host's facility record.
#include "controls/LineFixture.h"
#include "controls/scLookLine.h"
#include "foundation/text.h"

namespace vantrelix {
namespace {

struct Bound {
  const char* field;
  DBFSlot scLookLine::*dbf;
  INISlot scLookLine::*ini;
};
using L = scLookLine;
const Bound kBound[] = {
    {"TX_L1FNM", &L::HookDBFFile, &L::HookINIFile},   {"TX_L1TID", &L::HookDBFID, &L::HookINIID},
    {"TX_L1LEN", &L::HookDBFLen, &L::HookINILen},     {"TX_L1LENUN", &L::HookDBFUnit, &L::HookINIUnit},
    {"TX_L1LOS", &L::HookDBFLoss, &L::HookINILoss},   {"TX_L1TYP", &L::HookDBFDesc, &L::HookINIDesc},
    {"TX_FREQMHZ", &L::HookDBFFreq, &L::HookINIFreq},
};

class LookLineRecord : public test::LineTest {
 protected:
  LookLineRecord() {
    DbfFile::create(path, {{"TX_L1FNM", 'C', 8, 0},
                           {"TX_L1TID", 'C', 10, 0},
                           {"TX_L1TYP", 'C', 40, 0},
                           {"TX_L1LEN", 'N', 10, 2},
                           {"TX_L1LENUN", 'C', 4, 0},
                           {"TX_L1LOS", 'N', 8, 2},
                           {"TX_FREQMHZ", 'N', 12, 4}});
    addRow(path, {"LMST0001", "L1", "Seven eighths foam", 30.5, "m", 1.25, 451.25});
    addRow(path, {Value(), Value(), Value(), Value(), Value(), Value(), Value()});
    control.NewAlert.listen([this] { events += "alert "; });
    control.ChangeLine.listen([this] { events += "line "; });
  }

  void bind() {
    record = DBEngine::OpenDatabase(suite.path())->OpenRecordset("Select * from [FACILITY]");
    for (const Bound& slot : kBound) {
      auto hook = std::make_shared<IOHooksDBF>();
      hook->DBFRS(record);
      hook->DBFField(slot.field);
      (control.*slot.dbf)(hook);
    }
  }
  std::string values() const {
    return control.sValueFile() + "|" + control.sValueID() + "|" + control.sValueDesc() + "|" + control.sValueLen() +
           "|" + control.sValueUnit() + "|" + control.sValueLoss() + "|" + control.sValueFreq();
  }
  Value inTable(const char* field) const {
    return DBEngine::OpenDatabase(suite.path())->OpenRecordset("Select * from [FACILITY]")->value(field);
  }

  const std::string path = suite.file("FACILITY.DBF");
  RecordsetPtr record;
  scLookLine control;
  std::string events;
};

TEST_F(LookLineRecord, FillsFromItsTableInSilence) {
  bind();
  control.Update();
  EXPECT_EQ(values(), "LMST0001|L1|Seven eighths foam|30.5|m|1.25|451.25");
  EXPECT_EQ(control.lblFreq.caption(), "451.25MHz");
  EXPECT_EQ(events, "");
  EXPECT_FALSE(control.bDirty());
}

TEST_F(LookLineRecord, FillsFromARowOfNulls) {
  bind();
  control.Update();
  record->MoveNext();
  control.Update();
  EXPECT_EQ(values(), "||||ft||0");
}

TEST_F(LookLineRecord, KeepsTheUsersUnitThroughAFill) {
  bind();
  control.Update();
  EXPECT_EQ(kept("Line Lookup", "Units"), "(none)");
}

TEST_F(LookLineRecord, SavesEveryValueButTheFrequency) {
  bind();
  control.Update();
  control.sValueDesc("Specified Loss");
  control.sValueFile("");
  control.sValueLoss("2.5");
  control.sValueLen("12");
  control.Freq(900);
  EXPECT_EQ(control.Save(), "");
  EXPECT_TRUE(inTable("TX_L1FNM").isNull());
  EXPECT_EQ(trim(inTable("TX_L1TYP").asText()), "Specified Loss");
  EXPECT_EQ(inTable("TX_L1LOS").number(), 2.5);
  EXPECT_EQ(inTable("TX_L1LEN").number(), 12);
  EXPECT_EQ(inTable("TX_FREQMHZ").number(), 451.25);
}

TEST_F(LookLineRecord, StoresANullForALengthOrLossThatIsNoNumber) {
  bind();
  control.Update();
  control.sValueLen("far");
  control.sValueLoss("");
  EXPECT_EQ(control.Save(), "");
  EXPECT_TRUE(inTable("TX_L1LEN").isNull());
  EXPECT_TRUE(inTable("TX_L1LOS").isNull());
}

TEST_F(LookLineRecord, IsNotSavedToATableWithoutTheHookOfTheId) {
  bind();
  control.Update();
  control.HookDBFID(nullptr);
  control.sValueLen("99");
  EXPECT_EQ(control.Save(), "");
  EXPECT_EQ(inTable("TX_L1LEN").number(), 30.5);
}

TEST_F(LookLineRecord, SaveTellsTheFieldThatFailed) {
  bind();
  control.Update();
  control.sValueLen("1");
  control.sValueLoss("123456789");
  const std::string errors = control.Save();
  EXPECT_EQ(errors.find("Error in Antenna Lookup SaveDBF\r\nField: TX_L1LOS Value: 123456789.00 Error: 3163 "), 0U)
      << errors;
  EXPECT_EQ(inTable("TX_L1LEN").number(), 1);
}

TEST_F(LookLineRecord, LogsTheFlagOfAHookThatIsMissingAndStaysSilent) {
  const std::pair<const char*, const char*> flags[] = {
      {"TX_L1FNM", "1000"}, {"TX_L1TID", "1100"}, {"TX_L1LEN", "1200"},  {"TX_L1LENUN", "1300"},
      {"TX_L1LOS", "1400"}, {"TX_L1TYP", "1500"}, {"TX_FREQMHZ", "1600"}};
  for (std::size_t i = 0; i < std::size(flags); ++i) {
    bind();
    (control.*kBound[i].dbf)(nullptr);
    control.Update();
    const std::string told = std::string("Error in scLookLine.Update at flag ") + flags[i].second + "\r\n91 ";
    EXPECT_NE(suite.log().find(told), std::string::npos) << flags[i].first;
    control.txtLen.userBlur();
    EXPECT_EQ(events, "") << flags[i].first;
  }
  bind();
  control.Update();
  control.txtLen.userBlur();
  EXPECT_EQ(events, "alert line ");
}

TEST_F(LookLineRecord, GivesItsIniHooksTheSuitesNames) {
  auto master = std::make_shared<IOHooksINI>();
  master->iniFile("C:\\SITE.INI");
  control.HookINI(master);
  for (const Bound& slot : kBound) {
    const IOHooksINIPtr hook = (control.*slot.ini)();
    EXPECT_EQ(hook->INIVariable(), slot.field);
    EXPECT_EQ(hook->INISection(), "Facility Data");
    EXPECT_EQ(hook->iniFile(), "C:\\SITE.INI");
  }
  const IOHooksINIPtr former = control.HookINILen();
  control.HookINI(nullptr);
  EXPECT_NE(control.HookINILen(), former);
}

TEST_F(LookLineRecord, RoundTripsThroughAnIniFile) {
  auto master = std::make_shared<IOHooksINI>();
  master->iniFile(suite.file("SITE.INI"));
  master->INISection("Facility Data");
  control.HookINI(master);
  control.sValueFile("LMST0001");
  control.sValueID("L1");
  control.sValueDesc("Seven eighths foam");
  control.sValueUnit("m");
  control.sValueLen("30.5");
  control.sValueLoss("1.25");
  EXPECT_EQ(control.Save(), "");
  EXPECT_EQ(suite.folder().read("SITE.INI").find("TX_FREQMHZ"), std::string::npos);

  scLookLine other;
  other.HookINI(master);
  other.UpdateINI();
  EXPECT_EQ(other.sValueFile() + other.sValueID() + other.sValueDesc(), "LMST0001L1Seven eighths foam");
  EXPECT_EQ(other.sValueLen() + other.sValueUnit() + other.sValueLoss(), "30.5m1.25");
}

TEST_F(LookLineRecord, LeavesAnIniKeyAloneForWhatIsNoNumber) {
  suite.folder().write("SITE.INI", "[Facility Data]\r\nTX_L1LEN=7\r\nTX_L1LOS=8\r\n");
  auto master = std::make_shared<IOHooksINI>();
  master->iniFile(suite.file("SITE.INI"));
  control.HookINI(master);
  control.HookINILen()->INISection("Facility Data");
  control.sValueLen("far");
  EXPECT_EQ(control.Save(), "");
  EXPECT_NE(suite.folder().read("SITE.INI").find("TX_L1LEN=7\r\n"), std::string::npos);
}

TEST_F(LookLineRecord, HandsOneHookToAllValuesButTheFrequency) {
  auto hook = std::make_shared<IOHooksDBF>();
  auto frequency = std::make_shared<IOHooksDBF>();
  control.HookDBFFreq(frequency);
  control.HookDBF(hook);
  for (const Bound& slot : kBound) {
    const bool own = std::string(slot.field) == "TX_FREQMHZ";
    EXPECT_EQ((control.*slot.dbf)(), own ? frequency : hook) << slot.field;
  }
}

TEST_F(LookLineRecord, ReadsAndPutsAValueByItsField) {
  bind();
  control.Update();
  EXPECT_EQ(control.sHookDBFValue("tx_l1len"), "30.5");
  EXPECT_EQ(control.sHookDBFValue("TX_FREQMHZ"), "");
  control.sHookDBFValue("TX_L1TYP", "other");
  EXPECT_EQ(control.sValueDesc(), "other");
  EXPECT_EQ(events, "");
  EXPECT_FALSE(control.bDirty());
  control.Locked(true);
  control.sHookDBFValue("TX_L1TYP", "locked out");
  EXPECT_EQ(control.sValueDesc(), "other");
}

TEST_F(LookLineRecord, RaisesNoAlertForAUnitPutByItsField) {
  bind();
  control.Update();
  control.sHookDBFValue("TX_L1LENUN", "ft");
  EXPECT_EQ(control.sValueUnit(), "ft");
  EXPECT_EQ(events, "");
  EXPECT_NE(control.Alerts(), "") << "the library that is not there is told all the same";
}

TEST_F(LookLineRecord, LetsGoOfAllItsTableHooks) {
  bind();
  EXPECT_TRUE(control.DisconnectDBF().isNull());
  for (const Bound& slot : kBound) EXPECT_EQ((control.*slot.dbf)(), nullptr) << slot.field;
}

TEST_F(LookLineRecord, RefusesAnEditWithoutARecord) {
  Value told;
  EXPECT_FALSE(control.bEdit(true, &told).boolean());
  EXPECT_EQ(told.text().find("hookDBFFile not connected to database\r\n\r\n"), 0U) << told.text();
  EXPECT_TRUE(screen.shown().empty());
  EXPECT_FALSE(control.bEdit().boolean());
  ASSERT_EQ(screen.shown().size(), 1U);
  EXPECT_EQ(screen.shown()[0].message.title, "No Access");
  bind();
  EXPECT_TRUE(control.bEdit().boolean());
}

TEST_F(LookLineRecord, TestInitStepsThroughTheDevelopersTable) {
  control.TestInit();
  EXPECT_EQ(control.sValueID(), "");
  control.UpdateDBF();
  EXPECT_EQ(control.sValueID(), "L1");
  EXPECT_FALSE(control.Command1.visible());
  control.Command1.setVisible(true);
  control.Command1.userClick();
  EXPECT_EQ(control.sValueID(), "");
  EXPECT_EQ(control.Command1.caption(), "1");
}

}  // namespace
}  // namespace vantrelix
