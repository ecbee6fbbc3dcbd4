#include "FormatImport.h"
#include "foundation/regional.h"

namespace vantrelix::test {

namespace {

using ::testing::DoubleEq;
using ::testing::DoubleNear;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Pointwise;

class Shively : public FormatImport {
 protected:
  Shively() : FormatImport("shively") {}

  ImportedAntenna read(const std::string& text) { return only({write("A1H.TXT", text)}); }
};

TEST_F(Shively, ReadsATableOfAzimuthAndRelativeField) {
  const ImportedAntenna antenna = only({copied("TS6810H.TXT")});
  EXPECT_EQ(antenna.AntName, "TS6810H - H Polarization");
  EXPECT_EQ(antenna.PolLetter, "H");
  EXPECT_EQ(antenna.GainUnits, "REL");
  EXPECT_DOUBLE_EQ(antenna.Gain, 1);
  EXPECT_DOUBLE_EQ(antenna.Freq, 0);
  EXPECT_DOUBLE_EQ(antenna.FreqLow, 0);
  EXPECT_DOUBLE_EQ(antenna.FreqHigh, 0);
  EXPECT_EQ(antenna.HorCount, 36);
  EXPECT_EQ(antenna.VerCount, 0);
  EXPECT_DOUBLE_EQ(antenna.HorAngle[1], 10);
  EXPECT_DOUBLE_EQ(antenna.HorValue[1], 0.985);
  EXPECT_DOUBLE_EQ(antenna.MinHor, 0.41);
}

TEST_F(Shively, TheSameFileUnderTwoNamesGivesTwoAntennasWithTheSamePattern) {
  import({copied("TS6810H.TXT", "A1H.TXT"), copied("TS6810H.TXT", "A1V.TXT")});
  ASSERT_EQ(antennas.size(), 2u);
  EXPECT_EQ(antennas[0].HorValue, antennas[1].HorValue);
  EXPECT_EQ(antennas[0].HorAngle, antennas[1].HorAngle);
  EXPECT_EQ(antennas[1].VerCount, 0);
  EXPECT_THAT(descriptions(), ElementsAre("A1H - H Polarization", "A1V - V Polarization"));
}

TEST_F(Shively, TheHighestEntryIsScaledToOneAndIsTheGain) {
  const ImportedAntenna antenna = read("0,0.5\n10,0.95\n20,0.19\n");
  EXPECT_DOUBLE_EQ(antenna.Gain, 0.95);
  EXPECT_THAT(antenna.HorValue, Pointwise(DoubleNear(1e-12), {0.5 / 0.95, 1.0, 0.2}));
  EXPECT_THAT(antenna.HorValue[1], DoubleEq(1));
  EXPECT_THAT(antenna.MinHor, DoubleEq(0.2));
}

TEST_F(Shively, AGainAboveOneScalesDown) {
  const ImportedAntenna antenna = read("0,4\n10,1\n20,-2\n");
  EXPECT_DOUBLE_EQ(antenna.Gain, 4);
  EXPECT_THAT(antenna.HorValue, ElementsAre(1, 0.25, -0.5));
  EXPECT_DOUBLE_EQ(antenna.MinHor, -0.5);
}

TEST_F(Shively, TheLowestValueIsSoughtBelow888888) {
  EXPECT_DOUBLE_EQ(read("0,900000\n10,950000\n").MinHor, 888888.0 / 950000);
}

// The point groups digits there; what is divided by the peak keeps its shape.
TEST_F(Shively, ACommaPartsFieldsAlsoWhereItIsTheRegionalDecimal) {
  const RegionalCharacters former = regionalCharacters();
  regionalCharacters() = {",", "."};
  const ImportedAntenna antenna = read("0,0.985\n10,0.197\n");
  regionalCharacters() = former;
  EXPECT_THAT(antenna.HorAngle, ElementsAre(0, 10));
  EXPECT_DOUBLE_EQ(antenna.Gain, 985);
  EXPECT_THAT(antenna.HorValue, Pointwise(DoubleNear(1e-12), {1.0, 0.2}));
}

TEST_F(Shively, AFileWithoutAPositiveValueFails) {
  for (const char* text : {"", "Title\n", "0,0\n10,0\n", "0,-1\n10,-0.5\n", "0;1\n", "0 1\n", "0\t1\n", "0,one\n"}) {
    EXPECT_THAT(failure(write("A1H.TXT", text)), HasSubstr("Error 11: Division by zero")) << text;
  }
  EXPECT_THAT(failure(copied("damaged-all-zero-V.txt")), HasSubstr("Error 11: "));
  EXPECT_THAT(failure(copied("damaged-no-numbers-H.txt")), HasSubstr("Error 11: "));
  EXPECT_THAT(descriptions(), IsEmpty());
}

TEST_F(Shively, TitlesAndBlankLinesArePassedOver) {
  const ImportedAntenna antenna = read("Example 6810\n\n  \nangle,value\n0,1\n,\n10,\n,0.5\n20,0.5,x\n  30 , 0.25 \n");
  EXPECT_THAT(antenna.HorAngle, ElementsAre(0, 20, 30));
  EXPECT_THAT(antenna.HorValue, ElementsAre(1, 0.5, 0.25));
}

TEST_F(Shively, AzimuthsAreWrapped) { EXPECT_THAT(read("-10,1\n360,1\n725,1\n").HorAngle, ElementsAre(350, 360, 5)); }

TEST_F(Shively, LinesEndInEveryWay) {
  for (const char* end : {"\n", "\r\n", "\r"}) {
    EXPECT_THAT(read(std::string("0,1") + end + "10,\t0.5" + end + end + "20,0.25").HorValue,
                ElementsAre(1, 0.5, 0.25));
  }
}

TEST_F(Shively, TheNameComesFromTheFile) {
  const auto nameOf = [this](const std::string& file) { return only({write(file, "0,1\n")}).AntName; };
  EXPECT_EQ(nameOf("AB6810H.TXT"), "AB6810H - H Polarization");
  EXPECT_EQ(nameOf("ab6810v.V1.txt"), "ab6810v - V Polarization");
  EXPECT_EQ(nameOf("x"), "x - X Polarization");
  EXPECT_EQ(nameOf(" x1 .TXT"), " x1  -   Polarization");
  EXPECT_EQ(nameOf(".TXT"), " -  Polarization");
  EXPECT_EQ(nameOf("caf\xC3\xA9.TXT"), "caf  -   Polarization");
}

TEST_F(Shively, NoSecondFileIsSought) {
  const std::string first = write("A1H.TXT", "0,1\n");
  write("A1V.TXT", "0,1\n90,1\n");
  EXPECT_EQ(import({first}).filesRead, 1);
  EXPECT_EQ(antennas.at(0).VerCount, 0);
}

TEST_F(Shively, TheWorkingSetStartsAfreshForEachFile) {
  import({write("A1H.TXT", "0,5\n"), write("A2H.TXT", "0,2\n90,1\n")});
  ASSERT_EQ(antennas.size(), 2u);
  EXPECT_DOUBLE_EQ(antennas[1].Gain, 2);
  EXPECT_THAT(antennas[1].HorValue, ElementsAre(1, 0.5));
}

TEST_F(Shively, TheLibraryHoldsWhatWasRead) {
  import({copied("TS6810H.TXT")});
  const std::vector<AntennaListEntry> list = listAntennas(getAntennasPath(), "AMST0001");
  ASSERT_EQ(list.size(), 1u);
  EXPECT_EQ(list[0].description, "TS6810H - H Polarization");
  EXPECT_DOUBLE_EQ(list[0].gain, 1);
  EXPECT_EQ(list[0].gainUnits, "REL");
  EXPECT_DOUBLE_EQ(list[0].fLow, 0);
  EXPECT_EQ(list[0].horizontalPoints, 36);
  EXPECT_EQ(list[0].verticalPoints, 0);
}

TEST_F(Shively, ThePreviewIsAskedAgainBehindNoPreview) {
  answer = PreviewAnswer::noPreview;
  const std::string first = write("A1H.TXT", "0,1\n");
  import({first, write("A2H.TXT", "0,1\n")});
  ASSERT_EQ(captions.size(), 2u);
  EXPECT_EQ(captions[0], "SHIVELY ANTENNA\r\nFile: " + files.machine(first) + "\r\nA1H - H Polarization");
}

TEST_F(Shively, AValueThatLeavesTheRangeOfNumbersFails) {
  EXPECT_THAT(failure(write("A1H.TXT", "0,1E-300\n10,-1E300\n")), HasSubstr("Error 6: "));
  EXPECT_THAT(failure(copied("damaged-huge-values-H.txt")), HasSubstr("Error 6: "));
}

TEST_F(Shively, AFileThatEndsAnywhereIsOneCountOrAWholeAntenna) {
  const std::string text = "Title\n0,0.5\n10,0.25\n";
  EXPECT_EQ(failuresOfCutTexts(text, "c", "H.TXT"), static_cast<int>(text.find('5')) + 1);
}

TEST_F(Shively, BytesOfAnyKindAreOneCount) {
  const std::string folder = "folderH.TXT";
  std::filesystem::create_directory(files.machine("folderH.TXT"));
  const std::string nuls = write("nulH.TXT", std::string(5000, '\0'));
  const std::string longLine = write("longH.TXT", std::string(4 << 20, ','));
  const std::string digits = write("digitsH.TXT", std::string(4 << 20, '9') + ",1\n");
  const std::string picture = write("pictureH.TXT", std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16));
  const ImportResult result = import({folder, nuls, longLine, digits, picture, write("A1H.TXT", "0,1\n")});
  EXPECT_EQ(result.ErrorCount, 5);
  EXPECT_THAT(descriptions(), ElementsAre("A1H - H Polarization"));
  ASSERT_EQ(suite.messages.size(), 1u);
  EXPECT_EQ(suite.messages[0].title, "Import Errors");
}

TEST_F(Shively, OddSamplesReadToo) {
  const ImportedAntenna turned = only({copied("TS20V.TXT")});
  EXPECT_EQ(turned.HorCount, 12);
  EXPECT_DOUBLE_EQ(turned.Gain, 0.95);
  EXPECT_DOUBLE_EQ(turned.HorAngle.front(), 180);
  EXPECT_THAT(only({copied("damaged-words-among-points-H.txt")}).HorValue, ElementsAre(1, 0.9));
}

TEST_F(Shively, TooManyPointsFail) {
  std::string text;
  for (int i = 0; i < 32768; ++i) text += "1,1\n";
  EXPECT_THAT(failure(write("A1H.TXT", text)), HasSubstr("Error 6: "));
  EXPECT_THAT(descriptions(), IsEmpty());
}

TEST(ImportFormats, HoldTheShivelyFormatWithItsTexts) {
  const ImportFormat* format = findImportFormat("shively");
  ASSERT_NE(format, nullptr);
  EXPECT_EQ(format->menuItem, "mnuImportShively");
  EXPECT_EQ(format->menuCaption, "Legacy Shively File Format");
  EXPECT_EQ(format->legacyName, "Shively");
  EXPECT_EQ(format->dialogTitle, "SHIVELY Files to Read");
  EXPECT_EQ(format->pathKey, "Import Shively");
  EXPECT_THAT(format->filters, IsEmpty());
}

}  // namespace

}  // namespace vantrelix::test
