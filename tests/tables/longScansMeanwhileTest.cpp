// Changes and failures while two threads look at the rows of a long table at rest.
#include <algorithm>
#include <gtest/gtest.h>
#include <mutex>

#include "platform/RunTimeFailure.h"
#include "tables/LongTable.h"
#include "tables/scanInParts.h"

namespace vantrelix {
namespace {

class LongScanMeanwhile : public test::LongTable {};

// Other programs' writes are seen in rows that were looked at before them.
TEST_F(LongScanMeanwhile, SeesWhatIsWrittenMeanwhile) {
  const auto table = DbfFile::open(path());
  const auto writer = stranger();
  std::mutex guard;
  std::uint32_t lookedAt = 0;
  std::vector<double> seen;
  const auto look = [&](const RowBlock& rows, std::vector<double>& places) {
    places.clear();
    for (std::uint32_t row = 0; row < rows.count; ++row) {
      places.push_back(table->value(rows.bytes + row * kLength, 0).asNumber());
    }
    const std::lock_guard lock(guard);
    lookedAt = std::max(lookedAt, rows.first + rows.count);
  };
  const auto isLookedAt = [&] {
    const std::lock_guard lock(guard);
    return lookedAt > kReadAhead;
  };
  const auto join = [&](const RowBlock& rows, const std::vector<double>& places) {
    EXPECT_EQ(rows.first, seen.size());
    if (rows.first == 0) {
      for (int waits = 0; waits < 20000 && !isLookedAt(); ++waits) platform::current().sleepMilliseconds(1);
      EXPECT_TRUE(isLookedAt());
      writer->writeAt(offsetOf(kReadAhead) + 1, "    123456", 10);
    }
    seen.insert(seen.end(), places.begin(), places.end());
    return true;
  };
  EXPECT_TRUE(scanInParts(*table, std::vector<double>(), look, join));
  ASSERT_EQ(seen.size(), kRows);
  EXPECT_EQ(seen[kReadAhead], 123456);
  EXPECT_EQ(seen[kReadAhead + 1], kReadAhead + 1);
}

TEST_F(LongScanMeanwhile, GivesNoRowThatIsCutOffMeanwhile) {
  const auto table = DbfFile::open(path());
  std::uint32_t rows = 0;
  EXPECT_TRUE(table->scan([&](std::uint32_t number, const unsigned char*) {
    if (number == 10) {
      platform::current().sleepMilliseconds(20);
      stranger()->truncate(offsetOf(kReadAhead) + 5);
    }
    return ++rows > 0;
  }));
  EXPECT_EQ(rows, kReadAhead);
}

TEST_F(LongScanMeanwhile, TellsOfAReadThatFailsBehindTheRowsBeforeIt) {
  for (const bool atRest : {true, false}) {
    setAge(atRest ? 60 : 0);
    const auto table = DbfFile::open(path());
    machine_.onRead = [&](std::uint64_t offset, std::size_t count) {
      const std::uint64_t bad = offsetOf(31000);
      if (offset <= bad && bad < offset + count) throw RunTimeFailure(failure::deviceIO, "The disk is broken.");
    };
    std::uint32_t rows = 0;
    EXPECT_THROW(table->scan([&](std::uint32_t, const unsigned char*) { return ++rows > 0; }), RunTimeFailure);
    EXPECT_GT(rows, 28000U);
    EXPECT_LE(rows, 31000U);
    machine_.onRead = {};
  }
}

TEST_F(LongScanMeanwhile, AFailureOfEitherStepComesToTheCaller) {
  const auto table = DbfFile::open(path());
  const auto failAt = [](const RowBlock& rows) {
    if (rows.first > 20000) throw RunTimeFailure(failure::overflow, "Too many.");
    return true;
  };
  std::uint32_t rows = 0;
  EXPECT_THROW(table->scanParts([&](const RowBlock& block) { failAt(block); },
                                [&](const RowBlock& block) { return (rows += block.count) > 0; }),
               RunTimeFailure);
  EXPECT_GT(rows, 20000U);
  EXPECT_LT(rows, 24000U);
  EXPECT_THROW(table->scanParts({}, failAt), RunTimeFailure);
}

}  // namespace
}  // namespace vantrelix
