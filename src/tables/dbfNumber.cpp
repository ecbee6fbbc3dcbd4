#include "tables/dbfNumber.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdlib>

#include "tables/digitFours.h"
#include "tables/digitPairs.h"

namespace vantrelix::dbf {

namespace {

// Powers of ten that a double holds exactly.
constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                              1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int kExactDigits = 15;
constexpr int kExactPower = 22;
// Records whose numbers are read together: where one is not of the usual shape, each of them is read by itself.
constexpr std::size_t kAtOnce = 64;

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

std::optional<DigitFours> DigitsField::fours() const {
  return usual_ ? DigitFours::of(static_cast<int>(width_), static_cast<int>(decimals_)) : std::nullopt;
}

std::optional<DigitPairs> DigitsField::pairs() const {
  return usual_ ? DigitPairs::of(static_cast<int>(width_), static_cast<int>(decimals_)) : std::nullopt;
}

// The numbers of so many records, two at least. False, and they are of no meaning, where one of them has another shape
// than the usual one.
template <class RecordAt>
bool DigitsField::readUsual(DigitPairs pair, const RecordAt& recordAt, std::size_t count, double* numbers) const {
  for (std::size_t row = 1; row < count; row += 2) {
    pair.read(recordAt(row - 1) + offset_, recordAt(row) + offset_, numbers + row - 1);
  }
  // The last one of an odd number once more with the one before it.
  if (count % 2 != 0) pair.read(recordAt(count - 2) + offset_, recordAt(count - 1) + offset_, numbers + count - 2);
  return pair.areUsual();
}

bool DigitsField::readEach(const unsigned char* records, std::size_t length, std::span<double> numbers) const {
  const DigitsField field = *this;  // its members cannot change by what is written
  const std::optional<DigitFours> fours = field.fours();
  const std::optional<DigitPairs> pairs = field.pairs();
  bool all = true;
  for (std::size_t done = 0; done < numbers.size(); done += kAtOnce) {
    const std::span<double> some = numbers.subspan(done, std::min(kAtOnce, numbers.size() - done));
    const unsigned char* record = records + done * length;
    const auto recordAt = [=](std::size_t row) { return record + row * length; };
    const bool inFours = fours && some.size() >= DigitFours::kFewest;
    if (inFours && fours->read(record + offset_, length, some.size(), some.data())) continue;
    if (!inFours && pairs && some.size() > 1 && field.readUsual(*pairs, recordAt, some.size(), some.data())) continue;
    for (double& number : some) {
      all = field.read(record, number) && all;
      record += length;
    }
  }
  return all;
}

void DigitsField::readAll(const std::vector<const unsigned char*>& records, std::vector<double>& numbers) const {
  const std::size_t before = numbers.size();
  numbers.resize(before + records.size());
  const DigitsField field = *this;  // its members cannot change by what is written
  const std::optional<DigitPairs> pairs = field.pairs();
  double* next = numbers.data() + before;
  for (std::size_t done = 0; done < records.size(); done += kAtOnce) {
    const unsigned char* const* const some = records.data() + done;
    const std::size_t count = std::min(kAtOnce, records.size() - done);
    const auto recordAt = [some](std::size_t row) { return some[row]; };
    if (pairs && count > 1 && field.readUsual(*pairs, recordAt, count, next)) {
      next += count;
      continue;
    }
    for (std::size_t row = 0; row < count; ++row) {
      double number = 0;
      const bool there = field.read(some[row], number);
      *next = number;
      next += there ? 1 : 0;
    }
  }
  numbers.resize(static_cast<std::size_t>(next - numbers.data()));
}

}  // namespace vantrelix::dbf
