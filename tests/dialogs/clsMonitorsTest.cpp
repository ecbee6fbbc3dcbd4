#include <gmock/gmock.h>

#include "dialogs/PlacementFixture.h"
#include "dialogs/clsMonitors.h"

namespace vantrelix {
namespace {

using test::PlacedForm;
using testing::ElementsAre;
using testing::IsEmpty;

// Writes down what it is asked.
struct WatchedMonitors : ScriptedMonitors {
  std::vector<Rectangle> asked;
  MonitorHandle monitorFromRect(const Rectangle& box) override {
    asked.push_back(box);
    return ScriptedMonitors::monitorFromRect(box);
  }
};

struct WatchedDesktop : ScriptedDesktop {
  WatchedMonitors watched;
  MonitorPort& monitors() override { return watched; }
};

class ClsMonitors : public test::PlacementFixture {
 protected:
  clsMonitors all;
};

TEST(ClsMonitor, KeepsEachSideThatIsPut) {
  clsMonitor monitor;
  EXPECT_EQ(monitor.Handle(), 0);
  monitor.Handle(1);
  monitor.Height(2);
  monitor.Width(3);
  monitor.Left(4);
  monitor.Right(5);
  monitor.Top(6);
  monitor.Bottom(7);
  monitor.WorkLeft(8);
  monitor.WorkRight(9);
  monitor.WorkTop(10);
  monitor.WorkBottom(11);
  EXPECT_EQ(monitor.Handle(), 1);
  EXPECT_EQ(monitor.Height(), 2);
  EXPECT_EQ(monitor.Width(), 3);
  EXPECT_EQ(monitor.Left(), 4);
  EXPECT_EQ(monitor.Right(), 5);
  EXPECT_EQ(monitor.Top(), 6);
  EXPECT_EQ(monitor.Bottom(), 7);
  EXPECT_EQ(monitor.WorkLeft(), 8);
  EXPECT_EQ(monitor.WorkRight(), 9);
  EXPECT_EQ(monitor.WorkTop(), 10);
  EXPECT_EQ(monitor.WorkBottom(), 11);
}

TEST_F(ClsMonitors, RefreshFillsAMonitorFromWhatThePlatformKnowsOfIt) {
  screen.screens.monitors = {{{-10, 20, 1280, 1024}, {30, 40, 1100, 900}}};
  all.Refresh();
  ASSERT_EQ(all.Count(), 1u);
  const clsMonitor* monitor = all.Item("1");
  ASSERT_NE(monitor, nullptr);
  EXPECT_EQ(monitor->Handle(), 1);
  EXPECT_EQ(monitor->Left(), -10);
  EXPECT_EQ(monitor->Top(), 20);
  EXPECT_EQ(monitor->Width(), 1280);
  EXPECT_EQ(monitor->Height(), 1024);
  EXPECT_EQ(monitor->Right(), 1270);
  EXPECT_EQ(monitor->Bottom(), 1044);
  EXPECT_EQ(monitor->WorkLeft(), 30);
  EXPECT_EQ(monitor->WorkTop(), 40);
  EXPECT_EQ(monitor->WorkRight(), 1130);
  EXPECT_EQ(monitor->WorkBottom(), 940);
}

TEST_F(ClsMonitors, TheWholeDesktopIsTheBoxRoundAllScreensInTwipsAndPixels) {
  addScreen(-1920, 100);
  screen.screens.scale = 12;
  EXPECT_EQ(all.DesktopLeft(), -1920);
  EXPECT_EQ(all.DesktopTop(), 0);
  EXPECT_EQ(all.DesktopWidth(), 3840);
  EXPECT_EQ(all.DesktopHeight(), 1180);
  EXPECT_EQ(all.DesktopLeftTwps(), -23040);
  EXPECT_EQ(all.DesktopTopTwps(), 0);
  EXPECT_EQ(all.DesktopWidthTwps(), 46080);
  EXPECT_EQ(all.DesktopHeightTwps(), 14160);
  addScreen(0, -1080);
  EXPECT_EQ(all.DesktopTop(), -1080);
  EXPECT_EQ(all.DesktopTopTwps(), -12960);
}

TEST_F(ClsMonitors, EachScreenIsKeptOnceUnderItsHandle) {
  addScreen(1920);
  addScreen(-1920);
  all.Refresh();
  EXPECT_THAT(all.Keys(), ElementsAre("3", "1", "2"));
  all.Refresh();
  EXPECT_EQ(all.Count(), 3u);
  EXPECT_EQ(all.Item("3")->Left(), -1920);
  EXPECT_EQ(all.Item("4"), nullptr);
}

TEST(ClsMonitorsSampling, GoesOverTheDesktopRowByRow) {
  WatchedDesktop watched;
  const DesktopInUse use(watched);
  watched.watched.monitors = {{{-100, -50, 740, 530}, {}}};
  clsMonitors all;
  all.Refresh();
  EXPECT_THAT(watched.watched.asked, ElementsAre(Rectangle{-100, -50, 320, 240}, Rectangle{540, -50, 320, 240},
                                                 Rectangle{-100, 430, 320, 240}, Rectangle{540, 430, 320, 240}));
}

TEST(ClsMonitorsSampling, TakesItsEndInToo) {
  WatchedDesktop watched;
  const DesktopInUse use(watched);
  watched.watched.monitors = {{{0, 0, 640, 480}, {}}};
  clsMonitors all;
  all.Refresh();
  EXPECT_EQ(watched.watched.asked.size(), 4u);
  EXPECT_EQ(watched.watched.asked.back(), (Rectangle{640, 480, 320, 240}));
}

TEST(ClsMonitorsSampling, AsksNothingWhereThePlatformCountsNoScreen) {
  WatchedDesktop watched;
  const DesktopInUse use(watched);
  clsMonitors all;
  all.Refresh();
  EXPECT_EQ(all.Count(), 1u);
  watched.watched.monitors.clear();
  watched.watched.asked.clear();
  all.Refresh();
  EXPECT_THAT(watched.watched.asked, IsEmpty());
  EXPECT_EQ(all.Count(), 0u);
}

TEST_F(ClsMonitors, ASampleOnNoScreenAddsNone) {
  addScreen(1920, 1080);
  all.Refresh();
  EXPECT_THAT(all.Keys(), ElementsAre("1", "2"));
}

TEST_F(ClsMonitors, AScreenBetweenTheSamplesIsMetByItsWindowAlone) {
  screen.screens.monitors.push_back({{330, -1, 300, 230}, {330, -1, 300, 230}});
  all.Refresh();
  EXPECT_THAT(all.Keys(), ElementsAre("1"));
  screen.screens.monitors.front().bounds.left = 1000;
  const PlacedForm form({330 * 15, 0, 1500, 1500});
  ASSERT_NE(all.GetMonitorFromWindow(form), nullptr);
  EXPECT_EQ(all.GetMonitorFromWindow(form)->Handle(), 2);
  EXPECT_THAT(all.Keys(), ElementsAre("1", "2"));
}

TEST_F(ClsMonitors, AScreenThatIsGoneOrMovedIsSeenAtTheNextRefresh) {
  addScreen(1920);
  all.Refresh();
  screen.screens.monitors.pop_back();
  screen.screens.monitors.front().bounds.width = 1280;
  EXPECT_EQ(all.Count(), 2u);
  all.Refresh();
  EXPECT_THAT(all.Keys(), ElementsAre("1"));
  EXPECT_EQ(all.Item("1")->Width(), 1280);
  EXPECT_EQ(all.Item("2"), nullptr);
}

TEST_F(ClsMonitors, AWindowIsOnTheScreenThatHoldsMostOfIt) {
  addScreen(1920);
  EXPECT_EQ(all.GetMonitorFromWindow(PlacedForm({25000, 0, 7000, 3000}))->Handle(), 1);
  EXPECT_EQ(all.GetMonitorFromWindow(PlacedForm({26000, 0, 7000, 3000}))->Handle(), 2);
  EXPECT_EQ(all.GetMonitorFromWindow(PlacedForm({90000, 0, 7000, 3000})), nullptr);
}

TEST_F(ClsMonitors, APointIsOnTheScreenThatShowsIt) {
  addScreen(-1920);
  EXPECT_EQ(all.GetMonitorFromXYPoint(0, 0)->Handle(), 1);
  EXPECT_EQ(all.GetMonitorFromXYPoint(-1, 1079)->Handle(), 2);
  EXPECT_EQ(all.GetMonitorFromXYPoint(1920, 0), nullptr);
  EXPECT_EQ(all.GetMonitorFromXYPoint(0, 1080), nullptr);
}

TEST_F(ClsMonitors, AFormIsCentredInTheWorkAreaOfItsScreen) {
  screen.screens.monitors.push_back({{1920, 0, 1000, 800}, {1920, 100, 1000, 600}});
  PlacedForm form({30000, 0, 6000, 3000});
  EXPECT_TRUE(all.CenterFormOnMonitor(form));
  EXPECT_EQ(form.geometry(), (Rectangle{28800 + (15000 - 6000) / 2, 1500 + (9000 - 3000) / 2, 6000, 3000}));
}

TEST_F(ClsMonitors, AFormIsCentredOnTheScreenOfAnother) {
  addScreen(1920);
  PlacedForm form({30000, 0, 6000, 3000});
  const PlacedForm other({0, 0, 100, 100}, "frmOther");
  EXPECT_TRUE(all.CenterFormOnMonitor(form, &other));
  EXPECT_EQ(form.geometry(), (Rectangle{11400, (15600 - 3000) / 2, 6000, 3000}));
}

TEST_F(ClsMonitors, AFormOnNoScreenIsNotCentred) {
  const Rectangle far{90000, 90000, 6000, 3000};
  PlacedForm form(far);
  EXPECT_FALSE(all.CenterFormOnMonitor(form));
  EXPECT_EQ(form.geometry(), far);
}

}  // namespace
}  // namespace vantrelix
