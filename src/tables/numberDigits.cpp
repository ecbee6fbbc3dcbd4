#include "tables/numberDigits.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "foundation/millionths.h"
#include "foundation/numbers.h"

namespace vantrelix::dbf {

namespace {

// Those whose units an integer holds.
constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8, 1e9,
                              1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18};
constexpr int kMostDecimals = 18;

// The whole number of units of the last decimal that the value's text of 15 digits is rounded to, without its sign.
// Nothing where that is not plain from the value itself: the text is off the value by half a unit of its 15th digit at
// most, which is 5e-15 of it, so that only a value so near to a half may be rounded to either side.
std::optional<std::uint64_t> plainUnits(double value, int decimals) {
  constexpr double kLargest = 1e12;
  constexpr double kDoubtful = 1e-14;
  if (decimals > kMostDecimals) return std::nullopt;
  const double scaled = std::abs(value) * kPowers[decimals];
  if (!(scaled < kLargest)) return std::nullopt;
  const auto whole = static_cast<std::int64_t>(scaled);
  const double rest = scaled - static_cast<double>(whole);
  if (std::abs(rest - 0.5) <= kDoubtful * (scaled + 1)) return std::nullopt;
  return static_cast<std::uint64_t>(whole) + (rest > 0.5 ? 1 : 0);
}

// The same of a number of whole millionths, halves among them.
std::optional<std::uint64_t> unitsOfMillionths(double value, int decimals) {
  if (decimals > kMillionthsDecimals) return std::nullopt;
  const std::optional<std::int64_t> number = millionths(value);
  if (!number) return std::nullopt;
  const auto step = static_cast<std::uint64_t>(kPowers[kMillionthsDecimals - decimals]);
  return (static_cast<std::uint64_t>(std::abs(*number)) + step / 2) / step;
}

// "00" to "99" behind one another.
constexpr std::array<char, 200> kPairs = [] {
  std::array<char, 200> pairs{};
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    const std::size_t digit = i % 2 == 0 ? i / 20 : i / 2 % 10;
    pairs[i] = static_cast<char>('0' + digit);
  }
  return pairs;
}();

// The last two digits of a number before `end`; what is left of it behind them.
std::uint64_t putPair(std::uint64_t number, char* end) {
  std::memcpy(end - 2, &kPairs[2 * (number % 100)], 2);
  return number / 100;
}

// Writes from the last digit to the first. False, and nothing is written, where the field is too narrow.
bool putUnits(std::uint64_t units, bool negative, char* at, std::size_t width, int decimals) {
  std::array<char, 48> digits;
  char* const end = digits.data() + digits.size();
  char* first = end;
  const auto unit = static_cast<std::uint64_t>(kPowers[decimals]);
  std::uint64_t whole = units / unit;
  std::uint64_t fraction = units % unit;
  int left = decimals;
  for (; left > 1; left -= 2, first -= 2) fraction = putPair(fraction, first);
  if (left > 0) *--first = static_cast<char>('0' + fraction);
  if (decimals > 0) *--first = '.';
  for (; whole > 9; first -= 2) whole = putPair(whole, first);
  if (whole > 0 || first == end || *first == '.') *--first = static_cast<char>('0' + whole);
  if (negative) *--first = '-';
  const auto length = static_cast<std::size_t>(end - first);
  if (length > width) return false;
  std::memset(at, ' ', width - length);
  std::memcpy(at + width - length, first, length);
  return true;
}

bool putText(double value, char* at, std::size_t width, int decimals) {
  const std::string digits = fixedDecimals(value, decimals);
  if (digits.size() > width) return false;
  std::fill_n(at, width - digits.size(), ' ');
  std::copy(digits.begin(), digits.end(), at + width - digits.size());
  return true;
}

bool putRounded(double value, char* at, std::size_t width, int decimals) {
  std::optional<std::uint64_t> units = plainUnits(value, decimals);
  if (!units) units = unitsOfMillionths(value, decimals);
  return units ? putUnits(*units, value < 0 && *units > 0, at, width, decimals) : putText(value, at, width, decimals);
}

}  // namespace

// Little-endian alone has the first of eight bytes in the lowest.
DigitsForm::DigitsForm(std::size_t width, int decimals) : width_(width), decimals_(decimals) {
  constexpr int kMostOfFew = 6;
  if (std::endian::native != std::endian::little || width < 8 || decimals < 1 || decimals > kMostOfFew) return;
  power_ = kPowers[decimals];
  decimalBits_ = 8 * decimals;
  tailBits_ = decimalBits_ + 8;
  pointBits_ = 64 - tailBits_;
  room_ = width - 1 - static_cast<std::size_t>(decimals);
  roomBits_ = static_cast<int>(8 * std::min<std::size_t>(room_, 8));
  cutBits_ = 64 - roomBits_;
  mostNoughts_ = 7 - decimals;
  leastNoughts_ = std::max(0, 8 - decimals - static_cast<int>(std::min<std::size_t>(room_, 8)));
  for (int noughts = 1; noughts <= mostNoughts_; ++noughts) {
    const int bits = 8 * (noughts + decimals);
    const std::uint64_t outside = ~std::uint64_t{0} >> (64 - bits);
    const std::uint64_t blank = (' ' * kEachByte & outside) | ('0' * kEachByte & ~outside);
    before_[0][static_cast<std::size_t>(noughts)] = blank;
    before_[1][static_cast<std::size_t>(noughts)] = blank ^ std::uint64_t{' ' ^ '-'} << (bits - 8);
  }
}

bool putDigits(double value, char* at, std::size_t width, int decimals) {
  if (!std::isfinite(value)) return false;
  for (; decimals >= 0; --decimals) {
    if (putRounded(value, at, width, decimals)) return true;
  }
  return false;
}

std::optional<std::string> numberDigits(double value, std::size_t width, int decimals) {
  std::string digits(width, ' ');
  if (!putDigits(value, digits.data(), width, decimals)) return std::nullopt;
  return digits;
}

}  // namespace vantrelix::dbf
