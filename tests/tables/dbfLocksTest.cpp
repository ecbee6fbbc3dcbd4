// Locks as other processes see them: every test has a second process.
#include <algorithm>
#include <csignal>
#include <gtest/gtest.h>

#include "platform/FaultPlatform.h"
#include "support/Processes.h"
#include "tables/DbfBytes.h"
#include "tables/dbfLocks.h"

namespace vantrelix {
namespace {

using platform::LockKind;
using platform::OpenMode;
using test::appendRow;
using test::failureOf;
using test::valueOf;

class TableLocks : public ::testing::Test {
 protected:
  TableLocks() {
    DbfFile::create(path, {{"A", 'C', 8, 0}, {"N", 'N', 6, 0}});
    appendRow(*DbfFile::open(path), {"first", 1});
    appendRow(*DbfFile::open(path), {"second", 2});
    DbfFile::setLockWait(40);
  }
  ~TableLocks() override { DbfFile::setLockWait(2000); }

  // What `work` fails with in a process of its own.
  int elsewhere(const std::function<void()>& work) {
    int number = 0;
    for (const int candidate : {0, failure::cannotOpen, failure::locked}) {
      number = test::exitCode(test::startChild([&] { return failureOf(work).number() == candidate; })) == 0 ? candidate
                                                                                                            : number;
    }
    return number;
  }
  int opening(Sharing sharing) {
    return elsewhere([&] { DbfFile::open(path, false, sharing); });
  }

  test::TempSuite suite;
  const std::string path = suite.file("SHARED.DBF");
};

TEST_F(TableLocks, OpeningsShareATable) {
  const auto table = DbfFile::open(path);
  EXPECT_EQ(opening(Sharing::shared), 0);
  EXPECT_EQ(opening(Sharing::denyWrite), 0);
}

TEST_F(TableLocks, AnExclusiveHolderKeepsAllOthersOutWith3051) {
  auto table = DbfFile::open(path, false, Sharing::exclusive);
  EXPECT_EQ(opening(Sharing::shared), failure::cannotOpen);
  EXPECT_EQ(opening(Sharing::exclusive), failure::cannotOpen);
  appendRow(*table, {"third", 3});
  table.reset();
  EXPECT_EQ(opening(Sharing::shared), 0);
}

TEST_F(TableLocks, AnExclusiveOpeningFailsWhereTheTableIsOpen) {
  const auto table = DbfFile::open(path);
  EXPECT_EQ(opening(Sharing::exclusive), failure::cannotOpen);
  EXPECT_EQ(failureOf([&] { DbfFile::open(path, false, Sharing::exclusive); }).number(), failure::cannotOpen);
}

TEST_F(TableLocks, WhoDeniesWritingLetsOthersReadAlone) {
  const auto table = DbfFile::open(path, false, Sharing::denyWrite);
  EXPECT_EQ(elsewhere([&] { appendRow(*DbfFile::open(path), {"x", 1}); }), failure::locked);
  EXPECT_EQ(elsewhere([&] { DbfFile::open(path)->markDeleted(0); }), failure::locked);
  EXPECT_EQ(opening(Sharing::denyWrite), failure::locked);
  EXPECT_EQ(elsewhere([&] { EXPECT_EQ(valueOf(*DbfFile::open(path), 1, "N"), Value(2)); }), 0);
  appendRow(*table, {"mine", 3});
  EXPECT_EQ(table->recordCount(), 3U);
}

TEST_F(TableLocks, AnotherCursorOfThisProcessIsDeniedToo) {
  const auto holder = DbfFile::open(path, false, Sharing::denyWrite);
  const auto other = DbfFile::open(path);
  const RunTimeFailure failure = failureOf([&] { appendRow(*other, {"x", 1}); });
  EXPECT_EQ(failure.number(), failure::locked);
  EXPECT_NE(failure.description().find("SHARED.DBF"), std::string::npos);
  EXPECT_EQ(other->recordCount(), 2U);
}

TEST_F(TableLocks, ARecordThatAnotherProgramHasLockedFailsWith3211AndIsStillRead) {
  const auto foreign = platform::current().open(path, OpenMode::readWrite);
  const std::uint64_t offset = 97 + 15;
  ASSERT_TRUE(foreign->tryLock(0x40000000 + offset, 15, LockKind::exclusive));
  const auto table = DbfFile::open(path);
  EXPECT_EQ(failureOf([&] { table->markDeleted(1); }).number(), failure::locked);
  EXPECT_EQ(valueOf(*table, 1, "N"), Value(2));
  EXPECT_EQ(failureOf([&] { table->update(0, [](unsigned char* record) { record[1] = 'F'; }); }).number(), 0);
  appendRow(*table, {"third", 3});
}

TEST_F(TableLocks, AHeaderThatAnotherProgramHasLockedKeepsRowsFromBeingAdded) {
  const auto foreign = platform::current().open(path, OpenMode::readWrite);
  ASSERT_TRUE(foreign->tryLock(0x40000000, 1, LockKind::exclusive));
  const auto table = DbfFile::open(path);
  EXPECT_EQ(failureOf([&] { appendRow(*table, {"x", 1}); }).number(), failure::locked);
  EXPECT_EQ(failureOf([&] { table->markDeleted(0); }).number(), 0);
  foreign->unlock(0x40000000, 1);
  EXPECT_EQ(appendRow(*table, {"third", 3}), 2U);
}

TEST_F(TableLocks, OtherProgramsFindOurLocksWhileWeWrite) {
  const auto table = DbfFile::open(path);
  const auto foreign = platform::current().open(path, OpenMode::readWrite);
  bool recordFree = true;
  bool otherFree = false;
  table->update(1, [&](unsigned char*) {
    recordFree = foreign->tryLock(0x40000000 + 97 + 15, 1, LockKind::shared);
    otherFree = foreign->tryLock(0x40000000 + 97, 15, LockKind::exclusive);
  });
  EXPECT_FALSE(recordFree);
  EXPECT_TRUE(otherFree);
  EXPECT_TRUE(foreign->tryLock(0x40000000, 0x1000, LockKind::exclusive));
}

TEST_F(TableLocks, AStructuralIndexMovesTheRecordLocks) {
  EXPECT_EQ(dbf::recordLock(97, 15, 0, false).offset, 0x40000000U + 97);
  EXPECT_EQ(dbf::recordLock(97, 15, 0, false).length, 15U);
  EXPECT_EQ(dbf::recordLock(112, 15, 1, true).offset, 0x7FFFFFFEU - 2);
  EXPECT_EQ(dbf::recordLock(112, 15, 1, true).length, 1U);
}

TEST_F(TableLocks, AWriteWaitsForALockThatGoes) {
  DbfFile::setLockWait(5000);
  const pid_t child = test::startChild([&] {
    const auto foreign = platform::current().open(path, OpenMode::readWrite);
    if (!foreign->tryLock(0x40000000, 1, LockKind::exclusive)) return false;
    suite.folder().write("LOCKED", "");
    platform::current().sleepMilliseconds(100);
    return true;
  });
  for (int tries = 0; tries < 500 && !suite.folder().exists("LOCKED"); ++tries)
    platform::current().sleepMilliseconds(5);
  EXPECT_EQ(appendRow(*DbfFile::open(path), {"third", 3}), 2U);
  EXPECT_EQ(test::exitCode(child), 0);
}

TEST_F(TableLocks, WritersOfSeveralProcessesLoseNoRow) {
  DbfFile::setLockWait(20000);
  constexpr int kWriters = 4;
  constexpr int kRows = 250;
  std::vector<pid_t> writers;
  for (int writer = 0; writer < kWriters; ++writer) {
    writers.push_back(test::startChild([&] {
      const auto table = DbfFile::open(path);
      for (int row = 0; row < kRows; ++row)
        appendRow(*table, {"w" + std::to_string(writer), 1000 * (writer + 1) + row});
      return true;
    }));
  }
  for (const pid_t writer : writers) EXPECT_EQ(test::exitCode(writer), 0);
  const auto table = DbfFile::open(path);
  std::vector<int> seen(1000 * (kWriters + 1));
  table->scan([&](std::uint32_t, const unsigned char* record) {
    ++seen[static_cast<std::size_t>(table->value(record, 1).number())];
    return true;
  });
  EXPECT_EQ(table->recordCount(), 2U + kWriters * kRows);
  for (int writer = 0; writer < kWriters; ++writer) {
    const auto first = seen.begin() + 1000 * (writer + 1);
    EXPECT_EQ(std::count(first, first + kRows, 1), kRows) << writer;
  }
}

TEST_F(TableLocks, AReaderSeesWholeRowsAndHonestCountsWhileOthersWrite) {
  const pid_t writer = test::startChild([&] {
    const auto table = DbfFile::open(path);
    for (int row = 0; row < 2000; ++row) appendRow(*table, {"eightchr", 123456});
    return true;
  });
  const auto table = DbfFile::open(path);
  bool whole = true;
  std::uint32_t last = 0;
  while (last < 2002 && whole) {
    const std::uint32_t count = table->recordCount();
    whole = count >= last && (count <= 2 || (valueOf(*table, count - 1, "A") == Value("eightchr") &&
                                             valueOf(*table, count - 1, "N") == Value(123456)));
    last = count;
  }
  EXPECT_TRUE(whole);
  EXPECT_EQ(test::exitCode(writer), 0);
}

TEST_F(TableLocks, AWriterKilledAtAnyPointLeavesWholeRowsAndAnHonestCount) {
  for (int round = 0; round < 20; ++round) {
    const std::uint32_t before = DbfFile::open(path)->recordCount();
    const pid_t writer = test::startChild([&]() -> bool {
      const auto table = DbfFile::open(path);
      for (;;) appendRow(*table, {"eightchr", 123456});
    });
    platform::current().sleepMilliseconds(1 + round % 7);
    ::kill(writer, SIGKILL);
    test::exitCode(writer);
    const auto table = DbfFile::open(path);
    const std::uint32_t count = table->recordCount();
    EXPECT_GE(count, before);
    for (std::uint32_t row = before; row < count; ++row) ASSERT_EQ(valueOf(*table, row, "A"), Value("eightchr")) << row;
    ASSERT_EQ(appendRow(*table, {"after", 7}), count);
  }
}

// Lets another file take the place of one right behind each of its first openings.
class OvertakingPlatform : public platform::FaultPlatform {
 public:
  OvertakingPlatform(std::string path, std::function<void()> replace, int times)
      : FaultPlatform(platform::current()), path_(std::move(path)), replace_(std::move(replace)), times_(times) {}
  std::unique_ptr<platform::File> open(const std::string& path, OpenMode mode) override {
    auto file = FaultPlatform::open(path, mode);
    if (path == path_ && times_-- > 0) replace_();
    return file;
  }

 private:
  std::string path_;
  std::function<void()> replace_;
  int times_;
};

class OvertakenOpening : public TableLocks {
 protected:
  void replace() {
    const std::string other = suite.file("OTHER.DBF");
    DbfFile::create(other, {{"NEW", 'C', 5, 0}, {"N", 'N', 6, 0}});
    platform::operatingSystem().rename(other, path);
  }
};

TEST_F(OvertakenOpening, HoldsTheTableThatStandsAtThePath) {
  for (const Sharing sharing : {Sharing::shared, Sharing::denyWrite, Sharing::exclusive}) {
    OvertakingPlatform overtaking(
        path, [this] { replace(); }, 2);
    const platform::Substitute substitute(overtaking);
    const auto table = DbfFile::open(path, false, sharing);
    EXPECT_EQ(table->state().inode, platform::current().state(path)->inode);
    ASSERT_EQ(table->fieldIndex("NEW"), 0);
    appendRow(*table, {"kept"});
    const std::string bytes = suite.folder().read("SHARED.DBF");
    EXPECT_NE(bytes.find(" kept "), std::string::npos);
  }
}

TEST_F(OvertakenOpening, OfATableThatIsReplacedWithoutEndIsRefused) {
  OvertakingPlatform overtaking(
      path, [this] { replace(); }, 1 << 20);
  const platform::Substitute substitute(overtaking);
  const RunTimeFailure failure = failureOf([&] { DbfFile::open(path); });
  EXPECT_EQ(failure.number(), failure::cannotOpen);
  EXPECT_NE(failure.description().find("SHARED.DBF"), std::string::npos);
}

TEST_F(OvertakenOpening, OfATableThatIsRemovedFindsNone) {
  OvertakingPlatform overtaking(
      path, [this] { platform::operatingSystem().remove(path); }, 1);
  const platform::Substitute substitute(overtaking);
  EXPECT_EQ(failureOf([&] { DbfFile::open(path); }).number(), failure::noSuchTable);
}

}  // namespace
}  // namespace vantrelix
