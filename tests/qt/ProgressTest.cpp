// The window of a long work, over a window whose button began it.
#include <functional>
#include <gtest/gtest.h>
#include <optional>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>

#include "dialogs/frmProgress.h"
#include "qt/QtDesktop.h"
#include "qt/qtText.h"

namespace vantrelix::qt {
namespace {

class Progress : public testing::Test {
 protected:
  Progress() {
    begin_.setGeometry(0, 40, 100, 30);
    owner_.resize(300, 120);
    owner_.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&owner_));
    box_.setFocus();
    QObject::connect(&begin_, &QPushButton::clicked, [this] { ++clicks_; });
  }
  ~Progress() override {
    work_.reset();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  void begin(const std::string& caption = "Importing Antennas") {
    work_.emplace(caption, std::chrono::milliseconds(400), [this] { return now_; });
  }
  void report(const std::string& text = "Working on file 1 of 2", long done = 1, long total = 2) {
    now_ += 50;
    work_->report(text, done, total);
  }
  QWidget& beginShown() {
    begin();
    now_ += 400;
    report();
    return *window();
  }
  static QWidget* window() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (widget->objectName() == "frmProgress" && widget->isVisible()) return widget;
    }
    return nullptr;
  }
  // At once, by the way of the screen's own events.
  static void click(const QWidget& widget) {
    const QPointF at = widget.mapTo(widget.window(), widget.rect().center());
    QWindow* over = widget.window()->windowHandle();
    const QPointF global = over->mapToGlobal(at);
    int time = ++clock_ * 1000;
    qt_handleMouseEvent(over, at, global, Qt::LeftButton, Qt::LeftButton, QEvent::MouseButtonPress, {}, time);
    qt_handleMouseEvent(over, at, global, Qt::NoButton, Qt::LeftButton, QEvent::MouseButtonRelease, {}, time);
  }
  static void type(const QWidget& widget, int key, const QString& text) {
    QWindow* over = widget.window()->windowHandle();
    qt_handleKeyEvent(over, QEvent::KeyPress, key, {}, text);
    qt_handleKeyEvent(over, QEvent::KeyRelease, key, {}, text);
  }

  static inline int clock_ = 0;
  QtDesktop desktop_;
  DesktopInUse inUse_{desktop_};
  QWidget owner_;
  QLineEdit box_{&owner_};
  QPushButton begin_{"Begin", &owner_};
  int clicks_ = 0;
  std::int64_t now_ = 0;
  std::optional<ProgressWindow> work_;
};

TEST_F(Progress, InputForTheWindowsBehindIsLostOnceItIsUp) {
  begin();
  for (int i = 0; i < 10; ++i) report();
  ASSERT_NE(window(), nullptr);
  QTimer::singleShot(0, [this] { click(begin_); });
  report();
  click(begin_);
  type(owner_, Qt::Key_B, "b");
  work_.reset();
  QApplication::processEvents();
  EXPECT_EQ(clicks_, 0);
  EXPECT_EQ(box_.text(), "");
  click(begin_);
  EXPECT_EQ(clicks_, 1);
}

TEST_F(Progress, BlocksTheOtherWindowsAsADialogDoes) {
  beginShown();
  EXPECT_EQ(QApplication::activeModalWidget(), window());
  EXPECT_TRUE(window()->isModal());
}

TEST_F(Progress, ShowsTextAndBar) {
  QWidget& shown = beginShown();
  EXPECT_EQ(shown.windowTitle(), "Importing Antennas");
  EXPECT_EQ(shown.findChild<QLabel*>("lblProgress")->text(), "Working on file 1 of 2");
  auto& bar = *shown.findChild<QProgressBar*>("ProgressBar1");
  EXPECT_EQ(bar.maximum() - bar.minimum(), 2 * bar.value());
  report("Working on file 2 of 2", 2, 2);
  EXPECT_EQ(bar.value(), bar.maximum());
  EXPECT_EQ(shown.findChild<QLabel*>("lblProgress")->text(), "Working on file 2 of 2");
  report("Sorting", 0, 0);
  EXPECT_EQ(bar.maximum(), 0);
  report("Writing", 2'000'000'000, 4'000'000'000);
  EXPECT_EQ(bar.maximum() - bar.minimum(), 2 * bar.value());
  EXPECT_EQ(bar.text(), "50%");
}

TEST_F(Progress, EscapeTheButtonAndTheFrameCancel) {
  const std::function<void(QWidget&)> users[] = {
      [](QWidget& shown) { type(shown, Qt::Key_Escape, ""); },
      [](QWidget& shown) { click(*shown.findChild<QPushButton*>("cmdCancel")); },
      [](QWidget& shown) { shown.close(); },
  };
  for (const auto& user : users) {
    QWidget& shown = beginShown();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&shown));
    EXPECT_FALSE(work_->cancelled());
    user(shown);
    report();
    EXPECT_TRUE(work_->cancelled());
    EXPECT_TRUE(shown.isVisible());
    EXPECT_FALSE(shown.findChild<QPushButton*>("cmdCancel")->isEnabled());
    work_.reset();
    EXPECT_EQ(window(), nullptr);
  }
}

TEST_F(Progress, GivesTheKeyboardBack) {
  QWidget& shown = beginShown();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&shown));
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "cmdCancel");
  work_.reset();
  EXPECT_TRUE(QTest::qWaitFor([this] { return QApplication::focusWidget() == &box_; }));
}

TEST_F(Progress, AQuestionOfTheWorkCanBeAnswered) {
  beginShown();
  QTimer::singleShot(0, [] {
    auto* question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(question, nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowActive(question));
    click(*question->button(QMessageBox::Yes));
  });
  EXPECT_EQ(desktop_.messageBox({"Import", "Replace?", MsgButtons::yesNo, MsgIcon::question, 2}), MsgAnswer::yes);
  report();
  EXPECT_EQ(window(), QApplication::activeModalWidget());
}

TEST_F(Progress, ALongFileNameIsShortenedAndDoesNotWidenTheWindow) {
  QWidget& shown = beginShown();
  auto& text = *shown.findChild<QLabel*>("lblProgress");
  const auto picture = [&] { return text.grab().toImage(); };
  const int width = shown.width();
  const std::string head = "Working on file 1 of 2: ";
  report(head + std::string(300, 'm') + "end.msi");
  QApplication::processEvents();
  EXPECT_EQ(shown.width(), width);
  const QImage longer = picture();
  // Beginning and end stay to be read: another end, or another beginning, looks different; another middle does not.
  report(head + std::string(310, 'm') + "end.msi");
  EXPECT_EQ(picture(), longer);
  report(head + std::string(300, 'm') + "xyz.msi");
  EXPECT_NE(picture(), longer);
  report("Looking at file 1 of 2: " + std::string(300, 'm') + "end.msi");
  EXPECT_NE(picture(), longer);
}

TEST_F(Progress, ALongCaptionHasRoomAsFarAsTheScreenHas) {
  const std::string caption =
      "Importing antennas of all makers and all models from a folder of files into this library";
  begin(caption);
  now_ += 400;
  report();
  EXPECT_GT(window()->width(), window()->fontMetrics().horizontalAdvance(toQt(caption)));
  work_.reset();
  begin(std::string(2000, 'm'));
  now_ += 400;
  report();
  EXPECT_LE(window()->width(), window()->screen()->availableGeometry().width());
}

}  // namespace
}  // namespace vantrelix::qt
