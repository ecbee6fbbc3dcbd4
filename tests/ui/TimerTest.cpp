#include <gtest/gtest.h>

#include "ui/Timer.h"

namespace vantrelix {
namespace {

TEST(Timer, TicksWhileItIsEnabledAndHasAnInterval) {
  Timer timer("Timer1");
  int ticks = 0;
  timer.tick.listen([&ticks] { ++ticks; });
  EXPECT_FALSE(timer.running());
  timer.userTick();
  timer.setInterval(500);
  EXPECT_TRUE(timer.running());
  timer.userTick();
  timer.setEnabled(false);
  EXPECT_FALSE(timer.running());
  timer.userTick();
  EXPECT_EQ(ticks, 1);
  timer.setEnabled(true);
  timer.setInterval(0);
  EXPECT_FALSE(timer.running());
}

TEST(Timer, SaysWhenItsIntervalOrItsRunningChanges) {
  Timer timer("Timer1");
  int changes = 0;
  timer.changed.listen([&changes] { ++changes; });
  timer.setInterval(500);
  timer.setInterval(500);
  timer.setEnabled(false);
  EXPECT_EQ(changes, 2);
}

}  // namespace
}  // namespace vantrelix
