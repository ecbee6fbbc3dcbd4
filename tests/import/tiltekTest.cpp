#include "FormatImport.h"
#include "foundation/regional.h"
#include "import/tiltek.h"

namespace vantrelix::test {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class TilTek : public FormatImport {
 protected:
  TilTek() : FormatImport("tiltek") {}

  static std::string azimuth(const std::string& points = "0 10\n90 7\n") { return "Title H\nH\n\n\n" + points; }
  static std::string elevation(const std::string& points = "0 11\n-30 -5\n") { return "Title E\nE\n\n\n" + points; }

  void writePair() const {
    files.write("ANT12AZ.TXT", azimuth());
    files.write("ANT12EL.TXT", elevation());
  }
};

TEST_F(TilTek, HasItsTexts) {
  const ImportFormat& format = *findImportFormat("tiltek");
  EXPECT_EQ(format.menuItem, "mnuImportTILTEK");
  EXPECT_EQ(format.menuCaption, "Legacy TIL-TEK File Format");
  EXPECT_EQ(format.legacyName, "TIL-TEK");
  EXPECT_EQ(format.dialogTitle, "TIL-TEK Files to Read");
  EXPECT_EQ(format.pathKey, "Import TIL-TEK");
  EXPECT_THAT(format.filters, IsEmpty());
  EXPECT_EQ(format.previewCaption, "TIL-TEK ANTENNA");
  EXPECT_EQ(format.traits, ImportFormat::plain);
  EXPECT_EQ(format.notice.title, "");
  EXPECT_EQ(format.notice.text, "");
}

TEST_F(TilTek, ReadsTitleAndLevelsAsTheyAreWritten) {
  const ImportedAntenna antenna = importText("a.txt", "PX-12 Panel\nH\nthree\nfour\n10 12.5\n20 -3.5\n");
  EXPECT_EQ(antenna.AntName, "PX-12 Panel");
  EXPECT_EQ(antenna.PolLetter, "H");
  EXPECT_EQ(antenna.GainUnits, "dBd");
  EXPECT_DOUBLE_EQ(antenna.Freq, 0);
  EXPECT_DOUBLE_EQ(antenna.FreqLow, 0);
  EXPECT_DOUBLE_EQ(antenna.FreqHigh, 0);
  EXPECT_THAT(antenna.HorAngle, ElementsAre(350, 340));
  EXPECT_THAT(antenna.HorValue, ElementsAre(12.5, -3.5));
  EXPECT_EQ(antenna.HorCount, 2);
  EXPECT_EQ(antenna.VerCount, 0);
  EXPECT_EQ(captions.at(0), "TIL-TEK ANTENNA\r\nFile: " + files.machine("a.txt") + "\r\nPX-12 Panel");
}

TEST_F(TilTek, TheTitleLosesControlAndHighCharactersAndIsTrimmed) {
  EXPECT_EQ(importText("a.txt", "\x01  A\tB caf\xE9 \nH\n\n\n0 1\n").AntName, "A B caf");
  EXPECT_EQ(importText("b.txt", " caf\xC3\xA9 x\nH\n\n\n0 1\n").AntName, "caf  x");
  EXPECT_EQ(importText("c.txt", "A\xC3\xA9z\xE9z\nH\n\n\n0 1\n").AntName, "A  z z") << "bytes where no UTF-8 is";
}

TEST_F(TilTek, ThePlaneIsTheFirstLetterOfLineTwo) {
  for (const char* line : {"E", "e", "Elevation", "  e-plane", "\tE"}) {
    const ImportedAntenna antenna = importText("a.txt", std::string("T\n") + line + "\n\n\n10 1\n");
    EXPECT_EQ(antenna.PolLetter, "E") << line;
    EXPECT_THAT(antenna.VerAngle, ElementsAre(10)) << line;
    EXPECT_EQ(antenna.HorCount, 0) << line;
  }
  for (const char* line : {"H", "V", "", "Azimuth, not Elevation", "1E", "\xC9", "\xC3\x89"}) {
    const ImportedAntenna antenna = importText("a.txt", std::string("T\n") + line + "\n\n\n10 1\n");
    EXPECT_EQ(antenna.PolLetter, "H") << line;
    EXPECT_THAT(antenna.HorAngle, ElementsAre(350)) << line;
    EXPECT_EQ(antenna.VerCount, 0) << line;
  }
}

TEST_F(TilTek, AzimuthsCountInTheOppositeSense) {
  const ImportedAntenna antenna = importText("a.txt", azimuth("0 1\n90 1\n360 1\n400 1\n-10 1\n"));
  EXPECT_THAT(antenna.HorAngle, ElementsAre(360, 270, 0, 320, 10));
}

TEST_F(TilTek, ElevationsAreKeptAndTurnedBelowMinus180) {
  const ImportedAntenna antenna = importText("a.txt", elevation("10 1\n-180 1\n-190 1\n200 1\n"));
  EXPECT_THAT(antenna.VerAngle, ElementsAre(10, -180, 170, 200));
}

TEST_F(TilTek, GainFollowsTheHighestAzimuthLevelAboveZero) {
  EXPECT_DOUBLE_EQ(importText("a.txt", azimuth("0 3\n10 9.5\n20 7\n")).Gain, 9.5);
  EXPECT_DOUBLE_EQ(importText("a.txt", azimuth("0 -3\n10 -9.5\n")).Gain, 0);
  EXPECT_DOUBLE_EQ(importText("a.txt", elevation("0 3\n10 9.5\n")).Gain, 0);
}

TEST_F(TilTek, MinimaFollowEveryValueFromTheirStarts) {
  EXPECT_DOUBLE_EQ(importText("a.txt", azimuth("0 30\n10 20\n20 -70\n30 1\n")).MinHor, -70);
  EXPECT_DOUBLE_EQ(importText("a.txt", azimuth("0 900000\n")).MinHor, 888888);
  EXPECT_DOUBLE_EQ(importText("a.txt", elevation("0 30\n10 -70\n20 1\n")).MinVer, -70);
  EXPECT_DOUBLE_EQ(importText("a.txt", elevation("0 90000\n")).MinVer, 88888);
}

TEST_F(TilTek, AnAzimuthFileLeadsToItsElevationFileAndEndsWithGainZero) {
  writePair();
  const ImportedAntenna antenna = importOne("ANT12AZ.TXT");
  EXPECT_EQ(antenna.AntName, "Title E");
  EXPECT_DOUBLE_EQ(antenna.Gain, 0);
  EXPECT_THAT(antenna.HorValue, ElementsAre(10, 7));
  EXPECT_THAT(antenna.VerValue, ElementsAre(11, -5));
}

TEST_F(TilTek, AnElevationFileLeadsToItsAzimuthFileAndEndsWithItsPeak) {
  writePair();
  const ImportedAntenna antenna = importOne("ANT12EL.TXT");
  EXPECT_EQ(antenna.AntName, "Title H");
  EXPECT_DOUBLE_EQ(antenna.Gain, 10);
  EXPECT_THAT(antenna.HorAngle, ElementsAre(360, 270));
  EXPECT_THAT(antenna.VerAngle, ElementsAre(0, -30));
}

TEST_F(TilTek, BothFilesOfAPairGiveOneAntenna) {
  writePair();
  const ImportResult result = import({"ANT12AZ.TXT", "ANT12EL.TXT"});
  EXPECT_EQ(result.added.size(), 1u);
  EXPECT_EQ(result.filesRead, 2);
  ASSERT_EQ(result.skipped.size(), 1u);
  EXPECT_EQ(result.skipped[0].reason, SkipReason::readBefore);
}

TEST_F(TilTek, ThePartnersLettersAreFoundInAnyCaseAndWrittenInCapitals) {
  files.write("zaz-az.txt", azimuth());
  files.write("zaz-EL.txt", elevation());
  EXPECT_EQ(importOne("zaz-az.txt").VerCount, 2);
  files.write("elm-eL.txt", elevation());
  files.write("elm-AZ.txt", azimuth());
  EXPECT_EQ(importOne("elm-eL.txt").HorCount, 2);
  files.write("b-az.txt", azimuth());
  files.write("b-el.txt", elevation());
  EXPECT_EQ(importOne("b-az.txt").VerCount, 0);
}

TEST_F(TilTek, ThePartnersLettersAreSoughtInTheWholePath) {
  files.write("one.AZX", azimuth());
  files.write("one.ELX", elevation());
  EXPECT_EQ(importOne("one.AZX").VerCount, 2);
  files.write("MAZE\\one.txt", azimuth());
  files.write("MELE\\one.txt", elevation());
  EXPECT_EQ(importOne("MAZE\\one.txt").VerCount, 2);
}

TEST_F(TilTek, ANameWithoutTheLettersGivesOneCut) {
  files.write("plain.txt", azimuth());
  const ImportResult result = import({"plain.txt"});
  EXPECT_EQ(result.ErrorCount, 0);
  EXPECT_EQ(result.filesRead, 1);
  ASSERT_EQ(antennas.size(), 1u);
  EXPECT_EQ(antennas[0].HorCount, 2);
  EXPECT_EQ(antennas[0].VerCount, 0);
  EXPECT_DOUBLE_EQ(antennas[0].Gain, 10);
}

TEST_F(TilTek, ThePlaneOfTheChosenFileDecidesAlone) {
  files.write("xAZ.txt", azimuth("0 10\n"));
  files.write("xEL.txt", azimuth("10 4\n"));
  const ImportedAntenna antenna = importOne("xAZ.txt");
  EXPECT_THAT(antenna.HorAngle, ElementsAre(360));
  EXPECT_THAT(antenna.VerAngle, ElementsAre(10));
}

TEST_F(TilTek, APartnerThatFailsFailsTheAntenna) {
  files.write("xAZ.txt", azimuth());
  files.write("xEL.txt", "Title\nE\n");
  const ImportResult result = import({"xAZ.txt", "xEL.txt"});
  EXPECT_EQ(result.ErrorCount, 1);
  EXPECT_THAT(result.added, IsEmpty());
  EXPECT_THAT(result.failed.at(0), HasSubstr("xEL.txt"));
  EXPECT_THAT(descriptions(), IsEmpty());
}

TEST_F(TilTek, NoPreviewAsksAgainAtTheNextAntenna) {
  files.write("a.txt", azimuth());
  files.write("b.txt", azimuth());
  answer = PreviewAnswer::noPreview;
  EXPECT_EQ(import({"a.txt", "b.txt"}).added.size(), 2u);
  EXPECT_EQ(captions.size(), 2u);
}

TEST_F(TilTek, AFileThatEndsInItsHeaderFails) {
  for (const char* text : {"", "T", "T\n", "T\nH\n", "T\nE\n\n"}) {
    EXPECT_THAT(failureOf("a.txt", text), HasSubstr("past end")) << text;
  }
  EXPECT_EQ(failureOf("a.txt", "T\nE\n\n\n0 1"), "");
}

TEST_F(TilTek, AHeaderWithoutPointsIsReadButNotStored) {
  files.write("a.txt", "T\nH\n\n\nnothing here\n");
  const ImportResult result = import({"a.txt"});
  EXPECT_EQ(result.ErrorCount, 0);
  EXPECT_THAT(result.added, IsEmpty());
}

TEST_F(TilTek, EachFileStartsAfresh) {
  files.write("a.txt", azimuth("0 10\n"));
  files.write("b.txt", elevation("5 4\n"));
  import({"a.txt", "b.txt"});
  ASSERT_EQ(antennas.size(), 2u);
  EXPECT_EQ(antennas[1].HorCount, 0);
  EXPECT_DOUBLE_EQ(antennas[1].Gain, 0);
  EXPECT_THAT(antennas[1].VerValue, ElementsAre(4));
}

TEST_F(TilTek, TakesTheRegionalDecimalCharacter) {
  const RegionalCharacters former = regionalCharacters();
  regionalCharacters() = {",", "."};
  const ImportedAntenna antenna = importText("a.txt", azimuth("0,5 1,5\n"));
  regionalCharacters() = former;
  EXPECT_THAT(antenna.HorAngle, ElementsAre(359.5));
  EXPECT_THAT(antenna.HorValue, ElementsAre(1.5));
}

TEST_F(TilTek, ReadsItsSamples) {
  copySamples({"PX12AZ.TXT", "PX12EL.TXT", "tabsAZ.txt", "spacedEL.txt"});
  import({"PX12EL.TXT", "tabsAZ.txt", "spacedEL.txt"});
  ASSERT_EQ(antennas.size(), 3u);
  EXPECT_EQ(antennas[0].AntName, "NORTHBRIDGE PX-12 Panel");
  EXPECT_DOUBLE_EQ(antennas[0].Gain, 12.5);
  EXPECT_EQ(antennas[0].HorCount, 36);
  EXPECT_EQ(antennas[0].VerCount, 37);
  EXPECT_EQ(antennas[1].AntName, "NORTHBRIDGE PX-12 tabs");
  EXPECT_EQ(antennas[1].HorValue, antennas[0].HorValue);
  EXPECT_EQ(antennas[2].AntName, "NORTHBRIDGE   PX-12");
  EXPECT_EQ(antennas[2].VerValue, antennas[0].VerValue);
}

TEST_F(TilTek, DamagedSamplesFailOrLoseTheirDamagedLinesAlone) {
  EXPECT_NE(failureOf("a.txt", sample("damaged-emptyAZ.txt")), "");
  EXPECT_NE(failureOf("a.txt", sample("damaged-header-onlyAZ.txt")), "");
  EXPECT_EQ(importText("a.txt", sample("damaged-no-pointsEL.txt")).VerCount, 0);
  EXPECT_EQ(importText("a.txt", sample("damaged-wordsAZ.txt")).HorCount, 34);
  files.write("a.txt", sample("damaged-pictureAZ.txt"));
  EXPECT_THAT(import({"a.txt"}).added, IsEmpty());
}

TEST_F(TilTek, BadFilesHarmNothing) { expectBadFilesToHarmNothing("good.txt", azimuth("0 10\n10 9\n20 8\n")); }

}  // namespace

}  // namespace vantrelix::test
