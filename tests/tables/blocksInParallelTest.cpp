// Long runs of bytes, read and looked at block by block in two threads.
#include <array>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <gtest/gtest.h>
#include <mutex>
#include <numeric>
#include <set>
#include <thread>

#include "platform/ForwardingFile.h"
#include "platform/RunTimeFailure.h"
#include "support/NoThreads.h"
#include "support/TempFolder.h"
#include "tables/BlocksInParallel.h"

namespace vantrelix {
namespace {

using dbf::BlocksInParallel;
using platform::OpenMode;

const BlocksInParallel::Look kNoLook;

// 1,000 bytes, each the lowest byte of its place.
std::string countedBytes() {
  std::string bytes(1000, '\0');
  std::iota(bytes.begin(), bytes.end(), '\0');
  return bytes;
}

class InParallel : public testing::Test {
 protected:
  std::unique_ptr<platform::File> open() const { return platform::current().open(path_, OpenMode::read); }

  const std::unique_ptr<platform::File>& file() const { return file_; }

 private:
  test::TempFolder folder_;
  std::string path_ = folder_.write("a.bin", countedBytes());
  std::unique_ptr<platform::File> file_ = open();
};

// The bytes as next() gives them, each block of which was looked at before.
std::string readAll(platform::File& file, std::uint64_t offset, std::uint64_t count, std::size_t blockBytes) {
  std::array<std::string, BlocksInParallel::kSlots> looked;
  const BlocksInParallel::Look look = [&](const BlocksInParallel::Block& block) {
    looked[block.slot].assign(reinterpret_cast<const char*>(block.bytes), block.size);
  };
  BlocksInParallel blocks(file, offset, count, blockBytes, look);
  std::string all;
  for (auto block = blocks.next(); block.size > 0; block = blocks.next()) {
    EXPECT_LE(block.size, blockBytes);
    EXPECT_EQ(block.place, all.size());
    EXPECT_EQ(looked[block.slot], std::string(reinterpret_cast<const char*>(block.bytes), block.size));
    all += looked[block.slot];
  }
  EXPECT_EQ(blocks.next().size, 0U);
  return all;
}

TEST_F(InParallel, AllBytesComeInTheirOrderWhateverTheSizes) {
  for (const std::uint64_t count : {0, 1, 6, 7, 8, 14, 27, 28, 29, 300, 999, 1000}) {
    for (const std::size_t blockBytes : {1, 7, 64, 100, 1000, 4096}) {
      for (const std::uint64_t offset : {0, 1, 690}) {
        SCOPED_TRACE(std::to_string(count) + " bytes from " + std::to_string(offset) + " by " +
                     std::to_string(blockBytes));
        EXPECT_EQ(readAll(*file(), offset, count, blockBytes), countedBytes().substr(offset, count));
      }
    }
  }
}

TEST_F(InParallel, AFileThatEndsBeforeTheBytesAskedForEndsThem) {
  for (const std::size_t blockBytes : {10, 64, 2000}) {
    EXPECT_EQ(readAll(*file(), 900, 500, blockBytes), countedBytes().substr(900));
    EXPECT_EQ(readAll(*file(), 1000, 500, blockBytes), "");
  }
}

TEST_F(InParallel, TheyCanBeLeftBeforeTheEnd) {
  for (int taken = 0; taken < 9; ++taken) {
    BlocksInParallel blocks(*file(), 0, 1000, 10, kNoLook);
    for (int i = 0; i < taken; ++i) EXPECT_EQ(blocks.next().size, 10U);
  }
}

// The first look waits until there is another one beside it.
TEST_F(InParallel, TwoThreadsLookAtTheSameTime) {
  std::mutex guard;
  std::condition_variable changed;
  std::set<std::thread::id> looking;
  const BlocksInParallel::Look look = [&](const BlocksInParallel::Block&) {
    std::unique_lock lock(guard);
    looking.insert(std::this_thread::get_id());
    changed.notify_all();
    changed.wait_for(lock, std::chrono::seconds(20), [&] { return looking.size() > 1; });
  };
  BlocksInParallel blocks(*file(), 0, 1000, 100, look);
  while (blocks.next().size > 0) {
  }
  EXPECT_EQ(looking.size(), 2U);
  EXPECT_EQ(looking.count(std::this_thread::get_id()), 1U);
}

TEST_F(InParallel, ASlotIsTheCallersUntilItAsksForTheNextBlock) {
  std::array<std::atomic<bool>, BlocksInParallel::kSlots> taken{};
  std::atomic<int> met = 0;
  const BlocksInParallel::Look look = [&](const BlocksInParallel::Block& block) {
    if (taken[block.slot].exchange(true)) ++met;
  };
  BlocksInParallel blocks(*file(), 0, 1000, 2, look);
  for (auto block = blocks.next(); block.size > 0; block = blocks.next()) {
    const std::string bytes(reinterpret_cast<const char*>(block.bytes), block.size);
    if (block.place % 64 == 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    EXPECT_EQ(bytes, countedBytes().substr(block.place, block.size));
    EXPECT_EQ(bytes, std::string(reinterpret_cast<const char*>(block.bytes), block.size));
    taken[block.slot] = false;
  }
  EXPECT_EQ(met, 0);
}

TEST_F(InParallel, WithoutAThreadTheCallerDoesItAll) {
  const test::NoThreads none;
  std::set<std::thread::id> looking;
  const BlocksInParallel::Look look = [&](const BlocksInParallel::Block&) {
    looking.insert(std::this_thread::get_id());
  };
  BlocksInParallel blocks(*file(), 0, 1000, 64, look);
  std::size_t bytes = 0;
  for (auto block = blocks.next(); block.size > 0; block = blocks.next()) bytes += block.size;
  EXPECT_EQ(bytes, 1000U);
  EXPECT_EQ(looking, std::set<std::thread::id>{std::this_thread::get_id()});
}

// --- Failures.

class FailingFile : public platform::ForwardingFile {
 public:
  using ForwardingFile::ForwardingFile;
  std::size_t readAt(std::uint64_t offset, void* buffer, std::size_t count) override {
    if (offset >= 500 && offset < 600) throw RunTimeFailure(failure::deviceIO, "The disk is broken.");
    return ForwardingFile::readAt(offset, buffer, count);
  }
};

void expectFailureBehindFiveBlocks(BlocksInParallel& blocks) {
  for (int i = 0; i < 5; ++i) EXPECT_EQ(blocks.next().size, 100U);
  EXPECT_THROW(blocks.next(), RunTimeFailure);
  EXPECT_EQ(blocks.next().size, 0U);
}

TEST_F(InParallel, AReadThatFailsIsToldBehindTheBlocksBeforeIt) {
  FailingFile failing(open());
  for (int times = 0; times < 50; ++times) {
    BlocksInParallel blocks(failing, 0, 1000, 100, kNoLook);
    expectFailureBehindFiveBlocks(blocks);
  }
}

TEST_F(InParallel, ALookThatFailsIsToldBehindTheBlocksBeforeIt) {
  const BlocksInParallel::Look look = [](const BlocksInParallel::Block& block) {
    if (block.place == 500) throw RunTimeFailure(failure::overflow, "Too many.");
  };
  for (int times = 0; times < 50; ++times) {
    BlocksInParallel blocks(*file(), 0, 1000, 100, look);
    expectFailureBehindFiveBlocks(blocks);
  }
}

}  // namespace
}  // namespace vantrelix
