// Writes that fail or are cut off at any call to the system: what was confirmed is there, and nothing else is promised.
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/FaultPlatform.h"
#include "support/UnsyncedPlatform.h"
#include "tables/cursorTables.h"
#include "tables/stops.h"

namespace vantrelix {
namespace {

using platform::FaultPlatform;
using test::CursorTables;
using test::kStops;
using test::runStopped;
using test::Stop;
using test::StoppedRun;
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

class StoppedWrite : public ::testing::TestWithParam<bool> {
 protected:
  using Work = std::function<void(const CursorTables&)>;

  StoppedWrite() { DbfFile::setDurable(GetParam()); }
  ~StoppedWrite() override { DbfFile::setDurable(false); }

  // Stops the work on a fresh table at one call after the other until it comes through, and has `look` look at the
  // table each time as the work left it, whether it was confirmed or not.
  static void stopEverywhere(const Work& work,
                             const std::function<void(const Stop&, const CursorTables&, bool confirmed)>& look) {
    for (const Stop& stop : kStops) {
      bool struck = true;
      for (int call = 1; struck; ++call) {
        SCOPED_TRACE(std::string(stop.name) + " at call " + std::to_string(call));
        const CursorTables tables;
        const StoppedRun run = runStopped(stop, call, [&] {
          work(tables);
          return true;
        });
        struck = call <= run.calls;
        ASSERT_TRUE(run.confirmed || struck);
        look(stop, tables, run.confirmed);
        if (HasFatalFailure()) return;
      }
    }
  }
  // A row that is added is there or not, unless it is confirmed; and the work can be done once more.
  static void stopAdding(const Work& work, const std::string& done, const std::string& twice) {
    stopEverywhere(work, [&](const Stop& stop, const CursorTables& tables, bool confirmed) {
      const std::string found = tables.list(kAll);
      ASSERT_TRUE(found == (confirmed ? done : kOld) || (stop.ends && found == done)) << found;
      work(tables);
      ASSERT_EQ(tables.list(kAll), found == done ? twice : done);
    });
  }
  // A change is no addition: where the failure comes after the write of the row, the row is changed.
  static void stopChanging(const Work& work, const std::string& done) {
    const std::size_t size = CursorTables().folder.read("AMSTEST.DBF").size();
    stopEverywhere(work, [&](const Stop&, const CursorTables& tables, bool confirmed) {
      const std::string found = tables.list(kAll);
      ASSERT_TRUE(found == done || (!confirmed && found == kOld)) << found;
      ASSERT_EQ(tables.folder.read("AMSTEST.DBF").size(), size);
    });
  }

 private:
  test::UnsyncedPlatform machine_;
  const platform::Substitute substitute_{machine_};
};

using StoppedChange = StoppedWrite;

TEST_P(StoppedWrite, OfARowAddedByACursorLeavesItWholeOrNotThere) {
  stopAdding(
      [](const CursorTables& tables) {
        const RecordsetPtr rows = DBEngine::OpenDatabase(tables.folder.path())->OpenRecordset(kAll);
        rows->AddNew();
        rows->put("GAIN", 101);
        rows->Update();
      },
      "2.15 10 9.5 - 101", "2.15 10 9.5 - 101 101");
}

TEST_P(StoppedWrite, OfRowsAddedTogetherLeavesAllOrNone) {
  stopAdding(
      [](const CursorTables& tables) {
        const auto table = DbfFile::open(tables.folder.file("AMSTEST.DBF"));
        const std::vector<unsigned char> rows = rowsOf(*table, {101, 102, 103});
        table->append(rows.data(), 3);
      },
      "2.15 10 9.5 - 101 102 103", "2.15 10 9.5 - 101 102 103 101 102 103");
}

TEST_P(StoppedChange, OfARowLeavesTheOldOneOrTheNew) {
  stopChanging(
      [](const CursorTables& tables) {
        const RecordsetPtr rows = DBEngine::OpenDatabase(tables.folder.path())->OpenRecordset(kAll);
        rows->Edit();
        rows->put("GAIN", 7);
        rows->Update();
      },
      "7 10 9.5 -");
}

TEST_P(StoppedChange, ThatDeletesLeavesTheRowOrNone) {
  stopChanging([](const CursorTables& tables) { DbfFile::open(tables.folder.file("AMSTEST.DBF"))->markDeleted(1); },
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
    EXPECT_EQ(test::failureNumberOf([&] { table->append(rowsOf(*table, {5}).data()); }), failure::diskFull);
    EXPECT_EQ(tables.folder.read("AMSTEST.DBF"), before);
    EXPECT_EQ(table->recordCount(), 4U);
  }
}

TEST_F(DurableWrites, ReportADiskThatFailsAndLeaveAChangeInTheFile) {
  faults.failAt(2, failure::deviceIO);
  EXPECT_EQ(test::failureNumberOf([&] { table->markDeleted(1); }), failure::deviceIO);
  EXPECT_EQ(tables.list(kAll), "2.15 9.5 -");
}

TEST_F(DurableWrites, OfAChangeThatStandsInTheFileAlreadyStillBringItToTheDisk) {
  const auto change = [](unsigned char* record) { record[1] = 'Z'; };
  faults.failAt(2, failure::deviceIO);
  ASSERT_EQ(test::failureNumberOf([&] { table->update(0, change); }), failure::deviceIO);
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
  EXPECT_EQ(test::failureNumberOf([&] { rows->Update(); }), failure::deviceIO);
  EXPECT_EQ(other->value("GAIN").asNumber(), 7.5);
  EXPECT_TRUE(rows->editing());
  EXPECT_THAT(callsOf([&] { rows->Update(); }), ElementsAre("sync"));
  EXPECT_FALSE(rows->editing());
  EXPECT_EQ(tables.list("Select * from [AMSTEST] Where [ATYPE_ID] = 'A1'"), "7.5 9.5");
}

}  // namespace
}  // namespace vantrelix
