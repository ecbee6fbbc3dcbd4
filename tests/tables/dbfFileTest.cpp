// A table file is made, its rows are added, changed, deleted and run over, and what cannot be done is refused.
#include <gtest/gtest.h>

#include "tables/DbfFiles.h"

namespace vantrelix {
namespace {

using test::appendRow;
using test::DbfFiles;
using test::failureOf;
using test::recordOf;
using test::valueOf;
using namespace std::string_literals;
using namespace std::string_view_literals;

TEST_F(DbfFiles, ANewTableHasTheHeaderThatOtherProgramsExpect) {
  DbfFile::create(path, kFields);
  const std::string file = bytes();
  ASSERT_EQ(file.size(), 32U + 4 * 32 + 2);
  EXPECT_EQ(file[0], 0x03);
  EXPECT_EQ(file[29], 0x03);
  EXPECT_EQ(file.substr(4, 8), "\0\0\0\0\xA1\0\x22\0"sv);
  EXPECT_EQ(file.substr(32, 18), "ATYPE_ID\0\0\0C\1\0\0\0\x0C\0"sv);
  EXPECT_EQ(file.substr(64, 18), "GAIN\0\0\0\0\0\0\0N\x0D\0\0\0\x0C\4"sv);
  EXPECT_EQ(file.substr(32 + 4 * 32), "\x0D\x1A");
}

TEST_F(DbfFiles, WhatIsAppendedReadsBack) {
  const auto table = made();
  EXPECT_EQ(appendRow(*table, {"A1", 12.5, true, Value(DateTime{2026, 11, 21})}), 0U);
  EXPECT_EQ(appendRow(*table, {"A2", Value(), false}), 1U);
  EXPECT_EQ(table->recordCount(), 2U);
  EXPECT_EQ(valueOf(*table, 0, "gain"), Value(12.5));
  EXPECT_EQ(valueOf(*table, 0, "Atype_Id"), Value("A1          "));
  EXPECT_EQ(valueOf(*table, 0, "MADE"), Value(DateTime{2026, 11, 21}));
  EXPECT_TRUE(valueOf(*table, 1, "GAIN").isNull());
  EXPECT_EQ(valueOf(*table, 1, "OK"), Value(false));
}

TEST_F(DbfFiles, AnAppendWritesRowEndMarkCountAndDate) {
  const auto table = made({{"A", 'C', 3, 0}});
  appendRow(*table, {"abc"});
  appendRow(*table, {"xyz"});
  const std::string file = bytes();
  EXPECT_EQ(file.substr(65), " abc xyz\x1A");
  EXPECT_EQ(file.substr(4, 4), "\2\0\0\0"sv);
  const DateTime today = platform::current().now();
  EXPECT_EQ(file[1], static_cast<char>(today.year - 1900));
  EXPECT_EQ(file[2], static_cast<char>(today.month));
  EXPECT_EQ(file[3], static_cast<char>(today.day));
}

TEST_F(DbfFiles, SeveralRowsGoInOneAppend) {
  const auto table = made({{"A", 'C', 3, 0}});
  const std::string rows = " one two six";
  EXPECT_EQ(table->append(reinterpret_cast<const unsigned char*>(rows.data()), 3), 0U);
  EXPECT_EQ(table->recordCount(), 3U);
  EXPECT_EQ(valueOf(*table, 2, "A"), Value("six"));
}

TEST_F(DbfFiles, AnUpdateChangesItsOwnBytesAndTheDateAlone) {
  const auto table =
      opened({.fields = {{"A", 'C', 3}, {"X", '7', 4}}, .rows = " abc\1\2\3\4 def\5\6\7\x08", .count = 2});
  const std::string before = bytes();
  table->update(1, [&](unsigned char* record) { table->put(record, 0, "new"); });
  std::string expected = before;
  expected.replace(expected.size() - 8, 3, "new");
  EXPECT_EQ(bytes().substr(4), expected.substr(4));
  EXPECT_NE(bytes().substr(1, 3), before.substr(1, 3));
}

TEST_F(DbfFiles, AnUpdateThatThrowsLeavesTheFileAsItIs) {
  const auto table = made({{"A", 'C', 3, 0}});
  appendRow(*table, {"abc"});
  const std::string before = bytes();
  const auto failure = failureOf([&] {
    table->update(0, [&](unsigned char* record) {
      record[1] = 'X';
      table->put(record, 0, "too long");
    });
  });
  EXPECT_EQ(failure.number(), failure::fieldTooSmall);
  EXPECT_EQ(bytes(), before);
}

TEST_F(DbfFiles, ADeletedOrMissingRecordCannotBeChanged) {
  const auto table = made({{"A", 'C', 3, 0}});
  appendRow(*table, {"abc"});
  table->markDeleted(0);
  EXPECT_EQ(recordOf(*table, 0).front(), '*');
  const auto change = [](unsigned char*) {};
  EXPECT_EQ(failureOf([&] { table->update(0, change); }).number(), failure::recordDeleted);
  EXPECT_EQ(failureOf([&] { table->update(1, change); }).number(), failure::recordDeleted);
  EXPECT_EQ(failureOf([&] { table->markDeleted(0); }).number(), failure::recordDeleted);
}

TEST_F(DbfFiles, AScanRunsOverAllRowsAndStopsWhereItIsTold) {
  const auto table = made({{"A", 'C', 200, 0}});
  const std::vector<unsigned char> blank = table->blankRecord();
  std::vector<unsigned char> rows;
  for (int i = 0; i < 5000; ++i) rows.insert(rows.end(), blank.begin(), blank.end());
  table->append(rows.data(), 5000);
  std::uint32_t next = 0;
  bool inOrder = true;
  table->scan([&](std::uint32_t number, const unsigned char* bytes) {
    inOrder = inOrder && number == next++ && bytes[0] == ' ';
    return true;
  });
  EXPECT_TRUE(inOrder);
  EXPECT_EQ(next, 5000U);
  int seen = 0;
  table->scan([&](std::uint32_t, const unsigned char*) { return ++seen < 7; });
  EXPECT_EQ(seen, 7);
}

TEST_F(DbfFiles, RowsThatAnotherOpeningAddsAreCounted) {
  const auto first = made({{"A", 'C', 3, 0}});
  const auto second = DbfFile::open(path);
  EXPECT_EQ(second->recordCount(), 0U);
  appendRow(*first, {"abc"});
  EXPECT_EQ(valueOf(*second, 0, "A"), Value("abc"));
  EXPECT_EQ(second->recordCount(), 1U);
}

TEST_F(DbfFiles, AMissingTableGives3011AndAFolder3051) {
  EXPECT_EQ(failureOf([&] { DbfFile::open(path); }).number(), failure::noSuchTable);
  EXPECT_EQ(failureOf([&] { DbfFile::open(suite.file("NO\\ANT.DBF")); }).number(), failure::noSuchTable);
  const auto failure = failureOf([&] { DbfFile::open(suite.path()); });
  EXPECT_EQ(failure.number(), failure::cannotOpen);
  EXPECT_NE(failure.description().find(suite.folder().machine()), std::string::npos);
}

TEST_F(DbfFiles, AFieldThatTheTableDoesNotHaveGives3265) {
  const auto table = made();
  auto record = table->blankRecord();
  EXPECT_EQ(table->fieldIndex("NO"), -1);
  EXPECT_EQ(failureOf([&] { table->value(record.data(), 4); }).number(), failure::noSuchField);
  EXPECT_EQ(failureOf([&] { table->put(record.data(), 99, "x"); }).number(), failure::noSuchField);
}

TEST_F(DbfFiles, ANameInAnotherCaseIsFound) {
  made();
  EXPECT_EQ(DbfFile::open(suite.file("ant.dbf"))->path(), path);
}

TEST_F(DbfFiles, ATableWithAStructuralIndexIsReadButNotChanged) {
  const auto table = opened({.fields = {{"A", 'C', 3}}, .rows = " abc", .count = 1, .tableFlags = 1});
  const std::string before = bytes();
  EXPECT_EQ(valueOf(*table, 0, "A"), Value("abc"));
  const auto failure = failureOf([&] { appendRow(*table, {"new"}); });
  EXPECT_EQ(failure.number(), failure::readOnlyTable);
  EXPECT_NE(failure.description().find("index"), std::string::npos);
  EXPECT_EQ(failureOf([&] { table->update(0, [](unsigned char*) {}); }).number(), failure::readOnlyTable);
  EXPECT_EQ(failureOf([&] { table->markDeleted(0); }).number(), failure::readOnlyTable);
  EXPECT_EQ(bytes(), before);
}

TEST_F(DbfFiles, ATableThatCountsItsRowsItselfTakesNoRows) {
  const auto table = opened({.version = 0x31, .fields = {{"ID", 'I', 4, 0, 0x0C}}, .rows = " \1\0\0\0"s, .count = 1});
  EXPECT_EQ(failureOf([&] { appendRow(*table, {2}); }).number(), failure::readOnlyTable);
  table->markDeleted(0);
  EXPECT_EQ(recordOf(*table, 0).front(), '*');
}

TEST_F(DbfFiles, FieldsThatTheFormatCannotHoldAreRefusedBeforeAnyFileIsTouched) {
  const auto number = [&](const std::vector<DbfNewField>& fields) {
    return failureOf([&] { DbfFile::create(path, fields); }).number();
  };
  EXPECT_EQ(number({{"ELEVEN_CHAR", 'C', 5, 0}}), failure::internalError);
  EXPECT_EQ(number({{"", 'C', 5, 0}}), failure::internalError);
  EXPECT_EQ(number({{"A", 'C', 5, 0}, {"a", 'N', 5, 0}}), failure::internalError);
  EXPECT_EQ(number({}), failure::internalError);
  EXPECT_EQ(number({{"A", 'X', 5, 0}}), failure::internalError);
  EXPECT_EQ(number({{"A", 'C', 255, 0}}), failure::fieldTooSmall);
  EXPECT_EQ(number({{"A", 'C', 0, 0}}), failure::fieldTooSmall);
  EXPECT_EQ(number({{"A", 'N', 5, 4}}), failure::fieldTooSmall);
  EXPECT_FALSE(suite.folder().exists("ANT.DBF"));
}

}  // namespace
}  // namespace vantrelix
