// Asks for a run of evenly spaced values.
#pragma once

#include <cstdint>
#include <string>

#include "foundation/Value.h"
#include "ui/Form.h"

namespace vantrelix {

// One line of the dialog. A caption is cut to 20 characters.
struct SeqValue {
  vantrelix::Value Value;  // in and out
  std::string Caption;
  bool HasMin = false;
  bool HasMax = false;
  vantrelix::Value MinValue;
  vantrelix::Value MaxValue;
};

// Shows the dialog over and over, each time with the values given, until what is entered is legal or the user cancels;
// only then the values are replaced, by the numbers entered. A place (twips) below 0 means the middle of the owner, or
// of the screen where that is null. An entry that holds no number counts as 0.
void GetSeqValues(const std::string& title, const Form* owner, std::int16_t left, std::int16_t top, SeqValue& start,
                  SeqValue& stop, SeqValue& step, bool& cancelled);

}  // namespace vantrelix
