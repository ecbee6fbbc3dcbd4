// Long runs of bytes and of rows, read one block ahead of the work on them.
#include <gtest/gtest.h>
#include <numeric>

#include "platform/ForwardingFile.h"
#include "platform/RunTimeFailure.h"
#include "support/TempFolder.h"
#include "tables/BlocksAhead.h"
#include "tables/DbfFile.h"

namespace vantrelix {
namespace {

using dbf::BlocksAhead;
using platform::OpenMode;

// 1,000 bytes, each the lowest byte of its place.
std::string countedBytes() {
  std::string bytes(1000, '\0');
  std::iota(bytes.begin(), bytes.end(), '\0');
  return bytes;
}

std::string readAhead(platform::File& file, std::uint64_t offset, std::uint64_t count, std::size_t blockBytes) {
  BlocksAhead blocks(file, offset, count, blockBytes);
  std::string all;
  for (auto block = blocks.next(); block.size > 0; block = blocks.next()) {
    EXPECT_LE(block.size, blockBytes);
    all.append(reinterpret_cast<const char*>(block.bytes), block.size);
  }
  EXPECT_EQ(blocks.next().size, 0U);
  return all;
}

TEST(BlocksAheadTest, GivesAllBytesInTheirOrder) {
  const test::TempFolder folder;
  const auto file = platform::current().open(folder.write("a.bin", countedBytes()), OpenMode::read);
  EXPECT_EQ(readAhead(*file, 0, 1000, 7), countedBytes());
  EXPECT_EQ(readAhead(*file, 100, 300, 100), countedBytes().substr(100, 300));
  EXPECT_EQ(readAhead(*file, 990, 100, 64), countedBytes().substr(990)) << "the file ends before the bytes asked for";
  EXPECT_EQ(readAhead(*file, 0, 0, 64), "");
}

TEST(BlocksAheadTest, CanBeLeftBeforeTheEnd) {
  const test::TempFolder folder;
  const auto file = platform::current().open(folder.write("a.bin", countedBytes()), OpenMode::read);
  for (int taken = 0; taken < 4; ++taken) {
    BlocksAhead blocks(*file, 0, 1000, 10);
    for (int i = 0; i < taken; ++i) EXPECT_EQ(blocks.next().size, 10U);
  }
}

class FailingFile : public platform::ForwardingFile {
 public:
  using ForwardingFile::ForwardingFile;
  std::size_t readAt(std::uint64_t offset, void* buffer, std::size_t count) override {
    if (offset >= 500) throw RunTimeFailure(failure::deviceIO, "The disk is broken.");
    return ForwardingFile::readAt(offset, buffer, count);
  }
};

TEST(BlocksAheadTest, AReadThatFailsIsToldBehindTheBlocksBeforeIt) {
  const test::TempFolder folder;
  FailingFile file(platform::current().open(folder.write("a.bin", countedBytes()), OpenMode::read));
  BlocksAhead blocks(file, 0, 1000, 100);
  for (int i = 0; i < 5; ++i) EXPECT_EQ(blocks.next().size, 100U);
  EXPECT_THROW(blocks.next(), RunTimeFailure);
}

// A table at rest of 6 MB, long enough for a thread.
class LongScan : public testing::Test {
 protected:
  static constexpr std::uint32_t kRows = 60000;

  LongScan() {
    DbfFile::create(path(), {{"PLACE", 'N', 10, 0}, {"TEXT", 'C', 90, 0}});
    const auto table = DbfFile::open(path());
    std::vector<unsigned char> rows;
    for (std::uint32_t i = 0; i < kRows; ++i) {
      std::vector<unsigned char> row = table->blankRecord();
      table->put(row.data(), 0, static_cast<double>(i));
      rows.insert(rows.end(), row.begin(), row.end());
    }
    table->append(rows.data(), kRows);
    const auto file = platform::current().open(path(), OpenMode::readWrite);
    file->setModified(platform::current().wallNanoseconds() - 60'000'000'000);
  }
  std::string path() const { return folder_.file("LONG.DBF"); }

 private:
  test::TempFolder folder_;
};

TEST_F(LongScan, VisitsEveryRowOnceAndInOrder) {
  const auto table = DbfFile::open(path());
  std::uint32_t next = 0;
  EXPECT_TRUE(table->scan([&](std::uint32_t number, const unsigned char* record) {
    EXPECT_EQ(number, next);
    EXPECT_EQ(table->value(record, 0).asNumber(), next);
    return ++next > 0 && !HasFailure();
  }));
  EXPECT_EQ(next, kRows);
}

TEST_F(LongScan, VisitsTheRowsAskedForAlone) {
  const auto table = DbfFile::open(path());
  std::uint32_t first = 0;
  std::uint32_t rows = 0;
  EXPECT_TRUE(table->scan(
      [&](std::uint32_t number, const unsigned char*) {
        if (rows++ == 0) first = number;
        return true;
      },
      7, 50001));
  EXPECT_EQ(first, 7U);
  EXPECT_EQ(rows, 50001U);
}

TEST_F(LongScan, EndsWhereItsVisitorStopsIt) {
  const auto table = DbfFile::open(path());
  std::uint32_t rows = 0;
  EXPECT_FALSE(table->scan([&](std::uint32_t, const unsigned char*) { return ++rows < 31000; }));
  EXPECT_EQ(rows, 31000U);
}

// What is written to rows that lie read already, but are not visited yet, is seen.
TEST_F(LongScan, SeesWhatIsWrittenMeanwhile) {
  constexpr std::uint32_t kNextBlock = 15000;
  constexpr std::uint64_t kHeader = 32 + 2 * 32 + 1;
  const auto table = DbfFile::open(path());
  const auto stranger = platform::current().open(path(), OpenMode::readWrite);
  std::uint32_t rows = 0;
  double seen = 0;
  EXPECT_TRUE(table->scan([&](std::uint32_t number, const unsigned char* record) {
    if (number == 10) {
      platform::current().sleepMilliseconds(50);
      stranger->writeAt(kHeader + std::uint64_t{kNextBlock} * 101 + 1, "    123456", 10);
    }
    if (number == kNextBlock) seen = table->value(record, 0).asNumber();
    return ++rows > 0;
  }));
  EXPECT_EQ(rows, kRows);
  EXPECT_EQ(seen, 123456);
}

}  // namespace
}  // namespace vantrelix
