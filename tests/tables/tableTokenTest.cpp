#include <filesystem>
#include <gtest/gtest.h>

#include "platform/FaultPlatform.h"
#include "support/TempFolder.h"
#include "tables/Database.h"
#include "tables/cursorTables.h"
#include "tables/dictionaryTables.h"
#include "tables/structure.h"

namespace vantrelix {
namespace {

using test::TempFolder;

// Where the system has short names, a token is the base name of one.
std::string tokenOf(const std::string& path, const std::string& longName) {
  return platform::current().shortName(path) ? TableToken(path) : "[" + longName + "]";
}

TEST(TableToken, IsTheBaseNameInBrackets) {
  const TempFolder folder;
  EXPECT_EQ(TableToken(folder.file("AMSX.DBF")), "[AMSX]");
  EXPECT_EQ(TableTokenFromParts(folder.path(), "AMSX", "DBF"), "[AMSX]");
  EXPECT_EQ(TableTokenFromParts(folder.path() + "\\", "AMSX", ".DBF"), "[AMSX]");
}

TEST(TableToken, OnAPathThatDoesNotExistLeavesNoFileBehind) {
  const TempFolder folder;
  TableToken(folder.file("AMSX.DBF"));
  TableTokenFromParts(folder.path(), "AMSY", "DBF");
  EXPECT_FALSE(folder.exists("AMSX.DBF"));
  EXPECT_TRUE(std::filesystem::is_empty(folder.machine()));
}

TEST(TableToken, LeavesAnExistingFileAsItIs) {
  const TempFolder folder;
  folder.write("AMSX.DBF", "content");
  folder.write("amsy.dbf", "");
  TableToken(folder.file("AMSX.DBF"));
  TableToken(folder.file("AMSY.DBF"));
  EXPECT_EQ(folder.read("AMSX.DBF"), "content");
  EXPECT_TRUE(folder.exists("amsy.dbf"));
  EXPECT_FALSE(folder.exists("AMSY.DBF"));
}

TEST(TableToken, OfAFolderThatIsNotThereIsStillGiven) {
  const TempFolder folder;
  EXPECT_EQ(TableToken(folder.file("missing\\AMSX.DBF")), "[AMSX]");
  EXPECT_FALSE(folder.exists("missing"));
}

TEST(TableToken, ReachesAFileNameWithBlanks) {
  const TempFolder folder;
  const std::string path = folder.file("AMS Long Name.v2.DBF");
  DbfFile::create(path, {{"ATYPE_ID", 'C', 12, 0}});
  test::addCells(path, {{"ATYPE_ID", "A1"}});
  const std::string token = TableToken(path);
  EXPECT_EQ(token, tokenOf(path, "AMS Long Name.v2"));
  const RecordsetPtr rows = DBEngine::OpenDatabase(folder.path())->OpenRecordset("Select * from " + token);
  EXPECT_EQ(trim(rows->value("ATYPE_ID").text()), "A1");
}

class BracketedName : public testing::TestWithParam<const char*> {};

TEST_P(BracketedName, IsReachedByItsTokenInEveryStatement) {
  const TempFolder folder;
  const std::string path = folder.file(std::string(GetParam()) + ".DBF");
  DbfFile::create(path, {{"ATYPE_ID", 'C', 12, 0}});
  for (const char* id : {"B2", "A1"}) test::addCells(path, {{"ATYPE_ID", id}});
  const std::string token = TableToken(path);
  EXPECT_EQ(token, tokenOf(path, GetParam()));
  const DatabasePtr database = DBEngine::OpenDatabase(folder.path());
  const auto first = [&](const std::string& behind) {
    return trim(database->OpenRecordset("SELECT * from " + token + behind)->value("ATYPE_ID").text());
  };
  for (const char* none : {"", ";", "  ", "\r\n;"}) EXPECT_EQ(first(none), "B2") << none;
  EXPECT_EQ(first(" Order by [ATYPE_ID] ASC"), "A1");
  EXPECT_EQ(first("WHERE [ATYPE_ID] <> 'B2'"), "A1");
  EXPECT_EQ(database->Execute("Insert Into " + token + " Select [ATYPE_ID] From " + token), 2);
  EXPECT_EQ(database->Execute("insert into " + token + "(ATYPE_ID) select '[x]' from " + token), 4);
}

INSTANTIATE_TEST_SUITE_P(TableToken, BracketedName,
                         testing::Values("AHD My [1]", "[1]", "[", "]", "A [ B", "A ] B", "A]wherever", "a[b[1]][2]",
                                         "a ]] b", "AHD [1] copy", "[1] [2]"));

TEST(TableToken, OfANameWithAnOpeningBracketEndsAtTheFirstClosingOneThatCanEndIt) {
  const TempFolder folder;
  const std::string path = folder.file("AHD [1.DBF");
  DbfFile::create(path, {{"ATYPE_ID", 'C', 12, 0}});
  test::addCells(path, {{"ATYPE_ID", "A1"}});
  const DatabasePtr database = DBEngine::OpenDatabase(folder.path());
  for (const char* behind : {" where ATYPE_ID <> ']'", "order by [ATYPE_ID]", "\twhere [ATYPE_ID] <> '] order by ['"}) {
    EXPECT_EQ(database->OpenRecordset(std::string("select * from [AHD [1]") + behind)->RecordCount(), 1) << behind;
  }
}

TEST(TableToken, OfANameWithBracketsServesItsMakingItsOpeningAndItsRepair) {
  const test::DictionarySuite suite;
  const std::string made = suite.file("AHD My [1].DBF");
  const RecordsetPtr rows = MakeDataSmTableFile(made, "AHDTADBASE");
  ASSERT_TRUE(rows);
  EXPECT_TRUE(rows->Eof());
  rows->Close();
  EXPECT_EQ(RSTblValidRS(FieldsFromDataSum("AHDTADBASE"), made, false, false, "AHDTADBASE"), tableCode::fine);
  const std::string old = test::oldMaster(suite.folder(), "AMS My [1].DBF");
  EXPECT_EQ(RSTblValidRS(FieldsFromDataSum("AMSPDBASE"), old, false, false, "AMSPDBASE"), tableCode::structureUnknown);
  EXPECT_EQ(RSTblValidRS(FieldsFromDataSum("AMSPDBASE"), old, true, false, "AMSPDBASE"), tableCode::fine);
  EXPECT_EQ(test::column(old, "ANTENNA"), (std::vector<std::string>{"First", "Second"}));
  EXPECT_EQ(test::column(old, "POWER"), (std::vector<std::string>{"(null)", "(null)"}));
  EXPECT_EQ(test::filesThatBegin(suite.folder(), "AMS My [1]_20").size(), 1U);
}

// A system with short names; only what exists has one.
class ShortNames : public platform::FaultPlatform {
 public:
  ShortNames() : FaultPlatform(platform::current()) {}
  std::optional<std::string> shortName(const std::string& path) override {
    if (folderExists(path)) return path;
    if (!fileExists(path)) return std::nullopt;
    return path.substr(0, path.find_last_of('\\')) + "\\AMSLON~1.DBF";
  }
};

TEST(TableToken, IsTheShortNameWhereTheSystemHasOneEvenOfAFileNotThereYet) {
  const TempFolder folder;
  ShortNames system;
  const platform::Substitute substitute(system);
  EXPECT_EQ(TableToken(folder.file("AMS Long Name.DBF")), "[AMSLON~1]");
  EXPECT_TRUE(std::filesystem::is_empty(folder.machine()));
  folder.write("AMS Long Name.DBF", "content");
  EXPECT_EQ(TableToken(folder.file("AMS Long Name.DBF")), "[AMSLON~1]");
  EXPECT_EQ(folder.read("AMS Long Name.DBF"), "content");
}

TEST(TableToken, OnASystemWithoutShortNamesMakesNoFileAtAll) {
  const TempFolder folder;
  platform::FaultPlatform system(platform::current());
  const platform::Substitute substitute(system);
  if (system.shortName(folder.path())) GTEST_SKIP() << "this system has short names";
  EXPECT_EQ(TableToken(folder.file("AMS Long Name.DBF")), "[AMS Long Name]");
  EXPECT_EQ(system.calls(), 0);
}

TEST(GetShortName, GivesThePathWhereThereIsNoShortOne) {
  const TempFolder folder;
  const std::string path = folder.file("A name that is long.DBF");
  EXPECT_EQ(getShortName(path), platform::current().shortName(path).value_or(path));
  EXPECT_FALSE(getShortName(path).empty());
}

}  // namespace
}  // namespace vantrelix
