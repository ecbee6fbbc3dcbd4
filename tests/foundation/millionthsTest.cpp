#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>

#include "foundation/millionths.h"
#include "foundation/numbers.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {
namespace {

// The number as the C library writes its 15 digits, read again.
double by15Digits(double value) {
  char text[64];
  std::snprintf(text, sizeof text, "%.15g", value);
  return std::strtod(text, nullptr);
}

TEST(Millionths, AreThoseOfANumberOfFewDecimals) {
  EXPECT_EQ(millionths(0), 0);
  EXPECT_EQ(millionths(-0.0), 0);
  EXPECT_EQ(millionths(12.57), 12570000);
  EXPECT_EQ(millionths(-0.000001), -1);
  EXPECT_EQ(millionths(99999999.999999), 99999999999999);
}

TEST(Millionths, AreNotToldOfOtherNumbers) {
  EXPECT_EQ(millionths(0.1234567), std::nullopt);
  EXPECT_EQ(millionths(1e-7), std::nullopt);
  EXPECT_EQ(millionths(1e8), std::nullopt);
  EXPECT_EQ(millionths(std::numeric_limits<double>::denorm_min()), std::nullopt);
  EXPECT_EQ(millionths(std::numeric_limits<double>::infinity()), std::nullopt);
  EXPECT_EQ(millionths(std::numeric_limits<double>::quiet_NaN()), std::nullopt);
}

TEST(Millionths, OfADifferenceAreThoseOfItsText) {
  EXPECT_NE(0.3 - 0.1, 0.2);
  EXPECT_EQ(millionths(0.3 - 0.1), 200000);
  EXPECT_EQ(generalText(0.3 - 0.1), "0.2");
}

TEST(GeneralNumber, OfNoNumberFailsAsItsText) {
  for (const double value : {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
    try {
      generalNumber(value);
      ADD_FAILURE() << value;
    } catch (const RunTimeFailure& problem) {
      EXPECT_EQ(problem.number(), failure::typeMismatch);
    }
  }
}

// Numbers of some decimals, each moved by some steps of a double, so that many stand about the edge.
TEST(Millionths, NeverDifferFromTheTextOf15Digits) {
  std::mt19937_64 random(7);
  int told = 0;
  for (int round = 0; round < 200000; ++round) {
    const int decimals = static_cast<int>(random() % 9);
    const auto whole = static_cast<double>(random() % (std::uint64_t{1} << (random() % 50)));
    double value = whole / std::pow(10, decimals);
    for (auto steps = random() % 12; steps > 0; --steps)
      value = std::nextafter(value, (random() & 1) != 0 ? 1e300 : -1e300);
    if (const auto number = millionths(value)) {
      ++told;
      ASSERT_EQ(static_cast<double>(*number) / kMillion, by15Digits(value)) << round;
    }
    ASSERT_EQ(std::strtod(generalText(value).c_str(), nullptr), by15Digits(value)) << round;
    ASSERT_EQ(generalNumber(value), by15Digits(value)) << round;
  }
  EXPECT_GT(told, 50000);
}

}  // namespace
}  // namespace vantrelix
