// Copying and deleting antennas from the command line.
#include <cstdio>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/CliSuite.h"

namespace vantrelix::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr const char* kPanel = "X00010000001";
constexpr const char* kCopy = "X00010000003";

class AntennaCommands : public CliLibrary {
 protected:
  AntennaCommands() { add("Panel", {0, 90}, {10, 4}, {0, 90}, {10, 4}); }
  nlohmann::json antennas() const { return json({"antennas", "AMSX0001"}).json()["antennas"]; }
  nlohmann::json shown(const char* id) const { return json({"show", "AMSX0001", id}).json(); }
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
