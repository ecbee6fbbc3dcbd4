// What is remembered of a table whose file has its times from this machine's own clock.
#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <utility>

#include "platform/RunTimeFailure.h"
#include "tables/CutsTable.h"
#include "tables/RowBatch.h"

namespace vantrelix {
namespace {

using platform::LockKind;

class RememberedTable : public test::CutsTable {
 protected:
  static constexpr std::int64_t kMillisecond = 1'000'000;
  static constexpr std::int64_t kSecond = 1'000'000'000;

  RememberedTable() { machine_.ownClock = true; }

  std::int64_t time() const { return platform::current().state(path())->modifiedNanoseconds; }
  void setTime(std::int64_t nanoseconds) const {
    platform::operatingSystem().open(path(), platform::OpenMode::readWrite)->setModified(nanoseconds);
  }
  // The file was changed so long ago, at no full second.
  void setAge(std::int64_t nanoseconds) {
    const std::int64_t wanted = machine_.wallNanoseconds() - nanoseconds;
    setTime(wanted % kSecond == 0 ? wanted - 1 : wanted);
  }
  bool isKnown() { return cost(isUpper("NONE")) < kAll / 4; }
  void know() {
    count(isUpper("NONE"));
    ASSERT_TRUE(isKnown());
  }

  void add(const std::string& id, int place = 50) const {
    const RecordsetPtr rows = open(isUpper("NONE"));
    rows->AddNew();
    rows->put("ID", id);
    rows->put("PLACE", place);
    rows->Update();
  }
  // Puts an ID in the place of another, as a program does that knows no locks.
  void overwrite(std::uint32_t row, const std::string& id) const {
    std::fstream file(platform::current().toMachine(path()), std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(32 + 2 * 32 + 1 + 30 * static_cast<std::streamoff>(row) + 1);
    file << id;
    ASSERT_TRUE(file.flush());
  }
  // The same questions in a process that knows nothing.
  bool othersCount(const std::string& id, long wanted) const {
    return test::exitCode(test::startChild([&] {
             setSmallestRemembered(std::uint64_t{1} << 40);
             MeasuredPlatform::now -= 1'000'000'000;
             return count(isUpper(id)) == wanted;
           })) == 0;
  }
  std::vector<double> placesOf(const std::string& id) const {
    std::vector<double> places;
    for (const RecordsetPtr rows = open(isUpper(id)); !rows->Eof(); rows->MoveNext()) {
      places.push_back(rows->value("PLACE").number());
    }
    return places;
  }

 private:
  using MeasuredPlatform = test::MeasuredPlatform;
};

// --- When a reading is trusted.

TEST_F(RememberedTable, TheFirstReadingOfAFileThatHasStoodIsTrusted) {
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  EXPECT_LT(cost(isUpper("ID017")), kAll / 4);
  EXPECT_EQ(count(isUpper("ID017")), 50);
}

TEST_F(RememberedTable, AFileThatWasChangedAMomentAgoIsNotTrusted) {
  setAge(20 * kMillisecond);
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  wait(100);
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  EXPECT_LT(cost(isUpper("ID003")), kAll / 4);
}

TEST_F(RememberedTable, WhereTimesAreWholeSecondsTwoOfThemHaveToLieInBetween) {
  const std::int64_t now = machine_.wallNanoseconds();
  setTime(now - now % kSecond);
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  wait(900);
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  wait(1500);
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  EXPECT_LT(cost(isUpper("ID003")), kAll / 4);
}

TEST_F(RememberedTable, ATimeInTheFutureProvesNothing) {
  setAge(-10 * kSecond);
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  wait(5000);
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  wait(6000);
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  EXPECT_LT(cost(isUpper("ID003")), kAll / 4);
}

TEST_F(RememberedTable, NothingIsRememberedOnceTheClockWasSetBack) {
  know();
  machine_.setBackNanoseconds = 10 * 365 * 24 * 3600 * kSecond;
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  overwrite(999, "ID003");
  EXPECT_EQ(count(isUpper("ID003")), 51);
}

// --- Changes within the tick of a reading.

TEST_F(RememberedTable, AChangeInTheTickOfAReadingIsSeen) {
  for (const bool bySelf : {true, false}) {
    SCOPED_TRACE(bySelf);
    const std::uint32_t row = bySelf ? 999 : 998;
    setAge(5 * kMillisecond);
    const std::int64_t tick = time();
    const long before = count(isUpper("ID003"));
    if (bySelf) {
      overwrite(row, "ID003");
    } else {
      EXPECT_EQ(test::exitCode(test::startChild([&] {
                  overwrite(row, "ID003");
                  return true;
                })),
                0);
    }
    setTime(tick);
    EXPECT_EQ(count(isUpper("ID003")), before + 1);
    EXPECT_EQ(placesOf("ID019").size(), bySelf ? 49U : 48U);
  }
}

TEST_F(RememberedTable, AChangeInTheTickOfAReadingIsSeenWithTheClockOfThisMachine) {
  for (std::uint32_t row = 950; row < 1000; ++row) {
    const long before = count(isUpper("ID003"));
    overwrite(row, "ID003");
    ASSERT_EQ(count(isUpper("ID003")), before + 1);
  }
  EXPECT_EQ(count(isUpper("ID019")), 0);
}

// --- Writes of this process.

TEST_F(RememberedTable, RowsAddedAreKnownAtOnce) {
  know();
  add("ID003");
  add("NEW");
  EXPECT_LT(cost(isUpper("ID003")), kAll / 4);
  EXPECT_EQ(placesOf("ID003").size(), 51U);
  EXPECT_EQ(placesOf("ID003").back(), 50);
  EXPECT_EQ(count(isUpper("NEW")), 1);
  EXPECT_EQ(count(isUpper("ID004")), 50);
  EXPECT_TRUE(othersCount("ID003", 51));
}

TEST_F(RememberedTable, ThousandsOfRowsAddedOneByOneStayKnown) {
  constexpr int kRows = 3000;
  know();
  const RecordsetPtr rows = open(isUpper("NONE"));
  for (int i = 0; i < kRows; ++i) {
    rows->AddNew();
    rows->put("ID", "N" + std::to_string(i % 1000));
    rows->put("PLACE", i);
    rows->Update();
  }
  for (const int id : {0, 1, 499, 999}) {
    EXPECT_EQ(placesOf("N" + std::to_string(id)), (std::vector<double>{1.0 * id, 1000.0 + id, 2000.0 + id}));
  }
  EXPECT_LT(cost(isUpper("N7")), kAll / 4);
}

TEST_F(RememberedTable, RowsWrittenInBatchesGoOnWhereTheLastOnesEnded) {
  know();
  const RecordsetPtr rows = open(isUpper("NONE"));
  for (int batch = 0; batch < 3; ++batch) {
    RowBatch added(*rows);
    for (int i = 0; i < 100; ++i) {
      added.AddNew();
      added.put(rows->Fields("ID"), i < 50 ? "FIRST" : "SECOND");
      added.Update();
    }
    added.flush();
  }
  EXPECT_EQ(count(isUpper("FIRST")), 150);
  EXPECT_EQ(count(isUpper("SECOND")), 150);
  EXPECT_TRUE(isKnown());
}

TEST_F(RememberedTable, ChangesAndDeletionsAreKnownAtOnce) {
  know();
  const RecordsetPtr rows = open(isUpper("ID003"));
  const auto setId = [&](const std::string& id) {
    rows->Edit();
    rows->put("ID", id);
    rows->Update();
  };
  setId("ID004");
  EXPECT_EQ(count(isUpper("ID003")), 49);
  EXPECT_EQ(count(isUpper("ID004")), 51);
  EXPECT_EQ(placesOf("ID004").front(), 0);
  setId("ID003");
  setId("ID004");
  EXPECT_EQ(count(isUpper("ID004")), 51);
  setId("ID003");
  EXPECT_EQ(count(isUpper("ID003")), 50);
  rows->Delete();
  EXPECT_EQ(count(isUpper("ID003")), 49);
  EXPECT_EQ(count(isUpper("ID004")), 50);
  writeOwn("ID007");
  EXPECT_EQ(placesOf("ID007").front(), 77);
  EXPECT_TRUE(isKnown());
}

TEST_F(RememberedTable, AFileGetsATimeThatNoOtherWriteGivesIt) {
  know();
  add("NEW");
  EXPECT_EQ(machine_.timesSet, 1);
  EXPECT_NE(time(), machine_.lastTimeBeforeOneWasSet);
  EXPECT_NE(time() % 10, 0);
  EXPECT_LE(time(), machine_.wallNanoseconds());
}

TEST_F(RememberedTable, ATableThatNobodyAskedOfKeepsItsTime) {
  const auto table = DbfFile::open(path());
  table->append(record(*table, "NEW", 0).data());
  table->update(0, [&](unsigned char* row) { table->put(row, 1, Value(1)); });
  EXPECT_EQ(machine_.timesSet, 0);
}

TEST_F(RememberedTable, WhatWasAskedTooSoonIsKnownAfterTheNextWriteAndReading) {
  setAge(5 * kMillisecond);
  EXPECT_FALSE(isKnown());
  add("NEW");
  EXPECT_FALSE(isKnown());
  EXPECT_TRUE(isKnown());
  EXPECT_EQ(count(isUpper("NEW")), 1);
}

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
      EXPECT_EQ(test::exitCode(test::startChild([&] {
                  overwrite(row, "ID003");
                  return true;
                })),
                0);
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
  platform::operatingSystem().open(path(), platform::OpenMode::readWrite)->truncate(97 + 30 * 175);
  EXPECT_EQ(count(isUpper("ID003")), 25);
  add("ID003");
  EXPECT_EQ(count(isUpper("ID003")), 26);
  EXPECT_EQ(count(isUpper("ID004")), 0);
}

TEST_F(RememberedTable, WritesToTwoTablesInTurnsLeaveBothKnown) {
  const auto find = [&](const std::string& id) {
    return DBEngine::OpenDatabase(folder())->OpenRecordset("select * from [OTHER] where id = '" + id + "'");
  };
  std::filesystem::copy_file(platform::current().toMachine(path()), platform::current().toMachine(otherPath()));
  platform::operatingSystem().open(otherPath(), platform::OpenMode::readWrite)->setModified(time() - kSecond);
  know();
  EXPECT_EQ(find("ID003")->rowCount(), 50);
  const RecordsetPtr others = find("ID003");
  for (int i = 0; i < 20; ++i) {
    add("ID003");
    others->AddNew();
    others->put("ID", "ID003");
    others->Update();
  }
  EXPECT_TRUE(isKnown());
  EXPECT_EQ(count(isUpper("ID003")), 70);
  machine_.bytesRead = 0;
  EXPECT_EQ(find("ID003")->rowCount(), 70);
  EXPECT_LT(machine_.bytesRead, kAll / 4);
}

// --- Locks.

TEST_F(RememberedTable, NobodyElseCanChangeARowWhileRowsAreAdded) {
  know();
  const auto other = platform::operatingSystem().open(path(), platform::OpenMode::readWrite);
  const std::uint64_t row = 0x40000000 + 97 + 30 * 500;
  int writes = 0;
  machine_.onWrite = [&] {
    ++writes;
    EXPECT_FALSE(other->tryLock(row, 30, LockKind::exclusive));
    EXPECT_FALSE(other->tryLock(0x40000000, 1, LockKind::exclusive));
    EXPECT_TRUE(other->tryLock(row, 30, LockKind::shared));
    other->unlock(row, 30);
  };
  add("NEW");
  writeOwn("ID003");
  machine_.onWrite = nullptr;
  EXPECT_EQ(writes, 3);
  EXPECT_TRUE(other->tryLock(0x40000000, 0x3FFFFFFE, LockKind::exclusive));
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
  const auto other = platform::operatingSystem().open(path(), platform::OpenMode::readWrite);
  ASSERT_TRUE(other->tryLock(0x40000000 + 97 + 30 * 500, 30, LockKind::exclusive));
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
  const auto other = platform::operatingSystem().open(path(), platform::OpenMode::readWrite);
  EXPECT_FALSE(other->tryLock(0x40000000 + 97 + 30 * 250, 30, LockKind::exclusive));
  EXPECT_EQ(count(isUpper("ID003")), 51);
}

// --- Where times cannot be set, and where writes fail.

TEST_F(RememberedTable, WithoutTheRightToSetTimesAWriteEndsWhatIsKnown) {
  know();
  machine_.maySetTimes = false;
  add("ID003");
  EXPECT_FALSE(isKnown());
  const std::int64_t tick = time();
  overwrite(999, "ID003");
  setTime(tick);
  EXPECT_EQ(count(isUpper("ID003")), 52);
}

TEST_F(RememberedTable, WhereTimesAreRoundedAWriteEndsWhatIsKnown) {
  for (const std::int64_t step : {std::int64_t{100}, kMillisecond, kSecond, 2 * kSecond}) {
    machine_.nanosecondsPerTick = step;
    setAge(3600 * kSecond + step);
    know();
    const long before = count(isUpper("ID003"));
    add("ID003");
    EXPECT_FALSE(isKnown());
    const std::int64_t tick = time();
    add("ID003");
    setTime(tick);
    EXPECT_EQ(count(isUpper("ID003")), before + 2);
  }
}

TEST_F(RememberedTable, TimesOfAnotherMachinesClockAreNotSet) {
  machine_.ownClock = false;
  learn();
  ASSERT_TRUE(isKnown());
  add("ID003");
  EXPECT_EQ(machine_.timesSet, 0);
  EXPECT_FALSE(isKnown());
  EXPECT_EQ(count(isUpper("ID003")), 51);
}

TEST_F(RememberedTable, AWriteThatFailsAnywhereLeavesRightAnswers) {
  for (const bool torn : {false, true}) {
    for (int call = 1; call <= 2; ++call) {
      SCOPED_TRACE(call);
      setAge(3600 * kSecond + call + (torn ? 10 : 0));
      know();
      const RecordsetPtr rows = open(isUpper("NONE"));
      const long before = count(isUpper("ID003"));
      machine_.crashAt(call, torn);
      rows->AddNew();
      rows->put("ID", "ID003");
      EXPECT_THROW(rows->Update(), RunTimeFailure);
      machine_.reset();
      // The count may have been written in part.
      const long now = count(isUpper("ID003"));
      EXPECT_TRUE(othersCount("ID003", now));
      EXPECT_TRUE(now == before || torn);
      add("ID003");
      EXPECT_EQ(count(isUpper("ID003")), now + 1);
      EXPECT_TRUE(othersCount("ID003", now + 1));
    }
  }
}

TEST_F(RememberedTable, ACallThatFailsAnywhereInAWriteLeavesRightAnswers) {
  for (int call = 1, last = 1; call <= last; ++call) {
    SCOPED_TRACE(call);
    setAge(3600 * kSecond + call);
    know();
    const RecordsetPtr rows = open(isUpper("ID003"));
    const long before = rows->rowCount();
    bool added = true, changed = true;
    machine_.failAnyAt(call, failure::deviceIO);
    try {
      rows->AddNew();
      rows->put("ID", "ID003");
      rows->Update();
    } catch (const RunTimeFailure&) {
      added = false;
    }
    try {
      rows->MoveFirst();
      rows->Edit();
      rows->put("ID", "ID004");
      rows->Update();
    } catch (const RunTimeFailure&) {
      changed = false;
    }
    last = std::max(last, machine_.anyCalls());
    machine_.reset();
    const long now = count(isUpper("ID003"));
    EXPECT_TRUE(othersCount("ID003", now));
    EXPECT_GE(now, before + (added ? 1 : 0) - 1);
    EXPECT_LE(now, before + 1 - (changed ? 1 : 0));
    EXPECT_TRUE(othersCount("ID004", count(isUpper("ID004"))));
  }
}

TEST_F(RememberedTable, MoreRunsThanAreRememberedAreStillAnsweredRightly) {
  constexpr std::uint32_t kRows = 300000;
  know();
  const auto table = DbfFile::open(path());
  std::vector<unsigned char> rows;
  for (std::uint32_t i = 0; i < kRows; ++i) {
    const std::vector<unsigned char> row = record(*table, "X" + std::to_string(i), 0);
    rows.insert(rows.end(), row.begin(), row.end());
  }
  table->append(rows.data(), kRows);
  add("ID007");
  EXPECT_EQ(count(isUpper("X0")), 1);
  EXPECT_EQ(count(isUpper("X299999")), 1);
  EXPECT_EQ(count(isUpper("ID007")), 51);
}

}  // namespace
}  // namespace vantrelix
