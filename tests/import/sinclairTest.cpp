#include "FormatImport.h"

namespace vantrelix::test {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class Sinclair : public FormatImport {
 protected:
  Sinclair() : FormatImport("sinclair") {}

  // A header of the seven lines around the plane, with a number in the line that is not looked at, and the points.
  static std::string text(const std::string& plane, const std::string& points = "0 0\n90 3\n",
                          const std::string& model = "AB-12", const std::string& frequency = "450") {
    return model + "\n" + frequency + "\n10\n4\nOmni\n Dipole \n" + plane + "\n" + points;
  }
};

TEST_F(Sinclair, ReadsTheHeaderByItsPlaces) {
  const ImportedAntenna antenna = importText("A.TXT", text(" h "));
  EXPECT_EQ(antenna.AntName, "AB-12:Omni:Dipole");
  EXPECT_DOUBLE_EQ(antenna.Freq, 450);
  EXPECT_DOUBLE_EQ(antenna.FreqLow, 450);
  EXPECT_DOUBLE_EQ(antenna.FreqHigh, 450);
  EXPECT_DOUBLE_EQ(antenna.Gain, 10);
  EXPECT_EQ(antenna.GainUnits, "dBd");
  EXPECT_EQ(antenna.PolLetter, "H");
  EXPECT_EQ(antenna.HorCount, 2);
  EXPECT_THAT(antenna.HorValue, ElementsAre(10, 7));
}

TEST_F(Sinclair, ANameIsTrimmedAndLosesControlAndHighCharacters) {
  EXPECT_EQ(importText("A.TXT", text("H", "", "  A\x01\xE9\tB ")).AntName, "A   B:Omni:Dipole");
}

TEST_F(Sinclair, AnAntennaWithoutAFrequencyCountsForAll) {
  for (const char* frequency : {"0", "", "-450", "broad"}) {
    const ImportedAntenna antenna = importText("A.TXT", text("H", "", "A", frequency));
    EXPECT_DOUBLE_EQ(antenna.FreqLow, 0.00001) << frequency;
    EXPECT_DOUBLE_EQ(antenna.FreqHigh, 99999) << frequency;
  }
}

TEST_F(Sinclair, AzimuthsTurnTheOtherWayFromTheSide) {
  const ImportedAntenna antenna = importText("A.TXT", text("H", "90 0\n0 1\n180 2\n-90 3\n-100 4\n360 5\n"));
  EXPECT_THAT(antenna.HorAngle, ElementsAre(0, 90, 270, 180, 190, 90));
  EXPECT_THAT(antenna.HorValue, ElementsAre(10, 9, 8, 7, 6, 5));
}

TEST_F(Sinclair, ElevationsAreNegatedAndTurnedFrom270) {
  const ImportedAntenna antenna = importText("A.TXT", text("V", "-300 0\n10 1\n-270 2\n-269 3\n300 4\n0 5\n"));
  EXPECT_THAT(antenna.VerAngle, ElementsAre(60, -10, 90, 269, -300, 0));
  EXPECT_EQ(antenna.HorCount, 0);
}

TEST_F(Sinclair, TheMinimaFollowEveryValue) {
  EXPECT_DOUBLE_EQ(importText("A.TXT", text("V", "0 -1\n1 -80\n2 2\n")).MinVer, -70);
  EXPECT_DOUBLE_EQ(importText("A.TXT", text("H", "0 -1\n1 -80\n2 2\n")).MinHor, -70);
  EXPECT_DOUBLE_EQ(importText("A.TXT", text("V", "")).MinVer, 88888);
  EXPECT_DOUBLE_EQ(importText("A.TXT", text("H", "")).MinHor, 888888);
}

TEST_F(Sinclair, AnotherPlaneLeavesBothCutsEmpty) {
  for (const char* plane : {"E", "Horizontal", "HV", "", "X", "\tH"}) {
    const ImportedAntenna antenna = importText("H.TXT", text(plane));
    EXPECT_EQ(antenna.HorCount, 0) << plane;
    EXPECT_EQ(antenna.VerCount, 0) << plane;
    EXPECT_EQ(antenna.AntName, "AB-12:Omni:Dipole") << plane;
  }
  EXPECT_THAT(descriptions(), IsEmpty());
  EXPECT_THAT(suite.messages, IsEmpty());
}

TEST_F(Sinclair, ThePlaneOfThePartnerIsNotLookedAt) {
  write("AH.TXT", text("H"));
  write("AV.TXT", text("X", "10 1\n", "second"));
  const ImportedAntenna antenna = only({"AH.TXT"});
  EXPECT_EQ(antenna.AntName, "second:Omni:Dipole");
  EXPECT_EQ(antenna.PolLetter, "X");
  EXPECT_EQ(antenna.HorCount, 2);
  EXPECT_THAT(antenna.VerAngle, ElementsAre(-10));
}

TEST_F(Sinclair, ThePartnerIsNamedByALetterOfTheBaseName) {
  write("LH.HV", text("H"));
  write("LE.HV", text("V", "10 1\n", "with E"));
  EXPECT_EQ(only({"LH.HV"}).AntName, "with E:Omni:Dipole");
  write("LV.HV", text("V", "10 1\n", "with V"));
  EXPECT_EQ(only({"LH.HV"}).AntName, "with V:Omni:Dipole");
  EXPECT_EQ(only({"LV.HV"}).AntName, "AB-12:Omni:Dipole");
  EXPECT_EQ(only({"LE.HV"}).HorCount, 2);
}

TEST_F(Sinclair, BothFilesOfAPairAddOneAntennaInEitherOrder) {
  copied("LK4H.txt");
  copied("LK4V.txt");
  for (const auto& names : {std::vector<std::string>{"LK4H.txt", "LK4V.txt"}, {"LK4V.txt", "LK4H.txt"}}) {
    const ImportedAntenna antenna = only(names);
    EXPECT_EQ(antenna.HorCount, 36);
    EXPECT_EQ(antenna.VerCount, 36);
    EXPECT_DOUBLE_EQ(antenna.Gain, 8.5);
  }
  EXPECT_THAT(descriptions(), ElementsAre("LK-4:Omni:Dipole array", "LK-4:Omni:Dipole array"));
}

TEST_F(Sinclair, APartnerThatFailsFailsTheAntenna) {
  write("AH.TXT", text("H"));
  write("AV.TXT", "A\n450\n");
  EXPECT_THAT(failure("AH.TXT"), HasSubstr("Error 62"));
  EXPECT_THAT(descriptions(), IsEmpty());
}

TEST_F(Sinclair, AHeaderThatEndsFailsTheFile) {
  const std::string header = text("", "");
  EXPECT_EQ(failuresOfCutTexts(header.substr(0, header.size() - 1), "cut", ".TXT"),
            static_cast<int>(header.size()) - 1);
}

TEST_F(Sinclair, ReadsEveryKindOfTextFile) {
  EXPECT_EQ(only({copied("TIP.txt")}).VerCount, 36);
  EXPECT_EQ(only({copied("WIDE.txt")}).HorCount, 36);
}

TEST_F(Sinclair, DamagedFilesFailOrReadButNeverHarm) {
  expectDamagedSamplesToFailBut({"damaged-no-points.txt", "damaged-other-plane.txt", "damaged-words-among-points.txt"});
}

TEST_F(Sinclair, BadFilesHarmNothing) { expectBadFilesToHarmNothing("GOOD.TXT", text("H")); }

}  // namespace

}  // namespace vantrelix::test
