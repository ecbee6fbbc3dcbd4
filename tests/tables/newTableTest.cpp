// Tables made from a list of fields.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tables/dictionaryTables.h"
#include "tables/structure.h"

namespace vantrelix {
namespace {

using test::DictionarySuite;
using test::StoppedClock;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST(NewTable, TheFieldsOfTheListComeInOrderWithTheEnginesOwnNumberWidths) {
  DictionarySuite suite;
  const std::string path = suite.file("AHDTEST1.DBF");
  ASSERT_TRUE(NewTable(FieldsFromDataSum("AHDTADBASE"), path));
  const auto table = DbfFile::open(path, true);
  ASSERT_EQ(table->fields().size(), 3u);
  EXPECT_EQ(table->fields()[0].width, 12);
  EXPECT_EQ(table->fields()[1].name, "HOR_AZ");
  EXPECT_EQ(table->fields()[1].width, engineField("HOR_AZ", FieldType::doubleNumber, 10).width);
  EXPECT_EQ(table->recordCount(), 0u);
}

TEST(NewTable, AnExistingTableIsReplaced) {
  DictionarySuite suite;
  const std::string path = test::oldMaster(suite.folder());
  ASSERT_TRUE(NewTable(FieldsFromDataSum("AVDTADBASE"), path));
  EXPECT_THAT(test::column(path, "VERT_ANGLE"), IsEmpty());
  EXPECT_THAT(test::filesThatBegin(suite.folder(), ""), ElementsAre("AMSTEST1.DBF", "SYSTEM"));
}

// Two tables whose names differ in case alone are one table for whoever looks for it.
TEST(NewTable, ATableInAnotherCaseIsReplacedWhereItStands) {
  DictionarySuite suite;
  test::oldMaster(suite.folder(), "amsTest1.dbf");
  test::oldMaster(suite.folder(), "ams test2.dbf");
  for (const char* name : {"AMSTEST1.DBF", "AMS TEST2.DBF"}) {
    const std::string path = suite.file(name);
    ASSERT_TRUE(NewTable(FieldsFromDataSum("AVDTADBASE"), path));
    EXPECT_FALSE(suite.folder().exists(name));
    EXPECT_THAT(test::column(path, "VERT_ANGLE"), IsEmpty());
    EXPECT_EQ(DbfFile::open(path, true)->fields().size(), 3u);
  }
  EXPECT_THAT(test::filesThatBegin(suite.folder(), ""), ElementsAre("SYSTEM", "ams test2.dbf", "amsTest1.dbf"));
}

TEST(NewTable, ATableThatAnotherHasOpenIsNotReplaced) {
  DictionarySuite suite;
  const std::string path = test::oldMaster(suite.folder());
  const std::string before = suite.folder().read("AMSTEST1.DBF");
  auto other = DbfFile::open(path, true);
  EXPECT_FALSE(NewTable(FieldsFromDataSum("AVDTADBASE"), path));
  EXPECT_EQ(suite.folder().read("AMSTEST1.DBF"), before);
  EXPECT_THAT(suite.log(), HasSubstr("Error 3051:  The table " + suite.folder().machine("AMSTEST1.DBF")));
  other.reset();
  EXPECT_TRUE(NewTable(FieldsFromDataSum("AVDTADBASE"), path));
  suite.folder().write("AMSTEST1.DBF", "no table at all");
  EXPECT_TRUE(NewTable(FieldsFromDataSum("AVDTADBASE"), path));
  EXPECT_EQ(DbfFile::open(path, true)->fields().size(), 3u);
}

TEST(NewTable, APathWithABlankIsMadeUnderTheStampFirstAndEndsUnderItsName) {
  DictionarySuite suite;
  StoppedClock clock(platform::current());
  platform::Substitute substitute(clock);
  ASSERT_TRUE(NewTable(FieldsFromDataSum("AHDTADBASE"), suite.file("AHD My [1].DBF")));
  EXPECT_THAT(test::filesThatBegin(suite.folder(), ""), ElementsAre("AHD My [1].DBF", "SYSTEM"));
  EXPECT_TRUE(clock.hasRenamed("26160248.DBF"));
}

TEST(NewTable, AFieldNameThatItsPageDoesNotHaveIsRefused) {
  DictionarySuite suite;
  const std::string path = suite.file("AMSTEST1.DBF");
  EXPECT_FALSE(NewTable({{"ŁÓDŹ", 5, FieldType::text, ""}}, path));
  EXPECT_FALSE(suite.folder().exists("AMSTEST1.DBF"));
  EXPECT_THAT(suite.log(), HasSubstr("does not have the characters of the field name ŁÓDŹ"));
  ASSERT_TRUE(NewTable({{"ÉTÉ", 5, FieldType::text, ""}}, path));
  EXPECT_EQ(DbfFile::open(path)->fields().at(0).name, "ÉTÉ");
}

TEST(NewTable, AFailureIsReportedAndLeavesTheFormerTable) {
  DictionarySuite suite;
  const std::string path = test::oldMaster(suite.folder());
  const std::string before = suite.folder().read("AMSTEST1.DBF");
  EXPECT_FALSE(NewTable({{"A_NAME_TOO_LONG", 5, FieldType::text, ""}}, path));
  EXPECT_FALSE(NewTable({}, path));
  EXPECT_EQ(suite.folder().read("AMSTEST1.DBF"), before);
  EXPECT_EQ(suite.messages.size(), 2u);
  EXPECT_THAT(suite.log(), HasSubstr("DETAIL: PathName: " + suite.folder().machine("AMSTEST1.DBF")));
}

}  // namespace
}  // namespace vantrelix
