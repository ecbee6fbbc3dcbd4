// Many processes on one table: what each confirmed is there once and whole, whatever becomes of the others.
#include <algorithm>
#include <array>
#include <atomic>
#include <filesystem>
#include <gtest/gtest.h>

#include "platform/FaultPlatform.h"
#include "platform/ForwardingFile.h"
#include "support/Processes.h"
#include "support/longTests.h"
#include "tables/numberedRows.h"

namespace vantrelix {
namespace {

using test::bytesOf;
using test::Child;
using test::Identity;
using test::identityOf;
using test::kHeader;
using test::kLength;
using test::numberedRow;
using test::RawLocks;
using test::SharedMemory;
using test::SharedUse;

constexpr int kWriters = 4;

// Appends rows one by one and, now and then, some together.
bool appendAll(const std::string& path, int writer, int rows) {
  DbfFile::setLockWait(60000);
  const auto table = DbfFile::open(path);
  for (int number = 0; number < rows;) {
    const int together = number % 50 == 0 ? std::min(7, rows - number) : 1;
    std::string bytes;
    for (int i = 0; i < together; ++i) bytes += numberedRow(writer, number + i);
    table->append(bytesOf(bytes), static_cast<std::uint32_t>(together));
    number += together;
  }
  return true;
}

// Counts and reads until all rows are there. False where a count fell or promised what the file does not hold, or where
// a row was not whole or not the next of its writer.
bool watchAll(const std::string& path, std::uint32_t rows) {
  const auto table = DbfFile::open(path, true);
  std::array<int, kWriters> next{};
  std::array<unsigned char, kLength> record{};
  std::uint32_t seen = 0;
  for (int look = 0; seen < rows; ++look) {
    const std::uint32_t count = table->recordCount();
    if (count < seen || table->state().size < kHeader + std::uint64_t{count} * kLength) return false;
    for (; seen < count; ++seen) {
      if (!table->readRecord(seen, record.data())) return false;
      const Identity found = identityOf(record.data());
      if (found.writer < 0 || found.number != next[static_cast<std::size_t>(found.writer)]++) return false;
    }
    if (look % 64 != 0) continue;
    const auto isWhole = [](std::uint32_t, const unsigned char* row) { return identityOf(row).writer >= 0; };
    if (!table->scan(isWhole)) return false;
  }
  return true;
}

TEST_F(SharedUse, WritersLoseNoRowAndReadersSeeHonestCountsAndWholeRows) {
  const int rows = test::quickOrLong(1000, 10000);
  const auto all = static_cast<std::uint32_t>(kWriters * rows);
  std::vector<std::unique_ptr<Child>> children;
  for (int reader = 0; reader < 2; ++reader)
    children.push_back(std::make_unique<Child>([&] { return watchAll(path, all); }));
  for (int writer = 0; writer < kWriters; ++writer) {
    children.push_back(std::make_unique<Child>([&, writer] { return appendAll(path, writer, rows); }));
  }
  for (std::size_t child = children.size(); child-- > 0;) EXPECT_EQ(children[child]->wait(), 0) << child;
  EXPECT_TRUE(watchAll(path, all));
  EXPECT_EQ(DbfFile::open(path)->recordCount(), all);
  EXPECT_EQ(suite.folder().read("SHARED.DBF").size(), kHeader + all * kLength + 1);
}

// Another program's locks, taken by the system's own call at the places written down for the family.
class OtherProgram : public SharedUse {
 protected:
  OtherProgram() {
    const std::string rows = numberedRow(1, 0) + numberedRow(1, 1) + numberedRow(1, 2);
    table->append(bytesOf(rows), 3);
  }

  struct Turns {
    std::atomic<bool> locked;
    std::atomic<bool> release;
  };

  // Runs `work` while another process holds the range.
  void whileLocked(off_t offset, off_t length, const std::function<void(Turns&)>& work) {
    SharedMemory<Turns> turns;
    Child child([&] {
      const RawLocks other(machinePath);
      if (!other.lock(offset, length)) return false;
      turns->locked = true;
      while (!turns->release) platform::current().sleepMilliseconds(1);
      return true;
    });
    while (!turns->locked) platform::current().yield();
    work(*turns);
    turns->release = true;
    EXPECT_EQ(child.wait(), 0);
  }

  bool reads() {
    std::array<unsigned char, kLength> record{};
    const auto reader = DbfFile::open(path, true);
    bool all = reader->recordCount() == 3;
    for (std::uint32_t row = 0; row < 3; ++row)
      all = all && reader->readRecord(row, record.data()) && identityOf(record.data()).writer >= 0;
    return all && reader->scan([](std::uint32_t, const unsigned char* row) { return identityOf(row).writer >= 0; });
  }
  int change(std::uint32_t row) {
    return test::failureOf([&] { table->update(row, [](unsigned char* record) { record[kLength - 1] ^= 1; }); })
        .number();
  }
  int append() {
    const std::string row = numberedRow(1, 3);
    return test::failureOf([&] { table->append(bytesOf(row)); }).number();
  }

  static constexpr off_t kRow1 = 0x40000000 + kHeader + static_cast<off_t>(kLength);
  const std::shared_ptr<DbfFile> table = DbfFile::open(path);
};

TEST_F(OtherProgram, ThatHoldsARowKeepsOurWriterFromItAndNoReader) {
  DbfFile::setLockWait(30);
  whileLocked(kRow1, kLength, [&](Turns& turns) {
    EXPECT_TRUE(reads());
    const std::int64_t begin = platform::current().steadyMilliseconds();
    EXPECT_EQ(change(1), failure::locked);
    EXPECT_GE(platform::current().steadyMilliseconds() - begin, 30);
    EXPECT_EQ(change(0), 0);
    EXPECT_EQ(change(2), 0);
    EXPECT_EQ(change(0), 0);
    EXPECT_EQ(change(2), 0);
    EXPECT_FALSE(turns.release);
  });
  EXPECT_EQ(change(1), 0);
}

TEST_F(OtherProgram, ThatHoldsTheHeaderKeepsRowsFromBeingAddedAndNoReader) {
  DbfFile::setLockWait(30);
  whileLocked(0x40000000, 1, [&](Turns& turns) {
    EXPECT_TRUE(reads());
    const std::int64_t begin = platform::current().steadyMilliseconds();
    EXPECT_EQ(append(), failure::locked);
    EXPECT_GE(platform::current().steadyMilliseconds() - begin, 30);
    EXPECT_EQ(change(1), 0);
    EXPECT_FALSE(turns.release);
  });
  EXPECT_EQ(append(), 0);
}

TEST_F(OtherProgram, ThatLetsGoInTimeIsWaitedFor) {
  DbfFile::setLockWait(60000);
  for (const bool adding : {false, true}) {
    whileLocked(adding ? 0x40000000 : kRow1, 1, [&](Turns& turns) {
      Child releasing([&] {
        platform::current().sleepMilliseconds(60);
        turns.release = true;
        return true;
      });
      EXPECT_EQ(adding ? append() : change(1), 0);
      EXPECT_TRUE(turns.release);
    });
  }
}

// Looks at the locks from another process at each write.
class WatchedFile : public platform::ForwardingFile {
 public:
  WatchedFile(std::unique_ptr<File> real, std::function<void()> look)
      : ForwardingFile(std::move(real)), look_(std::move(look)) {}
  void writeAt(std::uint64_t offset, const void* bytes, std::size_t count) override {
    look_();
    real_->writeAt(offset, bytes, count);
  }

 private:
  std::function<void()> look_;
};

class WatchedPlatform : public platform::FaultPlatform {
 public:
  explicit WatchedPlatform(std::function<void()> look)
      : FaultPlatform(platform::operatingSystem()), look_(std::move(look)) {}
  std::unique_ptr<platform::File> open(const std::string& path, platform::OpenMode mode) override {
    return std::make_unique<WatchedFile>(FaultPlatform::open(path, mode), look_);
  }

 private:
  std::function<void()> look_;
};

TEST_F(OtherProgram, FindsOurLocksAtTheirPlacesWhileWeWrite) {
  constexpr off_t kHeaderLock = 0x40000000;
  std::vector<off_t> held;
  const std::vector<off_t> places = {kHeaderLock, kRow1 - 1, kRow1, kRow1 + static_cast<off_t>(kLength) - 1,
                                     kRow1 + static_cast<off_t>(kLength)};
  WatchedPlatform watched([&] {
    for (const off_t place : places) {
      const auto isFree = [&] { return RawLocks(machinePath).isFree(place, 1); };
      if (Child(isFree).wait() != 0) held.push_back(place);
    }
  });
  const platform::Substitute substitute(watched);
  const auto writer = DbfFile::open(path);
  writer->update(1, [](unsigned char* record) { record[0] = '*'; });
  EXPECT_EQ(held, (std::vector<off_t>{kRow1, kRow1 + static_cast<off_t>(kLength) - 1}));
  held.clear();
  const std::string row = numberedRow(1, 3);
  writer->append(bytesOf(row));
  EXPECT_EQ(held, (std::vector<off_t>{kHeaderLock, kHeaderLock}));  // as the row is written and as it is counted
  held.clear();
  watched.open(path, platform::OpenMode::readWrite)->writeAt(kHeader, " ", 1);
  EXPECT_TRUE(held.empty());
}

TEST_F(OtherProgram, DoesNotFindTheLockOfAnyReader) {
  EXPECT_TRUE(reads());
  EXPECT_TRUE(RawLocks(machinePath).isFree(0x40000000, 0x3FFFFFFE));
}

// At 1 GB of a table the locks of its rows run into the bytes for sharing.
TEST_F(SharedUse, ARowAtOneGigabyteIsReadAndWrittenAndTheTableStaysShared) {
  constexpr std::uint32_t kRow = (0x3FFFFFFE - kHeader) / kLength;
  std::filesystem::resize_file(machinePath, kHeader + (std::uint64_t{kRow} + 20) * kLength);
  std::string count(4, '\0');
  test::RawTable::putNumber(count, 0, static_cast<int>(kRow + 20), 4);
  RawLocks(machinePath).write(4, count);
  const auto table = DbfFile::open(path);
  ASSERT_EQ(table->recordCount(), kRow + 20);
  for (const bool held : {false, true}) {
    if (held) table->hold(kRow);
    table->update(kRow, [&](unsigned char* record) {
      const std::string row = numberedRow(3, held ? 2 : 1);
      std::copy(row.begin(), row.end(), record);
    });
    int found = 0;
    table->scan(
        [&](std::uint32_t, const unsigned char* record) { return found += identityOf(record).writer == 3, true; },
        kRow - 20);
    EXPECT_EQ(found, 1);
    EXPECT_EQ(test::failureOf([&] { DbfFile::open(path, false, Sharing::exclusive); }).number(), failure::cannotOpen);
    EXPECT_FALSE(RawLocks(machinePath).lock(0x7FFFFFFF, 1));
  }
}

}  // namespace
}  // namespace vantrelix
