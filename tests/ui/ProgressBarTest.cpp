#include <gtest/gtest.h>

#include "ui/ProgressBar.h"

namespace vantrelix {
namespace {

TEST(ProgressBar, IsBusyUntilItKnowsTheTotal) {
  ProgressBar bar("bar");
  EXPECT_TRUE(bar.busy());
  bar.setProgress(3, 10);
  EXPECT_FALSE(bar.busy());
  EXPECT_EQ(bar.done(), 3);
  EXPECT_EQ(bar.total(), 10);
  bar.setProgress(4, 0);
  EXPECT_TRUE(bar.busy());
  bar.setProgress(4, -1);
  EXPECT_TRUE(bar.busy());
  EXPECT_EQ(bar.total(), 0);
}

TEST(ProgressBar, KeepsWhatIsDoneWithinTheTotal) {
  ProgressBar bar("bar");
  bar.setProgress(-1, 10);
  EXPECT_EQ(bar.done(), 0);
  bar.setProgress(11, 10);
  EXPECT_EQ(bar.done(), 10);
}

TEST(ProgressBar, SaysOncePerChangeThatItChanged) {
  ProgressBar bar("bar");
  int changes = 0;
  bar.changed.listen([&changes] { ++changes; });
  bar.setProgress(1, 10);
  EXPECT_EQ(changes, 1);
  bar.setProgress(1, 10);
  EXPECT_EQ(changes, 1);
  bar.setProgress(2, 10);
  bar.setProgress(2, 20);
  EXPECT_EQ(changes, 3);
}

}  // namespace
}  // namespace vantrelix
