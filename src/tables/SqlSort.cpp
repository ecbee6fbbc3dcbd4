#include "tables/SqlSort.h"

#include <algorithm>
#include <bit>
#include <numeric>

#include "foundation/dateTime.h"
#include "foundation/text.h"
#include "tables/SqlCompare.h"

namespace vantrelix {

namespace {

template <class T>
int threeWay(const T& a, const T& b) {
  return a < b ? -1 : (b < a ? 1 : 0);
}

// Whole numbers in the order of the numbers that they stand for.
std::uint64_t orderedBits(double number) {
  constexpr std::uint64_t sign = std::uint64_t{1} << 63;
  const auto bits = std::bit_cast<std::uint64_t>(number == 0 ? 0.0 : number);
  return (bits & sign) != 0 ? ~bits : bits | sign;
}

double secondsOf(const DateTime& d) {
  const double seconds = d.hour * 3600.0 + d.minute * 60.0 + d.second;
  return static_cast<double>(daysFromCivil(d.year, d.month, d.day)) * 86400.0 + seconds;
}

// The first eight bytes, the first of them highest; what is missing counts as NUL.
std::uint64_t headOf(std::string_view text) {
  std::uint64_t head = 0;
  for (std::size_t i = 0; i < 8; ++i) head = head << 8 | (i < text.size() ? static_cast<unsigned char>(text[i]) : 0U);
  return head;
}

char asciiUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

}  // namespace

void SortKeys::reserve(std::size_t rows) {
  ranks_.reserve(rows * terms());
  heads_.reserve(rows * terms());
}

void SortKeys::add(const Value& value) {
  if (value.isNull()) return addNull();
  if (value.isDate()) return addKey(date, orderedBits(secondsOf(value.date())));
  if (!value.isText()) return addNumber(value.asNumber());
  const std::string_view plain = withoutPadding(value.text());
  const std::size_t at = texts_.size();
  texts_.append(upperCase(plain)).append(plain);
  addText(at, plain.size());
}

void SortKeys::addNumber(double value) { addKey(number, orderedBits(value)); }

void SortKeys::addAscii(std::string_view plain) {
  plain = withoutPadding(plain);
  const std::size_t at = texts_.size();
  texts_.append(plain).append(plain);
  std::transform(plain.begin(), plain.end(), texts_.begin() + static_cast<std::ptrdiff_t>(at), asciiUpper);
  addText(at, plain.size());
}

// `plain` bytes at the end of the texts are the text, what stands before them from `at` on is its folded form.
void SortKeys::addText(std::size_t at, std::size_t plain) {
  const Place place{at, static_cast<std::uint32_t>(texts_.size() - at - plain), static_cast<std::uint32_t>(plain)};
  addKey(text, headOf(foldedOf(place)));
  places_.resize(ranks_.size());
  places_.back() = place;
}

int SortKeys::compareKeys(std::size_t a, std::size_t b) const {
  if (ranks_[a] != ranks_[b]) return threeWay(ranks_[a], ranks_[b]);
  if (heads_[a] != heads_[b]) return threeWay(heads_[a], heads_[b]);
  return ranks_[a] == text ? compareTexts(places_[a], places_[b]) : 0;
}

int SortKeys::compareTexts(const Place& a, const Place& b) const {
  const int folded = threeWay(foldedOf(a), foldedOf(b));
  return folded != 0 ? folded : threeWay(plainOf(a), plainOf(b));
}

int SortKeys::compareRows(std::size_t a, std::size_t b) const {
  for (std::size_t term = 0; term < terms(); ++term) {
    const int result = compareKeys(a * terms() + term, b * terms() + term);
    if (result != 0) return descending_[term] ? -result : result;
  }
  return 0;
}

bool SortKeys::inOrder() const {
  const std::size_t rows = terms() == 0 ? 0 : ranks_.size() / terms();
  for (std::size_t row = 1; row < rows; ++row) {
    if (compareRows(row - 1, row) > 0) return false;
  }
  return true;
}

// The place decides between equal rows, so that the sort itself need not keep their order.
std::vector<std::uint32_t> SortKeys::order() const {
  std::vector<std::uint32_t> places(terms() == 0 ? 0 : ranks_.size() / terms());
  std::iota(places.begin(), places.end(), std::uint32_t{0});
  std::sort(places.begin(), places.end(), [this](std::uint32_t a, std::uint32_t b) {
    const int result = compareRows(a, b);
    return result != 0 ? result < 0 : a < b;
  });
  return places;
}

}  // namespace vantrelix
