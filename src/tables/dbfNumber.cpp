#include "tables/dbfNumber.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>

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

std::optional<std::string> digitsOfText(double value, std::size_t width, int decimals) {
  const std::string digits = fixedDecimals(value, decimals);
  if (digits.size() > width) return std::nullopt;
  return std::string(width - digits.size(), ' ') + digits;
}

// What digitsOfText gives for a number of whole millionths, in a fraction of its time: nearly every point of a pattern
// is one, and writing patterns is little else. Written from the last digit to the first.
std::optional<std::string> digitsOfMillionths(std::int64_t number, std::size_t width, int decimals) {
  const auto step = static_cast<std::int64_t>(kPowers[kMillionthsDecimals - decimals]);
  std::int64_t rest = (std::abs(number) + step / 2) / step;
  const bool negative = number < 0 && rest > 0;
  std::string text(width, ' ');
  std::size_t left = width;
  for (int place = 0; place <= decimals || rest > 0; ++place, rest /= 10) {
    const bool point = place == decimals && decimals > 0;
    if (left < (point ? 2U : 1U)) return std::nullopt;
    if (point) text[--left] = '.';
    text[--left] = static_cast<char>('0' + rest % 10);
  }
  if (negative && left == 0) return std::nullopt;
  if (negative) text[--left] = '-';
  return text;
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

std::optional<std::string> numberDigits(double value, std::size_t width, int decimals) {
  if (!std::isfinite(value)) return std::nullopt;
  const std::optional<std::int64_t> number = millionths(value);
  for (; decimals >= 0; --decimals) {
    std::optional<std::string> digits = number && decimals <= kMillionthsDecimals
                                            ? digitsOfMillionths(*number, width, decimals)
                                            : digitsOfText(value, width, decimals);
    if (digits) return digits;
  }
  return std::nullopt;
}

}  // namespace vantrelix::dbf
