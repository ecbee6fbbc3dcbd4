#include "tables/SqlCompare.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <tuple>

#include "foundation/dateTime.h"
#include "foundation/text.h"

namespace vantrelix {

namespace {

template <class T>
int threeWay(const T& a, const T& b) {
  return a < b ? -1 : (b < a ? 1 : 0);
}

bool isAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

char asciiUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

int compareFolded(std::string_view a, std::string_view b) {
  if (!isAscii(a) || !isAscii(b)) return threeWay(upperCase(a), upperCase(b));
  const std::size_t common = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < common; ++i) {
    if (const int order = threeWay(asciiUpper(a[i]), asciiUpper(b[i])); order != 0) return order;
  }
  return threeWay(a.size(), b.size());
}

auto dateParts(const DateTime& d) { return std::make_tuple(d.year, d.month, d.day, d.hour, d.minute, d.second); }

// Numbers, booleans and texts that say one; nothing else.
std::optional<double> numberOf(const Value& value) {
  if (value.isNumber()) return value.number();
  if (value.isBoolean()) return value.boolean() ? -1.0 : 0.0;
  if (value.isText()) return sqlNumber(value.text());
  return std::nullopt;
}

std::optional<double> truthOf(const Value& value) {
  if (value.isText()) {
    const std::string word = trim(value.text());
    if (equalIgnoringCase(word, "true")) return -1.0;
    if (equalIgnoringCase(word, "false")) return 0.0;
  }
  return numberOf(value);
}

std::optional<DateTime> dateOf(const Value& value) {
  if (value.isDate()) return value.date();
  return value.isText() ? sqlDate(value.text()) : std::nullopt;
}

template <class T>
std::optional<int> threeWayOf(const std::optional<T>& a, const std::optional<T>& b) {
  if (!a || !b) return std::nullopt;
  return threeWay(*a, *b);
}

// Reads numbers and separators of a date from the front of a text.
class DateReader {
 public:
  explicit DateReader(std::string_view text) : rest_(text) {}

  bool atEnd() const { return rest_.empty(); }
  void skipBlanks() {
    while (!rest_.empty() && rest_.front() == ' ') rest_.remove_prefix(1);
  }
  bool take(char c) {
    if (rest_.empty() || rest_.front() != c) return false;
    rest_.remove_prefix(1);
    return true;
  }
  std::optional<int> number(std::size_t digits) {
    std::size_t length = 0;
    while (length < rest_.size() && rest_[length] >= '0' && rest_[length] <= '9') ++length;
    if (length == 0 || length > digits) return std::nullopt;
    int value = 0;
    std::from_chars(rest_.data(), rest_.data() + length, value);
    rest_.remove_prefix(length);
    return value;
  }
  std::string_view rest() const { return rest_; }

 private:
  std::string_view rest_;
};

bool readDay(DateReader& reader, DateTime& date) {
  const auto first = reader.number(4);
  const char separator = reader.take('/') ? '/' : (reader.take('-') ? '-' : '\0');
  const auto second = reader.number(2);
  if (!first || separator == '\0' || !second || !reader.take(separator)) return false;
  const auto third = reader.number(4);
  if (!third) return false;
  const bool yearFirst = separator == '-';
  date.year = yearFirst ? *first : *third;
  date.month = yearFirst ? *second : *first;
  date.day = yearFirst ? *third : *second;
  return date.year >= 100 && isValidDate(date.year, date.month, date.day);
}

bool readTime(DateReader& reader, DateTime& date) {
  const auto hour = reader.number(2);
  if (!hour || !reader.take(':')) return false;
  const auto minute = reader.number(2);
  const auto second = reader.take(':') ? reader.number(2) : std::optional<int>(0);
  if (!minute || !second) return false;
  reader.skipBlanks();
  const bool morning = equalIgnoringCase(reader.rest(), "am");
  const bool evening = equalIgnoringCase(reader.rest(), "pm");
  const bool twelve = morning || evening;
  if (!reader.atEnd() && !twelve) return false;
  if (twelve && (*hour < 1 || *hour > 12)) return false;
  date.hour = twelve ? *hour % 12 + (evening ? 12 : 0) : *hour;
  date.minute = *minute;
  date.second = *second;
  return date.hour < 24 && date.minute < 60 && date.second < 60;
}

std::size_t characterLength(std::string_view text, std::size_t at) {
  std::size_t length = 1;
  while (at + length < text.size() && (static_cast<unsigned char>(text[at + length]) & 0xC0) == 0x80) ++length;
  return length;
}

}  // namespace

std::string_view withoutPadding(std::string_view text) {
  // A field is mostly wider than its text: eight at a time.
  constexpr std::uint64_t blanks = ' ' * std::uint64_t{0x0101010101010101};
  for (std::uint64_t last = 0; text.size() >= sizeof last; text.remove_suffix(sizeof last)) {
    std::memcpy(&last, text.data() + text.size() - sizeof last, sizeof last);
    if ((last & ~blanks) != 0) break;
  }
  while (!text.empty() && (text.back() == ' ' || text.back() == '\0')) text.remove_suffix(1);
  return text;
}

int compareText(std::string_view a, std::string_view b) {
  const std::string_view left = withoutPadding(a);
  const std::string_view right = withoutPadding(b);
  const int folded = compareFolded(left, right);
  return folded != 0 ? folded : threeWay(left, right);
}

std::optional<int> compareValues(const Value& a, const Value& b) {
  if (a.isNull() || b.isNull()) return std::nullopt;
  if (a.isText() && b.isText()) return compareText(a.text(), b.text());
  if (a.isDate() || b.isDate()) {
    const auto left = dateOf(a);
    const auto right = dateOf(b);
    if (!left || !right) return std::nullopt;
    return threeWay(dateParts(*left), dateParts(*right));
  }
  if (a.isBoolean() || b.isBoolean()) return threeWayOf(truthOf(a), truthOf(b));
  return threeWayOf(numberOf(a), numberOf(b));
}

std::optional<double> sqlNumber(std::string_view text) {
  text = withoutPadding(text);
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  if (text.size() > 1 && text.front() == '+' && text[1] != '-') text.remove_prefix(1);
  double value = 0;
  // "inf" and "nan", which from_chars takes, are no numbers here.
  if (text.find_first_not_of("0123456789.+-eE") != std::string_view::npos) return std::nullopt;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

double sqlLeadingNumber(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
  text = text.substr(0, text.find_first_not_of("0123456789.+-eE"));
  if (text.size() > 1 && text.front() == '+' && text[1] != '-') text.remove_prefix(1);
  double value = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  return result.ec == std::errc() ? value : 0;
}

std::optional<DateTime> sqlDate(std::string_view text) {
  const std::string trimmed = trim(withoutPadding(text));
  DateReader reader(trimmed);
  DateTime date;
  if (!readDay(reader, date)) return std::nullopt;
  if (reader.atEnd()) return date;
  if (!reader.take(' ') && !reader.take('T')) return std::nullopt;
  reader.skipBlanks();
  if (!readTime(reader, date)) return std::nullopt;
  return date;
}

bool matchesPattern(std::string_view text, std::string_view pattern) {
  const std::string foldedText = upperCase(withoutPadding(text));
  const std::string foldedPattern = upperCase(pattern);
  std::size_t at = 0;
  std::size_t want = 0;
  std::size_t star = std::string::npos;  // behind the last "*" met
  std::size_t retry = 0;                 // where the text went on behind it
  while (at < foldedText.size()) {
    const char wanted = want < foldedPattern.size() ? foldedPattern[want] : '\0';
    if (want < foldedPattern.size() && (wanted == '*' || wanted == '%')) {
      star = ++want;
      retry = at;
    } else if (want < foldedPattern.size() && (wanted == '?' || wanted == '_')) {
      at += characterLength(foldedText, at);
      ++want;
    } else if (want < foldedPattern.size() && wanted == foldedText[at]) {
      ++at;
      ++want;
    } else if (star != std::string::npos) {
      at = retry += characterLength(foldedText, retry);
      want = star;
    } else {
      return false;
    }
  }
  while (want < foldedPattern.size() && (foldedPattern[want] == '*' || foldedPattern[want] == '%')) ++want;
  return want == foldedPattern.size();
}

}  // namespace vantrelix
