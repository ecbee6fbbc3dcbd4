// A desktop without a screen: answers from a script, then by a policy, and keeps every message in order.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "ui/Desktop.h"
#include "ui/ScriptedMonitors.h"

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
  // Turns without input; not among those above.
  int quietTurns() const { return quietTurns_; }
  const std::vector<Menu*>& menusShown() const { return menusShown_; }
  // The widget below which each of them came up; null for the pointer.
  const std::vector<const Widget*>& menuPlaces() const { return menuPlaces_; }
  // Runs at each turn of the event loop that takes input: where a test lets "the user" act meanwhile.
  std::function<void()> onTurn;

  // What "the user" does in a form that is shown modally, by the form's name; a form that it leaves open is closed by
  // its frame, and so is one without an entry.
  std::map<std::string, std::function<void(Form&)>> onModal;
  // Names of the forms shown, in order; those not modal with " (modeless)" behind.
  const std::vector<std::string>& formsShown() const { return formsShown_; }
  // Answers to input boxes, in order; without one the box is cancelled.
  std::deque<std::string> inputs;
  struct Asked {
    std::string prompt, title, text;
  };
  const std::vector<Asked>& asked() const { return asked_; }
  // Answers to open dialogs, in order, as Desktop::openFiles gives them; without one the dialog is cancelled.
  std::deque<std::string> filesToOpen;
  const std::vector<OpenFiles>& openDialogs() const { return openDialogs_; }
  // Names typed into save dialogs, in order, as paths; without one the dialog is cancelled. Nobody is asked about a
  // file that exists.
  std::deque<std::string> filesToSave;
  const std::vector<SaveFile>& saveDialogs() const { return saveDialogs_; }
  ScriptedMonitors screens;

  MsgAnswer messageBox(const Message& message) override;
  void doEvents() override;
  void doEventsWithoutInput() override { ++quietTurns_; }
  using Desktop::popupMenu;
  void popupMenu(Menu& menu, const Widget* below) override;
  void showModal(Form& form) override;
  void showModeless(Form& form, Activation activation) override;
  std::string inputBox(const std::string& prompt, const std::string& title, const std::string& text) override;
  std::string openFiles(const OpenFiles& request) override;
  std::string saveFile(const SaveFile& request) override;
  std::string clipboardText() override { return clipboard_; }
  void setClipboardText(const std::string& text) override { clipboard_ = text; }
  MonitorPort& monitors() override { return screens; }

  // Always the button of that kind, as near as the message has it: yes (or OK), no (or Cancel), cancel (or No).
  enum class Assume { yes, no, cancel };
  static Policy assume(Assume what);

 private:
  std::vector<Shown> shown_;
  std::vector<Menu*> menusShown_;
  std::vector<const Widget*> menuPlaces_;
  std::vector<std::string> formsShown_;
  std::vector<Asked> asked_;
  std::vector<OpenFiles> openDialogs_;
  std::vector<SaveFile> saveDialogs_;
  std::string clipboard_;
  int turns_ = 0;
  int quietTurns_ = 0;
};

}  // namespace vantrelix
