// Every kind of fault that a look through a table names, each with its place.
#include <gtest/gtest.h>

#include "tables/TableChecks.h"

namespace vantrelix {
namespace {

using test::failureOf;
using test::RawTable;
using test::TableChecks;
using namespace std::string_literals;

std::string littleEndian(std::uint64_t value, int count) {
  std::string bytes;
  for (int i = 0; i < count; ++i) bytes += static_cast<char>(value >> (8 * i));
  return bytes;
}

TEST_F(TableChecks, ASoundTableHasNoFaultAndItsRowsCounted) {
  const TableCheck check = checked(good);
  EXPECT_EQ(kindsOf(check), "");
  EXPECT_EQ(check.version, 3);
  EXPECT_EQ(check.rows, 1U);
  EXPECT_EQ(check.deleted, 1U);
  DbfFile::create(suite.file("NEW.DBF"), {{"A", 'C', 3, 0}, {"M", 'M', 10, 0}});
  EXPECT_EQ(kindsOf(checkTable(suite.file("NEW.DBF"))), "");
}

TEST_F(TableChecks, ChangeNothing) {
  suite.folder().write("T.DBF", good.bytes() + "more");
  checkTable(suite.file("T.DBF"));
  EXPECT_EQ(suite.folder().read("T.DBF"), good.bytes() + "more");
}

TEST_F(TableChecks, FailWhereThereIsNoFile) {
  EXPECT_EQ(failureOf([&] { checkTable(suite.file("NONE.DBF")); }).number(), failure::noSuchTable);
}

TEST_F(TableChecks, WhatIsNoTableHasItsRefusalAsItsOnlyFault) {
  for (const std::string& content :
       {""s, "\x89PNG\r\n\x1A\n" + std::string(200, 'x'), "\x04" + good.bytes().substr(1)}) {
    const TableCheck check = checked(content);
    EXPECT_EQ(kindsOf(check), "refused");
    EXPECT_NE(firstOf(check, FaultKind::refused).text.find("T.DBF"), std::string::npos);
  }
  EXPECT_NE(firstOf(checked("\x8C" + good.bytes().substr(1)), FaultKind::refused).text.find("dBase 7"),
            std::string::npos);
}

TEST_F(TableChecks, GoOnBehindAHeaderThatIsRefused) {
  RawTable raw = good;
  raw.recordLength = 0;
  raw.rows[7] = 'x';
  const TableCheck check = checked(raw);
  EXPECT_EQ(kindsOf(check), "refused record_length number");
  EXPECT_NE(firstOf(check, FaultKind::refused).text.find("0 bytes"), std::string::npos);
  EXPECT_EQ(check.rows, 1U);
  EXPECT_EQ(check.deleted, 1U);
  raw = good;
  raw.headerLength = 5000;
  EXPECT_EQ(kinds(raw), "refused header_length");
  raw = good;
  raw.version = 0x77;
  EXPECT_EQ(kinds(raw), "refused");
}

TEST_F(TableChecks, NameADateOfTheHeaderThatIsNone) {
  std::string bytes = good.bytes();
  bytes[2] = 13;
  const TableCheck check = checked(bytes);
  EXPECT_EQ(kindsOf(check), "header_date");
  EXPECT_EQ(firstOf(check, FaultKind::headerDate).offset, 1U);
}

TEST_F(TableChecks, NameAHeaderLengthThatMissesTheRows) {
  RawTable raw = good;
  raw.headerLength = 101;
  const TableCheck check = checked(raw);
  EXPECT_EQ(kindsOf(check), "header_length");
  EXPECT_EQ(firstOf(check, FaultKind::headerLength).offset, 8U);
  EXPECT_EQ(check.deleted, 1U);
}

TEST_F(TableChecks, NameAMissingAndAnOddTerminator) {
  RawTable raw = good;
  raw.terminator = "";
  EXPECT_EQ(kinds(raw), "terminator");
  raw.terminator = "\n";
  EXPECT_NE(firstOf(checked(raw), FaultKind::terminator).text.find("0x0A"), std::string::npos);
  raw.terminator = "\r" + std::string(263, '\0');
  EXPECT_EQ(kinds(raw), "");
}

TEST_F(TableChecks, NameARecordLengthThatIsNotThatOfTheFields) {
  RawTable raw = good;
  raw.recordLength = 7;
  EXPECT_EQ(kinds(raw), "record_length");
  raw.recordLength = 10;
  raw.rows = " abc   1?? def   2??";
  EXPECT_EQ(kinds(raw), "record_length");
  raw.recordLength = 6;
  raw.rows = " abc 1 def 2";
  const TableCheck check = checked(raw);
  EXPECT_EQ(kindsOf(check), "record_length field_beyond_record");
  EXPECT_EQ(firstOf(check, FaultKind::fieldBeyond).field, "N");
}

TEST_F(TableChecks, NameFieldsWithOddNamesAndWidths) {
  RawTable raw = good;
  raw.fields[1].name = "a";
  EXPECT_NE(firstOf(checked(raw), FaultKind::fieldName).text.find("twice"), std::string::npos);
  raw.fields[1].name = "B\x01";
  EXPECT_EQ(kinds(raw), "field_name");
  raw.fields[1].name = "  ";
  EXPECT_NE(firstOf(checked(raw), FaultKind::fieldName).text.find("no name"), std::string::npos);
  const TableCheck check = checked({.fields = {{"Z", 'N', 0}, {"D", 'D', 10}}, .rows = " 20261121  ", .count = 1});
  EXPECT_EQ(kindsOf(check), "field_width");
  EXPECT_EQ(check.faults.totals().at(FaultKind::fieldWidth), 2U);
}

TEST_F(TableChecks, NameDisplacementsThatDisagreeWhereTheMakerWritesThem) {
  std::string bytes = good.bytes();
  bytes[64 + 12] = 9;  // an address of some memory, as old programs leave it
  EXPECT_EQ(kindsOf(checked(bytes)), "");
  bytes[32 + 12] = 1;
  const TableCheck check = checked(bytes);
  EXPECT_EQ(kindsOf(check), "displacement");
  EXPECT_EQ(firstOf(check, FaultKind::displacement).field, "N");
  EXPECT_EQ(firstOf(check, FaultKind::displacement).offset, 76U);
  bytes[64 + 12] = 4;
  EXPECT_EQ(kindsOf(checked(bytes)), "");
}

TEST_F(TableChecks, NameAnIndexThatIsNotThere) {
  RawTable raw = good;
  raw.tableFlags = 1;
  EXPECT_EQ(kinds(raw), "index_missing");
  suite.folder().write("T.CDX", "index");
  EXPECT_EQ(kinds(raw), "");
}

TEST_F(TableChecks, NameACountThatIsNotThatOfTheRows) {
  RawTable raw = good;
  raw.count = 5;
  EXPECT_NE(firstOf(checked(raw), FaultKind::countTooHigh).text.find("counts 5 rows, but only 2"), std::string::npos);
  EXPECT_EQ(kinds(raw), "count_too_high");
  raw.rows += " ab";
  EXPECT_EQ(kinds(raw), "count_too_high");
  raw = good;
  raw.count = 1;
  EXPECT_EQ(kinds(raw), "count_too_low");
  raw.count = 0;
  EXPECT_NE(firstOf(checked(raw), FaultKind::countTooLow).text.find("stand 2 more"), std::string::npos);
}

TEST_F(TableChecks, NameTheEndOfTheFile) {
  RawTable raw = good;
  raw.end = "";
  EXPECT_EQ(kinds(raw), "end_mark");
  raw.end = "?";
  EXPECT_EQ(kinds(raw), "end_mark");
  raw.end = "\x1Aold rows";
  const TableCheck check = checked(raw);
  EXPECT_EQ(kindsOf(check), "bytes_behind_end");
  EXPECT_EQ(firstOf(check, FaultKind::bytesBehind).offset, 97U + 16 + 1);
}

TEST_F(TableChecks, NameAnOddDeletionByte) {
  RawTable raw = good;
  raw.rows[8] = '\x1A';
  const TableCheck check = checked(raw);
  EXPECT_EQ(kindsOf(check), "deletion_byte");
  EXPECT_EQ(firstOf(check, FaultKind::deletionByte).record, 1U);
  EXPECT_EQ(firstOf(check, FaultKind::deletionByte).offset, 97U + 8);
}

TEST_F(TableChecks, NameNumbersThatAreNone) {
  const TableFault fault = faultOfValue('N', 4, "12x4", FaultKind::number);
  EXPECT_EQ(fault.offset, 1U + 2);
  EXPECT_NE(fault.text.find("Row 1"), std::string::npos);
  EXPECT_NE(fault.text.find("\"12x4\""), std::string::npos);
  faultOfValue('F', 4, "1,25", FaultKind::number);
  faultOfValue('N', 4, "1 25", FaultKind::number);
  faultOfValue('N', 4, " ***", FaultKind::asterisks);
  EXPECT_EQ(faultOfValue('N', 4, "1\0\0\0"s, FaultKind::numberNul).offset, 1U + 1);
  for (const char* bytes : {"    ", "1.5 ", "-1E3", "  . ", "0 . "}) EXPECT_TRUE(isSound('N', 4, bytes)) << bytes;
}

TEST_F(TableChecks, NameDatesAndTruthValuesThatAreNone) {
  for (const char* bytes : {"00000000", "20260230", "NotAYear"}) faultOfValue('D', 8, bytes, FaultKind::date);
  EXPECT_TRUE(isSound('D', 8, "        "));
  faultOfValue('L', 1, "x", FaultKind::logical);
  for (const char* bytes : {"T", "t", "Y", "y", "F", "f", "N", "n", "?", " "}) EXPECT_TRUE(isSound('L', 1, bytes));
}

TEST_F(TableChecks, NameBinaryValuesThatAreNone) {
  faultOfValue('T', 8, littleEndian(99999999, 4) + littleEndian(0, 4), FaultKind::dateTime);
  faultOfValue('T', 8, littleEndian(2461366, 4) + littleEndian(90000000, 4), FaultKind::dateTime);
  EXPECT_TRUE(isSound('T', 8, littleEndian(2461366, 4) + littleEndian(86399600, 4)));
  EXPECT_TRUE(isSound('T', 8, littleEndian(0, 8)));
  faultOfValue('B', 8, "\0\0\0\0\0\0\xF8\x7F"s, FaultKind::realNumber);
  EXPECT_TRUE(isSound('I', 4, "\xFF\xFF\xFF\x7F"));
}

TEST_F(TableChecks, NameTextsOfAnotherCodePageAndMarksWithin) {
  EXPECT_EQ(faultOfValue('C', 4, "ab\x81\x82", FaultKind::textBytes).offset, 1U + 2);
  EXPECT_TRUE(isSound('C', 4, "ab\xE4 "));
  EXPECT_EQ(faultOfValue('C', 4, "ab\x1A ", FaultKind::markInText).offset, 1U + 2);
  suite.folder().write("T.CPG", "UTF-8");
  RawTable raw{.fields = {{"V", 'C', 4}}, .rows = " ab\xE4 ", .count = 1, .mark = 0};
  EXPECT_EQ(kinds(raw), "text_bytes");
  raw.rows = " ab\xC3\xA4";
  EXPECT_EQ(kinds(raw), "");
  raw = {.version = 0x30, .fields = {{"V", 'C', 4, 0, 4}}, .rows = " ab\x81\x1A", .count = 1};
  EXPECT_EQ(kinds(raw), "") << "a field of bytes has no code page";
}

TEST_F(TableChecks, NameAVaryingTextThatClaimsMoreThanItsField) {
  RawTable raw{
      .version = 0x30, .fields = {{"V", 'V', 4}, {"_NullFlags", '0', 1, 0, 1}}, .rows = " abc\x09\x01", .count = 1};
  EXPECT_EQ(kinds(raw), "text_length");
  raw.rows = " abc\x03\x01";
  EXPECT_EQ(kinds(raw), "");
}

TEST_F(TableChecks, KeepTwentyFaultsOfAKindAndCountAll) {
  RawTable raw{.fields = {{"N", 'N', 1}, {"L", 'L', 1}}};
  raw.count = 1000;
  for (int i = 0; i < raw.count; ++i) raw.rows += i == 999 ? " 1x" : " xT";
  const TableCheck check = checked(raw);
  EXPECT_EQ(check.faults.totals().at(FaultKind::number), 999U);
  EXPECT_EQ(check.faults.totals().at(FaultKind::logical), 1U);
  EXPECT_EQ(check.faults.kept().size(), 21U);
  EXPECT_EQ(check.faults.kept().back().record, 999U);
}

}  // namespace
}  // namespace vantrelix
