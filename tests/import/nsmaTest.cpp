// What the NSMA reader makes of a file that it takes.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "NsmaSource.h"
#include "foundation/regional.h"
#include "support/TempFolder.h"

namespace vantrelix::test {

namespace {

using ::testing::DoubleNear;
using ::testing::ElementsAre;
using ::testing::Ge;
using ::testing::IsEmpty;
using ::testing::Pointwise;
using ::testing::SizeIs;
using Stored = ImportSource::Stored;

constexpr const char* kHeader =
    "REVNUM:,NSMA WG16.99.050\nANTMAN:,MAKER\nMODNUM:,HP8-65\nLOWFRQ:,6425\nHGHFRQ:,7125\nGUNITS:,DBI/DBR\n"
    "MDGAIN:,41.5\nELTILT:,0\nNOFREQ:,1\nPATFRE:,6775\nNUMCUT:,4\n";

std::string sample(const std::string& name) {
  return readMachineFile(std::string(VANTRELIX_SOURCE_DIR) + "/tests/data/nsma/" + name);
}

TEST_F(Nsma, ReadsHeaderAndBothCuts) {
  const ImportedAntenna antenna = readOne(kHeader + cut("AZ", "H/H", "-180.0,-70.0,\n0.0,0.0,\n180.0,-71.0,\n", "3") +
                                          cut("EL", "H/H", "-90.0,-50.0,\n0.0,0.0,\n", "2") + "ENDFIL:,\n");
  EXPECT_EQ(antenna.AntName, "MAKER HP8-65 Hpol");
  EXPECT_DOUBLE_EQ(antenna.Gain, 41.5);
  EXPECT_EQ(antenna.GainUnits, "DBI");
  EXPECT_DOUBLE_EQ(antenna.FreqLow, 6425);
  EXPECT_DOUBLE_EQ(antenna.FreqHigh, 7125);
  EXPECT_DOUBLE_EQ(antenna.Freq, 6775);
  EXPECT_EQ(antenna.HorCount, 3);
  EXPECT_THAT(antenna.HorAngle, ElementsAre(-180, 0, 180));
  EXPECT_THAT(antenna.HorValue, ElementsAre(-28.5, 41.5, -29.5));
  EXPECT_EQ(antenna.VerCount, 2);
  EXPECT_THAT(antenna.VerAngle, ElementsAre(-90, 0));
  EXPECT_THAT(antenna.VerValue, ElementsAre(-8.5, 41.5));
  EXPECT_DOUBLE_EQ(antenna.MinHor, -29.5);
  EXPECT_DOUBLE_EQ(antenna.MinVer, -8.5);
  EXPECT_THAT(suite.messages, IsEmpty());
}

TEST_F(Nsma, OtherKeywordLinesAmongThePointsArePassedOverAndNotTaken) {
  const ImportedAntenna antenna = readOne(
      kHeader + cut("AZ", "H/H", "FSTLST:,-180,180\n0,0\nMDGAIN:,7\nANTMAN:,OTHER\n10,-1\n", "2") + "ENDFIL:,\n");
  EXPECT_THAT(antenna.HorAngle, ElementsAre(0, 10));
  EXPECT_DOUBLE_EQ(antenna.Gain, 41.5);
  EXPECT_EQ(antenna.AntName, "MAKER HP8-65 Hpol");
}

TEST_F(Nsma, ACountThatIsTooLargeTakesThePointsOfTheNextCut) {
  const ImportedAntenna antenna = readOne(kHeader + cut("AZ", "H/H", "0,0\n10,-1\n", "5") +
                                          cut("EL", "V/V", "20,-2\n30,-3\n40,-4\n", "3") + "ENDFIL:,\n");
  EXPECT_EQ(antenna.AntName, "MAKER HP8-65 Hpol");
  EXPECT_THAT(antenna.HorAngle, ElementsAre(0, 10, 20, 30, 40));
  EXPECT_EQ(antenna.VerCount, 0);
}

TEST_F(Nsma, AFileWithBothPolarisationsGivesTheHorizontalAntennaFirst) {
  const std::vector<ImportedAntenna> antennas =
      read(kHeader + cut("EL", "V/V", "4,-4\n", "1") + cut("AZ", "V/V", "3,-3\n", "1") +
           cut("EL", "H/H", "2,-2\n", "1") + cut("AZ", "H/H", "1,-1\n", "1") + "ENDFIL:,\n");
  EXPECT_EQ(flag, 0);
  ASSERT_THAT(antennas, SizeIs(2));
  EXPECT_EQ(antennas[0].AntName, "MAKER HP8-65 Hpol");
  EXPECT_THAT(antennas[0].HorAngle, ElementsAre(1));
  EXPECT_THAT(antennas[0].VerAngle, ElementsAre(2));
  EXPECT_EQ(antennas[1].AntName, "MAKER HP8-65 Vpol");
  EXPECT_THAT(antennas[1].HorAngle, ElementsAre(3));
  EXPECT_THAT(antennas[1].VerAngle, ElementsAre(4));
  EXPECT_DOUBLE_EQ(antennas[1].FreqHigh, 7125);
}

TEST_F(Nsma, AFileWithVerticalCutsAloneGivesOneAntennaNamedVpol) {
  EXPECT_EQ(readOne(kHeader + cut("EL", "V/V", "0,0\n", "1") + "ENDFIL:,\n").AntName, "MAKER HP8-65 Vpol");
}

TEST_F(Nsma, AFileWithAnAzimuthCutAloneHasAnEmptyElevationPattern) {
  const ImportedAntenna antenna = readOne(kHeader + cut("AZ", "H/H", "0,0\n", "1") + "ENDFIL:,\n");
  EXPECT_EQ(antenna.HorCount, 1);
  EXPECT_EQ(antenna.VerCount, 0);
  EXPECT_THAT(antenna.VerAngle, IsEmpty());
  EXPECT_DOUBLE_EQ(antenna.MinVer, 88888);
}

TEST_F(Nsma, AFileWithoutAUsableCutGivesNothingAndNoError) {
  EXPECT_THAT(read(kHeader + cut("AZ", "H/V", "0,0\n", "1") + cut("PHI", "H/H", "0,0\n", "1") +
                   cut("AZ", "H", "0,0\n", "1") + cut("AZ", "H/H", "", "0") + "ENDFIL:,\n"),
              IsEmpty());
  EXPECT_EQ(flag, 0);
  EXPECT_THAT(read("ENDFIL:,\n"), IsEmpty());
  EXPECT_EQ(flag, 0);
  EXPECT_THAT(suite.messages, IsEmpty());
}

TEST_F(Nsma, CutsAreAlsoNamedHAndVInAnyCase) {
  const ImportedAntenna antenna =
      readOne(kHeader + cut("h", "v/v", "1,0\n", "1") + cut("v", "V/v", "2,0\n", "1") + "ENDFIL:,\n");
  EXPECT_THAT(antenna.HorAngle, ElementsAre(1));
  EXPECT_THAT(antenna.VerAngle, ElementsAre(2));
  const ImportedAntenna other =
      readOne(kHeader + cut("H", "h/h", "3,0\n", "1") + cut("V", "H/H", "4,0\n", "1") + "ENDFIL:,\n");
  EXPECT_THAT(other.HorAngle, ElementsAre(3));
  EXPECT_THAT(other.VerAngle, ElementsAre(4));
}

TEST_F(Nsma, CutNamesAreTakenWithTheirBlanks) {
  EXPECT_THAT(read(kHeader + cut("AZ ", "H/H", "0,0\n", "1") + cut("AZ", " H/H", "0,0\n", "1") + "ENDFIL:,\n"),
              IsEmpty());
  EXPECT_EQ(flag, 0);
}

TEST_F(Nsma, ALaterCutOfTheSamePlaceReplacesTheEarlierOne) {
  const ImportedAntenna antenna =
      readOne(kHeader + cut("AZ", "H/H", "1,0\n2,0\n", "2") + cut("H", "H/H", "3,0\n", "1") + "ENDFIL:,\n");
  EXPECT_THAT(antenna.HorAngle, ElementsAre(3));
  EXPECT_THAT(read(kHeader + cut("AZ", "H/H", "1,0\n", "1") + cut("AZ", "H/H", "", "-1") + "ENDFIL:,\n"), IsEmpty());
}

TEST_F(Nsma, KeywordsStandInAnyCaseAndOrder) {
  const ImportedAntenna antenna = readOne(cut("AZ", "H/H", "0,-3\n", "1") +
                                          "mdgain:,10\nGunits:,dbd/dbr\nhghfrq:,960\nmodnum:,b:c,d\nantman:,a\n"
                                          "lowfrq:,870 MHz\npatfre:,900\nrevnum:,nsma\nendfil\n");
  EXPECT_EQ(antenna.AntName, "a b:c,d Hpol");
  EXPECT_EQ(antenna.GainUnits, "DBD");
  EXPECT_DOUBLE_EQ(antenna.FreqLow, 870);
  EXPECT_DOUBLE_EQ(antenna.FreqHigh, 960);
  EXPECT_THAT(antenna.HorValue, ElementsAre(7));
}

TEST_F(Nsma, LinesWithoutAKnownKeywordArePassedOver) {
  const ImportedAntenna antenna = readOne(
      "REVDAT:,1999\n\njust words\n ANTMAN:,not me\nANTMAN,nor me\nANTMAN:nor me\nXANTMAN:,nor me\n" +
      std::string(kHeader) + cut("AZ", "H/H", "FSTLST:,-180,180\n0,0\nCOMNT1:,5,5\n90,-3\n", "2") + "ENDFIL:,\n");
  EXPECT_EQ(antenna.AntName, "MAKER HP8-65 Hpol");
  EXPECT_THAT(antenna.HorAngle, ElementsAre(0, 90));
}

TEST_F(Nsma, ANameKeepsItsBlanksAndIsMadeOfWhatTheFileNames) {
  EXPECT_EQ(readOne(onePoint("ANTMAN:,Maker Inc. \nMODNUM:, M \n", "1")).AntName, "Maker Inc.   M  Hpol");
  EXPECT_EQ(readOne(onePoint("", "1")).AntName, "  Hpol");
  EXPECT_EQ(readOne(onePoint("ANTMAN:,Caf\xE9\nMODNUM:,A:,B\n", "1")).AntName, "Caf\xC3\xA9 A Hpol");
}

TEST_F(Nsma, WhatFollowsTheEndIsIgnored) {
  EXPECT_EQ(readOne(onePoint("ANTMAN:,A\n", "1") + "ANTMAN:,B\nNOFREQ:,2\n").AntName, "A  Hpol");
}

TEST_F(Nsma, AnglesStayAsTheyStandAndTrailingFieldsAreIgnored) {
  const ImportedAntenna antenna =
      readOne(kHeader + cut("AZ", "H/H", " -190.5 , -1 ,7,8\n400,-2\n", "2") + "ENDFIL:,\n");
  EXPECT_THAT(antenna.HorAngle, ElementsAre(-190.5, 400));
  EXPECT_THAT(antenna.HorValue, ElementsAre(40.5, 39.5));
}

TEST_F(Nsma, APointOfWordsIsZeroAndSoIsABlankLine) {
  const ImportedAntenna antenna = readOne(cut("AZ", "H/H", "west,high\n\n45 3\n", "3") + "ENDFIL:,\n");
  EXPECT_THAT(antenna.HorAngle, ElementsAre(0, 0, 0));
  EXPECT_THAT(antenna.HorValue, ElementsAre(0, 0, 0));
}

TEST_F(Nsma, AColonAloneMakesNoKeywordLine) {
  const ImportedAntenna antenna = readOne(cut("AZ", "H/H", "12:30,-3\n7,-4\n", "2") + "ENDFIL:,\n");
  EXPECT_THAT(antenna.HorAngle, ElementsAre(0, 7));
  EXPECT_THAT(antenna.HorValue, ElementsAre(-3, -4));
}

TEST_F(Nsma, TheEndWithinACutEndsCutAndFile) {
  const ImportedAntenna antenna =
      readOne(kHeader + cut("AZ", "H/H", "1,0\n2,0\nendfil:,\n3,0\n", "32767") + "ANTMAN:,B\n");
  EXPECT_THAT(antenna.HorAngle, ElementsAre(1, 2));
  EXPECT_EQ(antenna.AntName, "MAKER HP8-65 Hpol");
}

TEST_F(Nsma, SurplusPointsArePassedOver) {
  const ImportedAntenna antenna =
      readOne(kHeader + cut("AZ", "H/H", "1,0\n2,0\n3,0\n", "1") + cut("EL", "H/H", "4,0\n5,0\n", "-1") + "ENDFIL:,\n");
  EXPECT_THAT(antenna.HorAngle, ElementsAre(1));
  EXPECT_EQ(antenna.VerCount, 0);
}

TEST_F(Nsma, ACutHoldsUpTo32767Points) {
  std::string points;
  for (int i = 0; i < 32767; ++i) points += "1,-1\n";
  EXPECT_EQ(readOne(kHeader + cut("AZ", "H/H", points, "32767") + "ENDFIL:,\n").HorCount, 32767);
}

TEST_F(Nsma, TheNumberOfFrequenciesIsOneOrNotAvailable) {
  for (const char* count : {"1", " 1 ", "1.0", "1 frequency", "NA"}) {
    EXPECT_THAT(read(onePoint(std::string("NOFREQ:,") + count + "\n", "1")), SizeIs(1)) << count;
  }
  EXPECT_THAT(suite.messages, IsEmpty());
}

TEST_F(Nsma, TakesTheRegionalDecimalCharacter) {
  const RegionalCharacters former = regionalCharacters();
  regionalCharacters() = {",", "."};
  const ImportedAntenna antenna = readOne("MDGAIN:,2,5\n" + onePoint("", "-3"));
  regionalCharacters() = former;
  EXPECT_DOUBLE_EQ(antenna.Gain, 2.5);
}

TEST_F(Nsma, AnAntennaThatIsSkippedOrCancelledEndsTheFileWithoutAnError) {
  const std::string both = cut("AZ", "H/H", "0,0\n", "1") + cut("AZ", "V/V", "0,0\n", "1") + "ENDFIL:,\n";
  for (const Stored outcome : {Stored::skipped, Stored::cancelled, Stored::failedStop}) {
    EXPECT_THAT(read(both, {outcome}), SizeIs(1));
    EXPECT_EQ(flag, 0);
  }
  for (const Stored outcome : {Stored::written, Stored::failedGoOn}) {
    EXPECT_THAT(read(both, {outcome, Stored::failedStop}), SizeIs(2));
    EXPECT_EQ(flag, 0);
  }
  EXPECT_THAT(suite.messages, IsEmpty());
}

TEST_F(Nsma, ReadsTheSameFromEveryKindOfTextFile) {
  for (const char* name :
       {"dish.adf", "dish-line-feeds.adf", "dish-carriage-returns.adf", "dish-utf8-mark.adf", "dish-utf16.adf"}) {
    const std::vector<ImportedAntenna> antennas = read(sample(name));
    ASSERT_THAT(antennas, SizeIs(2)) << name;
    EXPECT_EQ(antennas[0].AntName, "Tallis Aerials TA-8-65 Hpol") << name;
    EXPECT_EQ(antennas[1].HorCount, 73) << name;
    EXPECT_EQ(antennas[1].VerCount, 37) << name;
    EXPECT_THAT(antennas[0].HorValue, Pointwise(Ge(), std::vector<double>(73, -28.5))) << name;
    EXPECT_DOUBLE_EQ(antennas[0].HorValue[36], 41.5) << name;
  }
}

TEST_F(Nsma, ReadsTheOtherSamples) {
  const ImportedAntenna panel = readOne(sample("panel-vertical-only.adf"));
  EXPECT_EQ(panel.AntName, "Caf\xC3\xA9 Antennas CP 900 Vpol");
  EXPECT_THAT(panel.HorValue, Pointwise(DoubleNear(1e-9), {15.1, 2.6, -12.9, 2.6}));
  EXPECT_THAT(readOne(sample("linear.adf")).HorValue, Pointwise(DoubleNear(1e-9), {-20.0, 20.0, -20.0}));
}

}  // namespace

}  // namespace vantrelix::test
