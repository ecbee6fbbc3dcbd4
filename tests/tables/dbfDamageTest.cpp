// Damaged and lying headers of table files: each reads by its rule or is refused with its reason.
#include <gtest/gtest.h>

#include "tables/DamagedTables.h"

namespace vantrelix {
namespace {

using test::DamagedTables;
using test::failureOf;
using test::RawTable;
using test::valueOf;
using namespace std::string_literals;

TEST_F(DamagedTables, AFileWithoutAHeaderIsRefused) {
  EXPECT_TRUE(refusedFor("", "empty"));
  EXPECT_TRUE(refusedFor("\x03 10 bytes.", "less than a table's header"));
  EXPECT_TRUE(refusedFor(good.bytes().substr(0, 31), "31 bytes"));
}

TEST_F(DamagedTables, APictureOrATextIsRefused) {
  EXPECT_TRUE(refusedFor("\x89PNG\r\n\x1A\n" + std::string(200, 'x'), "no dBase or FoxPro table"));
  EXPECT_TRUE(refusedFor("\xFF\xD8\xFF" + std::string(200, 'x'), "no dBase or FoxPro table"));
  EXPECT_TRUE(refusedFor("C" + std::string(70000, 'x'), "no date in its header"));
  EXPECT_TRUE(refusedFor("0 12 13\n1 14 15\n" + std::string(90000, ' '), "no date in its header"));
}

TEST_F(DamagedTables, CompressedRowsBehindASoundHeaderAreRefused) {
  RawTable raw = good;
  raw.count = 100;
  raw.rows = "t\x06\xFC\x02 and so on, in much less room than a hundred rows need";
  EXPECT_TRUE(refusedFor(raw.bytes(), "compressed"));
  raw.rows = good.rows;
  EXPECT_EQ(opened(raw)->recordCount(), 2U);  // cut short, and yet rows
  raw.rows[0] = '\0';
  EXPECT_EQ(opened(raw)->recordCount(), 2U);
  raw.count = 2;
  raw.rows[0] = 't';
  EXPECT_EQ(opened(raw)->recordCount(), 2U);  // as long as the header says: a live row of an odd program
}

TEST_F(DamagedTables, AContainerOfADatabaseIsReadAsATable) {
  RawTable raw = good;
  raw.version = 0x30;
  raw.tableFlags = 0x04;
  raw.terminator = "\r" + std::string(263, '\0');
  EXPECT_EQ(valueOf(*opened(raw), 1, "A"), Value("def"));
}

TEST_F(DamagedTables, VersionsOfAnotherFormatAreRefusedByName) {
  const auto ofVersion = [&](int version) {
    RawTable raw = good;
    raw.version = version;
    return raw.bytes();
  };
  EXPECT_TRUE(refusedFor(ofVersion(0x02), "dBase II"));
  EXPECT_TRUE(refusedFor(ofVersion(0x04), "dBase 7"));
  EXPECT_TRUE(refusedFor(ofVersion(0x8C), "dBase 7"));
  EXPECT_TRUE(refusedFor(ofVersion(0xE5), "HiPer-Six"));
  EXPECT_TRUE(refusedFor(ofVersion(0x77), "0x77"));
}

TEST_F(DamagedTables, AllVersionsOfTheFamilyAreRead) {
  for (const int version : {0x03, 0x30, 0x31, 0x32, 0x43, 0x63, 0x83, 0x8B, 0xCB, 0xF5, 0xFB}) {
    RawTable raw = good;
    raw.version = version;
    const auto table = opened(raw);
    EXPECT_EQ(table->version(), version);
    EXPECT_EQ(valueOf(*table, 1, "N"), Value(2)) << version;
  }
}

TEST_F(DamagedTables, AHeaderLengthThatCannotBeIsRefused) {
  RawTable raw = good;
  raw.headerLength = 5000;
  EXPECT_TRUE(refusedFor(raw.bytes(), "5000"));
  raw.headerLength = 20;
  EXPECT_TRUE(refusedFor(raw.bytes(), "20"));
  raw.headerLength = 65;
  EXPECT_TRUE(refusedFor(raw.bytes(), "reach to byte 96"));
}

TEST_F(DamagedTables, AHeaderLongerThanItsFieldsIsRead) {
  RawTable raw = good;
  raw.terminator = "\r" + std::string(263, '\0');
  EXPECT_EQ(valueOf(*opened(raw), 1, "A"), Value("def"));
}

TEST_F(DamagedTables, AMissingOrOddTerminatorIsNoField) {
  RawTable raw = good;
  for (const std::string& terminator : {""s, "\n"s, " "s, "\0"s, "\0\r"s}) {
    raw.terminator = terminator;
    const auto table = opened(raw);
    EXPECT_EQ(table->fields().size(), 2U);
    EXPECT_EQ(valueOf(*table, 1, "A"), Value("def"));
  }
}

TEST_F(DamagedTables, ARecordLengthOfNoughtIsRefused) {
  RawTable raw = good;
  raw.recordLength = 0;
  EXPECT_TRUE(refusedFor(raw.bytes(), "0 bytes"));
}

TEST_F(DamagedTables, ARecordMayBeLongerThanItsFields) {
  RawTable raw = good;
  raw.recordLength = 10;
  raw.rows = " abc   1?? def   2??";
  const auto table = opened(raw);
  EXPECT_EQ(valueOf(*table, 1, "N"), Value(2));
  table->update(1, [&](unsigned char* record) { table->put(record, 1, 9); });
  EXPECT_NE(suite.folder().read("T.DBF").find(" def   9??"), std::string::npos);
}

TEST_F(DamagedTables, ARecordLengthThatIsTooShortGivesWayWhereTheFileShowsTheTrueOne) {
  RawTable raw = good;
  raw.recordLength = 7;
  const auto table = opened(raw);
  EXPECT_EQ(table->recordLength(), 8);
  EXPECT_EQ(valueOf(*table, 1, "A"), Value("def"));
  EXPECT_EQ(valueOf(*table, 1, "N"), Value(2));
  EXPECT_EQ(failureOf([&] { table->markDeleted(0); }).number(), failure::readOnlyTable);
}

TEST_F(DamagedTables, FieldsBeyondTheRecordAreCutWhereTheFileAgreesWithItsHeader) {
  RawTable raw = good;
  raw.recordLength = 6;
  raw.rows = " abc 1 def 2";
  const auto table = opened(raw);
  EXPECT_EQ(valueOf(*table, 1, "A"), Value("def"));
  EXPECT_EQ(valueOf(*table, 1, "N"), Value(2));
  raw.fields.push_back({"B", 'C', 9});
  EXPECT_TRUE(valueOf(*opened(raw), 0, "B").isNull());
}

// With a row more the file's size would fit the sum of the widths, and all rows would be read by that.
TEST_F(DamagedTables, FieldsBeyondTheRecordKeepATableFromBeingWritten) {
  RawTable raw = good;
  raw.recordLength = 6;
  raw.rows = " abc 1 def 2";
  const auto table = opened(raw);
  const std::vector<unsigned char> row = table->blankRecord();
  EXPECT_EQ(failureOf([&] { table->append(row.data()); }).number(), failure::readOnlyTable);
  EXPECT_EQ(failureOf([&] { table->markDeleted(0); }).number(), failure::readOnlyTable);
  EXPECT_EQ(table->recordCount(), 2U);
}

TEST_F(DamagedTables, ALongTextHasTheHighByteOfItsWidthInItsDecimals) {
  RawTable raw{.fields = {{"L", 'C', 44, 1}, {"B", 'C', 2}}, .count = 1, .recordLength = 303};
  raw.rows = " " + std::string(300, 'x') + "yz";
  const auto table = opened(raw);
  EXPECT_EQ(table->fields()[0].width, 300);
  EXPECT_EQ(table->fields()[0].decimals, 0);
  EXPECT_EQ(valueOf(*table, 0, "L"), Value(std::string(300, 'x')));
  EXPECT_EQ(valueOf(*table, 0, "B"), Value("yz"));
}

TEST_F(DamagedTables, DecimalsOfATextAreNothingWhereTheWidthsAreRight) {
  const auto table = opened({.fields = {{"A", 'C', 3, 2}}, .rows = " abc", .count = 1});
  EXPECT_EQ(table->fields()[0].width, 3);
  EXPECT_EQ(valueOf(*table, 0, "A"), Value("abc"));
}

TEST_F(DamagedTables, ANameEndsAtItsNulWhateverStandsBehind) {
  const auto table = opened({.fields = {{"A\0garbage"s, 'C', 3}}, .rows = " abc", .count = 1});
  EXPECT_EQ(table->fields()[0].name, "A");
  EXPECT_EQ(table->fieldIndex("a"), 0);
}

TEST_F(DamagedTables, ATableWithoutFieldsHasNone) {
  const auto table = opened(RawTable{});
  EXPECT_TRUE(table->fields().empty());
  EXPECT_EQ(table->recordCount(), 0U);
}

TEST_F(DamagedTables, DisplacementsDoNotCount) {
  std::string bytes = good.bytes();
  bytes[32 + 12] = '\x7F';
  bytes[64 + 13] = '\x7F';
  EXPECT_EQ(valueOf(*opened(bytes), 1, "N"), Value(2));
}

TEST_F(DamagedTables, ADateOfTheHeaderThatIsNoneIsMendedByTheNextChange) {
  std::string bytes = good.bytes();
  bytes[2] = 13;
  bytes[3] = 0;
  const auto table = opened(bytes);
  EXPECT_EQ(valueOf(*table, 1, "N"), Value(2));
  table->markDeleted(0);
  const DateTime today = platform::current().now();
  EXPECT_EQ(suite.folder().read("T.DBF")[2], static_cast<char>(today.month));
  EXPECT_EQ(suite.folder().read("T.DBF")[3], static_cast<char>(today.day));
}

TEST_F(DamagedTables, OfTwoFieldsWithOneNameTheFirstIsFound) {
  RawTable raw = good;
  raw.fields[1].name = "a";
  EXPECT_EQ(opened(raw)->fieldIndex("A"), 0);
}

}  // namespace
}  // namespace vantrelix
