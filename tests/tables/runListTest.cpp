#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <set>

#include "tables/RunList.h"

namespace vantrelix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(RunList, RunsOfATextComeInTheOrderOfTheFile) {
  RunList runs;
  runs.add(7, {100, 10});
  runs.add(8, {110, 5});
  runs.add(7, {0, 20});
  EXPECT_THAT(runs.find(7), ElementsAre(RowRun{0, 20}, RowRun{100, 10}));
  EXPECT_THAT(runs.find(8), ElementsAre(RowRun{110, 5}));
  EXPECT_THAT(runs.find(9), IsEmpty());
}

TEST(RunList, RunsThatMeetOrOverlapAreOne) {
  RunList runs;
  runs.add(7, {0, 10});
  runs.add(8, {10, 1});
  runs.add(7, {10, 10});
  runs.add(7, {5, 2});
  runs.add(7, {15, 10});
  EXPECT_THAT(runs.find(7), ElementsAre(RowRun{0, 25}));
}

TEST(RunList, RowsThatGoOnTakeNoMoreRoom) {
  RunList runs;
  for (std::uint32_t row = 0; row < 100000; ++row) runs.add(7, {row, 1});
  EXPECT_EQ(runs.size(), 1U);
  EXPECT_THAT(runs.find(7), ElementsAre(RowRun{0, 100000}));
}

TEST(RunList, GatheredRunsAreFoundOnceTheyAreSettledAndTakeMore) {
  RunList runs;
  for (std::uint32_t row = 0; row < 1000; ++row) runs.gather(row / 3 % 5, {row, 1});
  EXPECT_EQ(runs.size(), 334U);
  runs.settle();
  ASSERT_EQ(runs.find(4).size(), 66U);
  EXPECT_EQ(runs.find(4).front(), (RowRun{12, 3}));
  EXPECT_EQ(runs.find(3).back(), (RowRun{999, 1}));
  runs.add(3, {1000, 2});
  EXPECT_EQ(runs.find(3).back(), (RowRun{999, 3}));
  runs.settle();
  EXPECT_EQ(runs.find(3).back(), (RowRun{999, 3}));
  EXPECT_EQ(runs.find(4).back(), (RowRun{987, 3}));
}

TEST(RunList, TheLastRowsOfTheNumbersAreKept) {
  RunList runs;
  runs.add(7, {UINT32_MAX - 1, 1});
  runs.add(7, {UINT32_MAX - 3, 2});
  EXPECT_THAT(runs.find(7), ElementsAre(RowRun{UINT32_MAX - 3, 3}));
}

TEST(RunList, GivesEveryRowOnceHoweverManyThereAre) {
  std::mt19937 random(9);
  RunList runs;
  std::map<std::size_t, std::set<std::uint32_t>> expected;
  for (int i = 0; i < 20000; ++i) {
    const std::size_t hash = random() % 500;
    const RowRun rows{static_cast<std::uint32_t>(random() % 100000), static_cast<std::uint32_t>(1 + random() % 5)};
    runs.add(hash, rows);
    for (std::uint32_t row = 0; row < rows.count; ++row) expected[hash].insert(rows.first + row);
    if (i % 1000 != 999) continue;
    for (const auto& [text, wanted] : expected) {
      std::vector<std::uint32_t> found;
      for (const RowRun& run : runs.find(text)) {
        for (std::uint32_t row = 0; row < run.count; ++row) found.push_back(run.first + row);
      }
      ASSERT_EQ(found, std::vector<std::uint32_t>(wanted.begin(), wanted.end()));
    }
  }
}

}  // namespace
}  // namespace vantrelix
