#include <gtest/gtest.h>

#include "tables/Database.h"
#include "tables/DbfBytes.h"

namespace vantrelix {
namespace {

// The fields of a picture that are more than plain bytes.
class SnapshotFields : public ::testing::Test {
 protected:
  RecordsetPtr open(const test::RawTable& table, const std::string& sql) {
    folder.write("T.DBF", table.bytes());
    return DBEngine::OpenDatabase(folder.path())->OpenRecordset(sql, RecordsetType::snapshot);
  }
  test::TempFolder folder;
};

TEST_F(SnapshotFields, MemoTextsComeFromTheMemoFile) {
  std::string memo(512, '\0');
  memo[0] = 2;
  folder.write("T.DBT", memo + "A long text\x1A");
  test::RawTable table;
  table.version = 0x83;
  table.fields = {{"GAIN", 'N', 4, 1}, {"NOTE", 'M', 10, 0}};
  table.rows = " 12.5         1  7.5          ";
  table.count = 2;
  const RecordsetPtr rows = open(table, "Select * from T order by GAIN desc");
  EXPECT_EQ(rows->value("NOTE"), Value("A long text"));
  rows->MoveNext();
  EXPECT_EQ(rows->value("GAIN"), Value(7.5));
  EXPECT_TRUE(rows->value("NOTE").isNull());
}

TEST_F(SnapshotFields, NullFlagsDecideAndSortFirst) {
  test::RawTable table;
  table.version = 0x30;
  table.terminator = "\r" + std::string(263, '\0');
  table.fields = {{"GAIN", 'N', 8, 1, 2}, {"NAME", 'C', 3, 0, 2}, {"_NullFlags", '0', 1, 0, 5}};
  const auto row = [](const std::string& gain, const std::string& name, char flags) {
    return " " + gain + name + std::string(1, flags);
  };
  table.rows =
      row("     3.5", "b  ", 0) + row("     2.5", "a  ", 1) + row("     1.5", "   ", 0) + row("     0.5", "B  ", 2);
  table.count = 4;
  const auto gains = [&](const std::string& order) {
    std::string result;
    for (const RecordsetPtr rows = open(table, "Select * from T order by " + order); !rows->Eof(); rows->MoveNext()) {
      result += rows->value("GAIN").isNull() ? "- " : rows->value("GAIN").asText() + " ";
    }
    return result;
  };
  EXPECT_EQ(gains("GAIN"), "- 0.5 1.5 3.5 ");
  EXPECT_EQ(gains("GAIN desc"), "3.5 1.5 0.5 - ");
  EXPECT_EQ(gains("NAME"), "0.5 1.5 - 3.5 ");
}

}  // namespace
}  // namespace vantrelix
