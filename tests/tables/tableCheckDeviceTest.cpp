// Tables and memo files on a disk that does not give all of their bytes.
#include <gtest/gtest.h>

#include "tables/BadDisk.h"
#include "tables/MemoFile.h"
#include "tables/TableChecks.h"
#include "tables/TableRecoveries.h"

namespace vantrelix {
namespace {

using test::BadDisk;
using test::RawTable;
using test::TableChecks;

class TablesOnABadDisk : public TableChecks {
 protected:
  static constexpr int kRows = 1000;
  static constexpr std::uint64_t kHeader = 32 + 2 * 32 + 1;
  static constexpr std::uint64_t kLength = 8;

  static std::string rowOf(int number) {
    const std::string digits = std::to_string(number);
    return " abc" + std::string(4 - digits.size(), ' ') + digits;
  }
  void write(int count) {
    RawTable raw{.fields = {{"A", 'C', 3}, {"N", 'N', 4}}, .count = count};
    for (int row = 0; row < kRows; ++row) raw.rows += rowOf(row);
    suite.folder().write("T.DBF", raw.bytes());
  }
  // Bytes of rows 500 to 502, the outer ones in part.
  void breakTable() {
    disk.name = "T.DBF";
    disk.first = kHeader + 500 * kLength + 7;
    disk.end = kHeader + 502 * kLength + 1;
  }
  std::string savedRows() {
    const auto table = DbfFile::open(suite.file("NEW.DBF"), true);
    std::string all;
    table->scan([&](std::uint32_t, const unsigned char* row) {
      all.append(reinterpret_cast<const char*>(row), kLength);
      return true;
    });
    return all;
  }

  BadDisk disk;
};

TEST_F(TablesOnABadDisk, LoseOnlyTheRowsThatCannotBeRead) {
  std::string others;
  for (int row = 0; row < kRows; ++row) others += row >= 500 && row <= 502 ? "" : rowOf(row);
  for (const int count : {kRows, 10}) {
    write(count);
    breakTable();
    const platform::Substitute substitute(disk);
    const TableRecovery result = recoverTable(suite.file("T.DBF"), suite.file("NEW.DBF"));
    EXPECT_EQ(result.lostRows, 3U) << count;
    EXPECT_EQ(result.rows, kRows - 3U);
    EXPECT_EQ(result.behindCount, count == kRows ? 0U : kRows - 10U - 3U);
    EXPECT_EQ(savedRows(), others);
    EXPECT_GT(disk.failures, 0);
    platform::current().remove(suite.file("NEW.DBF"));
  }
}

TEST_F(TablesOnABadDisk, AreLookedThroughAroundIt) {
  write(kRows);
  breakTable();
  const platform::Substitute substitute(disk);
  const TableCheck check = checkTable(suite.file("T.DBF"));
  EXPECT_NE(kindsOf(check).find("unreadable"), std::string::npos);
  EXPECT_EQ(check.faults.totals().at(FaultKind::unreadable), 3U);
  EXPECT_EQ(firstOf(check, FaultKind::unreadable).record, 500U);
  EXPECT_EQ(firstOf(check, FaultKind::unreadable).offset, kHeader + 500 * kLength);
  EXPECT_EQ(check.rows, kRows - 3U);
}

TEST_F(TablesOnABadDisk, LoseNoMemoButThoseThatCannotBeRead) {
  MemoFile::create(suite.file("T.FPT"));
  {
    MemoFile memo(suite.file("T.FPT"), MemoKind::foxpro, platform::OpenMode::readWrite);
    for (const std::string& text : {std::string("one"), std::string(1000, 'x'), std::string("two")}) memo.append(text);
  }
  suite.folder().write(
      "T.DBF",
      RawTable{.version = 0xF5, .fields = {{"M", 'M', 10}}, .rows = "          8          9         25", .count = 3}
          .bytes());
  EXPECT_EQ(kindsOf(checkTable(suite.file("T.DBF"))), "");
  disk.name = "T.FPT";
  disk.first = 9 * 64 + 500;
  disk.end = disk.first + 10;
  const platform::Substitute substitute(disk);
  for (const bool cutsOff : {false, true}) {
    disk.cutsOff = cutsOff;
    const TableCheck check = checkTable(suite.file("T.DBF"));
    EXPECT_EQ(kindsOf(check), "memo_block");
    EXPECT_EQ(check.faults.totals().at(FaultKind::memoBlock), 1U);
    EXPECT_EQ(firstOf(check, FaultKind::memoBlock).record, 1U);
    EXPECT_EQ(firstOf(check, FaultKind::memoBlock).field, "M");
  }
  disk.cutsOff = false;
  const TableRecovery result = recoverTable(suite.file("T.DBF"), suite.file("NEW.DBF"));
  EXPECT_EQ(result.repairedValues, 1U);
  const auto table = DbfFile::open(suite.file("NEW.DBF"), true);
  EXPECT_EQ(test::valueOf(*table, 0, "M"), Value("one"));
  EXPECT_TRUE(test::valueOf(*table, 1, "M").isNull());
  EXPECT_EQ(test::valueOf(*table, 2, "M"), Value("two"));
}

}  // namespace
}  // namespace vantrelix
