#include "FormatImport.h"

namespace vantrelix::test {

namespace {

using ::testing::DoubleEq;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

// Six lines of header.
std::string header(const std::string& nameLine) { return "maker\n" + nameLine + "\nline 3\nline 4\n\nline 6\n"; }

class Scala : public FormatImport {
 protected:
  Scala() : FormatImport("scala") {}

  std::string azimuth(const std::string& name, const std::string& nameLine = "Azimuth (450 MHz)") const {
    return write(name, header(nameLine) + "0 0\n90 3.5\n-10 -2\n");
  }
  std::string elevation(const std::string& name, const std::string& nameLine = "Elevation (470 MHz)") const {
    return write(name, header(nameLine) + "-190 0\n-180 1\n10 4\n");
  }
};

TEST_F(Scala, ReadsAnAzimuthFile) {
  const ImportedAntenna antenna = only({copied("AB123HA.PAT")});
  EXPECT_EQ(antenna.AntName, "TS-7 panel");
  EXPECT_DOUBLE_EQ(antenna.Freq, 451.25);
  EXPECT_DOUBLE_EQ(antenna.FreqLow, 451.25);
  EXPECT_DOUBLE_EQ(antenna.FreqHigh, 451.25);
  EXPECT_DOUBLE_EQ(antenna.Gain, 0);
  EXPECT_EQ(antenna.GainUnits, "dBd");
  EXPECT_EQ(antenna.HorCount, 12);
  EXPECT_EQ(antenna.VerCount, 0);
  EXPECT_DOUBLE_EQ(antenna.HorAngle[1], 30);
  EXPECT_DOUBLE_EQ(antenna.HorValue[1], -1.1);
  EXPECT_DOUBLE_EQ(antenna.MinHor, -22);
}

TEST_F(Scala, ReadsBothFilesOfAPairFromEitherOfThem) {
  const std::string first = copied("AB123HA.PAT");
  const std::string second = copied("AB123VA.PAT");
  for (const std::string& chosen : {first, second}) {
    const ImportedAntenna antenna = only({chosen});
    EXPECT_EQ(antenna.HorCount, 12);
    EXPECT_EQ(antenna.VerCount, 13);
    EXPECT_DOUBLE_EQ(antenna.VerValue[1], -12.5);
  }
  EXPECT_THAT(descriptions(), ElementsAre("TS-7 panel", "TS-7 panel"));
}

TEST_F(Scala, BothFilesOfAPairAddOneAntenna) {
  const std::string first = azimuth("AB123HA.PAT");
  const std::string second = elevation("AB123VA.PAT");
  EXPECT_EQ(only({first, second}).VerCount, 3);
  EXPECT_EQ(only({second, first}).HorCount, 3);
}

TEST_F(Scala, TheHeaderReadLastNamesTheAntenna) {
  const std::string first = azimuth("AB123HA.PAT");
  const std::string second = elevation("AB123VA.PAT");
  const ImportedAntenna antenna = only({first});
  EXPECT_EQ(antenna.AntName, "Elevation");
  EXPECT_DOUBLE_EQ(antenna.FreqHigh, 470);
  EXPECT_EQ(only({second}).AntName, "Azimuth");
}

TEST_F(Scala, TheLastLetterButOneOfTheBaseNameTellsTheCut) {
  EXPECT_EQ(only({azimuth("XHX.PAT")}).HorCount, 3);
  EXPECT_EQ(only({azimuth("xhx.v.p")}).HorCount, 3);
  EXPECT_EQ(only({elevation("XVX.PAT")}).VerCount, 3);
  EXPECT_EQ(only({elevation("e1.pat")}).VerCount, 3);
  EXPECT_EQ(only({azimuth("Hh\xC3\xA9.pat")}).HorCount, 3);
  EXPECT_EQ(only({azimuth("XHX")}).HorCount, 3);
}

TEST_F(Scala, AnotherLetterGivesNoCutAndStoresNothing) {
  for (const char* name : {"ABH.PAT", "HHAH.PAT", "\xC3\x89x.PAT", "H1-.PAT.VV"}) {
    const ImportedAntenna antenna = only({azimuth(name, "None (450)")});
    EXPECT_EQ(antenna.AntName, "None") << name;
    EXPECT_EQ(antenna.HorCount, 0) << name;
    EXPECT_EQ(antenna.VerCount, 0) << name;
  }
  EXPECT_THAT(descriptions(), IsEmpty());
}

TEST_F(Scala, AnEFileLeadsToItsHFileButNotTheOtherWay) {
  const std::string first = azimuth("AB123HA.PAT");
  const std::string second = elevation("AB123EA.PAT");
  EXPECT_EQ(only({second}).HorCount, 3);
  EXPECT_EQ(only({first}).VerCount, 0);
  EXPECT_EQ(only({first}).HorCount, 3);
}

TEST_F(Scala, AMissingPartnerLeavesOneCut) {
  EXPECT_EQ(only({elevation("AB123VA.PAT")}).HorCount, 0);
  EXPECT_EQ(only({azimuth("CD123HA.PAT")}).VerCount, 0);
  EXPECT_THAT(suite.messages, IsEmpty());
}

TEST_F(Scala, TheLetterOfThePartnerIsACapital) {
  const std::string first = azimuth("ab123ha.pat");
  elevation("ab123va.pat");
  EXPECT_EQ(only({first}).VerCount, 0);
  elevation("ab123Va.pat");
  EXPECT_EQ(only({first}).VerCount, 3);
}

TEST_F(Scala, OnlyTheLetterAtThePlaceOfThePlaneIsReplaced) {
  const std::string first = azimuth("HHHH.PAT");
  elevation("HVHH.PAT");
  elevation("VHHH.PAT");
  EXPECT_EQ(only({first}).VerCount, 0);
  elevation("HHVH.PAT");
  EXPECT_EQ(only({first}).VerCount, 3);
}

TEST_F(Scala, ThePartnerOfANameWithBlanksHasATrimmedBaseName) {
  const std::string first = azimuth(" ABH .PAT");
  elevation("ABV.PAT");
  EXPECT_EQ(only({first}).VerCount, 3);
}

TEST_F(Scala, AnExtensionOfMoreThanThreeLettersCountsAsBlank) {
  const std::string first = azimuth("AB123HA.PATT");
  elevation("AB123VA.PATT");
  EXPECT_EQ(only({first}).VerCount, 0);
  elevation("AB123VA.");
  EXPECT_EQ(only({first}).VerCount, 3);
}

TEST_F(Scala, ABaseNameOfOneLetterFails) {
  for (const char* name : {"H.PAT", ".PAT", "H", "\xC3\xA9.HHH"}) {
    EXPECT_THAT(failure(azimuth(name)), HasSubstr("Error 9: ")) << name;
  }
  EXPECT_THAT(descriptions(), IsEmpty());
}

TEST_F(Scala, ALineWithoutAParenthesisFails) {
  EXPECT_NE(failure(azimuth("ABHA.PAT", "TS-7 450 MHz)")), "");
  EXPECT_NE(failure(azimuth("ABHA.PAT", "")), "");
  EXPECT_NE(failure(copied("damaged-no-parenthesis-HA.pat")), "");
  EXPECT_THAT(descriptions(), IsEmpty());
}

TEST_F(Scala, APartnerThatFailsFailsTheAntenna) {
  const std::string first = azimuth("ABHA.PAT");
  const std::string second = elevation("ABVA.PAT", "no frequency");
  EXPECT_THAT(failure(first), HasSubstr("line 2 of " + files.machine(second)));
  write("ABVA.PAT", "");
  EXPECT_THAT(failure(first), HasSubstr("Error 62: "));
  EXPECT_THAT(descriptions(), IsEmpty());
}

TEST_F(Scala, TheNameIsWhatStandsBeforeTheFirstParenthesis) {
  const ImportedAntenna antenna = only({azimuth("ABHA.PAT", "\t TS\x01X7 caf\xE9 (450) (V2)")});
  EXPECT_EQ(antenna.AntName, "TS X7 caf");
  EXPECT_DOUBLE_EQ(antenna.Freq, 450);
  EXPECT_EQ(only({azimuth("ABHA.PAT", "caf\xC3\xA9 x (450)")}).AntName, "caf  x");
  EXPECT_EQ(only({azimuth("ABHA.PAT", "(450)")}).AntName, "");
}

TEST_F(Scala, TheFrequencyIsTheNumberBehindTheParenthesis) {
  EXPECT_DOUBLE_EQ(only({azimuth("ABHA.PAT", "A ( 450.5 MHz )")}).Freq, 450.5);
  EXPECT_DOUBLE_EQ(only({azimuth("ABHA.PAT", "A (450")}).FreqLow, 450);
  EXPECT_DOUBLE_EQ(only({azimuth("ABHA.PAT", "A (UHF)")}).Freq, 0);
  EXPECT_DOUBLE_EQ(only({azimuth("ABHA.PAT", "A (")}).Freq, 0);
}

TEST_F(Scala, AzimuthsAreWrappedAndAttenuationHasEitherSign) {
  const ImportedAntenna antenna = only({azimuth("ABHA.PAT")});
  EXPECT_THAT(antenna.HorAngle, ElementsAre(0, 90, 350));
  EXPECT_THAT(antenna.HorValue, ElementsAre(0, -3.5, -2));
}

TEST_F(Scala, ElevationsAreKeptButBelowMinus180ATurnIsAdded) {
  const ImportedAntenna antenna = only({elevation("ABVA.PAT")});
  EXPECT_THAT(antenna.VerAngle, ElementsAre(170, -180, 10));
  EXPECT_THAT(antenna.VerValue, ElementsAre(0, -1, -4));
  const std::string far = write("ABEA.PAT", header("A (1)") + "370 1\n-700 1\n");
  EXPECT_THAT(only({far}).VerAngle, ElementsAre(370, -340));
}

TEST_F(Scala, TheMinimaFollowTheLowestValues) {
  const std::string text = header("A (1)") + "0 -60\n10 -50\n20 -49\n";
  EXPECT_THAT(only({write("ABHA.PAT", text)}).MinHor, DoubleEq(-60));
  EXPECT_THAT(only({write("CDVA.PAT", text)}).MinVer, DoubleEq(-49));
  const std::string none = header("A (1)");
  EXPECT_THAT(only({write("EFHA.PAT", none)}).MinHor, DoubleEq(888888));
  EXPECT_THAT(only({write("GHVA.PAT", none)}).MinVer, DoubleEq(88888));
}

TEST_F(Scala, SeparatorsAndLineEndsMayBeOfAnyKind) {
  for (const char* end : {"\n", "\r\n", "\r"}) {
    std::string text;
    for (const char* line : {"1", "A (450)", "3", "4", "5", "6", "   0     1", "10\t2", "words", "", "20 3 x"}) {
      text += std::string(line) + end;
    }
    const ImportedAntenna antenna = only({write("ABHA.PAT", text)});
    EXPECT_EQ(antenna.AntName, "A");
    EXPECT_THAT(antenna.HorAngle, ElementsAre(0, 10, 20));
    EXPECT_THAT(antenna.HorValue, ElementsAre(-1, -2, -3));
  }
}

TEST_F(Scala, TheHeaderIsExactlySixLines) {
  EXPECT_THAT(only({write("ABHA.PAT", "1 1\n2 (2\n3 3\n4 4\n5 5\n6 6\n7 7\n")}).HorAngle, ElementsAre(7));
  EXPECT_EQ(only({write("ABHA.PAT", "1 1\n2 (2\n3 3\n4 4\n5 5\n6 6")}).HorCount, 0);
  EXPECT_THAT(failure(write("ABHA.PAT", "1 1\n2 (2\n3 3\n4 4\n5 5\n")), HasSubstr("Error 62: "));
}

TEST_F(Scala, TheLibraryHoldsWhatWasRead) {
  import({azimuth("ABHA.PAT"), elevation("ABVA.PAT")});
  expectOnePairStored("Elevation", 0, 470);
}

TEST_F(Scala, ThePreviewIsAskedAgainBehindNoPreview) {
  expectPreviewsBehindNoPreview({azimuth("ABHA.PAT"), azimuth("CDHA.PAT")}, "SCALA ANTENNA", "Azimuth");
}

TEST_F(Scala, AFileThatEndsAnywhereIsOneCountOrAWholeAntenna) {
  const std::string text = header("A (450)");
  EXPECT_EQ(failuresOfCutTexts(text + "0 1\n90 2\n", "c", "HA.PAT"), static_cast<int>(text.find("line 6")) + 1);
}

TEST_F(Scala, BytesOfAnyKindAreOneCount) {
  const std::string folder = "folderHA.PAT";
  std::filesystem::create_directory(files.machine("folderHA.PAT"));
  const std::string nuls = write("nulHA.PAT", std::string(5000, '\0'));
  const std::string longLine = write("longHA.PAT", "1\n" + std::string(4 << 20, 'x'));
  const std::string picture = write("pictureHA.PAT", std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR(\n\n\n", 20));
  const ImportResult result =
      import({folder, nuls, longLine, picture, copied("damaged-cut-short-HA.pat"), azimuth("ABHA.PAT")});
  EXPECT_EQ(result.ErrorCount, 5);
  EXPECT_THAT(descriptions(), ElementsAre("Azimuth"));
  ASSERT_EQ(suite.messages.size(), 1u);
  EXPECT_EQ(suite.messages[0].title, "Import Errors");
}

TEST_F(Scala, LongLinesAndNulsAmongThePointsAreLostAlone) {
  const std::string bad = std::string(2 << 20, '(') + "\n" + std::string(1 << 20, '9') + " 1\n" + std::string(9, '\0');
  const ImportedAntenna antenna = only({write("ABHA.PAT", header("A (" + bad) + bad + "\n10 1\n")});
  EXPECT_THAT(antenna.HorAngle, ElementsAre(10));
  EXPECT_EQ(descriptions(), std::vector<std::string>{"A"});
}

TEST_F(Scala, WhatTheLibraryCannotHoldIsToldAndTheRunGoesOn) {
  suite.answers = {MsgAnswer::ok};
  const ImportResult result = import({copied("damaged-huge-values-VA.pat"), azimuth("ABHA.PAT")});
  ASSERT_EQ(suite.messages.size(), 1u);
  EXPECT_EQ(suite.messages[0].title, "Error Importing Antenna");
  EXPECT_EQ(result.failed.size(), 1u);
  ASSERT_EQ(result.added.size(), 1u);
  EXPECT_EQ(result.added[0].description, "Azimuth");
}

TEST_F(Scala, WordsAmongThePointsAreLostAlone) {
  EXPECT_THAT(only({copied("damaged-words-among-points-VA.pat")}).VerAngle, ElementsAre(-90, 0, 90));
}

TEST_F(Scala, AnEFileOfAnyLineEndsAndSeparatorsReadsAsAnyOther) {
  copied("CD45HA.PAT");
  const ImportedAntenna antenna = only({copied("CD45EA.PAT")});
  EXPECT_EQ(antenna.AntName, "TS-45 whip");
  EXPECT_DOUBLE_EQ(antenna.FreqLow, 160);
  EXPECT_EQ(antenna.HorCount, 8);
  EXPECT_EQ(antenna.VerCount, 13);
}

TEST_F(Scala, TooManyPointsFail) {
  std::string points;
  for (int i = 0; i < 32768; ++i) points += "1 1\n";
  EXPECT_THAT(failure(write("ABHA.PAT", header("A (1)") + points)), HasSubstr("Error 6: "));
  EXPECT_THAT(failure(write("ABVA.PAT", header("A (1)") + points)), HasSubstr("Error 6: "));
  EXPECT_THAT(descriptions(), IsEmpty());
}

}  // namespace

}  // namespace vantrelix::test
