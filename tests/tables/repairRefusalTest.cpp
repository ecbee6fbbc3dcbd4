// Tables that a repair leaves as they are, and field names that it has to bear.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ostream>

#include "tables/DbfBytes.h"
#include "tables/dictionaryTables.h"
#include "tables/structure.h"

namespace vantrelix {
namespace {

using test::column;
using test::filesThatBegin;
using test::RawTable;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr const char* kTable = "ANT.DBF";

class RepairOfAnyTable : public ::testing::Test {
 protected:
  int repaired() { return RSTblValidRS(fields, path, true, false, ""); }
  void expectRefused(const std::string& bytes) {
    suite.folder().write(kTable, bytes);
    EXPECT_EQ(repaired(), tableCode::unknown);
    EXPECT_EQ(suite.folder().read(kTable), bytes);
    EXPECT_THAT(filesThatBegin(suite.folder(), ""), ElementsAre(kTable, "QVTECSUP.TXT"));
    EXPECT_THAT(suite.log(), HasSubstr("Error 3027: The table " + suite.folder().machine(kTable)));
  }

  test::TempSuite suite;
  const std::string path = suite.file(kTable);
  FieldList fields = {{"SITE", 10, FieldType::text, ""}, {"POWER", 12, FieldType::doubleNumber, "2"}};
};

TEST_F(RepairOfAnyTable, WhoseFieldsMakeUpMoreThanItsRecordLengthIsRefused) {
  // By its size the rows are as long as the fields, or as long as the header says.
  const std::string row = " 0123456789abcde";
  const RawTable byFields{
      .fields = {{"SITE", 'C', 10}, {"NOTE", 'C', 5}}, .rows = row + row + row, .count = 3, .recordLength = 11};
  expectRefused(byFields.bytes());
  const std::string cut = row.substr(0, 11);
  const RawTable byHeader{
      .fields = {{"SITE", 'C', 10}, {"NOTE", 'C', 5}}, .rows = cut + cut + cut, .count = 3, .recordLength = 11};
  expectRefused(byHeader.bytes());
  EXPECT_THAT(suite.log(), HasSubstr("names a wrong record length"));
}

TEST_F(RepairOfAnyTable, ThatHasNoneOfTheFieldsIsRefusedAndTellsWhy) {
  expectRefused(RawTable{.fields = {{"OTHER", 'C', 4}}, .rows = " rows", .count = 1}.bytes());
  EXPECT_THAT(suite.log(), HasSubstr("has none of the fields that it should have"));
  EXPECT_THAT(suite.log(), Not(HasSubstr("Syntax error")));
}

struct OddName {
  const char* name;
  const char* listed;

  friend void PrintTo(const OddName& odd, std::ostream* out) { *out << odd.name; }
};

class RepairWithAFieldCalled : public RepairOfAnyTable, public ::testing::WithParamInterface<OddName> {};

TEST_P(RepairWithAFieldCalled, CarriesItsValuesAlong) {
  const std::string name = GetParam().name;
  suite.folder().write(
      kTable, RawTable{.fields = {{"SITE", 'C', 10}, {name, 'C', 4}}, .rows = " Hill      rows", .count = 1}.bytes());
  fields.push_back({name, 4, FieldType::text, ""});
  ASSERT_EQ(repaired(), tableCode::fine);
  EXPECT_THAT(column(path, name), ElementsAre("rows"));
  EXPECT_THAT(column(path, "SITE"), ElementsAre("Hill"));
  EXPECT_THAT(column(path, "POWER"), ElementsAre("(null)"));
}

TEST_F(RepairOfAnyTable, CarriesAFieldAlongThatNoQueryCouldName) {
  suite.folder().write(kTable, RawTable{.fields = {{"TX]", 'C', 4}}, .rows = " rows", .count = 1}.bytes());
  fields.push_back({"TX]", 4, FieldType::text, ""});
  ASSERT_EQ(repaired(), tableCode::fine);
  EXPECT_THAT(column(path, "TX]"), ElementsAre("rows"));
}

// Where the repair fails behind it, the log has the statement as a query would take it.
TEST_P(RepairWithAFieldCalled, IsLoggedAsAQueryWouldNameIt) {
  const std::string name = GetParam().name;
  suite.folder().write(
      kTable, RawTable{.fields = {{"SITE", 'C', 10}, {name, 'C', 4}}, .rows = " Hill      rows", .count = 1}.bytes());
  fields = {{"SITE", 2, FieldType::text, ""}, {name, 4, FieldType::text, ""}, {"POWER", 5, FieldType::text, ""}};
  EXPECT_EQ(repaired(), tableCode::unknown);
  EXPECT_THAT(suite.log(), HasSubstr("] Select SITE, " + std::string(GetParam().listed) + " From [ANT]\r\n"));
}

INSTANTIATE_TEST_SUITE_P(Name, RepairWithAFieldCalled,
                         ::testing::Values(OddName{"DESC", "[DESC]"}, OddName{"ORDER", "[ORDER]"},
                                           OddName{"IN", "[IN]"}, OddName{"IS", "[IS]"}, OddName{"BY", "[BY]"},
                                           OddName{"AS", "[AS]"}, OddName{"FROM", "[FROM]"}, OddName{"NULL", "[NULL]"},
                                           OddName{"2ND", "[2ND]"}, OddName{"TX-POWER", "[TX-POWER]"},
                                           OddName{"TX POWER", "[TX POWER]"}, OddName{"1", "[1]"}, OddName{"N", "N"}));

}  // namespace
}  // namespace vantrelix
