// Real pattern files through the command line: import, then show.
#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/CliRun.h"
#include "support/TempSuite.h"

namespace vantrelix::test {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using testing::HasSubstr;

class ImportRealFiles : public testing::Test {
 protected:
  void SetUp() override {
    if (realData("planet").empty()) GTEST_SKIP() << "no real files here";
    run({"suite", "init", suite_.folder().machine()});
  }

  CliRun run(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {"--suite", suite_.folder().machine(), "--json"});
    return runCli(arguments);
  }
  static std::vector<std::string> files(const std::string& folder, const std::string& extension) {
    std::vector<std::string> result;
    for (const auto& entry : fs::directory_iterator(realData(folder))) {
      if (entry.path().extension() == extension) result.push_back(entry.path().string());
    }
    std::sort(result.begin(), result.end());
    return result;
  }
  CliRun import(const std::string& format, std::vector<std::string> paths, const std::string& assume = "no") const {
    paths.insert(paths.begin(), {"--assume", assume, "import", format, "AMSR0001"});
    return run(paths);
  }
  json shown(const json& antenna) const { return run({"show", "AMSR0001", antenna["id"]}).json(); }
  static double at(const json& cut, double angle) {
    for (const json& point : cut) {
      if (point[0] == angle) return point[1];
    }
    ADD_FAILURE() << "no point at " << angle;
    return 0;
  }

  TempSuite suite_;
};

TEST_F(ImportRealFiles, ShowGivesThePointsOfAPlanetFile) {
  const CliRun import =
      this->import("generic", {(fs::path(realData("planet")) / "qrap_742192_1950_x_co.msi").string()});
  ASSERT_EQ(import.status, 0) << import.err;
  const json antenna = shown(import.json()["antennas"][0]);
  EXPECT_EQ(antenna["description"], "742192");
  EXPECT_EQ(antenna["gain"], 9.35);
  EXPECT_EQ(antenna["gain_units"], "dBd");
  EXPECT_EQ(antenna["f_low"], 1950);
  ASSERT_EQ(antenna["horizontal"].size(), 360U);
  ASSERT_EQ(antenna["vertical"].size(), 360U);
  EXPECT_DOUBLE_EQ(at(antenna["horizontal"], 3), 9.25);
  EXPECT_DOUBLE_EQ(at(antenna["vertical"], -1), 9.25);
  EXPECT_DOUBLE_EQ(at(antenna["vertical"], 1), 9.35);
}

TEST_F(ImportRealFiles, EveryPlanetFileOfTheUsualNameIsShown) {
  std::size_t withCuts = 0;
  for (const std::string& path : files("planet", ".msi")) {
    const std::string text = "\n" + readMachineFile(path);
    const bool whole = text.find("\nHORIZONTAL") != std::string::npos && text.find("\nVERTICAL") != std::string::npos;
    const CliRun import = this->import("generic", {path});
    ASSERT_EQ(import.status, whole ? 0 : 1) << path;
    if (!whole) {
      EXPECT_THAT(import.err, HasSubstr(path + ": Error 62: "));
      continue;
    }
    ++withCuts;
    const json antenna = shown(import.json()["antennas"][0]);
    EXPECT_EQ(antenna["error"], "") << path;
    EXPECT_EQ(antenna["horizontal"].size(), 360U) << path;
    EXPECT_GE(antenna["vertical"].size(), 360U) << path;
  }
  EXPECT_GT(withCuts, 10U);
}

TEST_F(ImportRealFiles, NsmaFilesOfAnotherRevisionAreReadWhereTheQuestionIsAnsweredYes) {
  const std::vector<std::string> paths = files("nsma", ".adf");
  ASSERT_EQ(paths.size(), 2U);
  const CliRun refused = import("nsma", paths);
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.json()["errors"], 2);
  const CliRun import = this->import("nsma", paths, "yes");
  ASSERT_EQ(import.status, 0) << import.err;
  ASSERT_EQ(import.json()["antennas"].size(), 2U);
  const json lower = shown(import.json()["antennas"][0]);
  EXPECT_EQ(lower["description"], "Tongyu Communication Inc.  TQJ-8010-9011DT0_0791_P45_00T  Vp");
  EXPECT_EQ(lower["gain"], 10);
  EXPECT_EQ(lower["f_low"], 691);
  EXPECT_EQ(lower["f_high"], 891);
  EXPECT_EQ(lower["horizontal"].size(), 360U);
  EXPECT_DOUBLE_EQ(at(lower["horizontal"], -179), 18.31);  // 8.31 above the gain, as the file has it
  EXPECT_DOUBLE_EQ(at(lower["horizontal"], -170), 18.64);
  const json upper = shown(import.json()["antennas"][1]);
  EXPECT_EQ(upper["f_low"], 762);
  EXPECT_DOUBLE_EQ(at(upper["horizontal"], -174), 18.5);
}

TEST_F(ImportRealFiles, APageAboutTheNsmaFormatAddsNoAntenna) {
  const CliRun import = this->import("nsma-fcc", files("nsma_fcc", ".txt"));
  EXPECT_TRUE(import.json()["antennas"].empty());
  EXPECT_TRUE(run({"antennas", "AMSR0001"}).json()["antennas"].empty());
}

}  // namespace
}  // namespace vantrelix::test
