// Looking through a table, and saving it, while other programs write to it.
#include <atomic>
#include <functional>
#include <gtest/gtest.h>

#include "support/MeasuredPlatform.h"
#include "support/Processes.h"
#include "tables/TableRecoveries.h"

namespace vantrelix {
namespace {

using platform::LockKind;
using test::Child;
using test::RawTable;
using test::SharedMemory;
using test::TableRecoveries;

constexpr std::uint64_t kHeader = 32 + 2 * 32 + 1;
constexpr std::uint64_t kLength = 8;
constexpr std::uint64_t kHeaderLock = 0x40000000;
// What a program of the FoxPro family locks of a file that it wants for itself: the header and all records.
constexpr std::uint64_t kFileLock = 0x3FFFFFFE;

// A machine that tells when the lock of a table's header is given up.
class UnlockingPlatform : public platform::FaultPlatform {
 public:
  UnlockingPlatform() : FaultPlatform(platform::operatingSystem()) {}
  std::function<void()> onHeaderUnlocked;

  std::unique_ptr<platform::File> open(const std::string& path, platform::OpenMode mode) override {
    return std::make_unique<UnlockingFile>(FaultPlatform::open(path, mode), *this);
  }

 private:
  class UnlockingFile : public platform::ForwardingFile {
   public:
    UnlockingFile(std::unique_ptr<File> real, UnlockingPlatform& machine)
        : ForwardingFile(std::move(real)), machine_(machine) {}
    void unlock(std::uint64_t offset, std::uint64_t length) override {
      real_->unlock(offset, length);
      if (offset != kHeaderLock || !machine_.onHeaderUnlocked) return;
      const auto work = std::exchange(machine_.onHeaderUnlocked, nullptr);
      work();
    }

   private:
    UnlockingPlatform& machine_;
  };
};

class TablesInUse : public TableRecoveries {
 protected:
  TablesInUse() { suite.folder().write("T.DBF", good.bytes()); }
  std::string path() const { return suite.file("T.DBF"); }
  std::unique_ptr<platform::File> stranger() const {
    return platform::operatingSystem().open(path(), platform::OpenMode::readWrite);
  }
  void appendFromBeside() const {
    const platform::Substitute substitute(platform::operatingSystem());
    test::appendRow(*DbfFile::open(path()), {"new", 4});
  }
};

// The other program has written half of the row when it is looked at, and the rest of it a moment later.
TEST_F(TablesInUse, AreSeenRowByRowAsTheyWereOrAre) {
  for (const bool saving : {false, true}) {
    suite.folder().write("T.DBF", good.bytes());
    test::MeasuredPlatform machine;
    const platform::Substitute substitute(machine);
    const auto other = stranger();
    ASSERT_TRUE(other->tryLock(kHeaderLock + kHeader, kLength, LockKind::exclusive));
    other->writeAt(kHeader + 4, "1 2", 3);
    int reads = 0;
    machine.onRead = [&] {
      if (++reads != 30) return;
      other->writeAt(kHeader + 4, "1222", 4);
      other->unlock(kHeaderLock + kHeader, kLength);
    };
    if (!saving) {
      EXPECT_TRUE(checkTable(path()).faults.empty());
    } else {
      const TableRecovery result = recoverTable(path(), suite.file("NEW.DBF"));
      EXPECT_TRUE(result.faults.empty());
      EXPECT_EQ(result.repairedValues, 0U);
      EXPECT_EQ(rows(), " abc1222*def   2 ghi   3");
    }
    EXPECT_GE(reads, 30);
  }
}

TEST_F(TablesInUse, AreReadToTheEndWhereAnotherProgramKeepsARow) {
  test::MeasuredPlatform machine;
  const platform::Substitute substitute(machine);
  const auto other = stranger();
  ASSERT_TRUE(other->tryLock(kHeaderLock + kHeader, kLength, LockKind::exclusive));
  EXPECT_TRUE(checkTable(path()).faults.empty());
  EXPECT_EQ(recoverTable(path(), suite.file("NEW.DBF")).rows, 2U);
}

TEST_F(TablesInUse, HaveTheirEndMarkBehindTheRowsThatAreCounted) {
  UnlockingPlatform machine;
  const platform::Substitute substitute(machine);
  machine.onHeaderUnlocked = [&] { appendFromBeside(); };
  EXPECT_TRUE(checkTable(path()).faults.empty());
  EXPECT_EQ(DbfFile::open(path())->recordCount(), 4U);
  machine.onHeaderUnlocked = [&] { appendFromBeside(); };
  const TableRecovery result = recoverTable(path(), suite.file("NEW.DBF"));
  EXPECT_TRUE(result.faults.empty());
  EXPECT_EQ(result.rows, 3U);
  EXPECT_EQ(result.lostRows, 0U);
}

// An added row would stand in the place of one that is about to be saved.
TEST_F(TablesInUse, GetNoRowWhileThoseBehindTheCountAreSaved) {
  RawTable raw = good;
  raw.count = 1;
  suite.folder().write("T.DBF", raw.bytes());
  bool savedBefore = false;
  UnlockingPlatform machine;
  const platform::Substitute substitute(machine);
  machine.onHeaderUnlocked = [&] {
    savedBefore = suite.folder().exists("NEW.DBF");
    appendFromBeside();
  };
  EXPECT_EQ(recoverTable(path(), suite.file("NEW.DBF")).behindCount, 2U);
  EXPECT_TRUE(savedBefore);
  EXPECT_EQ(rows(), goodRows);
}

TEST_F(TablesInUse, AreLookedThroughAndSavedWhereAnotherProgramHoldsAllOfThem) {
  test::MeasuredPlatform machine;
  const platform::Substitute substitute(machine);
  const auto other = stranger();
  ASSERT_TRUE(other->tryLock(kHeaderLock, kFileLock, LockKind::exclusive));
  const TableCheck check = checkTable(path());
  EXPECT_TRUE(check.faults.empty());
  EXPECT_EQ(check.rows, 2U);
  EXPECT_EQ(recoverTable(path(), suite.file("NEW.DBF")).rows, 2U);
  EXPECT_EQ(rows(), goodRows);
}

// The other program may be adding those rows, and could write over them while they are saved.
TEST_F(TablesInUse, AreNotSavedWithRowsBehindTheCountWhereAnotherProgramHoldsAllOfThem) {
  RawTable raw = good;
  raw.count = 1;
  suite.folder().write("T.DBF", raw.bytes());
  test::MeasuredPlatform machine;
  const platform::Substitute substitute(machine);
  const auto other = stranger();
  ASSERT_TRUE(other->tryLock(kHeaderLock, kFileLock, LockKind::exclusive));
  const TableCheck check = checkTable(path());
  ASSERT_EQ(check.faults.kept().size(), 1U);
  EXPECT_EQ(check.faults.kept()[0].kind, FaultKind::countTooLow);
  EXPECT_NE(check.faults.kept()[0].text.find("may be adding"), std::string::npos);
  const RunTimeFailure failure = test::failureOf([&] { recoverTable(path(), suite.file("NEW.DBF")); });
  EXPECT_EQ(failure.number(), failure::locked);
  EXPECT_NE(failure.description().find("T.DBF"), std::string::npos);
  EXPECT_NE(failure.description().find("behind"), std::string::npos);
  EXPECT_FALSE(suite.folder().exists("NEW.DBF"));
}

// Count and size are of one moment although no lock says so.
TEST_F(TablesInUse, HaveNoFaultWhileAnotherProgramThatHoldsAllOfThemAddsARow) {
  test::MeasuredPlatform machine;
  const platform::Substitute substitute(machine);
  int reads = 0;
  for (int addedAt = 1; addedAt == 1 || reads >= addedAt - 1; ++addedAt) {
    suite.folder().write("T.DBF", good.bytes());
    const auto other = stranger();
    ASSERT_TRUE(other->tryLock(kHeaderLock, kFileLock, LockKind::exclusive));
    reads = 0;
    machine.onRead = [&] {
      if (++reads != addedAt) return;
      other->writeAt(kHeader + 3 * kLength, " new   4\x1A", 9);
      other->writeAt(4, "\4", 1);
    };
    const TableCheck check = checkTable(path());
    for (const TableFault& fault : check.faults.kept()) ADD_FAILURE() << addedAt << ": " << fault.text;
    EXPECT_GE(check.rows, 2U);
  }
  EXPECT_GT(reads, 5);
}

TEST_F(TablesInUse, HaveNoFaultWhileAnotherProcessWrites) {
  SharedMemory<std::atomic<bool>> end;
  SharedMemory<std::atomic<int>> turns;
  Child writer([&] {
    const auto table = DbfFile::open(path());
    for (int number = 1000; !*end; ++number, ++*turns) {
      const test::Bytes row = test::rowOf(*table, {"row", number % 9000});
      table->append(row.data());
      table->update(0, [&](unsigned char* record) { std::copy(row.begin(), row.end(), record); });
    }
    return true;
  });
  for (int look = 0; look < 10 || *turns < 20; ++look) {
    const TableCheck check = checkTable(path());
    for (const TableFault& fault : check.faults.kept()) ADD_FAILURE() << fault.text;
    if (HasFailure()) break;
  }
  *end = true;
  EXPECT_EQ(writer.wait(), 0);
}

}  // namespace
}  // namespace vantrelix
