#include <algorithm>
#include <gtest/gtest.h>
#include <numeric>
#include <random>

#include "foundation/text.h"
#include "tables/SqlCompare.h"
#include "tables/SqlSort.h"

namespace vantrelix {
namespace {

std::vector<std::uint32_t> orderOf(const std::vector<Value>& values, bool descending = false) {
  SortKeys keys({descending});
  for (const Value& value : values) keys.add(value);
  return keys.order();
}

TEST(SortKeys, PutNullsFirstThenNumbersDatesTexts) {
  const std::vector<Value> values{"b", DateTime{2026, 11, 21, 0, 0, 0}, 3.5, Value(), true, "A"};
  EXPECT_EQ(orderOf(values), (std::vector<std::uint32_t>{3, 4, 2, 1, 5, 0}));
  EXPECT_EQ(orderOf(values, true), (std::vector<std::uint32_t>{0, 5, 1, 2, 4, 3}));
}

TEST(SortKeys, OrderTextsWithoutCaseFirstThenByCharacter) {
  const std::vector<Value> values{"b", "a", "B ", "A", "ab", "\xC3\xA9z", "\xC3\x89y", "abcdefgh1", "ABCDEFGH0", ""};
  EXPECT_EQ(orderOf(values), (std::vector<std::uint32_t>{9, 3, 1, 4, 8, 7, 2, 0, 6, 5}));
}

TEST(SortKeys, KeepTheOrderOfEqualRowsInBothDirections) {
  const std::vector<Value> values{2.0, 1.0, 2.0, "x  ", "x", 1.0};
  EXPECT_EQ(orderOf(values), (std::vector<std::uint32_t>{1, 5, 0, 2, 3, 4}));
  EXPECT_EQ(orderOf(values, true), (std::vector<std::uint32_t>{3, 4, 0, 2, 1, 5}));
  EXPECT_EQ(orderOf({0.0, -0.0, -1e-300, 0.0}), (std::vector<std::uint32_t>{2, 0, 1, 3}));
}

TEST(SortKeys, OfTheSecondTermDecideWhereTheFirstAreEqual) {
  SortKeys keys({false, true});
  for (const char* text : {"a", "b", "A", "a"}) {
    keys.addAscii(text);
    keys.addNumber(static_cast<double>(text[0] % 7));
  }
  EXPECT_EQ(keys.order(), (std::vector<std::uint32_t>{2, 0, 3, 1}));
  EXPECT_FALSE(keys.inOrder());
}

TEST(SortKeys, OfAnAsciiTextAreThoseOfItsValue) {
  for (const std::string text : {"", "  ", "Panel 12  ", "~^[z"}) {
    SortKeys keys({false});
    keys.add(Value(text));
    keys.addAscii(text);
    EXPECT_TRUE(keys.inOrder());
    SortKeys reversed({true});
    reversed.addAscii(text);
    reversed.add(Value(text));
    EXPECT_TRUE(reversed.inOrder());
  }
}

// The order by compareText and compareValues, which comparisons in a query go by.
TEST(SortKeys, OrderAsComparisonsDo) {
  std::mt19937 random(7);
  for (int round = 0; round < 300; ++round) {
    const bool texts = round % 2 == 0;
    std::vector<Value> values;
    for (int i = 0; i < 60; ++i) {
      std::string text;
      const char* const letters[] = {"a", "A", "b", "B", " ", "0", "\xC3\xA9", "\xC3\x89", "_", "Z"};
      for (auto length = random() % 12; length > 0; --length) text += letters[random() % std::size(letters)];
      const double number = (static_cast<double>(random() % 41) - 20) / 4;
      values.push_back(texts ? Value(text) : Value(number));
    }
    std::vector<std::uint32_t> expected(values.size());
    std::iota(expected.begin(), expected.end(), 0U);
    std::stable_sort(expected.begin(), expected.end(),
                     [&](std::uint32_t a, std::uint32_t b) { return *compareValues(values[a], values[b]) < 0; });
    ASSERT_EQ(orderOf(values), expected) << round;
  }
}

}  // namespace
}  // namespace vantrelix
