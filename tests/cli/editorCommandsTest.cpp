// The acceptance test and the pattern correction, as a script would run them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/CliSuite.h"
#include "tables/Database.h"

namespace vantrelix::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

constexpr const char* kGood = "X00010000001";
constexpr const char* kOffAxis = "X00010000002";
constexpr const char* kTooHigh = "X00010000003";

class EditorCommands : public CliLibrary {
 protected:
  EditorCommands() {
    const std::vector<double> angles{0, 90};
    add("Good", angles, {10, 4}, angles, {10, 1});
    add("Off axis", angles, {7.05, 10}, angles, {7, 1});
    add("Too high", angles, {10, 11}, angles, {10, 1});
  }

  RecordsetPtr table(const std::string& name) const {
    return DBEngine::OpenDatabase(suite_.file("ANTENNAS"))->OpenRecordset("select * from " + name);
  }
  // The elevation gains of the antenna off the axis.
  std::vector<double> elevations() const {
    std::vector<double> gains;
    const RecordsetPtr rows = table("AVDX0001");
    for (; !rows->Eof(); rows->MoveNext()) {
      if (rows->value("ATYPE_ID").asText() == kOffAxis) gains.push_back(rows->value("VERT_FIELD").asNumber());
    }
    return gains;
  }
};

// --- check.

TEST_F(EditorCommands, CheckTestsEveryAntennaInDescriptionOrder) {
  const CliRun check = json({"check", "AMSX0001"});
  EXPECT_EQ(check.status, 0);
  const auto results = check.json()["results"];
  ASSERT_EQ(results.size(), 3U);
  EXPECT_EQ(results[0], nlohmann::json({{"id", kGood}, {"ok", true}, {"problems", ""}}));
  EXPECT_EQ(results[1]["id"], kOffAxis);
  EXPECT_EQ(results[1]["ok"], false);
  EXPECT_EQ(results[1]["problems"],
            "The maximum elevation gain in the elevation pattern is less than the Major Lobe Gain for this antenna (by "
            "at least 0.10)\r\nMaximum elevation gain: 7 on Elevation 0\r\nMajor Lobe Gain: 10"
            "\r\n\r\nThe elevation pattern must have at least one value equal to the Major Lobe Gain."
            "\r\n\r\nYou can change either the Major Lobe Gain or the gain value on one or more elevations in the "
            "pattern to correct this problem.");
  EXPECT_THAT(results[2]["problems"].get<std::string>(), HasSubstr("\r\nAzimuth 90 Gain: 11\r\n"));
  EXPECT_THAT(check.json()["messages"], IsEmpty());
}

TEST_F(EditorCommands, CheckTestsTheAntennasThatAreNamed) {
  const auto results = json({"check", "amsx0001.dbf", kTooHigh, kGood}).json()["results"];
  ASSERT_EQ(results.size(), 2U);
  EXPECT_EQ(results[0]["id"], kTooHigh);
  EXPECT_EQ(results[0]["ok"], false);
  EXPECT_EQ(results[1]["ok"], true);
}

TEST_F(EditorCommands, CheckOfManyNamesFindsWhatCheckOfOneFinds) {
  const auto one = json({"check", "AMSX0001", kTooHigh}).json()["results"][0];
  std::vector<std::string> many{"check", "AMSX0001"};
  many.insert(many.end(), 20, kTooHigh);
  const CliRun check = json(many);
  EXPECT_EQ(check.status, 0);
  ASSERT_EQ(check.json()["results"].size(), 20U);
  EXPECT_EQ(check.json()["results"][19], one);
  many.emplace_back("NOPE");
  EXPECT_EQ(json(many).status, 1);
}

TEST_F(EditorCommands, CheckTellsPeopleWhatItFound) {
  const CliRun check = run({"check", "AMSX0001"});
  EXPECT_THAT(check.out, StartsWith("X00010000001  ok\nX00010000002  refused\n    The maximum elevation gain in "));
  EXPECT_THAT(check.out, HasSubstr("(by at least 0.10)\n    Maximum elevation gain: 7 on Elevation 0\n"));
  EXPECT_THAT(check.out, testing::EndsWith("\n3 antennas checked, 2 refused\n"));
  EXPECT_THAT(check.out, Not(HasSubstr("\r")));
  EXPECT_EQ(check.err, "");
}

TEST_F(EditorCommands, CheckGoesOnBehindAnIDThatIsNotThere) {
  const CliRun check = json({"check", "AMSX0001", "O'Hara", kGood});
  EXPECT_EQ(check.status, 1);
  EXPECT_EQ(check.json()["results"][0]["ok"], false);
  EXPECT_THAT(check.json()["results"][0]["problems"].get<std::string>(), HasSubstr("was not found: \"O'Hara\""));
  EXPECT_THAT(check.json()["error"].get<std::string>(), HasSubstr("was not found: \"O'Hara\" in AMSX0001"));
  EXPECT_EQ(check.json()["results"][1]["ok"], true);
}

TEST_F(EditorCommands, CheckWritesNothing) {
  const RecordsetPtr row = table("AMSX0001");
  row->Edit();
  row->put("GAIN", Value());
  row->put("GAIN_UN", Value());
  row->Update();
  const std::string before = suite_.folder().read("ANTENNAS/AMSX0001.DBF");
  const auto results = json({"--assume", "yes", "check", "AMSX0001"}).json()["results"];
  EXPECT_THAT(results[0]["problems"].get<std::string>(), StartsWith("You must enter a Major Lobe Gain value"));
  EXPECT_EQ(results[1]["ok"], false);
  EXPECT_EQ(suite_.folder().read("ANTENNAS/AMSX0001.DBF"), before);
  EXPECT_EQ(suite_.log(), "");
}

TEST_F(EditorCommands, CheckRefusesARowWithoutAnID) {
  const RecordsetPtr row = table("AMSX0001");
  row->Edit();
  row->put("ATYPE_ID", Value());
  row->Update();
  const auto results = json({"check", "AMSX0001"}).json()["results"];
  EXPECT_EQ(results[0], nlohmann::json({{"id", ""}, {"ok", false}, {"problems", "The row has no antenna ID."}}));
}

TEST_F(EditorCommands, CheckPassesAllWhereTheInstallationSkipsTheTest) {
  run({"ini", "set", suite_.folder().machine("QVDEFAULTS.INI"), "HDAntenna", "SkipValid", "1"});
  const nlohmann::json document = json({"check", "AMSX0001"}).json();
  ASSERT_EQ(document["results"].size(), 3U);
  for (const auto& result : document["results"]) EXPECT_EQ(result["ok"], true);
}

TEST_F(EditorCommands, CheckWorksInTheFolderThatIsNamed) {
  for (const char* name : {"AMSX0001.DBF", "AHDX0001.DBF", "AVDX0001.DBF"}) {
    suite_.folder().write(std::string("site/") + name, suite_.folder().read(std::string("ANTENNAS/") + name));
    std::remove(suite_.folder().machine(std::string("ANTENNAS/") + name).c_str());
  }
  EXPECT_EQ(json({"check", suite_.folder().machine("site/AMSX0001")}).json()["results"].size(), 3U);
  EXPECT_FALSE(suite_.folder().exists("ANTENNAS/AMSX0001.DBF"));
}

TEST_F(EditorCommands, CheckAndCorrectMakeNoLibrary) {
  for (const char* table : {"AMSX0009.DBF", "AVDX0001.DBF"}) {
    std::remove(suite_.folder().machine(std::string("ANTENNAS/") + table).c_str());
    const std::string library = std::string("AMS") + std::string(table).substr(3, 5);
    for (const CliRun& refused : {json({"check", library}), json({"correct", library, kGood})}) {
      EXPECT_EQ(refused.status, 1);
      EXPECT_THAT(refused.json()["error"].get<std::string>(), HasSubstr(table));
    }
    EXPECT_FALSE(suite_.folder().exists(std::string("ANTENNAS/") + table));
  }
}

TEST_F(EditorCommands, CheckTellsWhyALibraryCannotBeOpened) {
  suite_.folder().write("ANTENNAS/AHDX0001.DBF", "this is no table");
  const CliRun check = json({"check", "AMSX0001"});
  EXPECT_EQ(check.status, 1);
  EXPECT_THAT(check.json()["error"].get<std::string>(), Not(IsEmpty()));
  EXPECT_EQ(suite_.folder().read("ANTENNAS/AHDX0001.DBF"), "this is no table");
}

TEST_F(EditorCommands, CheckShowsItsProgressOnATerminal) {
  const CliRun check = runCli({"--suite", suite_.folder().machine(), "check", "AMSX0001"}, {}, true);
  EXPECT_THAT(check.err, HasSubstr("Checking antenna 3 of 3"));
}

TEST_F(EditorCommands, EachHasAHelpTextWithAnExample) {
  EXPECT_THAT(run({"check", "--help"}).out, HasSubstr("Example: vantrelix check AMSX0001"));
  EXPECT_THAT(run({"correct", "--help"}).out, HasSubstr("Example: vantrelix --assume yes correct AMSX0001 X0001"));
  EXPECT_EQ(run({"check"}).status, 2);
  EXPECT_EQ(run({"correct", "AMSX0001"}).status, 2);
}

// --- correct.

TEST_F(EditorCommands, CorrectSavesWithAssumeYes) {
  const CliRun correct = json({"--assume", "yes", "correct", "AMSX0001", kOffAxis});
  EXPECT_EQ(correct.status, 0) << correct.err;
  EXPECT_EQ(correct.json()["result"], 1);
  EXPECT_THAT(correct.json()["log"].get<std::string>(),
              StartsWith("Off axis\r\nNon Major-Lobe El Pattern Cut corrected\r\n"));
  EXPECT_THAT(correct.json()["log"].get<std::string>(), HasSubstr("(AMSX0001)  : Ant ID: X00010000002\r\n"));
  EXPECT_EQ(correct.json()["messages"][0]["title"], "Save Corrected Pattern?");
  EXPECT_EQ(correct.json()["messages"][0]["answer"], "Yes");
  EXPECT_EQ(elevations(), (std::vector<double>{10, 4}));
  EXPECT_EQ(json({"check", "AMSX0001", kOffAxis}).json()["results"][0]["ok"], true);
}

TEST_F(EditorCommands, CorrectWritesNothingOtherwise) {
  for (const char* assume : {"no", "cancel"}) {
    const CliRun correct = run({"--assume", assume, "correct", "AMSX0001", kOffAxis});
    EXPECT_EQ(correct.status, 0);
    EXPECT_THAT(correct.out, HasSubstr("\nGain values adjusted by 3.00 dBd\nCorrected pattern WAS NOT SAVED"));
    EXPECT_EQ(elevations(), (std::vector<double>{7, 1}));
  }
}

TEST_F(EditorCommands, CorrectOfASoundPatternHasNothingToDo) {
  const CliRun correct = json({"correct", "AMSX0001", kGood});
  EXPECT_EQ(correct.status, 0);
  EXPECT_EQ(correct.json()["result"], 0);
  EXPECT_EQ(correct.json()["log"], "Good");
  EXPECT_THAT(run({"correct", "AMSX0001", kGood}).out, HasSubstr("Nothing to correct"));
}

TEST_F(EditorCommands, CorrectOfAnotherFaultFailsWithItsReason) {
  const CliRun correct = json({"correct", "AMSX0001", kTooHigh});
  EXPECT_EQ(correct.status, 1);
  EXPECT_EQ(correct.json()["result"], 4);
  EXPECT_EQ(correct.json()["error"], "Error on Az Pattern: Too high");
}

TEST_F(EditorCommands, CorrectNeedsAnAntennaThatIsThere) {
  for (const char* id : {"NOPE", " "}) {
    const CliRun correct = json({"correct", "AMSX0001", id});
    EXPECT_EQ(correct.status, 1);
    EXPECT_THAT(correct.json()["error"].get<std::string>(), StartsWith("The specified antenna was not found"));
  }
}

TEST_F(EditorCommands, CorrectWaitsForNoOtherEditor) {
  const RecordsetPtr exclusive =
      DBEngine::OpenDatabase(suite_.file("ANTENNAS"), true)->OpenRecordset("select * from AMSX0001");
  const CliRun correct = json({"--assume", "yes", "correct", "AMSX0001", kOffAxis});
  EXPECT_EQ(correct.status, 1);
  EXPECT_THAT(correct.json()["error"].get<std::string>(), Not(IsEmpty()));
}

}  // namespace
}  // namespace vantrelix::test
