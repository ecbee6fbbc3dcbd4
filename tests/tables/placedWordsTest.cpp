#include <algorithm>
#include <gtest/gtest.h>
#include <random>

#include "tables/placedWords.h"

namespace vantrelix {
namespace {

std::vector<PlacedWord> placed(const std::vector<std::uint64_t>& words) {
  std::vector<PlacedWord> rows;
  for (const std::uint64_t word : words) rows.push_back({word, static_cast<std::uint32_t>(rows.size())});
  return rows;
}

std::vector<PlacedWord> expectedOrder(std::vector<PlacedWord> rows) {
  std::stable_sort(rows.begin(), rows.end(), [](const PlacedWord& a, const PlacedWord& b) { return a.word < b.word; });
  return rows;
}

TEST(PlacedWords, AreSortedAndKeepTheirPlacesWhereTheyAreEqual) {
  std::mt19937_64 random(3);
  std::vector<PlacedWord> room;
  for (const std::size_t count : {0, 1, 2, 100, 127, 128, 129, 1000, 5000}) {
    for (const std::uint64_t mask : {std::uint64_t{0}, std::uint64_t{1}, std::uint64_t{0xFF00},
                                     std::uint64_t{0x8000000000000003}, ~std::uint64_t{0}}) {
      std::vector<std::uint64_t> words(count);
      for (std::uint64_t& word : words) word = (random() & mask) | (0x20 & ~mask);
      std::vector<PlacedWord> rows = placed(words);
      const std::vector<PlacedWord> expected = expectedOrder(rows);
      sortByWord(rows, room);
      ASSERT_EQ(rows, expected) << count << " words of " << mask;
    }
  }
}

TEST(PlacedWords, OfTextsStandInTheOrderOfTheTexts) {
  const std::string text = "abcdefghij\xE9z";
  EXPECT_EQ(wordOfText(text, 0), 0x6162636465666768U);
  EXPECT_EQ(wordOfText(text, 4), 0x65666768696AE97AU);
  EXPECT_EQ(wordOfText(text, 8), 0x696AE97A00000000U);
  EXPECT_EQ(wordOfText(text, text.size() - 1), 0x7A00000000000000U);
  EXPECT_EQ(wordOfText(text, text.size()), 0U);
  EXPECT_EQ(wordOfText(text, 100), 0U);
}

TEST(PlacedWords, TurnOnlyAsciiLettersIntoCapitals) {
  for (int byte = 0; byte < 256; ++byte) {
    const int upper = byte >= 'a' && byte <= 'z' ? byte - 'a' + 'A' : byte;
    for (int place = 0; place < 64; place += 8) {
      // Neighbours of the lowest and the highest kind must not lend or carry.
      for (const std::uint64_t others : {std::uint64_t{0}, ~std::uint64_t{0}}) {
        const std::uint64_t rest = others & ~(std::uint64_t{0xFF} << place);
        ASSERT_EQ(upperWord(rest | static_cast<std::uint64_t>(byte) << place), rest | static_cast<std::uint64_t>(upper)
                                                                                          << place)
            << byte << " at " << place;
      }
    }
  }
}

}  // namespace
}  // namespace vantrelix
