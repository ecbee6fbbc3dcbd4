// A desktop without a screen: answers from a script, then by a policy, and keeps every message in order.
#pragma once

#include <deque>
#include <functional>
#include <vector>

#include "ui/Desktop.h"

namespace vantrelix {

class ScriptedDesktop : public Desktop {
 public:
  struct Shown {
    Message message;
    MsgAnswer answer;
  };
  using Policy = std::function<MsgAnswer(const Message&)>;

  // Answers to come first, in order; then the policy; without one the default button.
  std::deque<MsgAnswer> answers;
  Policy policy;

  const std::vector<Shown>& shown() const { return shown_; }
  int turns() const { return turns_; }
  const std::vector<Menu*>& menusShown() const { return menusShown_; }
  // Runs at each turn of the event loop: where a test lets "the user" act meanwhile.
  std::function<void()> onTurn;

  MsgAnswer messageBox(const Message& message) override;
  void doEvents() override;
  void popupMenu(Menu& menu) override;

  // Always the button of that kind, as near as the message has it: yes (or OK), no (or Cancel), cancel (or No).
  enum class Assume { yes, no, cancel };
  static Policy assume(Assume what);

 private:
  std::vector<Shown> shown_;
  std::vector<Menu*> menusShown_;
  int turns_ = 0;
};

}  // namespace vantrelix
