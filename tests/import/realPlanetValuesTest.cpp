// The values of real Planet files, by eye for some of them and by a second reader for all.
#include <cmath>
#include <filesystem>

#include "ImportSuite.h"
#include "PlanetText.h"
#include "antenna/getAntArrayDB.h"
#include "platform/Platform.h"

namespace vantrelix::test {

namespace {

namespace fs = std::filesystem;

constexpr double kLowestValue = -50;
constexpr double kHalfDigit = 0.5e-4 + 1e-9;  // of the tables' four decimals

class RealPlanetValues : public ImportSuite {
 protected:
  void SetUp() override {
    folder_ = realData("planet");
    if (folder_.empty()) GTEST_SKIP() << "no real files here";
  }

  AntRecord imported(const std::string& name) {
    const ImportResult result = run({platform::current().fromMachine((fs::path(folder_) / name).string())});
    if (result.added.size() != 1) {
      ADD_FAILURE() << name << " gave " << ::testing::PrintToString(result.failed);
      return {};
    }
    std::string units;
    std::string error;
    AntRecord antenna =
        readAntenna(getAntennasPath(), std::string("AMS") + kMfg, result.added[0].id, units, true, error);
    EXPECT_EQ(error, "");
    return antenna;
  }

  static double at(const std::vector<double>& angles, const std::vector<double>& values, double angle) {
    for (std::size_t i = 0; i < angles.size(); ++i) {
      if (std::abs(angles[i] - angle) < 1e-6) return values[i];
    }
    ADD_FAILURE() << "no point at " << angle;
    return 0;
  }
  static double azimuth(const AntRecord& antenna, double angle) { return at(antenna.HorAz, antenna.HorField, angle); }
  static double elevation(const AntRecord& antenna, double angle) {
    return at(antenna.VerAngle, antenna.VerField, angle);
  }

  std::string folder_;
};

TEST_F(RealPlanetValues, AFileWhoseCutsBothReachThePeakIsNotMoved) {
  const AntRecord antenna = imported("qrap_742192_1950_x_co.msi");
  EXPECT_EQ(antenna.description, "742192");
  EXPECT_DOUBLE_EQ(antenna.gain, 9.35);
  EXPECT_EQ(antenna.gainUnits, "dBd");
  EXPECT_DOUBLE_EQ(antenna.lowFrequency, 1950);
  EXPECT_DOUBLE_EQ(antenna.highFrequency, 1950);
  EXPECT_NEAR(azimuth(antenna, 0), 9.35, 1e-9);
  EXPECT_NEAR(azimuth(antenna, 3), 9.25, 1e-9);
  EXPECT_NEAR(azimuth(antenna, 7), 9.05, 1e-9);
  EXPECT_NEAR(elevation(antenna, -1), 9.25, 1e-9);
  EXPECT_NEAR(elevation(antenna, 1), 9.35, 1e-9);  // 359 in the file
}

TEST_F(RealPlanetValues, AFileOfUnevenAnglesKeepsThemAll) {
  const AntRecord antenna = imported("cloudrf_RI_763_MHz_18.5_dBi_1-stack_20degs_lobe.msi");
  EXPECT_EQ(antenna.description, "RI- 763 MHz");
  EXPECT_DOUBLE_EQ(antenna.gain, 18.5);
  EXPECT_EQ(antenna.gainUnits, "dBi");
  EXPECT_EQ(antenna.nHor, 360);
  EXPECT_EQ(antenna.nVer, 459);
  EXPECT_NEAR(azimuth(antenna, 6), 18.35, 1e-9);
  EXPECT_NEAR(elevation(antenna, 0), 18.28, 1e-9);
  EXPECT_NEAR(elevation(antenna, -0.2), 18.35, 1e-9);
  EXPECT_NEAR(elevation(antenna, 0.1), 18.23, 1e-9);  // 359.90 in the file
}

TEST_F(RealPlanetValues, UnitsBehindNumbersOfTheHeaderAreLeftOut) {
  const AntRecord antenna = imported("murzabaevb_f1245_ant.msi");
  EXPECT_EQ(antenna.description, "ITU-R F.1245-3");
  EXPECT_DOUBLE_EQ(antenna.gain, 48);
  EXPECT_DOUBLE_EQ(antenna.lowFrequency, 26875);
  EXPECT_NEAR(azimuth(antenna, 1), 29, 1e-9);
  EXPECT_NEAR(azimuth(antenna, 2), 21.47, 1e-9);
  EXPECT_NEAR(elevation(antenna, 2), 21.47, 1e-9);  // 358 in the file
}

TEST_F(RealPlanetValues, TheAzimuthCutAloneIsMovedToItsPeak) {
  const AntRecord fixed = imported("LTE-L_1960MHz_P1_strang.txt");
  EXPECT_EQ(fixed.description, "Galtronics_Left_LTE-L_1960.0MHz_P1.txt");
  EXPECT_DOUBLE_EQ(fixed.gain, 3.43);
  EXPECT_NEAR(azimuth(fixed, 0), 2.02, 1e-9);  // 3.43 - 2.968 + 1.558
  EXPECT_NEAR(elevation(fixed, 0), 0.462, 1e-9);
  EXPECT_NEAR(elevation(fixed, -1), 0.557, 1e-9);
  const AntRecord anonymous = imported("mrdvt92_anonymous.msi");
  EXPECT_EQ(anonymous.description, "Anonymous-12345");
  EXPECT_NEAR(azimuth(anonymous, 0), 7.47, 1e-9);  // 7.69 - 0.27 + 0.05
  EXPECT_NEAR(elevation(anonymous, 0), 7.52, 1e-9);
}

TEST_F(RealPlanetValues, ALevelBelowTheLowestValidOneIsRaisedToIt) {
  const AntRecord antenna = imported("eftx_refer.prn");
  EXPECT_DOUBLE_EQ(antenna.lowFrequency, 180);
  EXPECT_NEAR(elevation(antenna, 0), -39.4036, 1e-9);
  EXPECT_NEAR(elevation(antenna, -2), -31.1164, 1e-9);
  EXPECT_DOUBLE_EQ(*std::min_element(antenna.VerField.begin(), antenna.VerField.end()), kLowestValue);
}

// The library's points against the file's, each file's angle turned as the library holds it.
void expectPoints(const PlanetText::Points& written, double level, double (*turned)(double),
                  const std::vector<double>& angles, const std::vector<double>& values, const std::string& what) {
  std::vector<std::pair<double, double>> wanted, found;
  for (const auto& [angle, loss] : written) {
    wanted.emplace_back(turned(angle), std::max(level - std::abs(loss), kLowestValue));
  }
  for (std::size_t i = 0; i < angles.size(); ++i) found.emplace_back(angles[i], values[i]);
  std::sort(wanted.begin(), wanted.end());
  std::sort(found.begin(), found.end());
  ASSERT_EQ(found.size(), wanted.size()) << what;
  for (std::size_t i = 0; i < found.size(); ++i) {
    ASSERT_NEAR(found[i].first, wanted[i].first, kHalfDigit) << what;
    ASSERT_NEAR(found[i].second, wanted[i].second, kHalfDigit) << what << " at " << wanted[i].first;
  }
}

TEST_F(RealPlanetValues, EveryPointOfEveryFileIsInTheLibrary) {
  int read = 0;
  for (const auto& entry : fs::directory_iterator(folder_)) {
    const std::string name = entry.path().filename().string();
    const PlanetText text = parsePlanet(readMachineFile(entry.path().string()));
    if (!text.whole) continue;
    ++read;
    const AntRecord antenna = imported(name);
    EXPECT_EQ(antenna.description, text.name) << name;
    EXPECT_NEAR(antenna.gain, text.gain, kHalfDigit) << name;
    EXPECT_EQ(antenna.gainUnits, text.units) << name;
    EXPECT_NEAR(antenna.lowFrequency, text.frequency, 1e-6) << name;
    expectPoints(
        text.horizontal, text.gain + text.leastLoss(), [](double angle) { return angle; }, antenna.HorAz,
        antenna.HorField, name + " azimuth");
    expectPoints(
        text.vertical, text.gain, [](double angle) { return angle > 180 ? 360 - angle : 0 - angle; }, antenna.VerAngle,
        antenna.VerField, name + " elevation");
  }
  EXPECT_GT(read, 20);
}

}  // namespace

}  // namespace vantrelix::test
