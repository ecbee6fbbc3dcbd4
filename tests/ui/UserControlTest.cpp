#include <gtest/gtest.h>

#include "ui/UserControl.h"
#include "ui/widgets.h"

namespace vantrelix {
namespace {

class Control : public UserControl {
 public:
  Control() : UserControl("control") {
    add(first);
    add(second);
  }
  Label first{"first"};
  Label second{"second"};
  int resizes = 0;

 protected:
  void resize() override {
    ++resizes;
    if (width() < 100) setSize(100, height());
  }
};

TEST(UserControl, KeepsItsWidgetsInOrder) {
  Control control;
  ASSERT_EQ(control.widgets().size(), 2u);
  EXPECT_EQ(control.widgets()[0]->name(), "first");
  EXPECT_EQ(control.widgets()[1]->name(), "second");
}

TEST(UserControl, MayCorrectTheSizeThatItIsGivenAndIsAskedOnce) {
  Control control;
  control.setSize(50, 70);
  EXPECT_EQ(control.width(), 100);
  EXPECT_EQ(control.height(), 70);
  EXPECT_EQ(control.resizes, 1);
}

TEST(UserControl, ASizeThatItHasAlreadyIsNoResize) {
  Control control;
  control.setSize(200, 70);
  control.setSize(200, 70);
  EXPECT_EQ(control.resizes, 1);
  control.setSize(200, -5);
  EXPECT_EQ(control.height(), 0);
}

}  // namespace
}  // namespace vantrelix
