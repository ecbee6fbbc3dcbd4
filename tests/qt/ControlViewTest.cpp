#include <gtest/gtest.h>

#include <QLineEdit>
#include <QTest>

#include "controls/scLookAnt.h"
#include "qt/ControlView.h"
#include "support/TempSuite.h"

namespace vantrelix::qt {
namespace {

TEST(ControlView, OutlivesItsControl) {
  const test::TempSuite suite;
  auto control = std::make_unique<scLookAnt>();
  ControlView view(*control);
  view.show();
  auto* gain = view.findChild<QLineEdit*>("txtGain");
  gain->setFocus();
  control.reset();
  EXPECT_FALSE(view.isEnabled());
  QTest::keyClicks(gain, "1");
  QTest::mouseClick(view.findChild<QWidget*>("lblPreview"), Qt::LeftButton);
  view.resize(view.width() + 40, view.height());
  EXPECT_EQ(gain->text(), "");
}

// The host drops the control in the middle of what its user does.
TEST(ControlView, OutlivesAControlThatEndsInItsOwnEvent) {
  for (const char* name : {"chkInvert", "cboPol", "lblPreview", "cmdClear"}) {
    const test::TempSuite suite;
    auto control = std::make_unique<scLookAnt>();
    ControlView view(*control);
    view.show();
    const auto drop = [&control] { control.reset(); };
    control->ChangeMounting.listen(drop);
    control->ChangeSize.listen(drop);
    control->cmdClear.click.listen(drop);
    auto* widget = view.findChild<QWidget*>(name);
    QTest::mouseClick(widget, Qt::LeftButton);
    QTest::keyClick(widget, Qt::Key_Down);
    EXPECT_EQ(control, nullptr) << name;
    EXPECT_FALSE(view.isEnabled()) << name;
  }
}

TEST(ControlView, LeavesItsControlAliveAndAtWork) {
  const test::TempSuite suite;
  scLookAnt control;
  {
    const ControlView view(control);
    control.sValueDesc("Dish");
  }
  control.sValueDesc("Panel");
  control.SeePreview(false);
  EXPECT_EQ(control.sValueDesc(), "Panel");
}

TEST(ControlView, ShowsWhatTheProgramSets) {
  const test::TempSuite suite;
  scLookAnt control;
  ControlView view(control);
  auto* desc = view.findChild<QLineEdit*>("txtDesc");
  control.sValueDesc("Grid dish");
  control.txtDesc.setEnabled(false);
  control.txtDesc.setVisible(false);
  EXPECT_EQ(desc->text(), "Grid dish");
  EXPECT_FALSE(desc->isEnabled());
  EXPECT_TRUE(desc->isHidden());
}

}  // namespace
}  // namespace vantrelix::qt
