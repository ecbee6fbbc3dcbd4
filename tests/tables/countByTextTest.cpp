// How many rows there are for each text, of texts that more than a field's bytes decides.
#include <gtest/gtest.h>

#include "tables/DbfBytes.h"
#include "tables/countByText.h"

namespace vantrelix {
namespace {

// Bits of the null flags in field order: C null, V length.
class CountByText : public testing::Test {
 protected:
  std::shared_ptr<DbfFile> open(const std::string& rows) const {
    test::RawTable table;
    table.version = 0x30;
    table.terminator = "\r" + std::string(263, '\0');
    table.fields = {{"C", 'C', 3, 0, 2}, {"V", 'V', 4, 0, 0}, {"_NullFlags", '0', 1, 0, 5}};
    table.rows = rows;
    table.count = static_cast<int>(rows.size()) / table.trueRecordLength();
    return DbfFile::open(folder_.write("T.DBF", table.bytes()));
  }

 private:
  test::TempFolder folder_;
};

TEST_F(CountByText, TellsANullFromTheBytesBehindIt) {
  const auto table = open(std::string(" abcwxyz\x00 abcwxyz\x01 abcwxyz\x01 abcwxyz\x00 abcwxyz\x00", 45));
  EXPECT_EQ(countByText(*table, "C", {}), (TextCounts{{"abc", 3}, {"", 2}}));
  EXPECT_EQ(countByText(*table, "V", {"C"}), (TextCounts{{"wxyz", 3}}));
}

TEST_F(CountByText, TellsTextsOfDifferentLengthsWithTheSameBytes) {
  const auto table = open(std::string(" abcw  \x01\x02 abcw  \x01\x00 abcw  \x01\x02", 27));
  EXPECT_EQ(countByText(*table, "V", {}), (TextCounts{{"w", 2}, {"w  \x01", 1}}));
}

}  // namespace
}  // namespace vantrelix
