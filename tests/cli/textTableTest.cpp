#include <gtest/gtest.h>
#include <sstream>

#include "cli/TextTable.h"

namespace vantrelix::cli {
namespace {

TEST(TextTable, AlignsItsColumnsByTheirLongestCell) {
  TextTable table({{"Name"}, {"Gain", TextTable::Align::right}, {"Units"}});
  table.add({"Panel", "1.50", "dBd"});
  table.add({"Yagi", "12.50", ""});
  std::ostringstream out;
  table.write(out);
  EXPECT_EQ(out.str(),
            "Name    Gain  Units\n"
            "Panel   1.50  dBd\n"
            "Yagi   12.50\n");
}

TEST(TextTable, CountsCharactersAndNotBytes) {
  TextTable table({{"A"}, {"B"}});
  table.add({"caf\xC3\xA9", "x"});
  table.add({"cafes", "x"});
  std::ostringstream out;
  table.write(out);
  EXPECT_EQ(out.str(), "A      B\ncaf\xC3\xA9   x\ncafes  x\n");
}

}  // namespace
}  // namespace vantrelix::cli
