// Words of 64 bits, each with the place of the row that it was made of, and their order.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace vantrelix {

struct PlacedWord {
  std::uint64_t word = 0;
  std::uint32_t place = 0;

  friend bool operator==(const PlacedWord&, const PlacedWord&) = default;
};

// Sorts by the words. Rows come by ascending places, and those of one word stay so. `room` is memory to be used again
// by the next sort.
void sortByWord(std::span<PlacedWord> rows, std::vector<PlacedWord>& room);

// Up to eight bytes of a text from `at` on, the first of them highest, NULs behind its end: words stand in the order of
// the texts.
std::uint64_t wordOfText(std::string_view text, std::size_t at);

// The same word with capitals in the place of the ASCII letters.
std::uint64_t upperWord(std::uint64_t word);

}  // namespace vantrelix
