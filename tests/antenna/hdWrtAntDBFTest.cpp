#include "AntennaSuite.h"
#include "antenna/hdWrtAntDBF.h"
#include "foundation/errHand.h"
#include "foundation/getINI.h"

namespace vantrelix::test {

namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

using HDwrtAntDBFTest = AntennaSuite;

Value lastValue(const RecordsetPtr& rows, const std::string& field) {
  rows->MoveLast();
  return rows->value(field);
}

TEST_F(HDwrtAntDBFTest, WritesTheMasterRowWithAnIdOfItsOwn) {
  ASSERT_EQ(add(7.5, "dBi", {1}, {1}, "Yagi"), "");
  const RecordsetPtr rows = MakeAMSFile(kCode);
  ASSERT_EQ(rowCount(rows), 1);
  EXPECT_EQ(rows->value("ATYPE_ID").text(), kFirstId);
  EXPECT_DOUBLE_EQ(rows->value("GAIN").asNumber(), 7.5);
  EXPECT_EQ(rows->value("GAIN_UN").text().substr(0, 3), "dBi");
  EXPECT_DOUBLE_EQ(rows->value("F_HIGH").asNumber(), 470);
  EXPECT_EQ(rows->value("FREQ_UN").text().substr(0, 3), "MHz");
  EXPECT_TRUE(rows->value("POWER").isNull());
  EXPECT_TRUE(rows->value("POWER_UN").isNull());
}

TEST_F(HDwrtAntDBFTest, TwoCallsWithTheSameDataGiveTwoAntennas) {
  ASSERT_EQ(add(7.5, "dBi", {1}, {1}), "");
  ASSERT_EQ(add(7.5, "dBi", {1}, {1}), "");
  const RecordsetPtr rows = MakeAMSFile(kCode);
  EXPECT_EQ(rowCount(rows), 2);
  EXPECT_EQ(lastValue(rows, "ATYPE_ID").text(), "T00010000002");
}

TEST_F(HDwrtAntDBFTest, CutsADescriptionToTheFieldsWidth) {
  ASSERT_EQ(add(7.5, "dBi-long", {1}, {1}, std::string(100, 'x')), "");
  const RecordsetPtr rows = MakeAMSFile(kCode);
  EXPECT_EQ(rows->value("ANTENNA").text(), std::string(60, 'x'));
  EXPECT_EQ(rows->value("GAIN_UN").text(), "dBi-l");
}

TEST_F(HDwrtAntDBFTest, ACutWithoutPointsIsNotOpened) {
  const RecordsetPtr ams = MakeAMSFile(kCode);
  const RecordsetPtr ahd = MakeAHDFile(kCode);
  EXPECT_EQ(HDwrtAntDBF(kCode, "A", 1, "dBd", 3, {0, 120, 240}, {1, 0, 0}, 0, {}, {}, 0, 0, ams, ahd), "");
  EXPECT_EQ(rowCount(ams), 1);
  EXPECT_EQ(rowCount(ahd), 3);
  EXPECT_FALSE(tableExists("AVDT0001.DBF"));
  EXPECT_TRUE(ams->isOpen());
  EXPECT_TRUE(ahd->isOpen());
}

TEST_F(HDwrtAntDBFTest, RaisesDeepNullsToTheFloor) {
  ASSERT_EQ(add(1, "dBd", {-60}, {-50.5}), "");
  EXPECT_DOUBLE_EQ(lastValue(MakeAHDFile(kCode), "HOR_FIELD").asNumber(), -50);
  EXPECT_DOUBLE_EQ(lastValue(MakeAVDFile(kCode), "VERT_FIELD").asNumber(), -50);
}

TEST_F(HDwrtAntDBFTest, TakesTheFloorFromTheDefaultsFile) {
  setINI("HDAntenna", "MinValidGain", getDefaultsINI(), "-70");
  ASSERT_EQ(add(1, "dBd", {-60}, {-80}), "");
  EXPECT_DOUBLE_EQ(lastValue(MakeAHDFile(kCode), "HOR_FIELD").asNumber(), -60);
  EXPECT_DOUBLE_EQ(lastValue(MakeAVDFile(kCode), "VERT_FIELD").asNumber(), -70);
}

TEST_F(HDwrtAntDBFTest, AnAntennaWithoutPointsIsNotStoredAndUsesNoId) {
  EXPECT_EQ(add(1, "dBd", {}, {}), "");
  EXPECT_EQ(rowCount(MakeAMSFile(kCode)), 0);
  ASSERT_EQ(add(1, "dBd", {1}, {}), "");
  EXPECT_EQ(lastValue(MakeAMSFile(kCode), "ATYPE_ID").text(), kFirstId);
}

TEST_F(HDwrtAntDBFTest, ACodeOfAnotherLengthIsRefusedAndNoFileIsTouched) {
  for (const char* code : {"T001", "T00011"}) {
    EXPECT_EQ(HDwrtAntDBF(code, "A", 1, "dBd", 1, {0}, {1}, 0, {}, {}, 0, 0),
              std::string("Error on Antenna Library file name: AMS") + code);
    EXPECT_FALSE(tableExists(std::string("AMS") + code + ".DBF"));
  }
  EXPECT_THAT(suite.messages, IsEmpty());
}

TEST_F(HDwrtAntDBFTest, WithCursorsPassedInTheNameIsNotChecked) {
  const RecordsetPtr ams = MakeAMSFile(kCode);
  const RecordsetPtr ahd = MakeAHDFile(kCode);
  EXPECT_EQ(HDwrtAntDBF("T00011", "A", 1, "dBd", 1, {0}, {1}, 0, {}, {}, 0, 0, ams, ahd), "");
  EXPECT_EQ(lastValue(ams, "ATYPE_ID").text(), "T00011000001");
}

TEST_F(HDwrtAntDBFTest, ATableThatGivesNoCursorIsNamedAndWhatWasWrittenStays) {
  const RecordsetPtr ams = MakeAMSFile(kCode);
  EXPECT_EQ(HDwrtAntDBF("T00011", "A", 1, "dBd", 1, {0}, {1}, 0, {}, {}, 0, 0, ams), "\r\nError on Antenna file: AHD");
  EXPECT_EQ(HDwrtAntDBF("T00011", "A", 1, "dBd", 0, {}, {}, 1, {0}, {1}, 0, 0, ams), "\r\nError on Antenna file: AVD");
  EXPECT_EQ(rowCount(ams), 2);
  const RecordsetPtr ahd = MakeAHDFile(kCode);
  EXPECT_EQ(HDwrtAntDBF("T00011", "A", 1, "dBd", 1, {0}, {1}, 0, {}, {}, 0, 0, {}, ahd),
            "\r\nError on Antenna file: AMS");
}

TEST_F(HDwrtAntDBFTest, ARunTimeFailureIsTheResultAndShowsNothing) {
  const std::string reason = add(1e12, "dBd", {1}, {1}, "Too strong");
  EXPECT_THAT(reason, HasSubstr("Error writing Antenna Library T0001\r\nToo strong\r\nError 3163: "));
  EXPECT_THAT(suite.messages, IsEmpty());
  EXPECT_EQ(rowCount(MakeAMSFile(kCode)), 0);
  EXPECT_EQ(currentProcedure(), 0);
}

TEST_F(HDwrtAntDBFTest, AFailureInACutLeavesTheRowsAlreadyWritten) {
  EXPECT_THAT(HDwrtAntDBF(kCode, "A", 1, "dBd", 2, {0, 1e11}, {1, 1}, 0, {}, {}, 0, 0), HasSubstr("Error 3163: "));
  EXPECT_EQ(rowCount(MakeAMSFile(kCode)), 1);
  EXPECT_EQ(rowCount(MakeAHDFile(kCode)), 1);
}

TEST_F(HDwrtAntDBFTest, ACountAboveTheArraysIsASubscriptFailure) {
  EXPECT_THAT(HDwrtAntDBF(kCode, "A", 1, "dBd", 2, {0}, {1}, 0, {}, {}, 0, 0), HasSubstr("Error 9: "));
}

TEST_F(HDwrtAntDBFTest, AClosedCursorIsAReason) {
  const RecordsetPtr ams = MakeAMSFile(kCode);
  const RecordsetPtr ahd = MakeAHDFile(kCode);
  ahd->Close();
  EXPECT_THAT(HDwrtAntDBF(kCode, "A", 1, "dBd", 1, {0}, {1}, 0, {}, {}, 0, 0, ams, ahd), HasSubstr("Error 91: "));
}

}  // namespace

}  // namespace vantrelix::test
