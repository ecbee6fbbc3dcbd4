// The conversions from text to number of numbers.h.
#include <algorithm>
#include <charconv>
#include <iterator>
#include <limits>

#include "foundation/characters.h"
#include "foundation/numbers.h"
#include "foundation/regional.h"
#include "foundation/text.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {

namespace {

enum class Conversion { done, mismatch, overflow };

struct Converted {
  Conversion outcome = Conversion::mismatch;
  double value = 0;
};

// Walks over the text of a number and remembers whether it is written as std::from_chars wants it.
class NumberScanner {
 public:
  NumberScanner(std::string_view text, const RegionalCharacters& regional)
      : text_(text), decimal_(regional.decimalCharacter), separator_(regional.digitSeparator) {}

  bool scan() {
    if (at_ < text_.size() && (text_[at_] == '-' || text_[at_] == '+')) ++at_;
    int digits = wholePart();
    wholeEnd_ = at_;
    if (take(decimal_)) {
      hasDecimal_ = true;
      digits += skipDigits();
    }
    return digits > 0 && exponentPart() && at_ == text_.size();
  }

  bool isClean() const { return !hasSeparators_ && (!hasDecimal_ || decimal_ == "."); }

  std::string cleaned() const {
    std::string result;
    std::copy_if(text_.begin(), text_.begin() + static_cast<std::ptrdiff_t>(wholeEnd_), std::back_inserter(result),
                 [](char c) { return isDigit(c) || c == '-'; });
    if (hasDecimal_) result += '.';
    return result.append(text_.substr(wholeEnd_ + (hasDecimal_ ? decimal_.size() : 0)));
  }

 private:
  bool stands(std::string_view what) const { return !what.empty() && text_.substr(at_).starts_with(what); }

  bool take(std::string_view what) {
    if (!stands(what)) return false;
    at_ += what.size();
    return true;
  }

  int skipDigits() {
    const std::size_t begin = at_;
    while (at_ < text_.size() && isDigit(text_[at_])) ++at_;
    return static_cast<int>(at_ - begin);
  }

  int wholePart() {
    int digits = skipDigits();
    while (digits > 0 && !stands(decimal_) && take(separator_)) {
      hasSeparators_ = true;
      digits += skipDigits();
    }
    return digits;
  }

  bool exponentPart() {
    if (!take("E") && !take("e")) return true;
    if (!take("-")) take("+");
    return skipDigits() > 0;
  }

  std::string_view text_;
  std::string_view decimal_;
  std::string_view separator_;
  std::size_t at_ = 0;
  std::size_t wholeEnd_ = 0;
  bool hasDecimal_ = false;
  bool hasSeparators_ = false;
};

// Whether a number that no double can hold is too small for it rather than too large.
bool isTooSmall(std::string_view text) {
  const std::size_t mark = std::min(text.find_first_of("Ee"), text.size());
  const std::string_view mantissa = text.substr(0, mark);
  const auto point = static_cast<std::ptrdiff_t>(std::min(mantissa.find('.'), mark));
  const auto leading = static_cast<std::ptrdiff_t>(mantissa.find_first_of("123456789"));
  long exponent = 0;
  if (mark < text.size()) {
    const bool negative = text[mark + 1] == '-';
    const std::string_view digits = text.substr(mark + (isDigit(text[mark + 1]) ? 1 : 2));
    if (std::from_chars(digits.data(), digits.data() + digits.size(), exponent).ec != std::errc()) return negative;
    if (negative) exponent = -exponent;
  }
  return exponent < leading - point;
}

Converted convertClean(std::string_view text) {
  if (text.starts_with('+')) text.remove_prefix(1);
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc::result_out_of_range) {
    return isTooSmall(text) ? Converted{Conversion::done, 0} : Converted{Conversion::overflow, 0};
  }
  return {error == std::errc() && end == text.data() + text.size() ? Conversion::done : Conversion::mismatch, value};
}

Converted convertPlain(std::string_view text) {
  text = withoutOuter(text, " \t");
  NumberScanner scanner(text, regionalCharacters());
  if (!scanner.scan()) return {};
  return scanner.isClean() ? convertClean(text) : convertClean(scanner.cleaned());
}

bool fitsInteger(double rounded) {
  return rounded >= std::numeric_limits<std::int16_t>::min() && rounded <= std::numeric_limits<std::int16_t>::max();
}

}  // namespace

std::optional<double> plainNumber(std::string_view text) {
  const Converted result = convertPlain(text);
  return result.outcome == Conversion::done ? std::optional(result.value) : std::nullopt;
}

bool isNumeric(std::string_view text) { return plainNumber(text).has_value(); }

double CDbl(std::string_view text) {
  const Converted result = convertPlain(text);
  if (result.outcome == Conversion::done) return result.value;
  const std::string shown = "'" + leftCharacters(text, 60) + "'";
  if (result.outcome == Conversion::overflow) {
    throw RunTimeFailure(failure::overflow, "Overflow: " + shown + " is too large a number");
  }
  throw RunTimeFailure(failure::typeMismatch, "Type mismatch: " + shown + " is not a number");
}

double CValP(std::string_view text) {
  if (const auto number = plainNumber(text)) return *number;
  while (!text.empty() && !isDigit(text.back())) text.remove_suffix(1);
  return plainNumber(text).value_or(0);
}

double CValP(const Value& value) {
  if (value.isNull()) return 0;
  return value.isText() ? CValP(std::string_view(value.text())) : value.asNumber();
}

std::int16_t CIntP(std::string_view text) {
  const double rounded = roundHalfEven(CValP(text));
  return fitsInteger(rounded) ? static_cast<std::int16_t>(rounded) : std::int16_t{0};
}

std::int16_t CInt(double value) {
  const double rounded = roundHalfEven(value);
  if (fitsInteger(rounded)) return static_cast<std::int16_t>(rounded);
  throw RunTimeFailure(failure::overflow, "Overflow: " + generalText(value) + " does not fit a 16-bit integer");
}

}  // namespace vantrelix
