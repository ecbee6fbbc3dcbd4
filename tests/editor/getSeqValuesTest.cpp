// The dialog for a run of values: its rounds, its checks and its place.
#include <deque>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

#include "editor/frmGetSequentialValues.h"
#include "editor/getSeqValues.h"
#include "foundation/numbers.h"
#include "support/TempSuite.h"
#include "ui/ScriptedDesktop.h"

namespace vantrelix::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Texts = std::array<std::string, 3>;

class GetSeqValuesTest : public ::testing::Test {
 protected:
  GetSeqValuesTest() {
    screen_.onModal["frmGetSequentialValues"] = [this](Form& shown) {
      act(dynamic_cast<frmGetSequentialValues&>(shown));
    };
  }
  static SeqValue line(const char* caption, double value, double min, double max) {
    return {value, caption, true, true, min, max};
  }
  // Enters each of the rounds; cancels behind the last one.
  bool ask(std::deque<Texts> rounds) {
    rounds_ = std::move(rounds);
    bool cancelled = false;
    GetSeqValues("Azimuth Values", owner_, left_, top_, start_, stop_, step_, cancelled);
    return !cancelled;
  }
  std::vector<double> values() const {
    return {start_.Value.asNumber(), stop_.Value.asNumber(), step_.Value.asNumber()};
  }
  std::vector<std::string> told() const {
    std::vector<std::string> texts;
    for (const auto& shown : screen_.shown()) texts.push_back(shown.message.title + ": " + shown.message.text);
    return texts;
  }

  TempSuite suite_;
  ScriptedDesktop screen_;
  DesktopInUse inUse_{screen_};
  SeqValue start_ = line("Start", 0, 0, 360);
  SeqValue stop_ = line("Stop", 360, 0, 360);
  SeqValue step_ = line("Step", 1, 1, 360);
  const Form* owner_ = nullptr;
  std::int16_t left_ = 600, top_ = 400;
  std::vector<Texts> seen_, captions_;
  Rectangle place_;

 private:
  void act(frmGetSequentialValues& form) {
    EXPECT_EQ(form.activeWidget(), &form.Text1[0]);
    EXPECT_EQ(form.caption(), "Azimuth Values");
    place_ = form.geometry();
    seen_.push_back({form.Text1[0].text(), form.Text1[1].text(), form.Text1[2].text()});
    captions_.push_back({form.Label1[0].caption(), form.Label1[1].caption(), form.Label1[2].caption()});
    if (rounds_.empty()) return form.Command1[frmGetSequentialValues::cancelling].userClick();
    for (std::size_t i = 0; i < 3; ++i) form.Text1[i].userType(rounds_.front()[i]);
    rounds_.pop_front();
    form.Command1[frmGetSequentialValues::continuing].userClick();
  }
  std::deque<Texts> rounds_;
};

TEST_F(GetSeqValuesTest, ShowsTheThreeValuesWithTheirCaptionsAndStoresWhatIsEntered) {
  start_.Caption = "Start of the whole sequence";
  EXPECT_TRUE(ask({{"10", "350.5", "20"}}));
  EXPECT_THAT(seen_, ElementsAre(Texts{"0", "360", "1"}));
  EXPECT_THAT(captions_, ElementsAre(Texts{"Start of the whole s", "Stop", "Step"}));
  EXPECT_THAT(values(), ElementsAre(10, 350.5, 20));
  EXPECT_THAT(told(), IsEmpty());
}

TEST_F(GetSeqValuesTest, CancelLeavesTheValues) {
  EXPECT_FALSE(ask({}));
  EXPECT_THAT(values(), ElementsAre(0, 360, 1));
}

TEST_F(GetSeqValuesTest, ClosingTheWindowCancels) {
  screen_.onModal["frmGetSequentialValues"] = [](Form&) {};
  EXPECT_FALSE(ask({{"1", "2", "3"}}));
}

TEST_F(GetSeqValuesTest, CancelBehindAFailureCancels) {
  EXPECT_FALSE(ask({{"0", "400", "1"}}));
  EXPECT_THAT(values(), ElementsAre(0, 360, 1));
}

struct Refusal {
  Texts entered;
  const char* text;
};

TEST_F(GetSeqValuesTest, EachFailureTellsItsTextAndStartsAnotherRound) {
  const Refusal refusals[] = {
      {{"-1", "-1", "0"}, "Start must be at least 0"},
      {{"361", "-1", "0"}, "Start cannot exceed 360"},
      {{"0", "-1", "0"}, "Stop must be at least 0"},
      {{"0", "360.5", "0"}, "Stop cannot exceed 360"},
      {{"20", "10", "0"}, "Step must be at least 1"},
      {{"20", "10", "0.5"}, "Step must be at least 1"},
      {{"20", "10", "-10"}, "Step must be at least 1"},
      {{"20", "10", "361"}, "Step cannot exceed 360"},
      {{"20", "10", "1"}, "With positive STEP value, the STOP value cannot be less than the START value."},
      {{"", "", ""}, "Step must be at least 1"},
  };
  for (const Refusal& refusal : refusals) {
    const std::size_t before = told().size();
    seen_.clear();
    EXPECT_TRUE(ask({refusal.entered, {"0", "360", "1"}}));
    ASSERT_EQ(told().size(), before + 1) << refusal.text;
    EXPECT_EQ(told().back(), "Azimuth Values: " + std::string(refusal.text));
    EXPECT_THAT(seen_, ElementsAre(Texts{"0", "360", "1"}, Texts{"0", "360", "1"}));
  }
}

TEST_F(GetSeqValuesTest, TheLimitsThemselvesAreLegal) {
  EXPECT_TRUE(ask({{"0", "0", "1"}}));
  EXPECT_TRUE(ask({{"360", "360", "360"}}));
  EXPECT_THAT(told(), IsEmpty());
}

TEST_F(GetSeqValuesTest, AStepOfZeroIsNamedWhereNoMinimumForbidsIt) {
  step_.HasMin = false;
  EXPECT_TRUE(ask({{"20", "10", "0"}, {"0", "10", "0"}, {"20", "10", "-5"}}));
  EXPECT_THAT(told(), ElementsAre("Azimuth Values: STEP cannot be zero.", "Azimuth Values: STEP cannot be zero."));
  EXPECT_THAT(values(), ElementsAre(20, 10, -5));
}

TEST_F(GetSeqValuesTest, ALimitThatIsNotInForceIsNone) {
  start_.HasMin = stop_.HasMax = step_.HasMax = false;
  EXPECT_TRUE(ask({{"-40", "5000", "1000"}}));
  EXPECT_THAT(values(), ElementsAre(-40, 5000, 1000));
}

TEST_F(GetSeqValuesTest, StandsWhereItIsToldTo) {
  ask({});
  EXPECT_EQ(place_.left, 600);
  EXPECT_EQ(place_.top, 400);
}

TEST_F(GetSeqValuesTest, APlaceBelowZeroMeansTheMiddleOfTheOwner) {
  Form owner("owner");
  owner.setGeometry({1000, 2000, 5000, 3000});
  owner_ = &owner;
  for (const auto& [left, top] : {std::pair{-1, 400}, std::pair{600, -1}}) {
    left_ = static_cast<std::int16_t>(left);
    top_ = static_cast<std::int16_t>(top);
    ask({});
    EXPECT_EQ(place_.left, 3500 - place_.width / 2);
    EXPECT_EQ(place_.top, 3500 - place_.height / 2);
  }
}

TEST_F(GetSeqValuesTest, WithoutAnOwnerItMeansTheMiddleOfTheScreen) {
  left_ = -1;
  ask({});
  const Rectangle screen = screen_.screens.screen();
  const double across = screen_.screens.twipsPerPixelX(), down = screen_.screens.twipsPerPixelY();
  EXPECT_EQ(place_.left, static_cast<int>(screen.width * across) / 2);
  EXPECT_EQ(place_.top, static_cast<int>(screen.height * down) / 2);
}

TEST_F(GetSeqValuesTest, TheBoxesTakeNumbersOnly) {
  frmGetSequentialValues form("Elevation Values");
  for (TextBox& box : form.Text1) {
    box.userType("-1x2+.5,e ");
    EXPECT_EQ(box.text(), "-12.5");
  }
}

TEST_F(GetSeqValuesTest, EnterGoesToTheNextBoxAndPressesContinueInTheLast) {
  frmGetSequentialValues form("Elevation Values");
  form.begin(nullptr, 0, 0);
  form.setVisible(true);
  EXPECT_FALSE(form.Text1[0].userKey(13));
  EXPECT_EQ(form.activeWidget(), &form.Text1[1]);
  form.Text1[1].userKey(13);
  EXPECT_EQ(form.activeWidget(), &form.Text1[2]);
  EXPECT_TRUE(form.visible());
  EXPECT_TRUE(form.cancelled());
  form.Text1[2].userKey(13);
  EXPECT_FALSE(form.visible());
  EXPECT_FALSE(form.cancelled());
}

TEST_F(GetSeqValuesTest, ABoxThatIsEnteredHasItsTextMarked) {
  frmGetSequentialValues form("Elevation Values");
  for (TextBox& box : form.Text1) {
    int marked = 0;
    box.selectAll.listen([&marked] { ++marked; });
    box.userFocus();
    EXPECT_EQ(marked, 1);
  }
}

}  // namespace
}  // namespace vantrelix::test
