// Damaged rows, values and memos of table files, and counts that are not theirs: each reads by its rule.
#include <gtest/gtest.h>

#include "tables/DamagedTables.h"

namespace vantrelix {
namespace {

using test::appendRow;
using test::DamagedTables;
using test::RawTable;
using test::recordOf;
using test::valueOf;
using namespace std::string_literals;

// --- Rows.

TEST_F(DamagedTables, ACountAboveTheFileIsCutToTheWholeRowsThereAre) {
  RawTable raw = good;
  raw.count = 1'000'000'000;
  raw.rows += " ab";
  const auto table = opened(raw);
  EXPECT_EQ(table->recordCount(), 2U);
  EXPECT_TRUE(recordOf(*table, 2).empty());
  int rows = 0;
  table->scan([&](std::uint32_t, const unsigned char*) { return ++rows > 0; });
  EXPECT_EQ(rows, 2);
}

TEST_F(DamagedTables, AnAppendToATableCutShortGoesBehindTheLastWholeRow) {
  RawTable raw = good;
  raw.count = 9;
  raw.rows += " ab";
  raw.end = "";
  const auto table = opened(raw);
  EXPECT_EQ(appendRow(*table, {"new", 3}), 2U);
  EXPECT_EQ(table->recordCount(), 3U);
  EXPECT_EQ(suite.folder().read("T.DBF").substr(97), " abc   1 def   2 new   3\x1A");
}

TEST_F(DamagedTables, RowsBeyondTheCountAreNotReadAndOverwritten) {
  RawTable raw = good;
  raw.count = 1;
  const auto table = opened(raw);
  EXPECT_EQ(table->recordCount(), 1U);
  appendRow(*table, {"new", 3});
  EXPECT_EQ(table->recordCount(), 2U);
  EXPECT_EQ(valueOf(*table, 1, "A"), Value("new"));
}

TEST_F(DamagedTables, TheEndMarkMayBeAbsentOrStandAmongTheRows) {
  RawTable raw = good;
  raw.end = "";
  EXPECT_EQ(opened(raw)->recordCount(), 2U);
  raw.rows = " a\x1A"s + "c   1\x1A"s + "def   2";
  const auto table = opened(raw);
  EXPECT_EQ(table->recordCount(), 2U);
  EXPECT_EQ(valueOf(*table, 0, "A"), Value("a\x1A"s + "c"));
  EXPECT_EQ(valueOf(*table, 1, "N"), Value(2));
}

TEST_F(DamagedTables, ARowIsLiveWhereItsDeletionByteIsNoAsterisk) {
  for (const char byte : {'\0', '\x1A', '\r', 'x'}) {
    RawTable raw = good;
    raw.rows[8] = byte;
    const auto table = opened(raw);
    EXPECT_EQ(table->recordCount(), 2U);
    table->update(1, [&](unsigned char* record) { table->put(record, 1, 9); });
    EXPECT_EQ(valueOf(*table, 1, "N"), Value(9));
  }
}

TEST_F(DamagedTables, BytesBehindTheEndMarkAreKeptUntilRowsNeedTheirPlace) {
  RawTable raw = good;
  raw.end = "\x1Aremains of former rows";
  const auto table = opened(raw);
  EXPECT_EQ(table->recordCount(), 2U);
  table->markDeleted(0);
  EXPECT_TRUE(suite.folder().read("T.DBF").ends_with("\x1Aremains of former rows"));
  appendRow(*table, {"new", 3});
  EXPECT_TRUE(
      suite.folder().read("T.DBF").ends_with(" new   3\x1A"
                                             "of former rows"));
}

TEST_F(DamagedTables, AFileThatShrinksWhileItIsOpenHasFewerRows) {
  const auto table = opened(good);
  EXPECT_EQ(table->recordCount(), 2U);
  suite.folder().write("T.DBF", good.bytes().substr(0, 97 + 8));
  EXPECT_TRUE(recordOf(*table, 1).empty());
  EXPECT_EQ(table->recordCount(), 1U);
}

// --- Values.

TEST_F(DamagedTables, NumbersOfAsterisksOrRubbishAreNull) {
  RawTable raw = good;
  raw.rows = " abc**** def1\0\0\0 ghi12x4"s;
  raw.count = 3;
  const auto table = opened(raw);
  EXPECT_TRUE(valueOf(*table, 0, "N").isNull());
  EXPECT_EQ(valueOf(*table, 1, "N"), Value(1));
  EXPECT_TRUE(valueOf(*table, 2, "N").isNull());
}

TEST_F(DamagedTables, ANulAmongDigitsMakesNoNumber) {
  RawTable raw = good;
  raw.rows.replace(4, 4, "1\0002 "s);
  EXPECT_TRUE(valueOf(*opened(raw), 0, "N").isNull());
}

TEST_F(DamagedTables, AFieldOfNoWidthIsNull) {
  const auto table = opened({.fields = {{"A", 'N', 0}, {"L", 'L', 0}, {"B", 'C', 2}}, .rows = " xy", .count = 1});
  EXPECT_TRUE(valueOf(*table, 0, "A").isNull());
  EXPECT_TRUE(valueOf(*table, 0, "L").isNull());
  EXPECT_EQ(valueOf(*table, 0, "B"), Value("xy"));
}

TEST_F(DamagedTables, EndMarksAndTerminatorsAmongTheDataAreBytesLikeOthers) {
  RawTable raw = good;
  raw.rows =
      " \r\x1A"
      "c   1 d\rf   2";
  const auto table = opened(raw);
  EXPECT_EQ(valueOf(*table, 0, "A"), Value("\r\x1A"
                                           "c"));
  EXPECT_EQ(valueOf(*table, 1, "N"), Value(2));
}

TEST_F(DamagedTables, AMemoPointerIntoNowhereIsNullWithItsReason) {
  suite.folder().write("T.DBT", std::string(512, '\0') + "text\x1A");
  const auto table =
      opened({.version = 0x83, .fields = {{"M", 'M', 10}}, .rows = "    9999999 xxxxxxxxxx          1", .count = 3});
  EXPECT_TRUE(valueOf(*table, 0, "M").isNull());
  EXPECT_NE(suite.log().find("9999999"), std::string::npos);
  EXPECT_TRUE(valueOf(*table, 1, "M").isNull());
  EXPECT_EQ(valueOf(*table, 2, "M"), Value("text"));
}

TEST_F(DamagedTables, TwoRecordsMayShareAMemo) {
  suite.folder().write("T.DBT", std::string(512, '\0') + "text\x1A");
  const auto table =
      opened({.version = 0x83, .fields = {{"M", 'M', 10}}, .rows = "          1          1", .count = 2});
  EXPECT_EQ(valueOf(*table, 0, "M"), Value("text"));
  EXPECT_EQ(valueOf(*table, 1, "M"), Value("text"));
}

}  // namespace
}  // namespace vantrelix
