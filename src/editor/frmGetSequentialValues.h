// The window that asks for start, stop and step; see getSeqValues.h, which shows it.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "ui/Form.h"
#include "ui/widgets.h"

namespace vantrelix {

// The boxes take digits, the decimal character and a minus. Enter in a box goes to the next one, in the last one it
// presses "Continue": for that the form has no default button.
class frmGetSequentialValues : public Form {
 public:
  explicit frmGetSequentialValues(const std::string& title);

  static constexpr std::size_t lineCount = 3;
  enum Button : std::size_t { continuing, cancelling };

  std::array<Label, lineCount> Label1{Label{"Label1_0"}, Label{"Label1_1"}, Label{"Label1_2"}};
  std::array<TextBox, lineCount> Text1{TextBox{"Text1_0"}, TextBox{"Text1_1"}, TextBox{"Text1_2"}};
  std::array<CommandButton, 2> Command1{CommandButton{"Command1_0"}, CommandButton{"Command1_1"}};

  // To be run before each showing: the first box gets the keyboard, and the form will stand as told in getSeqValues.h.
  void begin(const Form* owner, std::int16_t left, std::int16_t top);

  // Whether it was left, or is still to be left, otherwise than by "Continue".
  bool cancelled() const { return cancelled_; }

 private:
  void nameWidgets();
  void listen();
  void enter(std::size_t line);
  void leave(bool cancelled);

  const Form* owner_ = nullptr;
  bool centred_ = false;
  bool cancelled_ = true;
};

}  // namespace vantrelix
