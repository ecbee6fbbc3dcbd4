// Library commands from a fresh installation folder to plots, as a script would run them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/CliSuite.h"
#include "tables/dictionaryTables.h"

namespace vantrelix::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

std::string planetFile(const std::string& name, const std::string& gain, const std::string& side = "3.0") {
  return "NAME " + name + "\nFREQUENCY 900\nGAIN " + gain + "\nHORIZONTAL 4\n0 0.0\n90 " + side +
         "\n180 20.0\n270 3.0\nVERTICAL 3\n0 0.0\n10 6.0\n350 6.0\n";
}

class LibraryCommands : public CliSuite {
 protected:
  std::string pattern(const std::string& file, const std::string& content) const {
    suite_.folder().write(file, content);
    return suite_.folder().machine(file);
  }
};

TEST_F(LibraryCommands, ImportMakesTheLibraryAndNamesItsAntennas) {
  const CliRun import = json({"import", "generic", "AMSX0001", pattern("a.msi", planetFile("Yagi 900", "12.5 dBd"))});
  ASSERT_EQ(import.status, 0) << import.err << import.out;
  EXPECT_EQ(import.json()["files"], 1);
  EXPECT_EQ(import.json()["errors"], 0);
  EXPECT_EQ(import.json()["antennas"][0]["description"], "Yagi 900");
  EXPECT_EQ(import.json()["antennas"][0]["id"], "X00010000001");
}

TEST_F(LibraryCommands, ImportNamesWhatItRefusesAndEndsWithOne) {
  const std::string bad = pattern("bad.msi", "NAME no cuts\n");
  const CliRun import = json({"import", "generic", "AMSX0001", bad, pattern("a.msi", planetFile("Good", "1 dBd"))});
  EXPECT_EQ(import.status, 1);
  EXPECT_EQ(import.json()["errors"], 1);
  EXPECT_EQ(import.json()["antennas"].size(), 1U);
  EXPECT_THAT(import.json()["error"].get<std::string>(), StartsWith(bad + ": Error 62: "));
  EXPECT_THAT(import.json()["failed"][0].get<std::string>(), StartsWith(bad + ": Error 62: "));
  EXPECT_EQ(import.json()["messages"][0]["title"], "Import Errors");
}

TEST_F(LibraryCommands, ImportGoesIntoTheFolderThatIsNamed) {
  suite_.folder().write("site/readme", "x");
  const std::string library = suite_.folder().machine("site/AMSX0001");
  ASSERT_EQ(run({"import", "generic", library, pattern("a.msi", planetFile("A", "1 dBd"))}).status, 0);
  EXPECT_TRUE(suite_.folder().exists("site/AVDX0001.DBF"));
  EXPECT_FALSE(suite_.folder().exists("ANTENNAS/AMSX0001.DBF"));
  EXPECT_EQ(json({"antennas", suite_.folder().machine("site/amsx0001.dbf")}).json()["antennas"].size(), 1U);
}

TEST_F(LibraryCommands, ImportRefusesANameThatNoAntennaLibraryBears) {
  const std::string file = pattern("a.msi", planetFile("A", "1 dBd"));
  for (const char* name : {"AMSX1", "AMSX00011", "XYZX0001", "LMSX0001"}) {
    const CliRun import = run({"import", "generic", name, file});
    EXPECT_EQ(import.status, 1);
    EXPECT_THAT(import.err, HasSubstr(std::string("Error on Antenna Library file name: ") + name));
    EXPECT_THAT(import.err, HasSubstr("as in AMSX0001"));
  }
  EXPECT_FALSE(suite_.folder().exists("ANTENNAS/AMSX0001.DBF"));
  EXPECT_EQ(run({"import", "generic", " ", file}).status, 1);
}

TEST_F(LibraryCommands, ImportTellsWhyALibraryCannotBeOpened) {
  suite_.folder().write("ANTENNAS/AMSX0001.DBF", "this is no table");
  const CliRun import = json({"import", "generic", "AMSX0001", pattern("a.msi", planetFile("A", "1 dBd"))});
  EXPECT_EQ(import.status, 1);
  EXPECT_THAT(import.json()["error"].get<std::string>(), HasSubstr("Error 3343:"));
  EXPECT_FALSE(suite_.folder().exists("ANTENNAS/AHDX0001.DBF"));
}

TEST_F(LibraryCommands, ImportNamesAFileThatIsNotThere) {
  const std::string file = pattern("a.msi", planetFile("A", "1 dBd"));
  const std::string packed = pattern("P.ZIP", "x");
  const CliRun import = json({"import", "generic", "AMSX0001", suite_.folder().machine("gone.msi"), packed, file});
  EXPECT_EQ(import.status, 1);
  EXPECT_EQ(import.json()["errors"], 0);
  EXPECT_EQ(import.json()["antennas"].size(), 1U);
  EXPECT_THAT(import.json()["error"].get<std::string>(), StartsWith(suite_.folder().machine("gone.msi")));
  EXPECT_EQ(import.json()["skipped"].size(), 2U);
  const CliRun rightly = run({"import", "generic", "AMSX0001", packed, file});
  EXPECT_EQ(rightly.status, 0);
  EXPECT_THAT(rightly.out, HasSubstr("skipped " + packed));
}

TEST_F(LibraryCommands, QuestionsAreAnsweredAsAssumed) {
  const std::string strong = pattern("strong.msi", planetFile("Strong", "1E13 dBd"));
  const std::string good = pattern("a.msi", planetFile("A", "1 dBd"));
  const CliRun stopped = json({"import", "generic", "AMSX0001", strong, good});
  EXPECT_EQ(stopped.status, 1);
  EXPECT_EQ(stopped.json()["messages"][0]["buttons"], "OK/Cancel");
  EXPECT_EQ(stopped.json()["messages"][0]["answer"], "Cancel");
  EXPECT_THAT(run({"import", "generic", "AMSX0001", strong}).err, HasSubstr("\n(answered Cancel)\n"));
  EXPECT_THAT(stopped.json()["error"].get<std::string>(), HasSubstr(good));
  const CliRun goesOn = json({"--assume", "yes", "import", "generic", "AMSX0001", strong, good});
  EXPECT_EQ(goesOn.json()["messages"][0]["answer"], "OK");
  EXPECT_EQ(goesOn.json()["antennas"].size(), 1U);
}

TEST_F(LibraryCommands, ProgressIsShownOnATerminalAloneAndNeverWithJson) {
  const std::string file = pattern("a.msi", planetFile("A", "1 dBd"));
  std::vector<std::string> import{"--suite", suite_.folder().machine(), "import", "generic", "AMSX0001", file};
  EXPECT_THAT(runCli(import, {}, true).err, HasSubstr("Working on file 1 of 1: a.msi"));
  EXPECT_EQ(runCli(import, {}, false).err, "");
  import.emplace_back("--json");
  EXPECT_EQ(runCli(import, {}, true).err, "");
}

TEST_F(LibraryCommands, AnUnknownFormatIsAWrongCommandLine) {
  EXPECT_EQ(run({"import", "papyrus", "AMSX0001", "x"}).status, 2);
}

TEST_F(LibraryCommands, AntennasStandInDescriptionOrder) {
  run({"import", "generic", "AMSX0001", pattern("b.msi", planetFile("Beta", "2 dBi")),
       pattern("a.msi", planetFile("Alpha", "1 dBd"))});
  const auto list = json({"antennas", "amsx0001.dbf"}).json()["antennas"];
  ASSERT_EQ(list.size(), 2U);
  EXPECT_EQ(list[0]["description"], "Alpha");
  EXPECT_EQ(list[1]["gain_units"], "dBi");
  EXPECT_EQ(list[1]["horizontal_points"], 4);
  EXPECT_EQ(list[1]["vertical_points"], 3);
  EXPECT_THAT(run({"antennas", "AMSX0001"}).out, HasSubstr("X00010000002  Alpha        1.00  dBd    900   900  MHz"));
}

TEST_F(LibraryCommands, ShowGivesAllDigitsAsStoredAndFourDecimalsConverted) {
  run({"import", "generic", "AMSX0001", pattern("a.msi", planetFile("A", "12.5 dBd", "3.33"))});
  const auto stored = json({"show", "AMSX0001", "X00010000001"}).json();
  EXPECT_EQ(stored["gain"], 12.5);
  EXPECT_EQ(stored["horizontal"][1], nlohmann::json({90.0, 9.17}));
  EXPECT_EQ(stored["vertical"][0][0], -10.0);
  const auto relative = json({"show", "AMSX0001", "X00010000001", "--units", "REL"}).json();
  EXPECT_EQ(relative["gain"], 17.7828);
  EXPECT_EQ(relative["horizontal"][1][1], 0.6816);
  EXPECT_EQ(relative["gain_units"], "REL");
}

TEST_F(LibraryCommands, ShowOfAMissingAntennaIsRefusedWithItsText) {
  run({"import", "generic", "AMSX0001", pattern("a.msi", planetFile("A", "1 dBd"))});
  const CliRun show = json({"show", "AMSX0001", "NOPE", "--units", "dBi"});
  EXPECT_EQ(show.status, 1);
  EXPECT_EQ(show.json()["gain"], 2.15);
  EXPECT_THAT(show.json()["error"].get<std::string>(), HasSubstr("The specified antenna was not found:"));
  EXPECT_EQ(show.json()["messages"][0]["title"], "Antenna Data Base Error 3");
}

TEST_F(LibraryCommands, ShowOfWhatCannotBeConvertedOrReadIsAFailure) {
  run({"import", "generic", "AMSX0001", pattern("a.msi", planetFile("A", "1 REL"))});
  const CliRun unconverted = json({"show", "AMSX0001", "X00010000001", "--units", "dBd"});
  EXPECT_EQ(unconverted.status, 1);
  EXPECT_THAT(unconverted.json()["error"].get<std::string>(), StartsWith("Error on antenna data"));
  EXPECT_EQ(unconverted.json()["horizontal"].size(), 0U);
  std::remove(suite_.folder().machine("ANTENNAS/AVDX0001.DBF").c_str());
  const CliRun unread = json({"show", "AMSX0001", "X00010000001"});
  EXPECT_EQ(unread.status, 1);
  EXPECT_THAT(unread.json()["error"].get<std::string>(), StartsWith("Error 3011:"));
  EXPECT_EQ(run({"plot", "AMSX0001", "X00010000001", suite_.folder().machine("a.svg")}).status, 1);
  EXPECT_FALSE(suite_.folder().exists("a.svg"));
}

TEST_F(LibraryCommands, ABlankIdAndABlankLibraryAreFailures) {
  run({"import", "generic", "AMSX0001", pattern("a.msi", planetFile("A", "1 dBd"))});
  EXPECT_THAT(run({"show", "AMSX0001", " "}).err, HasSubstr("the ID is blank"));
  EXPECT_EQ(run({"show", "AMSX0001", ""}).status, 1);
  EXPECT_THAT(run({"antennas", suite_.folder().machine("ANTENNAS/")}).err, HasSubstr("No library is named by"));
}

TEST_F(LibraryCommands, JsonIsReadableWhateverBytesAreNamed) {
  run({"import", "generic", "AMSX0001", pattern("a.msi", planetFile("A", "1 dBd"))});
  const CliRun show = json({"show", "AMSX0001", "caf\xE9"});
  EXPECT_EQ(show.status, 1);
  EXPECT_EQ(show.json()["id"], "caf\xEF\xBF\xBD");
}

TEST_F(LibraryCommands, LibrariesShowTheirDescriptions) {
  run({"import", "generic", "AMSX0001", pattern("a.msi", planetFile("A", "1 dBd"))});
  run({"ini", "set", suite_.folder().machine("ANTENNAS/QVAliasANT.INI"), "ANTENNAS\\AMS?????.DBF", "AMSX0001.DBF",
       "Rooftop antennas"});
  const auto list = json({"libraries"}).json()["libraries"];
  ASSERT_EQ(list.size(), 1U);
  EXPECT_EQ(list[0]["file"], "AMSX0001.DBF");
  EXPECT_EQ(list[0]["description"], "Rooftop antennas");
  suite_.folder().write("LINES/LMSAND00.DBF", "x");
  EXPECT_EQ(json({"libraries", "lines"}).json()["libraries"][0]["file"], "LMSAND00.DBF");
}

TEST_F(LibraryCommands, PlotWritesADrawingWithoutAToolkit) {
  run({"import", "generic", "AMSX0001", pattern("a.msi", planetFile("A", "1 dBd"))});
  const CliRun plot = json({"plot", "AMSX0001", "X00010000001", suite_.folder().machine("a.svg")});
  ASSERT_EQ(plot.status, 0) << plot.out;
  EXPECT_THAT(suite_.folder().read("a.svg"), HasSubstr("<svg"));
  EXPECT_EQ(plot.json()["file"], suite_.folder().machine("a.svg"));
}

TEST_F(LibraryCommands, PlotNeedsAKnownKindOfFileAndAToolkitForPictures) {
  run({"import", "generic", "AMSX0001", pattern("a.msi", planetFile("A", "1 dBd"))});
  const CliRun png = run({"plot", "AMSX0001", "X00010000001", suite_.folder().machine("a.png")});
  EXPECT_EQ(png.status, 1);
  EXPECT_THAT(png.err, HasSubstr(".svg needs none"));
  EXPECT_THAT(run({"plot", "AMSX0001", "X00010000001", suite_.folder().machine("a.gif")}).err, HasSubstr("a.gif"));
  EXPECT_FALSE(suite_.folder().exists("a.gif"));
}

TEST_F(LibraryCommands, PlotHandsAPictureToTheToolkit) {
  run({"import", "generic", "AMSX0001", pattern("a.msi", planetFile("A", "1 dBd"))});
  std::string written;
  const CliRun plot = runCli({"--suite", suite_.folder().machine(), "plot", "AMSX0001", "X00010000001", "/tmp/a.PNG"},
                             [&](const PlotPage& page, const std::string& path) {
                               EXPECT_EQ(page.pictures.size(), 2U);
                               written = path;
                             });
  EXPECT_EQ(plot.status, 0) << plot.err;
  EXPECT_EQ(written, "/tmp/a.PNG");
}

TEST_F(LibraryCommands, SuiteInitKeepsWhatIsThere) {
  const std::string defaults = suite_.folder().machine("QVDEFAULTS.INI");
  run({"ini", "set", defaults, "HDAntenna", "MinValidGain", "-70"});
  run({"import", "generic", "AMSX0001", pattern("a.msi", planetFile("A", "1 dBd"))});
  const CliRun init = json({"suite", "init", suite_.folder().machine()});
  EXPECT_EQ(init.status, 0);
  EXPECT_EQ(init.json()["suite"], suite_.folder().machine());
  EXPECT_EQ(run({"ini", "get", defaults, "HDAntenna", "MinValidGain"}).out, "-70\n");
  EXPECT_EQ(json({"antennas", "AMSX0001"}).json()["antennas"].size(), 1U);
}

TEST_F(LibraryCommands, TableDumpShowsFieldsRowsAndDeletions) {
  run({"import", "generic", "AMSX0001", pattern("a.msi", planetFile("A", "1 dBd"))});
  const auto dump = json({"table", "dump", suite_.folder().machine("ANTENNAS/AMSX0001.DBF")}).json();
  EXPECT_EQ(dump["version"], "0x03");
  EXPECT_EQ(dump["fields"][2], nlohmann::json({{"name", "GAIN"}, {"type", "N"}, {"width", 12}, {"decimals", 4}}));
  EXPECT_EQ(dump["rows"][0]["ANTENNA"], "A");
  EXPECT_TRUE(dump["rows"][0]["POWER"].is_null());
  EXPECT_EQ(dump["deleted"], 0);
}

TEST_F(LibraryCommands, TableQueryRunsTheSubset) {
  run({"import", "generic", "AMSX0001", pattern("a.msi", planetFile("A", "1 dBd"))});
  const std::string folder = suite_.folder().machine("ANTENNAS");
  const auto query =
      json({"table", "query", folder, "Select min([HOR_AZ]) AS A, max([HOR_AZ]) AS B from [AHDX0001]"}).json();
  EXPECT_EQ(query["fields"], nlohmann::json({"A", "B"}));
  EXPECT_EQ(query["rows"], nlohmann::json({{0.0, 270.0}}));
  const CliRun wrong = run({"table", "query", folder, "Select * form [AHDX0001]"});
  EXPECT_EQ(wrong.status, 1);
  EXPECT_THAT(wrong.err, StartsWith("vantrelix: Error 3061:"));
}

TEST_F(LibraryCommands, TableCreateAndRepairFollowTheDictionary) {
  const std::string file = suite_.folder().machine("ANTENNAS/AHDX0009.DBF");
  EXPECT_EQ(json({"table", "create", file, "AHDTADBASE"}).json()["code"], 0);
  EXPECT_TRUE(suite_.folder().exists("ANTENNAS/AHDX0009.DBF"));
  EXPECT_EQ(json({"table", "repair", file, "AHDTADBASE"}).json()["code"], 0);
  const CliRun missing = json({"table", "repair", suite_.folder().machine("ANTENNAS/NONE.DBF"), "AHDTADBASE"});
  EXPECT_EQ(missing.status, 1);
  EXPECT_EQ(missing.json()["code"], 1);
  EXPECT_EQ(run({"table", "create", file, "NOSUCHTYPE"}).status, 1);
}

TEST_F(LibraryCommands, TableRepairAddsTheFieldsThatAnOldTableLacks) {
  const std::string path = oldMaster(suite_.folder());
  const std::string before = suite_.folder().read("AMSTEST1.DBF");
  const CliRun repair = json({"table", "repair", suite_.folder().machine("AMSTEST1.DBF"), "AMSPDBASE"});
  EXPECT_EQ(repair.status, 0) << repair.err;
  EXPECT_EQ(repair.json()["code"], 0);
  EXPECT_THAT(column(path, "ANTENNA"), ElementsAre("First", "Second"));
  EXPECT_THAT(column(path, "GAIN"), ElementsAre("10.25", "(null)"));
  EXPECT_THAT(column(path, "POWER"), ElementsAre("(null)", "(null)"));
  const std::vector<std::string> dated = filesThatBegin(suite_.folder(), "AMSTEST1_20");
  ASSERT_EQ(dated.size(), 1U);
  EXPECT_EQ(suite_.folder().read(dated[0]), before);
}

TEST_F(LibraryCommands, TableCreateLeavesATableThatLacksAFieldAndTellsTheCode) {
  oldMaster(suite_.folder());
  const std::string before = suite_.folder().read("AMSTEST1.DBF");
  const CliRun create = json({"table", "create", suite_.folder().machine("AMSTEST1.DBF"), "AMSPDBASE"});
  EXPECT_EQ(create.status, 1);
  EXPECT_EQ(create.json()["code"], 2);
  EXPECT_THAT(create.json()["error"].get<std::string>(), HasSubstr("determining the data structure"));
  EXPECT_EQ(suite_.folder().read("AMSTEST1.DBF"), before);
  EXPECT_THAT(filesThatBegin(suite_.folder(), "AMS"), ElementsAre("AMSTEST1.DBF"));
}

}  // namespace
}  // namespace vantrelix::test
