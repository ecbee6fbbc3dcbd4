#include <gtest/gtest.h>

#include "foundation/messages.h"

namespace vantrelix {
namespace {

// Puts the port back that was there before.
class PortScope {
 public:
  explicit PortScope(MessagePort port) : former_(setMessagePort(std::move(port))) {}
  ~PortScope() { setMessagePort(std::move(former_)); }
  PortScope(const PortScope&) = delete;
  PortScope& operator=(const PortScope&) = delete;

 private:
  MessagePort former_;
};

MsgAnswer answerOf(MsgButtons buttons, int defaultButton) {
  return defaultAnswer({"", "", buttons, MsgIcon::none, defaultButton});
}

TEST(DefaultAnswer, IsTheButtonAtTheDefaultPosition) {
  EXPECT_EQ(answerOf(MsgButtons::ok, 1), MsgAnswer::ok);
  EXPECT_EQ(answerOf(MsgButtons::okCancel, 1), MsgAnswer::ok);
  EXPECT_EQ(answerOf(MsgButtons::okCancel, 2), MsgAnswer::cancel);
  EXPECT_EQ(answerOf(MsgButtons::yesNo, 1), MsgAnswer::yes);
  EXPECT_EQ(answerOf(MsgButtons::yesNo, 2), MsgAnswer::no);
  EXPECT_EQ(answerOf(MsgButtons::retryCancel, 1), MsgAnswer::retry);
  EXPECT_EQ(answerOf(MsgButtons::retryCancel, 2), MsgAnswer::cancel);
}

TEST(DefaultAnswer, CountsThreeButtonsFromTheLeft) {
  EXPECT_EQ(answerOf(MsgButtons::abortRetryIgnore, 1), MsgAnswer::abort);
  EXPECT_EQ(answerOf(MsgButtons::abortRetryIgnore, 2), MsgAnswer::retry);
  EXPECT_EQ(answerOf(MsgButtons::abortRetryIgnore, 3), MsgAnswer::ignore);
  EXPECT_EQ(answerOf(MsgButtons::yesNoCancel, 2), MsgAnswer::no);
  EXPECT_EQ(answerOf(MsgButtons::yesNoCancel, 3), MsgAnswer::cancel);
}

TEST(DefaultAnswer, APositionBeyondTheButtonsMeansTheNearestOne) {
  EXPECT_EQ(answerOf(MsgButtons::yesNo, 3), MsgAnswer::no);
  EXPECT_EQ(answerOf(MsgButtons::yesNo, 0), MsgAnswer::yes);
}

TEST(MsgBox, GoesThroughThePortAndGivesItsAnswer) {
  Message seen;
  const PortScope scope([&](const Message& message) {
    seen = message;
    return MsgAnswer::retry;
  });
  EXPECT_EQ(MsgBox({"Title", "Text", MsgButtons::yesNo, MsgIcon::question, 2}), MsgAnswer::retry);
  EXPECT_EQ(seen.title, "Title");
  EXPECT_EQ(seen.text, "Text");
  EXPECT_EQ(seen.icon, MsgIcon::question);
}

TEST(MsgBox, WithoutAPortTheDefaultButtonAnswers) {
  const PortScope scope(nullptr);
  EXPECT_EQ(MsgBox({"", "", MsgButtons::yesNo, MsgIcon::question, 2}), MsgAnswer::no);
}

TEST(MsgBox, APortMayBeExchangedWhileItsMessageIsOpen) {
  const PortScope scope([](const Message&) {
    setMessagePort([](const Message&) { return MsgAnswer::no; });
    return MsgAnswer::yes;
  });
  EXPECT_EQ(MsgBox({}), MsgAnswer::yes);
  EXPECT_EQ(MsgBox({}), MsgAnswer::no);
}

TEST(ShowInformation, HasAnInformationIconAndOneButton) {
  Message seen;
  const PortScope scope([&](const Message& message) {
    seen = message;
    return MsgAnswer::ok;
  });
  showInformation("A", "B");
  EXPECT_EQ(seen.title + seen.text, "AB");
  EXPECT_EQ(seen.icon, MsgIcon::information);
  EXPECT_EQ(seen.buttons, MsgButtons::ok);
}

}  // namespace
}  // namespace vantrelix
