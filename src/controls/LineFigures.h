// The length, the unit, the frequency and the loss of a line control: how each follows the others.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "foundation/Value.h"
#include "ui/widgets.h"

namespace vantrelix {

// The named format in which a number keeps two places that are not zero: "0.00" from 1 on, below it two places and one
// more for each power of ten begun, "#0.00" for 0.
std::string FreqFormat(double number);

// The units of a length: "ft", "in", "m", "cm". The first is that of a user who has not chosen one.
const std::vector<std::string>& lengthUnits();

// Keeps a choice of the user in a section of the defaults file; where that cannot be done, the support log tells.
void keepLineChoice(const char* section, const char* key, const std::string& value);

// Works on the widgets of a control, in which alone the values live; the control outlives it.
class LineFigures {
 public:
  struct Widgets {
    TextBox &file, &id, &len;
    DropDownList& unit;
    TextBox& loss;
    Label& freq;
  };
  // `section` of the user's defaults file holds the unit chosen last, key "Units".
  LineFigures(Widgets widgets, const char* section);

  double frequency() const { return frequency_; }  // MHz; -88 while there is none
  void setFrequency(double megahertz) { frequency_ = megahertz; }
  // With its label: "Invalid Freq" for null.
  void showFrequency(const Value& value);

  // Selects the user's default, "ft" where none is kept; the length stays.
  void startUnit();
  // Selects the unit, in its own spelling or in capitals, or the user's default where the text is no unit. True where
  // another one is selected now: the control then takes it as the user's own choice.
  bool selectUnit(const Value& value);
  // Another unit was chosen: brings the length to it, unless the control is being filled, and keeps it as the default.
  void unitChosen(bool loading);

  // Two decimals; text that is no number stays.
  void formatLength();

  // Computes the loss anew and shows it; what stands against it goes to `alert`, a failure to its report. Nothing is
  // computed without a file, an ID or a unit, for a length below 0 or a frequency below 1 MHz; a length of 0 loses
  // nothing. A message that is shown meanwhile lets the host drop the control: `alive` tells whether it still is.
  void refresh(const std::function<bool()>& alive, const std::function<void(const std::string&)>& alert);

 private:
  struct Loss {
    std::optional<std::string> text;  // to be shown; blank where there is none, nothing where the one shown stands
    std::string alert;                // what stands against it
  };
  Loss computed() const;
  void selectDefault();

  Widgets widgets_;
  const char* section_;
  double frequency_;
  std::string sLastUnit_;
};

}  // namespace vantrelix
