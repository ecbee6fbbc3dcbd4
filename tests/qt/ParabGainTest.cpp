// The parabolic gain calculator in its window, driven by the keyboard.
#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include "dialogs/getParabolaGain.h"
#include "foundation/getINI.h"
#include "qt/QtDesktop.h"
#include "support/TempSuite.h"

namespace vantrelix::qt {
namespace {

class ParabGain : public testing::Test {
 protected:
  // The dialog at a frequency, on which `user` acts once it has come up.
  template <class User>
  void ask(double freq, User user) {
    bool acted = false;
    QTimer::singleShot(0, [&] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      EXPECT_TRUE(QTest::qWaitForWindowActive(dialog));
      user(*dialog);
      acted = true;
      if (dialog->isVisible()) dialog->close();
    });
    getParabolaGain(freq, gain_, diameter_, unit_, ok_);
    EXPECT_TRUE(acted);
  }
  static QLineEdit& box(const QDialog& dialog, const char* name) { return *dialog.findChild<QLineEdit*>(name); }
  static QString focused() {
    const QWidget* widget = QApplication::focusWidget();
    return widget ? widget->objectName() : QString();
  }
  static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }
  static void type(const char* text) { QTest::keyClicks(QApplication::focusWidget(), text); }
  std::string remembered() const { return getINIStr("HDAntenna", "Parabola", "nothing"); }

  test::TempSuite suite_;
  QtDesktop desktop_;
  DesktopInUse inUse_{desktop_};
  double gain_ = -1, diameter_ = -1;
  std::string unit_;
  std::int16_t ok_ = 1;
};

TEST_F(ParabGain, IsDrivenByTheKeyboardAlone) {
  ask(1000, [](const QDialog& dialog) {
    EXPECT_EQ(focused(), "Text1_1");
    EXPECT_EQ(box(dialog, "Text1_1").selectedText(), "1.00");
    EXPECT_EQ(box(dialog, "Text1_2").text(), "17.80");
    type("1x0");
    EXPECT_EQ(box(dialog, "Text1_1").text(), "10");
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), "Combo1");
    press(Qt::Key_F);
    EXPECT_EQ(box(dialog, "Text1_2").text(), "27.48");
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(focused(), "Text1_0");
    EXPECT_EQ(box(dialog, "Text1_0").selectedText(), "1000.00");
    type("6000");
    EXPECT_EQ(box(dialog, "Text1_2").text(), "43.04");
    press(Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_EQ(ok_, -1);
  EXPECT_DOUBLE_EQ(gain_, 43.04);
  EXPECT_EQ(diameter_, 10);
  EXPECT_EQ(unit_, "ft");
  EXPECT_EQ(remembered(), "10.00|ft");
}

TEST_F(ParabGain, TabRunsThroughItInTheOrderInWhichItIsRead) {
  ask(1000, [](const QDialog& dialog) {
    box(dialog, "Text1_0").setFocus(Qt::TabFocusReason);
    for (const char* name : {"Text1_0", "Text1_1", "Combo1", "Text1_2", "Command1_0", "Command1_1", "Text1_0"}) {
      EXPECT_EQ(focused(), name);
      press(Qt::Key_Tab);
    }
  });
}

TEST_F(ParabGain, EscapeAndTheFrameCancel) {
  ask(6000, [](const QDialog&) {
    type("10");
    press(Qt::Key_Escape);
  });
  EXPECT_EQ(ok_, 0);
  ask(6000, [](QDialog& dialog) {
    type("10");
    dialog.close();
  });
  EXPECT_EQ(ok_, 0);
  EXPECT_EQ(remembered(), "nothing");
}

TEST_F(ParabGain, SpaceOnCancelCancels) {
  ask(6000, [](const QDialog& dialog) {
    dialog.findChild<QPushButton*>("Command1_1")->setFocus(Qt::TabFocusReason);
    press(Qt::Key_Space);
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_EQ(ok_, 0);
}

TEST_F(ParabGain, TheGainCanBeReadAndCopiedButNotTyped) {
  ask(1000, [](const QDialog& dialog) {
    QLineEdit& result = box(dialog, "Text1_2");
    result.setFocus(Qt::TabFocusReason);
    EXPECT_EQ(result.selectedText(), "17.80");
    type("99");
    EXPECT_EQ(result.text(), "17.80");
    EXPECT_TRUE(result.isEnabled());
  });
}

TEST_F(ParabGain, EveryBoxHasItsLabelItsNameAndATipWithItsUnit) {
  ask(1000, [](const QDialog& dialog) {
    const std::tuple<const char*, const char*, const char*, const char*> rows[] = {
        {"Label1_0", "Text1_0", "Frequency (MHz)", "MHz"},
        {"Label1_1", "Text1_1", "Diameter", "unit"},
        {"Label1_2", "Text1_2", "Gain (dBi)", "dBi"}};
    for (const auto& [label, name, text, tip] : rows) {
      const auto* caption = dialog.findChild<QLabel*>(label);
      EXPECT_EQ(caption->buddy(), &box(dialog, name));
      EXPECT_EQ(caption->text(), text);
      EXPECT_EQ(box(dialog, name).accessibleName(), text);
      EXPECT_TRUE(box(dialog, name).toolTip().contains(tip)) << name;
    }
    EXPECT_EQ(dialog.windowTitle(), "Compute Parabolic Gain");
    EXPECT_EQ(dialog.findChild<QComboBox*>("Combo1")->currentText(), "m");
  });
}

TEST_F(ParabGain, ComesBackWhereItWasLeft) {
  QPoint left;
  ask(1000, [&left](QDialog& dialog) {
    dialog.move(dialog.pos() + QPoint(-60, 45));
    left = dialog.pos();
  });
  ask(1000, [&left](const QDialog& dialog) { EXPECT_EQ(dialog.pos(), left); });
}

TEST_F(ParabGain, IsDrawnWhole) {
  ask(1000, [](QDialog& dialog) {
    for (const QWidget* widget : dialog.findChildren<QWidget*>()) {
      if (!widget->isVisible() || widget->parentWidget() == nullptr) continue;
      EXPECT_GE(widget->width(), widget->minimumSizeHint().width()) << widget->objectName().toStdString();
      EXPECT_GE(widget->height(), widget->minimumSizeHint().height()) << widget->objectName().toStdString();
    }
  });
}

TEST_F(ParabGain, TheWheelChangesTheUnitOnlyWhereItHasTheKeyboard) {
  ask(1000, [](const QDialog& dialog) {
    auto* unit = dialog.findChild<QComboBox*>("Combo1");
    const auto turn = [unit] {
      QWheelEvent down(QPointF(5, 5), unit->mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, 120), Qt::NoButton,
                       Qt::NoModifier, Qt::NoScrollPhase, false);
      QApplication::sendEvent(unit, &down);
      return unit->currentText();
    };
    EXPECT_EQ(turn(), "m");
    unit->setFocus();
    EXPECT_EQ(turn(), "in");
  });
}

}  // namespace
}  // namespace vantrelix::qt
