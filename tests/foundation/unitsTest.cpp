#include <gtest/gtest.h>

#include "foundation/RegionalScope.h"
#include "foundation/numbers.h"
#include "foundation/units.h"

namespace vantrelix {
namespace {

using test::RegionalScope;

TEST(ConvertLen, TheSameWordGivesTheValueUnchanged) {
  bool err = true;
  EXPECT_EQ(ConvertLen("ft", "ft", 3, err), 3);
  EXPECT_FALSE(err);
  // Even a word that the table does not have.
  EXPECT_EQ(ConvertLen("furlong", "furlong", 0.1, err), 0.1);
  EXPECT_FALSE(err);
}

TEST(ConvertLen, FeetBecomeMetres) {
  bool err = true;
  EXPECT_DOUBLE_EQ(ConvertLen("ft", "m", 1, err), 0.3048);
  EXPECT_FALSE(err);
  EXPECT_DOUBLE_EQ(ConvertLen("m", "ft", 0.3048, err), 1);
}

TEST(ConvertLen, ANauticalMileHas1853Metres) {
  bool err = true;
  EXPECT_DOUBLE_EQ(ConvertLen("nm", "m", 1, err), 1853);
  EXPECT_FALSE(err);
}

struct Factor {
  const char* word;
  double metres;
};

class LengthWord : public testing::TestWithParam<Factor> {};

TEST_P(LengthWord, HasItsFactorBothWays) {
  bool err = true;
  EXPECT_DOUBLE_EQ(ConvertLen(GetParam().word, "km", 1000, err), GetParam().metres);
  EXPECT_FALSE(err);
  EXPECT_DOUBLE_EQ(ConvertLen("km", GetParam().word, GetParam().metres, err), 1000);
  EXPECT_FALSE(err);
}

INSTANTIATE_TEST_SUITE_P(Table, LengthWord,
                         testing::Values(Factor{"m", 1}, Factor{"meter", 1}, Factor{"meters", 1}, Factor{"Meter", 1},
                                         Factor{"METER", 1}, Factor{"Meters", 1}, Factor{"METERS", 1},
                                         Factor{"decimeter", 0.1}, Factor{"decimeters", 0.1}, Factor{"Decimeter", 0.1},
                                         Factor{"DECIMETER", 0.1}, Factor{"Decimeters", 0.1}, Factor{"DECIMETERS", 0.1},
                                         Factor{"cm", 0.01}, Factor{"mm", 0.001}, Factor{"ft", 0.3048},
                                         Factor{"in", 0.0254}, Factor{"mi", 1609.344}, Factor{"nm", 1853}));

TEST(ConvertLen, AWordInAnotherSpellingIsAnErrorAndGivesZero) {
  for (const char* word : {"Ft", "M", "KM", "feet", "m ", ""}) {
    bool err = false;
    EXPECT_EQ(ConvertLen(word, "m", 5, err), 0) << word;
    EXPECT_TRUE(err) << word;
    err = false;
    EXPECT_EQ(ConvertLen("m", word, 5, err), 0) << word;
    EXPECT_TRUE(err) << word;
  }
}

TEST(ConvertLenStr, TheTextGoesThroughCValP) {
  bool err = true;
  EXPECT_DOUBLE_EQ(ConvertLenStr("km", "m", "1.5 km", err), 1500);
  EXPECT_FALSE(err);
  EXPECT_EQ(ConvertLenStr("km", "m", "far", err), 0);
  EXPECT_FALSE(err);
  const RegionalScope comma(",", ".");
  EXPECT_DOUBLE_EQ(ConvertLenStr("m", "mm", "1,5", err), 1500);
}

TEST(ConvertFreq, GoesThroughMegahertz) {
  bool err = true;
  EXPECT_DOUBLE_EQ(ConvertFreq("GHz", "MHz", 1, err), 1000);
  EXPECT_FALSE(err);
  EXPECT_DOUBLE_EQ(ConvertFreq("Hz", "GHz", 2e9, err), 2);
  EXPECT_DOUBLE_EQ(ConvertFreq("MHz", "KHz", 98.5, err), 98500);
  EXPECT_DOUBLE_EQ(ConvertFreq("KHz", "Hz", 1, err), 1000);
  EXPECT_FALSE(err);
}

TEST(Convert, FactorsBelowOneLeaveNoRest) {
  bool err = true;
  EXPECT_EQ(ConvertLen("decimeter", "m", 98.5, err), 9.85);
  EXPECT_EQ(ConvertLen("mm", "cm", 0.3, err), 0.03);
  EXPECT_EQ(ConvertFreq("Hz", "MHz", 98.5, err), 9.85e-5);
  EXPECT_EQ(ConvertFreq("MHz", "Hz", 98.5, err), 98500000);
}

TEST(ConvertFreq, AnUnknownWordIsAnErrorAndGivesTheNoValueNumber) {
  bool err = false;
  EXPECT_EQ(ConvertFreq("THz", "MHz", 1, err), -88);
  EXPECT_TRUE(err);
  err = false;
  EXPECT_EQ(ConvertFreq("MHz", "kHz", 1, err), kNoValue);
  EXPECT_TRUE(err);
  EXPECT_EQ(ConvertFreq("THz", "THz", 7, err), 7);
  EXPECT_FALSE(err);
}

}  // namespace
}  // namespace vantrelix
