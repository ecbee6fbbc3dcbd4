// What the repair of a table whose fields are not those of the dictionary makes of it, and what it leaves alone.
#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <utility>

#include "platform/FaultPlatform.h"
#include "support/Processes.h"
#include "tables/dictionaryTables.h"
#include "tables/structure.h"

namespace vantrelix {
namespace {

using platform::FaultPlatform;
using test::column;
using test::DictionarySuite;
using test::filesThatBegin;
using test::oldMaster;
using test::StoppedClock;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr const char* kAms = "AMSPDBASE";
constexpr const char* kTable = "AMSTEST1.DBF";

int repair(const std::string& path) { return RSTblValidRS(FieldsFromDataSum(kAms), path, true, true, kAms); }

TEST(Repair, TheRowsAreKeptAndTheNewFieldsAreBlank) {
  DictionarySuite suite;
  const std::string path = oldMaster(suite.folder());
  ASSERT_TRUE(RSTblValid(FieldsFromDataSum(kAms), path, true, false, kAms));
  EXPECT_THAT(column(path, "ATYPE_ID"), ElementsAre("TEST10000001", "TEST10000003"));
  EXPECT_THAT(column(path, "ANTENNA"), ElementsAre("First", "Second"));
  EXPECT_THAT(column(path, "GAIN"), ElementsAre("10.25", "(null)"));
  EXPECT_THAT(column(path, "GAIN_UN"), ElementsAre("(null)", "dBi"));
  EXPECT_THAT(column(path, "POWER"), ElementsAre("(null)", "(null)"));
  EXPECT_THAT(column(path, "POWER_UN"), ElementsAre("(null)", "(null)"));
}

TEST(Repair, TheOldFileIsKeptByteForByteUnderItsDatedName) {
  DictionarySuite suite;
  const std::string path = oldMaster(suite.folder());
  const std::string before = suite.folder().read(kTable);
  ASSERT_EQ(repair(path), tableCode::fine);
  const std::vector<std::string> files = filesThatBegin(suite.folder(), "AMS");
  ASSERT_EQ(files.size(), 2u);
  EXPECT_EQ(files[1].rfind("AMSTEST1_20", 0), 0u) << files[1];
  EXPECT_EQ(files[1].size(), std::string("AMSTEST1_202611211648.DBF").size());
  EXPECT_EQ(suite.folder().read(files[1]), before);
  EXPECT_EQ(filesThatBegin(suite.folder(), "").size(), 3u);
}

TEST(Repair, TheNamesComeFromTheClock) {
  DictionarySuite suite;
  StoppedClock clock(platform::current());
  platform::Substitute substitute(clock);
  const std::string path = oldMaster(suite.folder());
  ASSERT_EQ(repair(path), tableCode::fine);
  EXPECT_TRUE(suite.folder().exists("AMSTEST1_202611211648.DBF"));
  EXPECT_TRUE(clock.hasRenamed("48111626.DBF"));
}

TEST(Repair, TwoRepairsInOneSecondKeepBothOldFiles) {
  DictionarySuite suite;
  StoppedClock clock(platform::current());
  platform::Substitute substitute(clock);
  const std::string path = oldMaster(suite.folder());
  const std::string first = suite.folder().read(kTable);
  ASSERT_EQ(repair(path), tableCode::fine);
  DbfFile::create(path, {{"ATYPE_ID", 'C', 12, 0}});
  const std::string second = suite.folder().read(kTable);
  ASSERT_EQ(repair(path), tableCode::fine);
  EXPECT_EQ(suite.folder().read("AMSTEST1_202611211648.DBF"), first);
  EXPECT_EQ(suite.folder().read("AMSTEST1_202611211649.DBF"), second);
}

TEST(Repair, ATakenTemporaryNameIsLeftToItsOwner) {
  DictionarySuite suite;
  StoppedClock clock(platform::current());
  platform::Substitute substitute(clock);
  suite.folder().write("48111626.DBF", "another's");
  ASSERT_EQ(repair(oldMaster(suite.folder())), tableCode::fine);
  EXPECT_EQ(suite.folder().read("48111626.DBF"), "another's");
  EXPECT_FALSE(suite.folder().exists("49111626.DBF"));
}

TEST(Repair, NumbersKeepTheEnginesOwnWidths) {
  DictionarySuite suite;
  const std::string path = oldMaster(suite.folder());
  ASSERT_EQ(repair(path), tableCode::fine);
  const auto table = DbfFile::open(path, true);
  EXPECT_EQ(table->fields().at(2).width, engineField("GAIN", FieldType::doubleNumber, 12).width);
  EXPECT_EQ(table->fieldIndex("NOTE"), -1);
}

TEST(Repair, ATableThatAnotherHasOpenIsNotTouched) {
  DictionarySuite suite;
  const std::string path = oldMaster(suite.folder());
  const std::string before = suite.folder().read(kTable);
  const auto reader = DbfFile::open(path, true);
  EXPECT_EQ(repair(path), tableCode::inUse);
  EXPECT_FALSE(RSTblValid(FieldsFromDataSum(kAms), path, true, true, kAms));
  EXPECT_EQ(suite.folder().read(kTable), before);
  EXPECT_THAT(filesThatBegin(suite.folder(), "AMS"), ElementsAre(kTable));
}

TEST(Repair, WaitsForNoWriterAndTakesNoTableFromUnderOne) {
  DictionarySuite suite;
  const std::string path = oldMaster(suite.folder());
  auto writer = DbfFile::open(path);
  EXPECT_EQ(test::exitCode(test::startChild([&] { return repair(path) == tableCode::inUse; })), 0);
  const std::vector<unsigned char> row = writer->blankRecord();
  writer->append(row.data());
  EXPECT_EQ(column(path, "ANTENNA").size(), 3u);
  writer.reset();
  EXPECT_EQ(repair(path), tableCode::fine);
  EXPECT_THAT(column(path, "ANTENNA"), ElementsAre("First", "Second", "(null)"));
}

// Nobody opens a table while it is being mended: at each step another process finds it held.
TEST(Repair, HoldsTheTableUntilTheNewOneStandsInItsPlace) {
  class Watching : public FaultPlatform {
   public:
    explicit Watching(std::string path) : FaultPlatform(platform::current()), path_(std::move(path)) {}
    void copyPermissions(const std::string& from, const std::string& to) override {
      FaultPlatform::copyPermissions(from, to);
      heldBefore_ = !opens();
    }
    void rename(const std::string& from, const std::string& to) override {
      FaultPlatform::rename(from, to);
      if (to == path_) freeBehind_ = opens();
    }
    bool opens() const {
      return test::exitCode(test::startChild([this] { return DbfFile::open(path_) != nullptr; })) == 0;
    }
    std::string path_;
    bool heldBefore_ = false;
    bool freeBehind_ = false;
  };
  DictionarySuite suite;
  Watching watching(oldMaster(suite.folder()));
  const platform::Substitute substitute(watching);
  ASSERT_EQ(repair(watching.path_), tableCode::fine);
  EXPECT_TRUE(watching.heldBefore_);
  EXPECT_TRUE(watching.freeBehind_);
}

TEST(Repair, AReadOnlyCheckDoesNotRepair) {
  DictionarySuite suite;
  const std::string path = oldMaster(suite.folder());
  EXPECT_EQ(RSTblValidRS(FieldsFromDataSum(kAms), path, true, true, kAms, RecordsetType::dynaset, 0, false, true),
            tableCode::unknown);
  EXPECT_THAT(suite.log(), HasSubstr("Error 3027: "));
  EXPECT_THAT(filesThatBegin(suite.folder(), "AMS"), ElementsAre(kTable));
}

TEST(Repair, ATextThatDoesNotFitItsNewFieldIsNotCut) {
  DictionarySuite suite;
  const std::string path = suite.file("AHDTEST1.DBF");
  DbfFile::create(path, {{"ATYPE_ID", 'C', 20, 0}});
  test::addRow(path, {{"ATYPE_ID", "fits"}});
  test::addRow(path, {{"ATYPE_ID", "longer than twelve"}});
  const std::string before = suite.folder().read("AHDTEST1.DBF");
  EXPECT_EQ(RSTblValidRS(FieldsFromDataSum("AHDTADBASE"), path, true, true, ""), tableCode::unknown);
  EXPECT_EQ(suite.folder().read("AHDTEST1.DBF"), before);
  EXPECT_THAT(suite.log(), HasSubstr("Error 3163: "));
  EXPECT_THAT(suite.log(), HasSubstr("SQL: Insert Into ["));
  EXPECT_THAT(suite.log(), HasSubstr("] Select ATYPE_ID From [AHDTEST1]"));
}

TEST(Repair, ThatFailsLeavesItsTemporaryTableInTheFolder) {
  DictionarySuite suite;
  StoppedClock clock(platform::current());
  platform::Substitute substitute(clock);
  const std::string path = suite.file("AHDTEST1.DBF");
  DbfFile::create(path, {{"ATYPE_ID", 'C', 20, 0}});
  test::addRow(path, {{"ATYPE_ID", "longer than twelve"}});
  ASSERT_EQ(RSTblValidRS(FieldsFromDataSum("AHDTADBASE"), path, true, true, ""), tableCode::unknown);
  EXPECT_THAT(filesThatBegin(suite.folder(), ""),
              ElementsAre("48111626.DBF", "AHDTEST1.DBF", "QVTECSUP.TXT", "SYSTEM"));
  EXPECT_THAT(column(suite.file("48111626.DBF"), "HOR_AZ"), ElementsAre());
  EXPECT_THAT(suite.log(), HasSubstr("TempTable: [48111626]"));
}

TEST(Repair, TextBecomesANumberWhereTheDictionaryNowHasOne) {
  DictionarySuite suite;
  const std::string path = suite.file("AHDTEST1.DBF");
  DbfFile::create(path, {{"ATYPE_ID", 'N', 5, 0}, {"HOR_AZ", 'C', 10, 0}});
  test::addRow(path, {{"ATYPE_ID", 17}, {"HOR_AZ", " 12.5"}});
  ASSERT_EQ(RSTblValidRS(FieldsFromDataSum("AHDTADBASE"), path, true, true, ""), tableCode::fine);
  EXPECT_THAT(column(path, "ATYPE_ID"), ElementsAre("17"));
  EXPECT_THAT(column(path, "HOR_AZ"), ElementsAre("12.5"));
}

TEST(Repair, ATableWithMemosIsRefusedAndLeftWhole) {
  DictionarySuite suite;
  const std::string path = suite.file(kTable);
  DbfFile::create(path, {{"ATYPE_ID", 'C', 12, 0}, {"NOTES", 'M', 10, 0}});
  const std::string before = suite.folder().read(kTable);
  EXPECT_EQ(repair(path), tableCode::unknown);
  EXPECT_EQ(suite.folder().read(kTable), before);
  EXPECT_THAT(suite.log(), HasSubstr("holds memos"));
}

TEST(Repair, ThatWouldAddAMemoFieldIsRefusedAndTellsWhichOne) {
  DictionarySuite suite;
  const std::string path = oldMaster(suite.folder());
  const std::string before = suite.folder().read(kTable);
  FieldList fields = FieldsFromDataSum(kAms);
  fields.push_back({"REMARK", 10, FieldType::memo, ""});
  EXPECT_EQ(RSTblValidRS(fields, path, true, true, ""), tableCode::unknown);
  EXPECT_EQ(suite.folder().read(kTable), before);
  EXPECT_THAT(suite.log(), HasSubstr("lacks a field and is to have the memo field REMARK"));
  EXPECT_THAT(filesThatBegin(suite.folder(), "AMS"), ElementsAre(kTable));
}

TEST(Repair, BehindALinkTheTableItselfIsMended) {
  DictionarySuite suite;
  std::filesystem::create_directory(suite.folder().machine("REAL"));
  oldMaster(suite.folder(), "REAL/AMSTEST1.DBF");
  std::filesystem::create_symlink(suite.folder().machine("REAL/AMSTEST1.DBF"), suite.folder().machine(kTable));
  ASSERT_EQ(repair(suite.file(kTable)), tableCode::fine);
  EXPECT_TRUE(std::filesystem::is_symlink(suite.folder().machine(kTable)));
  EXPECT_EQ(column(suite.file("REAL/AMSTEST1.DBF"), "POWER").size(), 2u);
}

TEST(Repair, ThousandsOfRowsComeAcrossInTheirOrder) {
  DictionarySuite suite;
  const std::string path = suite.file("AHDTEST1.DBF");
  DbfFile::create(path, {{"ATYPE_ID", 'C', 12, 0}, {"HOR_AZ", 'N', 8, 2}});
  auto table = DbfFile::open(path);
  std::vector<unsigned char> records;
  const int rows = 50000;
  for (int i = 0; i < rows; ++i) {
    std::vector<unsigned char> record = table->blankRecord();
    table->put(record.data(), 1, i);
    records.insert(records.end(), record.begin(), record.end());
  }
  table->append(records.data(), rows);
  table.reset();
  ASSERT_EQ(RSTblValidRS(FieldsFromDataSum("AHDTADBASE"), path, true, true, ""), tableCode::fine);
  const std::vector<std::string> numbers = column(path, "HOR_AZ");
  ASSERT_EQ(numbers.size(), static_cast<std::size_t>(rows));
  for (int i = 0; i < rows; ++i) ASSERT_EQ(numbers[static_cast<std::size_t>(i)], std::to_string(i));
}

TEST(Repair, OfATableWithAStructuralIndexIsRefusedAndLeavesItAsItIs) {
  DictionarySuite suite;
  const std::string path = oldMaster(suite.folder());
  std::string bytes = suite.folder().read(kTable);
  bytes[28] = 1;
  suite.folder().write(kTable, bytes);
  EXPECT_EQ(repair(path), tableCode::unknown);
  EXPECT_EQ(suite.folder().read(kTable), bytes);
  EXPECT_THAT(filesThatBegin(suite.folder(), "AMS"), ElementsAre(kTable));
  EXPECT_THAT(suite.log(), HasSubstr("Error 3027: "));
}

// A power loss leaves what was synced: at each rename all that it relies on is on the disk.
TEST(Repair, BringsToTheDiskWhatARenameReliesOn) {
  DictionarySuite suite;
  StoppedClock clock(platform::current());
  platform::Substitute substitute(clock);
  const std::string path = oldMaster(suite.folder());
  clock.reset();
  ASSERT_EQ(repair(path), tableCode::fine);
  std::vector<std::string> order;
  for (const std::string& call : clock.journal()) {
    if (call.rfind("sync", 0) == 0 || call.rfind("rename", 0) == 0) order.push_back(call);
  }
  const std::string temporary = suite.folder().machine("48111626.DBF");
  const std::string dated = suite.folder().machine("AMSTEST1_202611211648");
  const std::string folder = "syncFolder " + suite.folder().machine();
  ASSERT_GE(order.size(), 6u);
  const std::vector<std::string> last(order.end() - 6, order.end());
  EXPECT_THAT(last, ElementsAre("sync " + temporary, "sync " + dated + ".TMP", "renameNew " + dated + ".DBF", folder,
                                "rename " + suite.folder().machine(kTable), folder));
  // No byte of the temporary table is written behind its sync.
  const auto synced = std::find(clock.journal().rbegin(), clock.journal().rend(), "sync " + temporary);
  EXPECT_EQ(std::find(clock.journal().rbegin(), synced, "writeAt " + temporary), synced);
}

}  // namespace
}  // namespace vantrelix
