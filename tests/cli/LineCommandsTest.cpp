// Line libraries on the command line, from a plain table to losses.
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/CliSuite.h"
#include "tables/DbfFile.h"

namespace vantrelix::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class LineCommands : public CliSuite {
 protected:
  std::string table(const std::string& content, const std::string& name = "lines.csv") const {
    suite_.folder().write(name, content);
    return suite_.folder().machine(name);
  }
  void importFoam() const {
    const CliRun import = json({"import-lines", table(kFoam), "LMSX0001"});
    ASSERT_EQ(import.status, 0) << import.out;
  }
  CliRun lossOf(const std::string& id, const std::string& length, const std::string& unit,
                const std::string& freq) const {
    return json({"loss", "LMSX0001", id, "--length", length, "--unit", unit, "--freq", freq});
  }
  std::vector<std::string> lineFiles() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(suite_.folder().machine("LINES"))) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }

  static constexpr const char* kFoam =
      "\xEF\xBB\xBF# foam lines\r\nid,description,MHz,dB per 100 ft\r\n"
      "F78,\"7/8 in foam, 50 ohm\",1000,10\r\nF78,,100,1\r\nONE,Caf\xC3\xA9,450,2\r\n";
};

TEST_F(LineCommands, APlainTableBecomesALibrary) {
  const CliRun import = json({"import-lines", table(kFoam), "lmsx0001"});
  ASSERT_EQ(import.status, 0) << import.out;
  EXPECT_EQ(import.json()["library"], "LMSX0001");
  EXPECT_EQ(import.json()["lines"], 2);
  EXPECT_EQ(import.json()["points"], 3);
  const auto lines = json({"lines", "LMSX0001"}).json()["lines"];
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(
      lines[0],
      nlohmann::json({{"id", "F78"}, {"description", "7/8 in foam, 50 ohm"}, {"f_min", 100.0}, {"f_max", 1000.0}}));
  EXPECT_EQ(lines[1]["description"], "Caf\xC3\xA9");
}

TEST_F(LineCommands, LinesAreShownAligned) {
  importFoam();
  EXPECT_EQ(run({"lines", "LMSX0001.DBF"}).out,
            "ID   Description          From MHz  To MHz\n"
            "F78  7/8 in foam, 50 ohm       100    1000\n"
            "ONE  Caf\xC3\xA9                      450     450\n");
  EXPECT_EQ(run({"import-lines", table("id,description,MHz,dB/100m\nB,b,1,1\n"), "LMSX0001"}).out,
            "1 line with 1 point added to LMSX0001\n");
}

TEST_F(LineCommands, PointsAreSortedInTheTable) {
  importFoam();
  const auto rows = json({"table", "dump", suite_.folder().machine("LINES/LNDX0001.DBF")}).json()["rows"];
  ASSERT_EQ(rows.size(), 3U);
  EXPECT_EQ(rows[0], nlohmann::json({{"LTYPE_ID", "F78"}, {"FREQ", 100.0}, {"ATTEN", 1.0}}));
  EXPECT_EQ(rows[1]["FREQ"], 1000.0);
}

TEST_F(LineCommands, ALossHasItsDescription) {
  importFoam();
  const CliRun loss = lossOf("F78", "100", "ft", "316.227766016838");
  EXPECT_EQ(loss.status, 0);
  EXPECT_NEAR(loss.json()["loss"].get<double>(), 3.16227766, 1e-8);
  EXPECT_EQ(loss.json()["failed"], false);
  EXPECT_EQ(loss.json()["error"], "");
  EXPECT_EQ(loss.json()["description"], "7/8 in foam, 50 ohm");
  EXPECT_EQ(run({"loss", "LMSX0001", "F78", "--length", "50", "--unit", "ft", "--freq", "1000"}).out,
            "Line    7/8 in foam, 50 ohm\nLoss    5 dB in 50 ft at 1000 MHz\n");
}

TEST_F(LineCommands, ALineOfOnePointLeavesTheLossAsNull) {
  importFoam();
  const CliRun loss = lossOf("ONE", "100", "ft", "450");
  EXPECT_EQ(loss.status, 0);
  EXPECT_TRUE(loss.json()["loss"].is_null());
  EXPECT_EQ(loss.json()["failed"], false);
  EXPECT_EQ(loss.json()["error"], "");
  EXPECT_THAT(run({"loss", "LMSX0001", "ONE", "--length", "1", "--unit", "ft", "--freq", "450"}).out,
              HasSubstr("Loss    none: a line needs two points"));
}

TEST_F(LineCommands, ARefusedLossIsNullAndTellsWhy) {
  importFoam();
  const CliRun below = lossOf("F78", "100", "ft", "99");
  EXPECT_EQ(below.status, 1);
  EXPECT_TRUE(below.json()["loss"].is_null());
  EXPECT_EQ(below.json()["failed"], true);
  EXPECT_EQ(below.json()["error"], "Frequency is below minimum for this line.");
  EXPECT_EQ(below.err, "vantrelix: Frequency is below minimum for this line.\n");
  const CliRun zero = lossOf("F78", "0", "ft", "100");
  EXPECT_EQ(zero.json()["error"], "Line length must be greater than zero.");
  EXPECT_EQ(zero.json()["description"], "7/8 in foam, 50 ohm");
  EXPECT_EQ(lossOf("F78", "-5", "ft", "100").json()["error"], "Line length must be greater than zero.");
  EXPECT_EQ(lossOf("F78", "-.5", "ft", "100").json()["error"], "Line length must be greater than zero.");
  EXPECT_EQ(lossOf(" ", "1", "ft", "100").json()["error"], "Invalid Line ID:  ");
  const CliRun unknown = lossOf("NOSUCH", "1", "ft", "100");
  EXPECT_EQ(unknown.json()["error"], "No records found for this line type.");
  EXPECT_EQ(unknown.json()["description"], " ");
}

TEST_F(LineCommands, AnUnknownUnitIsALossOfZeroWithoutATextOfTheProcedure) {
  importFoam();
  const CliRun loss = lossOf("F78", "100", "furlong", "100");
  EXPECT_EQ(loss.status, 1);
  EXPECT_EQ(loss.json()["loss"], 0.0);
  EXPECT_EQ(loss.json()["failed"], true);
  EXPECT_EQ(loss.json()["error"], "");
  EXPECT_THAT(loss.err, HasSubstr("The length unit \"furlong\" is unknown"));
}

TEST_F(LineCommands, ALossWithoutItsTablesFails) {
  importFoam();
  std::remove(suite_.folder().machine("LINES/LNDX0001.DBF").c_str());
  const CliRun loss = lossOf("F78", "100", "ft", "100");
  EXPECT_EQ(loss.status, 1);
  EXPECT_TRUE(loss.json()["loss"].is_null());
  EXPECT_EQ(loss.json()["failed"], true);
  EXPECT_THAT(loss.json()["error"].get<std::string>(), HasSubstr("Error 3011: There is no table 'LNDX0001'"));
  EXPECT_EQ(loss.json()["description"], "7/8 in foam, 50 ohm");
  const CliRun lines = json({"lines", "LMSX0001"});
  EXPECT_EQ(lines.status, 1);
  EXPECT_EQ(lines.json()["lines"].size(), 2U);
  EXPECT_TRUE(lines.json()["lines"][0]["f_min"].is_null());
  EXPECT_THAT(lines.json()["error"].get<std::string>(), HasSubstr("Error 3011:"));
  EXPECT_THAT(lineFiles(), testing::ElementsAre("LMSX0001.DBF"));
}

TEST_F(LineCommands, WarningsOfALogarithmAreMessages) {
  importFoam();
  const auto points = DbfFile::open(suite_.folder().file("LINES/LNDX0001.DBF"));
  points->update(1, [&](unsigned char* record) { points->put(record, 2, 0.0); });
  const CliRun loss = lossOf("F78", "100", "ft", "1000");
  EXPECT_EQ(loss.status, 0);
  EXPECT_EQ(loss.json()["loss"], 1.0);
  EXPECT_EQ(loss.json()["messages"][0]["title"], "Math Error");
}

TEST_F(LineCommands, RowsWithoutAnIdArePassedOverAndCounted) {
  importFoam();
  const auto master = DbfFile::open(suite_.folder().file("LINES/LMSX0001.DBF"));
  master->append(master->blankRecord().data());
  EXPECT_EQ(json({"lines", "LMSX0001"}).json()["lines"].size(), 2U);
  EXPECT_THAT(run({"lines", "LMSX0001"}).out, HasSubstr("1 row without an ID passed over\n"));
}

TEST_F(LineCommands, ALineWithoutPointsHasNoRange) {
  importFoam();
  const auto master = DbfFile::open(suite_.folder().file("LINES/LMSX0001.DBF"));
  std::vector<unsigned char> record = master->blankRecord();
  master->put(record.data(), 0, "BARE");
  master->append(record.data());
  const CliRun lines = json({"lines", "LMSX0001"});
  EXPECT_EQ(lines.status, 0);
  EXPECT_EQ(lines.json()["lines"][2],
            nlohmann::json({{"id", "BARE"}, {"description", ""}, {"f_min", nullptr}, {"f_max", nullptr}}));
}

TEST_F(LineCommands, BadRowsAreNamedWithFileAndLineAndNothingIsMade) {
  const std::string bad =
      table("id,description,MHz,dB/100m\nA,a,1,1\nA,a,x,1\n,b,1,1\nA,\"1/2, foam\",1,1,1\nA,a,1,2\n");
  const CliRun import = json({"import-lines", bad, "LMSX0001"});
  EXPECT_EQ(import.status, 1);
  EXPECT_THAT(import.json()["error"].get<std::string>(),
              AllOf(HasSubstr(bad + ", line 3: the frequency \"x\" is no number\n"),
                    HasSubstr(bad + ", line 4: the id is blank\n"), HasSubstr(bad + ", line 5: it has 5 fields"),
                    HasSubstr(bad + ", line 6: the frequency 1 of \"A\" stands in line 2 already\n"),
                    HasSubstr("No line was added to LMSX0001.")));
  EXPECT_THAT(lineFiles(), IsEmpty());
}

TEST_F(LineCommands, AnExistingLibraryGrowsAndKeepsItsIds) {
  importFoam();
  const std::string more = table("id,description,MHz,dB/100m\nB,b,1,100\nB,b,2,100\n", "more.csv");
  EXPECT_EQ(json({"import-lines", more, "LMSX0001"}).json()["lines"], 1);
  EXPECT_EQ(json({"lines", "LMSX0001"}).json()["lines"].size(), 3U);
  EXPECT_NEAR(lossOf("B", "100", "m", "1").json()["loss"].get<double>(), 100, 1e-9);
  const CliRun again = json({"import-lines", more, "LMSX0001"});
  EXPECT_EQ(again.status, 1);
  EXPECT_THAT(again.json()["error"].get<std::string>(), HasSubstr("line 2: the library has a line \"B\" already"));
  EXPECT_EQ(json({"lines", "LMSX0001"}).json()["lines"].size(), 3U);
}

TEST_F(LineCommands, ALibraryMayStandInAnotherFolder) {
  suite_.folder().write("site/readme", "x");
  const std::string library = suite_.folder().machine("site/LMSX0009");
  ASSERT_EQ(run({"import-lines", table(kFoam), library}).status, 0);
  EXPECT_TRUE(suite_.folder().exists("site/LNDX0009.DBF"));
  EXPECT_THAT(lineFiles(), IsEmpty());
  EXPECT_EQ(json({"lines", library + ".dbf"}).json()["lines"].size(), 2U);
  EXPECT_EQ(json({"loss", library, "F78", "--length", "100", "--unit", "ft", "--freq", "100"}).json()["loss"], 1.0);
}

TEST_F(LineCommands, WhatIsNotThereIsNamed) {
  EXPECT_THAT(json({"lines", "LMSX0007"}).json()["error"].get<std::string>(),
              HasSubstr(suite_.folder().machine("LINES/LMSX0007.DBF") + " was not found"));
  EXPECT_THAT(run({"import-lines", suite_.folder().machine("gone.csv"), "LMSX0001"}).err, HasSubstr("gone.csv"));
  EXPECT_THAT(run({"import-lines", table(kFoam), "AMSX0001"}).err, HasSubstr("as in LMSX0001"));
  EXPECT_THAT(lineFiles(), IsEmpty());
}

TEST_F(LineCommands, NumbersThatAreNoneAreAWrongCommandLine) {
  importFoam();
  const CliRun length = lossOf("F78", "long", "ft", "100");
  EXPECT_EQ(length.status, 2);
  EXPECT_THAT(length.json()["error"].get<std::string>(), HasSubstr("\"long\" is no number"));
  EXPECT_EQ(lossOf("F78", "1", "ft", "nan").status, 2);
  EXPECT_EQ(run({"loss", "LMSX0001", "F78", "--unit", "ft", "--freq", "1"}).status, 2);
}

TEST_F(LineCommands, EachCommandHasAHelpWithAnExample) {
  for (const char* command : {"lines", "loss", "import-lines"}) {
    EXPECT_THAT(run({command, "--help"}).out, HasSubstr(std::string("Example: vantrelix ") + command)) << command;
    EXPECT_THAT(run({"--help"}).out, HasSubstr(std::string("  ") + command + " ")) << command;
  }
}

TEST_F(LineCommands, LineLibrariesAreListedWithTheirDescriptions) {
  importFoam();
  run({"ini", "set", suite_.folder().machine("LINES/QVAliasLIN.INI"), "LINES\\LMS?????.DBF", "LMSX0001.DBF",
       "Foam lines"});
  const auto list = json({"libraries", "lines"}).json()["libraries"];
  ASSERT_EQ(list.size(), 1U);
  EXPECT_EQ(list[0], nlohmann::json({{"file", "LMSX0001.DBF"}, {"description", "Foam lines"}}));
}

TEST_F(LineCommands, ACommandsNameIsAValueBehindAnotherCommand) {
  EXPECT_EQ(json({"libraries", "lines"}).status, 0);
  EXPECT_THAT(run({"lines", "loss"}).err, HasSubstr("LOSS.DBF was not found"));
}

TEST_F(LineCommands, TheShippedTablesMakeOneLibrary) {
  std::size_t lines = 0;
  for (const char* name : {"foam", "braided", "rigid"}) {
    const CliRun import =
        json({"import-lines", VANTRELIX_SOURCE_DIR "/data/lines/" + std::string(name) + ".csv", "LMSX0001"});
    ASSERT_EQ(import.status, 0) << import.out;
    lines += import.json()["lines"].get<std::size_t>();
  }
  EXPECT_EQ(json({"lines", "LMSX0001"}).json()["lines"].size(), lines);
  EXPECT_NEAR(lossOf("F78", "100", "m", "450").json()["loss"].get<double>(), 2.65, 1e-6);
  EXPECT_THAT(run({"lines", "LMSX0001"}).out, Not(HasSubstr("passed over")));
}

}  // namespace
}  // namespace vantrelix::test
