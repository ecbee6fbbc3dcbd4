#include <gtest/gtest.h>
#include <memory>

#include "ui/Form.h"
#include "ui/widgets.h"

namespace vantrelix {
namespace {

// A dialog whose buttons hide it.
class Dialog : public Form {
 public:
  Dialog() : Form("dialog") {
    add(ok);
    add(cancel);
    setDefaultButton(&ok);
    setCancelButton(&cancel);
    cancel.click.listen([this] { ++cancelled; });
  }
  CommandButton ok{"ok"};
  CommandButton cancel{"cancel"};
  int cancelled = 0;
};

TEST(Form, ComesUpHiddenWithoutAPlace) {
  const Dialog form;
  EXPECT_FALSE(form.visible());
  EXPECT_FALSE(form.placed());
  EXPECT_EQ(form.windowState(), Form::WindowState::normal);
  EXPECT_EQ(form.activeWidget(), nullptr);
}

TEST(Form, MovingItKeepsItsSizeAndMarksItPlaced) {
  Dialog form;
  form.setSize(3000, 2000);
  EXPECT_FALSE(form.placed());
  form.moveTo(-150, 300);
  EXPECT_TRUE(form.placed());
  EXPECT_EQ(form.geometry(), (Rectangle{-150, 300, 3000, 2000}));
}

TEST(Form, AMoveToTheStartIsAPlaceToo) {
  Dialog form;
  form.moveTo(0, 0);
  EXPECT_TRUE(form.placed());
}

TEST(Form, SaysWhenAnythingThatIsShownOfItChanges) {
  Dialog form;
  int changes = 0;
  form.changed.listen([&changes] { ++changes; });
  form.setCaption("title");
  form.setCaption("title");
  EXPECT_EQ(changes, 1);
  form.setWindowState(Form::WindowState::maximised);
  form.setFocus(form.ok);
  form.setDefaultButton(nullptr);
  form.setCancelButton(nullptr);
  EXPECT_EQ(changes, 5);
  EXPECT_EQ(form.activeWidget(), &form.ok);
  form.setVisible(true);
  form.hide();
  EXPECT_EQ(changes, 7);
}

TEST(Form, ClosingByTheFramePressesCancelAndHides) {
  Dialog form;
  form.setVisible(true);
  form.userClose();
  EXPECT_EQ(form.cancelled, 1);
  EXPECT_FALSE(form.visible());
}

TEST(Form, ACancelButtonThatCannotBePressedIsPassedOver) {
  Dialog form;
  for (const bool visible : {true, false}) {
    form.cancel.setVisible(visible);
    form.cancel.setEnabled(!visible);
    form.setVisible(true);
    form.userClose();
    EXPECT_FALSE(form.visible());
  }
  EXPECT_EQ(form.cancelled, 0);
}

TEST(Form, WithoutACancelButtonTheFrameHidesIt) {
  Dialog form;
  form.setCancelButton(nullptr);
  form.setVisible(true);
  form.userClose();
  EXPECT_FALSE(form.visible());
  EXPECT_EQ(form.cancelled, 0);
}

TEST(Form, MayEndInItsOwnCancel) {
  auto form = std::make_unique<Dialog>();
  form->cancel.click.listen([&form] { form.reset(); });
  form->setVisible(true);
  form->userClose();
  EXPECT_EQ(form, nullptr);
}

TEST(Form, AFormMayRefuseToBeClosed) {
  class Stubborn : public Form {
   public:
    Stubborn() : Form("stubborn") {}
    void queryUnload() override {}
  } form;
  form.setVisible(true);
  form.userClose();
  EXPECT_TRUE(form.visible());
}

}  // namespace
}  // namespace vantrelix
