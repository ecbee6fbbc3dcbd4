#include "tables/dbfNumber.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "foundation/millionths.h"
#include "foundation/numbers.h"

namespace vantrelix::dbf {

namespace {

// Powers of ten that a double holds exactly.
constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                              1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int kExactDigits = 15;
constexpr int kExactPower = 22;

bool isPadding(char character) { return character == ' ' || character == '\0' || character == '\t'; }
bool isDigit(char character) { return character >= '0' && character <= '9'; }

struct Scan {
  const char* at;
  const char* end;
  std::uint64_t mantissa = 0;
  int significant = 0;  // digits in the mantissa, leading zeros left out
  int digits = 0;
  int scale = 0;  // power of ten of the mantissa's last digit

  void takeDigits(bool behindPoint) {
    for (; at != end && isDigit(*at); ++at) {
      ++digits;
      if (significant > 0 || *at != '0') ++significant;
      if (significant <= kExactDigits) mantissa = mantissa * 10 + static_cast<std::uint64_t>(*at - '0');
      if (behindPoint) --scale;
    }
  }

  bool takeExponent() {
    if (at == end || (*at != 'E' && *at != 'e')) return true;
    ++at;
    const bool negative = at != end && *at == '-';
    if (at != end && (*at == '-' || *at == '+')) ++at;
    if (at == end) return false;
    int exponent = 0;
    for (; at != end && isDigit(*at); ++at) exponent = exponent < 10000 ? exponent * 10 + (*at - '0') : exponent;
    scale += negative ? -exponent : exponent;
    return at == end;
  }
};

std::optional<double> slowNumber(const char* first, const char* last) {
  double value = 0;
  const auto [end, error] = std::from_chars(first, last, value);
  if (error != std::errc() || end != last) return std::nullopt;
  return value;
}

std::optional<double> magnitude(const char* first, const char* last) {
  Scan scan{first, last};
  scan.takeDigits(false);
  if (scan.at != last && *scan.at == '.') {
    ++scan.at;
    scan.takeDigits(true);
  }
  if (scan.digits == 0 || !scan.takeExponent() || scan.at != last) return std::nullopt;
  if (scan.significant > kExactDigits || std::abs(scan.scale) > kExactPower) return slowNumber(first, last);
  const auto whole = static_cast<double>(scan.mantissa);
  return scan.scale < 0 ? whole / kPowers[-scan.scale] : whole * kPowers[scan.scale];
}

// The whole number of units of the last decimal that the value's text of 15 digits is rounded to, without its sign.
// Nothing where that is not plain from the value itself: the text is off the value by half a unit of its 15th digit at
// most, which is 5e-15 of it, so that only a value so near to a half may be rounded to either side.
std::optional<std::uint64_t> plainUnits(double value, int decimals) {
  constexpr double kLargest = 1e12;
  constexpr double kDoubtful = 1e-14;
  constexpr int kMostDecimals = 18;  // whose units an integer holds
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

std::optional<double> parseNumber(std::string_view bytes) {
  const char* first = bytes.data();
  const char* last = first + bytes.size();
  while (first != last && isPadding(*first)) ++first;
  while (first != last && isPadding(last[-1])) --last;
  // "0   . " is a nought typed into an empty form of the number; the point is the form's.
  while (last - first > 1 && (isPadding(last[-1]) || (last[-1] == '.' && isPadding(last[-2])))) --last;
  if (first == last) return std::nullopt;
  const bool negative = *first == '-';
  if (negative || *first == '+') ++first;
  const std::optional<double> value = magnitude(first, last);
  // A negative nought is nought.
  if (!value || !negative || *value == 0) return value;
  return -*value;
}

std::optional<DigitsField> DigitsField::of(const DbfField& field) {
  if ((field.type != 'N' && field.type != 'F') || field.nullBit >= 0 || field.width <= 0) return std::nullopt;
  constexpr int kMostDecimals = 7;
  DigitsField result;
  result.offset_ = static_cast<std::size_t>(field.offset);
  result.width_ = static_cast<std::size_t>(field.width);
  const int whole = field.decimals > 0 ? field.width - field.decimals - 1 : field.width;
  result.usual_ = std::endian::native == std::endian::little && field.width >= 8 && whole > 0 && field.decimals >= 0 &&
                  field.decimals <= kMostDecimals;
  if (!result.usual_) return result;
  result.whole_ = static_cast<unsigned>(whole);
  result.decimals_ = static_cast<unsigned>(field.decimals);
  result.skipped_ = static_cast<unsigned>(std::max(whole - 8, 0));
  const int missing = 8 * std::max(8 - whole, 0);
  result.shift_ = static_cast<unsigned>(missing);
  if (missing > 0) result.padding_ = ' ' * kEachByte >> (64 - missing);
  if (field.decimals > 0) {
    result.decimalBytes_ = ~std::uint64_t{0} << (64 - 8 * field.decimals);
    result.blankBytes_ = ~std::uint64_t{0} >> (64 - 8 * field.decimals);
  }
  result.leastBehind_ = 8 * std::max(field.decimals, 1);
  result.divisor_ = kPowers[field.decimals];
  return result;
}

bool DigitsField::readAny(const unsigned char* at, double& number) const {
  const std::optional<double> any = parseNumber({reinterpret_cast<const char*>(at), width_});
  number = any.value_or(0);
  return any.has_value();
}

bool DigitsField::readEach(const unsigned char* records, std::size_t length, std::vector<double>& numbers) const {
  const DigitsField field = *this;  // its members cannot change by what is written
  bool all = true;
  for (double& number : numbers) {
    all = field.read(records, number) && all;
    records += length;
  }
  return all;
}

void DigitsField::readAll(const std::vector<const unsigned char*>& records, std::vector<double>& numbers) const {
  const std::size_t before = numbers.size();
  numbers.resize(before + records.size());
  const DigitsField field = *this;  // its members cannot change by what is written
  double* next = numbers.data() + before;
  for (const unsigned char* const record : records) {
    double number = 0;
    const bool there = field.read(record, number);
    *next = number;
    next += there ? 1 : 0;
  }
  numbers.resize(static_cast<std::size_t>(next - numbers.data()));
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
