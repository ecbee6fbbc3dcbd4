// A picture of rows in an order that is not the file's.
#include <cmath>
#include <gtest/gtest.h>

#include "tables/cursorTables.h"

namespace vantrelix {
namespace {

using test::CursorTables;

// Every value of every row from the current one on.
std::vector<Value> valuesOf(Recordset& rows) {
  std::vector<Value> values;
  for (; !rows.Eof(); rows.MoveNext()) {
    for (std::size_t field = 0; field < rows.fieldCount(); ++field) values.push_back(rows.Fields(field).value());
  }
  return values;
}

const char* const kOrders[] = {"",
                               " order by ANTENNA",
                               " order by ANTENNA desc",
                               " order by GAIN",
                               " order by GAIN desc",
                               " order by ATYPE_ID desc",
                               " order by ATYPE_ID, FREQ desc",
                               " order by MADE",
                               " order by len(ANTENNA)",
                               " where FREQ > 5 order by ANTENNA"};

TEST(SortedSnapshot, HasTheRowsOfADynasetOfTheSameOrder) {
  const CursorTables tables;
  for (int row = 0; row < 200; ++row) {
    tables.add("T" + std::to_string(row % 7), row % 5 == 0 ? Value() : Value("Yagi " + std::to_string(row * 37 % 50)),
               row % 11, row * 13 % 17);
  }
  const RecordsetPtr doomed = tables.open("Select * from AMSTEST where ATYPE_ID = 'T3'");
  for (; !doomed->Eof(); doomed->MoveNext()) doomed->Delete();
  for (const std::string order : kOrders) {
    const std::string sql = "Select * from AMSTEST" + order;
    const RecordsetPtr picture = tables.open(sql, RecordsetType::snapshot);
    const RecordsetPtr live = tables.open(sql);
    ASSERT_EQ(picture->rowCount(), live->rowCount()) << sql;
    ASSERT_GT(picture->rowCount(), 100) << sql;
    for (long place = 0; place < picture->rowCount(); ++place) {
      ASSERT_EQ(picture->valueAt(place, "ANTENNA"), live->valueAt(place, "ANTENNA")) << sql << place;
      ASSERT_EQ(picture->bookmarkAt(place) & 0xFFFFFFFF, live->bookmarkAt(place) & 0xFFFFFFFF) << sql << place;
    }
    EXPECT_EQ(valuesOf(*picture), valuesOf(*live)) << sql;
  }
}

TEST(SortedSnapshot, KeepsRowsThatTieInFileOrder) {
  const CursorTables tables;
  for (int row = 0; row < 300; ++row) tables.add(std::to_string(row), "Same", row, Value());
  for (const std::string order : {" order by ANTENNA", " order by ANTENNA desc"}) {
    const RecordsetPtr rows =
        tables.open("Select * from AMSTEST where ANTENNA = 'Same' or GAIN = 9.5" + order, RecordsetType::snapshot);
    double last = -1;
    for (; !rows->Eof(); rows->MoveNext()) {
      if (rows->Fields("GAIN").number() == 9.5) continue;
      ASSERT_EQ(rows->Fields("GAIN").number(), last + 1);
      ++last;
    }
    EXPECT_EQ(last, 299);
  }
}

TEST(SortedSnapshot, FindsAndVisitsItsRowsInItsOrder) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open("Select * from AMSTEST order by ANTENNA", RecordsetType::snapshot);
  rows->FindFirst("ATYPE_ID = 'A1'");
  ASSERT_FALSE(rows->NoMatch());
  EXPECT_EQ(rows->AbsolutePosition(), 2);
  EXPECT_EQ(rows->value("GAIN"), Value(2.15));
  const auto visited = [&](const char* second) {
    rows->MoveFirst();
    NumberPairs pairs;
    rows->addNumbers(rows->Fields("GAIN"), rows->Fields(second), pairs);
    std::string seen;
    for (std::size_t i = 0; i < pairs.firsts.size(); ++i) {
      seen += std::to_string(std::lround(pairs.firsts[i] * 10 + pairs.seconds[i])) + " ";
    }
    return seen;
  };
  EXPECT_EQ(visited("FREQ"), "1000 172 ");
  EXPECT_EQ(visited("GAIN"), "110 24 105 ");
}

TEST(SortedSnapshot, TakesTheOrderOfEachRequery) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open("Select * from AMSTEST order by GAIN", RecordsetType::snapshot);
  EXPECT_EQ(rows->valueAt(3, "GAIN"), Value(10.0));
  tables.add("D4", "Whip", 99, 1);
  rows->Requery();
  ASSERT_EQ(rows->rowCount(), 5);
  EXPECT_EQ(rows->valueAt(4, "ANTENNA").asText().substr(0, 4), "Whip");
  const RecordsetPtr changed = tables.open("Select * from AMSTEST where ATYPE_ID = 'D4'");
  changed->Edit();
  changed->put("GAIN", -1);
  changed->Update();
  EXPECT_EQ(rows->valueAt(4, "GAIN"), Value(99.0));
  rows->Requery();
  EXPECT_EQ(rows->valueAt(1, "GAIN"), Value(-1.0));
  EXPECT_EQ(rows->valueAt(4, "GAIN"), Value(10.0));
}

}  // namespace
}  // namespace vantrelix
