// What is remembered of a table where times cannot be set as they should, and where writes fail.
#include <algorithm>
#include <gtest/gtest.h>

#include "platform/RunTimeFailure.h"
#include "tables/OwnClockCuts.h"

namespace vantrelix {
namespace {

using RememberedTable = test::OwnClockCuts;

TEST_F(RememberedTable, WithoutTheRightToSetTimesAWriteEndsWhatIsKnown) {
  know();
  machine_.maySetTimes = false;
  add("ID003");
  EXPECT_FALSE(isKnown());
  const std::int64_t tick = time();
  overwrite(999, "ID003");
  setTime(tick);
  EXPECT_EQ(count(isUpper("ID003")), 52);
}

TEST_F(RememberedTable, WhereTimesAreRoundedAWriteEndsWhatIsKnown) {
  for (const std::int64_t step : {std::int64_t{100}, kMillisecond, kSecond, 2 * kSecond}) {
    machine_.nanosecondsPerTick = step;
    setAge(3600 * kSecond + step);
    know();
    const long before = count(isUpper("ID003"));
    add("ID003");
    EXPECT_FALSE(isKnown());
    const std::int64_t tick = time();
    add("ID003");
    setTime(tick);
    EXPECT_EQ(count(isUpper("ID003")), before + 2);
  }
}

TEST_F(RememberedTable, TimesOfAnotherMachinesClockAreNotSet) {
  machine_.ownClock = false;
  learn();
  ASSERT_TRUE(isKnown());
  add("ID003");
  EXPECT_EQ(machine_.timesSet, 0);
  EXPECT_FALSE(isKnown());
  EXPECT_EQ(count(isUpper("ID003")), 51);
}

TEST_F(RememberedTable, AWriteThatFailsAnywhereLeavesRightAnswers) {
  for (const bool torn : {false, true}) {
    for (int call = 1; call <= 2; ++call) {
      SCOPED_TRACE(call);
      setAge(3600 * kSecond + call + (torn ? 10 : 0));
      know();
      const RecordsetPtr rows = open(isUpper("NONE"));
      const long before = count(isUpper("ID003"));
      machine_.crashAt(call, torn);
      rows->AddNew();
      rows->put("ID", "ID003");
      EXPECT_THROW(rows->Update(), RunTimeFailure);
      machine_.reset();
      // The count may have been written in part.
      const long now = count(isUpper("ID003"));
      EXPECT_TRUE(othersCount("ID003", now));
      EXPECT_TRUE(now == before || (torn && now == before + 1)) << now;
      add("ID003");
      EXPECT_EQ(count(isUpper("ID003")), now + 1);
      EXPECT_TRUE(othersCount("ID003", now + 1));
    }
  }
}

TEST_F(RememberedTable, ACallThatFailsAnywhereInAWriteLeavesRightAnswers) {
  for (int call = 1, last = 1; call <= last; ++call) {
    SCOPED_TRACE(call);
    setAge(3600 * kSecond + call);
    know();
    const RecordsetPtr rows = open(isUpper("ID003"));
    const long before = rows->rowCount();
    bool added = true, changed = true;
    machine_.failAnyAt(call, failure::deviceIO);
    try {
      rows->AddNew();
      rows->put("ID", "ID003");
      rows->Update();
    } catch (const RunTimeFailure&) {
      added = false;
    }
    try {
      rows->MoveFirst();
      rows->Edit();
      rows->put("ID", "ID004");
      rows->Update();
    } catch (const RunTimeFailure&) {
      changed = false;
    }
    last = std::max(last, machine_.anyCalls());
    machine_.reset();
    const long now = count(isUpper("ID003"));
    EXPECT_TRUE(othersCount("ID003", now));
    EXPECT_GE(now, before + (added ? 1 : 0) - 1);
    EXPECT_LE(now, before + 1 - (changed ? 1 : 0));
    EXPECT_TRUE(othersCount("ID004", count(isUpper("ID004"))));
  }
}

}  // namespace
}  // namespace vantrelix
