#include "AntennaSuite.h"
#include "antenna/getAntArrayDB.h"
#include "foundation/errHand.h"
#include "foundation/extract.h"

namespace vantrelix::test {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

using GetAntArrayDB = AntennaSuite;

constexpr const char* kUnused = "\r\n\r\nThe antenna specified for this task will not be used.";

TEST_F(GetAntArrayDB, GivesOneAntennaAsItIsStored) {
  ASSERT_EQ(add(12.34567, "dBd", {12.34567, 9.87654, -3.5}, {12.34567, 1.5}, "Panel 900"), "");
  const Reading r = read(kFirstId);
  EXPECT_DOUBLE_EQ(r.Gain, 12.3457);
  EXPECT_EQ(r.GainUnits.substr(0, 3), "dBd");
  EXPECT_EQ(r.Description, "Panel 900");
  EXPECT_EQ(r.nHor, 3);
  EXPECT_THAT(r.HorAz, ElementsAre(0, 10, 20));
  EXPECT_THAT(r.HorField, ElementsAre(12.3457, 9.8765, -3.5));
  EXPECT_EQ(r.nVer, 2);
  EXPECT_THAT(r.VerAngle, ElementsAre(0, 5));
  EXPECT_THAT(r.VerField, ElementsAre(12.3457, 1.5));
}

TEST_F(GetAntArrayDB, GivesTheBandAndClearsTheErrorText) {
  ASSERT_EQ(add(1, "dBd", {1}, {1}), "");
  const Reading r = read(kFirstId);
  EXPECT_DOUBLE_EQ(r.FLow, 400);
  EXPECT_DOUBLE_EQ(r.FHigh, 470);
  EXPECT_EQ(r.FreqUnits, "MHz");
  EXPECT_EQ(r.ErrorText, "");
  EXPECT_THAT(suite.messages, IsEmpty());
}

TEST_F(GetAntArrayDB, GivesPointsInAscendingNumericOrderWithNothingElseDoneToThem) {
  ASSERT_EQ(HDwrtAntDBF(kCode, "A", 5, "dBd", 4, {100, 20, 3, 20}, {1, 2, 3, 4}, 3, {10, -90, 0}, {5, 6, 7}, 0, 0), "");
  const Reading r = read(kFirstId);
  EXPECT_THAT(r.HorAz, ElementsAre(3, 20, 20, 100));
  EXPECT_THAT(r.VerAngle, ElementsAre(-90, 0, 10));
  EXPECT_THAT(r.VerField, ElementsAre(6, 7, 5));
}

TEST_F(GetAntArrayDB, ABlankLibraryOrIdGivesNoAntennaWithoutAMessage) {
  const Reading r = read("X", "dBi", false, " ");
  EXPECT_DOUBLE_EQ(r.Gain, 2.15);
  EXPECT_EQ(r.GainUnits, "dBi");
  EXPECT_EQ(r.nHor, 0);
  EXPECT_THAT(r.HorAz, ElementsAre(0));
  EXPECT_THAT(r.VerField, ElementsAre(0));
  EXPECT_DOUBLE_EQ(read(" ", "", false).Gain, 0);
  EXPECT_THAT(suite.messages, IsEmpty());
}

TEST_F(GetAntArrayDB, UnknownDesiredUnitsBecomeRelBehindOneMessage) {
  ASSERT_EQ(add(10, "dBd", {10, 4}, {10}), "");
  const Reading r = read(kFirstId, "xyz");
  EXPECT_EQ(r.DesiredUnits, "REL");
  EXPECT_EQ(r.GainUnits, "REL");
  EXPECT_DOUBLE_EQ(r.Gain, 10);
  EXPECT_THAT(r.HorField, ElementsAre(1, 0.5012));
  ASSERT_EQ(suite.messages.size(), 1u);
  EXPECT_EQ(suite.messages[0].title, "Antenna Gain Units");
  EXPECT_EQ(suite.messages[0].text, "Unrecognized DesiredUnits xyz");
  EXPECT_EQ(suite.messages[0].icon, MsgIcon::information);
}

TEST_F(GetAntArrayDB, QuietKeepsTheMessageOnUnitsBack) {
  ASSERT_EQ(add(10, "dBd", {10}, {10}), "");
  EXPECT_EQ(read(kFirstId, "xyz", true).GainUnits, "REL");
  EXPECT_THAT(suite.messages, IsEmpty());
}

TEST_F(GetAntArrayDB, OnlyAConversionRoundsToFourDecimals) {
  MakeAntFiles(kCode);
  DbfFile::create(setPathName(folder(), "AHDT0001.DBF"),
                  {{"ATYPE_ID", 'C', 12, 0}, {"HOR_AZ", 'N', 10, 4}, {"HOR_FIELD", 'N', 16, 8}});
  ASSERT_EQ(add(10.5, "dBd", {10.12345678, -3.25}, {10.5}), "");
  EXPECT_THAT(read(kFirstId).HorField, ElementsAre(10.12345678, -3.25));
  EXPECT_THAT(read(kFirstId, "dBd").HorField, ElementsAre(10.12345678, -3.25));
  const Reading otherCase = read(kFirstId, "dbd");
  EXPECT_THAT(otherCase.HorField, ElementsAre(10.1235, -3.25));
  EXPECT_EQ(otherCase.GainUnits, "dbd");
  EXPECT_DOUBLE_EQ(otherCase.Gain, 10.5);
}

TEST_F(GetAntArrayDB, DesiredUnitsAreTrimmedBeforeTheyAreCompared) {
  ASSERT_EQ(add(10, "dBd", {10, 7}, {10}), "");
  EXPECT_THAT(read(kFirstId, " dBd ").HorField, ElementsAre(10, 7));
  EXPECT_EQ(read(kFirstId, " dBd ").GainUnits.substr(0, 3), "dBd");
  EXPECT_EQ(read("nobody", " dBd ", true).GainUnits, "dBd");
  EXPECT_THAT(read(kFirstId, " dbi ").HorField, ElementsAre(12.15, 9.15));
  EXPECT_THAT(suite.messages, IsEmpty());
}

TEST_F(GetAntArrayDB, ConvertsGainAndBothCutsToTheUnitsAskedFor) {
  ASSERT_EQ(add(10, "dBd", {10, 4}, {10, 3.9794}), "");
  const Reading r = read(kFirstId, "REL");
  EXPECT_DOUBLE_EQ(r.Gain, 10);
  EXPECT_THAT(r.HorField, ElementsAre(1, 0.5012));
  EXPECT_THAT(r.VerField, ElementsAre(1, 0.5));
  EXPECT_THAT(r.HorAz, ElementsAre(0, 10));
}

TEST_F(GetAntArrayDB, PatternValuesAreConvertedByTheStoredGain) {
  ASSERT_EQ(add(12.5, "dBd", {12.5, 9.17}, {12.5}), "");
  const Reading relative = read(kFirstId, "REL");
  EXPECT_DOUBLE_EQ(relative.Gain, 17.7828);
  EXPECT_THAT(relative.HorField, ElementsAre(1, 0.6816));
  ASSERT_EQ(add(4, "REL", {1, 0.5}, {0.25}), "");
  const Reading decibels = read("T00010000002", "dBi");
  EXPECT_DOUBLE_EQ(decibels.Gain, 8.1706);
  EXPECT_THAT(decibels.HorField, ElementsAre(8.1706, 2.15));
  EXPECT_THAT(decibels.VerField, ElementsAre(-3.8706));
}

TEST_F(GetAntArrayDB, OneVariableForBothUnitsGivesTheAntennaAsStored) {
  ASSERT_EQ(add(10, "dBi", {10}, {10}), "");
  Reading r;
  std::string units = "REL";
  Get_Ant_ArrayDB(folder(), kLibrary, kFirstId, r.Gain, units, r.nHor, r.HorAz, r.HorField, r.nVer, r.VerAngle,
                  r.VerField, r.Description, units, r.FLow, r.FHigh, r.FreqUnits, false, r.ErrorText);
  EXPECT_EQ(units.substr(0, 3), "dBi");
  EXPECT_DOUBLE_EQ(r.Gain, 10);
  EXPECT_THAT(r.HorField, ElementsAre(10));
}

TEST_F(GetAntArrayDB, OneVariableForBothUnitsOfAMissingAntennaIsInDBd) {
  MakeAntFiles(kCode);
  Reading r;
  std::string units = "REL";
  Get_Ant_ArrayDB(folder(), kLibrary, "nobody", r.Gain, units, r.nHor, r.HorAz, r.HorField, r.nVer, r.VerAngle,
                  r.VerField, r.Description, units, r.FLow, r.FHigh, r.FreqUnits, true, r.ErrorText);
  EXPECT_EQ(units, "dBd");
  EXPECT_DOUBLE_EQ(r.Gain, 0);
}

TEST_F(GetAntArrayDB, AMissingLibraryIsTold) {
  const Reading r = read("X", "", false, " AMSGONE1 ");
  const std::string text =
      "The specified antenna data base was not found:\r\n" + displayPath(setPathName(folder(), "AMSGONE1.DBF"));
  EXPECT_EQ(r.ErrorText, text);
  ASSERT_EQ(suite.messages.size(), 1u);
  EXPECT_EQ(suite.messages[0].title, "Antenna Data Base Error 2");
  EXPECT_EQ(suite.messages[0].text, text + kUnused);
  EXPECT_EQ(r.GainUnits, "dBd");
  EXPECT_EQ(r.nVer, 0);
}

TEST_F(GetAntArrayDB, AMissingAntennaIsTold) {
  MakeAntFiles(kCode);
  const Reading r = read("nobody", "dBi");
  const std::string text = "The specified antenna was not found:\r\n" + displayPath(setPathName(folder(), kLibrary)) +
                           "\r\nAntenna ID: nobody";
  EXPECT_EQ(r.ErrorText, "\r\n" + text);
  ASSERT_EQ(suite.messages.size(), 1u);
  EXPECT_EQ(suite.messages[0].title, "Antenna Data Base Error 3");
  EXPECT_EQ(suite.messages[0].text, text + kUnused);
  EXPECT_DOUBLE_EQ(r.Gain, 2.15);
  EXPECT_EQ(r.GainUnits, "dBi");
}

TEST_F(GetAntArrayDB, AMissingAntennaIsWorthOneInRel) {
  MakeAntFiles(kCode);
  const Reading r = read("nobody", "REL", true);
  EXPECT_DOUBLE_EQ(r.Gain, 1);
  EXPECT_EQ(r.GainUnits, "REL");
  EXPECT_THAT(r.ErrorText, HasSubstr("Antenna ID: nobody"));
  EXPECT_THAT(suite.messages, IsEmpty());
}

TEST_F(GetAntArrayDB, IdsCompareWithoutTrailingBlanksAndMindingCase) {
  ASSERT_EQ(add(3, "dBd", {3}, {3}), "");
  addRow(MakeAMSFile(kCode), {{"ATYPE_ID", "abc"}, {"GAIN", 4.0}, {"GAIN_UN", "dBd"}});
  EXPECT_DOUBLE_EQ(read("abc   ").Gain, 4);
  EXPECT_THAT(read("ABC", "", true).ErrorText, HasSubstr("was not found"));
}

TEST_F(GetAntArrayDB, AnIdMayHoldBlanksAndQuotes) {
  MakeAntFiles(kCode);
  for (const char* id : {"O'Brien 'x'", "a b c"}) {
    addRow(MakeAMSFile(kCode), {{"ATYPE_ID", id}, {"ANTENNA", id}, {"GAIN", 4.0}, {"GAIN_UN", "dBd"}});
    addRow(MakeAHDFile(kCode), {{"ATYPE_ID", id}, {"HOR_AZ", 5.0}, {"HOR_FIELD", 4.0}});
    const Reading r = read(id);
    EXPECT_EQ(r.Description, id);
    EXPECT_EQ(r.nHor, 1);
  }
  EXPECT_THAT(suite.messages, IsEmpty());
}

TEST_F(GetAntArrayDB, OfSeveralRowsWithOneIdTheFirstWins) {
  addRow(MakeAMSFile(kCode), {{"ATYPE_ID", "D"}, {"ANTENNA", "first"}, {"GAIN", 4.0}, {"GAIN_UN", "dBd"}});
  addRow(MakeAMSFile(kCode), {{"ATYPE_ID", "D"}, {"ANTENNA", "second"}, {"GAIN", 5.0}, {"GAIN_UN", "dBd"}});
  MakeAntFiles(kCode);
  EXPECT_EQ(read("D").Description, "first");
}

TEST_F(GetAntArrayDB, NullsReadAsTheirDefaults) {
  MakeAntFiles(kCode);
  addRow(MakeAMSFile(kCode), {{"ATYPE_ID", "N"}, {"GAIN", 4.0}, {"GAIN_UN", "dBd"}});
  const Reading r = read("N");
  EXPECT_EQ(r.Description, "[NO DESCRIPTION]");
  EXPECT_DOUBLE_EQ(r.FLow, 0);
  EXPECT_DOUBLE_EQ(r.FHigh, 0);
  EXPECT_EQ(r.FreqUnits, "MHz");
  EXPECT_THAT(suite.messages, IsEmpty());
}

TEST_F(GetAntArrayDB, ANullGainIsARunTimeFailureEvenWhenQuiet) {
  MakeAntFiles(kCode);
  addRow(MakeAMSFile(kCode), {{"ATYPE_ID", "N"}, {"ANTENNA", "A"}, {"GAIN_UN", "dBd"}});
  const Reading r = read("N", "REL", true);
  ASSERT_EQ(suite.messages.size(), 1u);
  EXPECT_THAT(suite.messages[0].text, HasSubstr("Error 94:"));
  EXPECT_THAT(suite.log(), HasSubstr("Flag 2000"));
  EXPECT_DOUBLE_EQ(r.Gain, 0);
  EXPECT_EQ(r.GainUnits, "dBd");
  EXPECT_EQ(r.Description, "old");
}

TEST_F(GetAntArrayDB, NullGainUnitsAreARunTimeFailure) {
  MakeAntFiles(kCode);
  addRow(MakeAMSFile(kCode), {{"ATYPE_ID", "N"}, {"ANTENNA", "A"}, {"GAIN", 4.0}});
  const Reading r = read("N");
  ASSERT_EQ(suite.messages.size(), 1u);
  EXPECT_THAT(suite.messages[0].text, HasSubstr("Error 94:"));
  EXPECT_THAT(suite.log(), HasSubstr("Flag 2100"));
  EXPECT_DOUBLE_EQ(r.Gain, 4);
}

TEST_F(GetAntArrayDB, ARowWithoutBothValuesIsSkippedAndNotCounted) {
  ASSERT_EQ(add(3, "dBd", {3, 2}, {3}), "");
  addRow(MakeAHDFile(kCode), {{"ATYPE_ID", kFirstId}, {"HOR_AZ", 5.0}});
  addRow(MakeAHDFile(kCode), {{"ATYPE_ID", kFirstId}, {"HOR_FIELD", 1.0}});
  addRow(MakeAVDFile(kCode), {{"ATYPE_ID", kFirstId}, {"VERT_ANGLE", 5.0}});
  const Reading r = read(kFirstId);
  EXPECT_EQ(r.nHor, 2);
  EXPECT_THAT(r.HorAz, ElementsAre(0, 10));
  EXPECT_EQ(r.nVer, 1);
}

TEST_F(GetAntArrayDB, AnAntennaWithoutVerticalRowsHasAnEmptyCut) {
  ASSERT_EQ(add(3, "dBd", {3, 2}, {}), "");
  const Reading r = read(kFirstId, "dBi");
  EXPECT_EQ(r.nHor, 2);
  EXPECT_EQ(r.nVer, 0);
  EXPECT_EQ(r.VerAngle.size(), 1u);
  EXPECT_EQ(r.VerField.size(), 1u);
  EXPECT_THAT(suite.messages, IsEmpty());
}

TEST_F(GetAntArrayDB, AZeroInARelativePatternMakesTheAntennaUnusableInDecibels) {
  ASSERT_EQ(add(2, "REL", {1, 0}, {1}), "");
  const Reading r = read(kFirstId, "dBd");
  ASSERT_EQ(suite.messages.size(), 1u);
  EXPECT_EQ(suite.messages[0].title, "Antenna File Error");
  EXPECT_THAT(suite.messages[0].text, HasSubstr("Error on antenna data\r\nLibrary: " + displayPath(folder()) +
                                                " AMST0001 T00010000001\r\nUnits: REL"));
  EXPECT_THAT(suite.messages[0].text, HasSubstr("dBd\r\n\r\nAntenna information will be ignored."));
  EXPECT_THAT(suite.log(), HasSubstr("Get_Ant_ArrayDB Flag: 4700"));
  EXPECT_DOUBLE_EQ(r.Gain, 0);
  EXPECT_EQ(r.GainUnits, "dBd");
  EXPECT_EQ(r.nHor, 0);
  EXPECT_THAT(r.HorAz, ElementsAre(0, 10));
}

TEST_F(GetAntArrayDB, AZeroInARelativePatternReadsAsStoredAndIsLoggedWhenQuiet) {
  ASSERT_EQ(add(2, "REL", {1}, {1, 0}), "");
  EXPECT_EQ(read(kFirstId, "REL").nVer, 2);
  EXPECT_EQ(read(kFirstId, "dBi", true).nVer, 0);
  EXPECT_THAT(suite.messages, IsEmpty());
  EXPECT_THAT(suite.log(), HasSubstr("Get_Ant_ArrayDB Flag: 4800"));
}

TEST_F(GetAntArrayDB, ARelativeGainOfZeroCannotBeConverted) {
  ASSERT_EQ(add(0, "REL", {1}, {1}), "");
  const Reading r = read(kFirstId, "dBi", true);
  EXPECT_THAT(suite.log(), HasSubstr("Get_Ant_ArrayDB Flag: 4600"));
  EXPECT_DOUBLE_EQ(r.Gain, 2.15);
  EXPECT_EQ(r.GainUnits, "dBi");
}

TEST_F(GetAntArrayDB, ARelativeAntennaWithAnEmptyCutCannotBeHadInDecibels) {
  ASSERT_EQ(add(2, "REL", {1, 0.5}, {}), "");
  const Reading r = read(kFirstId, "dBd");
  ASSERT_EQ(suite.messages.size(), 1u);
  EXPECT_EQ(suite.messages[0].title, "Antenna File Error");
  EXPECT_EQ(r.nHor, 0);
}

TEST_F(GetAntArrayDB, AMissingPatternTableLeavesTheOutputsAsFarAsTheyWereFilled) {
  ASSERT_EQ(add(3, "dBd", {3, 2}, {3}), "");
  removeTable("AVDT0001.DBF");
  const Reading r = read(kFirstId, "REL", true);
  ASSERT_EQ(suite.messages.size(), 1u);
  EXPECT_THAT(suite.messages[0].title, HasSubstr("Error in "));
  EXPECT_EQ(r.nHor, 2);
  EXPECT_DOUBLE_EQ(r.Gain, 3);
  EXPECT_EQ(r.nVer, 0);
  EXPECT_THAT(suite.log(), HasSubstr("Procedure: 5344; Flag 3"));
  EXPECT_FALSE(tableExists("AVDT0001.DBF"));
}

TEST_F(GetAntArrayDB, AMissingFieldIsARunTimeFailure) {
  ASSERT_EQ(add(3, "dBd", {3, 2}, {3}), "");
  DbfFile::create(setPathName(folder(), "AHDT0001.DBF"), {{"ATYPE_ID", 'C', 12, 0}, {"HOR_AZ", 'N', 10, 4}});
  const RecordsetPtr rows = DBEngine::OpenDatabase(folder())->OpenRecordset("Select * from [AHDT0001]");
  addRow(rows, {{"ATYPE_ID", kFirstId}, {"HOR_AZ", 0.0}});
  const Reading r = read(kFirstId, "", true);
  ASSERT_EQ(suite.messages.size(), 1u);
  EXPECT_THAT(suite.messages[0].text, HasSubstr("Error 3265:"));
  EXPECT_EQ(r.Description, "Panel");
}

TEST_F(GetAntArrayDB, AFileThatIsNoTableIsARunTimeFailureAndStaysAsItIs) {
  suite.folder().write("ANTENNAS/AMSBAD01.DBF", "a letter, not a table");
  suite.folder().write("ANTENNAS/AMSBAD02.DBF", "");
  const Reading r = read("X", "dBi", true, "AMSBAD01");
  read("X", "dBi", true, "AMSBAD02");
  ASSERT_EQ(suite.messages.size(), 2u);
  EXPECT_THAT(suite.messages[0].text, HasSubstr("AMSBAD01.DBF"));
  EXPECT_THAT(suite.messages[1].text, HasSubstr("AMSBAD02.DBF"));
  EXPECT_EQ(r.GainUnits, "dBd");
  EXPECT_EQ(suite.folder().read("ANTENNAS/AMSBAD01.DBF"), "a letter, not a table");
}

TEST_F(GetAntArrayDB, ACutOfMorePointsThanACountHoldsIsARunTimeFailure) {
  ASSERT_EQ(add(3, "dBd", {3, 2}, {3}), "");
  const auto table = DbfFile::open(setPathName(folder(), "AHDT0001.DBF"));
  std::vector<unsigned char> record(static_cast<std::size_t>(table->recordLength())), rows;
  ASSERT_TRUE(table->readRecord(0, record.data()));
  for (int i = 0; i < 32766; ++i) rows.insert(rows.end(), record.begin(), record.end());
  table->append(rows.data(), 32766);
  EXPECT_EQ(read(kFirstId, "", true).nVer, 0);
  ASSERT_EQ(suite.messages.size(), 1u);
  EXPECT_THAT(suite.messages[0].text, HasSubstr("Error 6:"));
}

TEST_F(GetAntArrayDB, TheNameOfAnyCaseFindsTheTables) {
  ASSERT_EQ(add(3, "dBd", {3, 2}, {3}), "");
  EXPECT_EQ(read(kFirstId, "", false, "amst0001").nHor, 2);
  EXPECT_THAT(suite.messages, IsEmpty());
}

TEST_F(GetAntArrayDB, APathWithAFileNameAtItsEndMeansItsFolder) {
  ASSERT_EQ(add(3, "dBd", {3, 2}, {3}), "");
  EXPECT_EQ(read(kFirstId, "", false, kLibrary, setPathName(folder(), "AMST0001.DBF")).nHor, 2);
  EXPECT_THAT(suite.messages, IsEmpty());
}

TEST_F(GetAntArrayDB, LeavesTheProcedureStackAsItWas) {
  read("X", "", true);
  MakeAntFiles(kCode);
  addRow(MakeAMSFile(kCode), {{"ATYPE_ID", "N"}});
  read("N", "", true);
  EXPECT_EQ(currentProcedure(), 0);
}

TEST_F(GetAntArrayDB, TheStructureHoldsTheSame) {
  ASSERT_EQ(add(10, "dBd", {10, 4}, {10}, "Panel"), "");
  std::string units = "dBi", error;
  const AntRecord record = readAntenna(folder(), kLibrary, kFirstId, units, false, error);
  EXPECT_DOUBLE_EQ(record.gain, 12.15);
  EXPECT_EQ(record.gainUnits, "dBi");
  EXPECT_EQ(record.library, kLibrary);
  EXPECT_EQ(record.description, "Panel");
  EXPECT_THAT(record.HorField, ElementsAre(12.15, 6.15));
  units = "";
  EXPECT_EQ(readAntenna(folder(), kLibrary, kFirstId, units, false, error).gainUnits, "dBd");
}

}  // namespace

}  // namespace vantrelix::test
