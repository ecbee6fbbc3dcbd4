// How the NSMA reader brings pattern values into the units of the gain.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "NsmaSource.h"
#include "foundation/getINI.h"
#include "foundation/suitePaths.h"

namespace vantrelix::test {

namespace {

using ::testing::DoubleNear;
using ::testing::ElementsAre;
using ::testing::Pointwise;

using NsmaValues = Nsma;

TEST_F(NsmaValues, ThePatternWordDecidesHowValuesAreConverted) {
  const auto value = [this](const std::string& units, const std::string& number) {
    return readOne(onePoint("GUNITS:," + units + "\nMDGAIN:,20\n", number)).HorValue;
  };
  EXPECT_THAT(value("DBI/DBR", "-3"), ElementsAre(17));
  EXPECT_THAT(value("dbi,dbr", "-3"), ElementsAre(17));
  EXPECT_THAT(value("DBI/LIN", "0.1"), Pointwise(DoubleNear(1e-9), {0.0}));
  EXPECT_THAT(value("DBI/LIN", "10"), Pointwise(DoubleNear(1e-9), {40.0}));
  EXPECT_THAT(value("DBI/DBD", "3"), ElementsAre(5.15));
  EXPECT_THAT(value("DBD/DBI", "3"), Pointwise(DoubleNear(1e-9), {0.85}));
  EXPECT_THAT(value("DBI/DBI", "3"), ElementsAre(3));
  EXPECT_THAT(value("DBR/DBR", "-3"), ElementsAre(-3));
  EXPECT_THAT(value("DBI/VOLT", "3"), ElementsAre(3));
  EXPECT_THAT(value("DBI/DBR ", "3"), ElementsAre(3));
  EXPECT_THAT(value("DBI,X/DBR", "3"), ElementsAre(23));
}

TEST_F(NsmaValues, BothCutsAreConverted) {
  const ImportedAntenna antenna =
      readOne("GUNITS:,DBD/DBI\n" + cut("AZ", "H/H", "0,10\n", "1") + cut("EL", "H/H", "0,20\n", "1") + "ENDFIL:,\n");
  EXPECT_THAT(antenna.HorValue, ElementsAre(7.85));
  EXPECT_THAT(antenna.VerValue, ElementsAre(17.85));
}

TEST_F(NsmaValues, WithoutAUnitsLineValuesStayAndTheGainHasNoUnits) {
  const ImportedAntenna antenna = readOne(onePoint("MDGAIN:,20\n", "-3"));
  EXPECT_THAT(antenna.HorValue, ElementsAre(-3));
  EXPECT_EQ(antenna.GainUnits, "");
}

TEST_F(NsmaValues, AGainBehindTheCutStillCounts) {
  EXPECT_THAT(readOne("GUNITS:,DBI/DBR\n" + cut("AZ", "H/H", "0,-3\n", "1") + "MDGAIN:,20\nENDFIL:,\n").HorValue,
              ElementsAre(17));
}

TEST_F(NsmaValues, AZeroInALinearPatternBringsTheLogarithmsMessageAndCountsAsZero) {
  EXPECT_THAT(readOne(onePoint("GUNITS:,DBI/LIN\nMDGAIN:,20\n", "0")).HorValue, ElementsAre(20));
  EXPECT_EQ(onlyMessage().title, "Math Error");
}

TEST_F(NsmaValues, ValuesAreRaisedToTheLeastValidGain) {
  const ImportedAntenna antenna = readOne("GUNITS:,DBI/DBR\nMDGAIN:,10\n" + cut("AZ", "H/H", "0,-70\n", "1") +
                                          cut("EL", "H/H", "0,-61\n1,-59.5\n", "2") + "ENDFIL:,\n");
  EXPECT_THAT(antenna.HorValue, ElementsAre(-50));
  EXPECT_THAT(antenna.VerValue, ElementsAre(-50, -49.5));
  EXPECT_DOUBLE_EQ(antenna.MinHor, -50);
  EXPECT_DOUBLE_EQ(antenna.MinVer, -50);
}

TEST_F(NsmaValues, TheLeastValidGainIsASetting) {
  ASSERT_TRUE(setINI("HDAntenna", "MinValidGain", getDefaultsINI(), "-5"));
  EXPECT_THAT(readOne(onePoint("", "-5.5")).HorValue, ElementsAre(-5));
  EXPECT_THAT(readOne(onePoint("", "-4.5")).HorValue, ElementsAre(-4.5));
}

}  // namespace

}  // namespace vantrelix::test
