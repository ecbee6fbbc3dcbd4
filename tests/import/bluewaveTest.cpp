#include "FormatImport.h"
#include "foundation/regional.h"

namespace vantrelix::test {

namespace {

using ::testing::DoubleEq;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

class Bluewave : public FormatImport {
 protected:
  Bluewave() : FormatImport("bluewave") {}

  std::string azimuth(const std::string& name, const std::string& title = "AB F=450MHz H") const {
    return write(name, title + "\n0 -30\n90 5.5\n-10 2\n");
  }
  std::string elevation(const std::string& name, const std::string& title = "AB F=470MHz V") const {
    return write(name, title + "\n-90 -60\n0 9\n190 -49\n");
  }
  double freqOf(const std::string& title) { return only({azimuth("A12H.TXT", title)}).Freq; }
  // The letter that a title gives, told by the cut it fills.
  std::string planeOf(const std::string& title) {
    const ImportedAntenna antenna = only({azimuth("A12.TXT", title)});
    EXPECT_EQ(antenna.HorCount + antenna.VerCount, 3) << title;
    EXPECT_EQ(antenna.PolLetter, antenna.VerCount == 3 ? "V" : "H") << title;
    return antenna.PolLetter;
  }
};

TEST_F(Bluewave, ReadsAnAzimuthFile) {
  const ImportedAntenna antenna = only({copied("ts12_h.txt")});
  EXPECT_EQ(antenna.AntName, "TS-12 F=1850.5MHz H");
  EXPECT_EQ(antenna.GainUnits, "dBd");
  EXPECT_DOUBLE_EQ(antenna.Freq, 1850.5);
  EXPECT_DOUBLE_EQ(antenna.FreqLow, 1850.5);
  EXPECT_DOUBLE_EQ(antenna.FreqHigh, 1850.5);
  EXPECT_DOUBLE_EQ(antenna.Gain, 5.5);
  EXPECT_EQ(antenna.HorCount, 12);
  EXPECT_EQ(antenna.VerCount, 0);
  EXPECT_DOUBLE_EQ(antenna.MinHor, -30);
}

TEST_F(Bluewave, ReadsBothFilesOfAPairFromEitherOfThem) {
  const std::string first = copied("ts12_h.txt", "TS12_H.TXT");
  const std::string second = copied("ts12_v.txt", "TS12_V.TXT");
  for (const std::string& chosen : {first, second}) {
    const ImportedAntenna antenna = only({chosen});
    EXPECT_EQ(antenna.HorCount, 12);
    EXPECT_EQ(antenna.VerCount, 7);
    EXPECT_DOUBLE_EQ(antenna.Gain, 5.5);
    EXPECT_DOUBLE_EQ(antenna.VerAngle.front(), 90);
    EXPECT_DOUBLE_EQ(antenna.VerValue.front(), -28);
  }
  EXPECT_THAT(descriptions(), UnorderedElementsAre("TS-12 F=1850.5MHz V", "TS-12 F=1850.5MHz H"));
}

TEST_F(Bluewave, BothFilesOfAPairAddOneAntenna) {
  const std::string first = azimuth("A12H.TXT");
  const std::string second = elevation("A12V.TXT");
  EXPECT_EQ(only({first, second}).VerCount, 3);
  EXPECT_EQ(only({second, first}).HorCount, 3);
}

TEST_F(Bluewave, TheTitleOfTheSecondFileNamesTheAntenna) {
  const std::string first = azimuth("A12H.TXT", "First F=450MHz H");
  const std::string second = elevation("A12V.TXT", "Second V");
  const ImportedAntenna antenna = only({first});
  EXPECT_EQ(antenna.AntName, "Second V");
  EXPECT_EQ(antenna.PolLetter, "V");
  EXPECT_DOUBLE_EQ(antenna.FreqLow, 0);
  EXPECT_DOUBLE_EQ(antenna.FreqHigh, 0);
  const ImportedAntenna other = only({second});
  EXPECT_EQ(other.AntName, "First F=450MHz H");
  EXPECT_DOUBLE_EQ(other.FreqHigh, 450);
}

TEST_F(Bluewave, TheSecondFileHoldsTheOtherCutWhateverItsTitleSays) {
  const std::string first = azimuth("A12H.TXT");
  elevation("A12V.TXT", "no letter");
  const ImportedAntenna antenna = only({first});
  EXPECT_EQ(antenna.HorCount, 3);
  EXPECT_EQ(antenna.VerCount, 3);
  EXPECT_EQ(antenna.PolLetter, "H");
}

TEST_F(Bluewave, ValuesStayAsWrittenAndTheGainIsTheHighestOfTheAzimuthCut) {
  const std::string first = azimuth("A12H.TXT");
  elevation("A12V.TXT");
  const ImportedAntenna antenna = only({first});
  EXPECT_DOUBLE_EQ(antenna.Gain, 5.5);
  EXPECT_THAT(antenna.HorValue, ElementsAre(-30, 5.5, 2));
  EXPECT_THAT(antenna.HorAngle, ElementsAre(0, 90, 350));
  EXPECT_THAT(antenna.VerValue, ElementsAre(-60, 9, -49));
}

TEST_F(Bluewave, TheGainMayBeNegative) {
  EXPECT_DOUBLE_EQ(only({write("A12H.TXT", "A H\n0 -3\n90 -1.5\n")}).Gain, -1.5);
}

TEST_F(Bluewave, AnAntennaWithoutAnAzimuthCutHasNoGain) {
  EXPECT_DOUBLE_EQ(only({elevation("A12V.TXT")}).Gain, -88888);
  const std::vector<AntennaListEntry> list = listAntennas(getAntennasPath(), "AMST0001");
  ASSERT_EQ(list.size(), 1u);
  EXPECT_DOUBLE_EQ(list[0].gain, -88888);
}

TEST_F(Bluewave, ElevationsAreNegatedAndBelowMinus180ATurnIsAdded) {
  EXPECT_THAT(only({elevation("A12V.TXT")}).VerAngle, ElementsAre(90, 0, 170));
}

TEST_F(Bluewave, TheMinimaFollowEveryValue) {
  const std::string first = azimuth("A12H.TXT");
  elevation("A12V.TXT");
  const ImportedAntenna antenna = only({first});
  EXPECT_DOUBLE_EQ(antenna.MinHor, -30);
  EXPECT_DOUBLE_EQ(antenna.MinVer, -60);
  EXPECT_THAT(only({write("C12H.TXT", "A H\n")}).MinHor, DoubleEq(888888));
  EXPECT_THAT(only({write("C12V.TXT", "A V\n")}).MinVer, DoubleEq(88888));
}

TEST_F(Bluewave, TheFrequencyStandsBetweenItsMarks) {
  EXPECT_DOUBLE_EQ(freqOf("ABC-12 F=1850MHz H"), 1850);
  EXPECT_DOUBLE_EQ(freqOf("F= 450.125 MHz"), 450.125);
  EXPECT_DOUBLE_EQ(freqOf("F=806-896MHz"), 806);
  EXPECT_DOUBLE_EQ(freqOf("F=1850.MHz"), 1850);
  EXPECT_DOUBLE_EQ(freqOf("F=960.96MHz"), 960.96);
  EXPECT_DOUBLE_EQ(freqOf("F=450MHz F=460MHz"), 450);
  EXPECT_DOUBLE_EQ(freqOf("F=.5MHz"), 0.5);
  EXPECT_DOUBLE_EQ(freqOf("F=1.5.5MHz"), 1.5);
  EXPECT_DOUBLE_EQ(freqOf("F=12E2MHz"), 12);
}

TEST_F(Bluewave, ATitleWithoutBothMarksInTheirOrderHasFrequencyZero) {
  EXPECT_DOUBLE_EQ(freqOf("MHz F=1850 H"), 0);
  EXPECT_DOUBLE_EQ(freqOf("1850 MHz F=1850 H"), 0);
  EXPECT_DOUBLE_EQ(freqOf("F=1850 H"), 0);
  EXPECT_DOUBLE_EQ(freqOf("F=1850MH H"), 0);
  EXPECT_DOUBLE_EQ(freqOf("F=1850Hz H"), 0);
  EXPECT_DOUBLE_EQ(freqOf("1850MHz H"), 0);
  EXPECT_DOUBLE_EQ(freqOf("f=1850MHz H"), 0);
  EXPECT_DOUBLE_EQ(freqOf("F=1850Mhz H"), 0);
  EXPECT_DOUBLE_EQ(freqOf("F=MHz H"), 0);
  EXPECT_DOUBLE_EQ(freqOf("F=.MHz H"), 0);
  EXPECT_DOUBLE_EQ(freqOf("F=UHF 450MHz H"), 0);
  EXPECT_DOUBLE_EQ(freqOf("F=-450MHz H"), 0);
  EXPECT_DOUBLE_EQ(freqOf("F=" + std::string(400, '9') + "MHz H"), 0);
}

TEST_F(Bluewave, DecimalsStandBehindAPointOrTheRegionalCharacter) {
  EXPECT_DOUBLE_EQ(freqOf("F=1850,5MHz H"), 1850);
  const RegionalCharacters former = regionalCharacters();
  regionalCharacters() = {",", "."};
  const double comma = freqOf("F=1850,5MHz H");
  const double point = freqOf("F=1850.5MHz H");
  regionalCharacters() = former;
  EXPECT_DOUBLE_EQ(comma, 1850.5);
  EXPECT_DOUBLE_EQ(point, 1850.5);
}

TEST_F(Bluewave, TheLastCharacterOfTheTitleTellsTheCut) {
  EXPECT_EQ(planeOf("ABC V"), "V");
  EXPECT_EQ(planeOf("ABC v"), "V");
  EXPECT_EQ(planeOf("ABCV \t\x01 "), "V");
  EXPECT_EQ(planeOf("ABCV\xE9"), "V");
  EXPECT_EQ(planeOf("ABC H"), "H");
  EXPECT_EQ(planeOf("ABC E"), "H");
  EXPECT_EQ(planeOf("V12"), "H");
  EXPECT_EQ(planeOf(""), "H");
  EXPECT_EQ(planeOf("\t"), "H");
}

TEST_F(Bluewave, TheWholeTitleIsTheName) {
  EXPECT_EQ(only({azimuth("A12.TXT", "\t caf\xE9 A\x01 V2 \x02")}).AntName, "caf  A  V2");
  EXPECT_EQ(only({azimuth("B12.TXT", "caf\xC3\xA9 x")}).AntName, "caf  x");
  EXPECT_EQ(only({azimuth("C12.TXT", "")}).AntName, "");
}

TEST_F(Bluewave, AMissingPartnerLeavesOneCut) {
  EXPECT_EQ(only({azimuth("A12H.TXT")}).VerCount, 0);
  EXPECT_EQ(only({elevation("B12V.TXT")}).HorCount, 0);
  EXPECT_THAT(suite.messages, IsEmpty());
}

TEST_F(Bluewave, TheLastLetterOfThePathIsReplacedByACapital) {
  const std::string first = azimuth("hA12h.txt");
  elevation("hA12v.txt");
  elevation("VA12h.txt");
  EXPECT_EQ(only({first}).VerCount, 0);
  elevation("hA12V.txt");
  EXPECT_EQ(only({first}).VerCount, 3);
}

TEST_F(Bluewave, AnElevationFileSeeksTheLetterVAlone) {
  const std::string second = elevation("A12VH.TXT");
  azimuth("A12VV.TXT", "AB H");
  azimuth("A12HH.TXT", "AB H");
  const ImportedAntenna antenna = only({second});
  EXPECT_EQ(antenna.HorCount, 3);
  EXPECT_EQ(antenna.VerCount, 3);
}

TEST_F(Bluewave, ExtensionAndFolderAreSearchedToo) {
  const std::string byExtension = azimuth("HA12.HOR");
  elevation("HA12.VOR");
  EXPECT_EQ(only({byExtension}).VerCount, 3);
  for (const char* folder : {"DOWNH", "DOWNV"}) std::filesystem::create_directory(files.machine(folder));
  const std::string byFolder = azimuth("DOWNH\\A12.TXT");
  elevation("DOWNV\\A12.TXT");
  EXPECT_EQ(only({byFolder}).VerCount, 3);
}

TEST_F(Bluewave, APartnerThatFailsFailsTheAntenna) {
  const std::string first = azimuth("A12H.TXT");
  write("A12V.TXT", "");
  EXPECT_THAT(failure(first), HasSubstr("Error 62: "));
  EXPECT_THAT(descriptions(), IsEmpty());
}

TEST_F(Bluewave, SeparatorsAndLineEndsMayBeOfAnyKind) {
  for (const char* end : {"\n", "\r\n", "\r"}) {
    std::string text;
    for (const char* line : {"A F=450MHz H", "   0     1", "10\t2", "words", "", "20 3 x"}) {
      text += std::string(line) + end;
    }
    const ImportedAntenna antenna = only({write("A12H.TXT", text)});
    EXPECT_EQ(antenna.AntName, "A F=450MHz H");
    EXPECT_THAT(antenna.HorAngle, ElementsAre(0, 10, 20));
    EXPECT_THAT(antenna.HorValue, ElementsAre(1, 2, 3));
  }
}

TEST_F(Bluewave, TheLibraryHoldsWhatWasRead) {
  import({azimuth("A12H.TXT"), elevation("A12V.TXT")});
  expectOnePairStored("AB F=470MHz V", 5.5, 470);
}

TEST_F(Bluewave, ThePreviewIsAskedAgainBehindNoPreview) {
  expectPreviewsBehindNoPreview({azimuth("A12H.TXT"), azimuth("B12H.TXT")}, "BLUEWAVE ANTENNA", "AB F=450MHz H");
}

TEST_F(Bluewave, TheWorkingSetStartsAfreshForEachFile) {
  import({azimuth("A12H.TXT"), write("B12H.TXT", "B H\n0 1\n")});
  ASSERT_EQ(antennas.size(), 2u);
  EXPECT_DOUBLE_EQ(antennas[1].Gain, 1);
  EXPECT_DOUBLE_EQ(antennas[1].FreqHigh, 0);
  EXPECT_EQ(antennas[1].HorCount, 1);
}

TEST_F(Bluewave, AFileThatEndsAnywhereIsAWholeAntennaUnlessItIsEmpty) {
  EXPECT_EQ(failuresOfCutTexts("A F=450MHz V\r\n0 -1\r\n90 -2\r\n", "c", ".TXT"), 1);
}

TEST_F(Bluewave, BytesOfAnyKindNeverStopTheRun) {
  const std::string folder = "folder.TXT";
  std::filesystem::create_directory(files.machine("folder.TXT"));
  const std::string nuls = write("nul.TXT", std::string(5000, '\0'));
  const std::string longTitle = write("long.TXT", "F=" + std::string(4 << 20, '9') + "MHz V\n0 1\n");
  const std::string longLine = write("line.TXT", "Line\n" + std::string(4 << 20, ' ') + "10 1\n1 2");
  const std::string picture = write("picture.TXT", std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16));
  const ImportResult result = import({folder, copied("damaged-empty.txt"), nuls, longTitle, longLine, picture,
                                      copied("damaged-words-among-points-v.txt"), azimuth("A.TXT")});
  EXPECT_EQ(result.ErrorCount, 2);
  ASSERT_EQ(antennas.size(), 6u);
  EXPECT_EQ(antennas[1].VerCount, 1);
  EXPECT_THAT(antennas[2].HorAngle, ElementsAre(10, 1));
  EXPECT_THAT(antennas[4].VerAngle, ElementsAre(90, 0, -90));
  expectWholeAntennas();
}

TEST_F(Bluewave, WhatTheLibraryCannotHoldIsToldAndTheRunGoesOn) {
  suite.answers = {MsgAnswer::ok};
  const ImportResult result = import({copied("damaged-huge-values-h.txt"), azimuth("A12H.TXT")});
  ASSERT_EQ(suite.messages.size(), 1u);
  EXPECT_EQ(suite.messages[0].title, "Error Importing Antenna");
  EXPECT_EQ(result.failed.size(), 1u);
  EXPECT_THAT(descriptions(), ElementsAre("AB F=450MHz H"));
}

TEST_F(Bluewave, OddlySpacedSamplesReadToo) {
  const std::string first = copied("TS9H.TXT");
  copied("TS9V.TXT");
  const ImportedAntenna antenna = only({first});
  EXPECT_EQ(antenna.AntName, "TS-9 whip F= 160 MHz  v");
  EXPECT_DOUBLE_EQ(antenna.FreqLow, 160);
  EXPECT_DOUBLE_EQ(antenna.Gain, 0);
  EXPECT_EQ(antenna.HorCount, 8);
  EXPECT_EQ(antenna.VerCount, 7);
}

TEST_F(Bluewave, TooManyPointsFail) {
  std::string points;
  for (int i = 0; i < 32768; ++i) points += "1 1\n";
  EXPECT_THAT(failure(write("A.TXT", "A H\n" + points)), HasSubstr("Error 6: "));
  EXPECT_THAT(failure(write("B.TXT", "A V\n" + points)), HasSubstr("Error 6: "));
  EXPECT_THAT(descriptions(), IsEmpty());
}

}  // namespace

}  // namespace vantrelix::test
