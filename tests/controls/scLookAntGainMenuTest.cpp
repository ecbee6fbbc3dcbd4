// The menu of the gain box: the look-up once more, and the gain of a dish.
#include <gmock/gmock.h>

#include "controls/LookAntFixture.h"
#include "dialogs/frmParabGain.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* kPanel = "T00010000001";

class GainMenu : public test::LookAntLibraryTest {
 protected:
  GainMenu() { addPanel(); }

  static constexpr int kLeft = 1, kRight = 2, kMiddle = 4;

  void rightClick() { control.txtGain.userMouseUp(kRight, 10, 10); }
  // The user computes with that diameter and unit, and continues.
  void computes(const std::string& diameter, int unit) {
    screen.onModal["frmParabGain"] = [diameter, unit](Form& shown) {
      auto& form = dynamic_cast<frmParabGain&>(shown);
      form.Text1[frmParabGain::diameter].userType(diameter);
      form.Combo1.userSelect(unit);
      form.Command1[frmParabGain::continuing].userClick();
    };
  }
};

constexpr int kFeet = 1, kMetres = 3;

TEST_F(GainMenu, ComesUpWhereTheRightButtonIsLetGo) {
  for (const int button : {kLeft, kMiddle}) control.txtGain.userMouseUp(button, 10, 10);
  EXPECT_THAT(screen.menusShown(), IsEmpty());
  rightClick();
  ASSERT_THAT(screen.menusShown(), ElementsAre(&control.mnuPopup));
  EXPECT_EQ(screen.menuPlaces().front(), nullptr);
  EXPECT_THAT(control.mnuPopup.items(), ElementsAre(&control.mnuPopupLibrary, &control.mnuPopupParabolic));
  EXPECT_EQ(control.mnuPopupParabolic.caption(), "Compute Parabolic Gain");
}

TEST_F(GainMenu, DisablesTheBoxForATurnAndThenShowsTheMenu) {
  std::vector<bool> enabled;
  screen.onTurn = [&] {
    enabled.push_back(control.txtGain.enabled());
    EXPECT_THAT(screen.menusShown(), IsEmpty());
  };
  rightClick();
  EXPECT_THAT(enabled, ElementsAre(false));
  EXPECT_TRUE(control.txtGain.enabled());
  EXPECT_EQ(screen.menusShown().size(), 1U);
}

TEST_F(GainMenu, StaysAwayWhileTheControlIsLocked) {
  control.Locked(true);
  rightClick();
  EXPECT_THAT(screen.menusShown(), IsEmpty());
  EXPECT_EQ(screen.turns(), 0);
  control.Locked(false);
  control.LookupOnly(true);
  rightClick();
  EXPECT_THAT(screen.menusShown(), IsEmpty());
}

TEST_F(GainMenu, OffersTheParabolaFrom900MHz) {
  for (const auto& [megahertz, offered] : {std::pair{899.99, false}, {900.0, true}, {0.0, false}, {6000.0, true}}) {
    control.sValueFreq(megahertz);
    rightClick();
    EXPECT_EQ(control.mnuPopupParabolic.enabled(), offered) << megahertz;
    EXPECT_TRUE(control.mnuPopupLibrary.enabled());
  }
}

TEST_F(GainMenu, TheHostMayDropTheControlInTheTurn) {
  auto dropped = std::make_unique<scLookAnt>();
  screen.onTurn = [&] { dropped.reset(); };
  dropped->txtGain.userMouseUp(kRight, 0, 0);
  EXPECT_FALSE(dropped);
  EXPECT_THAT(screen.menusShown(), IsEmpty());
}

TEST_F(GainMenu, TheParabolaGivesGainUnitAndDescription) {
  control.sValueFreq(1000);
  control.sValueFile("AMST0001");
  control.sValueID(kPanel);
  control.sValueUnit("dBd");
  std::string asked;
  computes("1", kMetres);
  screen.onModal["frmParabGain"] = [&, act = screen.onModal["frmParabGain"]](Form& shown) {
    asked = dynamic_cast<frmParabGain&>(shown).Text1[frmParabGain::frequency].text();
    act(shown);
  };
  control.mnuPopupParabolic.userClick();
  EXPECT_EQ(asked, "1000.00");
  EXPECT_EQ(control.sValueGain() + "|" + control.sValueUnit(), "17.80|dBi");
  EXPECT_EQ(control.sValueDesc(), "1.00m parabola");
  EXPECT_EQ(control.sValueFile() + control.sValueID(), "");
  EXPECT_EQ(heard(), "antenna ");
}

TEST_F(GainMenu, TheParabolaKeepsTheUnitOfItsDiameter) {
  control.sValueFreq(6000);
  computes("10", kFeet);
  control.mnuPopupParabolic.userClick();
  EXPECT_EQ(control.sValueGain() + "|" + control.sValueDesc(), "43.04|10.00ft parabola");
  control.sValueUnit("REL");
  control.mnuPopupParabolic.userClick();
  EXPECT_EQ(control.sValueGain() + "|" + control.sValueUnit(), "43.04|dBi");
  EXPECT_EQ(defaultUnit(), "dBi");
}

TEST_F(GainMenu, TheParabolaLeavesThePreviewsAndOpensTheBoxes) {
  show();
  ASSERT_TRUE(control.txtGain.locked());
  const std::size_t lines = control.picHor.lines().size();
  control.sValueFreq(6000);
  computes("1", kMetres);
  control.mnuPopupParabolic.userClick();
  EXPECT_EQ(control.picHor.lines().size(), lines);
  EXPECT_TRUE(control.bPatAz());
  EXPECT_FALSE(control.txtGain.locked() || control.txtDesc.locked() || control.cboUnit.locked());
  control.GetAntPat();
  EXPECT_TRUE(control.picHor.lines().empty());
}

TEST_F(GainMenu, ACancelledOrFailedParabolaChangesNothing) {
  show();
  control.mnuPopupParabolic.userClick();
  control.sValueFreq(0);
  computes("1", kMetres);
  control.mnuPopupParabolic.userClick();
  screen.onModal["frmParabGain"] = [](Form&) { throw RunTimeFailure(3051, "in use"); };
  EXPECT_NO_THROW(control.mnuPopupParabolic.userClick());
  ASSERT_EQ(screen.shown().size(), 1U);
  EXPECT_THAT(screen.shown()[0].message.text, HasSubstr("Error 3051:  in use"));
  EXPECT_EQ(control.sValueID() + control.sValueGain(), std::string(kPanel) + "12.50");
  EXPECT_TRUE(control.txtGain.locked());
  EXPECT_EQ(heard(), "");
}

TEST_F(GainMenu, TheHostMayDropTheControlWhileItsUserComputes) {
  auto dropped = std::make_unique<scLookAnt>();
  dropped->sValueFreq(6000);
  computes("1", kMetres);
  screen.onModal["frmParabGain"] = [&, act = screen.onModal["frmParabGain"]](Form& shown) {
    act(shown);
    dropped.reset();
  };
  dropped->mnuPopupParabolic.userClick();
  EXPECT_FALSE(dropped);
}

}  // namespace
}  // namespace vantrelix
