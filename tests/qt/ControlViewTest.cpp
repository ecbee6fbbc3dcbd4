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
