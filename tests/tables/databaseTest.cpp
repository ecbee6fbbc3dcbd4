#include <filesystem>
#include <gtest/gtest.h>

#include "platform/RunTimeFailure.h"
#include "support/Processes.h"
#include "support/TempSuite.h"
#include "tables/cursorTables.h"

namespace vantrelix {
namespace {

using test::CursorTables;
using test::failureNumberOf;
using test::TempFolder;

TEST(OpenDatabase, KeepsTheFolderAndTheConnectText) {
  const TempFolder folder;
  const DatabasePtr database = DBEngine::OpenDatabase(folder.path() + "\\", false, false, "FoxPro 2.6");
  EXPECT_EQ(database->folder(), folder.path());
  EXPECT_EQ(database->connect(), "FoxPro 2.6");
}

TEST(OpenDatabase, TakesThePathOfATableForItsFolder) {
  const CursorTables tables;
  const DatabasePtr database = DBEngine::OpenDatabase(tables.folder.file("amstest.dbf"));
  EXPECT_EQ(database->folder(), tables.folder.path());
  EXPECT_EQ(DBEngine::OpenDatabase(tables.folder.file("NOTYET.DBF"))->folder(), tables.folder.path());
}

TEST(OpenDatabase, FailsWithTheFolderNamedWhereItCannotBeUsed) {
  const TempFolder folder;
  std::string text;
  EXPECT_EQ(failureNumberOf([&] { DBEngine::OpenDatabase(folder.file("missing")); }, &text), failure::badPath);
  EXPECT_NE(text.find(folder.machine("missing")), std::string::npos) << text;
  EXPECT_EQ(failureNumberOf([] { DBEngine::OpenDatabase(""); }), failure::badPath);
  EXPECT_EQ(failureNumberOf([&] { DBEngine::OpenDatabase(folder.file("missing\\X.DBF")); }), failure::badPath);
}

TEST(OpenRecordset, FindsATableWithoutRegardToCase) {
  const TempFolder folder;
  DbfFile::create(folder.file("amslow.dbf"), {{"ATYPE_ID", 'C', 12, 0}});
  const DatabasePtr database = DBEngine::OpenDatabase(folder.path());
  EXPECT_TRUE(database->OpenRecordset("select * from [AMSLOW]")->Eof());
  EXPECT_EQ(database->OpenRecordset("AMSLow", RecordsetType::table)->fieldCount(), 1U);
  EXPECT_EQ(database->OpenRecordset(" [amslow] ", RecordsetType::table)->fieldCount(), 1U);
}

TEST(OpenRecordset, NamesATableThatIsNotThere) {
  const CursorTables tables;
  std::string text;
  EXPECT_EQ(failureNumberOf([&] { tables.open("select * from [NOSUCH]"); }, &text), failure::noSuchTable);
  EXPECT_NE(text.find("NOSUCH"), std::string::npos) << text;
  EXPECT_EQ(failureNumberOf([&] { tables.open("select * from [..\\AMSTEST]"); }), failure::noSuchTable);
  EXPECT_EQ(failureNumberOf([&] { tables.open("select * from AMSTEST", RecordsetType::table); }), failure::noSuchTable);
}

TEST(OpenRecordset, OfADamagedFileFailsWithTheFileNamed) {
  const CursorTables tables;
  tables.folder.write("PICTURE.DBF", "\x89PNG\r\n\x1A\n and more that is no table");
  std::string text;
  EXPECT_NE(failureNumberOf([&] { tables.open("select * from PICTURE"); }, &text), 0);
  EXPECT_NE(text.find("PICTURE.DBF"), std::string::npos) << text;
}

TEST(OpenRecordset, FailsOnAClosedDatabase) {
  const CursorTables tables;
  tables.database->Close();
  EXPECT_EQ(failureNumberOf([&] { tables.open("select * from AMSTEST"); }), failure::objectNotSet);
  EXPECT_EQ(failureNumberOf([&] { tables.database->Execute("insert into a select * from b"); }), failure::objectNotSet);
}

TEST(OpenRecordset, ReportsATableHeldExclusivelyByAnotherProcess) {
  const CursorTables tables;
  const DatabasePtr holder = DBEngine::OpenDatabase(tables.folder.path(), true);
  const RecordsetPtr held = holder->OpenRecordset("select * from AMSTEST");
  const auto isInUse = [&] {
    const int number = failureNumberOf([&] { tables.open("select * from AMSTEST"); });
    return number == failure::cannotOpen || number == failure::locked;
  };
  EXPECT_TRUE(isInUse());
  EXPECT_EQ(test::exitCode(test::startChild(isInUse)), 0);
  held->Close();
  EXPECT_FALSE(isInUse());
}

TEST(OpenRecordset, DenyingReadsOrWritesKeepsOthersOut) {
  const CursorTables tables;
  const RecordsetPtr denied = tables.open("AMSTEST", RecordsetType::table, recordsetOption::denyRead);
  EXPECT_NE(failureNumberOf([&] { tables.open("select * from AMSTEST"); }), 0);
  denied->Close();
  DbfFile::setLockWait(20);
  const RecordsetPtr writer = tables.open("AMSTEST", RecordsetType::table, recordsetOption::denyWrite);
  const bool refused = failureNumberOf([&] {
                         const RecordsetPtr other = tables.open("select * from AMSTEST");
                         other->Edit();
                         other->put("GAIN", 1);
                         other->Update();
                       }) == failure::locked;
  DbfFile::setLockWait(2000);
  EXPECT_TRUE(refused);
  writer->Edit();
  writer->put("GAIN", 3);
  writer->Update();
  EXPECT_EQ(tables.list("select * from AMSTEST"), "3 10 9.5 -");
}

TEST(OpenRecordset, AWriteProtectedFileIsReadAndNotWritten) {
  const CursorTables tables;
  std::filesystem::permissions(tables.folder.machine(), std::filesystem::perms(0755));
  std::filesystem::permissions(tables.folder.machine("AMSTEST.DBF"), std::filesystem::perms(0444));
  EXPECT_EQ(test::runWithoutPrivilege([&] {
              const RecordsetPtr rows = tables.open("select * from AMSTEST");
              return rows->value("GAIN") == Value(2.15) &&
                     failureNumberOf([&] { rows->Edit(); }) == failure::readOnlyTable &&
                     failureNumberOf([&] { rows->AddNew(); }) == failure::readOnlyTable;
            }),
            0);
}

TEST(TableDef, MakesATableOfItsFieldsInOrder) {
  const TempFolder folder;
  const DatabasePtr database = DBEngine::OpenDatabase(folder.path());
  TableDef table = database->CreateTableDef("AMSNEW");
  table.append("ATYPE_ID", FieldType::text, 12);
  table.append("GAIN", FieldType::doubleNumber, 0);
  table.append("ACTIVE", FieldType::boolean, 0);
  EXPECT_FALSE(folder.exists("AMSNEW.DBF"));
  database->append(table);
  ASSERT_TRUE(folder.exists("AMSNEW.DBF"));
  const RecordsetPtr rows = database->OpenRecordset("select * from [AMSNEW]");
  EXPECT_EQ(rows->fieldCount(), 3U);
  EXPECT_EQ(rows->Fields(0).Name(), "ATYPE_ID");
  EXPECT_EQ(rows->Fields(0).Size(), 12);
  EXPECT_EQ(rows->Fields("gain").Type(), FieldType::doubleNumber);
  EXPECT_EQ(rows->Fields(2).Type(), FieldType::boolean);
}

TEST(TableDef, IsRefusedWhereTheTableExists) {
  const CursorTables tables;
  TableDef table = tables.database->CreateTableDef("amstest");
  table.append("X", FieldType::text, 5);
  EXPECT_EQ(failureNumberOf([&] { tables.database->append(table); }), failure::fileExists);
  EXPECT_EQ(tables.list("select * from AMSTEST"), "2.15 10 9.5 -");
}

// Copies, so that nothing that others do beside the real ones can be seen, and a suite for the log.
TEST(OpenRecordset, ReadsTheRealTablesThatCanBeRead) {
  const std::string real = test::realData("dbf");
  if (real.empty()) GTEST_SKIP() << "no real tables here";
  const test::TempSuite suite;
  const std::string folder = suite.folder().machine("DBF");
  std::filesystem::copy(real, folder);
  int read = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (!equalIgnoringCase(entry.path().extension().string(), ".dbf")) continue;
    std::uint32_t live = 0;
    RecordsetPtr rows;
    const std::string token = "[" + entry.path().stem().string() + "]";
    const DatabasePtr database = DBEngine::OpenDatabase(platform::current().fromMachine(folder), false, true);
    try {
      const auto table = DbfFile::open(platform::current().fromMachine(entry.path().string()), true);
      table->scan([&](std::uint32_t, const unsigned char* record) { return live += record[0] != '*' ? 1 : 0, true; });
    } catch (const RunTimeFailure& refusal) {
      EXPECT_EQ(failureNumberOf([&] { database->OpenRecordset("select * from " + token); }), refusal.number()) << token;
      continue;
    }
    rows = database->OpenRecordset("select * from " + token);
    if (rows->fieldCount() > 0)
      rows = database->OpenRecordset("select * from " + token + " order by [" + rows->Fields(0).Name() + "]");
    if (live > 0) rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), static_cast<long>(live)) << token;
    for (std::size_t i = 0; live > 0 && i < rows->fieldCount(); ++i) EXPECT_NO_THROW(rows->Fields(i).value()) << token;
    ++read;
  }
  EXPECT_GE(read, 100);
}

}  // namespace
}  // namespace vantrelix
