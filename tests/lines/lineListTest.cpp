#include <random>

#include "LineSuite.h"
#include "lines/lineList.h"

namespace vantrelix::test {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

class LineListing : public LineSuite {
 protected:
  LineListing() {
    makeLibrary("X0002");
    addLine("X0002", "B", "Second library");
    makeLibrary("X0001");
    addLine("X0001", "Z", "Zeta");
    addLine("X0001", "A", "Alpha");
    addPoints("X0001", "A", {{900, 3}, {30, 1}, {450, 2}});
    addPoints("X0001", "Z", {{100, 3}});
    addPoints("X0001", "A", {{2000, 7}});
  }
  static std::vector<std::string> ids(const LineList& list) {
    std::vector<std::string> found;
    for (const LineRecord& line : list) found.push_back(line.file + " " + line.id);
    return found;
  }
};

TEST_F(LineListing, HoldsEveryLineOfEveryLibraryInFileAndRowOrder) {
  EXPECT_THAT(ids(loadLineList(lookListRules())), ElementsAre("LMSX0001 Z", "LMSX0001 A", "LMSX0002 B"));
}

TEST_F(LineListing, ARecordHasTheLeastAndTheGreatestFrequency) {
  const LineList list = loadLineList(lookListRules());
  ASSERT_EQ(list.size(), 3U);
  EXPECT_EQ(list[1].description, "Alpha");
  EXPECT_EQ(list[1].fMin, 30);
  EXPECT_EQ(list[1].fMax, 2000);
  EXPECT_TRUE(list[1].hasRange);
  EXPECT_EQ(list[0].fMin, 100);
  EXPECT_EQ(list[0].fMax, 100);
}

TEST_F(LineListing, ALineWithoutPointsHasARangeOfZero) {
  const LineRecord line = loadLineList(lookListRules()).back();
  EXPECT_EQ(line.id, "B");
  EXPECT_FALSE(line.hasRange);
  EXPECT_EQ(line.fMin, 0);
  EXPECT_EQ(line.fMax, 0);
}

TEST_F(LineListing, DeletedRowsAndPointsWithoutAFrequencyDoNotCount) {
  addPoints("X0001", "Z", {{std::nullopt, 3}, {5000, 9}});
  const auto points = DbfFile::open(tablePath("LNDX0001"));
  points->markDeleted(points->recordCount() - 1);
  DbfFile::open(tablePath("LMSX0001"))->markDeleted(1);
  const LineList list = loadLineList(lookListRules());
  ASSERT_THAT(ids(list), ElementsAre("LMSX0001 Z", "LMSX0002 B"));
  EXPECT_EQ(list[0].fMin, 100);
  EXPECT_EQ(list[0].fMax, 100);
}

TEST_F(LineListing, ABlankIdIsLoggedWithTheFileAndPassedOver) {
  addLine("X0001", Value(), "no id");
  EXPECT_EQ(loadLineList(lookListRules()).size(), 3U);
  EXPECT_THAT(suite.log(), HasSubstr("Bad TX Line in LMSX0001.DBF  (testhost"));
}

TEST_F(LineListing, TheListOfAllLinesNamesABlankIdInItsOwnWords) {
  addLine("X0001", Value(), "no id");
  EXPECT_EQ(loadLineList(allLinesRules()).size(), 3U);
  EXPECT_THAT(suite.log(), HasSubstr("Bad TX line in LMSX0001.DBF\r\nBLANK ID"));
  EXPECT_THAT(suite.log(), Not(HasSubstr("Bad TX Line")));
}

TEST_F(LineListing, ABlankDescriptionStaysBlankOrReadsNoDescription) {
  addLine("X0001", "C", Value());
  EXPECT_EQ(loadLineList(lookListRules())[2].description, "");
  EXPECT_EQ(loadLineList(allLinesRules())[2].description, "NO DESCRIPTION");
}

TEST_F(LineListing, TextsAreCutToTheWidthsOfTheRecord) {
  makeLibrary("X0001LONG");
  addLine("X0001LONG", "ABCDEFGHIJKL", std::string(75, 'd') + "e");
  LineList list = readLineLibrary(folder(), "LMSX0001LONG.DBF", lookListRules());
  ASSERT_EQ(list.size(), 1U);
  EXPECT_EQ(list[0].file, "LMSX0001");
  EXPECT_EQ(list[0].id, "ABCDEFGHIJ");
  EXPECT_EQ(list[0].description, std::string(75, 'd'));
}

TEST_F(LineListing, TheRangeIsThatOfTheWholeIdAndNotOfItsCut) {
  addLine("X0001", "ABCDEFGHIJKL", "long");
  addPoints("X0001", "ABCDEFGHIJ", {{1, 1}});
  addPoints("X0001", "ABCDEFGHIJKL", {{7, 1}});
  EXPECT_EQ(loadLineList(lookListRules())[2].fMin, 7);
}

TEST_F(LineListing, RangesAreWhatTheQueriesGive) {
  std::mt19937 random(7);
  const auto number = [&](int most) { return static_cast<int>(random() % static_cast<unsigned>(most)); };
  const std::vector<std::string> ids{"A", "Z", "a", " A", "A1", "N"};
  for (const char* id : {"a", " A", "A1", "N"}) addLine("X0001", id, id);
  for (int i = 0; i < 300; ++i) {
    const std::string id = ids[static_cast<std::size_t>(number(5))];
    std::optional<double> freq;
    if (number(10) != 0) freq = (number(200000) - 20) / 10.0;
    addPoints("X0001", id, {{freq, number(9)}});
  }
  const DatabasePtr database = DBEngine::OpenDatabase(folder(), false, true);
  const LineList list = readLineLibrary(folder(), "LMSX0001", lookListRules());
  ASSERT_EQ(list.size(), 6U);
  for (const LineRecord& line : list) {
    const RecordsetPtr row = database->OpenRecordset(
        "Select min([Freq]) AS MinFreq, max([Freq]) AS MaxFreq from [LNDX0001] where [Ltype_ID] = '" + line.id + "'");
    EXPECT_EQ(line.hasRange, !row->value("MinFreq").isNull()) << line.id;
    if (!line.hasRange) continue;
    EXPECT_EQ(line.fMin, row->value("MinFreq").number()) << line.id;
    EXPECT_EQ(line.fMax, row->value("MaxFreq").number()) << line.id;
  }
}

TEST_F(LineListing, PointsThatCannotBeReadLeaveTheLinesWithoutARange) {
  removeTable("LNDX0001");
  const LineList list = loadLineList(lookListRules());
  ASSERT_THAT(ids(list), ElementsAre("LMSX0001 Z", "LMSX0001 A", "LMSX0002 B"));
  EXPECT_FALSE(list[1].hasRange);
  EXPECT_THAT(suite.log(), HasSubstr("LMSX0001.DBF\r\nError 3011: "));
  EXPECT_TRUE(suite.messages.empty());
}

TEST_F(LineListing, AMasterThatCannotBeReadIsLoggedAndTheOthersAreListed) {
  suite.folder().write("LINES/LMSBAD00.DBF", "this is no table");
  DbfFile::create(tablePath("LMSNOIDS"), {{"LN_TYPE", 'C', 10, 0}});
  addRow("LMSNOIDS", {{"LN_TYPE", "x"}});
  EXPECT_EQ(loadLineList(lookListRules()).size(), 3U);
  EXPECT_THAT(suite.log(), HasSubstr("LMSBAD00.DBF\r\nError 3343: "));
  EXPECT_THAT(suite.log(), HasSubstr("LMSNOIDS.DBF\r\nError 3265: "));
}

TEST_F(LineListing, WithNobodyToTellAFailureIsThrown) {
  removeTable("LNDX0001");
  EXPECT_EQ(failureOf([] { loadLineList({}); }), failure::noSuchTable);
  removeTable("LMSX0001");
  EXPECT_EQ(failureOf([] { readLineLibrary(folder(), "LMSX0001", {}); }), failure::noSuchTable);
}

TEST_F(LineListing, OtherFilesAndFoldersAreNoLibraries) {
  suite.folder().write("LINES/LMSX0001.TXT", "x");
  suite.folder().write("LINES/XLMS0001.DBF", "x");
  suite.folder().write("LINES/LMSDIR00.DBF/inside", "x");
  EXPECT_EQ(loadLineList({}).size(), 3U);
}

TEST_F(LineListing, LowerCaseFileNamesAreLibrariesToo) {
  platform::current().rename(tablePath("LMSX0001"), tablePath("lmsx0001"));
  EXPECT_THAT(ids(loadLineList({})), ElementsAre("lmsx0001 Z", "lmsx0001 A", "LMSX0002 B"));
}

TEST_F(LineListing, WithoutALinesFolderTheListIsEmpty) {
  platform::current().rename(suite.file("LINES"), suite.file("ELSEWHERE"));
  EXPECT_TRUE(loadLineList({}).empty());
  EXPECT_FALSE(suite.folder().exists("LINES"));
}

TEST_F(LineListing, EachCallReadsTheLibrariesAnew) {
  EXPECT_EQ(loadLineList({}).size(), 3U);
  addLine("X0002", "C", "Third");
  EXPECT_EQ(loadLineList({}).size(), 4U);
  removeTable("LMSX0001");
  EXPECT_EQ(loadLineList({}).size(), 2U);
}

TEST_F(LineListing, ADescriptionLeadsToFileIdAndRange) {
  const LineList list = loadLineList({});
  std::string file = "old";
  std::string id = "old";
  double low = -1;
  double high = -1;
  GetLineFileID(list, "  Alpha ", file, id);
  GetLineFreqRange(list, "  Alpha ", low, high);
  EXPECT_EQ(file, "LMSX0001");
  EXPECT_EQ(id, "A");
  EXPECT_EQ(low, 30);
  EXPECT_EQ(high, 2000);
}

TEST_F(LineListing, BlanksBeforeADescriptionDoNotCount) {
  addLine("X0002", "C", "  Padded");
  const LineList list = loadLineList({});
  const LineRecord* line = lineOfDescription(list, "Padded");
  ASSERT_NE(line, nullptr);
  EXPECT_EQ(line->id, "C");
}

TEST_F(LineListing, AnUnknownDescriptionLeadsToBlanks) {
  std::string file = "old";
  std::string id = "old";
  double low = -1;
  double high = -1;
  GetLineFileID(loadLineList({}), "alpha", file, id);
  GetLineFreqRange(loadLineList({}), "alpha", low, high);
  EXPECT_EQ(file + id, "");
  EXPECT_EQ(low, 0);
  EXPECT_EQ(high, 0);
}

TEST_F(LineListing, OfTwoLinesWithOneDescriptionTheFirstIsFound) {
  addLine("X0002", "C", " Alpha");
  std::string file;
  std::string id;
  GetLineFileID(loadLineList({}), "Alpha", file, id);
  EXPECT_EQ(file + " " + id, "LMSX0001 A");
}

}  // namespace

}  // namespace vantrelix::test
