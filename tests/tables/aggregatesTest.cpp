#include <gtest/gtest.h>

#include "tables/cursorTables.h"

namespace vantrelix {
namespace {

using test::CursorTables;

// The columns of the one row, with blanks between; "-" is null.
std::string row(const CursorTables& tables, const std::string& sql) {
  const RecordsetPtr rows = tables.open(sql);
  std::string result;
  for (std::size_t i = 0; i < rows->fieldCount(); ++i) {
    const Value value = rows->Fields(i).value();
    result += (result.empty() ? "" : " ") + (value.isNull() ? "-" : trim(value.asText()));
  }
  return result;
}

TEST(Aggregates, OfNumbersTextsAndExpressionsStandInOneRow) {
  const CursorTables tables;
  EXPECT_EQ(row(tables,
                "select min(GAIN), max(GAIN), sum(GAIN), count(GAIN), count(*), avg(FREQ), min(FREQ), max(ANTENNA), "
                "max(GAIN*2), count(ATYPE_ID) from AMSTEST"),
            "2.15 10 21.65 3 4 500 150 panel 20 4");
}

TEST(Aggregates, GoByConditionsOnNumbers) {
  const CursorTables tables;
  const auto gains = [&](const std::string& condition) {
    return row(tables, "select min(GAIN), max(GAIN), count(*) from AMSTEST where " + condition);
  };
  EXPECT_EQ(gains("GAIN > 2.15"), "9.5 10 2");
  EXPECT_EQ(gains("2.15 < GAIN"), "9.5 10 2");
  EXPECT_EQ(gains("GAIN >= 2.15"), "2.15 10 3");
  EXPECT_EQ(gains("10 <= GAIN"), "10 10 1");
  EXPECT_EQ(gains("GAIN < 10 and FREQ = 150"), "2.15 2.15 1");
  EXPECT_EQ(gains("9.5 >= GAIN and ucase(ATYPE_ID) = 'A1'"), "2.15 9.5 2");
  EXPECT_EQ(gains("GAIN <> 9.5"), "2.15 10 2");
  EXPECT_EQ(gains("GAIN > -1"), "2.15 10 3");
  EXPECT_EQ(gains("GAIN between 2.15 and 9.5"), "2.15 9.5 2");
  EXPECT_EQ(gains("GAIN not between 2.15 and 9.5"), "10 10 1");
  EXPECT_EQ(gains("GAIN between 5 and FREQ"), "10 10 1");
  EXPECT_EQ(gains("GAIN = '10'"), "10 10 1");
  EXPECT_EQ(gains("GAIN = Null"), "- - 0");
}

TEST(Aggregates, LeaveOutDeletedRows) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open("Select * from AMSTEST where GAIN = 10");
  rows->Delete();
  EXPECT_EQ(row(tables, "select max(GAIN), count(*) from AMSTEST"), "9.5 3");
}

TEST(Aggregates, OfManyBlocksCountEachRowOnce) {
  const CursorTables tables;
  const auto table = DbfFile::open(tables.folder.file("AMSTEST.DBF"));
  std::vector<unsigned char> records;
  constexpr int kRows = 20000;
  for (int i = 0; i < kRows; ++i) {
    std::vector<unsigned char> record = table->blankRecord();
    if (i % 5 != 0) table->put(record.data(), 2, static_cast<double>(i) / 4);
    records.insert(records.end(), record.begin(), record.end());
  }
  table->append(records.data(), kRows);
  EXPECT_EQ(row(tables, "select count(*), count(GAIN), min(GAIN), max(GAIN) from AMSTEST"), "20004 16003 0.25 4999.75");
}

}  // namespace
}  // namespace vantrelix
