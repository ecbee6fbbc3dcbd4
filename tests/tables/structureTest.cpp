// Whether a table has the fields that it should have: what is made, what is refused, and the code for each outcome.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tables/dictionaryTables.h"
#include "tables/structure.h"

namespace vantrelix {
namespace {

using test::DictionarySuite;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr const char* kAms = "AMSPDBASE";

int codeOf(const std::string& path, bool repair, bool create, const std::string& type = kAms) {
  return RSTblValidRS(FieldsFromDataSum(kAms), path, repair, create, type);
}

TEST(RSTblValid, AMissingTableIsMadeOnlyWhenAsked) {
  DictionarySuite suite;
  const std::string path = suite.file("AMSTEST1.DBF");
  EXPECT_FALSE(RSTblValid(FieldsFromDataSum(kAms), path, true, false, kAms));
  EXPECT_FALSE(suite.folder().exists("AMSTEST1.DBF"));
  EXPECT_TRUE(RSTblValid(FieldsFromDataSum(kAms), path, false, true, kAms));
  EXPECT_EQ(DbfFile::open(path, true)->fields().at(2).width, 12);
  EXPECT_THAT(test::filesThatBegin(suite.folder(), ""), ElementsAre("AMSTEST1.DBF", "SYSTEM"));
}

TEST(RSTblValid, WithoutATypeTheNewTableKeepsTheEnginesWidths) {
  DictionarySuite suite;
  const std::string path = suite.file("AMS TEST.DBF");
  ASSERT_TRUE(RSTblValid(FieldsFromDataSum(kAms), path, false, true, " "));
  EXPECT_EQ(DbfFile::open(path, true)->fields().at(2).width, engineField("GAIN", FieldType::doubleNumber, 12).width);
}

TEST(RSTblValid, TheLogTellsHowFarAFailureCame) {
  DictionarySuite suite;
  EXPECT_FALSE(RSTblValid({{"A_NAME_TOO_LONG", 5, FieldType::text, ""}}, suite.file("AMSTEST1.DBF"), true, true, ""));
  EXPECT_THAT(suite.log(), HasSubstr("; Flag 1400"));
  const std::string picture = suite.folder().write("AMSTEST2.DBF", "\x89PNG\r\n\x1a\n" + std::string(400, '\7'));
  EXPECT_FALSE(RSTblValid(FieldsFromDataSum(kAms), picture, true, true, kAms));
  EXPECT_THAT(suite.log(), HasSubstr("; Flag 2000"));
  const std::string wide = suite.file("AHDTEST1.DBF");
  DbfFile::create(wide, {{"ATYPE_ID", 'C', 20, 0}});
  test::addRow(wide, {{"ATYPE_ID", "longer than twelve"}});
  EXPECT_FALSE(RSTblValid(FieldsFromDataSum("AHDTADBASE"), wide, true, true, ""));
  EXPECT_THAT(suite.log(), HasSubstr("; Flag 4300"));
}

TEST(RSTblValid, AFileOfNoBytesCountsAsMissing) {
  DictionarySuite suite;
  const std::string path = suite.folder().write("AMSTEST1.DBF", "");
  EXPECT_EQ(codeOf(path, true, false), tableCode::missingFile);
  EXPECT_TRUE(RSTblValid(FieldsFromDataSum(kAms), path, true, true, kAms));
  EXPECT_EQ(DbfFile::open(path, true)->fields().size(), 9u);
}

TEST(RSTblValid, ATableWithAFieldTooManyIsLeftAlone) {
  DictionarySuite suite;
  const std::string path = suite.file("AHDTEST1.DBF");
  DbfFile::create(path,
                  {{"EXTRA", 'L', 1, 0}, {"HOR_FIELD", 'N', 6, 1}, {"HOR_AZ", 'N', 6, 1}, {"ATYPE_ID", 'C', 9, 0}});
  const std::string before = suite.folder().read("AHDTEST1.DBF");
  EXPECT_TRUE(RSTblValid(FieldsFromDataSum("AHDTADBASE"), path, true, true, "AHDTADBASE"));
  EXPECT_EQ(suite.folder().read("AHDTEST1.DBF"), before);
  EXPECT_THAT(test::filesThatBegin(suite.folder(), "AHD"), ElementsAre("AHDTEST1.DBF"));
}

TEST(RSTblValid, ATableInAnotherCaseIsTheTable) {
  DictionarySuite suite;
  test::oldMaster(suite.folder(), "amstest1.dbf");
  EXPECT_EQ(codeOf(suite.file("AMSTEST1.DBF"), false, true), tableCode::structureUnknown);
  EXPECT_FALSE(suite.folder().exists("AMSTEST1.DBF"));
}

TEST(RSTblValid, AFailureIsLoggedWithItsLabelledLines) {
  DictionarySuite suite;
  const std::string path = suite.folder().write("AMSTEST1.DBF", std::string(500, 'x'));
  EXPECT_FALSE(RSTblValid(FieldsFromDataSum(kAms), path, true, true, kAms));
  const std::string log = suite.log();
  EXPECT_THAT(log, HasSubstr("DETAIL: PathName: " + suite.folder().machine("AMSTEST1.DBF") + "\r\nDB Path: " +
                             suite.folder().machine() + "\r\nSELECT: SELECT * from [AMSTEST1]\r\nNewName: \r\nSQL: "));
  EXPECT_THAT(log, HasSubstr("TempTable: "));
  EXPECT_EQ(suite.messages.size(), 1u);
  EXPECT_EQ(suite.folder().read("AMSTEST1.DBF"), std::string(500, 'x'));
}

TEST(RSTblValidRS, ATableThatFitsGivesZero) {
  DictionarySuite suite;
  const std::string path = suite.file("AMSTEST1.DBF");
  EXPECT_EQ(codeOf(path, false, true), tableCode::fine);
  EXPECT_EQ(codeOf(path, false, false), tableCode::fine);
  EXPECT_EQ(
      RSTblValidRS(FieldsFromDataSum(kAms), path, false, false, kAms, RecordsetType::table, recordsetOption::denyWrite),
      tableCode::fine);
  EXPECT_TRUE(suite.messages.empty());
}

TEST(RSTblValidRS, AMissingFileGivesOne) {
  DictionarySuite suite;
  EXPECT_EQ(codeOf(suite.file("AMSTEST1.DBF"), true, false), tableCode::missingFile);
  EXPECT_FALSE(suite.folder().exists("AMSTEST1.DBF"));
}

TEST(RSTblValidRS, AMissingFieldWithoutRepairGivesTwo) {
  DictionarySuite suite;
  const std::string path = test::oldMaster(suite.folder());
  const std::string before = suite.folder().read("AMSTEST1.DBF");
  EXPECT_EQ(codeOf(path, false, true), tableCode::structureUnknown);
  EXPECT_EQ(suite.folder().read("AMSTEST1.DBF"), before);
}

TEST(RSTblValidRS, ATableHeldByAnotherGivesThree) {
  DictionarySuite suite;
  const std::string path = suite.file("AMSTEST1.DBF");
  ASSERT_EQ(codeOf(path, false, true), tableCode::fine);
  const auto holder = DbfFile::open(path, false, Sharing::exclusive);
  EXPECT_EQ(codeOf(path, true, true), tableCode::inUse);
  EXPECT_THAT(suite.log(), HasSubstr("\r\nTable in Use"));
  EXPECT_THAT(suite.log(), HasSubstr("Error 3051: "));
}

TEST(RSTblValidRS, ATableThatDeniesWritersToOneDeniesTheSameToTheNext) {
  DictionarySuite suite;
  const std::string path = suite.file("AMSTEST1.DBF");
  ASSERT_EQ(codeOf(path, false, true), tableCode::fine);
  DbfFile::setLockWait(20);
  const auto editor = DbfFile::open(path, false, Sharing::denyWrite);
  EXPECT_EQ(
      RSTblValidRS(FieldsFromDataSum(kAms), path, false, false, kAms, RecordsetType::table, recordsetOption::denyWrite),
      tableCode::inUse);
  EXPECT_EQ(codeOf(path, false, false), tableCode::fine);
  DbfFile::setLockWait(2000);
}

TEST(RSTblValidRS, AnExclusiveCheckIsRefusedWhileAnotherReads) {
  DictionarySuite suite;
  const std::string path = suite.file("AMSTEST1.DBF");
  ASSERT_EQ(codeOf(path, false, true), tableCode::fine);
  const auto reader = DbfFile::open(path, true);
  EXPECT_EQ(RSTblValidRS(FieldsFromDataSum(kAms), path, false, false, kAms, RecordsetType::dynaset, 0, true, false),
            tableCode::inUse);
}

TEST(RSTblValidRS, AHeaderThatCannotBeSetGivesFourAndNoTable) {
  DictionarySuite suite;
  EXPECT_EQ(codeOf(suite.file("AMSTEST1.DBF"), false, true, "AVDTADBASE"), tableCode::headerError);
  EXPECT_EQ(codeOf(suite.file("AMSTEST1.DBF"), false, true, "NOSUCHTYPE"), tableCode::headerError);
  EXPECT_THAT(test::filesThatBegin(suite.folder(), ""), ElementsAre("QVTECSUP.TXT", "SYSTEM"));
}

TEST(RSTblValidRS, ATableThatCannotBeCreatedGivesFive) {
  DictionarySuite suite;
  const FieldList fields = {{"A_NAME_TOO_LONG", 5, FieldType::text, ""}};
  EXPECT_EQ(RSTblValidRS(fields, suite.file("AMSTEST1.DBF"), true, true, ""), tableCode::creationError);
  EXPECT_EQ(RSTblValidRS({}, suite.file("AMSTEST1.DBF"), true, true, ""), tableCode::creationError);
  EXPECT_THAT(suite.log(), HasSubstr("\r\nError creating file"));
  EXPECT_THAT(test::filesThatBegin(suite.folder(), ""), ElementsAre("QVTECSUP.TXT", "SYSTEM"));
}

TEST(RSTblValidRS, ATemporaryTableThatCannotBeMadeGivesSix) {
  DictionarySuite suite;
  const std::string path = test::oldMaster(suite.folder());
  const std::string before = suite.folder().read("AMSTEST1.DBF");
  FieldList fields = FieldsFromDataSum(kAms);
  fields.push_back({"A_NAME_TOO_LONG", 5, FieldType::text, ""});
  EXPECT_EQ(RSTblValidRS(fields, path, true, true, kAms), tableCode::temporaryFileError);
  EXPECT_EQ(suite.folder().read("AMSTEST1.DBF"), before);
  EXPECT_THAT(suite.log(), HasSubstr("\r\nError creating temp file"));
  EXPECT_THAT(test::filesThatBegin(suite.folder(), "AMS"), ElementsAre("AMSTEST1.DBF"));
}

TEST(RSTblValidRS, AFolderThatTakesNoNewFileGivesFiveOrSix) {
  DictionarySuite suite;
  const std::string old = test::oldMaster(suite.folder());
  const std::string before = suite.folder().read("AMSTEST1.DBF");
  const FieldList fields = FieldsFromDataSum(kAms);
  platform::FaultPlatform faults(platform::current());
  platform::Substitute substitute(faults);
  faults.failAt(1, failure::permissionDenied);
  EXPECT_EQ(RSTblValidRS(fields, suite.file("AMSTEST2.DBF"), true, true, ""), tableCode::creationError);
  EXPECT_FALSE(suite.folder().exists("AMSTEST2.DBF"));
  faults.failAt(1, failure::permissionDenied);
  EXPECT_EQ(RSTblValidRS(fields, old, true, true, ""), tableCode::temporaryFileError);
  EXPECT_EQ(suite.folder().read("AMSTEST1.DBF"), before);
  EXPECT_THAT(suite.log(), HasSubstr("Error 70: "));
}

TEST(RSTblValidRS, AFolderThatDoesNotExistGivesFive) {
  DictionarySuite suite;
  EXPECT_EQ(codeOf(suite.file("NONE/AMSTEST1.DBF"), true, true), tableCode::creationError);
  EXPECT_FALSE(suite.folder().exists("NONE"));
  EXPECT_EQ(suite.messages.size(), 1u);
}

TEST(RSTblValidRS, AnythingElseGivesNinetyNineWithTheErrorInTheLog) {
  DictionarySuite suite;
  const std::string picture = suite.folder().write("AMSTEST1.DBF", "\x89PNG\r\n\x1a\n" + std::string(400, '\7'));
  EXPECT_EQ(codeOf(picture, true, true), tableCode::unknown);
  EXPECT_THAT(suite.log(), HasSubstr("Error 3343: "));
  EXPECT_THAT(suite.log(), HasSubstr("\r\nUnknown error"));
  EXPECT_EQ(RSTblValidRS({}, test::oldMaster(suite.folder()), true, true, kAms), tableCode::unknown);
}

}  // namespace
}  // namespace vantrelix
