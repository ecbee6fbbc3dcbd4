#include "FormatImport.h"
#include "foundation/text.h"
#include "import/TextLines.h"
#include "import/antel.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix::test {

namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class Antel : public FormatImport {
 protected:
  Antel() : FormatImport("antel") {}
};

ImportedAntenna readText(const std::string& text) {
  ImportedAntenna antenna;
  TextLines lines(text);
  readAntel(lines, antenna);
  return antenna;
}

// The number of the failure, ErrFlag where there is none.
int outcomeOf(const std::string& text) {
  try {
    return readText(text).ErrFlag;
  } catch (const RunTimeFailure& failure) {
    return failure.number();
  }
}

constexpr const char* kCuts = "HORIZONTAL 2\n0 0\n90 3\nVERTICAL 2\n0 0\n10 4\nEND\n";

std::string header(const std::string& gainLine = "GAIN 10 dBi", const std::string& frequencyLine = "FREQUENCY 900",
                   const std::string& nameLine = "MODEL AB-12") {
  return "NAME X\nMAKE M\n" + frequencyLine + "\nA\nB\nC\n" + gainLine + "\nTILT\n" + nameLine + "\n";
}

// With a header of gain 10 and without a line behind the last.
ImportedAntenna readCuts(const std::string& cuts) { return readText(header() + cuts); }

TEST_F(Antel, ReadsHeaderAndBothCuts) {
  const ImportedAntenna antenna = readText(header() + kCuts);
  EXPECT_EQ(antenna.AntName, "AB-12");
  EXPECT_DOUBLE_EQ(antenna.Freq, 900);
  EXPECT_DOUBLE_EQ(antenna.FreqLow, 900);
  EXPECT_DOUBLE_EQ(antenna.FreqHigh, 900);
  EXPECT_DOUBLE_EQ(antenna.Gain, 10);
  EXPECT_EQ(antenna.GainUnits, "dBi");
  EXPECT_EQ(antenna.PolLetter, "");
  EXPECT_EQ(antenna.HorCount, 2);
  EXPECT_THAT(antenna.HorAngle, ElementsAre(0, 90));
  EXPECT_THAT(antenna.HorValue, ElementsAre(10, 7));
  EXPECT_EQ(antenna.VerCount, 2);
  EXPECT_THAT(antenna.VerAngle, ElementsAre(0, 10));
  EXPECT_THAT(antenna.VerValue, ElementsAre(10, 6));
  EXPECT_DOUBLE_EQ(antenna.MinHor, 7);
  EXPECT_DOUBLE_EQ(antenna.MinVer, 6);
}

TEST_F(Antel, LooksAtThePlacesOfHeaderLinesAlone) {
  const ImportedAntenna antenna =
      readText("GAIN 1 x\nMODEL 2\nQ 3 4\n\nGAIN 5\nGAIN 6\nW 7 REL 8\n\nV 9 10\n" + std::string(kCuts));
  EXPECT_DOUBLE_EQ(antenna.Freq, 3);
  EXPECT_DOUBLE_EQ(antenna.Gain, 7);
  EXPECT_EQ(antenna.GainUnits, "REL");
  EXPECT_EQ(antenna.AntName, "9");
}

TEST_F(Antel, MissingHeaderFieldsHaveTheirDefaults) {
  const ImportedAntenna antenna = readText(header("GAIN", "", "MODEL") + kCuts);
  EXPECT_DOUBLE_EQ(antenna.Freq, 0);
  EXPECT_DOUBLE_EQ(antenna.Gain, 0);
  EXPECT_EQ(antenna.GainUnits, "dBd");
  EXPECT_EQ(antenna.AntName, "");
  EXPECT_THAT(antenna.HorValue, ElementsAre(0, -3));
}

TEST_F(Antel, HeaderNumbersEndAtTheirLastDigit) {
  const ImportedAntenna antenna = readText(header("GAIN 8.5dBd", "FREQUENCY 450MHz") + kCuts);
  EXPECT_DOUBLE_EQ(antenna.Gain, 8.5);
  EXPECT_DOUBLE_EQ(antenna.FreqLow, 450);
  EXPECT_DOUBLE_EQ(readText(header("GAIN high") + kCuts).Gain, 0);
}

TEST_F(Antel, ARunOfBlanksInAHeaderLineHoldsEmptyFields) {
  const ImportedAntenna antenna = readText(header("GAIN  10 dBi", "FREQUENCY  900", " MODEL AB-12") + kCuts);
  EXPECT_DOUBLE_EQ(antenna.Freq, 0);
  EXPECT_DOUBLE_EQ(antenna.Gain, 0);
  EXPECT_EQ(antenna.GainUnits, "10");
  EXPECT_EQ(antenna.AntName, "MODEL");
}

TEST_F(Antel, ANameIsCutAtItsBlankUnlessTheFirstLineHoldsATab) {
  EXPECT_EQ(readText(header("GAIN 1", "FREQUENCY 1", "MODEL AB 12") + kCuts).AntName, "AB");
  const std::string tabs = "NAME\tX\nM\nF\t900 \nA\nB\nC\nGAIN\t1 2\tdB i\nT\nMODEL\tAB 12 \tx\n";
  const ImportedAntenna antenna = readText(tabs + kCuts);
  EXPECT_EQ(antenna.AntName, "AB 12 ");
  EXPECT_EQ(antenna.GainUnits, "dB i");
  EXPECT_DOUBLE_EQ(antenna.Freq, 900);
}

TEST_F(Antel, TheFirstLineAloneChoosesTheDelimiterOfTheHeader) {
  const ImportedAntenna antenna = readText(header("GAIN\t10\tdBi", "FREQUENCY\t900", "MODEL\tAB 12") + kCuts);
  EXPECT_DOUBLE_EQ(antenna.Freq, 0);
  EXPECT_DOUBLE_EQ(antenna.Gain, 0);
  EXPECT_EQ(antenna.GainUnits, "dBd");
  EXPECT_EQ(antenna.AntName, "12");
}

TEST_F(Antel, ANameLosesControlAndHighCharacters) {
  EXPECT_EQ(readText(header("GAIN 1", "FREQUENCY 1", "MODEL A\x01\x42\xE9x") + kCuts).AntName, "A B x");
  EXPECT_EQ(readText(header("GAIN 1 dB\xE9") + kCuts).GainUnits, "dB\xC3\xA9");
}

TEST_F(Antel, CountLinesHaveADelimiterOfTheirOwn) {
  const ImportedAntenna antenna = readCuts("horizontal\t2\n0 0\n90 3\nVertical 1 x\n0 0\nEND\n");
  EXPECT_EQ(antenna.ErrFlag, 0);
  EXPECT_EQ(antenna.HorCount, 2);
  EXPECT_EQ(antenna.VerCount, 1);
  EXPECT_EQ(outcomeOf(header() + "HORIZONTAL  2\n0 0\n90 3\nVERTICAL 1\n0 0\n"), -1);
}

TEST_F(Antel, ACutWithoutItsKeywordOrItsCountFails) {
  for (const char* line : {"HORIZONTAL 0", "AZIMUTH 360", "HORIZONTAL -1", "HORIZONTAL", "HORIZONTAL many", "",
                           "HORIZONTAL 32768", "HORIZONTAL 1E300", "HORIZONTALLY 2", "VERTICAL 2"}) {
    const ImportedAntenna antenna = readCuts(line + std::string("\n0 0\n90 3\nVERTICAL 1\n0 0\nEND\n"));
    EXPECT_EQ(antenna.ErrFlag, -1) << line;
    EXPECT_EQ(antenna.HorCount, 0) << line;
    EXPECT_EQ(antenna.VerCount, 0) << line;
  }
  for (const char* line : {"VERTICAL 0", "ELEVATION 1", "VERTICAL -1", "20 1", "HORIZONTAL 1"}) {
    EXPECT_EQ(outcomeOf(header() + "HORIZONTAL 2\n0 0\n90 3\n" + line + "\n0 0\nEND\n"), -1) << line;
  }
}

TEST_F(Antel, AFileThatEndsBeforeACutFails) {
  const std::string all = header() + kCuts;
  EXPECT_EQ(outcomeOf(""), 62);
  for (const char* end : {"FREQUENCY", "GAIN", "MODEL", "HORIZONTAL", "VERTICAL"}) {
    EXPECT_EQ(outcomeOf(all.substr(0, all.find(end))), 62) << end;
  }
}

TEST_F(Antel, TheEndOfTheFileAmongTheAzimuthsFailsForTheMissingElevations) {
  EXPECT_EQ(outcomeOf(header() + "HORIZONTAL 5\n0 0\n90 3\n"), 62);
  EXPECT_EQ(outcomeOf(header() + "HORIZONTAL 5\n"), 62);
}

TEST_F(Antel, TheEndOfTheFileAmongTheElevationsLeavesPointsAtZero) {
  const ImportedAntenna antenna = readCuts("HORIZONTAL 1\n0 0\nVERTICAL 4\n10 1\n20 2\n30 3\n");
  EXPECT_EQ(antenna.ErrFlag, 0);
  EXPECT_EQ(antenna.VerCount, 4);
  EXPECT_THAT(antenna.VerAngle, ElementsAre(10, 20, 0, 0));
  EXPECT_THAT(antenna.VerValue, ElementsAre(9, 8, 0, 0));
  EXPECT_DOUBLE_EQ(antenna.MinVer, 8);
  EXPECT_THAT(readCuts("HORIZONTAL 1\n0 0\nVERTICAL 2\n").VerAngle, ElementsAre(0, 0));
}

TEST_F(Antel, ACountOf360With359LinesLeftGives360PointsTheLastTwoAtZero) {
  std::string text = "HORIZONTAL 1\n0 0\nVERTICAL 360\n";
  for (int i = 1; i <= 359; ++i) text += std::to_string(i) + " 1\n";
  const ImportedAntenna antenna = readCuts(text);
  ASSERT_EQ(antenna.VerCount, 360);
  EXPECT_DOUBLE_EQ(antenna.VerAngle[357], 358);
  EXPECT_DOUBLE_EQ(antenna.VerValue[357], 9);
  for (const std::size_t last : {358u, 359u}) {
    EXPECT_DOUBLE_EQ(antenna.VerAngle[last], 0);
    EXPECT_DOUBLE_EQ(antenna.VerValue[last], 0);
  }
}

TEST_F(Antel, TheLastLineOfTheFileIsNeverUsed) {
  EXPECT_THAT(readCuts("HORIZONTAL 1\n0 0\nVERTICAL 2\n10 1\n20 2").VerAngle, ElementsAre(10, 0));
  EXPECT_THAT(readCuts("HORIZONTAL 1\n0 0\nVERTICAL 2\n10 1\n20 2\n").VerAngle, ElementsAre(10, 0));
  EXPECT_THAT(readCuts("HORIZONTAL 1\n0 0\nVERTICAL 2\n10 1\n20 2\n\n").VerAngle, ElementsAre(10, 20));
}

TEST_F(Antel, ALineWithoutTwoNumbersLeavesItsPointAtZero) {
  const ImportedAntenna antenna =
      readCuts("HORIZONTAL 5\n10 1\n\nword 2\n40\n50 5\nVERTICAL 3\n   \n20 two\n30 3\nEND\n");
  EXPECT_EQ(antenna.HorCount, 5);
  EXPECT_THAT(antenna.HorAngle, ElementsAre(10, 0, 0, 0, 50));
  EXPECT_THAT(antenna.HorValue, ElementsAre(9, 0, 0, 0, 5));
  EXPECT_THAT(antenna.VerAngle, ElementsAre(0, 0, 30));
  EXPECT_THAT(antenna.VerValue, ElementsAre(0, 0, 7));
}

TEST_F(Antel, PointsOfWhichNoneIsReadLeaveTheMinimaAtTheirStarts) {
  const ImportedAntenna antenna = readCuts("HORIZONTAL 1\nx\nVERTICAL 1\nx\nEND\n");
  EXPECT_DOUBLE_EQ(antenna.MinHor, 888888);
  EXPECT_DOUBLE_EQ(antenna.MinVer, 88888);
}

TEST_F(Antel, PointLinesTakeTabsRunsOfBlanksAndEitherSign) {
  const ImportedAntenna antenna = readCuts("HORIZONTAL 3\n 10   -1 \n20\t2\n30 3 x\nVERTICAL 1\n0\t-4\nEND\n");
  EXPECT_THAT(antenna.HorAngle, ElementsAre(10, 20, 30));
  EXPECT_THAT(antenna.HorValue, ElementsAre(9, 8, 7));
  EXPECT_THAT(antenna.VerValue, ElementsAre(6));
}

TEST_F(Antel, AzimuthsAreWrappedAndElevationsKept) {
  const ImportedAntenna antenna =
      readCuts("HORIZONTAL 4\n-10 0\n360 0\n370 0\n-370 0\nVERTICAL 5\n-180 0\n-181 0\n350 0\n90 0\n-90 0\nEND\n");
  EXPECT_THAT(antenna.HorAngle, ElementsAre(350, 360, 10, 350));
  EXPECT_THAT(antenna.VerAngle, ElementsAre(-180, 179, 350, 90, -90));
}

TEST_F(Antel, OnlyTheMinimumOfTheElevationsPassesOverFieldsFromMinus50Down) {
  const ImportedAntenna antenna = readCuts("HORIZONTAL 2\n0 -60\n1 3\nVERTICAL 3\n0 -50\n1 -49\n2 -80\nEND\n");
  EXPECT_DOUBLE_EQ(antenna.MinHor, -50);
  EXPECT_DOUBLE_EQ(antenna.MinVer, -39);
  EXPECT_THAT(antenna.VerValue, ElementsAre(-40, -39, -70));
}

TEST_F(Antel, LinesBehindTheElevationsAreNotRead) {
  const ImportedAntenna antenna = readCuts(std::string(kCuts) + "HORIZONTAL 1\n50 5\n");
  EXPECT_EQ(antenna.HorCount, 2);
  EXPECT_EQ(antenna.VerCount, 2);
}

TEST_F(Antel, ReadsTheSameFromEveryKindOfTextFile) {
  for (const char* name : {"panel.msi", "tabs.txt", "line-feeds.msi", "carriage-returns.msi", "utf8-mark.msi"}) {
    const ImportedAntenna antenna = only({copied(name)});
    EXPECT_EQ(antenna.AntName.substr(0, 4), "RV65") << name;
    EXPECT_DOUBLE_EQ(antenna.Freq, 902.5) << name;
    EXPECT_DOUBLE_EQ(antenna.Gain, 15.5) << name;
    EXPECT_EQ(antenna.GainUnits, "dBi") << name;
    ASSERT_EQ(antenna.HorCount, 36) << name;
    ASSERT_EQ(antenna.VerCount, 36) << name;
    EXPECT_DOUBLE_EQ(antenna.HorAngle[35], 350) << name;
    EXPECT_DOUBLE_EQ(antenna.VerAngle[35], 350) << name;
    EXPECT_NEAR(antenna.VerValue[35], 10.8, 1e-9) << name;
  }
  EXPECT_DOUBLE_EQ(only({copied("last-point-ends-the-file.msi")}).VerAngle.at(35), 0);
}

TEST_F(Antel, StoresOneAntennaForEachFile) {
  const ImportResult result = import({copied("panel.msi"), copied("tabs.txt")});
  EXPECT_EQ(result.ErrorCount, 0);
  ASSERT_EQ(result.added.size(), 2u);
  EXPECT_EQ(result.added[0].description, "RV65-900");
  EXPECT_EQ(result.added[1].description, "RV65 900");
  const std::vector<AntennaListEntry> list = listAntennas(getAntennasPath(), "AMST0001");
  ASSERT_EQ(list.size(), 2u);
  EXPECT_EQ(list[0].horizontalPoints, 36);
  EXPECT_EQ(list[0].verticalPoints, 36);
  EXPECT_DOUBLE_EQ(list[0].fHigh, 902.5);
}

TEST_F(Antel, DamagedFilesFailOrReadButNeverHarm) {
  expectDamagedSamplesToFailBut({"damaged-more-elevations-announced.msi", "damaged-words-among-points.msi"});
}

TEST_F(Antel, AValueOutOfRangeFailsTheFile) {
  EXPECT_EQ(outcomeOf(header("GAIN -1.7E308") + "HORIZONTAL 1\n0 1.7E308\nVERTICAL 1\n0 0\nEND\n"), 6);
}

TEST_F(Antel, TakesAsManyPointsAsItsCountCanSay) {
  const ImportedAntenna antenna = readCuts("HORIZONTAL 1\n0 0\nVERTICAL 32767\n1 1\n2 2\nEND\n");
  EXPECT_EQ(antenna.VerCount, 32767);
  EXPECT_EQ(antenna.VerAngle.size(), 32767u);
  EXPECT_EQ(antenna.VerValue.size(), 32767u);
}

TEST_F(Antel, TakesALineOfManyMegabytes) {
  const std::string longLine(std::size_t{8} << 20, 'x');
  EXPECT_THAT(failureOf("fail.msi", longLine), HasSubstr("Error 62"));
  EXPECT_THAT(failureOf("fail.msi", header("GAIN " + longLine, longLine) + longLine), HasSubstr("(line 10)"));
  EXPECT_THAT(
      readText(header() + "HORIZONTAL 2\n" + longLine + "\n1 " + longLine + "\nVERTICAL 1\n0 0\nEND\n").HorValue,
      Each(0));
}

TEST_F(Antel, AFileWithoutItsCutIsToldWithItsLine) {
  EXPECT_THAT(failureOf("fail.msi", header() + "AZIMUTH 360\n0 0\n"), HasSubstr("line 10"));
  EXPECT_THAT(antennas, IsEmpty());
}

TEST_F(Antel, BadFilesHarmNothing) { expectBadFilesToHarmNothing("panel.msi", sample("panel.msi")); }

}  // namespace

}  // namespace vantrelix::test
