#include <gtest/gtest.h>

#include "ui/Form.h"
#include "ui/ScriptedDesktop.h"
#include "ui/ScriptedMonitors.h"

namespace vantrelix {
namespace {

MonitorInfo screenAt(int left, int top) { return {{left, top, 1000, 800}, {left, top + 20, 1000, 780}}; }

TEST(ScriptedMonitors, StandOnADesktopOfOneScreenAtFirst) {
  ScriptedDesktop scripted;
  EXPECT_EQ(scripted.monitors().count(), 1);
  EXPECT_EQ(scripted.monitors().desktop(), (Rectangle{0, 0, 1920, 1080}));
  EXPECT_EQ(scripted.monitors().screen(), (Rectangle{0, 0, 1920, 1080}));
  EXPECT_EQ(scripted.monitors().info(1).workArea, (Rectangle{0, 0, 1920, 1040}));
  EXPECT_EQ(scripted.monitors().twipsPerPixelX(), 15);
  EXPECT_EQ(scripted.monitors().twipsPerPixelY(), 15);
}

TEST(ScriptedMonitors, TheFirstIsTheScreenAndTheDesktopTheBoxRoundAll) {
  ScriptedMonitors scripted;
  scripted.monitors = {screenAt(0, 0), screenAt(-1000, -100), screenAt(1000, 300)};
  EXPECT_EQ(scripted.count(), 3);
  EXPECT_EQ(scripted.screen(), (Rectangle{0, 0, 1000, 800}));
  EXPECT_EQ(scripted.desktop(), (Rectangle{-1000, -100, 3000, 1200}));
}

TEST(ScriptedMonitors, ADesktopAwayFromTheOriginDoesNotReachBackToIt) {
  ScriptedMonitors scripted;
  scripted.monitors = {screenAt(100, 50)};
  EXPECT_EQ(scripted.desktop(), (Rectangle{100, 50, 1000, 800}));
}

TEST(ScriptedMonitors, WithoutAScreenThereIsNoDesktop) {
  ScriptedMonitors scripted;
  scripted.monitors.clear();
  EXPECT_EQ(scripted.count(), 0);
  EXPECT_EQ(scripted.desktop(), Rectangle());
  EXPECT_EQ(scripted.screen(), Rectangle());
  EXPECT_EQ(scripted.monitorFromRect({0, 0, 100, 100}), 0);
}

TEST(ScriptedMonitors, ABoxIsOnTheScreenThatHoldsMostOfIt) {
  ScriptedMonitors scripted;
  scripted.monitors = {screenAt(0, 0), screenAt(1000, 0)};
  EXPECT_EQ(scripted.monitorFromRect({900, 0, 190, 10}), 1);
  EXPECT_EQ(scripted.monitorFromRect({900, 0, 210, 10}), 2);
  EXPECT_EQ(scripted.monitorFromRect({999, 799, 1, 1}), 1);
  EXPECT_EQ(scripted.monitorFromRect({2000, 0, 10, 10}), 0);
  EXPECT_EQ(scripted.monitorFromRect({0, -10, 10, 10}), 0);
  EXPECT_EQ(scripted.monitorFromRect({500, 500, 0, 0}), 0);
}

TEST(ScriptedMonitors, AWindowIsMeasuredAtTheScale) {
  ScriptedMonitors scripted;
  scripted.monitors = {screenAt(0, 0), screenAt(1000, 0)};
  Form form("frmTest");
  form.setGeometry({12000, 0, 1500, 1500});
  EXPECT_EQ(scripted.monitorFromWindow(form), 1);
  scripted.scale = 10;
  EXPECT_EQ(scripted.monitorFromWindow(form), 2);
}

TEST(ScriptedMonitors, AHandleThatNamesNoScreenGivesEmptyBoxes) {
  ScriptedMonitors scripted;
  EXPECT_EQ(scripted.info(1).bounds.width, 1920);
  for (const MonitorHandle handle : {0, -1, 2}) {
    EXPECT_EQ(scripted.info(handle).bounds, Rectangle());
    EXPECT_EQ(scripted.info(handle).workArea, Rectangle());
  }
}

}  // namespace
}  // namespace vantrelix
