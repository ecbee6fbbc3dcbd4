#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/regional.h"
#include "import/TextLines.h"
#include "import/generic.h"
#include "platform/RunTimeFailure.h"
#include "support/TempFolder.h"

namespace vantrelix::test {

namespace {

using ::testing::DoubleNear;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pointwise;

ImportedAntenna readText(const std::string& text) {
  ImportedAntenna antenna;
  TextLines lines(text);
  readGeneric(lines, antenna);
  return antenna;
}

std::string sample(const std::string& name) {
  return readMachineFile(std::string(VANTRELIX_SOURCE_DIR) + "/tests/data/generic/" + name);
}

// The number of the failure, 0 where there is none.
int failureOf(const std::string& text) {
  try {
    readText(text);
    return 0;
  } catch (const RunTimeFailure& failure) {
    return failure.number();
  }
}

constexpr const char* kCuts = "HORIZONTAL 2\n0 0\n90 3\nVERTICAL 2\n0 0\n10 4\n";

TEST(Generic, ReadsHeaderAndBothCuts) {
  const ImportedAntenna antenna =
      readText("NAME AB-123 900 MHz\nMAKE MAKER\nFREQUENCY 900\nH_WIDTH 65\nGAIN 15.1 dBd\n" + std::string(kCuts));
  EXPECT_EQ(antenna.AntName, "AB-123 900 MHz");
  EXPECT_DOUBLE_EQ(antenna.Freq, 900);
  EXPECT_DOUBLE_EQ(antenna.FreqLow, 900);
  EXPECT_DOUBLE_EQ(antenna.FreqHigh, 900);
  EXPECT_DOUBLE_EQ(antenna.Gain, 15.1);
  EXPECT_THAT(antenna.HorAngle, ElementsAre(0, 90));
  EXPECT_THAT(antenna.HorValue, Pointwise(DoubleNear(1e-9), {15.1, 12.1}));
  EXPECT_THAT(antenna.VerAngle, ElementsAre(0, -10));
  EXPECT_THAT(antenna.VerValue, Pointwise(DoubleNear(1e-9), {15.1, 11.1}));
}

TEST(Generic, AGainWithoutAUnitIsInDBd) {
  EXPECT_EQ(readText("GAIN 15.1\n" + std::string(kCuts)).GainUnits, "dBd");
  EXPECT_DOUBLE_EQ(readText("GAIN\n" + std::string(kCuts)).Gain, 0);
}

TEST(Generic, KeepsTheUnitAsItStands) {
  const ImportedAntenna antenna = readText("GAIN 8 dBi\n" + std::string(kCuts));
  EXPECT_EQ(antenna.GainUnits, "dBi");
  EXPECT_THAT(antenna.HorValue, ElementsAre(8, 5));
  EXPECT_EQ(readText("GAIN 8 DBI\n" + std::string(kCuts)).GainUnits, "DBI");
  EXPECT_EQ(readText("GAIN 8 dB\xE9\n" + std::string(kCuts)).GainUnits, "dB\xC3\xA9");
}

TEST(Generic, AFileWithoutGainHasGainZeroAndNoUnits) {
  const ImportedAntenna antenna = readText("NAME A\nHORIZONTAL 1\n0 1\nVERTICAL 1\n0 1\n");
  EXPECT_DOUBLE_EQ(antenna.Gain, 0);
  EXPECT_EQ(antenna.GainUnits, "");
  EXPECT_THAT(antenna.HorValue, ElementsAre(-1));
}

TEST(Generic, AGainThatIsNoNumberFailsTheFile) {
  EXPECT_EQ(failureOf("GAIN 15dBd\n" + std::string(kCuts)), 13);
  EXPECT_EQ(failureOf("GAIN high dBd\n" + std::string(kCuts)), 13);
}

TEST(Generic, AFrequencyIsTakenFromTheDigitsThatItBeginsWith) {
  EXPECT_DOUBLE_EQ(readText("FREQUENCY 5725MHz\n" + std::string(kCuts)).FreqHigh, 5725);
  EXPECT_DOUBLE_EQ(readText("FREQUENCY\n" + std::string(kCuts)).FreqLow, 0);
}

TEST(Generic, TheFileNameOfTheFileIsTheSecondChoiceForTheName) {
  EXPECT_EQ(readText("FILENAME ab12.txt\n" + std::string(kCuts)).AntName, "ab12.txt");
  EXPECT_EQ(readText("NAME Own\nFILENAME ab12.txt\n" + std::string(kCuts)).AntName, "Own");
  EXPECT_EQ(readText("NAME\nFILENAME ab12.txt\n" + std::string(kCuts)).AntName, "ab12.txt");
}

TEST(Generic, ANameLosesControlAndHighCharacters) {
  EXPECT_EQ(readText("NAME A\x01\x42 caf\xE9\n" + std::string(kCuts)).AntName, "A B caf");
  EXPECT_EQ(readText("NAME caf\xC3\xA9 x\n" + std::string(kCuts)).AntName, "caf  x");
  EXPECT_EQ(readText(sample("windows1252_filename.msi")).AntName, "caf\xC3\xA9.msi");
}

TEST(Generic, HeaderLinesTakeTabsRunsOfBlanksAndAnyCase) {
  const ImportedAntenna antenna =
      readText("\n  name\tTwo   words \n\tGain\t 3  dBi\n horizontal\t1\n0\t0\n" + std::string("vertical 1\n0 0\n"));
  EXPECT_EQ(antenna.AntName, "Two words");
  EXPECT_DOUBLE_EQ(antenna.Gain, 3);
  EXPECT_EQ(antenna.HorCount, 1);
  EXPECT_EQ(antenna.VerCount, 1);
}

TEST(Generic, ShiftsTheHorizontalCutAloneToTheGain) {
  const ImportedAntenna antenna = readText("GAIN 10 dBd\nHORIZONTAL 2\n0 0.5\n90 3\nVERTICAL 2\n0 0.5\n10 4\n");
  EXPECT_THAT(antenna.HorValue, ElementsAre(10, 7.5));
  EXPECT_THAT(antenna.VerValue, ElementsAre(9.5, 6));
}

TEST(Generic, FollowsTheMinimaFromTheirOwnStarts) {
  const ImportedAntenna antenna = readText("GAIN 2 dBd\nHORIZONTAL 2\n0 1\n90 9\nVERTICAL 2\n0 0\n10 60\n");
  EXPECT_DOUBLE_EQ(antenna.MinHor, -6);
  EXPECT_DOUBLE_EQ(antenna.MinVer, -58);
  const ImportedAntenna low = readText("GAIN 10 dBd\nHORIZONTAL 2\n0 0\n90 -60\nVERTICAL 2\n0 0\n10 -60\n");
  EXPECT_DOUBLE_EQ(low.MinHor, -50);
  EXPECT_DOUBLE_EQ(low.MinVer, -50);
  const ImportedAntenna above = readText("GAIN 9 dBd\nHORIZONTAL 1\n0 0\nVERTICAL 1\n0 1\n");
  EXPECT_DOUBLE_EQ(above.MinHor, 0);
  EXPECT_DOUBLE_EQ(above.MinVer, 8);
}

TEST(Generic, APeakBelowZeroIsShiftedToo) {
  EXPECT_THAT(readText("GAIN 0 dBd\nHORIZONTAL 2\n0 1\n90 3\nVERTICAL 1\n0 0\n").HorValue, ElementsAre(0, -2));
}

TEST(Generic, ScalesARelativeHorizontalCut) {
  EXPECT_THAT(readText("GAIN 4 REL\nHORIZONTAL 2\n0 3\n90 4\nVERTICAL 1\n0 0\n").HorValue, ElementsAre(4, 0));
  EXPECT_THAT(readText("GAIN 4 REL\nHORIZONTAL 2\n0 2\n90 3\nVERTICAL 1\n0 0\n").HorValue, ElementsAre(4, 2));
  EXPECT_THAT(readText("GAIN 3 rel\nHORIZONTAL 2\n0 2.5\n90 2.75\nVERTICAL 1\n0 0\n").HorValue, ElementsAre(1, 0.5));
  EXPECT_DOUBLE_EQ(readText("GAIN 4 REL\nHORIZONTAL 2\n0 2\n90 5\nVERTICAL 1\n0 0\n").MinHor, -2);
  EXPECT_EQ(failureOf("GAIN 1 REL\nHORIZONTAL 1\n0 1\nVERTICAL 1\n0 1\n"), 11);
}

TEST(Generic, AzimuthsAreWrapped) {
  const ImportedAntenna antenna = readText("GAIN 1 dBd\nHORIZONTAL 3\n360 0\n370 0\n-10 0\nVERTICAL 1\n0 0\n");
  EXPECT_THAT(antenna.HorAngle, ElementsAre(360, 10, 350));
}

TEST(Generic, ElevationsTurnDownward) {
  const ImportedAntenna antenna = readText("GAIN 1 dBd\nHORIZONTAL 1\n0 0\nVERTICAL 2\n10 0\n190 0\n");
  EXPECT_THAT(antenna.VerAngle, ElementsAre(-10, 170));
}

TEST(Generic, TheVerticalBlockBeginsAtTheVeryStartOfALine) {
  const ImportedAntenna antenna = readText("GAIN 1 dBd\nHORIZONTAL 1\n0 0\n VERTICAL 1\n10 0\nVERTICALLY 1\n20 0\n");
  EXPECT_THAT(antenna.HorAngle, ElementsAre(0, 10));
  EXPECT_THAT(antenna.VerAngle, ElementsAre(-20));
}

TEST(Generic, AVerticalBlockThatComesFirstTakesTheHorizontalPointsToo) {
  const ImportedAntenna antenna = readText(sample("vertical_first.msi"));
  EXPECT_EQ(antenna.PolLetter, "V");
  EXPECT_THAT(antenna.VerAngle, ElementsAre(0, -10, 0, -180));
  EXPECT_EQ(antenna.HorCount, 0);
  EXPECT_THAT(antenna.HorAngle, IsEmpty());
}

TEST(Generic, AHeaderWithoutABlockFailsAtItsEnd) {
  EXPECT_EQ(failureOf(""), 62);
  EXPECT_EQ(failureOf("NAME A\nGAIN 3\n"), 62);
  EXPECT_EQ(failureOf(sample("damaged_picture.msi")), 62);
}

TEST(Generic, LinesThatAreNotNumericAmongThePointsAreLostAlone) {
  const ImportedAntenna antenna = readText(sample("damaged_words_among_points.msi"));
  EXPECT_EQ(antenna.HorCount, 31);
  EXPECT_EQ(antenna.VerCount, 31);
}

TEST(Generic, TakesTheRegionalDecimalCharacter) {
  const RegionalCharacters former = regionalCharacters();
  regionalCharacters() = {",", "."};
  const ImportedAntenna antenna = readText("GAIN 2,5 dBd\nHORIZONTAL 1\n0 0\nVERTICAL 1\n0,5 1,5\n");
  regionalCharacters() = former;
  EXPECT_THAT(antenna.HorValue, ElementsAre(2.5));
  EXPECT_THAT(antenna.VerAngle, ElementsAre(-0.5));
  EXPECT_THAT(antenna.VerValue, ElementsAre(1));
}

TEST(Generic, ReadsTheSameFromEveryKindOfTextFile) {
  for (const char* name : {"panel.msi", "tabs.msi", "carriage_returns.msi", "utf8_mark.msi", "utf16.msi"}) {
    const ImportedAntenna antenna = readText(sample(name));
    EXPECT_EQ(antenna.AntName.substr(0, 6), "TS-900") << name;
    EXPECT_DOUBLE_EQ(antenna.Gain, 15.1) << name;
    EXPECT_EQ(antenna.HorCount, 36) << name;
    EXPECT_EQ(antenna.VerCount, 36) << name;
  }
}

TEST(Generic, DamagedFilesFailOrReadButNeverHarm) {
  const std::filesystem::path folder = std::filesystem::path(VANTRELIX_SOURCE_DIR) / "tests/data/generic";
  int damaged = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().filename().string().rfind("damaged_", 0) != 0) continue;
    ++damaged;
    const std::string name = entry.path().filename().string();
    const int failure = failureOf(sample(name));
    const bool reads = name == "damaged_cut_short.msi" || name == "damaged_words_among_points.msi" ||
                       name == "damaged_huge_angle.msi" || name == "damaged_no_line_end.msi";
    EXPECT_EQ(failure == 0, reads) << name << " failure " << failure;
  }
  EXPECT_GE(damaged, 10);
}

TEST(ImportFormats, HoldTheGenericFormatWithItsTexts) {
  const ImportFormat* format = findImportFormat("generic");
  ASSERT_NE(format, nullptr);
  EXPECT_EQ(format->menuItem, "mnuImportGeneric");
  EXPECT_EQ(format->dialogTitle, "GENERIC Files to Read");
  EXPECT_EQ(format->pathKey, "Import GENERIC");
  EXPECT_EQ(format->previewCaption, "Generic Format ANTENNA");
  ASSERT_EQ(format->filters.size(), 2u);
  EXPECT_EQ(format->filters[0].pattern, "*.MSI");
  EXPECT_EQ(format->filters[1].description, ".txt");
  EXPECT_EQ(findImportFormat("Generic"), nullptr);
}

}  // namespace

}  // namespace vantrelix::test
