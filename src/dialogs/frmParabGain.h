// The window that computes the gain of a dish; see getParabolaGain.h, which shows it.
//
// The last inputs stand in key "Parabola" of section "HDAntenna" of the user's defaults file: the diameter, "|" and the
// unit. What of it is missing, no number, or a unit that the list does not hold, gives way to "1|m".
#pragma once

#include <array>
#include <string>

#include "ui/Form.h"
#include "ui/widgets.h"

namespace vantrelix {

// Whatever changes the frequency, the diameter or the unit, the gain follows; it is " " where there is none. The boxes
// take digits and the decimal character; what stands in them is read by CValP.
class frmParabGain : public Form {
 public:
  frmParabGain();

  enum Box : std::size_t { frequency, diameter, gain };
  enum Button : std::size_t { continuing, cancelling };

  Frame Frame1{"Frame1"};
  std::array<Label, 3> Label1{Label{"Label1_0"}, Label{"Label1_1"}, Label{"Label1_2"}};
  std::array<TextBox, 3> Text1{TextBox{"Text1_0"}, TextBox{"Text1_1"}, TextBox{"Text1_2"}};
  DropDownList Combo1{"Combo1"};  // the unit of the diameter
  // Enter, which keeps the inputs for the next time; Escape and the window's frame, which do not.
  std::array<CommandButton, 2> Command1{CommandButton{"Command1_0"}, CommandButton{"Command1_1"}};

  // Whether it was left, or is still to be left, otherwise than by "Continue".
  bool cancelled() const { return cancelled_; }

 private:
  void nameWidgets();
  void listen();
  void readLast();
  void keepLast() const;
  void showGain();
  void leave(bool cancelled);
  double number(Box box) const;

  bool cancelled_ = true;
};

}  // namespace vantrelix
