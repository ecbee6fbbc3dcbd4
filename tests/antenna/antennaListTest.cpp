#include "AntennaSuite.h"
#include "antenna/antennaList.h"
#include "antenna/libraryName.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix::test {

namespace {

using ::testing::HasSubstr;

using AntennaList = AntennaSuite;

TEST_F(AntennaList, ListsInAscendingOrderOfDescription) {
  ASSERT_EQ(add(1, "dBd", {1}, {1}, "Whip"), "");
  ASSERT_EQ(add(2, "dBi", {1}, {1}, "Dish"), "");
  ASSERT_EQ(add(3, "REL", {1}, {1}, "Panel"), "");
  const std::vector<AntennaListEntry> list = listAntennas(folder(), kLibrary);
  ASSERT_EQ(list.size(), 3u);
  EXPECT_EQ(list[0].description, "Dish");
  EXPECT_EQ(list[0].id, "T00010000002");
  EXPECT_EQ(list[0].gainUnits, "dBi");
  EXPECT_EQ(list[1].description, "Panel");
  EXPECT_DOUBLE_EQ(list[2].gain, 1);
  EXPECT_DOUBLE_EQ(list[2].fLow, 400);
  EXPECT_EQ(list[2].freqUnits, "MHz");
}

TEST_F(AntennaList, CountsThePointsThatHaveBothValues) {
  ASSERT_EQ(add(1, "dBd", {1, 2, 3}, {1}, "A"), "");
  ASSERT_EQ(add(1, "dBd", {1}, {1, 2}, "B"), "");
  addRow(MakeAHDFile(kCode), {{"ATYPE_ID", kFirstId}, {"HOR_AZ", 90.0}, {"HOR_FIELD", 1.0}});
  addRow(MakeAHDFile(kCode), {{"ATYPE_ID", kFirstId}, {"HOR_AZ", 95.0}});
  const std::vector<AntennaListEntry> list = listAntennas(folder(), kLibrary);
  ASSERT_EQ(list.size(), 2u);
  EXPECT_EQ(list[0].horizontalPoints, 4);
  EXPECT_EQ(list[0].verticalPoints, 1);
  EXPECT_EQ(list[1].horizontalPoints, 1);
  EXPECT_EQ(list[1].verticalPoints, 2);
}

TEST_F(AntennaList, DeletedPointsDoNotCount) {
  ASSERT_EQ(add(1, "dBd", {1, 2, 3}, {1}), "");
  const RecordsetPtr rows = MakeAHDFile(kCode);
  rows->MoveFirst();
  rows->Delete();
  rows->Close();
  const std::vector<AntennaListEntry> list = listAntennas(folder(), kLibrary);
  ASSERT_EQ(list.size(), 1u);
  EXPECT_EQ(list[0].horizontalPoints, 2);
}

TEST_F(AntennaList, MissingPatternTablesCountAsNoPoints) {
  ASSERT_EQ(add(1, "dBd", {1}, {1}), "");
  removeTable("AHDT0001.DBF");
  removeTable("AVDT0001.DBF");
  const std::vector<AntennaListEntry> list = listAntennas(folder(), kLibrary);
  ASSERT_EQ(list.size(), 1u);
  EXPECT_EQ(list[0].horizontalPoints, 0);
  EXPECT_EQ(list[0].verticalPoints, 0);
  EXPECT_FALSE(tableExists("AHDT0001.DBF"));
}

TEST_F(AntennaList, DescriptionsAreTrimmed) {
  ASSERT_EQ(add(1, "dBd", {1}, {1}, "  Panel "), "");
  EXPECT_EQ(listAntennas(folder(), kLibrary).at(0).description, "Panel");
}

TEST_F(AntennaList, NullsReadAsTheirDefaults) {
  addRow(MakeAMSFile(kCode), {{"ATYPE_ID", "N"}});
  const std::vector<AntennaListEntry> list = listAntennas(folder(), kLibrary);
  ASSERT_EQ(list.size(), 1u);
  EXPECT_EQ(list[0].description, "[NO DESCRIPTION]");
  EXPECT_EQ(list[0].gainUnits, "");
  EXPECT_DOUBLE_EQ(list[0].fHigh, 0);
  EXPECT_EQ(list[0].freqUnits, "MHz");
}

TEST_F(AntennaList, AMissingLibraryIsFailure53AndNamed) {
  try {
    listAntennas(folder(), "AMSGONE1");
    FAIL() << "no failure";
  } catch (const RunTimeFailure& failure) {
    EXPECT_EQ(failure.number(), 53);
    EXPECT_THAT(failure.description(), HasSubstr("AMSGONE1.DBF"));
  }
}

TEST_F(AntennaList, AFolderThatCannotBeReadIsTheReasonAndNotAMissingLibrary) {
  try {
    listAntennas(suite.file("nowhere"), kLibrary);
    FAIL() << "no failure";
  } catch (const RunTimeFailure& failure) {
    EXPECT_EQ(failure.number(), 76);
    EXPECT_THAT(failure.description(), HasSubstr("nowhere"));
  }
}

TEST_F(AntennaList, APatternTableWithoutItsFieldsIsAFailure) {
  ASSERT_EQ(add(1, "dBd", {1}, {1}), "");
  DbfFile::create(folder() + "\\AVDT0001.DBF", {{"ATYPE_ID", 'C', 12, 0}});
  EXPECT_THROW(listAntennas(folder(), kLibrary), RunTimeFailure);
}

using ParseLibraryName = AntennaSuite;

TEST_F(ParseLibraryName, ABareNameIsOneOfTheAntennasFolder) {
  const LibraryName name = parseLibraryName("AMSX0001");
  EXPECT_EQ(name.folder, getAntennasPath());
  EXPECT_EQ(name.stem, "AMSX0001");
  EXPECT_EQ(name.code, "X0001");
}

TEST_F(ParseLibraryName, TakesAnyCaseAndTheExtension) {
  EXPECT_EQ(parseLibraryName(" amsx0001.dbf ").stem, "AMSX0001");
  EXPECT_EQ(parseLibraryName("amsx0001.dbf").code, "X0001");
  EXPECT_EQ(parseLibraryName("AMS").code, "");
}

TEST_F(ParseLibraryName, TakesAPathOfTheMachine) {
  const LibraryName name = parseLibraryName(suite.folder().machine("data/AMSX0001.DBF"));
  EXPECT_EQ(name.folder, suite.file("data"));
  EXPECT_EQ(name.stem, "AMSX0001");
}

}  // namespace

}  // namespace vantrelix::test
