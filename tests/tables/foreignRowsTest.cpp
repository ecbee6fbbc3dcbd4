// Rows that another program has locked are read all the same, and never in a mixture of old and new.
#include <functional>
#include <gtest/gtest.h>

#include "support/MeasuredPlatform.h"
#include "tables/LetterRows.h"

namespace vantrelix {
namespace {

using test::Bytes;
using test::RawLocks;

// On a machine whose clock stands still but for what a reader sleeps.
class ForeignRows : public test::LetterRows {
 protected:
  ~ForeignRows() override { test::MeasuredPlatform::now += 1000; }
  std::int64_t spentOn(const std::function<void()>& read) {
    const std::int64_t before = platform::current().steadyMilliseconds();
    read();
    return platform::current().steadyMilliseconds() - before;
  }
  char letterOf(DbfFile& rows, std::uint32_t row) {
    Bytes bytes(kLength);
    EXPECT_TRUE(rows.readRecord(row, bytes.data()));
    return isWhole(bytes.data()) ? static_cast<char>(bytes[0]) : '?';
  }

  test::MeasuredPlatform machine;
  const platform::Substitute substitute{machine};
  const RawLocks other{machinePath};
  const std::shared_ptr<DbfFile> table = DbfFile::open(path);
};

TEST_F(ForeignRows, AreReadWithALittleCareOnceAndWithNoneAsLongAsTheyStand) {
  ASSERT_TRUE(other.lock(lockOf(kInside), kLength));
  EXPECT_LE(spentOn([&] { EXPECT_EQ(letterOf(*table, kInside), ' '); }), 40);
  EXPECT_EQ(spentOn([&] { EXPECT_EQ(letterOf(*table, kInside), ' '); }), 0);
  EXPECT_EQ(spentOn([&] { EXPECT_EQ(letterOf(*table, kInside + 1), ' '); }), 0);
  int rows = 0;
  EXPECT_EQ(spentOn([&] { table->scan([&](auto, const unsigned char* row) { return isWhole(row) && ++rows; }); }), 0);
  EXPECT_EQ(rows, kRows);
}

TEST_F(ForeignRows, WhoseWriteIsCutInTwoAreWaitedFor) {
  ASSERT_TRUE(other.lock(lockOf(kInside), kLength));
  other.write(offsetOf(kInside), halfRowOf('B'));
  const std::int64_t begin = machine.steadyMilliseconds();
  machine.onSleep = [&] {
    if (machine.steadyMilliseconds() < begin + 10) return;
    other.write(offsetOf(kInside) + kLength / 2, halfRowOf('B'));
  };
  EXPECT_EQ(letterOf(*table, kInside), 'B');
}

TEST_F(ForeignRows, ThatAreLetGoAreReadAtOnce) {
  ASSERT_TRUE(other.lock(lockOf(kInside), kLength));
  other.write(offsetOf(kInside), halfRowOf('B'));
  machine.onSleep = [&] {
    other.write(offsetOf(kInside), rowOf('B'));
    other.unlock(lockOf(kInside), kLength);
    machine.onSleep = {};
  };
  EXPECT_LE(spentOn([&] { EXPECT_EQ(letterOf(*table, kInside), 'B'); }), 2);
}

TEST_F(ForeignRows, ThatChangeWithEveryLookHoldNoReaderUp) {
  ASSERT_TRUE(other.lock(lockOf(kInside), kLength));
  // Each sleep brings another state; where the patience is over, two reads that agree must do.
  constexpr std::int64_t kPatience = 500;
  bool odd = false;
  machine.onSleep = [&] { other.write(offsetOf(kInside), rowOf((odd = !odd) ? 'B' : ' ')); };
  char read = 0;
  const std::int64_t spent = spentOn([&] { read = letterOf(*table, kInside); });
  EXPECT_EQ(read, odd ? 'B' : ' ');
  EXPECT_GE(spent, kPatience);
  EXPECT_LE(spent, kPatience + 20);
}

TEST_F(ForeignRows, AllOfThemLockedAreScannedInABoundedTime) {
  ASSERT_TRUE(other.lock(kLockBase, 0x3FFFFFFD));
  int rows = 0;
  EXPECT_LE(spentOn([&] { table->scan([&](auto, const unsigned char* row) { return isWhole(row) && ++rows; }); }), 600);
  EXPECT_EQ(rows, kRows);
  EXPECT_EQ(table->recordCount(), static_cast<std::uint32_t>(kRows));
}

// Reading takes and drops locks: never one that this very table holds.
TEST_F(ForeignRows, OfThisVeryTableStayLockedWhenTheyAreRead) {
  table->hold(kInside);
  for (int times = 0; times < 2; ++times) {
    EXPECT_EQ(letterOf(*table, kInside), ' ');
    table->scan([](auto, const unsigned char*) { return true; });
    EXPECT_FALSE(other.lock(lockOf(kInside), 1));
    EXPECT_FALSE(other.lock(lockOf(kInside + 1) - 1, 1));
    EXPECT_TRUE(other.isFree(lockOf(0), kInside * kLength));
    EXPECT_TRUE(other.isFree(lockOf(kInside + 1), kLength));
  }
  table->release();
  EXPECT_TRUE(other.isFree(lockOf(0), kRows * kLength));
}

TEST_F(ForeignRows, OfAnUpdateStayLockedAgainstReadersWhileItReads) {
  for (const bool held : {false, true}) {
    if (held) table->hold(kCrossing);
    table->update(kCrossing, [&](unsigned char*) {
      letterOf(*table, kCrossing);
      table->scan([](auto, const unsigned char*) { return true; });
      EXPECT_FALSE(other.lockShared(lockOf(kCrossing), kLength));
    });
    EXPECT_TRUE(other.lockShared(lockOf(kCrossing), kLength));
    EXPECT_TRUE(other.unlock(lockOf(kCrossing), kLength));
    EXPECT_EQ(other.isFree(lockOf(kCrossing), kLength), !held);
  }
}

}  // namespace
}  // namespace vantrelix
