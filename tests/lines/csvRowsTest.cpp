#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "lines/csvRows.h"

namespace vantrelix::test {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Rows as "line:field|field", a fault behind "!".
std::vector<std::string> rowsOf(std::string_view text) {
  std::vector<std::string> shown;
  for (const CsvRow& row : readCsvRows(text)) {
    std::string all = std::to_string(row.line) + ":";
    for (std::size_t i = 0; i < row.fields.size(); ++i) all += (i == 0 ? "" : "|") + row.fields[i];
    shown.push_back(row.fault.empty() ? all : all + "!" + row.fault);
  }
  return shown;
}

TEST(CsvRows, LinesEndInAnyOfTheThreeWays) {
  EXPECT_THAT(rowsOf("a,b\nc,d\r\ne,f\rg,h"), ElementsAre("1:a|b", "2:c|d", "3:e|f", "4:g|h"));
}

TEST(CsvRows, EmptyFieldsCount) { EXPECT_THAT(rowsOf(",a,,\n,"), ElementsAre("1:|a||", "2:|")); }

TEST(CsvRows, BlankLinesAndCommentsAreNoRowsButCountAsLines) {
  EXPECT_THAT(rowsOf("# one\n\n \t\n  # \"two\na,# three\n"), ElementsAre("5:a|# three"));
  EXPECT_THAT(rowsOf(""), IsEmpty());
  EXPECT_THAT(rowsOf("\r\n# end"), IsEmpty());
}

TEST(CsvRows, BlanksRoundAFieldGo) { EXPECT_THAT(rowsOf(" a\t, \"b \" ,\t c d "), ElementsAre("1:a|b |c d")); }

TEST(CsvRows, QuotedFieldsHoldCommasQuotesAndLineBreaks) {
  EXPECT_THAT(rowsOf("\"7/8 in, \"\"foam\"\"\",\"a\r\nb\",\"#\"\nnext"),
              ElementsAre("1:7/8 in, \"foam\"|a\r\nb|#", "3:next"));
  EXPECT_THAT(rowsOf("\"\",\"\"\"\"\n"), ElementsAre("1:|\""));
}

TEST(CsvRows, AQuotationMarkInsideAnUnquotedFieldIsItself) {
  EXPECT_THAT(rowsOf("a\"b\",c"), ElementsAre("1:a\"b\"|c"));
}

TEST(CsvRows, AQuotationMarkThatIsNotClosedIsAFault) {
  EXPECT_THAT(rowsOf("a\nb,\"c\nd,e"),
              ElementsAre("1:a", "2:b|c\nd,e!the quotation mark that opens in line 2 is not closed"));
  EXPECT_THAT(rowsOf("\""), ElementsAre("1:!the quotation mark that opens in line 1 is not closed"));
}

TEST(CsvRows, TextBehindAClosingQuotationMarkIsAFault) {
  EXPECT_THAT(rowsOf("\"a\"b,c\nd"), ElementsAre("1:a|c!text follows a closing quotation mark", "2:d"));
}

}  // namespace

}  // namespace vantrelix::test
