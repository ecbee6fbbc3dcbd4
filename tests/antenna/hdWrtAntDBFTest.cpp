#include <cmath>
#include <limits>
#include <random>
#include <set>
#include <utility>

#include "AntennaSuite.h"
#include "antenna/hdWrtAntDBF.h"
#include "foundation/errHand.h"
#include "foundation/getINI.h"
#include "foundation/numbers.h"
#include "platform/FaultPlatform.h"
#include "support/MeasuredPlatform.h"
#include "tables/DbfBytes.h"

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

// A library that two callers have open; the second one adds an antenna whenever the first one reads.
struct SecondCaller {
  explicit SecondCaller(const std::string& code)
      : ams(MakeAMSFile(code)), ahd(MakeAHDFile(code)), avd(MakeAVDFile(code)) {
    DbfFile::setLockWait(0);
  }
  ~SecondCaller() { DbfFile::setLockWait(formerWait); }

  std::string add(const std::string& code, double value) const {
    return HDwrtAntDBF(code, "A", 1, "dBd", 1, {0}, {value}, 1, {0}, {value}, 0, 0, ams, ahd, avd);
  }

  int formerWait = DbfFile::lockWait();
  RecordsetPtr ams, ahd, avd;
};

// One ID for both would mix their points.
TEST_F(HDwrtAntDBFTest, WhoAddsMeanwhileDoesNotGetTheSameId) {
  ASSERT_EQ(add(1, "dBd", {0}, {0}), "");
  MeasuredPlatform machine;
  const platform::Substitute substitute(machine);
  const SecondCaller first(kCode), second(kCode);
  std::string refused;
  bool isSecond = false;
  machine.onRead = [&] {
    if (std::exchange(isSecond, true)) return;
    if (const std::string reason = second.add(kCode, -2); !reason.empty()) refused = reason;
    isSecond = false;
  };
  for (int i = 0; i < 3; ++i) ASSERT_EQ(first.add(kCode, -1), "");
  machine.onRead = {};
  EXPECT_THAT(refused, HasSubstr("is locked by another user"));
  std::set<std::string> ids;
  std::size_t rowsInAll = 0;
  for (const RecordsetPtr rows = MakeAMSFile(kCode); !rows->Eof(); rows->MoveNext(), ++rowsInAll) {
    ids.insert(rows->value("ATYPE_ID").text());
    EXPECT_EQ(read(rows->value("ATYPE_ID").text()).HorField.size(), 1U);
  }
  EXPECT_EQ(ids.size(), rowsInAll);
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

TEST_F(HDwrtAntDBFTest, APointThatItsFieldCannotHoldIsFoundBeforeTheFirstRow) {
  const std::vector<double> few = {0, 10}, wide = {0, 1e300};
  const double tooLarge = std::numeric_limits<double>::infinity();
  const auto write = [&](const std::vector<double>& az, const std::vector<double>& hor, const std::vector<double>& el,
                         const std::vector<double>& ver) {
    return HDwrtAntDBF(kCode, "A", 1, "dBd", 2, az, hor, 2, el, ver, 0, 0);
  };
  EXPECT_THAT(write(wide, few, few, few), HasSubstr("Error writing Antenna Library T0001\r\nA\r\nError 3163: "));
  EXPECT_THAT(write(few, wide, few, few), HasSubstr("Error 3163: "));
  EXPECT_THAT(write(few, few, wide, few), HasSubstr("Error 3163: "));
  EXPECT_THAT(write(few, few, few, wide), HasSubstr("Error 3163: "));
  EXPECT_THAT(write(few, few, few, {0, tooLarge}), HasSubstr("Error "));
  EXPECT_THAT(write(few, few, {0}, few), HasSubstr("Error 9: "));
  EXPECT_EQ(rowCount(MakeAMSFile(kCode)), 0);
  EXPECT_EQ(rowCount(MakeAHDFile(kCode)), 0);
  EXPECT_EQ(write(few, few, few, few), "");
  EXPECT_EQ(lastValue(MakeAMSFile(kCode), "ATYPE_ID").text(), kFirstId);
}

TEST_F(HDwrtAntDBFTest, ATableThatCannotBeWrittenIsFoundBeforeTheFirstRow) {
  const RecordsetPtr ams = MakeAMSFile(kCode);
  const RecordsetPtr ahd = MakeAHDFile(kCode);
  const RecordsetPtr avd = MakeAVDFile(kCode);
  avd->Close();
  EXPECT_THAT(HDwrtAntDBF(kCode, "A", 1, "dBd", 1, {0}, {1}, 1, {0}, {1}, 0, 0, ams, ahd, avd),
              HasSubstr("Error 91: "));
  EXPECT_EQ(rowCount(ams), 0);
  EXPECT_EQ(rowCount(ahd), 0);
}

TEST_F(HDwrtAntDBFTest, AFailureInTheMiddleLeavesTheRowsAlreadyWrittenTheMasterRowFirst) {
  platform::FaultPlatform faults(platform::current());
  const platform::Substitute substitute(faults);
  const RecordsetPtr ams = MakeAMSFile(kCode);
  const RecordsetPtr ahd = MakeAHDFile(kCode);
  const RecordsetPtr avd = MakeAVDFile(kCode);
  const auto write = [&] {
    return HDwrtAntDBF(kCode, "A", 1, "dBd", 2, {0, 10}, {1, 1}, 1, {0}, {1}, 0, 0, ams, ahd, avd);
  };
  faults.reset();
  ASSERT_EQ(write(), "");
  const int calls = faults.calls();
  ASSERT_GT(calls, 3);
  bool masterAlone = false;
  for (int call = 1; call <= calls; ++call) {
    const long masters = rowCount(ams), azimuths = rowCount(ahd), elevations = rowCount(avd);
    faults.failAt(call, failure::diskFull);
    EXPECT_THAT(write(), HasSubstr("Error 61: ")) << call;
    faults.reset();
    const long master = rowCount(ams) - masters, azimuth = rowCount(ahd) - azimuths;
    EXPECT_LE(master, 1) << call;
    EXPECT_TRUE(azimuth == 0 || (master == 1 && azimuth == 2)) << call;
    EXPECT_EQ(rowCount(avd) - elevations, 0) << call;
    masterAlone = masterAlone || (master == 1 && azimuth == 0);
  }
  EXPECT_TRUE(masterAlone);
}

TEST_F(HDwrtAntDBFTest, ItsPointsHaveTheBytesOfRowsAddedOneByOne) {
  constexpr std::int16_t kPoints = 2000;
  std::mt19937 random(5);
  std::uniform_real_distribution<double> angle(-180, 360), field(-50, 20);
  std::vector<double> angles, values;
  for (int i = 0; i < kPoints; ++i) {
    const double raw = field(random);
    angles.push_back(i % 3 == 0 ? i : angle(random));
    values.push_back(i % 2 == 0 ? raw : std::round(raw * 100) / 100);
  }
  ASSERT_EQ(HDwrtAntDBF(kCode, "A", 1, "dBd", kPoints, angles, values, kPoints, angles, values, 0, 0), "");
  const RecordsetPtr azimuths = MakeAHDFile("SLOW1"), elevations = MakeAVDFile("SLOW1");
  for (std::size_t i = 0; i < angles.size(); ++i) {
    for (const RecordsetPtr& rows : {azimuths, elevations}) {
      rows->AddNew();
      rows->put("ATYPE_ID", kFirstId);
      rows->Fields(1).put(CDbl(generalText(angles[i])));
      rows->Fields(2).put(CDbl(generalText(values[i])));
      rows->Update();
    }
  }
  constexpr std::size_t kBehindDate = 4;
  for (const char* prefix : {"ANTENNAS/AHD", "ANTENNAS/AVD"}) {
    const std::string ours = suite.folder().read(std::string(prefix) + "T0001.DBF");
    ASSERT_GT(ours.size(), 30U * kPoints);
    EXPECT_TRUE(ours.substr(kBehindDate) == suite.folder().read(std::string(prefix) + "SLOW1.DBF").substr(kBehindDate))
        << prefix;
  }
}

TEST_F(HDwrtAntDBFTest, AFieldThatHoldsEveryDigitTakesTheNumberOfItsText) {
  const RawTable table{.version = 0x30,
                       .fields = {{"ATYPE_ID", 'C', 12}, {"HOR_AZ", 'B', 8, 4}, {"HOR_FIELD", 'B', 8, 4}}};
  suite.folder().write("OTHER.DBF", table.bytes());
  const RecordsetPtr rows = DBEngine::OpenDatabase(suite.folder().path())->OpenRecordset("select * from OTHER");
  const double tenth = 0.3 - 0.2, long15 = 1.0 / 3;
  ASSERT_NE(tenth, 0.1);
  ASSERT_EQ(
      HDwrtAntDBF(kCode, "A", 1, "dBd", 2, {tenth, long15}, {long15, tenth}, 0, {}, {}, 0, 0, MakeAMSFile(kCode), rows),
      "");
  EXPECT_EQ(rows->valueAt(0, "HOR_AZ"), Value(0.1));
  EXPECT_EQ(rows->valueAt(0, "HOR_FIELD"), Value(0.333333333333333));
  EXPECT_EQ(rows->valueAt(1, "HOR_AZ"), Value(0.333333333333333));
  EXPECT_EQ(rows->valueAt(1, "HOR_FIELD"), Value(0.1));
}

TEST_F(HDwrtAntDBFTest, TheLongestCutIsWrittenAtOnceAndWhole) {
  constexpr std::int16_t kMost = std::numeric_limits<std::int16_t>::max();
  std::vector<double> az(kMost), hor(kMost);
  for (std::size_t i = 0; i < az.size(); ++i) {
    az[i] = static_cast<double>(i) / 100;
    hor[i] = -static_cast<double>(i % 400) / 10;
  }
  const RecordsetPtr ams = MakeAMSFile(kCode);
  const RecordsetPtr ahd = MakeAHDFile(kCode);
  const RecordsetPtr avd = MakeAVDFile(kCode);
  az.back() = 1e300;
  EXPECT_THAT(HDwrtAntDBF(kCode, "A", 1, "dBd", kMost, az, hor, 1, {0}, {1}, 0, 0, ams, ahd, avd),
              HasSubstr("Error 3163: "));
  EXPECT_EQ(rowCount(ahd), 0);
  az.back() = 360;
  ASSERT_EQ(HDwrtAntDBF(kCode, "A", 1, "dBd", kMost, az, hor, 1, {0}, {1}, 0, 0, ams, ahd, avd), "");
  ASSERT_EQ(rowCount(ahd), kMost);
  for (long row = 0; row < kMost; row += 331) {
    const auto i = static_cast<std::size_t>(row);
    EXPECT_EQ(ahd->valueAt(row, "ATYPE_ID"), Value(kFirstId)) << row;
    EXPECT_EQ(ahd->valueAt(row, "HOR_AZ"), Value(az[i])) << row;
    EXPECT_EQ(ahd->valueAt(row, "HOR_FIELD"), Value(hor[i])) << row;
  }
  EXPECT_EQ(ahd->valueAt(kMost - 1, "HOR_AZ"), Value(360));
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
