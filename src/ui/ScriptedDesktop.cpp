#include "ui/ScriptedDesktop.h"

#include <utility>

namespace vantrelix {

namespace {

struct Choice {
  MsgButtons buttons;
  MsgAnswer yes, no, cancel;
};

// Never Retry: an unattended run would ask for ever.
constexpr Choice kChoices[] = {
    {MsgButtons::ok, MsgAnswer::ok, MsgAnswer::ok, MsgAnswer::ok},
    {MsgButtons::okCancel, MsgAnswer::ok, MsgAnswer::cancel, MsgAnswer::cancel},
    {MsgButtons::abortRetryIgnore, MsgAnswer::ignore, MsgAnswer::abort, MsgAnswer::abort},
    {MsgButtons::yesNoCancel, MsgAnswer::yes, MsgAnswer::no, MsgAnswer::cancel},
    {MsgButtons::yesNo, MsgAnswer::yes, MsgAnswer::no, MsgAnswer::no},
    {MsgButtons::retryCancel, MsgAnswer::cancel, MsgAnswer::cancel, MsgAnswer::cancel},
};

MsgAnswer answerOf(const Choice& choice, ScriptedDesktop::Assume what) {
  if (what == ScriptedDesktop::Assume::yes) return choice.yes;
  return what == ScriptedDesktop::Assume::no ? choice.no : choice.cancel;
}

// Blank where nothing is left.
std::string takeFirst(std::deque<std::string>& answers) {
  if (answers.empty()) return "";
  std::string answer = std::move(answers.front());
  answers.pop_front();
  return answer;
}

}  // namespace

MsgAnswer ScriptedDesktop::messageBox(const Message& message) {
  MsgAnswer answer = defaultAnswer(message);
  if (!answers.empty()) {
    answer = answers.front();
    answers.pop_front();
  } else if (policy) {
    answer = policy(message);
  }
  shown_.push_back({message, answer});
  return answer;
}

void ScriptedDesktop::doEvents() {
  ++turns_;
  if (onTurn) onTurn();
}

void ScriptedDesktop::popupMenu(Menu& menu, const Widget* below) {
  menusShown_.push_back(&menu);
  menuPlaces_.push_back(below);
}

void ScriptedDesktop::showModal(Form& form) {
  formsShown_.push_back(form.name());
  form.setVisible(true);
  form.userActivated();
  if (const auto user = onModal.find(form.name()); user != onModal.end()) user->second(form);
  if (form.visible()) form.userClose();
  // A form may refuse to be closed; nobody is here to be asked again.
  form.hide();
}

void ScriptedDesktop::showModeless(Form& form, Activation) {
  formsShown_.push_back(form.name() + " (modeless)");
  form.setVisible(true);
  form.userActivated();
}

std::string ScriptedDesktop::inputBox(const std::string& prompt, const std::string& title, const std::string& text) {
  asked_.push_back({prompt, title, text});
  return takeFirst(inputs);
}

std::string ScriptedDesktop::openFiles(const OpenFiles& request) {
  openDialogs_.push_back(request);
  return takeFirst(filesToOpen);
}

std::string ScriptedDesktop::saveFile(const SaveFile& request) {
  saveDialogs_.push_back(request);
  return withExtension(takeFirst(filesToSave), request.extension);
}

ScriptedDesktop::Policy ScriptedDesktop::assume(Assume what) {
  return [what](const Message& message) {
    for (const Choice& choice : kChoices) {
      if (choice.buttons == message.buttons) return answerOf(choice, what);
    }
    return defaultAnswer(message);
  };
}

}  // namespace vantrelix
