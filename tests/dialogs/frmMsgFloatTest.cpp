#include <gtest/gtest.h>
#include <memory>

#include "dialogs/frmMsgFloat.h"
#include "ui/ScriptedDesktop.h"

namespace vantrelix {
namespace {

class frmMsgFloatTest : public testing::Test {
 protected:
  ScriptedDesktop screen;
  DesktopInUse use{screen};
};

TEST_F(frmMsgFloatTest, IsShownWithItsTextAndCaptionWhileWorkGoesOn) {
  frmMsgFloat note;
  EXPECT_FALSE(note.visible());
  note.show("Library\r\nOpening Antenna Database Files", "Antenna Editor");
  EXPECT_TRUE(note.visible());
  EXPECT_EQ(note.caption(), "Antenna Editor");
  EXPECT_EQ(note.Label1.caption(), "Library\r\nOpening Antenna Database Files");
  EXPECT_EQ(screen.formsShown(), std::vector<std::string>{"frmMsgFloat (modeless)"});
}

TEST_F(frmMsgFloatTest, NeverTakesTheKeyboard) {
  class Watching : public ScriptedDesktop {
   public:
    void showModeless(Form& form, Activation activation) override {
      takes = activation == Activation::take;
      ScriptedDesktop::showModeless(form, activation);
    }
    bool takes = true;
  } watching;
  const DesktopInUse inUse(watching);
  frmMsgFloat note;
  note.show("text", "caption");
  EXPECT_FALSE(watching.takes);
  EXPECT_EQ(note.activeWidget(), nullptr);
}

TEST_F(frmMsgFloatTest, TheTimerGrowsTheTextWhileItRuns) {
  frmMsgFloat note;
  note.show("Working", "caption");
  EXPECT_TRUE(note.Timer1.running());
  note.Timer1.userTick();
  note.Timer1.userTick();
  EXPECT_EQ(note.Label1.caption(), "Working . .");
  note.Timer1.setEnabled(false);
  note.Timer1.userTick();
  EXPECT_EQ(note.Label1.caption(), "Working . .");
}

TEST_F(frmMsgFloatTest, ANoteThatIsShownTakesANewText) {
  frmMsgFloat note;
  note.show("first", "a");
  note.Timer1.userTick();
  note.show("second", "b");
  EXPECT_EQ(note.Label1.caption(), "second");
  EXPECT_EQ(note.caption(), "b");
  EXPECT_EQ(screen.formsShown().size(), 1U);
}

TEST_F(frmMsgFloatTest, OnlyItsOwnerClosesIt) {
  frmMsgFloat note;
  note.show("text", "caption");
  note.userClose();
  EXPECT_TRUE(note.visible());
  note.unload();
  EXPECT_FALSE(note.visible());
  note.show("again", "caption");
  EXPECT_TRUE(note.visible());
  EXPECT_EQ(screen.formsShown().size(), 2U);
}

}  // namespace
}  // namespace vantrelix
