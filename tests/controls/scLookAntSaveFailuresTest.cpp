// What the antenna lookup control tells where its host's record cannot be written.
#include <array>
#include <filesystem>
#include <gmock/gmock.h>
#include <sys/stat.h>

#include "controls/RecordFixture.h"
#include "platform/RunTimeFailure.h"
#include "support/Processes.h"
#include "tables/cursorTables.h"

namespace vantrelix {
namespace {

using test::BoundValue;
using test::failureNumberOf;
using test::kBoundValues;
using test::kSaved;
using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr std::size_t kInvert = 9;
constexpr const char* kTableFailed = "Error in Antenna Lookup SaveDBF\r\nField: ";
constexpr const char* kFileFailed = "Error in Antenna Lookup SaveINI \r\nField: ";

class LookAntSaveFailure : public test::RecordTest {
 protected:
  LookAntSaveFailure() {
    DbfFile::setLockWait(20);
    control.SeePreview(false);
  }
  ~LookAntSaveFailure() override { DbfFile::setLockWait(2000); }

  // The first `count` fields hold the other values, the rest the row's.
  void expectWrittenUpTo(std::size_t count, const char* where) const {
    for (std::size_t i = 0; i < kSaved; ++i) {
      const BoundValue& value = kBoundValues[i];
      const std::string written = i == kInvert ? "False" : value.stored;
      EXPECT_EQ(inTable(value.field), i < count ? written : trim(value.row.asText())) << value.name << ", " << where;
    }
  }
  void restoreRow() const {
    const RecordsetPtr rows = open();
    rows->Edit();
    for (const BoundValue& value : kBoundValues) rows->put(value.field, value.row);
    rows->Update();
  }
};

TEST_F(LookAntSaveFailure, OfAFieldIsToldAndTheFieldsBeforeItAreWritten) {
  putOthers();
  for (std::size_t i = 0; i < kSaved; ++i) {
    const BoundValue& value = kBoundValues[i];
    restoreRow();
    bind();
    (control.*value.dbf)()->DBFField("TX_GONE");
    EXPECT_THAT(control.Save(),
                StartsWith(std::string(kTableFailed) + "TX_GONE Value: " + value.stored + " Error: 3265 "));
    expectWrittenUpTo(i, value.name);
    EXPECT_FALSE(record->editing());
  }
}

TEST_F(LookAntSaveFailure, OfAMissingHookNamesTheHook) {
  putOthers();
  for (std::size_t i = 0; i < kSaved; ++i) {
    const BoundValue& value = kBoundValues[i];
    if (value.dbf == &scLookAnt::HookDBFID) continue;
    restoreRow();
    bind();
    (control.*value.dbf)(nullptr);
    EXPECT_EQ(control.Save(), std::string(kTableFailed) + " Value: " + value.stored + " Error: 91 HookDBF" +
                                  value.name + " is not set. Put a hook there first.");
    expectWrittenUpTo(i, value.name);
  }
}

TEST_F(LookAntSaveFailure, OfAValueTooWideForItsFieldDropsTheEdit) {
  bind();
  putOthers();
  control.sValueDesc("a description of many words");
  EXPECT_THAT(control.Save(),
              StartsWith(std::string(kTableFailed) + "TX_A1TYP Value: a description of many words Error: 3163 "));
  expectWrittenUpTo(2, "");
  EXPECT_FALSE(record->editing());
  EXPECT_EQ(trim(record->value("TX_A1TYP").asText()), "Whip");
}

TEST_F(LookAntSaveFailure, OfARecordAtItsEndIsTold) {
  bind();
  putOthers();
  record->MoveLast();
  record->MoveNext();
  EXPECT_THAT(control.Save(), StartsWith(std::string(kTableFailed) + "TX_A1FNM Value: AMSN0002 Error: 3021 "));
  record->Close();
  EXPECT_THAT(control.Save(), StartsWith(std::string(kTableFailed) + "TX_A1FNM Value: AMSN0002 Error: 91 "));
  expectWrittenUpTo(0, "");
}

TEST_F(LookAntSaveFailure, OfATableRemovedMeanwhileIsTold) {
  bind();
  const auto file = std::make_shared<IOHooksDBF>();
  file->DBFField("TX_A1FNM");
  file->DBFPathName(table);
  control.HookDBFFile(file);
  putOthers();
  ASSERT_EQ(control.Save(), "");
  std::filesystem::remove(suite.folder().machine("FACILITY.DBF"));
  file->DBFPathName(table);
  EXPECT_THAT(control.Save(), StartsWith(std::string(kTableFailed) + "TX_A1FNM Value: AMSN0002 Error: 3011 "));
  control.UpdateDBF();
  EXPECT_THAT(suite.log(), HasSubstr("Error in scLookAnt.Update at flag 1000\r\n3011 "));
}

TEST_F(LookAntSaveFailure, OfAHookWithoutATableIsTold) {
  bind();
  control.HookDBFID(std::make_shared<IOHooksDBF>());
  putOthers();
  EXPECT_THAT(control.Save(), StartsWith(std::string(kTableFailed) + " Value: ID2 Error: 3044 "));
  expectWrittenUpTo(1, "");
}

TEST_F(LookAntSaveFailure, OfATableOpenedForReadingIsTold) {
  bind(control, DBEngine::OpenDatabase(suite.path(), false, true)->OpenRecordset("Select * from [FACILITY]"));
  putOthers();
  EXPECT_THAT(control.Save(), StartsWith(std::string(kTableFailed) + "TX_A1FNM Value: AMSN0002 Error: 3027 "));
}

TEST_F(LookAntSaveFailure, OfARecordHeldByAnotherProgramIsToldAndWhatWasWrittenStays) {
  DbfFile::create(suite.file("HELD.DBF"), {{"GAIN", 'N', 8, 2}});
  const auto held = DbfFile::open(suite.file("HELD.DBF"));
  held->append(held->blankRecord().data());
  std::array<int, 2> ready{}, done{};
  ASSERT_EQ(::pipe(ready.data()) + ::pipe(done.data()), 0);
  char token = 'x';
  const pid_t holder = test::startChild([&] {
    const RecordsetPtr rows = open("Select * from [HELD]");
    rows->LockEdits(true);
    rows->Edit();
    return ::write(ready[1], &token, 1) == 1 && ::read(done[0], &token, 1) == 1;
  });
  ASSERT_EQ(::read(ready[0], &token, 1), 1);

  bind();
  const RecordsetPtr mine = open("Select * from [HELD]");
  control.HookDBFGain(hookFor(mine, "GAIN"));
  putOthers();
  EXPECT_THAT(control.Save(), StartsWith(std::string(kTableFailed) + "GAIN Value: 7.25 Error: 3211 "));
  EXPECT_FALSE(mine->editing());
  expectWrittenUpTo(3, "while it is held");

  ASSERT_EQ(::write(done[1], &token, 1), 1);
  EXPECT_EQ(test::exitCode(holder), 0);
  EXPECT_EQ(control.Save(), "");
  EXPECT_EQ(mine->value("GAIN"), Value(7.25));
  for (const int end : {ready[0], ready[1], done[0], done[1]}) ::close(end);
}

TEST_F(LookAntSaveFailure, OfAKeyIsToldUnderItsLabelAndTheKeysBeforeItAreWritten) {
  for (std::size_t i = 0; i < kSaved; ++i) {
    const BoundValue& value = kBoundValues[i];
    suite.folder().write("FACILITY.INI", "");
    bindINI();
    for (const BoundValue& each : kBoundValues) (control.*each.ini)()->iniFile(ini);
    putOthers();
    (control.*value.ini)()->iniFile(suite.file("none\\FACILITY.INI"));
    EXPECT_THAT(control.Save(), StartsWith(kFileFailed + std::string(value.iniLabel) + " Value: " + value.stored +
                                           " Error: 75 The file "));
    for (std::size_t k = 0; k < kSaved; ++k) {
      EXPECT_EQ(inFile(kBoundValues[k].variable), k < i ? kBoundValues[k].stored : "(none)")
          << kBoundValues[k].name << ", " << value.name;
    }
  }
}

TEST_F(LookAntSaveFailure, OfAReadOnlyFileIsTold) {
  bindINI();
  suite.folder().write("FACILITY.INI", "[Site]\r\nTX_A1TID=ID1\r\n");
  ::chmod(suite.folder().machine("FACILITY.INI").c_str(), 0444);
  ::chmod(suite.folder().machine().c_str(), 0777);
  putOthers();
  const int ended = test::runWithoutPrivilege([this] {
    const std::string told = control.Save();
    return told.starts_with(kFileFailed + std::string("HookINIFIle Value: AMSN0002 Error: 75 The file ")) &&
           told.ends_with("FACILITY.INI cannot be written. Check that it is not read-only.");
  });
  EXPECT_EQ(ended, 0);
  EXPECT_EQ(inFile("TX_A1TID"), "ID1");
}

TEST_F(LookAntSaveFailure, OfTheFileStillMakesTheKeysOfAllValues) {
  const IOHooksINIPtr master = masterHook();
  master->iniFile(suite.file("none\\FACILITY.INI"));
  control.HookINI(master);
  EXPECT_THAT(control.Save(), HasSubstr("HookINIFIle"));
  master->iniFile(ini);
  for (const BoundValue& value : kBoundValues) EXPECT_NE((control.*value.ini)()->iniFile(), ini) << value.name;
}

TEST_F(LookAntSaveFailure, OfTheTableDoesNotKeepTheFileFromBeingWritten) {
  bind();
  record->Close();
  bindINI();
  putOthers();
  const std::string told = control.Save();
  EXPECT_THAT(told, StartsWith(kTableFailed));
  EXPECT_EQ(told.find("SaveINI"), std::string::npos);
  EXPECT_EQ(told.back() == '\n', false);
  EXPECT_EQ(inFile("TX_A1POL"), "cir");
}

TEST_F(LookAntSaveFailure, OfTableAndFileStandWithABlankLineBetween) {
  bind();
  bindINI();
  control.HookDBFFile(nullptr);
  control.HookINIFile()->iniFile(suite.file("none\\FACILITY.INI"));
  EXPECT_EQ(control.Save(), control.SaveDBF() + "\r\n\r\n" + control.SaveINI());
  EXPECT_THAT(control.SaveINI(), StartsWith(kFileFailed));
  control.HookDBFFile(hookFor(record, "TX_A1FNM"));
  EXPECT_THAT(control.Save(), StartsWith(kFileFailed));
}

}  // namespace
}  // namespace vantrelix
