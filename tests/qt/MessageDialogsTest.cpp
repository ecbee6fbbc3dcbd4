// The message dialogs in their windows, by keyboard alone.
#include <functional>
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QTimer>

#include "dialogs/MsgBoxChk.h"
#include "dialogs/frmListSelect.h"
#include "dialogs/frmMsgFloat.h"
#include "qt/QtDesktop.h"
#include "qt/qtText.h"
#include "support/TempSuite.h"

namespace vantrelix::qt {
namespace {

using User = std::function<void(QWidget&)>;

class MessageDialogs : public testing::Test {
 protected:
  static void let(const User& user) {
    QTimer::singleShot(0, [user] {
      QWidget* window = QApplication::activeModalWidget();
      ASSERT_NE(window, nullptr);
      ASSERT_TRUE(QTest::qWaitForWindowActive(window));
      user(*window);
    });
  }
  static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }
  static void tabTo(const char* name) {
    for (int i = 0; i < 10 && QApplication::focusWidget()->objectName() != name; ++i) press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), name);
  }
  static MsgAnswer ask(const User& user, int defaultButton = 1,
                       const std::string& text = "Remove all?\r\n<b>Really?</b>") {
    let(user);
    MsgAnswer result{};
    MsgBoxChk("RemoveAll", text, "Remove", result, {{"&Remove", "tip"}, {"&Keep", ""}, {"Cancel", ""}}, defaultButton);
    return result;
  }

  test::TempSuite suite_;
  QtDesktop desktop_;
  DesktopInUse inUse_{desktop_};
};

TEST_F(MessageDialogs, EnterAnswersByTheDefaultButtonAndEscapeByCancel) {
  EXPECT_EQ(ask([](QWidget& window) {
              EXPECT_EQ(window.windowTitle(), "Remove");
              EXPECT_EQ(window.findChild<QLabel*>("Label1")->text(), "Remove all?\n<b>Really?</b>");
              EXPECT_EQ(QApplication::focusWidget()->objectName(), "Command1(1)");
              press(Qt::Key_Return);
            }),
            MsgAnswer::no);
  EXPECT_EQ(ask([](QWidget&) { press(Qt::Key_Escape); }), MsgAnswer::cancel);
  EXPECT_EQ(ask([](QWidget& window) { window.close(); }), MsgAnswer::cancel);
  EXPECT_EQ(ask([](QWidget&) {
              tabTo("Command1(0)");
              press(Qt::Key_Return);
            }),
            MsgAnswer::yes);
  EXPECT_EQ(ask([](QWidget& window) { QTest::keyClick(&window, Qt::Key_R, Qt::AltModifier); }), MsgAnswer::yes);
}

TEST_F(MessageDialogs, TickingTheBoxTellsHowToUndoItAndSilencesTheMessage) {
  const MsgAnswer answer = ask([](QWidget& window) {
    const int before = window.height();
    const int text = window.findChild<QScrollArea*>()->height();
    tabTo("Check1");
    press(Qt::Key_Space);
    QTest::qWait(1);
    EXPECT_TRUE(window.findChild<QLabel*>("lblRestore")->isVisible());
    EXPECT_GT(window.height(), before);
    EXPECT_EQ(window.findChild<QScrollArea*>()->height(), text);
    tabTo("Command1(0)");
    press(Qt::Key_Space);
  });
  EXPECT_EQ(answer, MsgAnswer::yes);
  EXPECT_EQ(suite_.folder().read("MsgBoxChk.INI"), "[DO NOT SHOW]\r\nRemoveAll=-1\r\n");
  MsgAnswer silent{};
  MsgBoxChk("RemoveAll", "text", "title", silent, {{"Remove", ""}, {"Keep", ""}}, 1);
  EXPECT_EQ(silent, MsgAnswer::no);
}

TEST_F(MessageDialogs, TheWindowIsCentredAndTheFormKnowsItsSize) {
  ask([](QWidget& window) {
    const QPoint middle = QRect(window.pos(), window.size()).center() - window.screen()->geometry().center();
    EXPECT_LE(std::abs(middle.x()), 2);
    EXPECT_LE(std::abs(middle.y()), 2);
    press(Qt::Key_Escape);
  });
}

TEST_F(MessageDialogs, TheTextIsMarkedAndCopiedByKeyboard) {
  ask([](QWidget&) {
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "Remove\n\nRemove all?\n<b>Really?</b>");
    tabTo("Label1");
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "Remove all?\n<b>Really?</b>");
    press(Qt::Key_Return);  // still the default button
  });
  EXPECT_EQ(ask([](QWidget&) {
              tabTo("Label1");
              press(Qt::Key_Return);
            }),
            MsgAnswer::no);
}

TEST_F(MessageDialogs, ALongTextWrapsAndScrollsInsideTheScreen) {
  std::string text;
  for (int i = 0; i < 200; ++i) text += "A line of this message that is longer than what reads well in one line. ";
  ask(
      [](QWidget& window) {
        const QRect screen = window.screen()->availableGeometry();
        EXPECT_LE(window.width(), screen.width());
        EXPECT_LE(window.height(), screen.height());
        QScrollBar& bar = *window.findChild<QScrollArea*>()->verticalScrollBar();
        EXPECT_GT(bar.maximum(), 0);
        EXPECT_EQ(window.findChild<QScrollArea*>()->horizontalScrollBar()->maximum(), 0);
        tabTo("Label1");
        press(Qt::Key_PageDown);
        EXPECT_GT(bar.value(), 0);
        press(Qt::Key_Escape);
      },
      1, text);
}

TEST_F(MessageDialogs, AShortTextNeedsNoScrolling) {
  for (const char* text : {"Yes?", "One line.\r\n\r\nAnother, after a blank one.\r\nA third."}) {
    ask(
        [](QWidget& window) {
          EXPECT_EQ(window.findChild<QScrollArea*>()->verticalScrollBar()->maximum(), 0);
          press(Qt::Key_Escape);
        },
        1, text);
  }
}

class Note : public MessageDialogs {
 protected:
  Note() {
    owner_.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&owner_));
    box_.setFocus();
    note_.show("Antennas of Maker\r\nOpening Antenna Database Files", "Antenna Editor");
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (widget->objectName() == "frmMsgFloat" && widget->isVisible()) window_ = widget;
    }
  }
  QWidget owner_;
  QLineEdit box_{&owner_};
  frmMsgFloat note_;
  QPointer<QWidget> window_;
};

TEST_F(Note, StaysOnTheScreenWhileTheUserTypesOn) {
  ASSERT_TRUE(window_);
  EXPECT_EQ(window_->windowTitle(), "Antenna Editor");
  EXPECT_TRUE(QTest::qWaitForWindowActive(&owner_));
  QTest::keyClicks(QApplication::focusWidget(), "go on");
  press(Qt::Key_Escape);
  EXPECT_EQ(box_.text(), "go on");
  EXPECT_TRUE(window_->isVisible());
  EXPECT_FALSE(window_->close());
  EXPECT_TRUE(window_->isVisible());
  note_.unload();
  EXPECT_FALSE(window_ && window_->isVisible());
}

TEST_F(Note, ItsTextGrowsInTheTurnsOfTheEventLoopAndStaysWhole) {
  ASSERT_TRUE(window_);
  note_.Timer1.setInterval(1);
  EXPECT_TRUE(QTest::qWaitFor([this] { return note_.Label1.caption().size() > 250; }));
  note_.Timer1.setEnabled(false);
  QTest::qWait(1);
  EXPECT_EQ(window_->findChild<QLabel*>()->text(), linesToQt(note_.Label1.caption()));
  EXPECT_EQ(window_->findChild<QScrollArea*>()->verticalScrollBar()->maximum(), 0);
  EXPECT_LE(window_->width(), window_->screen()->availableGeometry().width());
}

TEST_F(MessageDialogs, ALineIsChosenFromTheListByKeyboard) {
  frmListSelect form;
  form.setCaption("Select Transmission Line");
  form.List1.setEntries({"LDF4-50   7.2", "LDF5-50   4.0", "EW63      4.5"});
  form.ListClick.listen([&form] { form.Label1.setCaption("30 MHz to 2700 MHz"); });
  let([](QWidget& window) {
    EXPECT_EQ(window.windowTitle(), "Select Transmission Line");
    auto* list = window.findChild<QListWidget*>("List1");
    EXPECT_EQ(QApplication::focusWidget(), list);
    EXPECT_EQ(list->fontMetrics().horizontalAdvance("iii"), list->fontMetrics().horizontalAdvance("WWW"));
    EXPECT_FALSE(window.findChild<QPushButton*>("cmdContinue")->isEnabled());
    press(Qt::Key_Return);
    EXPECT_TRUE(window.isVisible());
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    EXPECT_EQ(window.findChild<QLabel*>("Label1")->text(), "30 MHz to 2700 MHz");
    press(Qt::Key_Return);
  });
  EXPECT_TRUE(form.choose());
  EXPECT_EQ(form.choice(), "LDF5-50   4.0");
  let([](QWidget&) { press(Qt::Key_Escape); });
  EXPECT_FALSE(form.choose());
}

TEST_F(MessageDialogs, ALineThatIsSelectedAlreadyIsShownSo) {
  frmListSelect form;
  for (int i = 0; i < 300; ++i) form.List1.addItem("Line " + std::to_string(i));
  form.List1.setListIndex(250);
  let([](QWidget& window) {
    auto* list = window.findChild<QListWidget*>("List1");
    EXPECT_EQ(list->currentRow(), 250);
    for (const int near : {245, 250, 255}) {
      EXPECT_TRUE(list->viewport()->rect().contains(list->visualItemRect(list->item(near)).center())) << near;
    }
    const QPoint middle = list->visualItemRect(list->item(250)).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, middle);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, middle);
  });
  EXPECT_TRUE(form.choose());
  EXPECT_EQ(form.choice(), "Line 250");
}

}  // namespace
}  // namespace vantrelix::qt
