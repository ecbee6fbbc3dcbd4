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

constexpr const char* kAms = "AMSPDBASE";

int codeOf(const std::string& path, bool repair, bool create, const std::string& type = kAms) {
  return RSTblValidRS(FieldsFromDataSum(kAms), path, repair, create, type);
}

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

// Makes a table with a crash at that changing call; gives the calls it came to.
int stoppedCreation(int call) {
  DictionarySuite suite;
  const std::string path = suite.file("AMSTEST1.DBF");
  platform::FaultPlatform faults(platform::current());
  {
    platform::Substitute substitute(faults);
    faults.crashAt(call, call % 2 == 0);
    try {
      codeOf(path, true, true);
    } catch (const RunTimeFailure&) {
      // The log itself could not be written.
    }
  }
  const int finished = 1 + 12 + 60 + 12 + 5 + 14 + 14 + 5 + 12 + 5;
  if (suite.folder().exists("AMSTEST1.DBF") && !suite.folder().read("AMSTEST1.DBF").empty()) {
    EXPECT_EQ(DbfFile::open(path, true)->recordLength(), finished) << call;
  }
  EXPECT_EQ(codeOf(path, true, true), tableCode::fine) << call;
  EXPECT_EQ(DbfFile::open(path, true)->recordLength(), finished) << call;
  return faults.calls();
}

TEST(RSTblValid, CreationStoppedAnywhereLeavesAFinishedTableOrNone) {
  const int calls = stoppedCreation(1 << 20);
  ASSERT_GT(calls, 5);
  for (int call = 1; call <= calls; ++call) stoppedCreation(call);
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
  DbfFile::setLockWait(20);
  const std::string path = suite.file("AMSTEST1.DBF");
  ASSERT_EQ(codeOf(path, false, true), tableCode::fine);
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

TEST(MakeDataSmTableFile, AMissingTableIsMadeAndOpened) {
  DictionarySuite suite;
  const RecordsetPtr cursor = MakeDataSmTableFile(suite.file("AVDTEST1.DBF"), "AVDTADBASE");
  ASSERT_TRUE(cursor);
  EXPECT_TRUE(cursor->Eof());
  EXPECT_EQ(cursor->Fields("VERT_FIELD").Size(), 12);
  EXPECT_EQ(cursor->Fields("VERT_FIELD").decimals(), 4);
}

TEST(MakeDataSmTableFile, AnOldTableIsMendedAndOpenedOnItsFirstRow) {
  DictionarySuite suite;
  const RecordsetPtr cursor = MakeDataSmTableFile(test::oldMaster(suite.folder()), kAms);
  ASSERT_TRUE(cursor);
  EXPECT_EQ(trim(cursor->value("ANTENNA").asText()), "First");
  EXPECT_TRUE(cursor->value("POWER_UN").isNull());
  cursor->MoveLast();
  EXPECT_EQ(cursor->RecordCount(), 2);
}

TEST(MakeDataSmTableFile, AFailureIsToldWithTheSupportAddressAndLogged) {
  DictionarySuite suite;
  suite.folder().write("QVZOR32.INI", "[CONFIG]\r\nSupportAddress=help@example.org\r\n");
  const std::string path = suite.folder().write("AMSTEST1.DBF", std::string(500, 'x'));
  EXPECT_FALSE(MakeDataSmTableFile(path, kAms));
  ASSERT_EQ(suite.messages.size(), 2u);
  EXPECT_EQ(suite.messages[1].title, "Database Error");
  const std::string start = suite.folder().machine("AMSTEST1.DBF") +
                            "\r\nRSTblValid Error opening database:\r\nMakeDataSmTableFile Open Error: Error 3343: ";
  EXPECT_EQ(suite.messages[1].text.rfind(start, 0), 0u);
  EXPECT_THAT(suite.messages[1].text,
              HasSubstr("\r\nAMSPDBASE\r\n[AMSTEST1]\r\nPlease send the QVTECSUP.TXT file, along with a description of "
                        "what you were trying to do when this error happened, to:\r\n\r\nhelp@example.org"));
  EXPECT_THAT(suite.log(), HasSubstr(start));
}

TEST(MakeDataSmTableFile, AnUnknownTypeGivesNothingAndTouchesNoTable) {
  DictionarySuite suite;
  const std::string path = test::oldMaster(suite.folder());
  const std::string before = suite.folder().read("AMSTEST1.DBF");
  EXPECT_FALSE(MakeDataSmTableFile(path, "NOSUCHTYPE"));
  EXPECT_FALSE(MakeDataSmTableFile(suite.file("AMSTEST2.DBF"), "NOSUCHTYPE"));
  EXPECT_EQ(suite.folder().read("AMSTEST1.DBF"), before);
  EXPECT_FALSE(suite.folder().exists("AMSTEST2.DBF"));
  EXPECT_THAT(suite.log(), HasSubstr("MakeDataSmTableFile Open Error: Error creating file"));
}

}  // namespace
}  // namespace vantrelix
