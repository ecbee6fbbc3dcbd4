#include <gtest/gtest.h>

#include "ui/ScriptedDesktop.h"
#include "ui/widgets.h"

namespace vantrelix {
namespace {

class Stubborn : public Form {
 public:
  Stubborn() : Form("stubborn") {}
  int asked = 0;

 protected:
  void queryUnload() override { ++asked; }
};

TEST(ScriptedDesktop, AModalFormIsShownActivatedAndLeftToItsUser) {
  ScriptedDesktop screen;
  Form form("frmAny");
  std::string heard;
  form.activated.listen([&] { heard += form.visible() ? "activated;" : "too early;"; });
  screen.onModal["frmAny"] = [&](Form& shown) {
    heard += "user;";
    shown.hide();
  };
  screen.showModal(form);
  EXPECT_EQ(heard, "activated;user;");
  EXPECT_FALSE(form.visible());
  EXPECT_EQ(screen.formsShown(), std::vector<std::string>{"frmAny"});
}

TEST(ScriptedDesktop, AModalFormThatItsUserLeavesOpenIsClosedByItsFrame) {
  ScriptedDesktop screen;
  Form form("frmAny");
  CommandButton cancel("cancel");
  int cancelled = 0;
  cancel.click.listen([&cancelled] { ++cancelled; });
  form.setCancelButton(&cancel);
  screen.showModal(form);
  EXPECT_EQ(cancelled, 1);
  EXPECT_FALSE(form.visible());
}

TEST(ScriptedDesktop, AFormThatRefusesToCloseIsAskedOnceAndDoesNotHangTheRun) {
  ScriptedDesktop screen;
  Stubborn form;
  screen.showModal(form);
  EXPECT_EQ(form.asked, 1);
  EXPECT_FALSE(form.visible());
}

TEST(ScriptedDesktop, AFormMayOpenAnother) {
  ScriptedDesktop screen;
  Form outer("outer"), inner("inner");
  screen.onModal["outer"] = [&](Form&) { screen.showModal(inner); };
  screen.showModal(outer);
  EXPECT_EQ(screen.formsShown(), (std::vector<std::string>{"outer", "inner"}));
}

TEST(ScriptedDesktop, AModelessFormStaysUntilItIsHidden) {
  ScriptedDesktop screen;
  Form form("frmFloat");
  int activations = 0;
  form.activated.listen([&activations] { ++activations; });
  screen.showModeless(form, Desktop::Activation::leave);
  EXPECT_TRUE(form.visible());
  EXPECT_EQ(activations, 1);
  EXPECT_EQ(screen.formsShown(), std::vector<std::string>{"frmFloat (modeless)"});
}

TEST(ScriptedDesktop, AnInputBoxIsAnsweredFromTheScriptThenCancelled) {
  ScriptedDesktop screen;
  screen.inputs = {"first"};
  EXPECT_EQ(screen.inputBox("Name?", "Copy", "old"), "first");
  EXPECT_EQ(screen.inputBox("Name?", "Copy", "old"), "");
  ASSERT_EQ(screen.asked().size(), 2U);
  EXPECT_EQ(screen.asked()[0].prompt, "Name?");
  EXPECT_EQ(screen.asked()[0].title, "Copy");
  EXPECT_EQ(screen.asked()[0].text, "old");
}

TEST(ScriptedMonitors, FindTheScreenThatHoldsMostOfABox) {
  ScriptedMonitors screens;
  screens.monitors = {{{0, 0, 1000, 800}, {0, 0, 1000, 760}}, {{-500, 100, 500, 400}, {-500, 100, 500, 400}}};
  EXPECT_EQ(screens.count(), 2);
  EXPECT_EQ(screens.monitorFromRect({-100, 100, 150, 100}), 2);
  EXPECT_EQ(screens.monitorFromRect({-50, 100, 150, 100}), 1);
  EXPECT_EQ(screens.monitorFromRect({2000, 2000, 10, 10}), 0);
  EXPECT_EQ(screens.desktop(), (Rectangle{-500, 0, 1500, 800}));
  EXPECT_EQ(screens.info(2).bounds, (Rectangle{-500, 100, 500, 400}));
  EXPECT_EQ(screens.info(3).bounds, Rectangle{});
  Form form("form");
  form.setGeometry({-300 * 15, 200 * 15, 1500, 1500});
  EXPECT_EQ(screens.monitorFromWindow(form), 2);
}

}  // namespace
}  // namespace vantrelix
