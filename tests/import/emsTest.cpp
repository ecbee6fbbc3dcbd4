#include <cmath>

#include "EmsFixture.h"
#include "foundation/regional.h"
#include "import/ems.h"

namespace vantrelix::test {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST_F(Ems, HasItsTexts) {
  const ImportFormat& format = *findImportFormat("ems");
  EXPECT_EQ(format.menuItem, "mnuImportEMS");
  EXPECT_EQ(format.menuCaption, "Legacy EMS Wireless File Format");
  EXPECT_EQ(format.legacyName, "EMS");
  EXPECT_EQ(format.dialogTitle, "EMS Wireless Files to Read");
  EXPECT_EQ(format.pathKey, "Import EMS Wireless");
  EXPECT_THAT(format.filters, IsEmpty());
  EXPECT_EQ(format.previewCaption, "EMS Wireless ANTENNA");
  EXPECT_EQ(format.traits, ImportFormat::keepsPlane);
}

TEST_F(Ems, TellsBeforeTheDialogThatItsFilesHoldNoGain) {
  const ImportNotice& notice = findImportFormat("ems")->notice;
  EXPECT_EQ(notice.title, "EMS ASCII Files");
  EXPECT_EQ(notice.text,
            "Note that the ASCII files for EMS antennas do not include major-lobe gain information.\r\n\r\n"
            "The patterns you import from these files will be assigned a gain of 0dBd, and all of the azimuth and "
            "elevation gain values will be measured as dB BELOW 0dBd.\r\n\r\n"
            "You can use the ZOR Antenna Editor to enter the actual gain value you want to use for the major lobe of "
            "the antenna, and the azimuth and elevation gains will be normalized to this value.");
}

TEST_F(Ems, NoOtherFormatHasANotice) {
  for (const ImportFormat& format : importFormats()) {
    EXPECT_EQ(format.notice.text.empty(), format.name != "ems") << format.name;
  }
}

TEST_F(Ems, ReadsFrequencyAndAttenuation) {
  const ImportedAntenna antenna = importText("AB12A.TXT", text("0,0.0\n10,0.5\n20,-3\n"));
  EXPECT_EQ(antenna.AntName, "AB12A");
  EXPECT_EQ(antenna.PolLetter, "H");
  EXPECT_DOUBLE_EQ(antenna.Gain, 0);
  EXPECT_EQ(antenna.GainUnits, "dBd");
  EXPECT_DOUBLE_EQ(antenna.Freq, 1850);
  EXPECT_DOUBLE_EQ(antenna.FreqLow, 1850);
  EXPECT_DOUBLE_EQ(antenna.FreqHigh, 1850);
  EXPECT_THAT(antenna.HorAngle, ElementsAre(0, 10, 20));
  EXPECT_THAT(antenna.HorValue, ElementsAre(0, -0.5, -3));
  EXPECT_EQ(antenna.VerCount, 0);
  EXPECT_EQ(captions.at(0), "EMS Wireless ANTENNA\r\nFile: " + files.machine("AB12A.TXT") + "\r\nAB12A");
}

// The point groups digits there.
TEST_F(Ems, ACommaPartsFieldsAlsoWhereItIsTheRegionalDecimal) {
  const RegionalCharacters former = regionalCharacters();
  regionalCharacters() = {",", "."};
  const ImportedAntenna antenna = importText("AB12A.TXT", text("0,0.985\n10,2\n", "1850,5"));
  regionalCharacters() = former;
  EXPECT_DOUBLE_EQ(antenna.Freq, 1850.5);
  EXPECT_THAT(antenna.HorAngle, ElementsAre(0, 10));
  EXPECT_THAT(antenna.HorValue, ElementsAre(-985, -2));
}

TEST_F(Ems, TheFrequencyIsTheNumberThatLineTwoBeginsWith) {
  EXPECT_DOUBLE_EQ(importText("xA.txt", text("0,0\n", " 1910.5 MHz")).Freq, 1910.5);
  EXPECT_DOUBLE_EQ(importText("xA.txt", text("0,0\n", "unknown")).FreqLow, 0);
}

TEST_F(Ems, LineOneMayHoldUpToThreeWholeNumbersOrNothing) {
  for (const char* line : {"", " ", "1", "1,2", "1,,3", "-1, 2 ,32767", "1,2,3,word", "1.4,-32768"}) {
    EXPECT_EQ(failureOf("xA.txt", std::string(line) + "\n1850\n0,0\n"), "") << line;
  }
}

TEST_F(Ems, AWordOrALargeNumberInLineOneFailsTheFile) {
  for (const char* line : {"EMS", "1,EMS", "1,2,EMS", "1 2,3", "12x"}) {
    EXPECT_THAT(failureOf("xA.txt", std::string(line) + "\n1850\n0,0\n"), HasSubstr("Type mismatch")) << line;
  }
  for (const char* line : {"32768", "1,-32769", "1,2,32767.5", "1E999"}) {
    EXPECT_THAT(failureOf("xA.txt", std::string(line) + "\n1850\n0,0\n"), HasSubstr("Overflow")) << line;
  }
}

TEST_F(Ems, AWordInLineOneIsToldInTheLibrarysText) {
  EXPECT_THAT(failureOf("xA.txt", "caf\xE9\n1850\n0,0\n"), HasSubstr("caf\xC3\xA9"));
}

TEST_F(Ems, AzimuthsAreWrapped) {
  EXPECT_THAT(importText("xA.txt", text("-10,1\n370,1\n360,1\n")).HorAngle, ElementsAre(350, 10, 360));
}

TEST_F(Ems, ElevationsAreNegatedWithoutWrapping) {
  const ImportedAntenna antenna = importText("xE.txt", text("0,0\n-10,1\n200,2\n370,3\n"));
  EXPECT_THAT(antenna.VerAngle, ElementsAre(0, 10, -200, -370));
  EXPECT_FALSE(std::signbit(antenna.VerAngle.at(0)));
  EXPECT_THAT(antenna.VerValue, ElementsAre(0, -1, -2, -3));
  EXPECT_EQ(antenna.VerCount, 4);
  EXPECT_EQ(antenna.HorCount, 0);
}

TEST_F(Ems, LinesAreSplitAtCommasAlone) {
  const ImportedAntenna antenna = importText("xA.txt", text("\n  \n0 , 1\n10 2\n20\t3\ntitle,here\n30,x\n40, 4 ,5\n"));
  EXPECT_THAT(antenna.HorAngle, ElementsAre(0, 40));
  EXPECT_THAT(antenna.HorValue, ElementsAre(-1, -4));
}

TEST_F(Ems, TheElevationMinimumFollowsFieldsAboveMinus50Alone) {
  EXPECT_DOUBLE_EQ(importText("xE.txt", text("0,-3\n10,-50\n20,-49\n")).MinVer, -49);
  EXPECT_DOUBLE_EQ(importText("xE.txt", text("0,70\n")).MinVer, -70);
  EXPECT_DOUBLE_EQ(importText("xE.txt", text("0,-60\n")).MinVer, 88888);
  EXPECT_DOUBLE_EQ(importText("xA.txt", text("0,-60\n")).MinHor, -60);
  EXPECT_DOUBLE_EQ(importText("xA.txt", text("word\n")).MinHor, 888888);
}

TEST_F(Ems, AFileThatEndsInItsHeaderFails) {
  EXPECT_THAT(failureOf("xA.txt", ""), HasSubstr("past end"));
  EXPECT_THAT(failureOf("xA.txt", "1,2,3\n"), HasSubstr("past end"));
}

TEST_F(Ems, ReadsItsSamples) {
  copySamples({"RW65A.TXT", "RW65e.TXT", "RW90E.TXT", "RW90a.TXT", "spacedA.TXT"});
  import({"RW65A.TXT", "RW65e.TXT", "RW90E.TXT", "RW90a.TXT", "spacedA.TXT"});
  ASSERT_EQ(antennas.size(), 3u);
  EXPECT_EQ(antennas[0].AntName, "RW65A");
  EXPECT_EQ(antennas[0].HorCount, 36);
  EXPECT_EQ(antennas[0].VerCount, 37);
  EXPECT_EQ(antennas[1].AntName, "RW90E");
  EXPECT_DOUBLE_EQ(antennas[1].Freq, 1910);
  EXPECT_EQ(antennas[1].HorValue, antennas[0].HorValue);
  EXPECT_EQ(antennas[1].VerValue, antennas[0].VerValue);
  EXPECT_EQ(antennas[2].HorValue, antennas[0].HorValue);
}

TEST_F(Ems, DamagedSamplesFailOrGiveNoPoints) {
  EXPECT_THAT(failureOf("xA.txt", sample("damaged-wordA.TXT")), HasSubstr("Type mismatch"));
  EXPECT_THAT(failureOf("xA.txt", sample("damaged-numberA.TXT")), HasSubstr("Overflow"));
  EXPECT_THAT(failureOf("xE.txt", sample("damaged-header-onlyE.TXT")), HasSubstr("past end"));
  EXPECT_THAT(failureOf("xE.txt", sample("damaged-emptyE.TXT")), HasSubstr("past end"));
  EXPECT_EQ(importText("xA.txt", sample("damaged-blanks-for-commasA.TXT")).HorCount, 0);
}

TEST_F(Ems, BadFilesHarmNothing) { expectBadFilesToHarmNothing("goodA.txt", text("0,0\n10,1\n20,2\n")); }

}  // namespace

}  // namespace vantrelix::test
