// What others write to a remembered table around this process's own writes is seen, and locks keep it apart.
#include <filesystem>
#include <gtest/gtest.h>

#include "platform/RunTimeFailure.h"
#include "tables/OwnClockCuts.h"
#include "tables/RowBatch.h"

namespace vantrelix {
namespace {

using platform::LockKind;
using RememberedTable = test::OwnClockCuts;

// --- Writes of others around those of this process.

TEST_F(RememberedTable, AChangeInTheTickOfAnAppendIsSeen) {
  for (const bool bySelf : {true, false}) {
    SCOPED_TRACE(bySelf);
    const std::uint32_t row = bySelf ? 999 : 998;
    count(isUpper("NONE"));
    add("ID003");
    const std::int64_t tick = time();
    EXPECT_TRUE(isKnown());
    const long before = count(isUpper("ID003"));
    if (bySelf) {
      overwrite(row, "ID003");
    } else {
      overwriteInAnotherProcess(row, "ID003");
    }
    setTime(machine_.timesSet > 0 ? machine_.lastTimeBeforeOneWasSet : tick);
    EXPECT_EQ(count(isUpper("ID003")), before + 1);
    EXPECT_EQ(placesOf("ID019").size(), bySelf ? 49U : 48U);
    setAge(3600 * kSecond + row);
    EXPECT_FALSE(isKnown());
  }
}

TEST_F(RememberedTable, AChangeInTheTickOfAnAppendIsSeenWithTheClockOfThisMachine) {
  for (std::uint32_t row = 950; row < 1000; ++row) {
    add("ID003");
    const long before = count(isUpper("ID003"));
    overwrite(row, "ID003");
    ASSERT_EQ(count(isUpper("ID003")), before + 1);
  }
  EXPECT_EQ(count(isUpper("ID019")), 0);
  EXPECT_TRUE(othersCount("ID003", 150));
}

TEST_F(RememberedTable, RowsOfAnotherProgramBetweenTwoAppendsAreSeen) {
  know();
  add("ID003");
  inAnotherProgram([](DbfFile& table) { table.append(record(table, "ID003", 51).data()); });
  add("ID003");
  EXPECT_EQ(count(isUpper("ID003")), 53);
  inAnotherProgram([](DbfFile& table) { table.markDeleted(150); });
  add("ID003");
  EXPECT_EQ(count(isUpper("ID003")), 53);
}

TEST_F(RememberedTable, AChangeOfAnotherProgramBeforeAnAppendIsSeen) {
  know();
  overwrite(999, "ID003");
  add("ID003");
  EXPECT_EQ(count(isUpper("ID003")), 52);
}

TEST_F(RememberedTable, ATablePutInItsPlaceAndATruncatedOneAreReadAnew) {
  know();
  const RecordsetPtr rows = open(isUpper("ID003"));
  std::filesystem::copy_file(platform::current().toMachine(path()), platform::current().toMachine(path() + ".new"));
  platform::current().rename(path() + ".new", path());
  overwrite(999, "ID003");
  EXPECT_EQ(count(isUpper("ID003")), 51);
  EXPECT_THROW(
      {
        rows->AddNew();
        rows->Update();
      },
      RunTimeFailure);
  setAge(3600 * kSecond);
  know();
  asStranger()->truncate(offsetOf(175));
  EXPECT_EQ(count(isUpper("ID003")), 25);
  add("ID003");
  EXPECT_EQ(count(isUpper("ID003")), 26);
  EXPECT_EQ(count(isUpper("ID004")), 0);
}

// --- Locks.

TEST_F(RememberedTable, NobodyElseCanChangeARowWhileRowsAreAdded) {
  know();
  const auto other = asStranger();
  const std::uint64_t row = kLockBase + offsetOf(500);
  int writes = 0;
  machine_.onWrite = [&] {
    ++writes;
    EXPECT_FALSE(other->tryLock(row, 30, LockKind::exclusive));
    EXPECT_FALSE(other->tryLock(kLockBase, 1, LockKind::exclusive));
    EXPECT_TRUE(other->tryLock(row, 30, LockKind::shared));
    other->unlock(row, 30);
  };
  add("NEW");
  writeOwn("ID003");
  machine_.onWrite = nullptr;
  EXPECT_EQ(writes, 3);
  EXPECT_TRUE(other->tryLock(kLockBase, 0x3FFFFFFE, LockKind::exclusive));
}

TEST_F(RememberedTable, AnEditOfAnotherCursorDoesNotEndWhatIsKnown) {
  know();
  const RecordsetPtr edited = open(isUpper("ID005"));
  edited->LockEdits(true);
  edited->Edit();
  add("NEW");
  EXPECT_TRUE(isKnown());
}

TEST_F(RememberedTable, WhereAnotherHoldsARecordRowsAreStillAddedButNothingIsKnown) {
  know();
  const auto other = asStranger();
  ASSERT_TRUE(other->tryLock(kLockBase + offsetOf(500), 30, LockKind::exclusive));
  add("ID003");
  EXPECT_FALSE(isKnown());
  EXPECT_EQ(count(isUpper("ID003")), 51);
}

TEST_F(RememberedTable, TheLockOfAnEditLastsOverRowsAddedBesideIt) {
  know();
  const RecordsetPtr rows = open(isUpper("ID005"));
  rows->LockEdits(true);
  rows->Edit();
  RowBatch batch(*rows);
  batch.AddNew();
  batch.put(rows->Fields("ID"), "ID003");
  batch.Update();
  batch.flush();
  const auto other = asStranger();
  EXPECT_FALSE(other->tryLock(kLockBase + offsetOf(250), 30, LockKind::exclusive));
  EXPECT_EQ(count(isUpper("ID003")), 51);
}

}  // namespace
}  // namespace vantrelix
