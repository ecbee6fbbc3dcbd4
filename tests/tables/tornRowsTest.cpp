// No reader sees a row that is part old and part new, however slowly it is written.
//
// A row of the tables here is one letter all over. A system writes it too fast for a mixture to be seen often: so the
// writers write each row in two halves, with a moment between, under the locks that they hold for it.
#include <atomic>
#include <chrono>
#include <gtest/gtest.h>

#include "platform/ForwardingFile.h"
#include "support/MeasuredPlatform.h"
#include "support/Processes.h"
#include "support/longTests.h"
#include "tables/DbfBytes.h"
#include "tables/dbfLocks.h"

namespace vantrelix {
namespace {

using platform::FaultPlatform;
using platform::ForwardingFile;
using platform::OpenMode;
using test::Bytes;
using test::Child;
using test::RawLocks;
using test::RawTable;
using test::SharedMemory;

constexpr int kLength = 200;
constexpr int kRows = 100;
constexpr int kHeader = 32 + 2 * 32 + 1;
// Inside a page of the file and over the end of one.
constexpr std::uint32_t kInside = 3;
constexpr std::uint32_t kCrossing = 19;
static_assert((kHeader + kCrossing * kLength) / 4096 != (kHeader + (kCrossing + 1) * kLength - 1) / 4096);

off_t offsetOf(std::uint32_t row) { return kHeader + static_cast<off_t>(row) * kLength; }

// Long enough for several reads.
void letAMomentPass() {
  const auto end = std::chrono::steady_clock::now() + std::chrono::microseconds(10);
  while (std::chrono::steady_clock::now() < end) {
  }
}

// A reader's platform on which time runs slowly: a busy machine may keep a writer from its processor between the two
// halves for longer than any system does within one write.
class UnhurriedPlatform : public FaultPlatform {
 public:
  UnhurriedPlatform() : FaultPlatform(platform::operatingSystem()) {}
  std::int64_t steadyMilliseconds() override { return platform::operatingSystem().steadyMilliseconds() / 100; }
};

// Writes everything of a row's length in two halves.
class SlowPlatform : public FaultPlatform {
 public:
  SlowPlatform() : FaultPlatform(platform::operatingSystem()) {}
  std::unique_ptr<platform::File> open(const std::string& path, OpenMode mode) override {
    return std::make_unique<SlowFile>(platform::operatingSystem().open(path, mode));
  }

 private:
  class SlowFile : public ForwardingFile {
   public:
    using ForwardingFile::ForwardingFile;
    void writeAt(std::uint64_t offset, const void* bytes, std::size_t count) override {
      if (count != kLength) return real_->writeAt(offset, bytes, count);
      real_->writeAt(offset, bytes, kLength / 2);
      letAMomentPass();
      real_->writeAt(offset + kLength / 2, static_cast<const char*>(bytes) + kLength / 2, kLength / 2);
    }
  };
};

std::string rowOfLetter(char letter) { return std::string(kLength, letter); }

class TornRows : public ::testing::Test {
 protected:
  TornRows() { make(0); }
  void make(int tableFlags) {
    std::string rows;
    for (int i = 0; i < kRows; ++i) rows += rowOfLetter(' ');
    suite.folder().write(
        "ROWS.DBF",
        RawTable{.fields = {{"A", 'C', 100}, {"B", 'C', 99}}, .rows = rows, .count = kRows, .tableFlags = tableFlags}
            .bytes());
  }

  // One of the two letters all over.
  static bool isWhole(const unsigned char* row) {
    return (*row == ' ' || *row == 'B') && std::all_of(row, row + kLength, [&](unsigned char c) { return c == *row; });
  }

  // Reads both rows while `write` runs in another process, until both have been seen in both states often enough.
  void readWhile(const std::function<void(char letter)>& write) {
    SharedMemory<std::atomic<bool>> end;
    Child writer([&] {
      for (int turn = 0; !*end; ++turn) {
        write(turn % 2 == 0 ? 'B' : ' ');
        letAMomentPass();
      }
      return true;
    });
    UnhurriedPlatform unhurried;
    const platform::Substitute substitute(unhurried);
    const auto table = DbfFile::open(path, true);
    const int changes = test::quickOrLong(10, 200);
    int torn = 0;
    for (const std::uint32_t row : {kInside, kCrossing}) {
      torn += tornIn(changes, [&](Bytes& bytes) { table->readRecord(row, bytes.data()); });
      torn += tornIn(changes, [&](Bytes& bytes) {
        table->scan([&](std::uint32_t number, const unsigned char* record) {
          if (!isWhole(record)) ++torn;
          if (number == row) std::copy(record, record + kLength, bytes.begin());
          return true;
        });
      });
    }
    EXPECT_EQ(torn, 0);
    *end = true;
    EXPECT_EQ(writer.wait(), 0);
  }

  template <class Read>
  static int tornIn(int changes, const Read& read) {
    Bytes bytes(kLength);
    unsigned char last = 0;
    int torn = 0;
    while (changes > 0 && torn == 0) {
      read(bytes);
      letAMomentPass();  // to the writers, whom a reader without rest would keep waiting
      if (!isWhole(bytes.data())) ++torn;
      if (bytes[0] != last) --changes;
      last = bytes[0];
    }
    return torn;
  }

  test::TempSuite suite;
  const std::string path = suite.file("ROWS.DBF");
  const std::string machinePath = suite.folder().machine("ROWS.DBF");
};

void fill(unsigned char* record, char letter) {
  std::fill(record, record + kLength, static_cast<unsigned char>(letter));
}

TEST_F(TornRows, AreNotSeenWhileAnotherProcessUpdates) {
  SlowPlatform slow;
  std::shared_ptr<DbfFile> table;
  readWhile([&](char letter) {
    const platform::Substitute substitute(slow);
    if (!table) table = DbfFile::open(path);
    for (const std::uint32_t row : {kInside, kCrossing}) {
      table->update(row, [&](unsigned char* record) { fill(record, letter); });
    }
  });
}

TEST_F(TornRows, AreNotSeenWhileAnEditorWritesTheRowThatItHolds) {
  SlowPlatform slow;
  std::shared_ptr<DbfFile> inside, crossing;
  readWhile([&](char letter) {
    const platform::Substitute substitute(slow);
    if (!inside) {
      inside = DbfFile::open(path);
      inside->hold(kInside);
      crossing = DbfFile::open(path);
      crossing->hold(kCrossing);
    }
    inside->update(kInside, [&](unsigned char* record) { fill(record, letter); });
    crossing->update(kCrossing, [&](unsigned char* record) { fill(record, letter); });
  });
}

void writeAsOtherProgram(const RawLocks& other, std::uint32_t row, off_t lockOffset, off_t lockLength, char letter) {
  while (!other.lock(lockOffset, lockLength)) {
  }
  other.write(offsetOf(row), std::string(kLength / 2, letter));
  letAMomentPass();
  other.write(offsetOf(row) + kLength / 2, std::string(kLength / 2, letter));
  other.unlock(lockOffset, lockLength);
}

TEST_F(TornRows, AreNotSeenWhileAnotherProgramWrites) {
  const RawLocks other(machinePath);
  readWhile([&](char letter) {
    for (const std::uint32_t row : {kInside, kCrossing})
      writeAsOtherProgram(other, row, 0x40000000 + offsetOf(row), kLength, letter);
  });
}

TEST_F(TornRows, AreNotSeenWhileAnotherProgramWritesATableWithAStructuralIndex) {
  make(1);
  const RawLocks other(machinePath);
  readWhile([&](char letter) {
    for (const std::uint32_t row : {kInside, kCrossing})
      writeAsOtherProgram(other, row, 0x7FFFFFFE - (static_cast<off_t>(row) + 1), 1, letter);
  });
}

// Rows that another program has locked, on a machine whose clock stands still but for what a reader sleeps.
class ForeignRows : public TornRows {
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
  ASSERT_TRUE(other.lock(0x40000000 + offsetOf(kInside), kLength));
  EXPECT_LE(spentOn([&] { EXPECT_EQ(letterOf(*table, kInside), ' '); }), 40);
  EXPECT_EQ(spentOn([&] { EXPECT_EQ(letterOf(*table, kInside), ' '); }), 0);
  EXPECT_EQ(spentOn([&] { EXPECT_EQ(letterOf(*table, kInside + 1), ' '); }), 0);
  int rows = 0;
  EXPECT_EQ(spentOn([&] { table->scan([&](auto, const unsigned char* row) { return isWhole(row) && ++rows; }); }), 0);
  EXPECT_EQ(rows, kRows);
}

TEST_F(ForeignRows, WhoseWriteIsCutInTwoAreWaitedFor) {
  ASSERT_TRUE(other.lock(0x40000000 + offsetOf(kInside), kLength));
  other.write(offsetOf(kInside), std::string(kLength / 2, 'B'));
  const std::int64_t begin = machine.steadyMilliseconds();
  machine.onSleep = [&] {
    if (machine.steadyMilliseconds() < begin + 10) return;
    other.write(offsetOf(kInside) + kLength / 2, std::string(kLength / 2, 'B'));
  };
  EXPECT_EQ(letterOf(*table, kInside), 'B');
}

TEST_F(ForeignRows, ThatAreLetGoAreReadAtOnce) {
  ASSERT_TRUE(other.lock(0x40000000 + offsetOf(kInside), kLength));
  other.write(offsetOf(kInside), std::string(kLength / 2, 'B'));
  machine.onSleep = [&] {
    other.write(offsetOf(kInside), rowOfLetter('B'));
    other.unlock(0x40000000 + offsetOf(kInside), kLength);
    machine.onSleep = {};
  };
  EXPECT_LE(spentOn([&] { EXPECT_EQ(letterOf(*table, kInside), 'B'); }), 2);
}

TEST_F(ForeignRows, ThatChangeAllTheTimeHoldNoReaderUp) {
  ASSERT_TRUE(other.lock(0x40000000 + offsetOf(kInside), kLength));
  int turn = 0;
  machine.onSleep = [&] { other.write(offsetOf(kInside), rowOfLetter(++turn % 2 == 0 ? ' ' : 'B')); };
  // Each sleep brings another state; once the patience is over two reads that agree must do.
  machine.onSleep = [&, former = machine.onSleep] {
    if (turn < 60) former();
  };
  EXPECT_LE(spentOn([&] { EXPECT_NE(letterOf(*table, kInside), '?'); }), 1000);
}

TEST_F(ForeignRows, AllOfThemLockedAreScannedInABoundedTime) {
  ASSERT_TRUE(other.lock(0x40000000, 0x3FFFFFFD));
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
    EXPECT_FALSE(other.lock(0x40000000 + offsetOf(kInside), 1));
    EXPECT_FALSE(other.lock(0x40000000 + offsetOf(kInside + 1) - 1, 1));
    EXPECT_TRUE(other.isFree(0x40000000 + offsetOf(0), kInside * kLength));
    EXPECT_TRUE(other.isFree(0x40000000 + offsetOf(kInside + 1), kLength));
  }
  table->release();
  EXPECT_TRUE(other.isFree(0x40000000 + offsetOf(0), kRows * kLength));
}

TEST_F(ForeignRows, OfAnUpdateStayLockedAgainstReadersWhileItReads) {
  for (const bool held : {false, true}) {
    if (held) table->hold(kCrossing);
    table->update(kCrossing, [&](unsigned char*) {
      letterOf(*table, kCrossing);
      table->scan([](auto, const unsigned char*) { return true; });
      EXPECT_FALSE(other.lockShared(0x40000000 + offsetOf(kCrossing), kLength));
    });
    EXPECT_EQ(other.lockShared(0x40000000 + offsetOf(kCrossing), kLength), true);
    EXPECT_EQ(other.unlock(0x40000000 + offsetOf(kCrossing), kLength), true);
    EXPECT_EQ(other.isFree(0x40000000 + offsetOf(kCrossing), kLength), !held);
  }
}

}  // namespace
}  // namespace vantrelix
