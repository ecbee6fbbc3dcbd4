#include "DecibelRules.h"

namespace vantrelix::test {

namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

class Decibel : public DecibelRules {
 protected:
  Decibel() : DecibelRules("decibel") {}
};

TEST_F(Decibel, ReadsTheHeaderByItsPlaces) { expectHeaderByPlaces(); }

TEST_F(Decibel, AFrequencyOfZeroCountsForAll) { expectDerivedBand(); }

TEST_F(Decibel, AnotherPlaneFailsTheFile) { expectOtherPlanesToFail(); }

TEST_F(Decibel, WrapsAzimuthsAndNegatesElevations) { expectCuts(); }

TEST_F(Decibel, ThePartnerIsNamedByTheLastLetterOfThePath) { expectPartnerByTheLastLetterOfThePath(); }

TEST_F(Decibel, BothFilesOfAPairAddOneAntennaInEitherOrder) { expectSamplePairInEitherOrder("LK4-H.pat", "LK4-V.pat"); }

TEST_F(Decibel, AReplacedLetterIsACapitalWhateverItWas) {
  write("A1.hat", text("H"));
  write("A1.vat", text("V", "10 1\n", "small"));
  EXPECT_EQ(only({"A1.hat"}).VerCount, 0);
  write("A1.Vat", text("V", "10 1\n", "capital"));
  EXPECT_EQ(only({"A1.hat"}).AntName, "capital:Omni:Dipole");
  write("A1.Hat", text("H", "10 1\n", "azimuth"));
  EXPECT_EQ(only({"A1.vat"}).AntName, "azimuth:Omni:Dipole");
}

TEST_F(Decibel, FoldersAndExtensionAreSearchedToo) {
  for (const char* folder : {"H", "V"}) std::filesystem::create_directory(files.machine(folder));
  write("H\\A1.DAT", text("H"));
  write("V\\A1.DAT", text("V", "10 1\n", "other folder"));
  EXPECT_EQ(only({"H\\A1.DAT"}).AntName, "other folder:Omni:Dipole");
  write("H\\H1.HV", text("H"));
  write("H\\V1.HV", text("V", "10 1\n", "base name"));
  write("H\\H1.VV", text("V", "10 1\n", "extension"));
  EXPECT_EQ(only({"H\\H1.HV"}).AntName, "extension:Omni:Dipole");
}

TEST_F(Decibel, AnExtensionOfAnyLengthStays) {
  write("AH.PATTERN.1", text("H"));
  write("AV.PATTERN.1", text("V", "10 1\n", "second"));
  EXPECT_EQ(only({"AH.PATTERN.1"}).AntName, "second:Omni:Dipole");
}

TEST_F(Decibel, TheElevationFileIsNotNamedWithAnE) {
  write("A1H.DAT", text("H"));
  write("A1E.DAT", text("V"));
  EXPECT_EQ(only({"A1H.DAT"}).VerCount, 0);
}

TEST_F(Decibel, APartnerThatFailsFailsTheAntenna) {
  write("A1H.DAT", text("H"));
  write("A1V.DAT", text("E"));
  EXPECT_THAT(failure("A1H.DAT"), HasSubstr("line 7 of " + files.machine("A1V.DAT")));
  write("A1V.DAT", "A\n");
  EXPECT_THAT(failure("A1V.DAT"), HasSubstr("Error 62"));
  EXPECT_THAT(failure("A1H.DAT"), HasSubstr("Error 62"));
  EXPECT_THAT(descriptions(), IsEmpty());
}

TEST_F(Decibel, AHeaderThatEndsFailsTheFile) {
  const std::string header = text("", "");
  EXPECT_EQ(failuresOfCutTexts(header, "cut", ".DAT"), static_cast<int>(header.size()));
}

TEST_F(Decibel, ReadsEveryKindOfTextFile) {
  EXPECT_EQ(only({copied("TIP.pat")}).VerCount, 36);
  EXPECT_EQ(only({copied("WIDE.pat")}).HorCount, 36);
}

TEST_F(Decibel, DamagedFilesFailOrReadButNeverHarm) {
  expectDamagedSamplesToFailBut({"damaged-no-points.pat", "damaged-words-among-points.pat"});
}

TEST_F(Decibel, BadFilesHarmNothing) { expectBadFilesToHarmNothing("GOOD.DAT", text("H")); }

}  // namespace

}  // namespace vantrelix::test
