// The port through which everything below the forms shows a message box. The desktop of ui/ fills it in.
#pragma once

#include <functional>
#include <string>

namespace vantrelix {

enum class MsgButtons { ok, okCancel, abortRetryIgnore, yesNoCancel, yesNo, retryCancel };
enum class MsgIcon { none, critical, question, exclamation, information };
// The numbers are those of the platform's message box.
enum class MsgAnswer { ok = 1, cancel = 2, abort = 3, retry = 4, ignore = 5, yes = 6, no = 7 };

struct Message {
  std::string title;
  std::string text;  // lines end with CR LF
  MsgButtons buttons = MsgButtons::ok;
  MsgIcon icon = MsgIcon::information;
  int defaultButton = 1;  // counted from 1
};

using MessagePort = std::function<MsgAnswer(const Message&)>;

// Sets the port and gives the former one. Without a port a message is dropped and answered by its default button.
MessagePort setMessagePort(MessagePort port);

MsgAnswer MsgBox(const Message& message);
// An information icon and an OK button.
void showInformation(const std::string& title, const std::string& text);

// The buttons of a kind, left to right, and the answer of the default button.
MsgAnswer defaultAnswer(const Message& message);

}  // namespace vantrelix
