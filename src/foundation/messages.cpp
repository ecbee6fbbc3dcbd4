#include "foundation/messages.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vantrelix {

namespace {

MessagePort& port() {
  static MessagePort instance;
  return instance;
}

struct Choice {
  MsgButtons buttons;
  int count;
  std::array<MsgAnswer, 3> answers;
};

constexpr MsgAnswer kNone = MsgAnswer::ok;
constexpr Choice kChoices[] = {
    {MsgButtons::ok, 1, {MsgAnswer::ok, kNone, kNone}},
    {MsgButtons::okCancel, 2, {MsgAnswer::ok, MsgAnswer::cancel, kNone}},
    {MsgButtons::abortRetryIgnore, 3, {MsgAnswer::abort, MsgAnswer::retry, MsgAnswer::ignore}},
    {MsgButtons::yesNoCancel, 3, {MsgAnswer::yes, MsgAnswer::no, MsgAnswer::cancel}},
    {MsgButtons::yesNo, 2, {MsgAnswer::yes, MsgAnswer::no, kNone}},
    {MsgButtons::retryCancel, 2, {MsgAnswer::retry, MsgAnswer::cancel, kNone}},
};

}  // namespace

MessagePort setMessagePort(MessagePort newPort) { return std::exchange(port(), std::move(newPort)); }

MsgAnswer MsgBox(const Message& message) {
  // A copy, so that a port may be exchanged while its message is open.
  const MessagePort shown = port();
  return shown ? shown(message) : defaultAnswer(message);
}

void showInformation(const std::string& title, const std::string& text) { MsgBox({title, text}); }

MsgAnswer defaultAnswer(const Message& message) {
  for (const Choice& choice : kChoices) {
    if (choice.buttons != message.buttons) continue;
    return choice.answers[static_cast<std::size_t>(std::clamp(message.defaultButton, 1, choice.count) - 1)];
  }
  return MsgAnswer::ok;
}

}  // namespace vantrelix
