// What holds for Decibel files, of which TX RX files are a kind.
#pragma once

#include "FormatImport.h"

namespace vantrelix::test {

class DecibelRules : public FormatImport {
 protected:
  explicit DecibelRules(const std::string& format) : FormatImport(format) {}

  // A header of the seven lines around the plane, with a number in the line that is not looked at, and the points.
  static std::string text(const std::string& plane, const std::string& points = "0 0\n90 3\n",
                          const std::string& model = "AB-12", const std::string& frequency = "450") {
    return model + "\n" + frequency + "\n3\n10\nOmni\n Dipole \n" + plane + "\n" + points;
  }

  void expectHeaderByPlaces() {
    const ImportedAntenna antenna = importText("A1.DAT", text(" h "));
    EXPECT_EQ(antenna.AntName, "AB-12:Omni:Dipole");
    EXPECT_DOUBLE_EQ(antenna.Freq, 450);
    EXPECT_DOUBLE_EQ(antenna.FreqLow, 450);
    EXPECT_DOUBLE_EQ(antenna.FreqHigh, 450);
    EXPECT_DOUBLE_EQ(antenna.Gain, 10);
    EXPECT_EQ(antenna.GainUnits, "dBd");
    EXPECT_EQ(antenna.PolLetter, "H");
    EXPECT_THAT(antenna.HorValue, ::testing::ElementsAre(10, 7));
  }

  void expectDerivedBand() {
    const ImportedAntenna antenna = importText("A1.DAT", text("H", "0 0\n", "A", "0"));
    EXPECT_DOUBLE_EQ(antenna.FreqLow, 0.00001);
    EXPECT_DOUBLE_EQ(antenna.FreqHigh, 99999);
    EXPECT_DOUBLE_EQ(importText("A1.DAT", text("H", "0 0\n", "A", "0.5 MHz")).FreqHigh, 0.5);
  }

  void expectOtherPlanesToFail() {
    for (const char* plane : {"E", "Horizontal", "Vertical", "HV", "", "\tH"}) {
      EXPECT_THAT(failureOf("A1.DAT", text(plane)), ::testing::HasSubstr("(line 7)")) << plane;
    }
  }

  void expectCuts() {
    const ImportedAntenna azimuth = importText("A1.DAT", text("H", "-10 1\n360 80\n370 -3\n"));
    EXPECT_THAT(azimuth.HorAngle, ::testing::ElementsAre(350, 360, 10));
    EXPECT_DOUBLE_EQ(azimuth.MinHor, -70);
    const ImportedAntenna elevation = importText("A1.DAT", text("V", "10 1\n190 -80\n-90 3\n180 4\n"));
    EXPECT_THAT(elevation.VerAngle, ::testing::ElementsAre(-10, 170, 90, -180));
    EXPECT_DOUBLE_EQ(elevation.MinVer, -70);
    EXPECT_DOUBLE_EQ(importText("A1.DAT", text("V", "")).MinVer, 88888);
    EXPECT_DOUBLE_EQ(importText("A1.DAT", text("H", "")).MinHor, 888888);
  }

  void expectPartnerByTheLastLetterOfThePath() {
    write("HVH1.DAT", text("H"));
    write("HVV1.DAT", text("V", "10 1\n", "last"));
    write("VVH1.DAT", text("V", "10 1\n", "first"));
    EXPECT_EQ(only({"HVH1.DAT"}).AntName, "last:Omni:Dipole");
    EXPECT_EQ(only({"HVV1.DAT"}).AntName, "AB-12:Omni:Dipole");
    EXPECT_EQ(antennas.at(0).HorCount, 2);
    EXPECT_EQ(antennas.at(0).VerCount, 1);
  }

  void expectSamplePairInEitherOrder(const std::string& horizontal, const std::string& vertical) {
    copied(horizontal);
    copied(vertical);
    for (const auto& names : {std::vector<std::string>{horizontal, vertical}, {vertical, horizontal}}) {
      const ImportedAntenna antenna = only(names);
      EXPECT_EQ(antenna.AntName, "LK-4:Omni:Dipole array");
      EXPECT_EQ(antenna.HorCount, 36);
      EXPECT_EQ(antenna.VerCount, 36);
      EXPECT_DOUBLE_EQ(antenna.Gain, 8.5);
    }
  }
};

}  // namespace vantrelix::test
