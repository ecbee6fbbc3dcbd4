// What is saved of a table whose list of fields is damaged: every byte of its rows.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tables/MemoFile.h"
#include "tables/TableRecoveries.h"

namespace vantrelix {
namespace {

using test::RawTable;
using test::TableRecoveries;
using test::valueOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using namespace std::string_literals;

class RecoveredFields : public TableRecoveries {
 protected:
  static constexpr std::size_t kFields = 10;

  static std::size_t descriptor(std::size_t field) { return 32 + 32 * field; }
  static RawTable tenFields() {
    RawTable raw{.count = 3};
    for (std::size_t field = 0; field < kFields; ++field)
      raw.fields.push_back({"NAME" + std::to_string(field), field % 3 == 1 ? 'N' : 'C', 4});
    for (const char mark : {' ', '*', ' '}) {
      raw.rows += mark;
      for (std::size_t field = 0; field < kFields; ++field)
        raw.rows += (field % 3 == 1 ? " 1." : "ab ") + std::to_string(field);
    }
    return raw;
  }
  std::vector<std::string> names() {
    std::vector<std::string> found;
    const auto table = DbfFile::open(suite.file("NEW.DBF"), true);
    for (const DbfField& field : table->fields()) found.push_back(field.name);
    return found;
  }
  TableRecovery recoveredAnew(const std::string& content) {
    suite.folder().write("NEW.DBF", "");
    platform::current().remove(suite.file("NEW.DBF"));
    return recovered(content);
  }
  static std::string textOf(const FaultList& faults, FaultKind kind) {
    for (const TableFault& fault : faults.kept()) {
      if (fault.kind == kind) return fault.text;
    }
    return "";
  }
  TableCheck check() { return checkTable(suite.file("T.DBF")); }
};

TEST_F(RecoveredFields, GoOnBehindANameThatLostItsFirstCharacter) {
  const RawTable raw = tenFields();
  for (const char byte : {'\0', '\r'}) {
    for (std::size_t field = 0; field < kFields; ++field) {
      std::string content = raw.bytes();
      content[descriptor(field)] = byte;
      const TableRecovery result = recoveredAnew(content);
      EXPECT_EQ(rows(), raw.rows) << field;
      EXPECT_EQ(result.rows, 2U);
      EXPECT_EQ(result.deleted, 1U);
      EXPECT_EQ(result.repairedValues, 0U);
      std::vector<std::string> expected;
      for (const auto& described : raw.fields) expected.push_back(described.name);
      expected[field] = "_AME" + std::to_string(field);
      EXPECT_EQ(names(), expected);
      EXPECT_THAT(textOf(result.faults, FaultKind::fieldName), HasSubstr("number " + std::to_string(field + 1) + " "));
      const TableFault fault = check().faults.kept().back();
      EXPECT_EQ(fault.kind, FaultKind::fieldName);
      EXPECT_EQ(fault.offset, descriptor(field));
    }
  }
}

TEST_F(RecoveredFields, GoOnBehindSeveralSuchNamesAndInSpiteOfOddValues) {
  RawTable raw = tenFields();
  for (std::size_t row = 0; row < 3; ++row)
    for (const std::size_t field : {4U, 7U}) raw.rows.replace(row * 41 + 1 + field * 4, 4, "****");
  std::string content = raw.bytes();
  for (const std::size_t field : {2U, 3U, 8U}) content[descriptor(field)] = '\0';
  EXPECT_EQ(recoveredAnew(content).repairedValues, 6U);
  EXPECT_EQ(names().size(), kFields);
}

TEST_F(RecoveredFields, GetNamesThatNoOtherHas) {
  RawTable raw = tenFields();
  raw.fields[7].name = "FIELD5";
  raw.fields[8].name = "_AME2";
  std::string content = raw.bytes();
  content[descriptor(2)] = '\0';
  content.replace(descriptor(4), 11, std::string(11, '\0'));
  recoveredAnew(content);
  EXPECT_EQ(rows(), raw.rows);
  EXPECT_THAT(names(), ElementsAre("NAME0", "NAME1", "_AME2", "NAME3", "FIELD5_2", "NAME5", "NAME6", "FIELD5",
                                   "_AME2_2", "NAME9"));
}

TEST_F(RecoveredFields, OfNoTypeKeepTheirBytes) {
  RawTable raw = tenFields();
  raw.rows.replace(1 + 4 * 4, 4, "\0\x1A\x81x"s);
  std::string content = raw.bytes();
  content[descriptor(4) + 11] = '\x02';
  const TableRecovery result = recoveredAnew(content);
  EXPECT_EQ(rows(), raw.rows);
  EXPECT_EQ(names().size(), kFields);
  EXPECT_EQ(result.repairedValues, 0U);
  EXPECT_THAT(textOf(result.faults, FaultKind::fieldType), HasSubstr("NAME4"));
  EXPECT_EQ(DbfFile::open(suite.file("NEW.DBF"))->fields()[4].type, 'C');
}

TEST_F(RecoveredFields, BehindADescriptionThatIsLostComeAsARest) {
  RawTable raw = tenFields();
  raw.rows.replace(1 + 6 * 4, 4, "\0\x1A\x81x"s);
  std::string content = raw.bytes();
  content.replace(descriptor(4), 32, std::string(32, '\0'));
  const TableRecovery result = recoveredAnew(content);
  EXPECT_EQ(rows(), raw.rows);
  EXPECT_THAT(names(), ElementsAre("NAME0", "NAME1", "NAME2", "NAME3", "REST1"));
  EXPECT_EQ(result.deleted, 1U);
  EXPECT_EQ(result.repairedValues, 0U);
  EXPECT_THAT(textOf(result.faults, FaultKind::recordLength), HasSubstr("the 24 bytes behind the last field"));
  const std::string once = suite.folder().read("NEW.DBF");
  EXPECT_EQ(rowsSaved(once), raw.rows);
  EXPECT_EQ(suite.folder().read("NEW.DBF"), once);
}

TEST_F(RecoveredFields, OfALongRestAreAsManyAsItNeeds) {
  const std::string rest = std::string(300, 'x') + std::string(300, '\x1A');
  const RawTable raw{.fields = {{"REST2", 'C', 1}}, .rows = " a" + rest + "*b" + rest, .count = 2, .recordLength = 602};
  recovered(raw);
  EXPECT_EQ(rows(), raw.rows);
  EXPECT_THAT(names(), ElementsAre("REST2", "REST1", "REST2_2", "REST3"));
  const auto table = DbfFile::open(suite.file("NEW.DBF"));
  EXPECT_EQ(table->fields()[1].width, 254);
  EXPECT_EQ(table->fields()[3].width, 92);
}

TEST_F(RecoveredFields, GetNoRestWhereThereIsNoRow) {
  recovered(RawTable{.fields = {{"A", 'C', 3}}, .recordLength = 9});
  EXPECT_THAT(names(), ElementsAre("A"));
}

TEST_F(RecoveredFields, KeepTheirNullsBehindADamagedName) {
  const RawTable raw{.version = 0x30,
                     .fields = {{"A", 'C', 3, 0, 2}, {"B", 'B', 8, 0, 2}, {"V", 'V', 4}, {"_NullFlags", '0', 1, 0, 1}},
                     .rows = "    \0\0\0\0\0\0\0\0abc\3\5"s + "*abc\0\0\0\0\0\0\0\0abcd\2"s,
                     .count = 2,
                     .terminator = "\r" + std::string(263, '\0')};
  for (std::size_t field = 0; field < 4; ++field) {
    for (const std::size_t lost : {1U, 11U}) {
      std::string content = raw.bytes();
      content.replace(descriptor(field), lost, std::string(lost, '\0'));
      EXPECT_EQ(recoveredAnew(content).repairedValues, 0U);
      EXPECT_EQ(rows(), raw.rows);
      const auto table = DbfFile::open(suite.file("NEW.DBF"));
      ASSERT_EQ(table->fields().size(), 4U);
      EXPECT_TRUE(table->fields()[3].system);
      EXPECT_EQ(table->fields()[3].name, "_NullFlags");
      EXPECT_TRUE(table->value(test::recordOf(*table, 0).data(), 0).isNull());
      EXPECT_EQ(table->value(test::recordOf(*table, 0).data(), 2), Value("abc"));
      EXPECT_EQ(table->value(test::recordOf(*table, 1).data(), 2), Value("abcd"));
    }
  }
  std::string content = raw.bytes();
  content[descriptor(0) + 11] = '\2';
  recoveredAnew(content);
  EXPECT_EQ(rows(), raw.rows) << "a field of no type";
  const auto table = DbfFile::open(suite.file("NEW.DBF"));
  EXPECT_TRUE(table->value(test::recordOf(*table, 0).data(), 0).isNull());
  EXPECT_EQ(table->value(test::recordOf(*table, 0).data(), 2), Value("abc"));
  content = raw.bytes();
  content.replace(descriptor(2), 32, std::string(32, '\0'));
  recoveredAnew(content);
  EXPECT_EQ(rows(), raw.rows) << "the flags are in the rest";
}

TEST_F(RecoveredFields, KeepTheirMemosBehindADamagedName) {
  MemoFile::create(suite.file("T.FPT"));
  const std::uint32_t block =
      MemoFile(suite.file("T.FPT"), MemoKind::foxpro, platform::OpenMode::readWrite).append("text");
  const RawTable raw{.version = 0xF5,
                     .fields = {{"A", 'C', 2}, {"B", 'C', 2}, {"M", 'M', 10}},
                     .rows = "*aabb         " + std::to_string(block),
                     .count = 1};
  std::string content = raw.bytes();
  content[descriptor(1)] = '\0';
  recovered(content);
  platform::current().remove(suite.file("T.FPT"));
  const auto table = DbfFile::open(suite.file("NEW.DBF"));
  EXPECT_EQ(valueOf(*table, 0, "M"), Value("text"));
}

TEST_F(RecoveredFields, CountAsMendedWhereAPartOfThemIsLeftOut) {
  const RawTable raw{.fields = {{"D", 'D', 10}, {"L", 'L', 2}}, .rows = " 20261121xyT  20261121  Tx", .count = 2};
  EXPECT_EQ(recovered(raw).repairedValues, 2U);
  EXPECT_EQ(rows(), " 20261121T 20261121T");
}

}  // namespace
}  // namespace vantrelix
