// New tables with memo fields: two files that come and go together.
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/FaultPlatform.h"
#include "tables/MemoFile.h"
#include "tables/dictionaryTables.h"
#include "tables/structure.h"

namespace vantrelix {
namespace {

using test::DictionarySuite;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

const FieldList kWithMemo = {{"A", 5, FieldType::text, ""}, {"M", 10, FieldType::memo, ""}};

// Whether a memo text written to the table is read again by who opens it next.
bool takesMemos(const std::string& path) {
  test::addRow(path, {{"A", "row"}, {"M", "a text of some length"}});
  return test::column(path, "M").back() == "a text of some length";
}

TEST(NewMemoTable, WithABlankInItsNameHasItsMemoFile) {
  DictionarySuite suite;
  ASSERT_TRUE(NewTable(kWithMemo, suite.file("AHD My [1].DBF")));
  EXPECT_THAT(test::filesThatBegin(suite.folder(), ""), ElementsAre("AHD My [1].DBF", "AHD My [1].FPT", "SYSTEM"));
  EXPECT_TRUE(takesMemos(suite.file("AHD My [1].DBF")));
}

TEST(NewMemoTable, ThatCannotBeMadeLeavesNothingUnderItsStamp) {
  DictionarySuite suite;
  std::filesystem::create_directory(suite.folder().machine("AHD My.DBF"));
  EXPECT_FALSE(NewTable(kWithMemo, suite.file("AHD My.DBF")));
  EXPECT_THAT(test::filesThatBegin(suite.folder(), ""),
              ElementsAre("AHD My.DBF", "AHD My.FPT", "QVTECSUP.TXT", "SYSTEM"));
}

TEST(NewMemoTable, MadeWhereItWasMissingHasItsMemoFile) {
  DictionarySuite suite;
  const std::string path = suite.file("NOTES.DBF");
  ASSERT_TRUE(RSTblValid(kWithMemo, path, false, true, ""));
  EXPECT_THAT(test::filesThatBegin(suite.folder(), ""), ElementsAre("NOTES.DBF", "NOTES.FPT", "SYSTEM"));
  EXPECT_TRUE(takesMemos(path));
}

TEST(NewMemoTable, TakesAMemoFileThatIsThereAndKeepsItsTexts) {
  DictionarySuite suite;
  const std::string path = suite.file("NOTES.DBF");
  ASSERT_TRUE(RSTblValid(kWithMemo, path, false, true, ""));
  ASSERT_TRUE(takesMemos(path));
  std::filesystem::rename(suite.folder().machine("NOTES.DBF"), suite.folder().machine("AWAY.DBF"));
  ASSERT_TRUE(RSTblValid(kWithMemo, path, false, true, ""));
  EXPECT_TRUE(takesMemos(path));
  std::filesystem::rename(suite.folder().machine("AWAY.DBF"), suite.folder().machine("NOTES.DBF"));
  EXPECT_THAT(test::column(path, "M"), ElementsAre("a text of some length"));
  EXPECT_THAT(test::filesThatBegin(suite.folder(), ""), ElementsAre("NOTES.DBF", "NOTES.FPT", "SYSTEM"));
}

// A disk on which another program puts a memo file right before this one does.
class QuickerProgram : public platform::FaultPlatform {
 public:
  explicit QuickerProgram(std::string memo) : FaultPlatform(platform::operatingSystem()), memo_(std::move(memo)) {}

  void renameNew(const std::string& from, const std::string& to) override {
    if (to == memo_ && !std::exchange(done_, true)) {
      MemoFile::create(memo_);
      MemoFile(memo_, MemoKind::foxpro, platform::OpenMode::readWrite).append("of the quicker one");
    }
    FaultPlatform::renameNew(from, to);
  }

 private:
  std::string memo_;
  bool done_ = false;
};

TEST(NewMemoTable, LeavesTheMemosOfAProgramThatMakesTheSameTableAndIsQuicker) {
  DictionarySuite suite;
  const std::string path = suite.file("NOTES.DBF");
  const std::string memo = suite.file("NOTES.FPT");
  {
    QuickerProgram quicker(memo);
    const platform::Substitute substitute(quicker);
    DbfFile::create(path, {{"A", 'C', 5, 0}, {"M", 'M', 10, 0}});
  }
  EXPECT_EQ(MemoFile(memo, MemoKind::foxpro).read(8), "of the quicker one");
  EXPECT_TRUE(takesMemos(path));
  EXPECT_EQ(MemoFile(memo, MemoKind::foxpro).read(8), "of the quicker one");
  EXPECT_THAT(test::filesThatBegin(suite.folder(), ""), ElementsAre("NOTES.DBF", "NOTES.FPT", "SYSTEM"));
}

TEST(NewMemoTable, StoppedAnywhereCanBeMadeAgain) {
  int calls = 1;
  for (int call = 1; call <= calls; ++call) {
    SCOPED_TRACE(call);
    DictionarySuite suite;
    const std::string path = suite.file("NOTES.DBF");
    platform::FaultPlatform faults(platform::current());
    {
      const platform::Substitute substitute(faults);
      faults.crashAt(call, call % 2 == 0);
      try {
        RSTblValid(kWithMemo, path, true, true, "");
      } catch (const RunTimeFailure&) {
        // The log itself could not be written.
      }
    }
    calls = std::max(calls, faults.calls());
    EXPECT_TRUE(!suite.folder().exists("NOTES.DBF") || suite.folder().exists("NOTES.FPT"));
    ASSERT_TRUE(RSTblValid(kWithMemo, path, true, true, ""));
    EXPECT_TRUE(takesMemos(path));
  }
  EXPECT_GT(calls, 5);
}

TEST(NewMemoTable, ThatCannotBeWrittenLeavesTheMemosOfTheOldOne) {
  DictionarySuite suite;
  const std::string path = suite.file("NOTES.DBF");
  const std::vector<DbfNewField> fields = {{"A", 'C', 5, 0}, {"M", 'M', 10, 0}};
  DbfFile::create(path, fields);
  test::addRow(path, {{"A", "row"}, {"M", "kept"}});
  platform::FaultPlatform faults(platform::current());
  const platform::Substitute substitute(faults);
  int call = 1;
  for (bool failed = true; failed; call += failed) {
    faults.crashAt(call);
    try {
      DbfFile::create(path, fields);
      failed = false;
    } catch (const RunTimeFailure&) {
      faults.reset();
      EXPECT_THAT(test::column(path, "M"), ElementsAre("kept")) << call;
    }
  }
  EXPECT_GE(call, 2);
  faults.reset();
  EXPECT_EQ(DbfFile::open(path, true)->recordCount(), 0U);
  EXPECT_TRUE(takesMemos(path));
}

TEST(NewMemoTable, DoesNotReplaceAMemoFileThatCannotBeRead) {
  DictionarySuite suite;
  suite.folder().write("NOTES.FPT", "short");
  EXPECT_FALSE(NewTable(kWithMemo, suite.file("NOTES.DBF")));
  EXPECT_THAT(suite.log(), HasSubstr("Error 3343"));
  EXPECT_EQ(suite.folder().read("NOTES.FPT"), "short");
  EXPECT_FALSE(suite.folder().exists("NOTES.DBF"));
}

}  // namespace
}  // namespace vantrelix
