#include "FormatImport.h"
#include "import/TextLines.h"

namespace vantrelix::test {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class Celwave : public FormatImport {
 protected:
  Celwave() : FormatImport("celwave") {}

  struct Lines {
    std::string model = "AB-12";
    std::string frequency = "450";
    std::string gain = "10";
    std::string band = "440-460";
    std::string further = "Corner";
    std::string plane = "H";
  };
  // A header of the 18 lines, with numbers in those that are not looked at, and the points.
  static std::string text(const Lines& lines, const std::string& points = "0 0\n90 3\n") {
    return "1\n" + lines.model + "\n" + lines.frequency + "\n4\n5\n" + lines.gain + "\n7\n" + lines.band +
           "\n9\n10\n11\n12\n13\n14\n" + lines.further + "\n16\n17\n" + lines.plane + "\n" + points;
  }
  static std::string plane(const std::string& letter, const std::string& model = "AB-12") {
    Lines lines;
    lines.model = model;
    lines.plane = letter;
    return text(lines);
  }
  ImportedAntenna band(const std::string& line, const std::string& frequency = "450") {
    Lines lines;
    lines.band = line;
    lines.frequency = frequency;
    return importText("BAND.ANT", text(lines));
  }
  ImportedAntenna points(const std::string& letter, const std::string& lines) {
    Lines header;
    header.plane = letter;
    return importText("POINTS.ANT", text(header, lines));
  }
};

TEST_F(Celwave, ReadsTheHeaderByItsPlaces) {
  const ImportedAntenna antenna = importText("A.ANT", text({}));
  EXPECT_EQ(antenna.AntName, "AB-12 Corner 450");
  EXPECT_DOUBLE_EQ(antenna.Freq, 450);
  EXPECT_DOUBLE_EQ(antenna.Gain, 10);
  EXPECT_EQ(antenna.GainUnits, "dBd");
  EXPECT_DOUBLE_EQ(antenna.FreqLow, 440);
  EXPECT_DOUBLE_EQ(antenna.FreqHigh, 460);
  EXPECT_EQ(antenna.PolLetter, "H");
  EXPECT_EQ(antenna.HorCount, 2);
  EXPECT_THAT(antenna.HorAngle, ElementsAre(0, 90));
  EXPECT_THAT(antenna.HorValue, ElementsAre(10, 7));
  EXPECT_EQ(antenna.VerCount, 0);
  EXPECT_DOUBLE_EQ(antenna.MinHor, 7);
}

TEST_F(Celwave, TheNameKeepsTheFrequencyLineAsItStands) {
  const ImportedAntenna antenna = importText("A.ANT", text({" AB\x01\xE9 2 ", "  450 MHz ", "10", "", "  Cor  ner "}));
  EXPECT_EQ(antenna.AntName, "AB   2 Cor  ner   450 MHz ");
  EXPECT_DOUBLE_EQ(antenna.Freq, 450);
}

TEST_F(Celwave, BlankHeaderLinesCountAsZero) {
  const ImportedAntenna antenna = importText("A.ANT", text({"", "", "", "", ""}));
  EXPECT_EQ(antenna.AntName, "  ");
  EXPECT_DOUBLE_EQ(antenna.Gain, 0);
  EXPECT_DOUBLE_EQ(antenna.FreqLow, 0);
  EXPECT_DOUBLE_EQ(antenna.FreqHigh, 0);
}

TEST_F(Celwave, ABandOfOneNumberHasItForBothEdges) {
  const ImportedAntenna antenna = band(" 430 MHz");
  EXPECT_DOUBLE_EQ(antenna.FreqLow, 430);
  EXPECT_DOUBLE_EQ(antenna.FreqHigh, 430);
}

TEST_F(Celwave, AnEdgeOfZeroOrLessBecomesTheFrequency) {
  EXPECT_DOUBLE_EQ(band("5925-", "6000").FreqLow, 5925);
  EXPECT_DOUBLE_EQ(band("5925-", "6000").FreqHigh, 6000);
  EXPECT_DOUBLE_EQ(band("-5925", "5900").FreqLow, 5900);
  EXPECT_DOUBLE_EQ(band("-5925", "5900").FreqHigh, 5925);
  EXPECT_DOUBLE_EQ(band("430--460").FreqHigh, 450);
  EXPECT_DOUBLE_EQ(band("0").FreqLow, 450);
  EXPECT_DOUBLE_EQ(band("0").FreqHigh, 450);
  EXPECT_DOUBLE_EQ(band("all").FreqHigh, 450);
}

TEST_F(Celwave, TheBandIsDividedAtItsFirstDash) {
  EXPECT_DOUBLE_EQ(band("430 - 450 MHz").FreqLow, 430);
  EXPECT_DOUBLE_EQ(band("430 - 450 MHz").FreqHigh, 450);
  EXPECT_DOUBLE_EQ(band("410-430-450").FreqLow, 410);
}

TEST_F(Celwave, TheFirstLetterOfThePlaneLineTellsTheCut) {
  EXPECT_EQ(importText("A.ANT", plane("  horizontal")).HorCount, 2);
  EXPECT_EQ(importText("A.ANT", plane("e-plane")).VerCount, 2);
  EXPECT_EQ(antennas.at(0).PolLetter, "E");
  EXPECT_EQ(antennas.at(0).HorCount, 0);
}

TEST_F(Celwave, AnotherPlaneFailsTheFile) {
  for (const char* letter : {"V", "Vertical", "", "  ", "-H", "1"}) {
    EXPECT_THAT(failureOf("A.ANT", plane(letter)), HasSubstr("(line 18)")) << letter;
  }
}

TEST_F(Celwave, AHeaderThatEndsFailsTheFile) {
  const std::string whole = plane("H");
  const std::string header = whole.substr(0, whole.find("17\nH") + 3);
  EXPECT_EQ(failuresOfCutTexts(header, "cut", ".ANT"), static_cast<int>(header.size()));
  EXPECT_THAT(failure("cut0.ANT"), HasSubstr("Error 62"));
}

TEST_F(Celwave, AzimuthsAreWrapped) {
  EXPECT_THAT(points("H", "-10 0\n360 1\n370 2\n").HorAngle, ElementsAre(350, 360, 10));
}

TEST_F(Celwave, ElevationsAreKeptAsWritten) {
  const ImportedAntenna antenna = points("E", "10 0\n-180 1\n-181 2\n350 3\n");
  EXPECT_THAT(antenna.VerAngle, ElementsAre(10, -180, 179, 350));
  EXPECT_THAT(antenna.VerValue, ElementsAre(10, 9, 8, 7));
}

TEST_F(Celwave, OnlyTheMinimumOfTheElevationsPassesOverFieldsFromMinus50Down) {
  const ImportedAntenna elevation = points("E", "0 -49\n1 -50\n2 -80\n");
  EXPECT_DOUBLE_EQ(elevation.MinVer, -39);
  EXPECT_THAT(elevation.VerValue, ElementsAre(-39, -40, -70));
  EXPECT_DOUBLE_EQ(points("H", "0 -49\n1 -50\n2 -80\n").MinHor, -70);
  EXPECT_DOUBLE_EQ(points("E", "").MinVer, 88888);
  EXPECT_DOUBLE_EQ(points("H", "").MinHor, 888888);
}

TEST_F(Celwave, PointLinesTakeTabsRunsOfBlanksAndWordsBetween) {
  const ImportedAntenna antenna = points("H", "Pattern\n 0   1 \n\n10\t-2\n20 x\n30 3 4\n");
  EXPECT_THAT(antenna.HorAngle, ElementsAre(0, 10, 30));
  EXPECT_THAT(antenna.HorValue, ElementsAre(9, 8, 7));
}

TEST_F(Celwave, TheElevationFileIsNamedWithAVOrElseAnE) {
  write("AB12H.ANT", plane("H", "first"));
  write("AB12E.ANT", plane("E", "with E"));
  EXPECT_EQ(only({"AB12H.ANT"}).AntName, "with E Corner 450");
  write("AB12V.ANT", plane("E", "with V"));
  const ImportedAntenna antenna = only({"AB12H.ANT"});
  EXPECT_EQ(antenna.AntName, "with V Corner 450");
  EXPECT_EQ(antenna.PolLetter, "E");
  EXPECT_EQ(antenna.HorCount, 2);
  EXPECT_EQ(antenna.VerCount, 2);
}

TEST_F(Celwave, TheAzimuthFileIsNamedByTheFirstVOrElseTheFirstE) {
  write("HVA.ANT", plane("E"));
  write("HHA.ANT", plane("H", "azimuth"));
  EXPECT_EQ(only({"HVA.ANT"}).AntName, "azimuth Corner 450");
  write("EVE.ANT", plane("E"));
  write("EHE.ANT", plane("H", "for V"));
  write("HVE.ANT", plane("H", "for E"));
  EXPECT_EQ(only({"EVE.ANT"}).AntName, "for V Corner 450");
  write("TEE.ANT", plane("E"));
  write("THE.ANT", plane("H", "first E"));
  EXPECT_EQ(only({"TEE.ANT"}).AntName, "first E Corner 450");
}

TEST_F(Celwave, TheFirstHOfTheBaseNameIsReplaced) {
  write("CHHH.ANT", plane("H"));
  write("CVHH.ANT", plane("E", "first"));
  write("CHHV.ANT", plane("E", "last"));
  EXPECT_EQ(only({"CHHH.ANT"}).AntName, "first Corner 450");
}

TEST_F(Celwave, AReplacedLetterIsACapital) {
  write("ab12h.ant", plane("H"));
  write("ab12v.ant", plane("E", "small"));
  EXPECT_EQ(only({"ab12h.ant"}).VerCount, 0);
  write("ab12V.ant", plane("E", "capital"));
  EXPECT_EQ(only({"ab12h.ant"}).AntName, "capital Corner 450");
  write("tev.ant", plane("E"));
  write("teH.ant", plane("H", "azimuth"));
  EXPECT_EQ(only({"tev.ant"}).AntName, "azimuth Corner 450");
  write("tie.ant", plane("E"));
  write("tiH.ant", plane("H", "for e"));
  EXPECT_EQ(only({"tie.ant"}).AntName, "for e Corner 450");
}

TEST_F(Celwave, OnlyTheBaseNameIsSearchedForTheLetter) {
  std::filesystem::create_directory(files.machine("HVE"));
  std::filesystem::create_directory(files.machine("VVE"));
  write("HVE\\A1.HVE", plane("H"));
  write("VVE\\A1.HVE", plane("E"));
  write("HVE\\A1.VVE", plane("E"));
  EXPECT_EQ(only({"HVE\\A1.HVE"}).VerCount, 0);
  write("HVE\\B1.HVE", plane("E"));
  write("HVE\\B1.HHE", plane("H"));
  write("HHE\\B1.HVE", plane("H"));
  EXPECT_EQ(only({"HVE\\B1.HVE"}).HorCount, 0);
}

TEST_F(Celwave, AnExtensionOfMoreThanThreeLettersCountsAsBlank) {
  write("AH.PATT", plane("H"));
  write("AV.PATT", plane("E", "same extension"));
  EXPECT_EQ(only({"AH.PATT"}).VerCount, 0);
  write("AV.", plane("E", "with a point"));
  EXPECT_EQ(only({"AH.PATT"}).AntName, "with a point Corner 450");
  write("BH", plane("H"));
  write("BV", plane("E", "without"));
  EXPECT_EQ(only({"BH"}).VerCount, 0);
  write("BV.", plane("E", "with a point"));
  EXPECT_EQ(only({"BH"}).VerCount, 2);
}

TEST_F(Celwave, ANameWithoutTheLetterHasNoPartner) {
  write("A1.PATT", plane("H"));
  write("A1.", plane("E"));
  EXPECT_EQ(only({"A1.PATT"}).VerCount, 0);
  write("A1.PATT", plane("E"));
  write("A1.", plane("H"));
  EXPECT_EQ(only({"A1.PATT"}).HorCount, 0);
}

TEST_F(Celwave, BothFilesOfAPairAddOneAntennaInEitherOrder) {
  for (const auto& names : {std::vector<std::string>{"RK9H.ANT", "RK9V.ANT"}, {"RK9V.ANT", "RK9H.ANT"}}) {
    copied(names[0]);
    copied(names[1]);
    const ImportedAntenna antenna = only(names);
    EXPECT_EQ(antenna.HorCount, 36);
    EXPECT_EQ(antenna.VerCount, 36);
    EXPECT_DOUBLE_EQ(antenna.FreqHigh, 866);
  }
  EXPECT_THAT(descriptions(), ElementsAre("RK-9 Corner reflector 836", "RK-9 Corner reflector 836"));
}

TEST_F(Celwave, APartnerThatWasReadBeforeIsNotReadAgain) {
  write("AV.ANT", plane("E", "pair"));
  write("AH.ANT", plane("H", "pair"));
  write("AE.ANT", plane("E", "alone"));
  const ImportResult result = import({"AV.ANT", "AH.ANT", "AE.ANT"});
  EXPECT_EQ(result.filesRead, 3);
  ASSERT_EQ(antennas.size(), 2u);
  EXPECT_EQ(antennas[1].AntName, "alone Corner 450");
  EXPECT_EQ(antennas[1].HorCount, 0);
}

TEST_F(Celwave, AVThatWasReadBeforeStandsInTheWayOfTheE) {
  write("AHV.ANT", plane("E", "other pair"));
  write("AHH.ANT", plane("H", "azimuth"));
  write("AVH.ANT", plane("H", "read as azimuth"));
  write("AEH.ANT", plane("E", "with E"));
  import({"AVH.ANT", "AHH.ANT"});
  ASSERT_EQ(antennas.size(), 2u);
  EXPECT_EQ(antennas[1].AntName, "azimuth Corner 450");
  EXPECT_EQ(antennas[1].VerCount, 0);
}

TEST_F(Celwave, APartnerThatFailsFailsTheAntenna) {
  write("AH.ANT", plane("H"));
  write("AV.ANT", plane("V"));
  EXPECT_THAT(failure("AH.ANT"), HasSubstr("line 18 of " + files.machine("AV.ANT")));
  write("AV.ANT", "");
  EXPECT_THAT(failure("AH.ANT"), HasSubstr("Error 62"));
  EXPECT_THAT(antennas, IsEmpty());
  EXPECT_THAT(descriptions(), IsEmpty());
}

TEST_F(Celwave, APartnerThatIsAFolderIsPassedOver) {
  write("AH.ANT", plane("H"));
  std::filesystem::create_directory(files.machine("AV.ANT"));
  write("AE.ANT", plane("E", "with E"));
  EXPECT_EQ(only({"AH.ANT"}).AntName, "with E Corner 450");
}

TEST_F(Celwave, TheSecondHeaderStands) {
  write("AH.ANT", text({"first", "450", "10", "440-460", "x", "H"}));
  write("AV.ANT", text({"second", "900", "6", "800", "y", "E"}, "0 1\n"));
  const ImportedAntenna antenna = only({"AH.ANT"});
  EXPECT_EQ(antenna.AntName, "second y 900");
  EXPECT_DOUBLE_EQ(antenna.Gain, 6);
  EXPECT_DOUBLE_EQ(antenna.FreqLow, 800);
  EXPECT_THAT(antenna.HorValue, ElementsAre(10, 7));
  EXPECT_THAT(antenna.VerValue, ElementsAre(5));
}

TEST_F(Celwave, ReadsEveryKindOfTextFile) {
  copied("YG6H.ANT");
  copied("YG6E.ANT");
  const ImportedAntenna lineFeeds = only({"YG6H.ANT"});
  EXPECT_EQ(lineFeeds.HorCount, 36);
  EXPECT_EQ(lineFeeds.VerCount, 36);
  EXPECT_DOUBLE_EQ(lineFeeds.FreqLow, 450);
  EXPECT_EQ(only({copied("CRH.ANT")}).HorCount, 36);
}

TEST_F(Celwave, DamagedFilesFailOrReadButNeverHarm) {
  expectDamagedSamplesToFailBut({"damaged-no-points.ANT", "damaged-words-among-points.ANT"});
}

TEST_F(Celwave, BadFilesHarmNothing) { expectBadFilesToHarmNothing("GOOD.ANT", plane("H")); }

TEST_F(Celwave, TakesLinesOfManyMegabytes) {
  const std::string longLine(std::size_t{4} << 20, 'x');
  const ImportedAntenna antenna = importText(
      "LONG.ANT",
      text({longLine, longLine, longLine, longLine, longLine, "H" + longLine}, "1 1" + longLine + "\n2 2\n"));
  EXPECT_THAT(antenna.HorAngle, ElementsAre(2));
  EXPECT_EQ(antenna.AntName, longLine.substr(0, TextLines::kLongestShown));
}

}  // namespace

}  // namespace vantrelix::test
