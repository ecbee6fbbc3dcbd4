// No reader sees a row that is part old and part new, however slowly it is written.
//
// A system writes a row too fast for a mixture to be seen often: so the writers here write each row in two halves, with
// a moment between, under the locks that they hold for it.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <memory>

#include "platform/FaultPlatform.h"
#include "platform/ForwardingFile.h"
#include "support/longTests.h"
#include "tables/LetterRows.h"

namespace vantrelix {
namespace {

using platform::FaultPlatform;
using platform::ForwardingFile;
using platform::OpenMode;
using test::Bytes;
using test::Child;
using test::RawLocks;
using test::SharedMemory;

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

class TornRows : public test::LetterRows {
 protected:
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
  static void fill(unsigned char* record, char letter) {
    std::fill(record, record + kLength, static_cast<unsigned char>(letter));
  }
  static void writeAsOtherProgram(const RawLocks& other, std::uint32_t row, off_t lockOffset, off_t lockLength,
                                  char letter) {
    while (!other.lock(lockOffset, lockLength)) {
    }
    other.write(offsetOf(row), halfRowOf(letter));
    letAMomentPass();
    other.write(offsetOf(row) + kLength / 2, halfRowOf(letter));
    other.unlock(lockOffset, lockLength);
  }
};

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

TEST_F(TornRows, AreNotSeenWhileAnotherProgramWrites) {
  const RawLocks other(machinePath);
  readWhile([&](char letter) {
    for (const std::uint32_t row : {kInside, kCrossing}) writeAsOtherProgram(other, row, lockOf(row), kLength, letter);
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

}  // namespace
}  // namespace vantrelix
