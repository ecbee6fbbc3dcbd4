#include "foundation/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>

#include "foundation/characters.h"
#include "foundation/errHand.h"
#include "foundation/hostProgram.h"
#include "foundation/messages.h"
#include "foundation/millionths.h"
#include "foundation/regional.h"
#include "foundation/text.h"
#include "foundation/utf8.h"

namespace vantrelix {

namespace {

// ---- Text from numbers ----

constexpr int kSignificantDigits = 15;

// A number as 0.d1d2d3... times ten to the power of `point`, without zeros at its end. Zero has no digits.
struct Decimal {
  bool negative = false;
  std::array<char, kSignificantDigits> digits{};
  int count = 0;
  int point = 0;

  char digit(int index) const { return index >= 0 && index < count ? digits[static_cast<std::size_t>(index)] : '0'; }

  void dropZeros() {
    while (count > 0 && digits[static_cast<std::size_t>(count) - 1] == '0') --count;
    if (count == 0) *this = Decimal();
  }
};

// Of so many millionths, fewer than 1e15.
Decimal decimalOfMillionths(std::int64_t number) {
  Decimal result;
  result.negative = number < 0;
  char* const begin = result.digits.data();
  result.count = static_cast<int>(std::to_chars(begin, begin + kSignificantDigits, std::abs(number)).ptr - begin);
  result.point = result.count - kMillionthsDecimals;
  result.dropZeros();
  return result;
}

Decimal decimalOf(double value) {
  if (const auto number = millionths(value)) return decimalOfMillionths(*number);
  std::array<char, 32> buffer;
  const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::abs(value),
                                          std::chars_format::scientific, kSignificantDigits - 1);
  Decimal result;
  result.negative = value < 0;
  const char* at = buffer.data();
  for (; at != end && *at != 'e'; ++at) {
    if (isDigit(*at)) result.digits[static_cast<std::size_t>(result.count++)] = *at;
  }
  ++at;
  if (at != end && *at == '+') ++at;
  std::from_chars(at, end, result.point);
  ++result.point;
  result.dropZeros();
  return result;
}

void increment(Decimal& number) {
  int at = number.count - 1;
  for (; at >= 0 && number.digits[static_cast<std::size_t>(at)] == '9'; --at) {
    number.digits[static_cast<std::size_t>(at)] = '0';
  }
  if (at >= 0) {
    ++number.digits[static_cast<std::size_t>(at)];
    return;
  }
  number.digits[0] = '1';
  number.count = 1;
  ++number.point;
}

// Rounds half away from zero to so many decimals.
void roundDecimals(Decimal& number, int decimals) {
  const int kept = number.point + decimals;
  if (kept >= number.count) return;
  if (kept < 0) {
    number = Decimal();
    return;
  }
  const bool up = number.digit(kept) >= '5';
  number.count = kept;
  if (up) increment(number);
  number.dropZeros();
}

// A named format: literal text around one run of "0", "#", "," and ".".
struct NamedFormat {
  std::string_view prefix;
  std::string_view suffix;
  int leastWhole = 0;
  int leastDecimals = 0;
  int mostDecimals = 0;
  bool grouped = false;
  bool point = false;
  bool known = false;
};

void addPlaceholder(NamedFormat& result, char c) {
  if (c == '.') {
    result.point = true;
  } else if (c == ',') {
    result.grouped = result.grouped || !result.point;
  } else if (result.point) {
    ++result.mostDecimals;
    if (c == '0') result.leastDecimals = result.mostDecimals;
  } else if (c == '0' || result.leastWhole > 0) {
    ++result.leastWhole;
  }
}

NamedFormat parseFormat(std::string_view format) {
  NamedFormat result;
  const std::size_t begin = format.find_first_of("0#");
  if (begin == std::string_view::npos) return result;
  result.known = true;
  std::size_t start = begin;
  if (start > 0 && format[start - 1] == '.') --start;
  std::size_t end = start;
  for (; end < format.size() && std::string_view("0#,.").find(format[end]) != std::string_view::npos; ++end) {
    if (format[end] == '.' && result.point) break;
    addPlaceholder(result, format[end]);
  }
  result.prefix = format.substr(0, start);
  result.suffix = format.substr(end);
  return result;
}

void appendWhole(std::string& text, const Decimal& number, int least, std::string_view separator) {
  const int length = std::max(number.point, least);
  for (int left = length; left > 0; --left) {
    text += number.digit(number.point - left);
    if (left > 1 && left % 3 == 1) text += separator;
  }
}

void appendDecimals(std::string& text, const Decimal& number, const NamedFormat& format) {
  const int used = std::clamp(number.count - number.point, format.leastDecimals, format.mostDecimals);
  for (int i = 0; i < used; ++i) text += number.digit(number.point + i);
}

std::string render(double value, const NamedFormat& format, std::string_view decimal, std::string_view separator) {
  Decimal number = decimalOf(value);
  roundDecimals(number, format.mostDecimals);
  std::string text = number.negative ? "-" : "";
  text += format.prefix;
  appendWhole(text, number, format.leastWhole, format.grouped ? separator : std::string_view());
  if (format.point) text += decimal;
  appendDecimals(text, number, format);
  return text.append(format.suffix);
}

std::string infiniteText(double value) { return std::isnan(value) ? "nan" : value < 0 ? "-inf" : "inf"; }

std::string exponentText(const Decimal& number, std::string_view decimal) {
  std::string text(1, number.digit(0));
  if (number.count > 1) text += decimal;
  for (int i = 1; i < number.count; ++i) text += number.digit(i);
  const int exponent = number.point - 1;
  const std::string digits = std::to_string(std::abs(exponent));
  return text + (exponent < 0 ? "E-" : "E+") + (digits.size() < 2 ? "0" : "") + digits;
}

std::string fixedText(const Decimal& number, std::string_view decimal) {
  std::string text;
  appendWhole(text, number, 1, {});
  if (number.count > number.point) text += decimal;
  for (int i = number.point; i < number.count; ++i) text += number.digit(i);
  return text;
}

// ---- Keys ----

// Whether the key types the character that the text holds.
bool isKeyOf(int key, std::string_view character) {
  return !character.empty() && static_cast<char32_t>(key) == utf8CharacterAt(character, 0).code;
}

bool isOneOf(int key, std::string_view characters) {
  return key > 0 && key < 128 && characters.find(static_cast<char>(key)) != std::string_view::npos;
}

constexpr int kBackspace = 8;

std::string procedureLabel() {
  const int number = currentProcedure();
  if (number == 0) return "";
  const std::string name = procedureName(number);
  return name.empty() ? std::to_string(number) : name;
}

}  // namespace

double roundHalfEven(double value) {
  const double down = std::floor(value);
  const double rest = value - down;
  if (rest < 0.5) return down;
  if (rest > 0.5) return down + 1;
  return std::fmod(down, 2) == 0 ? down : down + 1;
}

std::string generalText(double value) {
  if (!std::isfinite(value)) return infiniteText(value);
  const Decimal number = decimalOf(value);
  const std::string& decimal = regionalCharacters().decimalCharacter;
  const bool exponentForm = number.count > 0 && (number.point < -3 || number.point > kSignificantDigits);
  return (number.negative ? "-" : "") + (exponentForm ? exponentText(number, decimal) : fixedText(number, decimal));
}

double generalNumber(double value) {
  if (const auto number = millionths(value)) return static_cast<double>(*number) / kMillion;
  return CDbl(generalText(value));
}

std::string formatNumber(double value, std::string_view format) {
  const NamedFormat parsed = parseFormat(format);
  if (!parsed.known || !std::isfinite(value)) return generalText(value);
  return render(value, parsed, regionalCharacters().decimalCharacter, regionalCharacters().digitSeparator);
}

std::string fixedDecimals(double value, int decimals) {
  if (!std::isfinite(value)) return infiniteText(value);
  NamedFormat format;
  format.leastWhole = 1;
  format.leastDecimals = format.mostDecimals = std::max(decimals, 0);
  format.point = decimals > 0;
  return render(value, format, ".", "");
}

double log10(double value) {
  if (value <= 0) {
    showInformation("Math Error", "Log 0 error in " + hostProgram().name + " Procedure " + procedureLabel() + " Flag " +
                                      std::to_string(GetFlag()) + kLineBreak + "Results may be incorrect.");
    return 0;
  }
  return std::log(value) / std::log(10.0);
}

double MinOf(std::initializer_list<double> values) { return std::min(values); }
double MaxOf(std::initializer_list<double> values) { return std::max(values); }

void chkNumeric(int& KeyAscii, bool decimalOK, bool minusOK, bool plusOK, bool digitSepOK, bool nsewOK, bool slashOK,
                bool spaceOK) {
  const RegionalCharacters& regional = regionalCharacters();
  const auto passes = [&](int key) {
    if (key == ' ') return nsewOK || spaceOK;
    if (slashOK && isOneOf(key, "\\/")) return true;
    if (nsewOK && isOneOf(key, "NSEWnsew")) return true;
    if (decimalOK && isKeyOf(key, regional.decimalCharacter)) return true;
    if (minusOK && key == '-') return true;
    if (plusOK && key == '+') return true;
    if (digitSepOK && isKeyOf(key, regional.digitSeparator)) return true;
    return isOneOf(key, "0123456789") || key == kBackspace;
  };
  if (!passes(KeyAscii)) KeyAscii = 0;
}

}  // namespace vantrelix
