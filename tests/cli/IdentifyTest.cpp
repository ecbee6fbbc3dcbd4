// Which formats take a file, as a script would ask.
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/CliRun.h"
#include "support/TempSuite.h"

namespace vantrelix::test {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

namespace fs = std::filesystem;

constexpr const char* kPlanet =
    "NAME Yagi 900\nFREQUENCY 900\nGAIN 12.5 dBd\nHORIZONTAL 4\n0 0.0\n90 3.0\n180 20.0\n270 3.0\nVERTICAL 3\n0 "
    "0.0\n10 "
    "6.0\n350 6.0\n";

class Identify : public testing::Test {
 protected:
  Identify() {
    EXPECT_EQ(runCli({"--suite", suite.folder().machine(), "suite", "init", suite.folder().machine()}).status, 0);
  }

  CliRun run(const std::vector<std::string>& paths, bool json = true) const {
    std::vector<std::string> arguments = {"--suite", suite.folder().machine()};
    if (json) arguments.emplace_back("--json");
    arguments.emplace_back("identify");
    arguments.insert(arguments.end(), paths.begin(), paths.end());
    return runCli(arguments);
  }
  std::string write(const std::string& name, const std::string& content) const {
    files.write(name, content);
    return files.machine(name);
  }
  static std::vector<std::string> formats(const nlohmann::json& file) {
    std::vector<std::string> names;
    for (const auto& format : file["formats"]) names.push_back(format["format"]);
    return names;
  }
  static nlohmann::json found(const nlohmann::json& file, const std::string& name) {
    for (const auto& format : file["formats"]) {
      if (format["format"] == name) return format["antennas"];
    }
    return {};
  }
  // Every file of the installation with its size and time.
  std::vector<std::string> installation() const {
    std::vector<std::string> list;
    for (const auto& entry : fs::recursive_directory_iterator(suite.folder().machine())) {
      std::string line = entry.path().string();
      if (entry.is_regular_file()) {
        line += " " + std::to_string(entry.file_size()) + " " +
                std::to_string(entry.last_write_time().time_since_epoch().count());
      }
      list.push_back(line);
    }
    std::sort(list.begin(), list.end());
    return list;
  }

  TempSuite suite;
  TempFolder files;
};

TEST_F(Identify, NamesTheFormatAndWhatItMakesOfTheFile) {
  const std::string path = write("unknown.txt", kPlanet);
  const CliRun answer = run({path});
  ASSERT_EQ(answer.status, 0) << answer.err;
  const nlohmann::json file = answer.json()["files"][0];
  EXPECT_EQ(file["file"], path);
  EXPECT_THAT(formats(file), Contains("generic"));
  EXPECT_EQ(found(file, "generic"), nlohmann::json::parse(R"([{"name": "Yagi 900", "gain": 12.5, "gain_units": "dBd",
      "horizontal_points": 4, "vertical_points": 3}])"));
}

TEST_F(Identify, AFormatThatRefusesTheFileIsNotNamed) {
  const CliRun answer = run({write("cut.msi", "NAME A\nGAIN 15dBd\nHORIZONTAL 1\n0 0\n"), write("whole.msi", kPlanet)});
  const nlohmann::json document = answer.json();
  ASSERT_EQ(document["files"].size(), 2U);
  EXPECT_THAT(formats(document["files"][0]), Not(Contains("generic")));
  EXPECT_THAT(formats(document["files"][1]), Contains("generic"));
}

TEST_F(Identify, AFormatThatFindsNoPointIsNotNamed) {
  const CliRun answer = run({write("none.msi", "NAME A\nGAIN 1 dBd\nHORIZONTAL 0\nVERTICAL 0\n")});
  EXPECT_THAT(formats(answer.json()["files"][0]), Not(Contains("generic")));
}

TEST_F(Identify, AFileThatNoFormatTakesEndsWithOneAndIsNamed) {
  const std::string picture = write("picture.png", std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16));
  const CliRun answer = run({write("whole.msi", kPlanet), picture});
  EXPECT_EQ(answer.status, 1);
  EXPECT_TRUE(answer.json()["files"][1]["formats"].empty());
  EXPECT_EQ(answer.json()["error"], picture + ": No import format makes an antenna of this file");
}

TEST_F(Identify, AFileThatCannotBeReadDoesNotStopTheOthers) {
  fs::create_directory(files.machine("folder.msi"));
  const CliRun answer = run({files.machine("gone.msi"), files.machine("folder.msi"), write("whole.msi", kPlanet)});
  EXPECT_EQ(answer.status, 1);
  EXPECT_THAT(answer.err, HasSubstr(files.machine("gone.msi") + ": Error 53: "));
  EXPECT_THAT(answer.err, HasSubstr(files.machine("folder.msi") + ": Error "));
  ASSERT_EQ(answer.json()["files"].size(), 3U);
  EXPECT_TRUE(answer.json()["files"][0]["formats"].empty());
  EXPECT_THAT(formats(answer.json()["files"][2]), Contains("generic"));
}

TEST_F(Identify, ShowsNoMessageOfAReaderAndWritesNothing) {
  const std::string foreign =
      write("foreign.adf", "REVNUM:,NSMA WG99.99.999\nANTMAN:,Maker\nMODNUM:,Model\nENDFIL:,EOF\n");
  const std::vector<std::string> before = installation();
  const CliRun answer = run({foreign, write("whole.msi", kPlanet), write("empty.msi", "")});
  EXPECT_TRUE(answer.json()["messages"].empty()) << answer.out;
  EXPECT_EQ(installation(), before);
  EXPECT_FALSE(suite.folder().exists("QVTECSUP.TXT"));
}

TEST_F(Identify, NamesBothAntennasOfOneFile) {
  const std::string sample = std::string(VANTRELIX_SOURCE_DIR) + "/tests/data/nsma/dish.adf";
  const CliRun answer = run({sample});
  const nlohmann::json antennas = found(answer.json()["files"][0], "nsma");
  ASSERT_EQ(antennas.size(), 2U) << answer.out;
  EXPECT_THAT(antennas[0]["name"].get<std::string>(), testing::EndsWith(" Hpol"));
  EXPECT_THAT(antennas[1]["name"].get<std::string>(), testing::EndsWith(" Vpol"));
}

TEST_F(Identify, TextIsATableForEachFile) {
  const std::string path = write("unknown.txt", kPlanet);
  const CliRun answer = run({path, path}, false);
  EXPECT_EQ(answer.status, 0) << answer.err;
  EXPECT_THAT(answer.out, testing::StartsWith(path + "\nFormat "));
  EXPECT_THAT(answer.out, HasSubstr("\n\n" + path + "\nFormat "));
  EXPECT_THAT(answer.out, testing::ContainsRegex("\ngeneric +Yagi 900 +12\\.50 +dBd +4 +3\n"));
}

TEST_F(Identify, NeedsAFile) {
  EXPECT_EQ(run({}).status, 2);
  EXPECT_THAT(runCli({"identify", "--help"}).out, HasSubstr("Example: vantrelix identify"));
}

}  // namespace
}  // namespace vantrelix::test
