// What a model's handlers throw stops at the views: a host's event loop must not see it.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "foundation/errHand.h"
#include "foundation/hostProgram.h"
#include "platform/Platform.h"
#include "platform/RunTimeFailure.h"
#include "qt/LookAnt.h"
#include "support/TempSuite.h"
#include "tables/installSuite.h"
#include "ui/ScriptedDesktop.h"

namespace vantrelix::qt {
namespace {

constexpr auto kFail = [](auto&&...) { throw RunTimeFailure(failure::pathAccess, "The disk is gone."); };

class FailingControl : public testing::Test {
 protected:
  FailingControl() {
    installSuite(suite_.path());
    setHostProgram({"planner", 1, 0, 0});
    look_ = std::make_unique<LookAnt>();
    look_->control().ZORUserLogin("");
    look_->show();
    look_->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(look_.get()));
  }
  ~FailingControl() override { setHostProgram({}); }

  template <class Kind>
  Kind& find(const char* name) {
    return *look_->findChild<Kind*>(name);
  }
  // That the failure was shown once since the last look.
  void expectShown() {
    ASSERT_EQ(desktop_.shown().size(), ++seen_);
    const Message& message = desktop_.shown().back().message;
    EXPECT_EQ(message.title, "Error in PLANNER");
    EXPECT_EQ(message.text.substr(0, message.text.find('\r')), "Error 75:  The disk is gone.");
    EXPECT_EQ(message.icon, MsgIcon::critical);
  }

  test::TempSuite suite_;
  ScriptedDesktop desktop_;
  DesktopInUse inUse_{desktop_};
  std::unique_ptr<LookAnt> look_;
  std::size_t seen_ = 0;
};

TEST_F(FailingControl, LeavingABoxShowsTheFailureAndKeepsWhatWasTyped) {
  look_->control().ChangeMounting.listen(kFail);
  find<QLineEdit>("txtMAzim").setFocus(Qt::TabFocusReason);
  QTest::keyClicks(&find<QLineEdit>("txtMAzim"), "45");
  QTest::keyClick(&find<QLineEdit>("txtMAzim"), Qt::Key_Tab);
  expectShown();
  EXPECT_EQ(find<QLineEdit>("txtMAzim").text(), "45");
  EXPECT_EQ(look_->sValueMazim(), "45");
  EXPECT_EQ(QApplication::focusWidget(), &find<QCheckBox>("chkInvert"));
}

TEST_F(FailingControl, TypingThatFailsBehindTheChangeKeepsTheText) {
  look_->control().txtDesc.change.listen(kFail);
  auto& desc = find<QLineEdit>("txtDesc");
  desc.setFocus(Qt::TabFocusReason);
  QTest::keyClick(&desc, Qt::Key_A);
  expectShown();
  QTest::keyClick(&desc, Qt::Key_B);
  expectShown();
  EXPECT_EQ(desc.text(), "ab");
  EXPECT_EQ(look_->sValueDesc(), "ab");
}

TEST_F(FailingControl, AKeyWhoseFilterFailsIsNotTyped) {
  look_->sValueDesc("Dish");
  look_->control().txtDesc.keyPress.listen(kFail);
  auto& desc = find<QLineEdit>("txtDesc");
  desc.setFocus(Qt::TabFocusReason);
  QTest::keyClick(&desc, Qt::Key_A);
  expectShown();
  desc.insert("pasted");
  EXPECT_EQ(desc.text(), "Dish");
  EXPECT_EQ(look_->sValueDesc(), "Dish");
}

TEST_F(FailingControl, EveryKindOfWidgetShowsTheFailureOfItsClick) {
  scLookAnt& control = look_->control();
  control.cmdClear.click.listen(kFail);
  control.ChangeMounting.listen(kFail);
  control.lblPreview.click.listen(kFail);
  control.txtDesc.gotFocus.listen(kFail);
  control.txtDesc.mouseUp.listen(kFail);
  QTest::mouseClick(&find<QLabel>("lblPreview"), Qt::LeftButton);
  expectShown();
  find<QCheckBox>("chkInvert").click();
  expectShown();
  EXPECT_TRUE(look_->sValueInvert());
  find<QComboBox>("cboPol").setFocus(Qt::TabFocusReason);
  QTest::keyClick(&find<QComboBox>("cboPol"), Qt::Key_V);
  expectShown();
  EXPECT_EQ(look_->sValuePol(), "Vertical");
  find<QLineEdit>("txtDesc").setFocus(Qt::TabFocusReason);
  expectShown();
  QTest::mouseRelease(&find<QLineEdit>("txtDesc"), Qt::LeftButton);
  expectShown();
}

TEST_F(FailingControl, AButtonWhoseWorkFailsShowsItOnce) {
  desktop_.answers = {MsgAnswer::ok};
  look_->control().ChangeAntenna.listen(kFail);
  QTest::mouseClick(&find<QPushButton>("cmdClear"), Qt::LeftButton);
  ++seen_;  // the question
  expectShown();
}

TEST_F(FailingControl, AFailureOfAnotherKindIsAnInternalError) {
  look_->control().lblPreview.click.listen([] { throw std::runtime_error("lost the thread"); });
  QTest::mouseClick(&find<QLabel>("lblPreview"), Qt::LeftButton);
  ASSERT_EQ(desktop_.shown().size(), 1U);
  EXPECT_EQ(desktop_.shown()[0].message.text.find("Error 51:  lost the thread"), 0U);
}

TEST_F(FailingControl, ALogThatCannotBeWrittenEndsNeitherTheHostNorTheMessage) {
  platform::current().makeFolder(suite_.file("QVTECSUP.TXT"));
  look_->control().lblPreview.click.listen([] { ErrHand(failure::noSuchTable, "No such table."); });
  QTest::mouseClick(&find<QLabel>("lblPreview"), Qt::LeftButton);
  ASSERT_EQ(desktop_.shown().size(), 1U);
  const Message& message = desktop_.shown()[0].message;
  EXPECT_EQ(message.title, "Error in PLANNER");
  EXPECT_NE(message.text.find("Error 3011:  No such table."), std::string::npos);
  EXPECT_NE(message.text.find(suite_.folder().machine("QVTECSUP.TXT")), std::string::npos);
}

}  // namespace
}  // namespace vantrelix::qt
