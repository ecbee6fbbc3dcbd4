#include <chrono>
#include <gtest/gtest.h>
#include <memory>
#include <optional>

#include "dialogs/frmProgress.h"
#include "platform/FaultPlatform.h"
#include "ui/ScriptedDesktop.h"

namespace vantrelix {
namespace {

// Knows the window that is shown, and when it came up.
class Screen : public ScriptedDesktop {
 public:
  void showModeless(Form& form, Activation activation) override {
    window = dynamic_cast<frmProgress*>(&form);
    takesKeyboard = activation == Activation::take;
    textWhenShown = window ? window->lblProgress.caption() : "";
    ScriptedDesktop::showModeless(form, activation);
  }
  frmProgress* window = nullptr;
  bool takesKeyboard = false;
  std::string textWhenShown;
};

class frmProgressTest : public testing::Test {
 protected:
  // A work that begins now.
  ProgressWindow& begin() {
    return work.emplace("Importing", std::chrono::milliseconds(400), [this] { return now; });
  }
  // A work that has its window already.
  ProgressWindow& beginShown() {
    ProgressWindow& begun = begin();
    now += 400;
    begun.report("first", 0, 100);
    return begun;
  }

  Screen screen;
  DesktopInUse use{screen};
  std::int64_t now = 1'000'000;
  std::optional<ProgressWindow> work;
};

TEST_F(frmProgressTest, AShortWorkShowsNothing) {
  begin();
  for (const int step : {0, 100, 299}) {
    now = 1'000'000 + step;
    work->report("file", step, 400);
  }
  now += 100;
  work->report("file", 399, 400);
  work.reset();
  EXPECT_TRUE(screen.formsShown().empty());
}

TEST_F(frmProgressTest, ComesUpOnceTheWorkHasTakenTheDelay) {
  begin();
  now += 399;
  work->report("file 1", 1, 10);
  EXPECT_TRUE(screen.formsShown().empty());
  now += 1;
  work->report("file 2", 2, 10);
  EXPECT_EQ(screen.formsShown(), std::vector<std::string>{"frmProgress (modeless)"});
  ASSERT_TRUE(screen.window);
  EXPECT_TRUE(screen.takesKeyboard);
  EXPECT_TRUE(screen.window->visible());
  EXPECT_EQ(screen.window->caption(), "Importing");
  EXPECT_EQ(screen.textWhenShown, "file 2");
  EXPECT_EQ(screen.window->ProgressBar1.done(), 2);
  EXPECT_EQ(screen.window->ProgressBar1.total(), 10);
  now += 1000;
  work->report("file 3", 3, 10);
  EXPECT_EQ(screen.formsShown().size(), 1U);
}

TEST_F(frmProgressTest, WithoutADelayTheFirstReportShowsIt) {
  ProgressWindow window("Importing", std::chrono::milliseconds(0), [this] { return now; });
  window.report("file", 0, 1);
  EXPECT_EQ(screen.formsShown().size(), 1U);
}

TEST_F(frmProgressTest, ShowsAtMostTwentyReportsASecond) {
  beginShown();
  // The window says once more that it changes when it goes.
  const auto changes = std::make_shared<int>(0);
  screen.window->changed.listen([changes] { ++*changes; });
  screen.window->lblProgress.changed.listen([changes] { ++*changes; });
  const int turns = screen.turns();
  for (int i = 1; i <= 1000; ++i) {
    ++now;
    work->report("file " + std::to_string(i), i, 1000);
  }
  EXPECT_EQ(*changes, 20);
  EXPECT_EQ(screen.turns() - turns, 20);
  EXPECT_EQ(screen.window->lblProgress.caption(), "file 1000");
}

TEST_F(frmProgressTest, ATurnThatTakesLongLeavesTheWorkItsTime) {
  beginShown();
  screen.onTurn = [this] { now += 200; };
  const int turns = screen.turns();
  now += 50;
  work->report("file", 1, 10);
  work->report("file", 2, 10);
  now += 49;
  work->report("file", 3, 10);
  EXPECT_EQ(screen.turns() - turns, 1);
  now += 1;
  work->report("file", 4, 10);
  EXPECT_EQ(screen.turns() - turns, 2);
}

TEST_F(frmProgressTest, TakesNoInputUntilItIsUp) {
  begin();
  for (int i = 0; i < 399; ++i) {
    ++now;
    work->report("file", 0, 0);
  }
  EXPECT_EQ(screen.turns(), 0);
  EXPECT_EQ(screen.quietTurns(), 7);
  ++now;
  work->report("file", 0, 0);
  EXPECT_EQ(screen.turns(), 1);
  EXPECT_EQ(screen.quietTurns(), 7);
}

TEST_F(frmProgressTest, GoesWithTheWork) {
  begin();
  bool hidden = false;
  now += 400;
  work->report("file", 0, 0);
  int turns = screen.turns();
  bool visibleInLastTurn = false;
  screen.onTurn = [&] { visibleInLastTurn = screen.window->visible(); };
  screen.window->changed.listen([&] { hidden = !screen.window->visible(); });
  work.reset();
  EXPECT_TRUE(hidden);
  // What was clicked meanwhile is lost while the windows behind still take no input.
  EXPECT_EQ(screen.turns() - turns, 1);
  EXPECT_TRUE(visibleInLastTurn);
  turns = screen.turns();
  begin();
  work.reset();
  EXPECT_EQ(screen.turns(), turns);
}

TEST_F(frmProgressTest, GoesWithAWorkThatFails) {
  bool hidden = false;
  const auto failing = [&] {
    ProgressWindow window("Importing", std::chrono::milliseconds(0), [this] { return now; });
    window.report("file", 0, 0);
    screen.window->changed.listen([&] { hidden = !screen.window->visible(); });
    throw std::runtime_error("disk full");
  };
  EXPECT_THROW(failing(), std::runtime_error);
  EXPECT_TRUE(hidden);
}

TEST_F(frmProgressTest, CancelOnlySaysThatTheUserWantsTheEnd) {
  beginShown();
  EXPECT_FALSE(work->cancelled());
  EXPECT_EQ(screen.window->cmdCancel.caption(), "Cancel");
  EXPECT_EQ(screen.window->cancelButton(), &screen.window->cmdCancel);
  screen.onTurn = [this] { screen.window->cmdCancel.userClick(); };
  now += 50;
  work->report("file", 1, 10);
  EXPECT_TRUE(work->cancelled());
  EXPECT_TRUE(screen.window->visible());
  EXPECT_FALSE(screen.window->cmdCancel.enabled());
  now += 50;
  work->report("still ending", 2, 10);
  EXPECT_TRUE(work->cancelled());
  EXPECT_EQ(screen.window->lblProgress.caption(), "still ending");
}

TEST_F(frmProgressTest, ClosingItByTheFrameCancelsAndLeavesIt) {
  beginShown();
  screen.window->userClose();
  EXPECT_TRUE(work->cancelled());
  EXPECT_TRUE(screen.window->visible());
  screen.window->userClose();
  EXPECT_TRUE(screen.window->visible());
}

TEST_F(frmProgressTest, IsBusyWhereTheTotalIsNotKnown) {
  beginShown();
  EXPECT_FALSE(screen.window->ProgressBar1.busy());
  now += 50;
  work->report("file", 5, 0);
  EXPECT_TRUE(screen.window->ProgressBar1.busy());
}

TEST_F(frmProgressTest, GoesByThePlatformsSteadyClock) {
  class Clock : public platform::FaultPlatform {
   public:
    Clock() : FaultPlatform(platform::operatingSystem()) {}
    std::int64_t steadyMilliseconds() override { return milliseconds; }
    std::int64_t milliseconds = 5;
  } clock;
  const platform::Substitute inPlace(clock);
  ProgressWindow window("Importing");
  clock.milliseconds += 399;
  window.report("file", 1, 2);
  EXPECT_TRUE(screen.formsShown().empty());
  clock.milliseconds += 1;
  window.report("file", 1, 2);
  EXPECT_EQ(screen.formsShown().size(), 1U);
}

TEST_F(frmProgressTest, AMillionReportsTakeNoTimeWorthTelling) {
  ProgressWindow window("Importing");
  const std::string text(200, 'x');
  const auto begun = std::chrono::steady_clock::now();
  for (long i = 0; i < 1'000'000; ++i) window.report(text, i, 1'000'000);
  EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::seconds(1));
}

TEST_F(frmProgressTest, AWorkWithinAWorkHasItsOwn) {
  beginShown();
  frmProgress* outer = screen.window;
  {
    ProgressWindow inner("Copying", std::chrono::milliseconds(0), [this] { return now; });
    inner.report("file", 0, 0);
    EXPECT_NE(screen.window, outer);
    screen.window->cmdCancel.userClick();
    EXPECT_TRUE(inner.cancelled());
  }
  EXPECT_TRUE(outer->visible());
  EXPECT_FALSE(work->cancelled());
}

}  // namespace
}  // namespace vantrelix
