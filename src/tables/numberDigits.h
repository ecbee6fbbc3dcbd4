// Numbers written as the digits of a fixed-width field.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>

namespace vantrelix::dbf {

// The digits that fill a field: rounded half away from zero on the number's text of 15 digits, right-aligned. Fewer
// decimals where the whole part needs the room; nothing where even the whole part does not fit or there is no such
// number.
std::optional<std::string> numberDigits(double value, std::size_t width, int decimals);
// The same into `width` bytes. False, and nothing is written, where there are no such digits.
bool putDigits(double value, char* at, std::size_t width, int decimals);

// putDigits for the many numbers of one field.
class DigitsForm {
 public:
  DigitsForm() = default;
  DigitsForm(std::size_t width, int decimals);

  bool put(double value, char* at) const { return putFew(value, at) || putDigits(value, at, width_, decimals_); }

 private:
  static constexpr std::uint64_t kEachByte = 0x0101010101010101;
  static constexpr double kMost = 9'999'999;

  // A number below 1e8 as its eight digits, each a byte from 0 to 9, the first in the lowest.
  static std::uint64_t eightDigits(std::uint64_t number) {
    const std::uint64_t fours = number / 10000 | number % 10000 << 32;
    const std::uint64_t hundreds = fours * 10486 >> 20 & 0x0000007F0000007F;  // exact for four digits
    const std::uint64_t pairs = hundreds + ((fours - 100 * hundreds) << 16);
    const std::uint64_t tens = pairs * 103 >> 10 & 0x000F000F000F000F;  // exact for two digits
    return tens + ((pairs - 10 * tens) << 8);
  }

  // A number as fields usually hold it: up to seven digits in all. False, and nothing is written, for any other, and
  // for one so near to a half of its last decimal that its text of 15 digits decides.
  bool putFew(double value, char* at) const {
    constexpr double kHalf = 0.5, kNearHalf = 1e-7;
    const double scaled = std::abs(value) * power_;
    if (!(scaled < kMost)) return false;
    const auto units = static_cast<std::int32_t>(scaled + kHalf);
    if (std::abs(scaled - units) > kHalf - kNearHalf) return false;
    const std::uint64_t digits = eightDigits(static_cast<std::uint32_t>(units));
    const int noughts = std::min(std::countr_zero(digits) >> 3, mostNoughts_);
    const bool negative = value < 0 && units > 0;
    if (noughts < leastNoughts_ + (negative ? 1 : 0)) return false;
    // What stands before the point, in eight bytes; the point and what stands behind it.
    const std::uint64_t whole = digits << decimalBits_ | before_[negative ? 1 : 0][static_cast<std::size_t>(noughts)];
    const std::uint64_t tail = ((digits | '0' * kEachByte) >> pointBits_ & ~std::uint64_t{0xFF}) | '.';
    if (room_ < 8) {
      store(at, whole >> cutBits_ | tail << roomBits_);
    } else {
      std::memset(at, ' ', room_ - 8);
      store(at + room_ - 8, whole);
    }
    store(at + width_ - 8, whole >> tailBits_ | tail << pointBits_);
    return true;
  }

  static void store(char* at, std::uint64_t bytes) { std::memcpy(at, &bytes, sizeof bytes); }

  std::size_t width_ = 0;
  int decimals_ = 0;
  double power_ = HUGE_VAL;  // of ten, that makes the decimals whole; endless where putFew is for no number
  std::size_t room_ = 0;     // bytes before the point
  // Of the bits of eight bytes: those of the room, of the decimals, and of these with the point; and the others.
  int roomBits_ = 0;
  int cutBits_ = 0;  // but for roomBits_
  int decimalBits_ = 0;
  int tailBits_ = 0;
  int pointBits_ = 0;     // but for tailBits_
  int mostNoughts_ = 0;   // before the first digit that is written, of eight
  int leastNoughts_ = 0;  // so that there is room for the others
  // By the sign and those noughts: blanks and the sign before the digits, noughts in the place of these.
  std::array<std::array<std::uint64_t, 8>, 2> before_{};
};

}  // namespace vantrelix::dbf
