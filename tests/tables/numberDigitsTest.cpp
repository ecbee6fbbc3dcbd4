#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <random>

#include "foundation/numbers.h"
#include "tables/numberDigits.h"

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

// One more in the last place of decimal digits.
std::string incremented(std::string digits) {
  auto at = digits.rbegin();
  for (; at != digits.rend() && *at == '9'; ++at) *at = '0';
  if (at == digits.rend()) return "1" + digits;
  ++*at;
  return digits;
}

// The 15 digits of the C library, rounded as text.
std::string roundedText(double value, int decimals) {
  char text[32];
  std::snprintf(text, sizeof text, "%.14e", std::abs(value));
  std::string digits = text[0] + std::string(text + 2, 14);
  const int point = std::atoi(text + 17) + 1;
  if (point < 0) digits.insert(0, static_cast<std::size_t>(-point), '0');
  const auto kept = static_cast<std::size_t>(std::max(point, 0) + decimals);
  const bool up = kept < digits.size() && digits[kept] >= '5';
  digits.resize(kept, '0');
  if (up) digits = incremented(digits);
  const auto least = static_cast<std::size_t>(decimals) + 1;
  if (digits.size() < least) digits.insert(0, least - digits.size(), '0');
  const bool negative = value < 0 && digits.find_first_not_of('0') != std::string::npos;
  if (decimals > 0) digits.insert(digits.size() - static_cast<std::size_t>(decimals), ".");
  return (negative ? "-" : "") + digits;
}

TEST(NumberDigits, AreRoundedOnTheTextOf15Digits) {
  std::mt19937_64 random(23);
  for (int round = 0; round < 200000; ++round) {
    const auto whole = static_cast<double>(random() % (std::uint64_t{1} << (random() % 50)));
    double value = whole / std::pow(10, random() % 12);
    for (auto steps = random() % 4; steps > 0; --steps) value = std::nextafter(value, (random() & 1) != 0 ? 1e300 : 0);
    if ((random() & 1) != 0) value = -value;
    const int decimals = static_cast<int>(random() % 9);
    const std::string expected = roundedText(value, decimals);
    ASSERT_EQ(numberDigits(value, expected.size(), decimals), expected) << generalText(value) << ' ' << decimals;
  }
}

TEST(NumberDigits, AreTheFixedDecimalsBesideAndAtHalves) {
  std::mt19937_64 random(29);
  for (int round = 0; round < 1'000'000; ++round) {
    const int decimals = static_cast<int>(random() % 7);
    const auto whole = static_cast<double>(random() % (std::uint64_t{1} << (random() % 42)));
    double value = (whole + 0.5) / std::pow(10, decimals);
    // From one step beside the half to distances that the 15 digits of the text just tell apart.
    if (round % 4 != 0) value = std::nextafter(value, (random() & 1) != 0 ? 1e300 : 0);
    if (round % 4 > 1) value *= 1 + (static_cast<double>(random() % 201) - 100) * 1.1e-16;
    if (round % 4 == 3) value *= 1 + (static_cast<double>(random() % 201) - 100) * 1.1e-15;
    if ((random() & 1) != 0) value = -value;
    ASSERT_EQ(numberDigits(value, 20, decimals), byFixedDecimals(value, 20, decimals)) << value << ' ' << decimals;
  }
}

TEST(NumberDigits, AreNotWrittenWhereTheyDoNotFit) {
  char field[] = "unchanged";
  EXPECT_FALSE(putDigits(-12345.5, field, 5, 2));
  EXPECT_STREQ(field, "unchanged");
  EXPECT_TRUE(putDigits(-1234.5, field, 5, 2));
  EXPECT_STREQ(field, "-1235nged");
}

// The form's digits in a field of that width, nothing where it puts none; "outside" where it touched other bytes.
std::optional<std::string> byForm(double value, std::size_t width, int decimals) {
  const std::string around = "########";
  std::string bytes = around + std::string(width, '?') + around;
  const bool put = DigitsForm(width, decimals).put(value, &bytes[around.size()]);
  const std::string field = bytes.substr(around.size(), width);
  if (bytes != around + field + around || (!put && field != std::string(width, '?'))) return "outside";
  return put ? std::optional(field) : std::nullopt;
}

TEST(DigitsForm, PutsWhatPutDigitsPuts) {
  for (std::size_t width = 0; width < 20; ++width) {
    for (int decimals = 0; decimals < 8; ++decimals) {
      for (double units = 1; units < 1e10; units *= 10) {
        for (const double step : {-0.6, -0.5, -0.4, 0.0, 0.4, 0.5, 0.6, 1.0}) {
          for (const double sign : {-1.0, 1.0}) {
            const double value = sign * (units + step) / std::pow(10, decimals);
            ASSERT_EQ(byForm(value, width, decimals), numberDigits(value, width, decimals))
                << generalText(value) << ' ' << width << ' ' << decimals;
          }
        }
      }
    }
  }
}

TEST(DigitsForm, PutsNumbersOfAnyKindAsPutDigitsDoes) {
  std::mt19937_64 random(31);
  for (int round = 0; round < 300000; ++round) {
    double value = static_cast<double>(random() % (std::uint64_t{1} << (random() % 40))) / std::pow(10, random() % 9);
    if ((random() & 1) != 0) value = -value;
    if ((random() & 1) != 0) value = std::nextafter(value, 0);
    const std::size_t width = random() % 22;
    const int decimals = static_cast<int>(random() % 9);
    ASSERT_EQ(byForm(value, width, decimals), byFixedDecimals(value, width, decimals)) << generalText(value);
  }
}

TEST(DigitsForm, RoundsAtAHalfAsPutDigitsDoes) {
  std::mt19937_64 random(37);
  for (int round = 0; round < 300000; ++round) {
    const int decimals = static_cast<int>(random() % 7);
    double value =
        (static_cast<double>(random() % (std::uint64_t{1} << (random() % 24))) + 0.5) / std::pow(10, decimals);
    if (round % 2 != 0) value = std::nextafter(value, (random() & 1) != 0 ? 1e300 : 0);
    if ((random() & 1) != 0) value = -value;
    ASSERT_EQ(byForm(value, 12, decimals), byFixedDecimals(value, 12, decimals)) << value << ' ' << decimals;
  }
}

TEST(DigitsForm, PutsNothingThatIsNoNumber) {
  EXPECT_EQ(byForm(std::nan(""), 11, 4), std::nullopt);
  EXPECT_EQ(byForm(HUGE_VAL, 11, 4), std::nullopt);
  EXPECT_EQ(byForm(-HUGE_VAL, 11, 4), std::nullopt);
  EXPECT_EQ(byForm(-0.0, 11, 4), "     0.0000");
}

}  // namespace
}  // namespace vantrelix::dbf
