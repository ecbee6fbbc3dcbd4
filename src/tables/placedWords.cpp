#include "tables/placedWords.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <utility>

namespace vantrelix {

namespace {

constexpr std::uint64_t kEachByte = 0x0101010101010101;

// Fewer rows are sorted sooner by comparisons than by counting bytes.
constexpr std::size_t kFewRows = 128;

bool isBefore(const PlacedWord& a, const PlacedWord& b) {
  return a.word != b.word ? a.word < b.word : a.place < b.place;
}

std::uint64_t varyingBits(std::span<const PlacedWord> rows) {
  std::uint64_t varying = 0;
  for (const PlacedWord& row : rows) varying |= row.word ^ rows.front().word;
  return varying;
}

// One pass of a sort by the words' bytes, the lowest first.
void sortByByte(std::span<const PlacedWord> rows, int shift, PlacedWord* sorted) {
  const auto byteOf = [shift](const PlacedWord& row) { return static_cast<std::size_t>(row.word >> shift & 0xFF); };
  std::array<std::uint32_t, 256> next{};
  for (const PlacedWord& row : rows) ++next[byteOf(row)];
  std::uint32_t before = 0;
  for (std::uint32_t& count : next) before += std::exchange(count, before);
  for (const PlacedWord& row : rows) sorted[next[byteOf(row)]++] = row;
}

std::uint64_t highestFirst(std::uint64_t bytes) {
  if constexpr (std::endian::native == std::endian::big) return bytes;
  bytes = (bytes & 0x00FF00FF00FF00FF) << 8 | (bytes >> 8 & 0x00FF00FF00FF00FF);
  bytes = (bytes & 0x0000FFFF0000FFFF) << 16 | (bytes >> 16 & 0x0000FFFF0000FFFF);
  return std::rotl(bytes, 32);
}

}  // namespace

void sortByWord(std::span<PlacedWord> rows, std::vector<PlacedWord>& room) {
  const std::uint64_t varying = rows.empty() ? 0 : varyingBits(rows);
  if (varying == 0) return;
  if (rows.size() < kFewRows) return std::sort(rows.begin(), rows.end(), isBefore);
  if (room.size() < rows.size()) room.resize(rows.size());
  std::span<PlacedWord> from = rows;
  std::span<PlacedWord> to(room.data(), rows.size());
  for (int shift = 0; shift < 64; shift += 8) {
    if ((varying >> shift & 0xFF) == 0) continue;
    sortByByte(from, shift, to.data());
    std::swap(from, to);
  }
  if (from.data() != rows.data()) std::copy(from.begin(), from.end(), rows.begin());
}

std::uint64_t wordOfText(std::string_view text, std::size_t at) {
  std::uint64_t bytes = 0;
  if (at + sizeof bytes <= text.size()) {
    std::memcpy(&bytes, text.data() + at, sizeof bytes);
  } else if (at < text.size()) {
    std::memcpy(&bytes, text.data() + at, text.size() - at);
  }
  return highestFirst(bytes);
}

std::uint64_t upperWord(std::uint64_t word) {
  constexpr std::uint64_t high = 0x80 * kEachByte;
  const std::uint64_t low = word & ~high;
  const std::uint64_t fromA = low + (0x80 - 'a') * kEachByte;
  const std::uint64_t behindZ = low + (0x7F - 'z') * kEachByte;
  const std::uint64_t letters = fromA & ~behindZ & ~word & high;
  return word - (letters >> 2);
}

}  // namespace vantrelix
