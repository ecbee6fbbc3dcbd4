// What is saved of a table for each kind of damage.
#include <gtest/gtest.h>

#include "tables/TableRecoveries.h"

namespace vantrelix {
namespace {

using test::failureOf;
using test::RawTable;
using test::TableRecoveries;
using test::valueOf;
using namespace std::string_literals;

TEST_F(TableRecoveries, OfASoundTableKeepEverything) {
  RawTable raw = good;
  raw.version = 0x30;
  raw.mark = 0xC8;
  raw.terminator = "\r" + std::string(263, '\0');
  const TableRecovery result = recovered(raw);
  EXPECT_EQ(result.rows, 2U);
  EXPECT_EQ(result.deleted, 1U);
  EXPECT_EQ(result.behindCount, 0U);
  EXPECT_EQ(result.repairedValues, 0U);
  EXPECT_EQ(result.lostRows, 0U);
  EXPECT_TRUE(result.faults.empty());
  EXPECT_EQ(rows(), goodRows);
  const auto table = DbfFile::open(suite.file("NEW.DBF"));
  EXPECT_EQ(table->version(), 0x30);
  EXPECT_EQ(table->codePage().number(), 1250);
  EXPECT_EQ(table->fields()[1].name, "N");
  EXPECT_EQ(table->fields()[1].width, 4);
}

TEST_F(TableRecoveries, WriteOverNothing) {
  suite.folder().write("T.DBF", good.bytes());
  suite.folder().write("NEW.DBF", "mine");
  const RunTimeFailure failure = failureOf([&] { recoverTable(suite.file("T.DBF"), suite.file("NEW.DBF")); });
  EXPECT_EQ(failure.number(), failure::fileExists);
  EXPECT_NE(failure.description().find("NEW.DBF"), std::string::npos);
  EXPECT_EQ(suite.folder().read("NEW.DBF"), "mine");
  EXPECT_EQ(failureOf([&] { recoverTable(suite.file("T.DBF"), suite.file("T.DBF")); }).number(), failure::fileExists);
  EXPECT_EQ(suite.folder().read("T.DBF"), good.bytes());
}

TEST_F(TableRecoveries, AreRefusedWhereNoSenseCanBeMade) {
  for (const std::string& content :
       {""s, "\x89PNG\r\n\x1A\n" + std::string(200, 'x'), "\x04" + good.bytes().substr(1), RawTable{}.bytes()}) {
    suite.folder().write("T.DBF", content);
    EXPECT_EQ(failureOf([&] { recoverTable(suite.file("T.DBF"), suite.file("NEW.DBF")); }).number(),
              failure::damagedTable);
    EXPECT_FALSE(suite.folder().exists("NEW.DBF"));
  }
}

TEST_F(TableRecoveries, FindTheRowsBehindAWrongHeaderLength) {
  for (const int length : {0, 20, 65, 90, 101, 5000, 65535}) {
    RawTable raw = good;
    raw.headerLength = length;
    EXPECT_EQ(rowsSaved(raw), goodRows) << length;
  }
}

TEST_F(TableRecoveries, FindTheRowsOfAWrongRecordLength) {
  for (const int length : {0, 1, 7, 9, 4000}) {
    RawTable raw = good;
    raw.recordLength = length;
    EXPECT_EQ(rowsSaved(raw), goodRows) << length;
  }
}

TEST_F(TableRecoveries, KeepWhatStandsBehindTheLastField) {
  RawTable raw = good;
  raw.recordLength = 10;
  raw.rows = " abc   1??*def   2?? ghi   3??";
  EXPECT_EQ(rowsSaved(raw), raw.rows);
  EXPECT_EQ(valueOf(*DbfFile::open(suite.file("NEW.DBF")), 0, "REST1"), Value("??"));
}

TEST_F(TableRecoveries, ReadATableOfAnUnknownVersion) {
  RawTable raw = good;
  raw.version = 0x77;
  EXPECT_EQ(rowsSaved(raw), goodRows);
  EXPECT_EQ(DbfFile::open(suite.file("NEW.DBF"))->version(), 0x03);
  raw.fields[0] = {"I", 'I', 4};
  raw.rows = " \1\0\0\0   7"s;
  raw.count = 1;
  EXPECT_EQ(rowsSaved(raw), raw.rows);
  EXPECT_EQ(DbfFile::open(suite.file("NEW.DBF"))->version(), 0x30);
}

TEST_F(TableRecoveries, ReadATableWithoutATerminator) {
  for (const std::string& terminator : {""s, "\n"s, "\0"s}) {
    RawTable raw = good;
    raw.terminator = terminator;
    EXPECT_EQ(rowsSaved(raw), goodRows);
  }
}

TEST_F(TableRecoveries, TellTheRowsThatAreLost) {
  RawTable raw = good;
  raw.count = 5;
  raw.rows += " xy";
  raw.end = "";
  const TableRecovery result = recovered(raw);
  EXPECT_EQ(rows(), goodRows);
  EXPECT_EQ(result.lostRows, 2U);
  EXPECT_TRUE(result.faults.totals().contains(FaultKind::countTooHigh));
}

TEST_F(TableRecoveries, TakeACountThatNoFileCouldHoldForNothing) {
  RawTable raw = good;
  raw.count = -2;
  const TableRecovery result = recovered(raw);
  EXPECT_EQ(rows(), goodRows);
  EXPECT_EQ(result.lostRows, 0U);
}

TEST_F(TableRecoveries, SaveTheRowsBehindTheCount) {
  RawTable raw = good;
  raw.count = 1;
  TableRecovery result = recovered(raw);
  EXPECT_EQ(rows(), goodRows);
  EXPECT_EQ(result.rows, 2U);
  EXPECT_EQ(result.deleted, 1U);
  EXPECT_EQ(result.behindCount, 2U);
  raw.count = 0;
  EXPECT_EQ(rowsSaved(raw), goodRows);
}

TEST_F(TableRecoveries, SaveNothingBehindTheCountThatIsNoRow) {
  RawTable raw = good;
  raw.rows += " xyz12x4 xyz   9";
  EXPECT_EQ(rowsSaved(raw), goodRows + " xyz     xyz   9") << "an odd value makes no other thing of a row";
  raw.rows = goodRows +
             "\x1A"
             "xyz   4";
  EXPECT_EQ(rowsSaved(raw), goodRows) << "an end mark";
  raw.rows = goodRows + std::string(800, ' ');
  EXPECT_EQ(rowsSaved(raw), goodRows) << "nothing but blanks";
  raw.rows = goodRows + std::string(8, ' ') + " xyz   4" + std::string(800, '\0');
  EXPECT_EQ(rowsSaved(raw), goodRows + std::string(8, ' ') + " xyz   4") << "a blank row before another";
}

TEST_F(TableRecoveries, MakeBlankWhatIsNoValueAndCountIt) {
  RawTable raw{.fields = {{"N", 'N', 4}, {"D", 'D', 8}, {"L", 'L', 1}, {"C", 'C', 3}}, .count = 4};
  raw.rows = " ****00000000xa\x1A"s + "c" + " 12x420261121Tabc" + " 1\0\0\0        ?\0\0\0"s + "x   1        Fxyz";
  const TableRecovery result = recovered(raw);
  EXPECT_EQ(rows(), "                 "s.replace(14, 3, "a c") + "     20261121Tabc" + " 1           ?\0\0\0"s +
                        "    1        Fxyz");
  EXPECT_EQ(result.repairedValues, 7U);
  EXPECT_EQ(result.rows, 4U);
}

TEST_F(TableRecoveries, KeepTextsOfAnotherCodePage) {
  RawTable raw = good;
  raw.rows[1] = '\x81';
  suite.folder().write("T.DBF", raw.bytes());
  const TableRecovery result = recoverTable(suite.file("T.DBF"), suite.file("NEW.DBF"));
  EXPECT_EQ(rows(), raw.rows);
  EXPECT_EQ(result.repairedValues, 0U);
}

TEST_F(TableRecoveries, KeepTheFileThatNamesTheCodePage) {
  suite.folder().write("T.CPG", "UTF-8");
  RawTable raw = good;
  raw.mark = 0;
  raw.rows.replace(1, 3, "\xC3\xA4x");
  recovered(raw);
  EXPECT_EQ(valueOf(*DbfFile::open(suite.file("NEW.DBF")), 0, "A"), Value("äx"));
}

TEST_F(TableRecoveries, LoseRowsThatWereNeverWritten) {
  RawTable raw = good;
  raw.rows.replace(8, 8, std::string(8, '\0'));
  const TableRecovery result = recovered(raw);
  EXPECT_EQ(rows(), " abc   1 ghi   3");
  EXPECT_EQ(result.lostRows, 1U);
}

TEST_F(TableRecoveries, GiveFieldsNamesAndWidthsOfTheirOwn) {
  const RawTable raw{
      .fields = {{"A", 'C', 2}, {"a", 'C', 2}, {"\x01", 'C', 1}, {"  ", 'C', 1}, {"Z", 'N', 0}, {"D", 'D', 10}},
      .rows = " aabbcd20261121  ",
      .count = 1};
  recovered(raw);
  const auto table = DbfFile::open(suite.file("NEW.DBF"));
  std::string names;
  for (const DbfField& field : table->fields()) names += field.name + " ";
  EXPECT_EQ(names, "A a_2 _ FIELD4 Z D ");
  EXPECT_EQ(rows(), " aabbcd 20261121");
  EXPECT_TRUE(valueOf(*table, 0, "Z").isNull());
  EXPECT_EQ(valueOf(*table, 0, "D"), Value(DateTime{2026, 11, 21}));
}

TEST_F(TableRecoveries, CountWhatAColumnOfAnImpossibleWidthHeld) {
  const RawTable raw{.version = 0x30,
                     .fields = {{"D", 'D', 6}, {"I", 'I', 2}, {"K", 'C', 1}},
                     .rows = " 261121\1\0a"s + "       \0\0b"s + "       \7\0c"s,
                     .count = 3};
  const TableRecovery result = recovered(raw);
  EXPECT_EQ(result.repairedValues, 3U);
  const auto table = DbfFile::open(suite.file("NEW.DBF"));
  EXPECT_TRUE(valueOf(*table, 0, "D").isNull());
  EXPECT_EQ(valueOf(*table, 2, "K"), Value("c"));
}

TEST_F(TableRecoveries, KeepLongTextsAndFieldsCutByTheRecord) {
  const RawTable longText{.fields = {{"L", 'C', 44, 1}, {"B", 'C', 2}},
                          .rows = " " + std::string(300, 'x') + "yz",
                          .count = 1,
                          .recordLength = 303};
  EXPECT_EQ(rowsSaved(longText), longText.rows);
  EXPECT_EQ(DbfFile::open(suite.file("NEW.DBF"))->fields()[0].width, 300);
  RawTable cut = good;
  cut.recordLength = 6;
  cut.rows = " abc 1*def 2";
  cut.count = 2;
  EXPECT_EQ(rowsSaved(cut), " abc 1  *def 2  ");
}

TEST_F(TableRecoveries, KeepNullsAndTheCounterOfAField) {
  RawTable raw{.version = 0x30,
               .fields = {{"A", 'C', 3, 0, 2}, {"B", 'B', 8, 0, 2}, {"V", 'V', 4}, {"_NullFlags", '0', 1, 0, 1}},
               .count = 2};
  raw.rows =
      "    \0\0\0\0\0\0\xF8\x7F"
      "abc\3\5"s +
      " abc\0\0\0\0\0\0\0\0abc\x09\4"s;
  const TableRecovery result = recovered(raw);
  EXPECT_EQ(result.repairedValues, 2U);
  const auto table = DbfFile::open(suite.file("NEW.DBF"));
  EXPECT_TRUE(valueOf(*table, 0, "A").isNull());
  EXPECT_TRUE(valueOf(*table, 0, "B").isNull());
  EXPECT_EQ(valueOf(*table, 0, "V"), Value("abc"));
  EXPECT_EQ(valueOf(*table, 1, "A"), Value("abc"));
  EXPECT_EQ(valueOf(*table, 1, "V"), Value("abc"));
}

TEST_F(TableRecoveries, NeedNoIndex) {
  RawTable raw = good;
  raw.tableFlags = 1;
  recovered(raw);
  const auto table = DbfFile::open(suite.file("NEW.DBF"));
  table->markDeleted(0);
  EXPECT_EQ(table->recordCount(), 3U);
}

}  // namespace
}  // namespace vantrelix
