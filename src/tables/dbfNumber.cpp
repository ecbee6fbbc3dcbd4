#include "tables/dbfNumber.h"

#include <charconv>
#include <cmath>
#include <cstdint>

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
  for (; decimals >= 0; --decimals) {
    std::string digits = fixedDecimals(value, decimals);
    if (digits.size() <= width) return std::string(width - digits.size(), ' ') + digits;
  }
  return std::nullopt;
}

}  // namespace vantrelix::dbf
