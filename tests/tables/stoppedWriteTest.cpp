// Writes that fail or are cut off at any call to the system: what was confirmed is there, and nothing else is promised.
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/FaultPlatform.h"
#include "support/UnsyncedPlatform.h"
#include "tables/cursorTables.h"

namespace vantrelix {
namespace {

using platform::FaultPlatform;
using test::CursorTables;
using ::testing::AnyOf;
using ::testing::ElementsAre;

constexpr const char* kAll = "Select * from [AMSTEST]";
// Rows that hold these gains alone.
std::vector<unsigned char> rowsOf(DbfFile& table, const std::vector<int>& gains) {
  std::vector<unsigned char> rows;
  for (const int gain : gains) {
    std::vector<unsigned char> row = table.blankRecord();
    table.put(row.data(), static_cast<std::size_t>(table.fieldIndex("GAIN")), gain);
    rows.insert(rows.end(), row.begin(), row.end());
  }
  return rows;
}

constexpr const char* kOld = "2.15 10 9.5 -";

// How a write is stopped at its call number `call`, and the calls that are counted.
struct Stop {
  const char* name;
  std::function<void(FaultPlatform&, int call)> at;
  bool countsAll = false;
  bool ends = false;  // the program with it: nobody takes back what came to the file unconfirmed
};

const std::vector<Stop>& stops() {
  static const std::vector<Stop> all = {
      {"failure of any call", [](FaultPlatform& faults, int call) { faults.failAnyAt(call, failure::deviceIO); }, true},
      {"full disk", [](FaultPlatform& faults, int call) { faults.fillDiskAt(call); }},
      {"crash", [](FaultPlatform& faults, int call) { faults.crashAt(call); }, false, true},
      {"torn crash", [](FaultPlatform& faults, int call) { faults.crashAt(call, true); }, false, true},
  };
  return all;
}

class StoppedWrite : public ::testing::TestWithParam<bool> {
 protected:
  StoppedWrite() { DbfFile::setDurable(GetParam()); }
  ~StoppedWrite() override { DbfFile::setDurable(false); }

  test::UnsyncedPlatform machine;
  const platform::Substitute substitute{machine};

  // Stops the work at one call after the other until it comes through, and looks at the table each time: as the work
  // left it, whether it was confirmed or not, and when it has been done once more.
  static void stopEverywhere(const std::function<void(const CursorTables&)>& work, const std::string& done,
                             const std::string& twice) {
    for (const Stop& stop : stops()) {
      bool struck = true;
      for (int call = 1; struck; ++call) {
        SCOPED_TRACE(std::string(stop.name) + " at call " + std::to_string(call));
        const CursorTables tables;
        FaultPlatform faults(platform::current());
        bool confirmed = false;
        {
          const platform::Substitute substitute(faults);
          stop.at(faults, call);
          confirmed = test::failureOf([&] { work(tables); }) == 0;
          struck = call <= (stop.countsAll ? faults.anyCalls() : faults.calls());
        }
        const std::string found = tables.list(kAll);
        ASSERT_TRUE(confirmed || struck);
        ASSERT_TRUE(found == (confirmed ? done : kOld) || (stop.ends && found == done)) << found;
        work(tables);
        ASSERT_EQ(tables.list(kAll), found == done ? twice : done);
      }
    }
  }
};

TEST_P(StoppedWrite, OfARowAddedByACursorLeavesItWholeOrNotThere) {
  stopEverywhere(
      [](const CursorTables& tables) {
        const RecordsetPtr rows = DBEngine::OpenDatabase(tables.folder.path())->OpenRecordset(kAll);
        rows->AddNew();
        rows->put("GAIN", 101);
        rows->Update();
      },
      "2.15 10 9.5 - 101", "2.15 10 9.5 - 101 101");
}

TEST_P(StoppedWrite, OfRowsAddedTogetherLeavesAllOrNone) {
  stopEverywhere(
      [](const CursorTables& tables) {
        const auto table = DbfFile::open(tables.folder.file("AMSTEST.DBF"));
        const std::vector<unsigned char> rows = rowsOf(*table, {101, 102, 103});
        table->append(rows.data(), 3);
      },
      "2.15 10 9.5 - 101 102 103", "2.15 10 9.5 - 101 102 103 101 102 103");
}

// A change is no addition: where the failure comes after the write of the row, the row is changed.
class StoppedChange : public StoppedWrite {
 protected:
  static void stopEverywhere(const std::function<void(const CursorTables&)>& work, const std::string& done) {
    for (const Stop& stop : stops()) {
      bool struck = true;
      for (int call = 1; struck; ++call) {
        SCOPED_TRACE(std::string(stop.name) + " at call " + std::to_string(call));
        const CursorTables tables;
        const std::string former = tables.folder.read("AMSTEST.DBF");
        FaultPlatform faults(platform::current());
        bool confirmed = false;
        {
          const platform::Substitute substitute(faults);
          stop.at(faults, call);
          confirmed = test::failureOf([&] { work(tables); }) == 0;
          struck = call <= (stop.countsAll ? faults.anyCalls() : faults.calls());
        }
        const std::string found = tables.list(kAll);
        if (confirmed) {
          ASSERT_EQ(found, done);
          continue;
        }
        ASSERT_TRUE(struck);
        ASSERT_THAT(found, AnyOf(std::string(kOld), done));
        ASSERT_EQ(tables.folder.read("AMSTEST.DBF").size(), former.size());
      }
    }
  }
};

TEST_P(StoppedChange, OfARowLeavesTheOldOneOrTheNew) {
  stopEverywhere(
      [](const CursorTables& tables) {
        const RecordsetPtr rows = DBEngine::OpenDatabase(tables.folder.path())->OpenRecordset(kAll);
        rows->Edit();
        rows->put("GAIN", 7);
        rows->Update();
      },
      "7 10 9.5 -");
}

TEST_P(StoppedChange, ThatDeletesLeavesTheRowOrNone) {
  stopEverywhere([](const CursorTables& tables) { DbfFile::open(tables.folder.file("AMSTEST.DBF"))->markDeleted(1); },
                 "2.15 9.5 -");
}

INSTANTIATE_TEST_SUITE_P(PlainOrDurable, StoppedWrite, ::testing::Bool());
INSTANTIATE_TEST_SUITE_P(PlainOrDurable, StoppedChange, ::testing::Bool());

// The same, on the disk.
class DurableWrites : public ::testing::Test {
 protected:
  DurableWrites() { DbfFile::setDurable(true); }
  ~DurableWrites() override { DbfFile::setDurable(false); }

  std::vector<std::string> callsOf(const std::function<void()>& work) {
    faults.reset();
    work();
    std::vector<std::string> names;
    for (const std::string& call : faults.journal()) names.push_back(call.substr(0, call.find(' ')));
    return names;
  }

  const CursorTables tables;
  FaultPlatform faults{platform::current()};
  const platform::Substitute substitute{faults};
  const std::shared_ptr<DbfFile> table = DbfFile::open(tables.folder.file("AMSTEST.DBF"));
};

TEST_F(DurableWrites, BringTheRowsToTheDiskBeforeTheirCountAndBothBeforeTheyReturn) {
  EXPECT_THAT(callsOf([&] { table->append(rowsOf(*table, {5}).data()); }),
              ElementsAre("writeAt", "sync", "writeAt", "sync"));
  EXPECT_THAT(callsOf([&] { table->update(0, [](unsigned char* record) { record[1] = 'Z'; }); }),
              ElementsAre("overwriteAt", "sync"));
  EXPECT_THAT(callsOf([&] { table->markDeleted(1); }), ElementsAre("overwriteAt", "sync"));
  DbfFile::setDurable(false);
  EXPECT_THAT(callsOf([&] { table->append(rowsOf(*table, {5}).data()); }), ElementsAre("writeAt", "writeAt"));
}

TEST_F(DurableWrites, ReportADiskThatFailsAndTakeAddedRowsBack) {
  const std::string before = tables.folder.read("AMSTEST.DBF");
  for (const int sync : {2, 4}) {
    faults.failAt(sync, failure::diskFull);
    EXPECT_EQ(test::failureOf([&] { table->append(rowsOf(*table, {5}).data()); }), failure::diskFull);
    EXPECT_EQ(tables.folder.read("AMSTEST.DBF"), before);
    EXPECT_EQ(table->recordCount(), 4U);
  }
}

TEST_F(DurableWrites, ReportADiskThatFailsAndLeaveAChangeInTheFile) {
  faults.failAt(2, failure::deviceIO);
  EXPECT_EQ(test::failureOf([&] { table->markDeleted(1); }), failure::deviceIO);
  EXPECT_EQ(tables.list(kAll), "2.15 9.5 -");
}

TEST_F(DurableWrites, OfAChangeThatStandsInTheFileAlreadyStillBringItToTheDisk) {
  const auto change = [](unsigned char* record) { record[1] = 'Z'; };
  faults.failAt(2, failure::deviceIO);
  ASSERT_EQ(test::failureOf([&] { table->update(0, change); }), failure::deviceIO);
  EXPECT_THAT(callsOf([&] { table->update(0, change); }), ElementsAre("sync"));
  DbfFile::setDurable(false);
  EXPECT_THAT(callsOf([&] { table->update(0, change); }), ElementsAre());
}

// The row is in the file, as the cursors of this program see; that it has the value is no change of somebody else's.
TEST_F(DurableWrites, OfACursorCanBeTriedAgainWhereTheDiskFailed) {
  const RecordsetPtr other = tables.database->OpenRecordset("Select * from [AMSTEST]");
  ASSERT_EQ(other->value("GAIN").asNumber(), 2.15);
  const RecordsetPtr rows = tables.database->OpenRecordset("Select * from [AMSTEST]");
  rows->Edit();
  rows->put("GAIN", 7.5);
  faults.failAt(2, failure::deviceIO);
  EXPECT_EQ(test::failureOf([&] { rows->Update(); }), failure::deviceIO);
  EXPECT_EQ(other->value("GAIN").asNumber(), 7.5);
  EXPECT_TRUE(rows->editing());
  EXPECT_THAT(callsOf([&] { rows->Update(); }), ElementsAre("sync"));
  EXPECT_FALSE(rows->editing());
  EXPECT_EQ(tables.list("Select * from [AMSTEST] Where [ATYPE_ID] = 'A1'"), "7.5 9.5");
}

}  // namespace
}  // namespace vantrelix
