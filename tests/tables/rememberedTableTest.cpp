// When a reading of a table whose file has its times from this machine's own clock is remembered.
#include <gtest/gtest.h>

#include "tables/OwnClockCuts.h"

namespace vantrelix {
namespace {

using RememberedTable = test::OwnClockCuts;

// --- When a reading is trusted.

TEST_F(RememberedTable, TheFirstReadingOfAFileThatHasStoodIsTrusted) {
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  EXPECT_LT(cost(isUpper("ID017")), kAll / 4);
  EXPECT_EQ(count(isUpper("ID017")), 50);
}

TEST_F(RememberedTable, AFileThatWasChangedAMomentAgoIsNotTrusted) {
  setAge(20 * kMillisecond);
  expectTrustAfter(0, 100);
}

TEST_F(RememberedTable, WhereTimesAreWholeSecondsTwoOfThemHaveToLieInBetween) {
  const std::int64_t now = machine_.wallNanoseconds();
  setTime(now - now % kSecond);
  expectTrustAfter(900, 1500);
}

TEST_F(RememberedTable, ATimeInTheFutureProvesNothing) {
  setAge(-10 * kSecond);
  expectTrustAfter(5000, 6000);
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
      overwriteInAnotherProcess(row, "ID003");
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

}  // namespace
}  // namespace vantrelix
