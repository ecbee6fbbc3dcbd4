#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/suitePaths.h"
#include "platform/RunTimeFailure.h"
#include "tables/dictionary.h"
#include "tables/dictionaryTables.h"

namespace vantrelix {
namespace {

using test::addDictionaryRow;
using test::DictionarySuite;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

std::vector<std::string> described(const FieldList& fields) {
  std::vector<std::string> texts;
  for (const FieldDescription& field : fields) {
    texts.push_back(field.Name + " " + std::to_string(static_cast<int>(field.Type)) + " " + std::to_string(field.Size) +
                    "." + field.ValidationText);
  }
  return texts;
}

TEST(FieldsFromDataSum, TheMasterTableHasNineFieldsInTheOrderOfTheGrid) {
  DictionarySuite suite;
  EXPECT_THAT(described(FieldsFromDataSum("AMSPDBASE")),
              ElementsAre("ATYPE_ID 10 12.0", "ANTENNA 10 60.0", "GAIN 7 12.4", "GAIN_UN 10 5.0", "F_LOW 7 14.5",
                          "F_HIGH 7 14.5", "FREQ_UN 10 5.0", "POWER 7 12.4", "POWER_UN 10 5.0"));
}

TEST(FieldsFromDataSum, ThePatternTablesHaveAnIdAnAngleAndAValue) {
  DictionarySuite suite;
  EXPECT_THAT(described(FieldsFromDataSum("AHDTADBASE")),
              ElementsAre("ATYPE_ID 10 12.0", "HOR_AZ 7 10.4", "HOR_FIELD 7 12.4"));
  EXPECT_THAT(described(FieldsFromDataSum("AVDTADBASE")),
              ElementsAre("ATYPE_ID 10 12.0", "VERT_ANGLE 7 10.4", "VERT_FIELD 7 12.4"));
}

TEST(FieldsFromDataSum, TheSortKeyGivesTheOrderAndNotThePlaceInTheFile) {
  DictionarySuite suite;
  addDictionaryRow(suite.dictionary, "OTHER", 900, "LAST", 3, 0, "STRING", "C");
  addDictionaryRow(suite.dictionary, "OTHER", 90, "FIRST", 3, 0, "STRING", "C");
  EXPECT_THAT(described(FieldsFromDataSum("OTHER")), ElementsAre("FIRST 10 3.0", "LAST 10 3.0"));
}

TEST(FieldsFromDataSum, ANullInTheDecimalsIsTheEmptyText) {
  DictionarySuite suite;
  test::addRow(
      suite.dictionary,
      {{"TABLE_TYPE", "OTHER"}, {"DATASUM_ID", 1}, {"FLD_NAME", "NAME"}, {"FLD_WIDTH", 7}, {"VB_TYPE", "string"}});
  EXPECT_THAT(described(FieldsFromDataSum("OTHER")), ElementsAre("NAME 10 7."));
}

TEST(FieldsFromDataSum, ATypeWithoutRowsGivesNothingAndALogRecord) {
  DictionarySuite suite;
  EXPECT_TRUE(FieldsFromDataSum("NOSUCHTYPE").empty());
  const std::string log = suite.log();
  EXPECT_THAT(log, HasSubstr("Error in FieldsFromDataSum; Err: 3021 "));
  EXPECT_THAT(log, HasSubstr("\nNOSUCHTYPE\r\n"));
  EXPECT_THAT(log, HasSubstr("SELECT * from [QVDATASM] Where ([Table_type] = 'NOSUCHTYPE') Order by [Datasum_id]"));
  EXPECT_THAT(log, HasSubstr("Row 0\r\nFlag 1200"));
  EXPECT_TRUE(suite.messages.empty());
}

TEST(FieldsFromDataSum, AnUnknownOrEmptyTypeWordEndsTheReadingAtItsRow) {
  DictionarySuite suite;
  addDictionaryRow(suite.dictionary, "ODD", 1, "GOOD", 3, 0, "STRING", "C");
  addDictionaryRow(suite.dictionary, "ODD", 2, "BAD", 3, 0, "WHATEVER", "C");
  addDictionaryRow(suite.dictionary, "BLANK", 1, "BARE", 3, 0, "", "C");
  EXPECT_TRUE(FieldsFromDataSum("ODD").empty());
  EXPECT_THAT(suite.log(), HasSubstr("the field BAD"));
  EXPECT_THAT(suite.log(), HasSubstr("Row 2\r\n"));
  EXPECT_TRUE(FieldsFromDataSum("BLANK").empty());
  EXPECT_THAT(suite.log(), HasSubstr("the field BARE"));
}

TEST(FieldsFromDataSum, WithoutADictionaryFileTheLogNamesTheFolder) {
  test::TempSuite suite;
  EXPECT_TRUE(FieldsFromDataSum("AMSPDBASE").empty());
  EXPECT_THAT(suite.log(), HasSubstr("Error in FieldsFromDataSum; Err: 3011 "));
  EXPECT_THAT(suite.log(), HasSubstr(suite.folder().machine("SYSTEM")));
  EXPECT_FALSE(suite.folder().exists("SYSTEM/QVDATASM.DBF"));
}

TEST(RSDataSm, TheCursorStandsOnTheFirstRowOfTheType) {
  DictionarySuite suite;
  const RecordsetPtr rows = RSDataSm("AVDTADBASE");
  ASSERT_TRUE(rows);
  EXPECT_EQ(trim(rows->value("FLD_NAME").asText()), "ATYPE_ID");
  rows->MoveLast();
  EXPECT_EQ(rows->RecordCount(), 3);
  EXPECT_FALSE(RSDataSm("NOSUCHTYPE"));
}

TEST(RSDataSm, TheSiteTypeStandsForFiveTypesInOneSortedList) {
  DictionarySuite suite;
  addDictionaryRow(suite.dictionary, "FACRX2DBSE", 9050, "E", 1, 0, "STRING", "C");
  addDictionaryRow(suite.dictionary, "FACDBASE", 9020, "B", 1, 0, "STRING", "C");
  addDictionaryRow(suite.dictionary, "FACTXDBASE", 9010, "A", 1, 0, "STRING", "C");
  addDictionaryRow(suite.dictionary, "FACRX1DBSE", 9040, "D", 1, 0, "STRING", "C");
  addDictionaryRow(suite.dictionary, "FACRXDBASE", 9030, "C", 1, 0, "STRING", "C");
  std::string names;
  const RecordsetPtr rows = RSDataSm(dictionaryFilter("FACDBASE"));
  ASSERT_TRUE(rows);
  for (; !rows->Eof(); rows->MoveNext()) names += trim(rows->value("FLD_NAME").asText());
  EXPECT_EQ(names, "ABCDE");
  EXPECT_EQ(dictionaryFilter("AMSPDBASE"), "AMSPDBASE");
}

TEST(GetIsFieldInTable, AFieldIsFoundInAnyCaseAndAMissingOneIsNot) {
  DictionarySuite suite;
  const RecordsetPtr rows = RSDataSm("AMSPDBASE");
  ASSERT_TRUE(rows);
  EXPECT_TRUE(getIsFieldInTable(*rows, "FLD_NAME"));
  EXPECT_TRUE(getIsFieldInTable(*rows, "fld_Name"));
  EXPECT_FALSE(getIsFieldInTable(*rows, "FLD_NAMES"));
  EXPECT_FALSE(getIsFieldInTable(*rows, ""));
  rows->Close();
  EXPECT_FALSE(getIsFieldInTable(*rows, "FLD_NAME"));
}

TEST(InstallDictionary, TheDictionaryIsATableOfTheSevenColumns) {
  test::TempSuite suite;
  const std::string path = installDictionary();
  EXPECT_EQ(path, getSystemPath() + "\\QVDATASM.DBF");
  std::vector<std::string> columns;
  const auto table = DbfFile::open(path, true);
  for (const DbfField& field : table->fields()) {
    columns.push_back(field.name + " " + field.type + std::to_string(field.width));
  }
  EXPECT_THAT(columns, ElementsAre("TABLE_TYPE C12", "DATASUM_ID N8", "FLD_NAME C10", "FLD_WIDTH N5", "FLD_DEC N3",
                                   "VB_TYPE C12", "FOX_TYPE C1"));
  EXPECT_EQ(test::column(path, "FLD_NAME").size(), 15u);
  EXPECT_EQ(test::filesThatBegin(suite.folder(), "SYSTEM").size(), 1u);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(suite.folder().machine("SYSTEM")), {}), 1);
}

TEST(InstallDictionary, ADictionaryThatIsThereIsKeptWhateverTheCaseOfItsName) {
  DictionarySuite suite;
  addDictionaryRow(suite.dictionary, "MINE", 1, "OWN", 3, 0, "STRING", "C");
  std::filesystem::rename(suite.folder().machine("SYSTEM/QVDATASM.DBF"), suite.folder().machine("SYSTEM/QvDataSm.dbf"));
  const std::string before = suite.folder().read("SYSTEM/QvDataSm.dbf");
  installDictionary();
  EXPECT_EQ(suite.folder().read("SYSTEM/QvDataSm.dbf"), before);
  EXPECT_FALSE(suite.folder().exists("SYSTEM/QVDATASM.DBF"));
}

// Installs a dictionary with a crash at that changing call; gives the calls it came to.
int stoppedInstallation(int call) {
  test::TempSuite suite;
  getSystemPath();
  platform::FaultPlatform faults(platform::current());
  {
    platform::Substitute substitute(faults);
    faults.crashAt(call, call % 2 == 0);
    try {
      installDictionary();
    } catch (const RunTimeFailure&) {
      // What is on the disk by now is what counts.
    }
  }
  if (suite.folder().exists("SYSTEM/QVDATASM.DBF")) {
    EXPECT_EQ(test::column(suite.file("SYSTEM/QVDATASM.DBF"), "FLD_NAME").size(), 15u) << call;
  }
  EXPECT_EQ(test::column(installDictionary(), "FLD_NAME").size(), 15u) << call;
  return faults.calls();
}

TEST(InstallDictionary, StoppedAnywhereItLeavesAWholeDictionaryOrNone) {
  const int calls = stoppedInstallation(1 << 20);
  ASSERT_GT(calls, 15);
  for (int call = 1; call <= calls; ++call) stoppedInstallation(call);
}

}  // namespace
}  // namespace vantrelix
