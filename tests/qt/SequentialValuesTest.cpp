// The dialog for a run of values in its window, driven by the keyboard.
#include <functional>
#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "dialogs/frmParabGain.h"
#include "editor/getSeqValues.h"
#include "qt/QtDesktop.h"
#include "support/TempSuite.h"

namespace vantrelix::qt {
namespace {

class SequentialValues : public testing::Test {
 protected:
  // The dialog, on which each of the users acts in his round.
  using User = std::function<void(QDialog&)>;
  bool ask(std::vector<User> users) {
    std::size_t round = 0;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (!dialog || !QTest::qWaitForWindowActive(dialog)) return;
      watch.stop();
      if (dialog->objectName() != "frmGetSequentialValues") {
        told_.push_back(dialog->findChild<QLabel*>("qt_msgbox_label")->text().toStdString());
        watch.start(10);
        return dialog->accept();
      }
      ASSERT_LT(round, users.size());
      watch.start(10);
      users[round++](*dialog);
      if (dialog->isVisible()) dialog->close();
    });
    watch.start(10);
    bool cancelled = false;
    GetSeqValues("Azimuth Values", nullptr, left_, 900, start_, stop_, step_, cancelled);
    EXPECT_EQ(round, users.size());
    return !cancelled;
  }
  static QString focused() {
    const QWidget* widget = QApplication::focusWidget();
    return widget ? widget->objectName() : QString();
  }
  static void press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }
  static void type(const char* text) { QTest::keyClicks(QApplication::focusWidget(), text); }

  test::TempSuite suite_;
  QtDesktop desktop_;
  DesktopInUse inUse_{desktop_};
  std::int16_t left_ = 1200;
  SeqValue start_{0, "Start", true, true, 0, 360};
  SeqValue stop_{360, "Stop", true, true, 0, 360};
  SeqValue step_{1, "Step", true, true, 1, 360};
  std::vector<std::string> told_;
};

TEST_F(SequentialValues, EnterGoesFromBoxToBoxAndThenContinues) {
  EXPECT_TRUE(ask({[](QDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Azimuth Values");
    EXPECT_EQ(focused(), "Text1_0");
    type("10");
    press(Qt::Key_Return);
    EXPECT_EQ(focused(), "Text1_1");
    type("5x0");
    press(Qt::Key_Enter);
    EXPECT_EQ(focused(), "Text1_2");
    type("20");
    EXPECT_TRUE(dialog.isVisible());
    press(Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
  }}));
  EXPECT_EQ(start_.Value, Value(10));
  EXPECT_EQ(stop_.Value, Value(50));
  EXPECT_EQ(step_.Value, Value(20));
}

TEST_F(SequentialValues, EnterOnAButtonPressesThatButton) {
  EXPECT_FALSE(ask({[](QDialog& dialog) {
    dialog.findChild<QPushButton*>("Command1_1")->setFocus(Qt::TabFocusReason);
    press(Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
  }}));
  EXPECT_TRUE(ask({[](QDialog& dialog) {
    dialog.findChild<QPushButton*>("Command1_0")->setFocus(Qt::TabFocusReason);
    press(Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
  }}));
}

TEST_F(SequentialValues, ANewRoundBeginsInTheFirstBoxWithAllOfItMarked) {
  EXPECT_TRUE(ask({[](QDialog&) {
                     press(Qt::Key_Return);
                     type("400");
                     press(Qt::Key_Return);
                     press(Qt::Key_Return);
                   },
                   [](const QDialog& dialog) {
                     EXPECT_EQ(focused(), "Text1_0");
                     EXPECT_EQ(dialog.findChild<QLineEdit*>("Text1_0")->selectedText(), "0");
                     for (int i = 0; i < 3; ++i) press(Qt::Key_Return);
                   }}));
  EXPECT_EQ(told_, std::vector<std::string>{"Stop cannot exceed 360"});
  EXPECT_EQ(stop_.Value, Value(360));
}

TEST_F(SequentialValues, EscapeAndTheFrameCancel) {
  EXPECT_FALSE(ask({[](QDialog& dialog) {
    press(Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
  }}));
  EXPECT_FALSE(ask({[](QDialog& dialog) { dialog.close(); }}));
}

TEST_F(SequentialValues, TabRunsThroughItInTheOrderInWhichItIsRead) {
  ask({[](const QDialog&) {
    for (const char* name : {"Text1_0", "Text1_1", "Text1_2", "Command1_0", "Command1_1", "Text1_0"}) {
      EXPECT_EQ(focused(), name);
      press(Qt::Key_Tab);
    }
  }});
}

TEST_F(SequentialValues, EveryBoxHasItsLabelItsNameAndATip) {
  ask({[](const QDialog& dialog) {
    const std::pair<const char*, const char*> rows[] = {
        {"Label1_0", "Text1_0"}, {"Label1_1", "Text1_1"}, {"Label1_2", "Text1_2"}};
    const char* const texts[] = {"Start", "Stop", "Step"};
    for (std::size_t i = 0; i < 3; ++i) {
      auto* box = dialog.findChild<QLineEdit*>(rows[i].second);
      const auto* label = dialog.findChild<QLabel*>(rows[i].first);
      EXPECT_EQ(label->buddy(), box);
      EXPECT_EQ(label->text(), texts[i]);
      EXPECT_EQ(box->accessibleName(), texts[i]);
      EXPECT_FALSE(box->toolTip().isEmpty());
    }
  }});
}

TEST_F(SequentialValues, IsDrawnWholeAndWhereItIsToldTo) {
  ask({[](QDialog& dialog) {
    EXPECT_EQ(dialog.pos(), QPoint(80, 60));
    if (const QByteArray picture = qgetenv("SEQUENTIAL_PICTURES"); !picture.isEmpty()) {
      dialog.grab().save(QString::fromLocal8Bit(picture) + "/sequential.png");
    }
    for (const QWidget* widget : dialog.findChildren<QWidget*>()) {
      if (!widget->isVisible()) continue;
      EXPECT_GE(widget->width(), widget->minimumSizeHint().width()) << widget->objectName().toStdString();
      EXPECT_GE(widget->height(), widget->minimumSizeHint().height()) << widget->objectName().toStdString();
    }
  }});
}

TEST_F(SequentialValues, EnterStillPressesTheDefaultButtonWhereAFormHasOne) {
  frmParabGain form;
  QTimer::singleShot(0, [] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(QTest::qWaitForWindowActive(dialog));
    EXPECT_EQ(focused(), "Text1_1");
    press(Qt::Key_Return);
    EXPECT_FALSE(dialog->isVisible());
    if (dialog->isVisible()) dialog->close();
  });
  desktop_.showModal(form);
  EXPECT_FALSE(form.cancelled());
}

}  // namespace
}  // namespace vantrelix::qt
