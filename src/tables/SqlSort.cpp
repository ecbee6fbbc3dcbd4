#include "tables/SqlSort.h"

#include <algorithm>
#include <bit>

#include "foundation/dateTime.h"
#include "foundation/text.h"
#include "tables/SqlCompare.h"

namespace vantrelix {

namespace {

constexpr std::size_t kWord = sizeof(std::uint64_t);

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
  const std::string folded = upperCase(plain);
  const std::size_t at = texts_.size();
  texts_.append(folded).append(plain);
  addText(
      {at, at + folded.size(), static_cast<std::uint32_t>(folded.size()), static_cast<std::uint32_t>(plain.size())});
}

void SortKeys::addNumber(double value) { addKey(number, orderedBits(value)); }

void SortKeys::addAscii(std::string_view plain) {
  plain = withoutPadding(plain);
  const std::size_t at = texts_.size();
  const auto size = static_cast<std::uint32_t>(plain.size());
  texts_.append(plain);
  addText({at, at, size, size});
}

void SortKeys::addText(const Texts& key) {
  addKey(text, upperWord(wordOfText(foldedOf(key), 0)));
  if (keys_.capacity() == 0) keys_.reserve(ranks_.capacity());
  keys_.resize(ranks_.size());
  keys_.back() = key;
}

std::uint64_t SortKeys::wordOf(std::size_t key, const Stage& stage) const {
  if (stage.part == Part::rank) return ranks_[key];
  if (stage.part == Part::plain) return wordOfText(plainOf(keys_[key]), stage.at);
  return stage.at == 0 ? heads_[key] : upperWord(wordOfText(foldedOf(keys_[key]), stage.at));
}

// Whether a word that is equal leaves nothing of the stage's part to be looked at.
bool SortKeys::endsAt(std::size_t key, const Stage& stage) const {
  if (ranks_[key] != text) return true;
  return (stage.part == Part::folded ? keys_[key].folded : keys_[key].plain) <= stage.at + kWord;
}

// To what tells rows apart whose words are equal up to this stage. False where there is nothing. No text ends with a
// NUL, so that one is at its end in a word or differs from a longer one.
bool SortKeys::advance(Stage& stage, std::span<const PlacedWord> equal) const {
  const Rank rank = ranks_[keyOf(equal.front().place, stage)];
  if (stage.part == Part::rank && rank != null) {
    stage.part = Part::folded;
    return true;
  }
  const auto ends = [&](const PlacedWord& row) { return endsAt(keyOf(row.place, stage), stage); };
  if (stage.part != Part::rank && !std::all_of(equal.begin(), equal.end(), ends)) {
    stage.at += kWord;
    return true;
  }
  if (stage.part == Part::folded && rank == text) {
    stage = {stage.term, Part::plain, 0};
    return true;
  }
  stage = {stage.term + 1, Part::rank, 0};
  return stage.term < terms();
}

int SortKeys::compareRows(std::size_t a, std::size_t b) const {
  const PlacedWord pair[] = {{0, static_cast<std::uint32_t>(a)}, {0, static_cast<std::uint32_t>(b)}};
  Stage stage;
  do {
    const std::uint64_t left = wordOf(keyOf(a, stage), stage);
    const std::uint64_t right = wordOf(keyOf(b, stage), stage);
    if (left != right) return (left < right) != descending_[stage.term] ? -1 : 1;
  } while (advance(stage, pair));
  return 0;
}

bool SortKeys::inOrder() const {
  for (std::size_t row = 1; row < rows(); ++row) {
    if (compareRows(row - 1, row) > 0) return false;
  }
  return true;
}

// What rows have in common is looked at once: they are sorted by one word of their keys, and those in which it is equal
// by the next.
std::vector<std::uint32_t> SortKeys::order() const {
  std::vector<PlacedWord> sorted(rows());
  for (std::size_t row = 0; row < sorted.size(); ++row) sorted[row].place = static_cast<std::uint32_t>(row);
  std::vector<PlacedWord> room;
  std::vector<Range> open;
  if (!sorted.empty()) open.push_back({0, sorted.size(), {}});
  while (!open.empty()) {
    const Range range = open.back();
    open.pop_back();
    const std::uint64_t turned = descending_[range.stage.term] ? ~std::uint64_t{0} : 0;
    const std::span<PlacedWord> part(sorted.data() + range.begin, range.end - range.begin);
    for (PlacedWord& row : part) row.word = wordOf(keyOf(row.place, range.stage), range.stage) ^ turned;
    sortByWord(part, room);
    for (std::size_t begin = range.begin, end = begin; begin < range.end; begin = end) {
      while (end < range.end && sorted[end].word == sorted[begin].word) ++end;
      Stage next = range.stage;
      if (end - begin > 1 && advance(next, {sorted.data() + begin, end - begin})) open.push_back({begin, end, next});
    }
  }
  std::vector<std::uint32_t> places;
  places.reserve(sorted.size());
  for (const PlacedWord& row : sorted) places.push_back(row.place);
  return places;
}

}  // namespace vantrelix
