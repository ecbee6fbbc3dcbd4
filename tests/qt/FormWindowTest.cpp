// The window of a form, driven as its user drives it.
#include <functional>
#include <gtest/gtest.h>
#include <memory>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "qt/FormWindow.h"
#include "qt/QtDesktop.h"
#include "ui/ListBox.h"
#include "ui/ScriptedDesktop.h"
#include "ui/Timer.h"
#include "ui/widgets.h"

namespace vantrelix::qt {
namespace {

class Dialog : public Form {
 public:
  explicit Dialog(const std::string& name = "frmTest") : Form(name) {
    for (Widget* widget : {static_cast<Widget*>(&text), static_cast<Widget*>(&list), static_cast<Widget*>(&ok),
                           static_cast<Widget*>(&other), static_cast<Widget*>(&cancel), static_cast<Widget*>(&timer)}) {
      add(*widget);
    }
    setCaption("A dialog");
    ok.setCaption("OK");
    other.setCaption("Other");
    cancel.setCaption("Cancel");
    list.setEntries({"one", "two", "three"});
    ok.click.listen([this] { leave("ok"); });
    other.click.listen([this] { leave("other"); });
    cancel.click.listen([this] { leave("cancel"); });
    setDefaultButton(&ok);
    setCancelButton(&cancel);
  }
  void leave(const char* how) {
    left += how;
    hide();
  }

  TextBox text{"text"};
  ListBox list{"list"};
  CommandButton ok{"ok"}, other{"other"}, cancel{"cancel"};
  Timer timer{"timer"};
  std::string left;
};

FormWindow* windowOf(const Form& form) {
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    auto* window = qobject_cast<FormWindow*>(widget);
    if (window && window->isVisible() && window->objectName() == toQt(form.name())) return window;
  }
  return nullptr;
}

class FormWindowTest : public testing::Test {
 protected:
  using User = std::function<void(FormWindow&)>;
  ~FormWindowTest() override { QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

  // Shows the form modally and lets the user act in its window; a form that stays open is taken away.
  void run(Form& shown, const User& user) {
    QTimer::singleShot(0, [&shown, user] {
      FormWindow* window = windowOf(shown);
      ASSERT_NE(window, nullptr);
      ASSERT_TRUE(QTest::qWaitForWindowActive(window));
      user(*window);
      if (QPointer<FormWindow> open = windowOf(shown)) shown.hide();
    });
    screen.showModal(shown);
    EXPECT_EQ(windowOf(shown), nullptr);
  }
  template <class Kind>
  static Kind& find(const FormWindow& window, const char* name) {
    return *window.findChild<Kind*>(name);
  }
  static QWidget& focused() { return *QApplication::focusWidget(); }

  QtDesktop screen;
  Dialog form;
};

TEST_F(FormWindowTest, HidingTheFormEndsTheModalRun) {
  run(form, [this](FormWindow& window) {
    EXPECT_TRUE(form.visible());
    EXPECT_TRUE(window.isModal());
    QTest::mouseClick(&find<QPushButton>(window, "other"), Qt::LeftButton);
    EXPECT_FALSE(window.isVisible());
  });
  EXPECT_EQ(form.left, "other");
}

TEST_F(FormWindowTest, FollowsTheTitle) {
  run(form, [this](FormWindow& window) {
    EXPECT_EQ(window.windowTitle(), "A dialog");
    form.setCaption("Another");
    EXPECT_EQ(window.windowTitle(), "Another");
  });
}

TEST_F(FormWindowTest, WithoutAPlaceItComesUpOverItsOwnerWithItsOwnSizeAndTellsTheForm) {
  run(form, [this](FormWindow& window) {
    EXPECT_EQ(window.size(), window.sizeHint());
    EXPECT_TRUE(form.placed());
    EXPECT_EQ(pixelsOf(form.geometry(), window), QRect(window.pos(), window.size()));
  });
}

TEST_F(FormWindowTest, StandsWhereTheFormSaysAndFollowsIt) {
  form.moveTo(1500, 2250);
  form.setSize(6000, 4500);
  run(form, [this](FormWindow& window) {
    EXPECT_EQ(window.pos(), QPoint(100, 150));
    EXPECT_EQ(window.size(), QSize(400, 300));
    form.moveTo(3000, 1500);
    EXPECT_EQ(window.pos(), QPoint(200, 100));
    form.setSize(7500, 6000);
    EXPECT_EQ(window.size(), QSize(500, 400));
  });
}

TEST_F(FormWindowTest, IsNeverSmallerThanWhatItHolds) {
  form.moveTo(0, 0);
  form.setSize(15, 15);
  run(form, [](FormWindow& window) {
    EXPECT_GE(window.width(), window.minimumSizeHint().width());
    EXPECT_GE(window.height(), window.minimumSizeHint().height());
  });
  EXPECT_GT(form.width(), 15);
}

TEST_F(FormWindowTest, TheFormFollowsTheUsersMovingAndSizing) {
  run(form, [this](FormWindow& window) {
    window.move(40, 60);
    window.resize(500, 350);
    EXPECT_EQ(form.geometry(), (Rectangle{600, 900, 7500, 5250}));
  });
}

TEST_F(FormWindowTest, AMaximisedWindowLeavesThePlaceOfTheNormalOneAlone) {
  form.moveTo(1500, 1500);
  form.setSize(6000, 4500);
  run(form, [this](FormWindow& window) {
    const Rectangle before = form.geometry();
    window.showMaximized();
    QTest::qWait(20);
    EXPECT_GT(window.width(), 400);
    EXPECT_EQ(form.windowState(), Form::WindowState::maximised);
    EXPECT_EQ(form.geometry(), before);
    form.setWindowState(Form::WindowState::normal);
    QTest::qWait(20);
    EXPECT_FALSE(window.isMaximized());
    EXPECT_EQ(form.geometry(), before);
    form.setWindowState(Form::WindowState::maximised);
    EXPECT_TRUE(window.isMaximized());
  });
}

TEST_F(FormWindowTest, AFormThatIsMaximisedComesUpSo) {
  form.setWindowState(Form::WindowState::maximised);
  run(form, [](FormWindow& window) { EXPECT_TRUE(window.isMaximized()); });
  EXPECT_EQ(form.windowState(), Form::WindowState::maximised);
}

TEST_F(FormWindowTest, AFormThatComesUpMaximisedIsToldNoPlaceOfItsNormalWindow) {
  form.setWindowState(Form::WindowState::maximised);
  run(form, [this](FormWindow&) { EXPECT_EQ(form.geometry(), Rectangle()); });
}

TEST_F(FormWindowTest, ActivatedIsRaisedOnceWithTheSizeSettledAndMayMoveTheWindow) {
  int raised = 0;
  form.activated.listen([&] {
    ++raised;
    EXPECT_GT(form.width(), 0);
    form.moveTo(450, 300);
  });
  run(form, [](FormWindow& window) { EXPECT_EQ(window.pos(), QPoint(30, 20)); });
  EXPECT_EQ(raised, 1);
}

TEST_F(FormWindowTest, AFormMayHideItselfWhileItComesUp) {
  form.activated.listen([this] { form.hide(); });
  screen.showModal(form);
  EXPECT_EQ(windowOf(form), nullptr);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(FormWindowTest, ClosingByTheFramePressesCancel) {
  run(form, [](FormWindow& window) { window.close(); });
  EXPECT_EQ(form.left, "cancel");
}

TEST_F(FormWindowTest, AFormThatRefusesStaysOpen) {
  class Stubborn : public Dialog {
    void queryUnload() override { ++asked; }

   public:
    int asked = 0;
  } stubborn;
  run(stubborn, [&](FormWindow& window) {
    EXPECT_FALSE(window.close());
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(stubborn.asked, 1);
  });
}

TEST_F(FormWindowTest, EscapePressesCancelAndEnterTheDefaultButton) {
  run(form, [](FormWindow& window) { QTest::keyClick(&window, Qt::Key_Escape); });
  run(form, [](FormWindow& window) {
    find<QLineEdit>(window, "text").setFocus();
    QTest::keyClick(&focused(), Qt::Key_Return);
  });
  run(form, [](FormWindow& window) {
    find<QListWidget>(window, "list").setFocus();
    QTest::keyClick(&focused(), Qt::Key_Enter);
  });
  EXPECT_EQ(form.left, "cancelokok");
}

TEST_F(FormWindowTest, EnterPressesTheButtonThatHasTheKeyboard) {
  run(form, [](FormWindow& window) {
    find<QPushButton>(window, "other").setFocus();
    EXPECT_TRUE(find<QPushButton>(window, "other").isDefault());
    EXPECT_FALSE(find<QPushButton>(window, "ok").isDefault());
    find<QLineEdit>(window, "text").setFocus();
    EXPECT_TRUE(find<QPushButton>(window, "ok").isDefault());
    find<QPushButton>(window, "other").setFocus();
    QTest::keyClick(&focused(), Qt::Key_Return);
  });
  EXPECT_EQ(form.left, "other");
}

TEST_F(FormWindowTest, OffTheButtonsEnterIsTheDefaultButtonsAgainEvenWhereNoModelHasTheKeyboard) {
  run(form, [this](FormWindow& window) {
    auto* plain = new QLineEdit(&window);
    plain->show();
    find<QPushButton>(window, "other").setFocus();
    EXPECT_FALSE(find<QPushButton>(window, "ok").isDefault());
    plain->setFocus();
    EXPECT_TRUE(find<QPushButton>(window, "ok").isDefault());
    EXPECT_EQ(form.activeWidget(), &form.other);
  });
}

TEST_F(FormWindowTest, WithoutThoseButtonsEnterAndEscapeDoNothing) {
  form.setDefaultButton(nullptr);
  form.setCancelButton(nullptr);
  run(form, [](FormWindow& window) {
    find<QLineEdit>(window, "text").setFocus();
    QTest::keyClick(&focused(), Qt::Key_Return);
    QTest::keyClick(&focused(), Qt::Key_Escape);
    EXPECT_TRUE(window.isVisible());
  });
  EXPECT_EQ(form.left, "");
}

TEST_F(FormWindowTest, ButtonsThatCannotBePressedAreNot) {
  form.ok.setEnabled(false);
  form.cancel.setVisible(false);
  run(form, [](FormWindow& window) {
    find<QLineEdit>(window, "text").setFocus();
    QTest::keyClick(&focused(), Qt::Key_Return);
    QTest::keyClick(&focused(), Qt::Key_Escape);
    EXPECT_TRUE(window.isVisible());
  });
  EXPECT_EQ(form.left, "");
}

TEST_F(FormWindowTest, TheKeyboardStandsWhereTheFormSaysAndTheFormKnowsWhereItIs) {
  form.setFocus(form.list);
  run(form, [this](FormWindow& window) {
    EXPECT_EQ(&focused(), &find<QWidget>(window, "list"));
    find<QLineEdit>(window, "text").setFocus();
    EXPECT_EQ(form.activeWidget(), &form.text);
    form.setFocus(form.list);
    EXPECT_EQ(&focused(), &find<QWidget>(window, "list"));
  });
}

TEST_F(FormWindowTest, ABoxInsideAViewCountsAsTheViewAndKeepsTheKeyboardWhileTheFormChanges) {
  run(form, [this](FormWindow& window) {
    auto* inner = new QLineEdit(&find<QWidget>(window, "list"));
    inner->show();
    inner->setFocus();
    EXPECT_EQ(form.activeWidget(), &form.list);
    form.setCaption("Another title");
    EXPECT_EQ(&focused(), inner);
  });
}

TEST_F(FormWindowTest, TheTabKeyFollowsTheTabIndexesAndPassesOverWhatHasNone) {
  form.cancel.setTabIndex(0);
  form.text.setTabIndex(1);
  form.ok.setTabIndex(2);
  form.setFocus(form.cancel);
  run(form, [](FormWindow& window) {
    QStringList order;
    for (int i = 0; i < 4; ++i) {
      order << focused().objectName();
      QTest::keyClick(&window, Qt::Key_Tab);
    }
    EXPECT_EQ(order.join(' '), "cancel text ok cancel");
  });
}

TEST_F(FormWindowTest, WithoutTabIndexesTheOrderIsThatOfTheLayout) {
  run(form, [this](FormWindow& window) {
    form.setFocus(form.text);
    QStringList order;
    for (int i = 0; i < 5; ++i) {
      order << focused().objectName();
      QTest::keyClick(&window, Qt::Key_Tab);
    }
    EXPECT_EQ(order.join(' '), "text list ok other cancel");
  });
}

TEST_F(FormWindowTest, FocusOnAListChoosesNothing) {
  int clicks = 0;
  form.list.click.listen([&clicks] { ++clicks; });
  run(form, [&](FormWindow& window) {
    auto& list = find<QListWidget>(window, "list");
    list.setFocus(Qt::TabFocusReason);
    EXPECT_EQ(form.list.listIndex(), -1);
    EXPECT_EQ(clicks, 0);
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_EQ(form.list.text(), "one");
    QTest::keyClick(&list, Qt::Key_End);
    EXPECT_EQ(form.list.text(), "three");
    EXPECT_EQ(clicks, 2);
    const QPoint third = list.visualItemRect(list.item(2)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, third);
    EXPECT_EQ(clicks, 3);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(0)).center());
    EXPECT_EQ(clicks, 4);
    EXPECT_EQ(form.list.text(), "one");
  });
}

TEST_F(FormWindowTest, AListShowsWhatTheProgramMakesOfIt) {
  run(form, [this](FormWindow& window) {
    auto& list = find<QListWidget>(window, "list");
    form.list.setListIndex(1);
    EXPECT_EQ(list.currentRow(), 1);
    form.list.setEntries({"a", "b", "c", "d"});
    EXPECT_EQ(list.count(), 4);
    EXPECT_EQ(list.currentRow(), -1);
    form.list.setFixedPitch(true);
    EXPECT_EQ(list.fontMetrics().horizontalAdvance("iii"), list.fontMetrics().horizontalAdvance("WWW"));
  });
}

TEST_F(FormWindowTest, ATimerTicksWhileItRunsAndEndsWithTheWindow) {
  form.timer.setInterval(1);
  int ticks = 0;
  form.timer.tick.listen([&ticks] { ++ticks; });
  run(form, [&](FormWindow&) {
    EXPECT_TRUE(QTest::qWaitFor([&] { return ticks > 2; }));
    form.timer.setEnabled(false);
    const int seen = ticks;
    QTest::qWait(20);
    EXPECT_EQ(ticks, seen);
    form.timer.setEnabled(true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return ticks > seen; }));
  });
  const int seen = ticks;
  QTest::qWait(20);
  EXPECT_EQ(ticks, seen);
}

TEST_F(FormWindowTest, AFormThatEndsInItsModalRunEndsTheRun) {
  for (const char* button : {"ok", "cancel"}) {
    auto own = std::make_unique<Dialog>("frmOwn");
    own->ok.click.listen([&own] { own.reset(); });
    own->cancel.click.listen([&own] { own.reset(); });
    QTimer::singleShot(0, [&] { QTest::mouseClick(&find<QPushButton>(*windowOf(*own), button), Qt::LeftButton); });
    screen.showModal(*own);
    EXPECT_EQ(own, nullptr);
  }
  auto own = std::make_unique<Dialog>("frmOwn");
  own->timer.setInterval(1);
  own->timer.tick.listen([&own] { own.reset(); });
  screen.showModal(*own);
  EXPECT_EQ(own, nullptr);
}

TEST_F(FormWindowTest, AFailureInAFormsHandlerIsShownAndLeavesTheWindowOpen) {
  ScriptedDesktop messages;
  const DesktopInUse inUse(messages);
  form.other.click.listen([] { throw std::runtime_error("lost"); });
  form.activated.listen([] { throw std::runtime_error("early"); });
  Dialog failing("frmFailing");
  CommandButton fails("fails");
  fails.click.listen([] { throw std::runtime_error("lost"); });
  failing.setCancelButton(&fails);
  failing.activated.listen([] { throw std::runtime_error("early"); });
  run(failing, [](FormWindow& window) {
    QTest::keyClick(&window, Qt::Key_Escape);
    window.close();
    EXPECT_TRUE(window.isVisible());
  });
  EXPECT_EQ(messages.shown().size(), 3U);
}

TEST_F(FormWindowTest, AFormMayRunAnotherAndTheOuterOneGoesOn) {
  Dialog inner("frmInner");
  run(form, [&](FormWindow& outer) {
    run(inner, [&](FormWindow& window) {
      EXPECT_EQ(QApplication::activeModalWidget(), &window);
      EXPECT_EQ(window.parentWidget(), &outer);
      QTest::keyClick(&window, Qt::Key_Return);
    });
    EXPECT_EQ(inner.left, "ok");
    EXPECT_TRUE(outer.isVisible());
    EXPECT_EQ(QApplication::activeModalWidget(), &outer);
    QTest::keyClick(&outer, Qt::Key_Escape);
  });
  EXPECT_EQ(form.left, "cancel");
}

TEST_F(FormWindowTest, TheOuterFormMayEndWhileTheInnerOneRuns) {
  auto outer = std::make_unique<Dialog>("frmOuter");
  Dialog inner("frmInner");
  bool innerStood = false;
  QTimer::singleShot(0, [&] {
    QTimer::singleShot(0, [&] {
      outer.reset();
      innerStood = inner.visible();
      inner.hide();
    });
    screen.showModal(inner);
  });
  screen.showModal(*outer);
  EXPECT_EQ(outer, nullptr);
  EXPECT_TRUE(innerStood);
}

TEST_F(FormWindowTest, AFormWhoseOwnerGoesIsHidden) {
  auto owner = std::make_unique<QWidget>();
  owner->show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(owner.get()));
  QTimer::singleShot(0, [&owner] { owner.reset(); });
  screen.showModal(form);
  EXPECT_FALSE(form.visible());
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

// Modeless windows.

class ModelessTest : public FormWindowTest {
 protected:
  ModelessTest() {
    owner_.resize(200, 100);
    owner_.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&owner_));
    box_.setFocus();
  }
  QWidget owner_;
  QLineEdit box_{&owner_};
};

TEST_F(ModelessTest, OneThatLeavesTheFocusIsSeenAtOnceAndTheKeyboardStaysWhereItWas) {
  screen.showModeless(form, Desktop::Activation::leave);
  FormWindow* window = windowOf(form);
  ASSERT_NE(window, nullptr);
  EXPECT_TRUE(window->windowHandle()->isExposed());
  EXPECT_TRUE(window->windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
  EXPECT_TRUE(window->testAttribute(Qt::WA_ShowWithoutActivating));
  EXPECT_TRUE(QTest::qWaitForWindowActive(&owner_));
  EXPECT_EQ(QApplication::focusWidget(), &box_);
  QTest::keyClicks(QApplication::focusWidget(), "abc");
  EXPECT_EQ(box_.text(), "abc");
  form.hide();
  EXPECT_EQ(windowOf(form), nullptr);
}

TEST_F(ModelessTest, OneThatTakesTheFocusHasIt) {
  screen.showModeless(form, Desktop::Activation::take);
  ASSERT_NE(windowOf(form), nullptr);
  EXPECT_TRUE(QTest::qWaitForWindowActive(windowOf(form)));
  EXPECT_FALSE(windowOf(form)->isModal());
  QTest::keyClick(windowOf(form), Qt::Key_Escape);
  EXPECT_EQ(form.left, "cancel");
  EXPECT_EQ(windowOf(form), nullptr);
}

TEST_F(ModelessTest, AFormHasOneWindowHoweverOftenItIsShown) {
  screen.showModeless(form, Desktop::Activation::take);
  FormWindow* window = windowOf(form);
  screen.showModeless(form, Desktop::Activation::take);
  EXPECT_EQ(windowOf(form), window);
  form.hide();
  screen.showModeless(form, Desktop::Activation::take);
  QTest::qWait(1);
  EXPECT_NE(windowOf(form), nullptr);
  EXPECT_TRUE(form.visible());
}

TEST_F(ModelessTest, ATimerDoesNotTickForAFormThatIsHidden) {
  int ticks = 0;
  form.timer.tick.listen([&ticks] { ++ticks; });
  form.timer.setInterval(1);
  screen.showModeless(form, Desktop::Activation::take);
  EXPECT_TRUE(QTest::qWaitFor([&ticks] { return ticks > 0; }));
  form.hide();
  const int seen = ticks;
  QTest::qSleep(5);
  QCoreApplication::processEvents();
  EXPECT_EQ(ticks, seen);
}

TEST_F(ModelessTest, TheWindowEndsWithItsForm) {
  auto own = std::make_unique<Dialog>("frmOwn");
  screen.showModeless(*own, Desktop::Activation::take);
  const QPointer<FormWindow> window = windowOf(*own);
  ASSERT_TRUE(window);
  own.reset();
  EXPECT_FALSE(window->isVisible());
  QApplication::sendPostedEvents(window, QEvent::DeferredDelete);
  EXPECT_TRUE(window.isNull());
}

// Input boxes.

std::string asked(const std::function<void(QWidget&)>& user) {
  QTimer::singleShot(0, [user] {
    QWidget* box = QApplication::activeModalWidget();
    ASSERT_NE(box, nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowActive(box));
    user(*box);
  });
  return QtDesktop().inputBox("Name of the copy:\r\n(not <b>blank</b>)", "Copy", "Panel");
}

TEST(InputBox, EnterGivesTheTextAndEscapeNothing) {
  EXPECT_EQ(asked([](QWidget& box) {
              EXPECT_EQ(box.windowTitle(), "Copy");
              EXPECT_EQ(box.findChild<QLabel*>()->text(), "Name of the copy:\n(not <b>blank</b>)");
              EXPECT_EQ(box.findChild<QLabel*>()->textFormat(), Qt::PlainText);
              QTest::keyClicks(QApplication::focusWidget(), "Dish");
              QTest::keyClick(&box, Qt::Key_Return);
            }),
            "Dish");
  EXPECT_EQ(asked([](QWidget& box) { QTest::keyClick(&box, Qt::Key_Return); }), "Panel");
  EXPECT_EQ(asked([](QWidget& box) { QTest::keyClick(&box, Qt::Key_Escape); }), "");
}

}  // namespace
}  // namespace vantrelix::qt
