// Tables that are read row by row while others hold their locks: a reader waits once, and is never given a mixture.
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>

#include "support/MeasuredPlatform.h"
#include "tables/EditingMark.h"
#include "tables/LetterRows.h"

namespace vantrelix {
namespace {

using test::Bytes;
using test::RawLocks;
using test::RawTable;
using ::testing::ElementsAre;

constexpr std::uint32_t kMany = 1000;
constexpr std::int64_t kMillisecond = 1'000'000;
constexpr std::int64_t kSecond = 1000 * kMillisecond;

// Whether the file's times come from this machine's clock.
class LockedRowByRow : public test::LetterRows, public testing::WithParamInterface<bool> {
 protected:
  LockedRowByRow() {
    suite.folder().write("ROWS.DBF", RawTable{.fields = {{"A", 'C', 100}, {"B", 'C', 99}},
                                              .rows = std::string(std::size_t{kMany} * kLength, ' '),
                                              .count = kMany}
                                         .bytes());
    machine.ownClock = GetParam();
    setAge(kSecond);  // before the writes of the tests, which the system's clock would not tell from it
    table = DbfFile::open(path, true);
  }
  ~LockedRowByRow() override { test::MeasuredPlatform::now += 10'000; }

  void setTime(std::int64_t nanoseconds) const {
    platform::operatingSystem().open(path, platform::OpenMode::readWrite)->setModified(nanoseconds);
  }
  void setAge(std::int64_t nanoseconds) const { setTime(realNow() - nanoseconds); }
  std::int64_t timeOfFile() const { return platform::operatingSystem().state(path)->modifiedNanoseconds; }

  bool lockAll() const { return other.lock(kLockBase, 0x3FFFFFFD); }
  bool lockEachRow() const {
    for (std::uint32_t row = 0; row < kMany; ++row) {
      if (!other.lock(lockOf(row), kLength)) return false;
    }
    return true;
  }

  std::int64_t spentOn(const std::function<void()>& read) {
    const std::int64_t before = machine.steadyMilliseconds();
    read();
    return machine.steadyMilliseconds() - before;
  }
  char letterOf(std::uint32_t row) {
    Bytes bytes(kLength);
    EXPECT_TRUE(table->readRecord(row, bytes.data()));
    return isWhole(bytes.data()) ? static_cast<char>(bytes[0]) : '?';
  }
  // All rows, the last one first.
  std::int64_t spentOnEachRow() {
    return spentOn([&] {
      for (std::uint32_t row = kMany; row-- > 0;) ASSERT_EQ(letterOf(row), ' ') << row;
    });
  }
  // What is known of the file's state does not depend on what the reader's own table has seen.
  std::int64_t spentOnEachRowOfAnotherOpening() {
    table = DbfFile::open(path, true);
    return spentOnEachRow();
  }
  // Another writes a row's halves 15 ms apart, and the file's time stays the same.
  void writeInHalves(std::int64_t time) {
    const auto writeAt = [this, time](off_t offset) {
      other.write(offset, halfRowOf('B'));
      setTime(time);
    };
    writeAt(offsetOf(kInside));
    const std::int64_t end = machine.now + 15;
    machine.onSleep = [this, writeAt, end] {
      if (machine.now >= end) writeAt(offsetOf(kInside) + kLength / 2);
    };
  }
  // How long a state has to stand, at the most: a tick, and what a write takes.
  std::int64_t longestWait() const { return machine.ownClock ? 130 : 610; }

  test::MeasuredPlatform machine;
  const platform::Substitute substitute{machine};
  const RawLocks other{machinePath};
  std::shared_ptr<DbfFile> table;

 private:
  static std::int64_t realNow() { return platform::operatingSystem().wallNanoseconds(); }
};

TEST_P(LockedRowByRow, AWholeTableCostsOneWait) {
  ASSERT_TRUE(lockAll());
  EXPECT_LE(spentOnEachRow(), longestWait());
  machine.now += 600;
  EXPECT_EQ(spentOnEachRow(), 0);
  EXPECT_EQ(spentOnEachRowOfAnotherOpening(), 0);
}

TEST_P(LockedRowByRow, EachRowOfATableCostsOneWait) {
  ASSERT_TRUE(lockEachRow());
  EXPECT_LE(spentOnEachRow(), longestWait());
  machine.now += 600;
  EXPECT_EQ(spentOnEachRowOfAnotherOpening(), 0);
}

TEST_P(LockedRowByRow, ATableThatIsBeingEditedCostsOneLongerWait) {
  const EditingMark mark(path);
  ASSERT_TRUE(lockAll());
  const std::int64_t spent = spentOnEachRow();
  EXPECT_GE(spent, 500);
  EXPECT_LE(spent, 610);
  machine.now += 100;
  // A disk of another machine may show the state that was before the write of the one who edits.
  const std::int64_t again = spentOnEachRowOfAnotherOpening();
  EXPECT_GE(again, machine.ownClock ? 0 : 500);
  EXPECT_LE(again, machine.ownClock ? 0 : 610);
}

// Its holder writes a row every 50 ms, so that the file never stands for long.
TEST_P(LockedRowByRow, ATableThatGoesOnBeingChangedCostsAWaitForManyRowsTogether) {
  ASSERT_TRUE(lockAll());
  std::int64_t next = 0;
  machine.onSleep = [&] {
    if (machine.now < next) return;
    next = machine.now + 50;
    other.write(offsetOf(kMany - 1), rowOf(next % 100 < 50 ? 'B' : ' '));
    setTime(timeOfFile() + kMillisecond);
  };
  const std::int64_t spent = spentOn([&] {
    for (std::uint32_t row = 0; row + 1 < kMany; ++row) ASSERT_EQ(letterOf(row), ' ') << row;
  });
  EXPECT_LE(spent, 200);
}

TEST_P(LockedRowByRow, AWriteOfTheirHolderIsSeenWhole) {
  ASSERT_TRUE(lockAll());
  for (int times = 0; times < 5; ++times) letterOf(0);
  machine.now += 700;
  ASSERT_EQ(spentOnEachRow(), 0);
  other.write(offsetOf(kInside), halfRowOf('B'));
  const std::int64_t begin = machine.now;
  machine.onSleep = [&] {
    if (machine.now >= begin + 10) other.write(offsetOf(kInside) + kLength / 2, halfRowOf('B'));
  };
  EXPECT_EQ(letterOf(kInside), 'B');
  EXPECT_GE(machine.now, begin + 10);
}

// The write begins when the reader has looked at the file's state.
TEST_P(LockedRowByRow, AWriteThatMeetsTheReadIsSeenWhole) {
  ASSERT_TRUE(lockAll());
  for (int times = 0; times < 5; ++times) letterOf(0);
  machine.now += 700;
  table = DbfFile::open(path, true);
  ASSERT_EQ(letterOf(kInside), ' ');
  machine.onRead = [&] {
    other.write(offsetOf(kInside), halfRowOf('B'));
    machine.onRead = {};
  };
  const std::int64_t begin = machine.now;
  machine.onSleep = [&] {
    if (machine.now >= begin + 10) other.write(offsetOf(kInside) + kLength / 2, halfRowOf('B'));
  };
  EXPECT_EQ(letterOf(kInside), 'B');
}

// The clock's tick in which the state was first seen has not ended yet: what is written in it leaves the same time.
TEST_P(LockedRowByRow, AWriteWithinTheTickOfTheSameTimeIsSeenWhole) {
  ASSERT_TRUE(lockAll());
  const std::int64_t time = timeOfFile();
  ASSERT_EQ(letterOf(kMany - 1), ' ');
  machine.now += 70;
  writeInHalves(time);
  EXPECT_EQ(letterOf(kInside), 'B');
}

// Bytes that change beside a time that does not: the state proves nothing.
TEST_P(LockedRowByRow, AWriteWhoseTimeIsPutBackIsSeenWhole) {
  constexpr int kQuarter = kLength / 4;
  ASSERT_TRUE(lockAll());
  const std::int64_t time = timeOfFile();
  ASSERT_EQ(letterOf(kMany - 1), ' ');
  machine.now += 70;
  const auto writeQuarters = [&](int first, int count) {
    other.write(offsetOf(kInside) + first * kQuarter, std::string(static_cast<std::size_t>(count * kQuarter), 'B'));
    setTime(time);
  };
  writeQuarters(0, 2);
  const std::int64_t begin = machine.now;
  machine.onSleep = [&] {
    if (machine.now >= begin + 16) writeQuarters(2, 1);
    if (machine.now >= begin + 32) writeQuarters(3, 1);
  };
  EXPECT_EQ(letterOf(kInside), 'B');
}

INSTANTIATE_TEST_SUITE_P(OwnOrOthersClock, LockedRowByRow, testing::Bool());

// --- Times of whole seconds.

using CoarseTimes = LockedRowByRow;

TEST_P(CoarseTimes, HaveToStandForLonger) {
  const std::int64_t second = timeOfFile() / kSecond * kSecond;
  setTime(second);
  ASSERT_TRUE(lockAll());
  ASSERT_EQ(letterOf(kMany - 1), ' ');
  machine.now += 1900;
  writeInHalves(second);
  EXPECT_EQ(letterOf(kInside), 'B');
}

INSTANTIATE_TEST_SUITE_P(OthersClock, CoarseTimes, testing::Values(false));

// --- Tables that come to rest while they are read.

class RestingRowByRow : public LockedRowByRow {
 protected:
  void write(off_t offset, const std::string& bytes) {
    other.write(offset, bytes);
    setTime(machine.wallNanoseconds());
  }
  std::vector<std::string> callsOfARow() {
    machine.reset();
    machine.failAnyAt(1000, failure::deviceIO);  // has all calls noted
    letterOf(kInside);
    std::vector<std::string> names;
    for (const std::string& call : machine.anyJournal()) names.push_back(call.substr(0, call.find(' ')));
    return names;
  }
};

TEST_P(RestingRowByRow, AreReadWithoutLocksFromThenOn) {
  for (const bool changed : {false, true}) {
    if (changed) write(offsetOf(0), rowOf(' '));
    letterOf(kInside);
    letterOf(kInside);
    EXPECT_THAT(callsOfARow(), ElementsAre("tryLock", "readAt", "unlock")) << changed;
    machine.now += 4500;
    letterOf(kInside);
    EXPECT_THAT(callsOfARow(), ElementsAre("readAt", "state")) << changed;
    machine.now += 5000;
    EXPECT_THAT(callsOfARow(), ElementsAre("readAt", "state")) << changed;
  }
}

TEST_P(RestingRowByRow, AreCountedAnewInEachState) {
  EXPECT_EQ(table->recordCount(), kMany);
  machine.now += 4500;
  EXPECT_EQ(table->recordCount(), kMany);
  std::string count(4, '\0');
  RawTable::putNumber(count, 0, static_cast<int>(kMany - 1), 4);
  write(4, count);
  letterOf(kInside);
  letterOf(kInside);
  machine.now += 4500;
  letterOf(kInside);
  EXPECT_EQ(table->recordCount(), kMany - 1);
}

INSTANTIATE_TEST_SUITE_P(OwnClock, RestingRowByRow, testing::Values(true));

}  // namespace
}  // namespace vantrelix
