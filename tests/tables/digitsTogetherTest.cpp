// Numbers of many records read together, by each way that this processor has: what the whole parser reads of each.
#include <cmath>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "tables/dbfNumber.h"
#include "tables/digitFours.h"
#include "tables/digitPairs.h"

namespace vantrelix::dbf {
namespace {

constexpr std::size_t kOffset = 3;
constexpr std::size_t kBehind = 2;

// Blanks, a sign or none, and no more than eight digits and signs.
std::string usualDigits(std::mt19937_64& random, int width, int decimals) {
  std::string text(static_cast<std::size_t>(width), ' ');
  const int point = decimals > 0 ? width - decimals - 1 : width;
  const int head = width - 8 - (decimals > 0 ? 1 : 0);
  const int mostWhole = point - head;
  const int whole = static_cast<int>(random() % static_cast<std::uint64_t>(mostWhole + 1));
  const bool noDigits = whole == 0 && decimals == 0;
  const int first = noDigits ? point - 1 : point - whole;
  for (int i = first; i < width; ++i) text[static_cast<std::size_t>(i)] = static_cast<char>('0' + random() % 10);
  if (decimals > 0) text[static_cast<std::size_t>(point)] = '.';
  if (first > head && random() % 2 == 0) text[static_cast<std::size_t>(first) - 1] = '-';
  return text;
}

std::string recordsOf(const std::vector<std::string>& texts) {
  std::string records;
  for (const std::string& text : texts) records += std::string(kOffset, '7') + text + std::string(kBehind, '7');
  return records;
}

const unsigned char* bytesOf(const std::string& records) {
  return reinterpret_cast<const unsigned char*>(records.data());
}

bool areSameBits(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

void expectParsed(const std::vector<std::string>& texts, const std::vector<double>& numbers) {
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const std::optional<double> parsed = parseNumber(texts[i]);
    ASSERT_TRUE(parsed && areSameBits(*parsed, numbers[i])) << '"' << texts[i] << "\" " << numbers[i];
  }
}

// The numbers by one way of reading; nothing where one of them has not the usual shape.
using Numbers = std::optional<std::vector<double>>;

Numbers byFours(const DigitFours& fours, const std::vector<std::string>& texts) {
  const std::string records = recordsOf(texts);
  std::vector<double> numbers(texts.size());
  const std::size_t length = kOffset + texts[0].size() + kBehind;
  if (!fours.read(bytesOf(records) + kOffset, length, texts.size(), numbers.data())) return std::nullopt;
  return numbers;
}

Numbers byPairs(DigitPairs pairs, const std::vector<std::string>& texts) {
  const std::string records = recordsOf(texts);
  const std::size_t length = kOffset + texts[0].size() + kBehind;
  std::vector<double> numbers(texts.size());
  for (std::size_t row = 1; row < texts.size(); row += 2) {
    const unsigned char* const field = bytesOf(records) + row * length + kOffset;
    pairs.read(field - length, field, numbers.data() + row - 1);
  }
  return pairs.areUsual() ? Numbers(numbers) : std::nullopt;
}

class DigitsTogether : public ::testing::Test {
 protected:
  std::vector<std::string> usualTexts(int width, int decimals, std::size_t count) {
    std::vector<std::string> texts(count);
    for (std::string& text : texts) text = usualDigits(random_, width, decimals);
    return texts;
  }

  // Calls with every shape of field that one of the ways has.
  template <class Work>
  void forEachShape(const Work& work) {
    for (int width = 1; width <= 20; ++width) {
      for (int decimals = 0; decimals <= 9 && decimals < width; ++decimals) work(width, decimals);
    }
  }

  std::mt19937_64 random_{47};
};

TEST_F(DigitsTogether, AreReadToTheLastBit) {
  int shapes = 0;
  forEachShape([&](int width, int decimals) {
    const auto fours = DigitFours::of(width, decimals);
    const auto pairs = DigitPairs::of(width, decimals);
    if (!fours && !pairs) return;
    ++shapes;
    for (int round = 0; round < 200; ++round) {
      const auto texts = usualTexts(width, decimals, 4 + 2 * (random_() % 5));
      for (const Numbers& numbers : {fours ? byFours(*fours, texts) : std::vector<double>(),
                                     pairs ? byPairs(*pairs, texts) : std::vector<double>()}) {
        ASSERT_TRUE(numbers) << width << ' ' << decimals << ' ' << texts[0];
        if (!numbers->empty()) expectParsed(texts, *numbers);
      }
    }
  });
  if (!DigitPairs::of(10, 4)) return;
  EXPECT_GT(shapes, 50);
}

// One byte of one field is any other: either its number is that of the parser, or it is refused.
TEST_F(DigitsTogether, AreNeverReadOtherwiseThanByTheParser) {
  int refused = 0, read = 0;
  const auto check = [&](const std::vector<std::string>& texts, const Numbers& numbers) {
    ++(numbers ? read : refused);
    if (numbers) expectParsed(texts, *numbers);
  };
  forEachShape([&](int width, int decimals) {
    const auto fours = DigitFours::of(width, decimals);
    const auto pairs = DigitPairs::of(width, decimals);
    if (!fours && !pairs) return;
    for (int round = 0; round < 2000; ++round) {
      constexpr std::string_view kLikely = " -.+0123456789E\t/:";
      auto texts = usualTexts(width, decimals, 4);
      const bool any = random_() % 4 == 0;
      texts[random_() % 4][random_() % static_cast<std::size_t>(width)] =
          any ? static_cast<char>(random_() % 256) : kLikely[random_() % kLikely.size()];
      if (fours) check(texts, byFours(*fours, texts));
      if (pairs) check(texts, byPairs(*pairs, texts));
    }
  });
  if (!DigitPairs::of(10, 4)) return;
  EXPECT_GT(read, 10000);
  EXPECT_GT(refused, 10000);
}

TEST_F(DigitsTogether, AreTheSameForAnyNumberOfRecords) {
  for (const int width : {9, 10, 16, 17, 18}) {
    DbfField field;
    field.type = 'N';
    field.width = width;
    field.decimals = 4;
    field.offset = static_cast<int>(kOffset);
    const auto digits = DigitsField::of(field);
    const std::size_t length = kOffset + static_cast<std::size_t>(width) + kBehind;
    std::vector<double> numbers;
    const auto areThere = [&](const std::vector<std::string>& texts) {
      numbers.assign(texts.size(), 77);
      return digits->readEach(bytesOf(recordsOf(texts)), length, numbers);
    };
    for (std::size_t count = 0; count < 140; ++count) {
      auto texts = usualTexts(width, 4, count);
      ASSERT_TRUE(areThere(texts)) << width << ' ' << count;
      expectParsed(texts, numbers);
      if (count == 0) continue;
      std::string& unusual = texts[random_() % count];
      unusual = "1.5E+02" + std::string(unusual.size() - 7, ' ');
      ASSERT_TRUE(areThere(texts)) << width << ' ' << count;
      expectParsed(texts, numbers);
      unusual.assign(unusual.size(), ' ');
      EXPECT_FALSE(areThere(texts)) << width << ' ' << count;
    }
  }
}

}  // namespace
}  // namespace vantrelix::dbf
