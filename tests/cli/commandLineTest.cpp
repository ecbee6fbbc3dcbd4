#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/CliRun.h"
#include "support/TempSuite.h"

namespace vantrelix::test {
namespace {

using testing::HasSubstr;

TEST(CommandLine, NothingAskedIsAWrongCommandLine) {
  EXPECT_EQ(runCli({}).status, 2);
  const CliRun half = runCli({"table"});
  EXPECT_EQ(half.status, 2);
  EXPECT_THAT(half.err, HasSubstr("dump"));
}

TEST(CommandLine, AnUnknownCommandIsAWrongCommandLine) {
  const CliRun run = runCli({"brew"});
  EXPECT_EQ(run.status, 2);
  EXPECT_THAT(run.err, HasSubstr("brew"));
  EXPECT_THAT(runCli({"table", "brew"}).err, HasSubstr("brew"));
}

TEST(CommandLine, HelpListsEveryCommandAndEachHasAnExample) {
  const CliRun help = runCli({"--help"});
  EXPECT_EQ(help.status, 0);
  for (const char* command : {"suite", "libraries", "antennas", "show", "import", "plot", "calc", "table", "ini"}) {
    EXPECT_THAT(help.out, HasSubstr(command));
  }
  for (const std::vector<std::string>& command : std::vector<std::vector<std::string>>{{"suite", "init"},
                                                                                       {"libraries"},
                                                                                       {"antennas"},
                                                                                       {"show"},
                                                                                       {"import"},
                                                                                       {"plot"},
                                                                                       {"calc", "gain"},
                                                                                       {"calc", "pattern"},
                                                                                       {"calc", "length"},
                                                                                       {"calc", "frequency"},
                                                                                       {"calc", "parabola"},
                                                                                       {"table", "dump"},
                                                                                       {"table", "query"},
                                                                                       {"table", "create"},
                                                                                       {"table", "repair"},
                                                                                       {"ini", "get"},
                                                                                       {"ini", "set"}}) {
    std::vector<std::string> arguments = command;
    arguments.emplace_back("--help");
    EXPECT_THAT(runCli(arguments).out, HasSubstr("Example: vantrelix " + command[0]));
  }
}

TEST(CommandLine, AWrongAnswerPolicyIsAWrongCommandLine) {
  EXPECT_EQ(runCli({"--assume", "maybe", "libraries"}).status, 2);
}

TEST(CommandLine, AMissingInstallationFolderIsNamedWithTheRemedy) {
  const TempFolder folder;
  const CliRun run = runCli({"--suite", folder.machine("nowhere"), "libraries"});
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr(folder.machine("nowhere")));
  EXPECT_THAT(run.err, HasSubstr("suite init"));
}

TEST(CommandLine, EveryCommandThatNeedsAnInstallationSaysSo) {
  const TempFolder folder;
  const std::string library = folder.machine("AMSX0001");
  for (const std::vector<std::string>& command :
       std::vector<std::vector<std::string>>{{"antennas", "AMSX0001"},
                                             {"show", "AMSX0001", "X"},
                                             {"plot", "AMSX0001", "X", folder.machine("a.svg")},
                                             {"import", "generic", library, folder.machine("a.msi")},
                                             {"table", "create", library + ".DBF", "AMSPDBASE"}}) {
    std::vector<std::string> arguments{"--suite", folder.machine("nowhere")};
    arguments.insert(arguments.end(), command.begin(), command.end());
    const CliRun run = runCli(arguments);
    EXPECT_EQ(run.status, 1) << command[0];
    EXPECT_THAT(run.err, HasSubstr("\"vantrelix suite init DIR\" makes one")) << command[0];
  }
}

TEST(CommandLine, AFailureWithJsonIsAMemberOfTheDocument) {
  const TempFolder folder;
  const CliRun run = runCli({"--json", "table", "dump", folder.machine("none.dbf")});
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.json()["error"].get<std::string>(), HasSubstr(folder.machine("none.dbf")));
  EXPECT_TRUE(run.json()["messages"].is_array());
}

TEST(CommandLine, AFailureStandsOnStandardErrorWithAndWithoutJson) {
  const TempFolder folder;
  for (const char* option : {"--json", "--assume=no"}) {
    EXPECT_THAT(runCli({option, "table", "dump", folder.machine("none.dbf")}).err, HasSubstr("vantrelix: Error 3011: "))
        << option;
  }
}

TEST(CommandLine, AWrongCommandLineWithJsonIsADocumentToo) {
  const CliRun unknown = runCli({"brew", "--json"});
  EXPECT_EQ(unknown.status, 2);
  EXPECT_THAT(unknown.json()["error"].get<std::string>(), HasSubstr("brew"));
  EXPECT_EQ(runCli({"--json", "table"}).json()["messages"], nlohmann::json::array());
  EXPECT_EQ(runCli({"brew"}).out, "");
}

TEST(CommandLine, TheEnvironmentNamesTheInstallationFolder) {
  const TempFolder folder;
  ASSERT_EQ(setenv("VANTRELIX_SUITE", folder.machine("from-afar").c_str(), 1), 0);
  const CliRun byEnvironment = runCli({"libraries"});
  const CliRun byOption = runCli({"--suite", folder.machine("by-option"), "libraries"});
  unsetenv("VANTRELIX_SUITE");
  EXPECT_THAT(byEnvironment.err, HasSubstr(folder.machine("from-afar")));
  EXPECT_THAT(byOption.err, HasSubstr(folder.machine("by-option")));
}

TEST(CalcCommand, ConvertsGainsAsText) {
  const CliRun run = runCli({"--json", "calc", "gain", "dBd", "dBi", "0"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.json()["result"], "2.1500");
  EXPECT_EQ(run.json()["failed"], false);
}

TEST(CalcCommand, TakesANegativeNumberWithAndWithoutTheDashes) {
  EXPECT_EQ(runCli({"calc", "gain", "dBd", "dBi", "-3"}).out, "-0.8500\n");
  EXPECT_EQ(runCli({"calc", "gain", "dBd", "dBi", "--", "-3"}).out, "-0.8500\n");
  EXPECT_EQ(runCli({"calc", "pattern", "dBd", "REL", "-10", "10", "dBd"}).out, "0.1000\n");
  EXPECT_EQ(runCli({"calc", "pattern", "dBd", "REL", "-10", "-.5", "dBd"}).out, "0.3350\n");
  EXPECT_EQ(runCli({"calc", "gain", "dBd", "dBi", "-3", "--json"}).json()["result"], "-0.8500");
}

TEST(CalcCommand, AgreesWithTheWorkedExamples) {
  EXPECT_EQ(runCli({"calc", "gain", "dBd", "REL", "3"}).out, "1.9953\n");
  EXPECT_EQ(runCli({"calc", "gain", "REL", "dBi", "1"}).out, "2.1500\n");
  EXPECT_EQ(runCli({"calc", "pattern", "REL", "dBd", "0.5", "10", "dBd"}).out, "3.9794\n");
  EXPECT_EQ(runCli({"calc", "pattern", "dBd", "dBi", "10", "10", "dBd"}).out, "12.1500\n");
  EXPECT_EQ(runCli({"--json", "calc", "length", "nm", "m", "1"}).json()["result"], 1853.0);
  EXPECT_EQ(runCli({"--json", "calc", "frequency", "GHz", "MHz", "1"}).json()["result"], 1000.0);
}

TEST(CalcCommand, AFailedConversionSaysSoAndEndsWithOne) {
  const CliRun gain = runCli({"--json", "calc", "gain", "REL", "dBd", "0"});
  EXPECT_EQ(gain.status, 1);
  EXPECT_EQ(gain.json()["failed"], true);
  EXPECT_EQ(gain.json()["result"], "");
  const CliRun frequency = runCli({"--json", "calc", "frequency", "khz", "MHz", "1"});
  EXPECT_EQ(frequency.status, 1);
  EXPECT_EQ(frequency.json()["result"], -88.0);
}

TEST(CalcCommand, GivesTheGainOfADish) {
  const CliRun run = runCli({"--json", "calc", "parabola", "10", "ft", "6000"});
  EXPECT_EQ(run.status, 0);
  EXPECT_NEAR(run.json()["result"].get<double>(), 43.0433, 1e-4);
  EXPECT_EQ(run.json()["failed"], false);
  EXPECT_EQ(runCli({"calc", "parabola", "1", "m", "1000"}).out, "17.8\n");
  EXPECT_THAT(runCli({"calc", "parabola", "--help"}).out, HasSubstr("Example: vantrelix calc parabola 10 ft 6000"));
}

TEST(CalcCommand, ADishWithoutAGainSaysWhatItNeedsAndEndsWithOne) {
  const std::vector<std::vector<std::string>> wrong = {{"0", "m", "1000"},   {"-1", "m", "1000"}, {"1", "Ft", "1000"},
                                                       {"1", "m", "-0.5"},   {"1", "m", "0"},     {"dish", "m", "1000"},
                                                       {"1E999", "m", "10"}, {"1E308", "km", "1"}};
  for (const std::vector<std::string>& values : wrong) {
    std::vector<std::string> arguments = {"--json", "calc", "parabola"};
    arguments.insert(arguments.end(), values.begin(), values.end());
    const CliRun run = runCli(arguments);
    EXPECT_EQ(run.status, 1) << values[0] << values[1] << values[2];
    EXPECT_EQ(run.json()["failed"], true);
    EXPECT_EQ(run.json()["result"], 0.0);
    EXPECT_EQ(run.json()["messages"], nlohmann::json::array());
    EXPECT_THAT(run.json()["error"].get<std::string>(), HasSubstr(values[0] + " " + values[1] + " at " + values[2]));
  }
  const CliRun text = runCli({"calc", "parabola", "--", "-1", "m", "1000"});
  EXPECT_EQ(text.status, 1);
  EXPECT_THAT(text.err, HasSubstr("both numbers must be above 0"));
  EXPECT_EQ(runCli({"calc", "parabola", "1", "m"}).status, 2);
}

TEST(IniCommand, ReadsADefaultAndWhatWasWritten) {
  const TempFolder folder;
  const std::string file = folder.machine("my.ini");
  EXPECT_EQ(runCli({"ini", "get", file, "s", "k", "none"}).out, "none\n");
  EXPECT_EQ(runCli({"ini", "set", file, "s", "k", "value one"}).status, 0);
  EXPECT_EQ(runCli({"--json", "ini", "get", file, "S", "K"}).json()["value"], "value one");
  EXPECT_EQ(runCli({"--json", "ini", "set", file, "s", "k", "-70"}).json()["value"], "-70");
}

TEST(IniCommand, AFileThatCannotBeWrittenIsNamed) {
  const TempFolder folder;
  const CliRun run = runCli({"ini", "set", folder.machine("no/such/folder.ini"), "s", "k", "v"});
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr("folder.ini"));
}

}  // namespace
}  // namespace vantrelix::test
