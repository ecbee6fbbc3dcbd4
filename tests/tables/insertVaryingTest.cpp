// Texts that an insert carries into fields of varying length and out of them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tables/Database.h"
#include "tables/DbfBytes.h"
#include "tables/dictionaryTables.h"

namespace vantrelix {
namespace {

using test::column;
using test::RawTable;
using ::testing::ElementsAre;

class InsertVarying : public ::testing::Test {
 protected:
  InsertVarying() {
    const RawTable varying{.version = 0x32, .fields = {{"A", 'V', 8}, {"_NullFlags", '0', 1, 0, 5}}};
    suite.folder().write("VARYING.DBF", varying.bytes());
    DbfFile::create(suite.file("FIXED.DBF"), {{"A", 'C', 8, 0}});
    DbfFile::create(suite.file("NUMBERS.DBF"), {{"A", 'N', 8, 0}});
  }
  void fill(const std::string& table) {
    for (const char* text : {"0012", "1E5", "+7", "1.50", "x"}) test::addRow(suite.file(table), {{"A", text}});
  }
  long execute(const std::string& sql) { return DBEngine::OpenDatabase(suite.folder().path())->Execute(sql); }

  test::TempSuite suite;
};

TEST_F(InsertVarying, TakesTextsAsTheyAre) {
  fill("FIXED.DBF");
  EXPECT_EQ(execute("Insert Into [VARYING] Select A From [FIXED]"), 5);
  EXPECT_THAT(column(suite.file("VARYING.DBF"), "A"), ElementsAre("0012", "1E5", "+7", "1.50", "x"));
}

TEST_F(InsertVarying, GivesTextsAsTheyAre) {
  fill("VARYING.DBF");
  EXPECT_EQ(execute("Insert Into [FIXED] Select A From [VARYING]"), 5);
  EXPECT_THAT(column(suite.file("FIXED.DBF"), "A"), ElementsAre("0012", "1E5", "+7", "1.50", "x"));
}

TEST_F(InsertVarying, DoesNotKeepThePaddingOfAFixedField) {
  test::addRow(suite.file("FIXED.DBF"), {{"A", "0012"}});
  execute("Insert Into [VARYING] Select A From [FIXED]");
  EXPECT_EQ(test::valueOf(*DbfFile::open(suite.file("VARYING.DBF")), 0, "A"), Value("0012"));
}

TEST_F(InsertVarying, GivesNumbersToANumberField) {
  test::addRow(suite.file("VARYING.DBF"), {{"A", "0012"}});
  test::addRow(suite.file("VARYING.DBF"), {{"A", "1E5"}});
  execute("Insert Into [NUMBERS] Select A From [VARYING]");
  EXPECT_THAT(column(suite.file("NUMBERS.DBF"), "A"), ElementsAre("12", "100000"));
}

TEST_F(InsertVarying, TakesNumbersAsGeneralText) {
  test::addRow(suite.file("NUMBERS.DBF"), {{"A", 100000}});
  execute("Insert Into [VARYING] Select A From [NUMBERS]");
  EXPECT_THAT(column(suite.file("VARYING.DBF"), "A"), ElementsAre("100000"));
}

}  // namespace
}  // namespace vantrelix
