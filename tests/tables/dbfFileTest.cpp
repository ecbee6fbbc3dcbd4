#include <filesystem>
#include <gtest/gtest.h>

#include "platform/FaultPlatform.h"
#include "support/Processes.h"
#include "tables/DbfBytes.h"
#include "tables/DbfFile.h"

namespace vantrelix {
namespace {

using test::appendRow;
using test::failureOf;
using test::RawTable;
using test::recordOf;
using test::rowOf;
using test::valueOf;
using namespace std::string_literals;
using namespace std::string_view_literals;

const std::vector<DbfNewField> kFields = {
    {"ATYPE_ID", 'C', 12, 0}, {"GAIN", 'N', 12, 4}, {"OK", 'L', 1, 0}, {"MADE", 'D', 8, 0}};

class DbfFiles : public ::testing::Test {
 protected:
  std::shared_ptr<DbfFile> made(const std::vector<DbfNewField>& fields = kFields) {
    DbfFile::create(path, fields);
    return DbfFile::open(path);
  }
  std::shared_ptr<DbfFile> opened(const RawTable& raw) {
    suite.folder().write("ANT.DBF", raw.bytes());
    return DbfFile::open(path);
  }
  std::string bytes() { return suite.folder().read("ANT.DBF"); }

  test::TempSuite suite;
  const std::string path = suite.file("ANT.DBF");
};

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

TEST_F(DbfFiles, AWriteProtectedTableIsReadAndRefusesWrites) {
  appendRow(*made({{"A", 'C', 3, 0}}), {"abc"});
  std::filesystem::permissions(suite.folder().machine(), std::filesystem::perms::all);
  std::filesystem::permissions(suite.folder().machine("ANT.DBF"), std::filesystem::perms(0444));
  EXPECT_EQ(test::runWithoutPrivilege([&] {
              const auto table = DbfFile::open(path);
              const int number = failureOf([&] { table->markDeleted(0); }).number();
              const int denied = failureOf([&] { DbfFile::open(path, false, Sharing::denyWrite); }).number();
              return table->readOnly() && valueOf(*table, 0, "A") == Value("abc") && number == failure::readOnlyTable &&
                     denied == failure::cannotOpen;
            }),
            0);
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

TEST_F(DbfFiles, AnUnknownTypeIsLoggedOnceForItsFieldAndKept) {
  const auto table = opened({.fields = {{"A", 'C', 3}, {"ODD", '7', 2}}, .rows = " abcXY defZZ", .count = 2});
  EXPECT_TRUE(valueOf(*table, 0, "ODD").isNull());
  EXPECT_TRUE(valueOf(*table, 1, "ODD").isNull());
  const std::string log = suite.log();
  const std::size_t first = log.find("ODD");
  ASSERT_NE(first, std::string::npos);
  EXPECT_EQ(log.find("ODD", first + 1), std::string::npos);
  table->update(0, [&](unsigned char* record) { table->put(record, 0, "new"); });
  EXPECT_NE(bytes().find(" newXY"), std::string::npos);
}

TEST_F(DbfFiles, NullFlagsDecideWhatIsNull) {
  const auto table =
      opened({.version = 0x30,
              .fields = {{"A", 'C', 2, 0, 2}, {"B", 'C', 2}, {"V", 'V', 4, 0, 2}, {"_NullFlags", '0', 1, 0, 5}},
              .rows = "     abc\2\2     abcd\1     abc\3\6",
              .count = 3});
  EXPECT_EQ(valueOf(*table, 0, "A"), Value("  "));
  EXPECT_EQ(valueOf(*table, 0, "B"), Value("  "));
  EXPECT_EQ(valueOf(*table, 0, "V"), Value("ab"));
  EXPECT_TRUE(valueOf(*table, 1, "A").isNull());
  EXPECT_EQ(valueOf(*table, 1, "V"), Value("abcd"));
  EXPECT_TRUE(valueOf(*table, 2, "V").isNull());
  EXPECT_EQ(table->fieldIndex("_NullFlags"), -1);
  EXPECT_EQ(table->fields().size(), 4U);
}

TEST_F(DbfFiles, PuttingAValueMovesItsNullFlag) {
  const auto table =
      opened({.version = 0x30, .fields = {{"A", 'C', 2, 0, 2}, {"V", 'V', 4}, {"_NullFlags", '0', 1, 0, 5}}});
  appendRow(*table, {"x", "ab"});
  appendRow(*table, {Value(), "abcd"});
  EXPECT_EQ(valueOf(*table, 0, "A"), Value("x "));
  EXPECT_EQ(valueOf(*table, 0, "V"), Value("ab"));
  EXPECT_TRUE(valueOf(*table, 1, "A").isNull());
  EXPECT_EQ(valueOf(*table, 1, "V"), Value("abcd"));
}

TEST_F(DbfFiles, MemoTextsComeFromTheFileBesideTheTable) {
  suite.folder().write("ant.dbt", std::string(512, '\0') + "A long text\x1A");
  const auto table = opened(
      {.version = 0x83, .fields = {{"A", 'C', 2}, {"M", 'M', 10}}, .rows = " ab         1 cd          ", .count = 2});
  EXPECT_EQ(valueOf(*table, 0, "M"), Value("A long text"));
  EXPECT_TRUE(valueOf(*table, 1, "M").isNull());
  table->update(0, [&](unsigned char* record) { table->put(record, 0, "xy"); });
  EXPECT_EQ(valueOf(*table, 0, "M"), Value("A long text"));
  appendRow(*table, {"ab", "memo"});
  EXPECT_EQ(valueOf(*table, 2, "M"), Value("memo"));
  EXPECT_EQ(valueOf(*table, 0, "M"), Value("A long text"));
}

TEST_F(DbfFiles, AMissingMemoFileGivesNullAndOneLogRecord) {
  const auto table = opened({.version = 0xF5, .fields = {{"M", 'M', 10}}, .rows = "          8", .count = 1});
  EXPECT_TRUE(valueOf(*table, 0, "M").isNull());
  EXPECT_TRUE(valueOf(*table, 0, "M").isNull());
  EXPECT_NE(suite.log().find("memo file"), std::string::npos);
}

TEST_F(DbfFiles, ANewTableWithAMemoFieldHasItsFileBesideIt) {
  const auto table = made({{"A", 'C', 3, 0}, {"M", 'M', 10, 0}});
  EXPECT_EQ(table->version(), 0xF5);
  EXPECT_TRUE(suite.folder().exists("ANT.FPT"));
  appendRow(*table, {"abc"});
  EXPECT_TRUE(valueOf(*table, 0, "M").isNull());
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

TEST_F(DbfFiles, TextIsReadByTheMarkOfTheHeader) {
  const auto firstText = [&](int mark, const char* bytes) {
    return valueOf(*opened({.fields = {{"A", 'C', 1}}, .rows = bytes, .count = 1, .mark = mark}), 0, "A");
  };
  EXPECT_EQ(firstText(0x00, " \xE9"), Value("é"));
  EXPECT_EQ(firstText(0x01, " \x82"), Value("é"));
  EXPECT_EQ(firstText(0x02, " \xB5"), Value("Á"));
  EXPECT_EQ(firstText(0x64, " \x92"), Value("ĺ"));
  EXPECT_EQ(firstText(0x26, " \xAF"), Value("п"));
  EXPECT_EQ(firstText(0xC8, " \xE8"), Value("č"));
  EXPECT_EQ(firstText(0xC9, " \xFF"), Value("я"));
  EXPECT_EQ(firstText(0xCB, " \xE1"), Value("α"));
  EXPECT_EQ(firstText(0xCA, " \xFE"), Value("ş"));
}

TEST_F(DbfFiles, APartnerFileNamesTheCodePageWhereTheMarkDoesNot) {
  suite.folder().write("ANT.CPG", "UTF-8\r\n");
  const RawTable raw{.fields = {{"A", 'C', 5}}, .rows = " \xC3\xA9zzz", .count = 1, .mark = 0};
  auto table = opened(raw);
  EXPECT_EQ(valueOf(*table, 0, "A"), Value("ézzz"));
  EXPECT_EQ(table->cut("abcdé", 0), "abcd");
  appendRow(*table, {"ééx"});
  EXPECT_EQ(valueOf(*table, 1, "A"), Value("ééx"));
  suite.folder().write("ANT.CPG", "ANSI 1251");
  EXPECT_EQ(valueOf(*opened({.fields = {{"A", 'C', 1}}, .rows = " \xFF", .count = 1, .mark = 0}), 0, "A"), Value("я"));
}

TEST_F(DbfFiles, FieldNamesInUtf8MakeAnUnmarkedTableAUtf8Table) {
  const auto table = opened({.fields = {{"НОМЕР", 'C', 4}}, .rows = " \xD0\xAF  ", .count = 1, .mark = 0});
  EXPECT_EQ(table->fields().front().name, "НОМЕР");
  EXPECT_EQ(valueOf(*table, 0, "НОМЕР"), Value("Я  "));
}

TEST_F(DbfFiles, ACrashBetweenRowAndCountLeavesTheRowsThereWere) {
  appendRow(*made({{"A", 'C', 3, 0}}), {"abc"});
  for (const bool torn : {false, true}) {
    for (int call = 1; call <= 2; ++call) {
      platform::FaultPlatform fault(platform::current());
      const platform::Substitute substitute(fault);
      const auto table = DbfFile::open(path);
      fault.crashAt(call, torn);
      EXPECT_EQ(failureOf([&] { appendRow(*table, {"new"}); }).number(), failure::deviceIO);
      fault.reset();
      const auto again = DbfFile::open(path);
      EXPECT_EQ(again->recordCount(), 1U) << call;
      EXPECT_EQ(valueOf(*again, 0, "A"), Value("abc"));
    }
  }
  appendRow(*DbfFile::open(path), {"def"});
  EXPECT_EQ(bytes().substr(65, 9), " abc def\x1A");
}

TEST_F(DbfFiles, AFullDiskLeavesTheFileAsItWas) {
  appendRow(*made({{"A", 'C', 3, 0}}), {"abc"});
  const std::string before = bytes();
  platform::FaultPlatform fault(platform::current());
  const platform::Substitute substitute(fault);
  const auto table = DbfFile::open(path);
  fault.fillDiskAt(1);
  EXPECT_EQ(failureOf([&] { appendRow(*table, {"new"}); }).number(), failure::diskFull);
  EXPECT_EQ(bytes().size(), before.size());
  EXPECT_EQ(bytes().substr(4, 61), before.substr(4, 61));
  fault.reset();
  fault.failAt(2, failure::deviceIO);
  EXPECT_EQ(failureOf([&] { appendRow(*table, {"new"}); }).number(), failure::deviceIO);
  EXPECT_EQ(bytes(), before);
}

TEST_F(DbfFiles, AnInterruptedCreationLeavesTheOldTable) {
  appendRow(*made({{"A", 'C', 3, 0}}), {"abc"});
  const std::string before = bytes();
  platform::FaultPlatform fault(platform::current());
  const platform::Substitute substitute(fault);
  DbfFile::create(suite.file("COUNT.DBF"), kFields);
  const int calls = fault.calls();
  ASSERT_GE(calls, 2);
  fault.fillDiskAt(1);
  EXPECT_EQ(failureOf([&] { DbfFile::create(path, kFields); }).number(), failure::diskFull);
  EXPECT_EQ(bytes(), before);
}

}  // namespace
}  // namespace vantrelix
