#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "NsmaFccFixture.h"
#include "foundation/getINI.h"
#include "foundation/suitePaths.h"

namespace vantrelix::test {

namespace {

using ::testing::DoubleNear;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pointwise;
using ::testing::SizeIs;
using ::testing::StartsWith;

TEST_F(NsmaFcc, ReadsHeaderAndBothCuts) {
  const ImportedAntenna antenna =
      read(header() +
           "anything\nHH 3\n-170.0 -62.0\n0.0 0.0\n170.0 -61.0\nELVV 3\n-90.0 -49.0\n0.0 0.0\n90.0 -45.5\n"
           "END\n");
  EXPECT_EQ(antenna.AntName, "MAKER  PAR6-59W");
  EXPECT_DOUBLE_EQ(antenna.FreqLow, 5925);
  EXPECT_DOUBLE_EQ(antenna.FreqHigh, 6425);
  EXPECT_DOUBLE_EQ(antenna.Freq, 6175);
  EXPECT_DOUBLE_EQ(antenna.Gain, 30);
  EXPECT_EQ(antenna.GainUnits, "dBi");
  EXPECT_EQ(antenna.HorCount, 3);
  EXPECT_THAT(antenna.HorAngle, ElementsAre(190, 0, 170));
  EXPECT_THAT(antenna.HorValue, ElementsAre(-32, 30, -31));
  EXPECT_EQ(antenna.VerCount, 3);
  EXPECT_THAT(antenna.VerAngle, ElementsAre(-90, 0, 90));
  EXPECT_THAT(antenna.VerValue, ElementsAre(-19, 30, -15.5));
  EXPECT_DOUBLE_EQ(antenna.MinHor, -32);
  EXPECT_DOUBLE_EQ(antenna.MinVer, -19);
}

TEST_F(NsmaFcc, TheNameIsTheMakersFirstWordAndTheModel) {
  EXPECT_EQ(read(header("  Maker of dishes ", "  M 1  ")).AntName, "Maker  M 1");
  EXPECT_EQ(read(header("NoBlankHere", "M 1")).AntName, " M 1");
  EXPECT_EQ(read(header("NoBlankBehind  ", "M 1")).AntName, " M 1");
  EXPECT_EQ(read(header("", "")).AntName, " ");
  EXPECT_EQ(read(header("Caf\xE9 Inc.", "M\x01\xC3\xA9 1")).AntName, "Caf   M   1");
}

TEST_F(NsmaFcc, ABandIsTwoNumbersOrOne) {
  const auto band = [](const std::string& line) {
    const ImportedAntenna antenna = read(header("A B", "C", line));
    return std::vector<double>{antenna.FreqLow, antenna.FreqHigh, antenna.Freq};
  };
  EXPECT_THAT(band("5925-6425"), ElementsAre(5925, 6425, 6175));
  EXPECT_THAT(band(" 5925 - 6425 MHz"), ElementsAre(5925, 6425, 6175));
  EXPECT_THAT(band("5925-6425-7000"), ElementsAre(5925, 6425, 6175));
  EXPECT_THAT(band("5925-"), ElementsAre(5925, 0, 2962.5));
  EXPECT_THAT(band("-6425"), ElementsAre(0, 6425, 3212.5));
  EXPECT_THAT(band("11200"), ElementsAre(11200, 11200, 11200));
  EXPECT_THAT(band("all"), ElementsAre(0, 0, 0));
  EXPECT_THAT(band("1.7E308-1.7E308"), Each(1.7E308));
}

TEST_F(NsmaFcc, AGainMayBearItsUnit) {
  EXPECT_DOUBLE_EQ(read(header("A B", "C", "1", " 31.1 dBd")).Gain, 31.1);
  EXPECT_EQ(read(header("A B", "C", "1", "31.1 dBd")).GainUnits, "dBi");
  EXPECT_DOUBLE_EQ(read(header("A B", "C", "1", "much")).Gain, 0);
}

TEST_F(NsmaFcc, AzimuthsAreWrappedAndElevationsAreNot) {
  const ImportedAntenna antenna = read(header() + "HH 3\n-10 0\n360 0\n370 0\nELVV 3\n-190 0\n400 0\n-190 0\nEND\n");
  EXPECT_THAT(antenna.HorAngle, ElementsAre(350, 360, 10));
  EXPECT_THAT(antenna.VerAngle, ElementsAre(-190, 400, -190));
}

TEST_F(NsmaFcc, AClosingPointIsDroppedFromTheAzimuthBlockAlone) {
  const ImportedAntenna antenna = read(header() + "HH 3\n-180 -3\n0 0\n180 -4\nELVV 3\n-90 -3\n0 0\n-90 -3\nEND\n");
  EXPECT_EQ(antenna.HorCount, 2);
  EXPECT_THAT(antenna.HorAngle, ElementsAre(180, 0));
  EXPECT_THAT(antenna.HorValue, ElementsAre(27, 30));
  EXPECT_DOUBLE_EQ(antenna.MinHor, 26);
  EXPECT_EQ(antenna.VerCount, 3);
  EXPECT_EQ(read(header() + "HH 2\n-170 0\n170 0\nEND\n").HorCount, 2);
  EXPECT_EQ(read(header() + "HH 2\n0 0\n360 0\nEND\n").HorCount, 2);
}

TEST_F(NsmaFcc, ABlockOfOnePointLosesIt) {
  const ImportedAntenna antenna = read(header() + "HH 1\n5 0\nELVV 1\n5 0\nEND\n");
  EXPECT_EQ(antenna.HorCount, 0);
  EXPECT_THAT(antenna.HorAngle, IsEmpty());
  EXPECT_THAT(antenna.HorValue, IsEmpty());
  EXPECT_EQ(antenna.VerCount, 1);
}

TEST_F(NsmaFcc, ValuesAreBelowTheGainWhateverTheirSign) {
  const ImportedAntenna antenna = read(header() + "HH 2\n0 3\n90 -3\nELVV 2\n0 4.5\n9 -4.5\nEND\n");
  EXPECT_THAT(antenna.HorValue, ElementsAre(27, 27));
  EXPECT_THAT(antenna.VerValue, ElementsAre(25.5, 25.5));
}

TEST_F(NsmaFcc, TheMinimaHaveTheirOwnStartsAndRules) {
  const std::string high = header("A B", "C", "1", "900000");
  EXPECT_DOUBLE_EQ(read(high + "HH 2\n0 0\n9 0\nELVV 1\n0 0\nEND\n").MinHor, 888888);
  EXPECT_DOUBLE_EQ(read(high + "HH 2\n0 0\n9 0\nELVV 1\n0 0\nEND\n").MinVer, 88888);
  const ImportedAntenna deep = read(header() + "HH 2\n0 -60\n9 0\nELVV 3\n0 -60\n1 -50\n2 -10\nEND\n");
  EXPECT_DOUBLE_EQ(deep.MinHor, -30);
  EXPECT_DOUBLE_EQ(deep.MinVer, 20);
}

TEST_F(NsmaFcc, ABlockOfNoPointsLeavesItsCutEmpty) {
  const ImportedAntenna antenna = read(header() + "HH 0\nELVV\n5 5\nEND\n");
  EXPECT_EQ(antenna.HorCount, 0);
  EXPECT_EQ(antenna.VerCount, 0);
  EXPECT_THAT(antenna.HorAngle, IsEmpty());
}

TEST_F(NsmaFcc, ACountIsTheNumberBehindTheMarkersColumns) {
  EXPECT_EQ(read(header() + "hh2\n0 0\n9 0\nx\n").HorCount, 2);
  EXPECT_EQ(read(header() + "HH   2 points\n0 0\n9 0\nx\n").HorCount, 2);
  EXPECT_EQ(read(header() + "HH many\n0 0\n9 0\nx\n").HorCount, 0);
  EXPECT_EQ(read(header() + "HH 40000\n0 0\n9 0\nx\n").HorCount, 0);
  EXPECT_EQ(read(header() + "elvv1\n0 0\nx\n").VerCount, 1);
}

TEST_F(NsmaFcc, ALaterBlockReplacesTheEarlierOne) {
  const ImportedAntenna antenna =
      read(header() + "HH 2\n1 -20\n2 -20\nELVV 1\n1 0\nHH 2\n3 -1\n4 -2\nELVV 1\n9 0\nEND\n");
  EXPECT_THAT(antenna.HorAngle, ElementsAre(3, 4));
  EXPECT_THAT(antenna.HorValue, ElementsAre(29, 28));
  EXPECT_DOUBLE_EQ(antenna.MinHor, 28);
  EXPECT_THAT(antenna.VerAngle, ElementsAre(9));
}

TEST_F(NsmaFcc, LinesOutsideABlockArePassedOver) {
  const ImportedAntenna antenna =
      read(header() + " HH 2\nHV 2\nELHH 2\nELV 2\n\n1 1\nHH 2\n0 0\n9 0\n5 5\nEND\nELVV 1\n3 3\nlast\n");
  EXPECT_THAT(antenna.HorAngle, ElementsAre(0, 9));
  EXPECT_THAT(antenna.VerAngle, ElementsAre(3));
}

TEST_F(NsmaFcc, AFileWithNeitherMarkerGivesAnAntennaWithEmptyCuts) {
  const ImportedAntenna antenna = read(header() + "VV 1\n0 0\nEND\n");
  EXPECT_EQ(antenna.AntName, "MAKER  PAR6-59W");
  EXPECT_EQ(antenna.HorCount, 0);
  EXPECT_EQ(antenna.VerCount, 0);
}

TEST_F(NsmaFcc, MarkersAreSettings) {
  ASSERT_TRUE(setINI("Antenna Data Path", "NSMA (FCC) AZ", getDefaultsINI(), "\" vv \""));
  ASSERT_TRUE(setINI("Antenna Data Path", "NSMA (FCC) EL", getDefaultsINI(), "elh\xC3\xA9"));
  const ImportedAntenna antenna = read(header() + "HH 2\n0 0\n9 0\nVV 2\n1 0\n2 0\nELVV 1\n0 0\nELH\xC9 1\n3 0\nEND\n");
  EXPECT_THAT(antenna.HorAngle, ElementsAre(1, 2));
  EXPECT_THAT(antenna.VerAngle, ElementsAre(3));
}

TEST_F(NsmaFcc, AMarkerOfAnotherWidthNeverMatches) {
  ASSERT_TRUE(setINI("Antenna Data Path", "NSMA (FCC) AZ", getDefaultsINI(), "HHH"));
  EXPECT_EQ(read(header() + "HHH2\n0 0\n9 0\nHH 2\n0 0\n9 0\nEND\n").HorCount, 0);
}

TEST_F(NsmaFcc, TheAzimuthMarkerComesFirst) {
  ASSERT_TRUE(setINI("Antenna Data Path", "NSMA (FCC) AZ", getDefaultsINI(), "EL"));
  const ImportedAntenna antenna = read(header() + "ELVV 2\n0 0\nEND\n");
  EXPECT_EQ(antenna.VerCount, 0);
}

TEST_F(NsmaFcc, FieldsAreSplitAtTabsOrAtRunsOfBlanks) {
  const ImportedAntenna antenna = read(header() + "HH\t3\n  0    -1  9\n90\t -2\t9\n 95 \t-3\nEND\n");
  EXPECT_THAT(antenna.HorAngle, ElementsAre(0, 90, 95));
  EXPECT_THAT(antenna.HorValue, ElementsAre(29, 28, 27));
}

TEST_F(NsmaFcc, ReadsTheSameFromEveryKindOfTextFile) {
  for (const char* name : {"dish.txt", "dish-line-feeds.txt", "dish-carriage-returns.txt", "dish-tabs.txt",
                           "dish-runs-of-blanks.txt", "dish-utf8-mark.txt"}) {
    const ImportedAntenna antenna = read(sample(name));
    EXPECT_THAT(antenna.AntName, StartsWith("Tallis  PAR6-59W")) << name;
    EXPECT_DOUBLE_EQ(antenna.Freq, 6175) << name;
    EXPECT_EQ(antenna.HorCount, 72) << name;
    EXPECT_DOUBLE_EQ(antenna.HorValue[36], 38.9) << name;
    EXPECT_THAT(antenna.VerValue, SizeIs(37)) << name;
    EXPECT_NEAR(antenna.MinHor, -23.1, 1e-9) << name;
  }
}

TEST_F(NsmaFcc, ReadsASingleFrequency) {
  const ImportedAntenna antenna = read(sample("one-frequency.txt"));
  EXPECT_EQ(antenna.AntName, " M   1");
  EXPECT_DOUBLE_EQ(antenna.FreqHigh, 11200);
  EXPECT_THAT(antenna.HorValue, Pointwise(DoubleNear(1e-9), {37.0, 37.0}));
}

}  // namespace

}  // namespace vantrelix::test
