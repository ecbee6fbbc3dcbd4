#include "FormatImport.h"
#include "import/dapa.h"

namespace vantrelix::test {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class Dapa : public FormatImport {
 protected:
  Dapa() : FormatImport("dapa") {}

  static std::string text(const std::string& plane, const std::string& points = "0 0\n90 3\n",
                          const std::string& gain = "9.5 dBd", const std::string& name = "AB-12") {
    return "DAPA antenna data\nModel:" + name + "\nPlane:" + plane + "\n\n\n\nGain:" + gain + "\nFrequency:1850\n" +
           points;
  }
};

TEST_F(Dapa, HasItsTexts) {
  const ImportFormat& format = *findImportFormat("dapa");
  EXPECT_EQ(format.menuItem, "mnuImportDapa");
  EXPECT_EQ(format.menuCaption, "Legacy DAPA Communications File Format");
  EXPECT_EQ(format.legacyName, "DAPA Communications");
  EXPECT_EQ(format.dialogTitle, "DAPA Files to Read");
  EXPECT_EQ(format.pathKey, "Import DAPA");
  EXPECT_THAT(format.filters, IsEmpty());
  EXPECT_EQ(format.previewCaption, "DAPA ANTENNA");
  EXPECT_EQ(format.traits, ImportFormat::plain);
}

TEST_F(Dapa, ReadsHeaderAndAzimuthCut) {
  const ImportedAntenna antenna = importText("H1.PAT", text("H", "0 0.0\n10 0.5\n-10 -0.5\n370 1\n"));
  EXPECT_EQ(antenna.AntName, "AB-12");
  EXPECT_DOUBLE_EQ(antenna.Gain, 9.5);
  EXPECT_EQ(antenna.GainUnits, "dBd");
  EXPECT_DOUBLE_EQ(antenna.Freq, 1850);
  EXPECT_DOUBLE_EQ(antenna.FreqLow, 1850);
  EXPECT_DOUBLE_EQ(antenna.FreqHigh, 1850);
  EXPECT_THAT(antenna.HorAngle, ElementsAre(0, 10, 350, 10));
  EXPECT_THAT(antenna.HorValue, ElementsAre(9.5, 9, 9, 8.5));
  EXPECT_EQ(antenna.VerCount, 0);
  EXPECT_EQ(captions.at(0), "DAPA ANTENNA\r\nFile: " + files.machine("H1.PAT") + "\r\nAB-12");
}

TEST_F(Dapa, ElevationsAreKeptAsTheyStand) {
  for (const char* plane : {"V", "E"}) {
    const ImportedAntenna antenna = importText("E1.PAT", text(plane, "10 1\n-190 2\n400 3\n"));
    EXPECT_THAT(antenna.VerAngle, ElementsAre(10, -190, 400)) << plane;
    EXPECT_THAT(antenna.VerValue, ElementsAre(8.5, 7.5, 6.5)) << plane;
    EXPECT_EQ(antenna.HorCount, 0) << plane;
  }
}

TEST_F(Dapa, OnlyThePlaceOfALineCounts) {
  const ImportedAntenna antenna =
      importText("x.pat", "Gain:1\nx:Name:further\n: H \nModel:wrong\n:V\n:9\n:  9.5 dBi \nGain:1910 MHz\n0 0\n");
  EXPECT_EQ(antenna.AntName, "Name");
  EXPECT_DOUBLE_EQ(antenna.Gain, 9.5);
  EXPECT_EQ(antenna.GainUnits, "dBi");
  EXPECT_DOUBLE_EQ(antenna.Freq, 1910);
  EXPECT_EQ(antenna.HorCount, 1);
}

TEST_F(Dapa, ValuesLoseControlAndHighCharactersAndAreTrimmed) {
  EXPECT_EQ(importText("x.pat", text("H", "0 0\n", "1", "\t caf\xE9 A\x01\x42 ")).AntName, "caf  A B");
  EXPECT_EQ(importText("x.pat", text("H", "0 0\n", "1", "caf\xC3\xA9 A")).AntName, "caf  A");
  EXPECT_EQ(importText("x.pat", text("H", "0 0\n", "1", "A\xC3\xA9z\xE9z")).AntName, "A  z z") << "no UTF-8";
  EXPECT_EQ(importText("x.pat", text("\tH\x02", "0 0\n", "\t9\tdBi\xA0")).GainUnits, "dBi");
}

TEST_F(Dapa, ALineWithoutAColonHasABlankValue) {
  const ImportedAntenna antenna = importText("x.pat", "1\nModel\n:H\n4\n5\n6\nGain 9.5\nFrequency 1850\n0 2\n");
  EXPECT_EQ(antenna.AntName, "");
  EXPECT_DOUBLE_EQ(antenna.Gain, 0);
  EXPECT_EQ(antenna.GainUnits, "dBd");
  EXPECT_DOUBLE_EQ(antenna.Freq, 0);
  EXPECT_THAT(antenna.HorValue, ElementsAre(-2));
}

TEST_F(Dapa, TheUnitStandsBehindOneBlank) {
  EXPECT_EQ(importText("x.pat", text("H", "0 0\n", " 9.5")).GainUnits, "dBd");
  EXPECT_DOUBLE_EQ(antennas.at(0).Gain, 9.5);
  EXPECT_EQ(importText("x.pat", text("H", "0 0\n", "9.5 dBi peak 2")).GainUnits, "dBi");
  EXPECT_DOUBLE_EQ(antennas.at(0).Gain, 9.5);
  EXPECT_EQ(importText("x.pat", text("H", "0 0\n", "9.5dBi")).GainUnits, "dBd");
  EXPECT_DOUBLE_EQ(antennas.at(0).Gain, 9.5);
}

TEST_F(Dapa, TwoBlanksBeforeTheUnitGiveAnEmptyUnit) {
  const ImportedAntenna antenna = importText("x.pat", text("H", "0 0\n", "9.5  dBi"));
  EXPECT_EQ(antenna.GainUnits, "");
  EXPECT_DOUBLE_EQ(antenna.Gain, 9.5);
}

TEST_F(Dapa, APlaneThatIsNotExactlyOneOfItsLettersNamesNoCutAndStoresNothing) {
  for (const char* plane : {"h", "v", "e", "HV", "Horizontal", "", "X"}) {
    files.write("HX.pat", text(plane));
    files.write("eX.pat", text("E"));
    const ImportResult result = import({"HX.pat"});
    EXPECT_EQ(result.ErrorCount, 0) << plane;
    EXPECT_EQ(result.filesRead, 1) << plane;
    EXPECT_THAT(result.added, IsEmpty()) << plane;
    EXPECT_EQ(antennas.at(0).HorCount + antennas.at(0).VerCount, 0) << plane;
  }
}

TEST_F(Dapa, MinimaStartHighAndTheElevationsFollowFieldsAboveMinus50Alone) {
  EXPECT_DOUBLE_EQ(importText("x.pat", text("V", "0 -3\n10 -50\n20 -49\n")).MinVer, 9.5 - 49);
  EXPECT_DOUBLE_EQ(importText("x.pat", text("V", "0 -60\n")).MinVer, 88888);
  EXPECT_DOUBLE_EQ(importText("x.pat", text("V", "0 60\n")).MinVer, 9.5 - 60);
  EXPECT_DOUBLE_EQ(importText("x.pat", text("H", "0 -60\n")).MinHor, 9.5 - 60);
  EXPECT_DOUBLE_EQ(importText("x.pat", text("H", "word\n")).MinHor, 888888);
}

TEST_F(Dapa, PointsAreSplitAtTabsOrRunsOfBlanks) {
  EXPECT_THAT(importText("x.pat", text("H", "0\t1\n  10    2 \n\nword\n20,3\n")).HorAngle, ElementsAre(0, 10));
}

TEST_F(Dapa, AnElevationFileLeadsToItsAzimuthFile) {
  for (const char* plane : {"V", "E"}) {
    files.write("EAB12.PAT", text(plane, "5 1\n", "8 dBi", "First"));
    files.write("hAB12.PAT", text("H", "20 2\n", "10 dBd", "Second"));
    const ImportedAntenna antenna = importOne("EAB12.PAT");
    EXPECT_THAT(antenna.VerValue, ElementsAre(7));
    EXPECT_THAT(antenna.HorValue, ElementsAre(8));
    EXPECT_THAT(antenna.HorAngle, ElementsAre(20));
    EXPECT_EQ(antenna.AntName, "Second");
    EXPECT_DOUBLE_EQ(antenna.Gain, 10);
    EXPECT_EQ(antenna.GainUnits, "dBd");
  }
}

TEST_F(Dapa, AnAzimuthFileLeadsToItsElevationFile) {
  files.write("HAB12.PAT", text("H", "20 2\n"));
  files.write("eAB12.PAT", text("E", "5 1\n"));
  const ImportedAntenna antenna = importOne("HAB12.PAT");
  EXPECT_THAT(antenna.HorAngle, ElementsAre(20));
  EXPECT_THAT(antenna.VerAngle, ElementsAre(5));
}

TEST_F(Dapa, ThePartnerIsFoundInItsOwnCaseAlone) {
  files.write("HAB12.PAT", text("H"));
  files.write("EAB12.PAT", text("E"));
  EXPECT_EQ(importOne("HAB12.PAT").VerCount, 0);
  EXPECT_EQ(import({"HAB12.PAT", "EAB12.PAT"}).added.size(), 2u);
}

TEST_F(Dapa, BothFilesOfAPairGiveOneAntenna) {
  files.write("HAB12.PAT", text("H"));
  files.write("eAB12.PAT", text("E"));
  EXPECT_EQ(import({"HAB12.PAT", "eAB12.PAT"}).added.size(), 1u);
  files.write("VCD12.PAT", text("V"));
  files.write("hCD12.PAT", text("H"));
  EXPECT_EQ(import({"VCD12.PAT", "hCD12.PAT"}).added.size(), 1u);
}

TEST_F(Dapa, ThePartnersNameIsMadeOfTheTrimmedBaseAndAShortExtension) {
  files.write(" HX.pat", text("H"));
  files.write("eX.pat", text("E"));
  EXPECT_EQ(importOne(" HX.pat").VerCount, 2);
  files.write("HY.patt", text("H"));
  files.write("eY.patt", text("E"));
  EXPECT_EQ(importOne("HY.patt").VerCount, 0);
  files.write("\xC3\x89Z.pat", text("H"));
  files.write("eZ.pat", text("E"));
  EXPECT_EQ(importOne("\xC3\x89Z.pat").VerCount, 2);
}

TEST_F(Dapa, AFileWithoutABaseNameHasNoPartner) {
  files.write(".pat", text("H"));
  files.write("e.pat", text("E"));
  EXPECT_EQ(importOne(".pat").VerCount, 0);
}

TEST_F(Dapa, APartnersOwnPlaneIsNotLookedAt) {
  files.write("HX.pat", text("H", "0 1\n"));
  files.write("eX.pat", text("nothing", "-5 1\n"));
  EXPECT_THAT(importOne("HX.pat").VerAngle, ElementsAre(-5));
}

TEST_F(Dapa, APartnerThatFailsFailsTheAntenna) {
  files.write("HX.pat", text("H"));
  files.write("eX.pat", "1\n2\n3\n");
  const ImportResult result = import({"HX.pat"});
  EXPECT_EQ(result.ErrorCount, 1);
  EXPECT_THAT(result.failed.at(0), HasSubstr("eX.pat"));
  EXPECT_THAT(descriptions(), IsEmpty());
}

TEST_F(Dapa, AFileThatEndsInItsHeaderFails) {
  std::string lines;
  for (int count = 0; count < 8; ++count, lines += ":H\n") {
    EXPECT_THAT(failureOf("x.pat", lines), HasSubstr("past end")) << count;
  }
  EXPECT_EQ(importText("x.pat", lines).AntName, "H");
}

TEST_F(Dapa, EachFileStartsAfresh) {
  files.write("a.pat", text("H", "0 1\n"));
  files.write("b.pat", text("h", "5 1\n"));
  import({"a.pat", "b.pat"});
  ASSERT_EQ(antennas.size(), 2u);
  EXPECT_EQ(antennas[1].HorCount + antennas[1].VerCount, 0);
}

TEST_F(Dapa, ReadsItsSamples) {
  copySamples({"HSX58.PAT", "eSX58.PAT", "ESX60.PAT", "hSX60.PAT", "HSPACED.PAT"});
  import({"HSX58.PAT", "ESX60.PAT", "hSX60.PAT", "HSPACED.PAT"});
  ASSERT_EQ(antennas.size(), 3u);
  EXPECT_EQ(antennas[0].AntName, "SX-58");
  EXPECT_EQ(antennas[0].HorCount, 36);
  EXPECT_EQ(antennas[0].VerCount, 37);
  EXPECT_EQ(antennas[1].AntName, "SX-60 H");
  EXPECT_DOUBLE_EQ(antennas[1].Gain, 10.5);
  EXPECT_EQ(antennas[1].GainUnits, "dBi");
  EXPECT_EQ(antennas[1].HorCount, 36);
  EXPECT_EQ(antennas[1].VerCount, 37);
  EXPECT_DOUBLE_EQ(antennas[1].VerValue.at(18), 10);
  EXPECT_EQ(antennas[2].AntName, "SX-61");
  EXPECT_EQ(antennas[2].HorValue, antennas[0].HorValue);
}

TEST_F(Dapa, DamagedSamplesFailOrLoseWhatIsDamagedAlone) {
  EXPECT_THAT(failureOf("x.pat", sample("damaged-empty.PAT")), HasSubstr("past end"));
  EXPECT_THAT(failureOf("x.pat", sample("damaged-header-only.PAT")), HasSubstr("past end"));
  EXPECT_EQ(importText("x.pat", sample("damaged-lower-case-plane.PAT")).HorCount, 0);
  EXPECT_EQ(importText("x.pat", sample("damaged-no-colons.PAT")).HorCount, 0);
  const ImportedAntenna antenna = importText("x.pat", sample("damaged-no-gain.PAT"));
  EXPECT_EQ(antenna.HorCount, 36);
  EXPECT_DOUBLE_EQ(antenna.Gain, 0);
}

TEST_F(Dapa, BadFilesHarmNothing) { expectBadFilesToHarmNothing("good.pat", text("H", "0 0\n10 1\n20 2\n")); }

}  // namespace

}  // namespace vantrelix::test
