// A key with more rows than are kept in memory.
#include <gtest/gtest.h>

#include "support/MeasuredPlatform.h"
#include "support/TempFolder.h"
#include "tables/DbfBytes.h"
#include "tables/KeyedRows.h"

namespace vantrelix {
namespace {

using test::RawTable;

class ManyRowsOfAKey : public testing::Test {
 protected:
  static constexpr int kRows = 70'000;

  // One in a hundred rows has another key; the numbers fall.
  ManyRowsOfAKey() {
    std::string rows;
    rows.reserve(std::size_t{259} * kRows);
    for (int row = 0; row < kRows; ++row) {
      const std::string number = std::to_string(kRows - row);
      const std::string digits = std::string(8 - number.size(), ' ') + number;
      rows += row % 100 == 0 ? " B2" : " A1";
      rows += std::string(240, ' ') + digits + digits;
    }
    const RawTable table{
        .fields = {{"ID", 'C', 242}, {"ANGLE", 'N', 8}, {"GAIN", 'N', 8}}, .rows = rows, .count = kRows};
    folder.write("MANY.DBF", table.bytes());
    machine.ownClock = true;
    machine.now += 3'600'000;
  }

  std::vector<double> anglesOf(const std::string& id, const std::string& orderedBy) const {
    KeyedRows rows(*database, {"MANY", "ID", id, orderedBy});
    NumberPairs pairs;
    rows.addNumbers("ANGLE", "GAIN", pairs);
    EXPECT_EQ(pairs.seconds, pairs.firsts);
    return pairs.firsts;
  }

  const test::TempFolder folder;
  test::MeasuredPlatform machine;
  const platform::Substitute substitute{machine};
  const DatabasePtr database = DBEngine::OpenDatabase(folder.path());
};

TEST_F(ManyRowsOfAKey, AreAllGivenAtTheFirstReadAndAtThoseBehindIt) {
  for (int times = 0; times < 3; ++times) {
    SCOPED_TRACE(times);
    const std::vector<double> angles = anglesOf("A1", "ANGLE");
    ASSERT_EQ(angles.size(), kRows - kRows / 100);
    for (std::size_t i = 0, angle = 0; i < angles.size(); ++i) {
      if (++angle % 100 == 0) ++angle;
      ASSERT_EQ(angles[i], static_cast<double>(angle));
    }
    EXPECT_EQ(anglesOf("B2", "").size(), kRows / 100);
  }
}

}  // namespace
}  // namespace vantrelix
