#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "qt/LookAnt.h"
#include "qt/qtText.h"
#include "support/TempSuite.h"
#include "tables/installSuite.h"
#include "ui/ScriptedDesktop.h"

namespace vantrelix::qt {
namespace {

class LookAntView : public testing::Test {
 protected:
  LookAntView() {
    installSuite(suite_.path());
    look_ = std::make_unique<LookAnt>();
    look_->control().ZORUserLogin("");
    look_->show();
    look_->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(look_.get()));
  }

  QLineEdit& box(const char* name) { return *look_->findChild<QLineEdit*>(name); }
  QComboBox& list(const char* name) { return *look_->findChild<QComboBox*>(name); }
  void enter(const char* name) { box(name).setFocus(Qt::TabFocusReason); }
  void choose(const char* name, int index) {
    list(name).setFocus(Qt::TabFocusReason);
    QTest::keyClick(&list(name), Qt::Key_Home);
    for (int i = 0; i < index; ++i) QTest::keyClick(&list(name), Qt::Key_Down);
  }

  test::TempSuite suite_;
  ScriptedDesktop desktop_;
  DesktopInUse inUse_{desktop_};
  std::unique_ptr<LookAnt> look_;
};

TEST_F(LookAntView, ATypedGainPassesTheKeyFilterAndIsReformattedOnLeaving) {
  QSignalSpy changes(look_.get(), &LookAnt::ChangeAntenna);
  enter("txtGain");
  QTest::keyClicks(&box("txtGain"), "1x2.a5N");
  EXPECT_EQ(box("txtGain").text(), "12.5");
  EXPECT_EQ(look_->sValueGain(), "12.5");
  enter("txtOrient");
  EXPECT_EQ(box("txtGain").text(), "12.50");
  EXPECT_EQ(changes.count(), 1);
}

TEST_F(LookAntView, ARefusedKeyLeavesTheSelectedTextAlone) {
  look_->sValueOrient("120");
  enter("txtOrient");
  EXPECT_EQ(box("txtOrient").selectedText(), "120");
  QTest::keyClicks(&box("txtOrient"), "x");
  EXPECT_EQ(box("txtOrient").selectedText(), "120");
  QTest::keyClicks(&box("txtOrient"), "7");
  EXPECT_EQ(look_->sValueOrient(), "7");
}

TEST_F(LookAntView, APastedTextIsFilteredCharacterByCharacter) {
  QApplication::clipboard()->setText("4a5\n.2 deg");
  enter("txtOrient");
  QTest::keyClick(&box("txtOrient"), Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(box("txtOrient").text(), "45.2");
  EXPECT_EQ(look_->sValueOrient(), "45.2");
  EXPECT_EQ(box("txtOrient").cursorPosition(), 4);
}

TEST_F(LookAntView, APasteOfWhichNothingPassesKeepsWhatWasSelected) {
  look_->sValueOrient("120");
  QApplication::clipboard()->setText("north");
  enter("txtOrient");
  box("txtOrient").paste();
  EXPECT_EQ(box("txtOrient").text(), "120");
  EXPECT_EQ(look_->sValueOrient(), "120");
}

TEST_F(LookAntView, ACutAndItsUndoReachTheModel) {
  look_->control().txtDesc.setText("Sector panel");
  enter("txtDesc");
  box("txtDesc").setSelection(6, 6);
  QTest::keyClick(&box("txtDesc"), Qt::Key_X, Qt::ControlModifier);
  EXPECT_EQ(look_->control().txtDesc.text(), "Sector");
  QTest::keyClick(&box("txtDesc"), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(look_->control().txtDesc.text(), "Sector panel");
}

TEST_F(LookAntView, ATextThatTheModelSetsWhileTheUserTypesIsShownAndEndsThere) {
  TextBox& model = look_->control().txtDesc;
  model.change.listen([&model] {
    if (model.text() == "ab") model.setText("AB!");
  });
  enter("txtDesc");
  QTest::keyClicks(&box("txtDesc"), "ab");
  EXPECT_EQ(box("txtDesc").text(), "AB!");
  EXPECT_EQ(model.text(), "AB!");
}

TEST_F(LookAntView, AnotherUnitConvertsTheGain) {
  enter("txtGain");
  QTest::keyClicks(&box("txtGain"), "10");
  choose("cboUnit", 1);
  EXPECT_EQ(look_->sValueUnit(), "dBi");
  EXPECT_EQ(box("txtGain").text(), "12.15");
}

TEST_F(LookAntView, LockedBoxesAreReadOnlyAndLockedListsKeepTheirEntry) {
  look_->sValuePol("Vertical");
  look_->setProperty("Locked", true);
  enter("txtDesc");
  QTest::keyClicks(&box("txtDesc"), "new");
  choose("cboPol", 1);
  EXPECT_TRUE(box("txtDesc").isReadOnly());
  EXPECT_EQ(box("txtDesc").text(), "");
  EXPECT_EQ(list("cboPol").currentText(), "Vertical");
  EXPECT_EQ(look_->sValuePol(), "Vertical");
  EXPECT_FALSE(look_->findChild<QCheckBox*>("chkInvert")->isEnabled());
}

TEST_F(LookAntView, ClearAsksAndObeysTheAnswer) {
  look_->sValueDesc("Panel");
  desktop_.answers = {MsgAnswer::cancel, MsgAnswer::ok};
  auto* clear = look_->findChild<QPushButton*>("cmdClear");
  QTest::mouseClick(clear, Qt::LeftButton);
  EXPECT_EQ(box("txtDesc").text(), "Panel");
  QTest::mouseClick(clear, Qt::LeftButton);
  EXPECT_EQ(box("txtDesc").text(), "");
  EXPECT_FALSE(box("txtOrient").isEnabled());
  ASSERT_EQ(desktop_.shown().size(), 2U);
  EXPECT_EQ(desktop_.shown()[0].message.title, "Remove Pattern");
}

TEST_F(LookAntView, ThePreviewLabelWorksByMouseAndKeyAndTheHeightFollows) {
  QSignalSpy sizes(look_.get(), &LookAnt::ChangeSize);
  auto* label = look_->findChild<QLabel*>("lblPreview");
  const int tall = look_->sizeHint().height();
  QTest::mouseClick(label, Qt::LeftButton);
  const int low = look_->sizeHint().height();
  EXPECT_LT(low, tall);
  EXPECT_EQ(label->text(), "Show preview");
  label->setFocus(Qt::TabFocusReason);
  QTest::keyClick(label, Qt::Key_Space);
  EXPECT_EQ(look_->sizeHint().height(), tall);
  EXPECT_EQ(sizes.count(), 2);
}

TEST_F(LookAntView, TheWidthOfTheWidgetIsTheControls) {
  const int least = look_->minimumSizeHint().width();
  look_->resize(least + 150, look_->height());
  EXPECT_EQ(look_->control().width(), (least + 150) * 1440 / look_->logicalDpiX());
  const auto& desc = look_->control().txtDesc.geometry();
  EXPECT_EQ(box("txtDesc").geometry().right() + 1, desc.right() * look_->logicalDpiX() / 1440);
}

TEST_F(LookAntView, TabRunsThroughTheValuesInTheControlsOrder) {
  const QStringList order = {"txtDesc",  "txtGain",  "cboUnit",   "cmdClear", "txtOrient", "txtETilt",
                             "txtMTilt", "txtMAzim", "chkInvert", "cboPol",   "lblPreview"};
  enter("txtDesc");
  for (const QString& name : order) {
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), name);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  }
}

TEST_F(LookAntView, ToolTipsAreTheModels) {
  EXPECT_EQ(box("txtETilt").toolTip(), "Electrical tilt (- for down)");
  EXPECT_EQ(list("cboUnit").toolTip(), "Gain Units");
  EXPECT_EQ(look_->findChild<QWidget*>("picHor")->toolTip(), "Azimuth pattern preview");
}

TEST_F(LookAntView, ThePreviewIsPaintedInTheColoursOfItsLines) {
  PictureBox& picture = look_->control().picHor;
  picture.setScale({-1, 1, 2, -2});
  picture.drawLine(-1, 0.5, 1, 0.5, color::blue);
  picture.drawLine(-1, -0.5, 1, -0.5, color::red);
  QWidget* view = look_->findChild<QWidget*>("picHor");
  const QImage image = view->grab().toImage();
  const auto bandHas = [&](double share, auto test) {
    const int middle = static_cast<int>(image.height() * share);
    for (int y = middle - 2; y <= middle + 2; ++y) {
      if (test(image.pixelColor(image.width() / 2, y))) return true;
    }
    return false;
  };
  EXPECT_TRUE(bandHas(0.25, [](const QColor& c) { return c.blue() > 200 && c.red() < 150; }));
  EXPECT_TRUE(bandHas(0.75, [](const QColor& c) { return c.red() > 200 && c.blue() < 150; }));
  EXPECT_EQ(image.pixelColor(image.width() / 2, image.height() / 2), QColor(Qt::white));
}

TEST_F(LookAntView, TextStaysReadableOnEveryBackgroundOfADarkDesktop) {
  look_->setPalette(QPalette(QColor(60, 60, 64), QColor(40, 40, 44)));
  const auto readable = [this] {
    const QPalette colours = box("txtDesc").palette();
    return contrast(colours.color(QPalette::Text), colours.color(QPalette::Base)) >= 4.5;
  };
  EXPECT_TRUE(readable());
  look_->BackWhite(true);
  EXPECT_EQ(box("txtDesc").palette().color(QPalette::Base), QColor(Qt::white));
  EXPECT_TRUE(readable());
  look_->BackRed(true);
  EXPECT_EQ(box("txtDesc").palette().color(QPalette::Base), QColor(Qt::red));
  EXPECT_TRUE(readable());
  look_->BackLtGray(true);
  EXPECT_TRUE(readable());
}

}  // namespace
}  // namespace vantrelix::qt
