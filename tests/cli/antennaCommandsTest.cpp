// Copying and deleting antennas from the command line.
#include <cstdio>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CliRun.h"
#include "antenna/hdWrtAntDBF.h"
#include "antenna/makeAntFiles.h"
#include "support/TempSuite.h"

namespace vantrelix::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr const char* kPanel = "X00010000001";
constexpr const char* kCopy = "X00010000003";

class AntennaCommands : public testing::Test {
 protected:
  AntennaCommands() {
    EXPECT_EQ(run({"suite", "init", suite_.folder().machine()}).status, 0);
    EXPECT_EQ(MakeAntFiles("X0001"), "");
    const std::vector<double> angles{0, 90}, gains{10, 4};
    EXPECT_EQ(HDwrtAntDBF("X0001", "Panel", 10, "dBd", 2, angles, gains, 2, angles, gains, 824, 896), "");
  }
  CliRun run(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {"--suite", suite_.folder().machine()});
    return runCli(arguments);
  }
  CliRun json(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), "--json");
    return run(std::move(arguments));
  }
  nlohmann::json antennas() const { return json({"antennas", "AMSX0001"}).json()["antennas"]; }
  nlohmann::json shown(const char* id) const { return json({"show", "AMSX0001", id}).json(); }

  TempSuite suite_;
};

TEST_F(AntennaCommands, CopyGivesTheIDOfTheCopy) {
  const CliRun copy = json({"copy", "AMSX0001", kPanel});
  EXPECT_EQ(copy.status, 0) << copy.err;
  EXPECT_EQ(copy.json()["id"], kCopy);
  const auto made = shown(kCopy);
  EXPECT_EQ(made["description"], "Copy of Panel");
  EXPECT_EQ(made["horizontal"], shown(kPanel)["horizontal"]);
  EXPECT_EQ(made["vertical"], shown(kPanel)["vertical"]);
  EXPECT_EQ(made["horizontal"].size(), 2U);
}

TEST_F(AntennaCommands, CopyTellsPeopleWhatItMade) {
  const CliRun copy = run({"copy", "AMSX0001", kPanel});
  EXPECT_EQ(copy.out, "X00010000003  Copy of Panel\n");
  EXPECT_EQ(copy.err, "");
}

TEST_F(AntennaCommands, DeleteDeletesWithAssumeYes) {
  run({"copy", "AMSX0001", kPanel});
  const CliRun gone = json({"--assume", "yes", "delete", "AMSX0001", kPanel});
  EXPECT_EQ(gone.status, 0) << gone.err;
  EXPECT_EQ(gone.json()["id"], kPanel);
  EXPECT_EQ(gone.json()["messages"][0]["title"], "Delete Antenna?");
  EXPECT_EQ(gone.json()["messages"][0]["text"], "Do you want to DELETE the antenna?\r\n\r\nPanel");
  ASSERT_EQ(antennas().size(), 1U);
  EXPECT_EQ(antennas()[0]["id"], kCopy);
  EXPECT_EQ(shown(kCopy)["horizontal"].size(), 2U);
}

TEST_F(AntennaCommands, DeleteIsRefusedOtherwise) {
  for (const char* assume : {"no", "cancel"}) {
    const CliRun refused = json({"--assume", assume, "delete", "AMSX0001", kPanel});
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.json()["error"].get<std::string>(), StartsWith("The antenna was not deleted"));
    EXPECT_FALSE(refused.json().contains("id"));
  }
  EXPECT_EQ(antennas().size(), 1U);
  EXPECT_EQ(shown(kPanel)["vertical"].size(), 2U);
}

TEST_F(AntennaCommands, BothNeedAnAntennaThatIsThere) {
  for (const char* command : {"copy", "delete"}) {
    for (const char* id : {"NOPE", " ", "O'Hara"}) {
      const CliRun refused = json({"--assume", "yes", command, "AMSX0001", id});
      EXPECT_EQ(refused.status, 1);
      EXPECT_THAT(refused.json()["error"].get<std::string>(), StartsWith("The specified antenna was not found"));
    }
  }
  EXPECT_EQ(antennas().size(), 1U);
}

TEST_F(AntennaCommands, BothMakeNoLibrary) {
  for (const char* command : {"copy", "delete"}) {
    const CliRun refused = json({"--assume", "yes", command, "AMSX0009", kPanel});
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.json()["error"].get<std::string>(), HasSubstr("AMSX0009.DBF was not found"));
  }
  EXPECT_FALSE(suite_.folder().exists("ANTENNAS/AMSX0009.DBF"));
}

TEST_F(AntennaCommands, AFailureIsTold) {
  suite_.folder().write("ANTENNAS/AVDX0001.DBF", "this is no table");
  for (const char* command : {"copy", "delete"}) {
    const CliRun failed = json({"--assume", "yes", command, "AMSX0001", kPanel});
    EXPECT_EQ(failed.status, 1);
    EXPECT_THAT(failed.json()["error"].get<std::string>(), testing::Not(IsEmpty()));
  }
}

TEST_F(AntennaCommands, EachHasAHelpTextWithAnExample) {
  EXPECT_THAT(run({"copy", "--help"}).out, HasSubstr("Example: vantrelix copy AMSX0001 X00010000001"));
  EXPECT_THAT(run({"delete", "--help"}).out, HasSubstr("Example: vantrelix --assume yes delete AMSX0001 X00010000001"));
  EXPECT_EQ(run({"copy", "AMSX0001"}).status, 2);
  EXPECT_EQ(run({"delete"}).status, 2);
}

}  // namespace
}  // namespace vantrelix::test
