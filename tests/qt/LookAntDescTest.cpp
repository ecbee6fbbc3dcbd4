// The antenna description control and the empty control in their windows, and the menu of the gain box.
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include "controls/LibraryUser.h"
#include "controls/LookAntFixture.h"
#include "qt/AntPreview.h"
#include "qt/LookAnt.h"
#include "qt/LookAntDesc.h"
#include "qt/twips.h"

namespace vantrelix::qt {
namespace {

template <class Kind>
class ControlInWindow : public test::LookAntLibraryTest {
 protected:
  ControlInWindow() {
    addPanel();
    look_ = std::make_unique<Kind>();
    look_->show();
    look_->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(look_.get()));
  }
  QLineEdit& box(const char* name) { return *look_->template findChild<QLineEdit*>(name); }
  QPushButton& button(const char* name) { return *look_->template findChild<QPushButton*>(name); }

  std::unique_ptr<Kind> look_;
};

using LookAntDescView = ControlInWindow<LookAntDesc>;

TEST_F(LookAntDescView, ATypedDescriptionReachesTheControl) {
  box("txtDesc").setFocus(Qt::TabFocusReason);
  QTest::keyClicks(&box("txtDesc"), "Whip");
  EXPECT_EQ(look_->sValueDesc(), "Whip");
  EXPECT_TRUE(look_->control().bDirty());
  QTest::keyClick(&box("txtDesc"), Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "cmdClear");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "cmdLook");
}

TEST_F(LookAntDescView, TheButtonsAreToldBySignals) {
  QSignalSpy changes(look_.get(), &LookAntDesc::ChangeAntenna);
  QSignalSpy alerts(look_.get(), &LookAntDesc::NewAlert);
  test::LibraryUser::takes(screen, 0);
  QTest::mouseClick(&button("cmdLook"), Qt::LeftButton);
  EXPECT_EQ(look_->property("sValueFile"), "AMST0001");
  EXPECT_EQ(look_->property("sValueID"), "T00010000001");
  EXPECT_EQ(box("txtDesc").text(), "PANEL");
  EXPECT_EQ(changes.count(), 1);
  screen.answers = {MsgAnswer::ok};
  QTest::mouseClick(&button("cmdClear"), Qt::LeftButton);
  EXPECT_EQ(box("txtDesc").text(), "");
  EXPECT_EQ(changes.count(), 2);
  look_->Alerts("a");
  EXPECT_EQ(alerts.count(), 1);
}

TEST_F(LookAntDescView, ItsMembersAreThoseOfTheControl) {
  look_->setProperty("Enabled", false);
  EXPECT_FALSE(look_->control().Enabled() || box("txtDesc").isEnabled() || button("cmdLook").isEnabled());
  look_->setProperty("Enabled", true);
  EXPECT_TRUE(box("txtDesc").isEnabled());
  look_->sToolTipText("Receive antenna");
  EXPECT_EQ(box("txtDesc").toolTip(), "Receive antenna");
  look_->LookupOnly(true);
  EXPECT_TRUE(box("txtDesc").isReadOnly());
  look_->sValueDesc("x");
  look_->Clear();
  EXPECT_EQ(look_->sValueDesc(), "");
  test::EditorOpened editor;
  editor.watch(screen);
  look_->sValueFreq(460);
  look_->AntFormMode(eLookup);
  QTest::mouseClick(&button("cmdLook"), Qt::LeftButton);
  EXPECT_EQ(editor.mode + editor.freq, "LOOKUP460");
}

TEST_F(LookAntDescView, TheDescriptionTakesTheWidthThatTheHostGives) {
  const int before = box("txtDesc").width();
  look_->resize(look_->width() + 200, look_->height());
  EXPECT_EQ(box("txtDesc").width(), before + 200);
  EXPECT_LT(button("cmdLook").geometry().right(), look_->width());
}

TEST(AntPreviewWidget, IsAPlaceWithoutAnything) {
  AntPreview place;
  EXPECT_TRUE(place.findChildren<QLineEdit*>().isEmpty());
  EXPECT_EQ(place.sizeHint().height(), pixelsOf(place.control().height(), place.logicalDpiY()));
}

// --- The menu of the gain box.

// Sees where the keyboard is when a menu comes up.
class FocusAtMenu : public ScriptedDesktop {
 public:
  void popupMenu(Menu&, const Widget*) override { focus = QApplication::focusWidget(); }

  QWidget* focus = nullptr;
};

class GainMenuView : public ControlInWindow<LookAnt> {
 protected:
  // A click as a platform gives it that asks for the menu on the press.
  void rightClick() {
    const QPoint at = box("txtGain").rect().center();
    QTest::mousePress(&box("txtGain"), Qt::RightButton, {}, at);
    QContextMenuEvent asked(QContextMenuEvent::Mouse, at, box("txtGain").mapToGlobal(at));
    QApplication::sendEvent(&box("txtGain"), &asked);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    QTest::mouseRelease(&box("txtGain"), Qt::RightButton, {}, at);
  }
};

TEST_F(GainMenuView, ComesUpInPlaceOfTheBoxesOwn) {
  rightClick();
  EXPECT_EQ(screen.menusShown(), std::vector<Menu*>{&look_->control().mnuPopup});
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  EXPECT_TRUE(box("txtGain").isEnabled());
}

TEST_F(GainMenuView, LeavesTheKeyboardInTheBox) {
  box("txtGain").setFocus(Qt::TabFocusReason);
  FocusAtMenu seeing;
  const DesktopInUse seen(seeing);
  rightClick();
  EXPECT_EQ(seeing.focus, &box("txtGain"));
  EXPECT_EQ(QApplication::focusWidget(), &box("txtGain"));
}

TEST_F(GainMenuView, LeavesTheKeyboardWhereTheHostPutItMeanwhile) {
  box("txtGain").setFocus(Qt::TabFocusReason);
  QTest::keyClicks(&box("txtGain"), "1");
  QObject::connect(look_.get(), &LookAnt::ChangeAntenna,
                   [this] { QTimer::singleShot(0, [this] { box("txtOrient").setFocus(Qt::OtherFocusReason); }); });
  screen.onTurn = [] { QCoreApplication::processEvents(); };
  rightClick();
  EXPECT_EQ(QApplication::focusWidget(), &box("txtOrient"));
}

TEST_F(GainMenuView, ABoxThatTheHostOpensAgainDoesNotTakeTheKeyboard) {
  TextBox& gain = look_->control().txtGain;
  for (const char* from : {"txtOrient", "txtGain"}) {
    gain.setEnabled(true);
    box(from).setFocus(Qt::TabFocusReason);
    gain.setEnabled(false);
    gain.setEnabled(true);
    EXPECT_NE(QApplication::focusWidget(), &box("txtGain")) << from;
  }
}

TEST_F(GainMenuView, LeavesTheBoxItsOwnWhileTheControlIsLocked) {
  look_->Locked(true);
  rightClick();
  EXPECT_TRUE(screen.menusShown().empty());
  ASSERT_NE(qobject_cast<QMenu*>(QApplication::activePopupWidget()), nullptr);
  QApplication::activePopupWidget()->close();
}

TEST_F(GainMenuView, TheKeyboardsMenuStaysTheBoxesOwn) {
  QContextMenuEvent asked(QContextMenuEvent::Keyboard, {5, 5}, box("txtGain").mapToGlobal(QPoint(5, 5)));
  QApplication::sendEvent(&box("txtGain"), &asked);
  ASSERT_NE(qobject_cast<QMenu*>(QApplication::activePopupWidget()), nullptr);
  QApplication::activePopupWidget()->close();
  EXPECT_TRUE(screen.menusShown().empty());
}

TEST_F(GainMenuView, AntFormModeIsAMemberOfTheWidget) {
  test::EditorOpened editor;
  editor.watch(screen);
  look_->AntFormMode(eLookup);
  QTest::mouseClick(&button("cmdLook"), Qt::LeftButton);
  EXPECT_EQ(editor.mode, "LOOKUP");
}

}  // namespace
}  // namespace vantrelix::qt
