// The files that a recovery makes: their names, their way to the disk, and what stands in their way.
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tables/BadDisk.h"
#include "tables/MemoFile.h"
#include "tables/TableRecoveries.h"

namespace vantrelix {
namespace {

using test::failureOf;
using test::RawTable;
using test::TableRecoveries;
using ::testing::ElementsAre;

class RecoveredFiles : public TableRecoveries {
 protected:
  RunTimeFailure failureOfRecovery() {
    return failureOf([&] { recoverTable(suite.file("T.DBF"), suite.file("NEW.DBF")); });
  }
  // A table with a memo and a file that names its code page.
  void writeAll() {
    MemoFile::create(suite.file("T.FPT"));
    const std::uint32_t block =
        MemoFile(suite.file("T.FPT"), MemoKind::foxpro, platform::OpenMode::readWrite).append("text");
    const RawTable raw{
        .version = 0xF5, .fields = {{"M", 'M', 10}}, .rows = "          " + std::to_string(block), .count = 1};
    suite.folder().write("T.DBF", raw.bytes());
    suite.folder().write("T.CPG", "1252");
  }
};

// A power loss leaves what was synced: at each rename all that it relies on is on the disk.
TEST_F(RecoveredFiles, AreOnTheDiskBeforeTheyGetTheirNames) {
  writeAll();
  platform::FaultPlatform watched(platform::current());
  const platform::Substitute substitute(watched);
  recoverTable(suite.file("T.DBF"), suite.file("NEW.DBF"));
  const std::vector<std::string>& journal = watched.journal();
  const auto isPlacing = [](const std::string& call) { return call.rfind("renameNew ", 0) == 0; };
  const auto placed = std::find_if(journal.begin(), journal.end(), isPlacing);
  std::vector<std::string> names;
  for (const char* extension : {"DBF", "FPT", "CPG"}) {
    const std::string made = " " + suite.folder().machine(std::string("NEW.") + extension) + ".";
    const auto isSync = [&](const std::string& call) { return call.rfind("sync" + made, 0) == 0; };
    const auto isWrite = [&](const std::string& call) { return call.rfind("writeAt" + made, 0) == 0; };
    const auto synced = std::find_if(journal.rbegin(), journal.rend(), isSync);
    EXPECT_LT(synced, std::find_if(journal.rbegin(), journal.rend(), isWrite)) << extension << " is written behind it";
    EXPECT_LE(synced.base(), placed) << extension;
    EXPECT_NE(synced, journal.rend()) << extension;
  }
  for (auto call = placed; call != journal.end(); ++call) {
    if (isPlacing(*call)) names.push_back(call->substr(call->find_last_of('/') + 1));
  }
  EXPECT_THAT(names, ElementsAre("NEW.CPG", "NEW.FPT", "NEW.DBF"));
  EXPECT_EQ(journal.back(), "syncFolder " + suite.folder().machine() + "/");
}

TEST_F(RecoveredFiles, AreTheNameOfTheCodePageToo) {
  suite.folder().write("T.CPG", "ANSI 1252");
  recovered(good);
  EXPECT_EQ(suite.folder().read("NEW.CPG"), "ANSI 1252") << "the mark of the header names a page";
}

TEST_F(RecoveredFiles, AreNotMadeBesideANameOfACodePage) {
  suite.folder().write("T.DBF", good.bytes());
  suite.folder().write("NEW.cpg", "UTF-8");
  const RunTimeFailure failure = failureOfRecovery();
  EXPECT_EQ(failure.number(), failure::fileExists);
  EXPECT_NE(failure.description().find("NEW.cpg"), std::string::npos);
  EXPECT_FALSE(suite.folder().exists("NEW.DBF"));
  suite.folder().write("T.CPG", "1252");
  EXPECT_EQ(failureOfRecovery().number(), failure::fileExists);
  EXPECT_EQ(suite.folder().read("NEW.cpg"), "UTF-8");
}

TEST_F(RecoveredFiles, AreMadeWithoutANameOfTheCodePageThatCannotBeRead) {
  for (const bool tooLong : {false, true}) {
    writeAll();
    test::BadDisk disk;
    disk.name = tooLong ? "none" : "T.CPG";
    disk.end = 4;
    if (tooLong) suite.folder().write("T.CPG", "1252" + std::string(5000, ' '));
    const platform::Substitute substitute(disk);
    const TableRecovery result = recoverTable(suite.file("T.DBF"), suite.file("NEW.DBF"));
    EXPECT_EQ(result.rows, 1U);
    EXPECT_EQ(result.faults.totals().at(FaultKind::pageFile), 1U);
    EXPECT_NE(result.faults.kept()[0].text.find("T.CPG"), std::string::npos);
    EXPECT_FALSE(suite.folder().exists("NEW.CPG"));
    EXPECT_EQ(checkTable(suite.file("T.DBF")).faults.totals().at(FaultKind::pageFile), 1U);
    for (const char* name : {"NEW.DBF", "NEW.FPT"}) platform::current().remove(suite.file(name));
  }
}

// A killed run leaves its files, and the system may give its number to another one.
TEST_F(RecoveredFiles, AreMadeBesideThoseThatARunOfTheSameNumberLeft) {
  writeAll();
  std::vector<std::string> left;
  const std::string number = std::to_string(platform::current().processId());
  for (const char* name : {"NEW.DBF.", "NEW.FPT.", "NEW.CPG."}) {
    left.push_back(name + number + ".tmp");
    for (const char* attempt : {"1", "2"}) left.push_back(name + number + "-" + attempt + ".tmp");
  }
  for (const std::string& name : left) suite.folder().write(name, "left");
  EXPECT_EQ(failureOfRecovery().number(), 0);
  for (const std::string& name : left) EXPECT_EQ(suite.folder().read(name), "left");
  EXPECT_EQ(rows().size(), 11U);
  EXPECT_EQ(platform::current().list(suite.path()).size(), left.size() + 6);
}

}  // namespace
}  // namespace vantrelix
