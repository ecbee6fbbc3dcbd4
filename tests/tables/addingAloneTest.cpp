// One cursor that keeps others from adding rows while it looks for what its own new row needs.
#include <gtest/gtest.h>
#include <set>

#include "support/MeasuredPlatform.h"
#include "support/Processes.h"
#include "tables/AddingAlone.h"
#include "tables/RememberedTable.h"
#include "tables/cursorTables.h"
#include "tables/structure.h"

namespace vantrelix {
namespace {

using test::failureNumberOf;

constexpr const char* kAll = "Select * from [AMSTEST]";

class AddingAloneTest : public testing::Test {
 protected:
  AddingAloneTest() { DbfFile::setLockWait(20); }
  ~AddingAloneTest() override { DbfFile::setLockWait(former); }

  static int failureOfAdding(const RecordsetPtr& rows) {
    return failureNumberOf([&] {
      rows->AddNew();
      rows->put("GAIN", 77);
      rows->Update();
    });
  }
  long rowCount() const { return tables.open(kAll)->rowCount(); }

  const int former = DbfFile::lockWait();
  const test::CursorTables tables;
  const RecordsetPtr mine = tables.open(kAll);
  const RecordsetPtr other = tables.open(kAll);
};

TEST_F(AddingAloneTest, KeepsOthersOutUntilItEnds) {
  {
    const AddingAlone alone(*mine);
    EXPECT_EQ(failureOfAdding(other), failure::locked);
    EXPECT_EQ(failureOfAdding(mine), 0);
    EXPECT_EQ(failureOfAdding(other), failure::locked);
    EXPECT_EQ(failureOfAdding(mine), 0);
  }
  EXPECT_EQ(failureOfAdding(other), 0);
  EXPECT_EQ(rowCount(), 7);
}

TEST_F(AddingAloneTest, OutlastsReadsAndChangesOfItsOwn) {
  const AddingAlone alone(*mine);
  mine->Requery();
  EXPECT_EQ(mine->rowCount(), 4);
  EXPECT_EQ(mine->value("GAIN"), Value(2.15));
  mine->LockEdits(true);
  for (const double gain : {3.0, 4.0}) {
    mine->Edit();
    mine->put("GAIN", gain);
    mine->Update();
    EXPECT_EQ(failureOfAdding(other), failure::locked);
  }
  mine->Delete();
  EXPECT_EQ(failureOfAdding(other), failure::locked);
}

// Where the rows are remembered, a write locks more than its row.
TEST_F(AddingAloneTest, OutlastsChangesOfARememberedTable) {
  test::MeasuredPlatform machine;
  const platform::Substitute substitute(machine);
  machine.ownClock = true;
  machine.now += 3'600'000;
  const RecordsetPtr rows = tables.open(kAll);
  GenNewID_RS(*rows, "ATYPE_ID", "A", "1");
  ASSERT_TRUE(hasNotes(*platform::current().state(tables.folder.file("AMSTEST.DBF"))));
  const AddingAlone alone(*rows);
  rows->Edit();
  rows->put("GAIN", 3);
  rows->Update();
  EXPECT_EQ(failureOfAdding(other), failure::locked);
}

TEST_F(AddingAloneTest, LetsOthersReadAndChangeRows) {
  const AddingAlone alone(*mine);
  other->Requery();
  EXPECT_EQ(other->rowCount(), 4);
  other->Edit();
  other->put("GAIN", 5);
  other->Update();
  EXPECT_EQ(mine->value("GAIN"), Value(5));
}

TEST_F(AddingAloneTest, FailsWhereAnotherAddsAloneOrTheCursorOnlyReads) {
  const AddingAlone alone(*other);
  EXPECT_EQ(failureNumberOf([&] { const AddingAlone second(*mine); }), failure::locked);
  const RecordsetPtr reader = tables.open(kAll, RecordsetType::snapshot);
  EXPECT_EQ(failureNumberOf([&] { const AddingAlone second(*reader); }), failure::readOnlyTable);
}

TEST_F(AddingAloneTest, MayOutliveItsCursor) {
  {
    const AddingAlone alone(*mine);
    mine->Close();
    EXPECT_EQ(failureOfAdding(other), failure::locked);
  }
  EXPECT_EQ(failureOfAdding(other), 0);
}

// Every process takes the next ID of rows that the others go on adding.
TEST_F(AddingAloneTest, GivesEveryRowAnIdOfItsOwn) {
  constexpr int kProcesses = 3, kRows = 500;
  const auto addRows = [&] {
    DbfFile::setLockWait(10'000);
    const RecordsetPtr rows = tables.open(kAll);
    for (int i = 0; i < kRows; ++i) {
      const AddingAlone alone(*rows);
      const std::string id = GenNewID_RS(*rows, "ATYPE_ID", "T", "1");
      rows->AddNew();
      rows->put("ATYPE_ID", id);
      rows->Update();
    }
    return true;
  };
  std::vector<pid_t> children;
  for (int i = 0; i < kProcesses; ++i) children.push_back(test::startChild(addRows));
  for (const pid_t child : children) EXPECT_EQ(test::exitCode(child), 0);
  std::set<std::string> ids;
  for (const RecordsetPtr rows = tables.open(kAll); !rows->Eof(); rows->MoveNext())
    ids.insert(trim(rows->value("ATYPE_ID").asText()));
  EXPECT_EQ(rowCount(), 4 + kProcesses * kRows);
  EXPECT_EQ(ids.size(), 3 + kProcesses * kRows);
}

}  // namespace
}  // namespace vantrelix
