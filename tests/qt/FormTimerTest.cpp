#include <gtest/gtest.h>
#include <memory>

#include <QTest>

#include "platform/RunTimeFailure.h"
#include "qt/FormTimer.h"
#include "support/TempSuite.h"

namespace vantrelix::qt {
namespace {

TEST(FormTimer, FollowsItsModelUntilItIsEnded) {
  Timer model{"Timer1"};
  FormTimer timer(model, nullptr);
  EXPECT_EQ(timer.objectName(), "Timer1");
  EXPECT_FALSE(timer.isActive());
  model.setInterval(5000);
  EXPECT_TRUE(timer.isActive());
  model.setInterval(7000);
  EXPECT_EQ(timer.interval(), 7000);
  model.setEnabled(false);
  EXPECT_FALSE(timer.isActive());
  model.setEnabled(true);
  EXPECT_TRUE(timer.isActive());
  timer.end();
  EXPECT_FALSE(timer.isActive());
  model.setInterval(9000);
  EXPECT_FALSE(timer.isActive());
}

TEST(FormTimer, EndsWithItsModel) {
  auto model = std::make_unique<Timer>("Timer1");
  model->setInterval(5000);
  FormTimer timer(*model, nullptr);
  EXPECT_TRUE(timer.isActive());
  model.reset();
  EXPECT_FALSE(timer.isActive());
}

TEST(FormTimer, AFailureInATickIsToldAndGoesNoFurther) {
  const test::TempSuite suite;
  Timer model{"Timer1"};
  model.tick.listen([&model] {
    model.setEnabled(false);
    throw RunTimeFailure(failure::overflow, "Overflow");
  });
  FormTimer timer(model, nullptr);
  model.setInterval(1);
  EXPECT_TRUE(QTest::qWaitFor([&suite] { return !suite.messages.empty(); }));
  EXPECT_EQ(suite.messages.size(), 1U);
}

}  // namespace
}  // namespace vantrelix::qt
