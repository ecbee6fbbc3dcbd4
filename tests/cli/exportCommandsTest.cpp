// Export and tabulation, as a script would run them, and the way back through the importer.
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>

#include "cli/CliSuite.h"

namespace vantrelix::test {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;
using testing::HasSubstr;

constexpr const char* kPanel = "X00010000001";

class ExportCommands : public CliLibrary {
 protected:
  ExportCommands() { add("Panel", {0, 90}, {10, 4.5}, {-5, 0}, {1, 10}); }

  CliRun run(const std::vector<std::string>& arguments) const { return json(arguments); }
  std::string machine(const std::string& name) const { return suite_.folder().machine() + "/" + name; }
};

TEST_F(ExportCommands, ExportWritesTheAntennaFile) {
  const CliRun done = run({"export", "AMSX0001", kPanel, machine("panel.ant")});
  ASSERT_EQ(done.status, 0) << done.err;
  EXPECT_EQ(done.json()["file"], machine("panel.ant"));
  EXPECT_EQ(suite_.folder().read("panel.ant"),
            "NAME Panel\r\nFrequency 824\r\nGAIN 10 dBd\r\nHORIZONTAL 2\r\n0.00 0.00\r\n90.00 5.50\r\nVERTICAL 2\r\n"
            "5.00 9.00\r\n0.00 0.00\r\n");
}

TEST_F(ExportCommands, ExportIntoAFolderThatIsNotThereSaysWhy) {
  const CliRun done = run({"export", "AMSX0001", kPanel, machine("no/such/panel.ant")});
  EXPECT_EQ(done.status, 1);
  EXPECT_THAT(done.json()["error"].get<std::string>(), HasSubstr("panel.ant"));
}

TEST_F(ExportCommands, AnAntennaThatIsNotThereIsNamed) {
  for (const char* command : {"export", "tabulate"}) {
    const CliRun done =
        run({command, "AMSX0001", "NONE", command == std::string("export") ? machine("x.ant") : "azimuth"});
    EXPECT_EQ(done.status, 1);
    EXPECT_THAT(done.json()["error"].get<std::string>(), HasSubstr("NONE"));
  }
  EXPECT_FALSE(suite_.folder().exists("x.ant"));
}

TEST_F(ExportCommands, TabulateGivesTheTabulationOfEitherCut) {
  EXPECT_EQ(run({"tabulate", "AMSX0001", kPanel, "azimuth"}).json()["text"],
            "Panel\r\n10.00 dBd\r\n  AZIM   HOR FIELD\r\n 0.000      10.000\r\n90.000       4.500\r\n");
  EXPECT_EQ(run({"tabulate", "AMSX0001", kPanel, "elevation"}).json()["text"],
            "Panel\r\n10.00 dBd\r\n ANGLE   VER FIELD\r\n-5.000       1.000\r\n 0.000      10.000\r\n");
}

TEST_F(ExportCommands, TabulateKnowsNoThirdCut) {
  EXPECT_EQ(run({"tabulate", "AMSX0001", kPanel, "sideways"}).status, 2);
}

// --- The way back.

using Cut = std::map<double, double>;

Cut cutOf(const Json& points) {
  Cut cut;
  for (const Json& point : points) cut[std::round(point[0].get<double>() * 100)] = point[1];
  return cut;
}

double peakOf(const Cut& cut) {
  double peak = -1e9;
  for (const auto& [angle, value] : cut) peak = std::max(peak, value);
  return peak;
}

// The file holds two decimals of angle and loss; the importer raises the azimuth cut to the gain.
void expectSameCut(const Cut& before, const Cut& after, double raised, const std::string& what) {
  ASSERT_EQ(before.size(), after.size()) << what;
  for (const auto& [angle, value] : before) {
    const auto found = after.find(angle);
    ASSERT_NE(found, after.end()) << what << " at " << angle / 100;
    EXPECT_NEAR(found->second, value + raised, 0.0051) << what << " at " << angle / 100;
  }
}

TEST_F(ExportCommands, EveryRealAntennaComesBackThroughTheGenericImporter) {
  if (realData("planet").empty()) GTEST_SKIP() << "no real files here";
  int antennas = 0;
  for (const auto& entry : fs::directory_iterator(realData("planet"))) {
    const CliRun import = run({"import", "generic", "AMSR0001", entry.path().string()});
    if (import.status != 0 || import.json()["antennas"].empty()) continue;
    const std::string id = import.json()["antennas"][0]["id"];
    const Json before = run({"show", "AMSR0001", id}).json();
    ASSERT_EQ(run({"export", "AMSR0001", id, machine("out.ant")}).status, 0) << entry.path();
    const CliRun again = run({"import", "generic", "AMSR0001", machine("out.ant")});
    ASSERT_EQ(again.status, 0) << entry.path() << again.err;
    const Json after = run({"show", "AMSR0001", again.json()["antennas"][0]["id"]}).json();
    for (const char* member : {"description", "gain", "gain_units", "f_low"}) {
      EXPECT_EQ(before[member], after[member]) << entry.path() << ' ' << member;
    }
    const double gain = before["gain"];
    const Cut azimuth = cutOf(before["horizontal"]);
    expectSameCut(azimuth, cutOf(after["horizontal"]), gain - peakOf(azimuth), entry.path().filename().string());
    expectSameCut(cutOf(before["vertical"]), cutOf(after["vertical"]), 0, entry.path().filename().string());
    ++antennas;
  }
  EXPECT_GT(antennas, 10);
}

}  // namespace
}  // namespace vantrelix::test
