// The short way to the decimal text of a number of few decimals, as measured values are.
#pragma once

#include <cmath>
#include <cstdint>
#include <optional>

namespace vantrelix {

inline constexpr int kMillionthsDecimals = 6;
inline constexpr double kMillion = 1e6;

// The number in millionths, where its text of 15 significant digits has no more than six decimals; then that text is
// exactly this whole number, and this number over a million is the double nearest to the text. Nothing where it has
// more decimals, where it is too large or where this cannot be told at once.
//
// With N the millionths and r = N / 1e6 correctly rounded, the text is N where |value - N / 1e6| is below half a unit
// of the 15th digit, which is at least 5e-16 |value|. |value - r| is exact, and r is off N / 1e6 by 1.2e-16 |r| at
// most.
inline std::optional<std::int64_t> millionths(double value) {
  constexpr double kLargest = 1e8;
  constexpr double kNear = 3.5e-16;
  if (!(std::abs(value) < kLargest)) return std::nullopt;
  const double scaled = value * kMillion;
  const auto whole = static_cast<std::int64_t>(scaled + std::copysign(0.5, scaled));
  if (!(std::abs(value - static_cast<double>(whole) / kMillion) <= kNear * std::abs(value))) return std::nullopt;
  return whole;
}

}  // namespace vantrelix
