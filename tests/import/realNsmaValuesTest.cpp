// The values of real NSMA files, by a second reader.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <sstream>

#include "ImportSuite.h"
#include "antenna/getAntArrayDB.h"
#include "platform/Platform.h"

namespace vantrelix::test {

namespace {

namespace fs = std::filesystem;

constexpr double kLowestValue = -50;
constexpr double kHalfDigit = 0.5e-4 + 1e-9;  // of the tables' four decimals

using Points = std::vector<std::pair<double, double>>;

// The keyword lines of a file of one antenna, and its cuts by their names.
struct AdfText {
  std::map<std::string, std::string> keywords;
  std::map<std::string, Points> cuts;
  double number(const std::string& keyword) const { return std::atof(keywords.at(keyword).c_str()); }
};

AdfText parseAdf(const std::string& bytes) {
  AdfText text;
  std::istringstream lines(bytes);
  std::string cut;
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    const std::size_t colon = line.find(":,");
    if (colon != std::string::npos) {
      const std::string value = line.substr(colon + 2);
      text.keywords[line.substr(0, colon)] = value;
      if (line.starts_with("PATCUT")) cut = value;
    } else if (!cut.empty()) {
      char* end = nullptr;
      const double angle = std::strtod(line.c_str(), &end);
      text.cuts[cut].emplace_back(angle, std::atof(end + 1));
    }
  }
  return text;
}

void expectPoints(Points wanted, double gain, const std::vector<double>& angles, const std::vector<double>& values) {
  ASSERT_EQ(angles.size(), wanted.size());
  Points found;
  for (std::size_t i = 0; i < angles.size(); ++i) found.emplace_back(angles[i], values[i]);
  for (auto& point : wanted) point.second = std::max(point.second + gain, kLowestValue);
  std::sort(wanted.begin(), wanted.end());
  std::sort(found.begin(), found.end());
  for (std::size_t i = 0; i < found.size(); ++i) {
    ASSERT_NEAR(found[i].first, wanted[i].first, kHalfDigit);
    ASSERT_NEAR(found[i].second, wanted[i].second, kHalfDigit) << wanted[i].first;
  }
}

using RealNsmaValues = ImportSuite;

TEST_F(RealNsmaValues, EveryPointOfEveryFileIsInTheLibrary) {
  const std::string folder = realData("nsma");
  if (folder.empty()) GTEST_SKIP() << "no real files here";
  int read = 0;
  for (const auto& entry : fs::directory_iterator(folder)) {
    if (entry.path().extension() != ".adf") continue;
    const AdfText text = parseAdf(readMachineFile(entry.path().string()));
    SCOPED_TRACE(entry.path().filename());
    suite.answers = {MsgAnswer::yes};  // to import a file of another revision
    const ImportResult result =
        run({platform::current().fromMachine(entry.path().string())}, false, {}, *findImportFormat("nsma"));
    ASSERT_EQ(result.added.size(), 1U);
    std::string units;
    std::string error;
    const AntRecord antenna =
        readAntenna(getAntennasPath(), std::string("AMS") + kMfg, result.added[0].id, units, true, error);
    EXPECT_EQ(error, "");
    EXPECT_NEAR(antenna.gain, text.number("MDGAIN"), kHalfDigit);
    EXPECT_EQ(text.keywords.at("GUNITS"), "DBI/DBR");
    EXPECT_EQ(antenna.gainUnits, "DBI");
    EXPECT_NEAR(antenna.lowFrequency, text.number("LOWFRQ"), 1e-6);
    EXPECT_NEAR(antenna.highFrequency, text.number("HGHFRQ"), 1e-6);
    ASSERT_EQ(text.cuts.size(), 2U);
    ASSERT_EQ(static_cast<double>(text.cuts.at("H").size()), text.number("NUPOIN"));
    expectPoints(text.cuts.at("H"), text.number("MDGAIN"), antenna.HorAz, antenna.HorField);
    expectPoints(text.cuts.at("V"), text.number("MDGAIN"), antenna.VerAngle, antenna.VerField);
    ++read;
  }
  EXPECT_GT(read, 1);
}

}  // namespace

}  // namespace vantrelix::test
