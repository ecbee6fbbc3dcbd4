#include <cmath>
#include <gtest/gtest.h>
#include <random>

#include "foundation/numbers.h"
#include "tables/dbfNumber.h"

namespace vantrelix::dbf {
namespace {

TEST(NumberDigits, RoundHalfAwayFromZero) {
  EXPECT_EQ(numberDigits(1.00005, 12, 4), "      1.0001");
  EXPECT_EQ(numberDigits(-1.00005, 12, 4), "     -1.0001");
  EXPECT_EQ(numberDigits(2.5, 3, 0), "  3");
  EXPECT_EQ(numberDigits(0.3 - 0.1, 6, 2), "  0.20");
}

TEST(NumberDigits, HaveNoSignAtANought) {
  EXPECT_EQ(numberDigits(-0.00004, 8, 4), "  0.0000");
  EXPECT_EQ(numberDigits(-0.0, 4, 1), " 0.0");
}

TEST(NumberDigits, LoseDecimalsBeforeTheyDoNotFit) {
  EXPECT_EQ(numberDigits(-123.456, 7, 4), "-123.46");
  EXPECT_EQ(numberDigits(-123.456, 4, 4), "-123");
  EXPECT_EQ(numberDigits(-123.456, 3, 4), std::nullopt);
  EXPECT_EQ(numberDigits(99.96, 4, 1), " 100");
  EXPECT_EQ(numberDigits(5, 0, 2), std::nullopt);
}

TEST(NumberDigits, HaveMoreThanSixDecimalsWhereTheFieldHas) { EXPECT_EQ(numberDigits(0.5, 12, 8), "  0.50000000"); }

// The fixed decimals right-justified, with as many of them as fit.
std::optional<std::string> byFixedDecimals(double value, std::size_t width, int decimals) {
  for (; decimals >= 0; --decimals) {
    const std::string digits = fixedDecimals(value, decimals);
    if (digits.size() <= width) return std::string(width - digits.size(), ' ') + digits;
  }
  return std::nullopt;
}

TEST(NumberDigits, AreTheFixedDecimalsForNumbersOfAnyKind) {
  std::mt19937_64 random(11);
  for (int round = 0; round < 100000; ++round) {
    double value = static_cast<double>(random() % (std::uint64_t{1} << (random() % 50))) / std::pow(10, random() % 9);
    if ((random() & 1) != 0) value = -value;
    if ((random() & 1) != 0) value = std::nextafter(value, 0);
    const std::size_t width = random() % 20;
    const int decimals = static_cast<int>(random() % 9);
    ASSERT_EQ(numberDigits(value, width, decimals), byFixedDecimals(value, width, decimals)) << generalText(value);
  }
}

}  // namespace
}  // namespace vantrelix::dbf
