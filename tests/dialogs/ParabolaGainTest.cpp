#include <cmath>
#include <gtest/gtest.h>
#include <limits>

#include "dialogs/ParabolaGain.h"
#include "foundation/numbers.h"
#include "support/TempSuite.h"

namespace vantrelix {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

class ParabolaGainTest : public testing::Test {
 protected:
  // Of which no gain comes, and no message.
  void expectFailed(double diameter, const char* unit, double freq) {
    bool failed = false;
    EXPECT_EQ(ParabolaGain(diameter, unit, freq, failed), 0) << diameter << " " << unit << " " << freq;
    EXPECT_TRUE(failed) << diameter << " " << unit << " " << freq;
    EXPECT_TRUE(suite.messages.empty());
  }
  double gain(double diameter, const char* unit, double freq) {
    bool failed = true;
    const double result = ParabolaGain(diameter, unit, freq, failed);
    EXPECT_FALSE(failed) << diameter << " " << unit << " " << freq;
    return result;
  }

  test::TempSuite suite;
};

TEST_F(ParabolaGainTest, OneMetreAtOneGigahertzIsTheConstant) { EXPECT_DOUBLE_EQ(gain(1, "m", 1000), 17.8); }

TEST_F(ParabolaGainTest, FeetAreConvertedBeforeTheLogarithm) {
  EXPECT_EQ(formatNumber(gain(10, "ft", 6000), "0.00"), "43.04");
}

TEST_F(ParabolaGainTest, EveryUnitOfLengthGivesTheGainOfItsMetres) {
  const std::pair<const char*, double> rows[] = {
      {"m", 2}, {"cm", 200}, {"mm", 2000}, {"ft", 2 / 0.3048}, {"in", 2 / 0.0254}, {"km", 0.002}, {"METERS", 2},
  };
  for (const auto& [unit, diameter] : rows) EXPECT_NEAR(gain(diameter, unit, 2400), 31.4248, 1e-4) << unit;
}

TEST_F(ParabolaGainTest, TwiceTheDiameterOrTheFrequencyIsSixDecibelsMore) {
  const double more = 20 * std::log10(2.0);
  EXPECT_NEAR(gain(2, "m", 1000) - gain(1, "m", 1000), more, 1e-12);
  EXPECT_NEAR(gain(1, "m", 2000) - gain(1, "m", 1000), more, 1e-12);
}

TEST_F(ParabolaGainTest, ASmallDishAtALowFrequencyHasAGainBelowZero) { EXPECT_NEAR(gain(10, "cm", 1000), -2.2, 1e-12); }

TEST_F(ParabolaGainTest, AUnitThatIsNotKnownFails) {
  for (const char* unit : {"", " ", "M", "Ft", "furlong", "m ", "dBi"}) expectFailed(1, unit, 1000);
}

TEST_F(ParabolaGainTest, ADiameterOrAFrequencyThatIsNotAboveZeroFails) {
  for (const double wrong : {0.0, -0.0, -1.0, -1e300, -kInfinity, kNan}) {
    expectFailed(wrong, "m", 1000);
    expectFailed(wrong, "ft", 1000);
    expectFailed(1, "m", wrong);
  }
}

TEST_F(ParabolaGainTest, NumbersAtTheEndsOfTheirRangeGiveAGainOrFailAndShowNoMessage) {
  EXPECT_NEAR(gain(1e308, "m", 1e308), 20 * (308 + 305) + 17.8, 1e-9);
  EXPECT_NEAR(gain(1e-300, "m", 1e-300), 20 * (-300 - 303) + 17.8, 1e-9);
  expectFailed(1e308, "km", 1000);
  expectFailed(kInfinity, "m", 1000);
  expectFailed(1, "m", kInfinity);
  expectFailed(5e-324, "cm", 1000);
  expectFailed(1, "m", 5e-324);
}

}  // namespace
}  // namespace vantrelix
