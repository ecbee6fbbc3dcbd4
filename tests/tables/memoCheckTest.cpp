// Every kind of fault that a look through a table names of its memos.
#include <gtest/gtest.h>

#include "support/MeasuredPlatform.h"
#include "tables/MemoFile.h"
#include "tables/TableChecks.h"

namespace vantrelix {
namespace {

using test::RawTable;
using test::TableChecks;
using namespace std::string_literals;

class MemoChecks : public TableChecks {
 protected:
  // Three texts in blocks of 64 bytes: 8, 9 and 10 to 11.
  void writeMemo() {
    MemoFile::create(suite.file("T.FPT"));
    MemoFile memo(suite.file("T.FPT"), MemoKind::foxpro, platform::OpenMode::readWrite);
    for (const std::string& text : {"one"s, "two"s, std::string(100, 'x')}) memo.append(text);
  }
  static RawTable pointingTo(const std::string& first, const std::string& second, int version = 0xF5) {
    const auto field = [](const std::string& block) { return " " + std::string(10 - block.size(), ' ') + block; };
    return {.version = version, .fields = {{"M", 'M', 10}}, .rows = field(first) + field(second), .count = 2};
  }
};

TEST_F(MemoChecks, FindNothingWrongWithSoundMemos) {
  writeMemo();
  EXPECT_EQ(kinds(pointingTo("8", "10")), "");
  EXPECT_EQ(kinds(pointingTo("", "9")), "");
}

TEST_F(MemoChecks, NameAMissingMemoFileWhereATextIsInIt) {
  EXPECT_EQ(kinds(pointingTo("", "")), "");
  const TableCheck check = checked(pointingTo("", "9"));
  EXPECT_EQ(kindsOf(check), "memo_missing");
  EXPECT_EQ(firstOf(check, FaultKind::memoMissing).record, 1U);
  suite.folder().write("T.FPT", "short");
  EXPECT_EQ(kinds(pointingTo("", "9")), "memo_file");
}

TEST_F(MemoChecks, NamePointersAndBlocksThatLeadNowhere) {
  writeMemo();
  EXPECT_EQ(kinds(pointingTo("8", "9x")), "memo_pointer");
  EXPECT_EQ(kinds(pointingTo("8", "9999")), "memo_block");
  std::string memo = suite.folder().read("T.FPT");
  memo[9 * 64 + 4] = '\x7F';
  suite.folder().write("T.FPT", memo);
  const TableCheck check = checked(pointingTo("8", "9"));
  EXPECT_EQ(kindsOf(check), "memo_block");
  EXPECT_EQ(firstOf(check, FaultKind::memoBlock).record, 1U);
  EXPECT_EQ(firstOf(check, FaultKind::memoBlock).field, "M");
}

TEST_F(MemoChecks, NameRecordsThatShareAText) {
  writeMemo();
  EXPECT_NE(firstOf(checked(pointingTo("9", "9")), FaultKind::memoShared).text.find("also that of row 1"),
            std::string::npos);
  std::string memo = suite.folder().read("T.FPT");
  memo.replace(11 * 64, 8, "\0\0\0\1\0\0\0\1"s);
  suite.folder().write("T.FPT", memo);
  const TableCheck check = checked(pointingTo("10", "11"));
  EXPECT_EQ(kindsOf(check), "memo_shared");
  EXPECT_EQ(firstOf(check, FaultKind::memoShared).record, 1U);
}

TEST_F(MemoChecks, NameANextFreeBlockThatIsNotFree) {
  writeMemo();
  std::string memo = suite.folder().read("T.FPT");
  for (const int block : {0, 9, 11, 5000}) {
    memo[2] = static_cast<char>(block >> 8);
    memo[3] = static_cast<char>(block & 255);
    suite.folder().write("T.FPT", memo);
    EXPECT_EQ(kinds(pointingTo("8", "10")), "memo_next_free") << block;
  }
}

TEST_F(MemoChecks, FindNothingWrongWhileTextsAreAdded) {
  suite.folder().write("T.DBF", pointingTo("8", "10").bytes());
  test::MeasuredPlatform machine;
  machine.counted = "T.FPT";
  const platform::Substitute substitute(machine);
  int reads = 0;
  for (int addedAt = 1; addedAt == 1 || reads >= addedAt - 1; ++addedAt) {
    writeMemo();
    reads = 0;
    machine.onRead = [&] {
      if (++reads != addedAt) return;
      const platform::Substitute other(platform::operatingSystem());
      MemoFile(suite.file("T.FPT"), MemoKind::foxpro, platform::OpenMode::readWrite).append(std::string(1000, 'y'));
    };
    const TableCheck check = checkTable(suite.file("T.DBF"));
    for (const TableFault& fault : check.faults.kept()) ADD_FAILURE() << addedAt << ": " << fault.text;
    machine.onRead = nullptr;
  }
  EXPECT_GT(reads, 3);
}

TEST_F(MemoChecks, KnowTheMemosOfDBase) {
  for (const int version : {0x83, 0x8B}) {
    const MemoKind kind = version == 0x83 ? MemoKind::dbase3 : MemoKind::dbase4;
    MemoFile::create(suite.file("T.DBT"), kind, 512);
    MemoFile memo(suite.file("T.DBT"), kind, platform::OpenMode::readWrite);
    EXPECT_EQ(memo.append("one"), 1U);
    EXPECT_EQ(memo.append("two"), 2U);
    EXPECT_EQ(kinds(pointingTo("1", "2", version)), "");
    EXPECT_EQ(kinds(pointingTo("2", "2", version)), "memo_shared");
    EXPECT_EQ(kinds(pointingTo("1", "7", version)), "memo_block");
    platform::current().remove(suite.file("T.DBT"));
  }
}

}  // namespace
}  // namespace vantrelix
