#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "qt/QtDesktop.h"

namespace vantrelix::qt {
namespace {

const Message kQuestion{"Remove Pattern", "First line\r\nsecond <b>line</b>", MsgButtons::okCancel, MsgIcon::question,
                        2};

// Shows the message and lets `user` act on the dialog.
template <class User>
MsgAnswer answered(const Message& message, User user) {
  QTimer::singleShot(0, [user] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    user(*box);
  });
  return QtDesktop().messageBox(message);
}

TEST(QtDesktop, AMessageIsADialogWithItsTitleTextAndDefaultButton) {
  QString title, text, chosen;
  const MsgAnswer answer = answered(kQuestion, [&](QMessageBox& box) {
    title = box.windowTitle();
    text = box.text();
    EXPECT_EQ(box.textFormat(), Qt::PlainText);
    EXPECT_TRUE(box.defaultButton() == box.button(QMessageBox::Cancel));
    box.button(QMessageBox::Ok)->click();
  });
  EXPECT_EQ(title, "Remove Pattern");
  EXPECT_EQ(text, "First line\nsecond <b>line</b>");
  EXPECT_EQ(answer, MsgAnswer::ok);
}

TEST(QtDesktop, EscapeCancels) {
  const auto escape = [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); };
  EXPECT_EQ(answered(kQuestion, escape), MsgAnswer::cancel);
  EXPECT_EQ(answered({"t", "x", MsgButtons::yesNo, MsgIcon::none, 1}, escape), MsgAnswer::no);
  EXPECT_EQ(answered({"t", "x", MsgButtons::ok, MsgIcon::critical, 1}, escape), MsgAnswer::ok);
}

TEST(QtDesktop, TheTextOfAMessageIsMarkedAndCopiedByKeyboard) {
  answered(kQuestion, [](QMessageBox& box) {
    auto* text = box.findChild<QLabel*>("qt_msgbox_label");
    ASSERT_NE(text, nullptr);
    text->setFocus();
    QTest::keyClick(text, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(text, Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(text->textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
    box.button(QMessageBox::Ok)->click();
  });
  EXPECT_EQ(QApplication::clipboard()->text().replace(QChar::LineSeparator, '\n'), "First line\nsecond <b>line</b>");
}

TEST(QtDesktop, APopupMenuRunsTheClickOfWhatIsChosen) {
  Menu menu("menu");
  MenuItem first("first", "First"), second("second", "Second");
  menu.addItem(first);
  menu.addItem(second);
  first.setEnabled(false);
  int clicks = 0;
  second.click.listen([&clicks] { ++clicks; });
  QTimer::singleShot(0, [] {
    auto* popup = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(popup, nullptr);
    EXPECT_FALSE(popup->actions()[0]->isEnabled());
    popup->setActiveAction(popup->actions()[1]);
    QTest::keyClick(popup, Qt::Key_Return);
  });
  QtDesktop().popupMenu(menu);
  EXPECT_EQ(clicks, 1);
}

}  // namespace
}  // namespace vantrelix::qt
