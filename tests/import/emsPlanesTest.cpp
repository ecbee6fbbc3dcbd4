// Which cut a file of the EMS format holds, and where the other one is sought.
#include "EmsFixture.h"

namespace vantrelix::test {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST_F(Ems, ThePlaneIsTheLastLetterOfTheBaseName) {
  EXPECT_EQ(importText("xA.txt", text()).PolLetter, "H");
  EXPECT_EQ(importText("xa.v2.txt", text()).PolLetter, "H");
  EXPECT_EQ(importText("xE.txt", text()).PolLetter, "V");
  EXPECT_EQ(importText("xe.txt", text()).PolLetter, "V");
  EXPECT_EQ(importText("x a .txt", text()).PolLetter, "H");
}

TEST_F(Ems, AnotherLetterNamesNoPlaneInTheFirstFile) {
  for (const char* name : {"xB.txt", "x1.txt", ".txt", "x\xC3\xA4.txt"}) {
    files.write(name, text());
    const ImportResult result = import({name});
    EXPECT_EQ(result.ErrorCount, 0) << name;
    EXPECT_THAT(result.added, IsEmpty()) << name;
    EXPECT_EQ(antennas.at(0).PolLetter, "") << name;
    EXPECT_EQ(antennas.at(0).HorCount, 0) << name;
  }
}

TEST_F(Ems, AnotherLetterKeepsThePlaneOfTheFileBefore) {
  for (const char* name : {"1A.txt", "2x.txt", "3E.txt", "4x.txt", "5x.txt"}) files.write(name, text("10,0\n"));
  import({"1A.txt", "2x.txt", "3E.txt", "4x.txt", "5x.txt"});
  ASSERT_EQ(antennas.size(), 5u);
  EXPECT_THAT(antennas[1].HorAngle, ElementsAre(10));
  EXPECT_EQ(antennas[1].AntName, "2x");
  EXPECT_THAT(antennas[3].VerAngle, ElementsAre(-10));
  EXPECT_EQ(antennas[3].HorCount, 0);
  EXPECT_THAT(antennas[4].VerAngle, ElementsAre(-10));
}

TEST_F(Ems, ThePlaneIsKeptBehindFilesThatFailOrAreSkippedButNotIntoTheNextRun) {
  files.write("1E.txt", "EMS\n");
  files.write("2x.txt", text());
  import({"1E.txt", "gone.txt", "2x.txt"});
  ASSERT_EQ(antennas.size(), 1u);
  EXPECT_EQ(antennas[0].VerCount, 2);
  import({"2x.txt"});
  EXPECT_EQ(antennas.at(0).VerCount, 0);
}

TEST_F(Ems, APartnerNeverChangesThePlaneThatIsKept) {
  files.write("1A.txt", text());
  files.write("1e.txt", text());
  files.write("2x.txt", text());
  import({"1A.txt", "2x.txt"});
  ASSERT_EQ(antennas.size(), 2u);
  EXPECT_EQ(antennas[0].VerCount, 2);
  EXPECT_EQ(antennas[1].HorCount, 2);
}

TEST_F(Ems, AFileOfAKeptPlaneHasAPartnerToo) {
  files.write("1A.txt", text());
  files.write("2x.txt", text());
  files.write("2e.txt", text("5,1\n"));
  import({"1A.txt", "2x.txt"});
  ASSERT_EQ(antennas.size(), 2u);
  EXPECT_THAT(antennas[1].VerAngle, ElementsAre(-5));
  EXPECT_EQ(antennas[1].AntName, "2x");
}

TEST_F(Ems, WithoutItsTraitThePlaneIsNotKept) {
  files.write("1A.txt", text());
  files.write("2x.txt", text());
  ImportFormat other = *findImportFormat("ems");
  other.traits = ImportFormat::plain;
  EXPECT_EQ(run({files.file("1A.txt"), files.file("2x.txt")}, false, {}, other).added.size(), 1u);
}

TEST_F(Ems, AnAzimuthFileLeadsToALowerCaseElevationFileInThatCaseAlone) {
  files.write("AB12A.TXT", text());
  files.write("AB12E.TXT", text("5,1\n"));
  EXPECT_EQ(importOne("AB12A.TXT").VerCount, 0);
  files.write("AB12e.TXT", text("7,1\n"));
  const ImportedAntenna antenna = importOne("AB12A.TXT");
  EXPECT_THAT(antenna.VerAngle, ElementsAre(-7));
  EXPECT_EQ(antenna.AntName, "AB12A");
}

TEST_F(Ems, AnElevationFileNamesTheAntennaAndTakesTheAzimuthCutOfItsPartner) {
  files.write("AB12E.TXT", text("5,1\n", "1900"));
  files.write("AB12a.TXT", text("20,2\n", "1950"));
  const ImportedAntenna antenna = importOne("AB12E.TXT");
  EXPECT_EQ(antenna.AntName, "AB12E");
  EXPECT_THAT(antenna.HorAngle, ElementsAre(20));
  EXPECT_THAT(antenna.HorValue, ElementsAre(-2));
  EXPECT_THAT(antenna.VerAngle, ElementsAre(-5));
  EXPECT_DOUBLE_EQ(antenna.Freq, 1950);
  EXPECT_DOUBLE_EQ(antenna.FreqHigh, 1950);
}

TEST_F(Ems, BothFilesOfAPairGiveOneAntenna) {
  files.write("AB12A.TXT", text());
  files.write("AB12e.TXT", text());
  EXPECT_EQ(import({"AB12A.TXT", "AB12e.TXT"}).added.size(), 1u);
  files.write("CD12a.TXT", text());
  files.write("CD12E.TXT", text());
  EXPECT_EQ(import({"CD12E.TXT", "CD12a.TXT"}).added.size(), 1u);
}

TEST_F(Ems, ThePartnersNameIsMadeOfTheTrimmedBaseAndAShortExtension) {
  files.write(" xA.txt", text());
  files.write("xe.txt", text());
  EXPECT_EQ(importOne(" xA.txt").VerCount, 2);
  files.write("yA.text", text());
  files.write("ye.text", text());
  EXPECT_EQ(importOne("yA.text").VerCount, 0);
  files.write("zA.v2.t", text());
  files.write("ze.v2.t", text());
  EXPECT_EQ(importOne("zA.v2.t").VerCount, 0);
  files.write("wA.2.t", text());
  files.write("we.2.t", text());
  EXPECT_EQ(importOne("wA.2.t").VerCount, 2);
}

TEST_F(Ems, AWholeCharacterIsReplacedInThePartnersName) {
  files.write("1A.txt", text());
  files.write("2\xC3\xA9.txt", text());
  files.write("2e.txt", text());
  import({"1A.txt", "2\xC3\xA9.txt"});
  ASSERT_EQ(antennas.size(), 2u);
  EXPECT_EQ(antennas[1].VerCount, 2);
}

TEST_F(Ems, AFileWithoutABaseNameHasNoPartner) {
  files.write("1A.txt", text());
  files.write(".txt", text());
  files.write("e.txt", text());
  import({"1A.txt", ".txt"});
  ASSERT_EQ(antennas.size(), 2u);
  EXPECT_EQ(antennas[1].HorCount, 2);
  EXPECT_EQ(antennas[1].VerCount, 0);
}

TEST_F(Ems, APartnerThatFailsFailsTheAntenna) {
  files.write("AB12A.TXT", text());
  files.write("AB12e.TXT", "EMS\n1850\n0,0\n");
  const ImportResult result = import({"AB12A.TXT"});
  EXPECT_EQ(result.ErrorCount, 1);
  EXPECT_THAT(result.failed.at(0), HasSubstr("AB12e.TXT"));
  EXPECT_THAT(descriptions(), IsEmpty());
}

}  // namespace

}  // namespace vantrelix::test
