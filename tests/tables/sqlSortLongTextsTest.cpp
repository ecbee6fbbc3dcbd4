// Sort keys whose texts are equal for long, of many rows.
#include <algorithm>
#include <gtest/gtest.h>
#include <numeric>
#include <random>

#include "tables/SqlCompare.h"
#include "tables/SqlSort.h"

namespace vantrelix {
namespace {

using Places = std::vector<std::uint32_t>;

Places orderOf(const std::vector<std::string>& texts, bool descending = false) {
  SortKeys keys({descending});
  for (const std::string& text : texts) keys.add(Value(text));
  return keys.order();
}

TEST(SortKeys, TellTextsApartAtEachOfTheirBytes) {
  for (std::size_t differs = 0; differs < 40; ++differs) {
    std::string low(40, 'm'), high = low;
    low[differs] = 'l';
    high[differs] = 'n';
    EXPECT_EQ(orderOf({std::string(40, 'm'), high, low}), (Places{2, 0, 1})) << differs;
    EXPECT_EQ(orderOf({low, std::string(40, 'm'), high}, true), (Places{2, 1, 0})) << differs;
  }
}

TEST(SortKeys, PutATextBeforeThoseThatGoOnBehindIt) {
  for (std::size_t size = 0; size < 33; ++size) {
    const std::string text(size, 'x');
    EXPECT_EQ(orderOf({text + "y", text + "!", text}), (Places{2, 1, 0})) << size;
    EXPECT_EQ(orderOf({text, text + std::string("\0a", 2), text + "\x01"}), (Places{0, 1, 2})) << size;
  }
}

TEST(SortKeys, LetTheLetterCaseDecideWhereAllElseIsEqual) {
  const std::string same(20, 'k');
  EXPECT_EQ(orderOf({same + "a", same + "A", same + "b", same + "B", same + "a"}), (Places{1, 0, 4, 3, 2}));
  // The case of an early letter counts for less than a late letter.
  EXPECT_EQ(orderOf({"a" + same + "z", "A" + same + "y", "A" + same + "z"}), (Places{1, 2, 0}));
  // Letters beyond ASCII fold as well, and are longer than one byte.
  EXPECT_EQ(orderOf({same + "\xC3\xA9" + "b", same + "\xC3\x89" + "a", same + "\xC3\x89" + "B"}), (Places{1, 2, 0}));
}

TEST(SortKeys, OfThousandsOfRowsStandAsComparisonsTell) {
  std::mt19937 random(11);
  for (const bool descending : {false, true}) {
    std::vector<Value> texts, numbers;
    SortKeys keys({descending, !descending});
    for (int row = 0; row < 4000; ++row) {
      std::string text = random() % 3 == 0 ? "Sector antenna " : "SECTOR ANTENNA ";
      for (auto letters = random() % 10; letters > 0; --letters) text += "ab\xC3"[random() % 2];
      if (random() % 4 == 0) text += "\xC3\xA4";
      texts.push_back(random() % 10 == 0 ? Value() : Value(text));
      numbers.push_back(random() % 5 == 0 ? Value() : Value(static_cast<double>(random() % 3)));
      keys.add(texts.back());
      keys.add(numbers.back());
    }
    const auto compare = [](const Value& a, const Value& b) {
      if (a.isNull() || b.isNull()) return static_cast<int>(b.isNull()) - static_cast<int>(a.isNull());
      return *compareValues(a, b);
    };
    Places expected(texts.size());
    std::iota(expected.begin(), expected.end(), 0U);
    std::stable_sort(expected.begin(), expected.end(), [&](std::uint32_t a, std::uint32_t b) {
      const int first = compare(texts[a], texts[b]);
      if (first != 0) return (first < 0) != descending;
      const int second = compare(numbers[a], numbers[b]);
      return second != 0 && (second > 0) != descending;
    });
    EXPECT_EQ(keys.order(), expected);
    EXPECT_FALSE(keys.inOrder());
  }
}

TEST(SortKeys, OfRowsInOrderSayThatTheyAre) {
  SortKeys keys({false, true});
  for (int row = 0; row < 300; ++row) {
    keys.addAscii("Parabolic dish " + std::to_string(1000 + row / 3));
    keys.addNumber(-row % 3);
  }
  EXPECT_TRUE(keys.inOrder());
  Places expected(300);
  std::iota(expected.begin(), expected.end(), 0U);
  EXPECT_EQ(keys.order(), expected);
  keys.addAscii("Parabolic dish 1099");
  keys.addNumber(1);
  EXPECT_FALSE(keys.inOrder());
}

TEST(SortKeys, OfNoRowsHaveNoOrder) {
  EXPECT_TRUE(SortKeys({false}).order().empty());
  EXPECT_TRUE(SortKeys({false}).inOrder());
}

}  // namespace
}  // namespace vantrelix
