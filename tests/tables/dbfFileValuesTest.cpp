// What the values of a table file are that its fields alone do not tell: nulls, memos, and texts by their code page.
#include <gtest/gtest.h>

#include "platform/FaultPlatform.h"
#include "tables/DbfFiles.h"

namespace vantrelix {
namespace {

using test::appendRow;
using test::DbfFiles;
using test::RawTable;
using test::valueOf;

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

TEST_F(DbfFiles, APartnerFileNamesTheCodePageWhereThatOfTheMarkCannotBeHad) {
  class WithoutPages : public platform::FaultPlatform {
   public:
    using FaultPlatform::FaultPlatform;
    std::optional<std::string> decodeMultiByte(int, std::string_view) override { return std::nullopt; }
  };
  WithoutPages machine(platform::current());
  const platform::Substitute substitute(machine);
  const RawTable raw{.fields = {{"A", 'C', 2}}, .rows = " \xC3\xA9", .count = 1, .mark = 0x13};
  EXPECT_EQ(valueOf(*opened(raw), 0, "A"), Value("Ã©"));
  suite.folder().write("ANT.CPG", "UTF-8");
  EXPECT_EQ(valueOf(*opened(raw), 0, "A"), Value("é"));
}

TEST_F(DbfFiles, FieldNamesInUtf8MakeAnUnmarkedTableAUtf8Table) {
  const auto table = opened({.fields = {{"НОМЕР", 'C', 4}}, .rows = " \xD0\xAF  ", .count = 1, .mark = 0});
  EXPECT_EQ(table->fields().front().name, "НОМЕР");
  EXPECT_EQ(valueOf(*table, 0, "НОМЕР"), Value("Я  "));
}

}  // namespace
}  // namespace vantrelix
