#include "AntennaSuite.h"
#include "antenna/makeAntFiles.h"
#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "platform/FaultPlatform.h"

namespace vantrelix::test {

namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

using MakeAntFilesTest = AntennaSuite;

TEST_F(MakeAntFilesTest, MakesTheThreeTablesOfALibrary) {
  EXPECT_EQ(MakeAntFiles(kCode), "");
  for (const char* name : {"AMST0001.DBF", "AHDT0001.DBF", "AVDT0001.DBF"}) EXPECT_TRUE(tableExists(name)) << name;
  EXPECT_THAT(suite.messages, IsEmpty());
}

TEST_F(MakeAntFilesTest, TheTablesHaveTheirFieldsInOrder) {
  const auto names = [](const RecordsetPtr& rows) {
    std::string list;
    for (std::size_t i = 0; i < rows->fieldCount(); ++i) list += rows->Fields(i).Name() + " ";
    return list;
  };
  EXPECT_EQ(names(MakeAMSFile(kCode)), "ATYPE_ID ANTENNA GAIN GAIN_UN F_LOW F_HIGH FREQ_UN POWER POWER_UN ");
  EXPECT_EQ(names(MakeAHDFile(kCode)), "ATYPE_ID HOR_AZ HOR_FIELD ");
  EXPECT_EQ(names(MakeAVDFile(kCode)), "ATYPE_ID VERT_ANGLE VERT_FIELD ");
}

TEST_F(MakeAntFilesTest, TheMasterTableHasTheWidthsOfTheDictionary) {
  const RecordsetPtr rows = MakeAMSFile(kCode);
  EXPECT_EQ(rows->Fields("ATYPE_ID").Size(), 12);
  EXPECT_EQ(rows->Fields("ANTENNA").Size(), 60);
  EXPECT_EQ(rows->Fields("GAIN").decimals(), 4);
  EXPECT_EQ(rows->Fields("F_LOW").Size(), 14);
  EXPECT_EQ(rows->Fields("F_LOW").decimals(), 5);
}

TEST_F(MakeAntFilesTest, AMissingPatternTableIsMadeAnewWithoutComplaint) {
  ASSERT_EQ(add(1, "dBd", {1, 0}, {1}), "");
  removeTable("AHDT0001.DBF");
  EXPECT_EQ(MakeAntFiles(kCode), "");
  EXPECT_TRUE(tableExists("AHDT0001.DBF"));
  EXPECT_EQ(read(kFirstId).nHor, 0);
  EXPECT_EQ(read(kFirstId).nVer, 1);
  EXPECT_THAT(suite.messages, IsEmpty());
}

TEST_F(MakeAntFilesTest, KeepsTheRowsThatAreThere) {
  ASSERT_EQ(add(1, "dBd", {1, 0}, {1}), "");
  EXPECT_EQ(MakeAntFiles(kCode), "");
  EXPECT_EQ(rowCount(MakeAHDFile(kCode)), 2);
}

TEST_F(MakeAntFilesTest, ACodeOfAnotherLengthGivesNoCursorAndNoFile) {
  EXPECT_EQ(MakeAMSFile("T001"), nullptr);
  EXPECT_EQ(MakeAHDFile("T00011"), nullptr);
  EXPECT_EQ(MakeAVDFile(""), nullptr);
  EXPECT_EQ(MakeAntFiles("T00011"), "");
  EXPECT_FALSE(tableExists("AMST001.DBF"));
  EXPECT_FALSE(tableExists("AHDT00011.DBF"));
  EXPECT_THAT(suite.messages, IsEmpty());
}

TEST_F(MakeAntFilesTest, AFailureWhileOpeningGoesToTheHandlerAndGivesNoCursor) {
  ASSERT_FALSE(folder().empty());
  ASSERT_EQ(std::remove(suite.folder().machine("ANTENNAS").c_str()), 0);
  EXPECT_EQ(MakeAVDFile(kCode), nullptr);
  EXPECT_FALSE(suite.messages.empty());
  EXPECT_THAT(suite.log(), HasSubstr("AVDT0001\r\nError opening Antenna Library AVD file"));
  EXPECT_EQ(currentProcedure(), 0);
}

TEST_F(MakeAntFilesTest, AFailureOfItsOwnIsTheResult) {
  ASSERT_FALSE(folder().empty());
  ASSERT_EQ(std::remove(suite.folder().machine("ANTENNAS").c_str()), 0);
  // The log cannot be opened while the first table's failure is reported.
  platform::FaultPlatform faulty(platform::current());
  const platform::Substitute substitute(faulty);
  faulty.failAt(1, failure::permissionDenied);
  EXPECT_EQ(MakeAntFiles(kCode), "T0001\r\nError opening Antenna Library ");
  EXPECT_THAT(suite.log(), HasSubstr("Procedure: 5817; Flag 100"));
  EXPECT_EQ(currentProcedure(), 0);
}

TEST_F(MakeAntFilesTest, AFailedOpeningDoesNotShowInTheResult) {
  suite.folder().write("ANTENNAS/AMST0001.DBF", "this is no table");
  EXPECT_EQ(MakeAntFiles(kCode), "");
  EXPECT_FALSE(suite.messages.empty());
  EXPECT_EQ(suite.folder().read("ANTENNAS/AMST0001.DBF"), "this is no table");
  EXPECT_TRUE(tableExists("AVDT0001.DBF"));
}

TEST_F(MakeAntFilesTest, OpensALibraryInAnotherFolder) {
  suite.folder().write("elsewhere/readme", "x");
  const LibraryTables tables = openLibraryTables(suite.file("elsewhere"), kCode);
  ASSERT_TRUE(tables.rsAMS && tables.rsAHD && tables.rsAVD);
  EXPECT_EQ(tables.rsAHD->Fields(1).Name(), "HOR_AZ");
  EXPECT_EQ(tables.rsAVD->Fields(1).Name(), "VERT_ANGLE");
  for (const char* name : {"AMST0001.DBF", "AHDT0001.DBF", "AVDT0001.DBF"}) {
    EXPECT_TRUE(suite.folder().exists(std::string("elsewhere/") + name)) << name;
    EXPECT_FALSE(tableExists(name)) << name;
  }
  EXPECT_TRUE(openLibraryTables("", kCode).rsAMS);
  EXPECT_TRUE(tableExists("AMST0001.DBF"));
}

TEST_F(MakeAntFilesTest, ATableThatCannotBeOpenedLeavesThoseBehindItAsTheyAre) {
  suite.folder().write("elsewhere/AMST0001.DBF", "this is no table");
  const LibraryTables tables = openLibraryTables(suite.file("elsewhere"), kCode);
  EXPECT_FALSE(tables.rsAMS);
  EXPECT_FALSE(tables.rsAVD);
  EXPECT_FALSE(suite.messages.empty());
  EXPECT_FALSE(suite.folder().exists("elsewhere/AHDT0001.DBF"));
  EXPECT_FALSE(suite.folder().exists("elsewhere/AVDT0001.DBF"));
  EXPECT_EQ(suite.folder().read("elsewhere/AMST0001.DBF"), "this is no table");
}

TEST_F(MakeAntFilesTest, PartnerTablesDifferInTheirFirstThreeCharacters) {
  EXPECT_EQ(partnerTable("AMSZ0015", "AHD"), "AHDZ0015");
  EXPECT_EQ(partnerTable("amsz0015", "AVD"), "AVDz0015");
}

}  // namespace

}  // namespace vantrelix::test
