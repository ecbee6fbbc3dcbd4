// The window of a message that its user can silence; see MsgBoxChk.h, which shows it.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "foundation/messages.h"
#include "ui/Form.h"
#include "ui/widgets.h"

namespace vantrelix {

// Button 0 answers 6, button 1 answers 7, button 2 answers 2 and button 3 answers 5, whatever their captions. Enter
// presses the button that has the keyboard, at first the default one. Escape and the window's frame press button 2
// where it is shown, else button 1 where it is shown, else the default button.
class frmMsgBoxChk : public Form {
 public:
  frmMsgBoxChk();

  Label Label1{"Label1"};  // the message
  CheckBox Check1{"Check1"};
  Label lblRestore{"lblRestore"};  // how to undo the tick; shown while it is set
  std::array<CommandButton, 4> Command1{CommandButton{"Command1(0)"}, CommandButton{"Command1(1)"},
                                        CommandButton{"Command1(2)"}, CommandButton{"Command1(3)"}};

  void SetButtonOne(const std::string& caption, const std::string& toolTip);
  void SetButtonTwo(bool visible, const std::string& caption, const std::string& toolTip);
  void SetButtonThree(bool visible, const std::string& caption, const std::string& toolTip);
  void SetButtonFour(bool visible, const std::string& caption, const std::string& toolTip);
  // Counted from 0. A number that names no visible button stands for button 0.
  void DefaultButton(int number);
  int DefaultButton() const { return defaultNumber_; }

  bool pressed() const { return pressed_.has_value(); }
  // The answer of the button that was pressed; of the default button until then.
  MsgAnswer answer() const { return pressed_ ? *pressed_ : answerOf(defaultIndex()); }

 private:
  static MsgAnswer answerOf(std::size_t button);
  void setButton(std::size_t button, bool visible, const std::string& caption, const std::string& toolTip);
  std::size_t defaultIndex() const;
  void followButtons();
  void press(std::size_t button);

  int defaultNumber_ = 0;
  std::optional<MsgAnswer> pressed_;
};

}  // namespace vantrelix
