// Numbers that the placement of windows and the layout of grids find in a file that anyone may have edited.
#pragma once

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>

#include "foundation/numbers.h"

namespace vantrelix {

// The nearest whole number of a text, as leniently as CValP reads one; nothing where the text holds none. Kept where
// sums and products of a few of them hold in an int.
inline std::optional<int> storedNumber(std::string_view text) {
  constexpr double kLargest = 1e8;
  const double number = CValP(text);
  if (number == 0 && !isNumeric(text)) return std::nullopt;
  return static_cast<int>(roundHalfEven(std::clamp(number, -kLargest, kLargest)));
}

}  // namespace vantrelix
