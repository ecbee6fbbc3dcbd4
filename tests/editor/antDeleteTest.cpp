// Deleting antennas.
#include <algorithm>

#include "EditorFixture.h"
#include "SlowMachine.h"
#include "editor/antCopy.h"
#include "tables/RowBatch.h"

namespace vantrelix::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class AntDeleteTest : public EditorTest {
 protected:
  AntDeleteTest() {
    addPanel("Alpha");
    addPanel("Beta");
    screen.policy = ScriptedDesktop::assume(ScriptedDesktop::Assume::yes);
  }
  bool removeRow(int row) {
    select(row);
    return form().TDBGridAMS.userDeleteRows();
  }
  static std::vector<std::string> antennas() { return rows("AMST0001", {"ATYPE_ID"}); }
  static std::vector<std::string> idsOf(const std::string& table) {
    std::vector<std::string> ids = rows(table, {"ATYPE_ID"});
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
    return ids;
  }
};

TEST_F(AntDeleteTest, AsksWithNoAsTheDefault) {
  open();
  screen.policy = nullptr;
  EXPECT_FALSE(removeRow(1));
  ASSERT_EQ(screen.shown().size(), 1U);
  const Message& question = screen.shown()[0].message;
  EXPECT_EQ(question.title, "Delete Antenna?");
  EXPECT_EQ(question.text, "Do you want to DELETE the antenna?\r\n\r\nBeta");
  EXPECT_EQ(question.buttons, MsgButtons::yesNo);
  EXPECT_EQ(screen.shown()[0].answer, MsgAnswer::no);
  EXPECT_EQ(antennas().size(), 2U);
  EXPECT_EQ(azimuths().size(), 8U);
  EXPECT_EQ(form().DataAHD.RecordCount(), 4);
}

TEST_F(AntDeleteTest, YesDeletesTheAntennaAndItsPointsAndNoOther) {
  open();
  EXPECT_TRUE(removeRow(0));
  EXPECT_THAT(antennas(), ElementsAre(kSecond));
  EXPECT_THAT(idsOf("AHDT0001"), ElementsAre(kSecond));
  EXPECT_THAT(idsOf("AVDT0001"), ElementsAre(kSecond));
  EXPECT_EQ(azimuths().size(), 4U);
  EXPECT_EQ(form().TDBGridAMS.dataRowCount(), 1);
  EXPECT_THAT(form().caption(), ::testing::EndsWith(" 1 records"));
}

TEST_F(AntDeleteTest, ThePointsAreGoneBeforeTheAntenna) {
  open();
  std::size_t antennasThen = 0, pointsThen = 99;
  form().TDBGridAMS.beforeDelete.listen([&](bool&) {
    antennasThen = antennas().size();
    pointsThen = azimuths().size() + rows("AVDT0001", {"ATYPE_ID"}).size();
  });
  removeRow(0);
  EXPECT_EQ(antennasThen, 2U);
  EXPECT_EQ(pointsThen, 7U);
}

TEST_F(AntDeleteTest, TheNextAntennaIsShownBehindIt) {
  open();
  removeRow(0);
  EXPECT_EQ(form().amsCell("ANTENNA"), "Beta");
  EXPECT_EQ(form().DataAHD.RecordCount(), 4);
  EXPECT_EQ(form().TDBGridAHD.value(0, "ATYPE_ID").asText(), kSecond);
}

TEST_F(AntDeleteTest, DeletingTheLastAntennaLeavesEmptyGridsAndBlankThumbnails) {
  open();
  removeRow(0);
  removeRow(0);
  EXPECT_THAT(antennas(), IsEmpty());
  EXPECT_THAT(azimuths(), IsEmpty());
  EXPECT_EQ(form().TDBGridAMS.dataRowCount(), 0);
  EXPECT_EQ(form().TDBGridAHD.dataRowCount(), 0);
  EXPECT_EQ(form().TDBGridAVD.dataRowCount(), 0);
  EXPECT_THAT(form().picHor.lines(), IsEmpty());
  EXPECT_THAT(form().picVer.lines(), IsEmpty());
}

TEST_F(AntDeleteTest, PointsOfAnotherAntennaThatTheGridsStillShowStay) {
  open();
  select(0);
  form().DataAHD.RecordSource = "select * from [AHDT0001] where ATYPE_ID = 'T00010000002'";
  form().DataAHD.Refresh();
  bool refused = false;
  beforeAntDelete(form(), refused);
  EXPECT_FALSE(refused);
  EXPECT_THAT(idsOf("AHDT0001"), ElementsAre(kSecond));
}

TEST_F(AntDeleteTest, ARowWithoutAnIDTakesNoPointsWithIt) {
  const RecordsetPtr row = DBEngine::OpenDatabase(getAntennasPath())->OpenRecordset("select * from AMST0001");
  row->Edit();
  row->put("ATYPE_ID", Value());
  row->Update();
  open();
  EXPECT_TRUE(removeRow(0));
  EXPECT_THAT(antennas(), ElementsAre(kSecond));
  EXPECT_EQ(azimuths().size(), 8U);
}

TEST_F(AntDeleteTest, PointsThatAnotherProgramDeletedMeanwhileArePassedOver) {
  open();
  select(0);
  const RecordsetPtr other = DBEngine::OpenDatabase(getAntennasPath())
                                 ->OpenRecordset("select * from AHDT0001 where ATYPE_ID = 'T00010000001'");
  for (; !other->Eof(); other->MoveNext()) other->Delete();
  EXPECT_TRUE(removeRow(0));
  EXPECT_THAT(heard(), ElementsAre(StartsWith("Delete Antenna?")));
  EXPECT_THAT(antennas(), ElementsAre(kSecond));
  EXPECT_EQ(azimuths().size(), 4U);
}

TEST_F(AntDeleteTest, PointsThatAnotherProgramDeletesWhileItWorksArePassedOver) {
  Cut many;
  for (int angle = 0; angle < 90; ++angle) {
    many.angles.push_back(angle);
    many.values.push_back(1);
  }
  add("Many", 1, "dBd", many, {{0}, {1}});
  open();
  select(2);
  const auto showsProgress = [this] { return screen.formsShown().back() == "frmProgress (modeless)"; };
  screen.onTurn = [&] {
    if (!showsProgress()) return;
    screen.onTurn = nullptr;
    const RecordsetPtr other = DBEngine::OpenDatabase(getAntennasPath())
                                   ->OpenRecordset("select * from AHDT0001 where ATYPE_ID = 'T00010000003'");
    EXPECT_FALSE(other->Eof());
    for (; !other->Eof(); other->MoveNext()) other->Delete();
  };
  SlowMachine slow;
  const platform::Substitute inPlace(slow);
  EXPECT_TRUE(form().TDBGridAMS.userDeleteRows());
  EXPECT_TRUE(showsProgress());
  EXPECT_EQ(antennas().size(), 2U);
  EXPECT_EQ(azimuths().size(), 8U);
}

TEST_F(AntDeleteTest, AFailureIsReportedAndTheAntennaStays) {
  open();
  select(0);
  suite.folder().write("ANTENNAS/AVDT0001.DBF", "damaged");
  EXPECT_FALSE(form().TDBGridAMS.userDeleteRows());
  EXPECT_THAT(heard(), Contains(StartsWith("Error in ")));
  EXPECT_EQ(antennas().size(), 2U);
  EXPECT_EQ(azimuths().size(), 8U);
}

// --- Rows that cannot be deleted.

TEST_F(AntDeleteTest, APointThatIsLockedKeepsTheWholeAntenna) {
  open();
  select(0);
  const auto azimuthsBefore = azimuths();
  const auto elevationsBefore = rows("AVDT0001", {"ATYPE_ID", "VERT_ANGLE", "VERT_FIELD"});
  for (const char* table : {"AHDT0001", "AVDT0001"}) {
    const RecordsetPtr other =
        DBEngine::OpenDatabase(getAntennasPath())->OpenRecordset("select * from " + std::string(table));
    other->LockEdits(true);
    other->MoveNext();
    other->Edit();
    EXPECT_FALSE(form().TDBGridAMS.userDeleteRows()) << table;
    EXPECT_THAT(heard(), Contains(StartsWith("Error in "))) << table;
    EXPECT_EQ(antennas().size(), 2U);
    EXPECT_THAT(azimuths(), ::testing::UnorderedElementsAreArray(azimuthsBefore)) << table;
    EXPECT_THAT(rows("AVDT0001", {"ATYPE_ID", "VERT_ANGLE", "VERT_FIELD"}),
                ::testing::UnorderedElementsAreArray(elevationsBefore))
        << table;
    EXPECT_EQ(form().DataAHD.RecordCount(), 4);
    EXPECT_EQ(form().DataAVD.RecordCount(), 3);
  }
  EXPECT_TRUE(form().TDBGridAMS.userDeleteRows());
  EXPECT_THAT(antennas(), ElementsAre(kSecond));
}

TEST_F(AntDeleteTest, AnAntennaThatIsLockedKeepsItsPoints) {
  open();
  select(0);
  const RecordsetPtr other = DBEngine::OpenDatabase(getAntennasPath())->OpenRecordset("select * from AMST0001");
  other->LockEdits(true);
  other->Edit();
  EXPECT_FALSE(form().TDBGridAMS.userDeleteRows());
  EXPECT_THAT(heard(), Contains(StartsWith("Error in ")));
  EXPECT_EQ(azimuths().size(), 8U);
  EXPECT_FALSE(form().DataAMS.recordset()->LockEdits());
  other->CancelUpdate();
  EXPECT_TRUE(form().TDBGridAMS.userDeleteRows());
  EXPECT_EQ(azimuths().size(), 4U);
}

TEST_F(AntDeleteTest, NobodyWritesToTheAntennaWhileItsPointsGo) {
  open();
  select(0);
  int refusals = 0;
  const auto write = [&refusals] {
    const RecordsetPtr other = DBEngine::OpenDatabase(getAntennasPath())->OpenRecordset("select * from AMST0001");
    try {
      other->Edit();
      other->put("ANTENNA", "Mine");
      other->Update();
    } catch (const RunTimeFailure&) {
      ++refusals;
    }
  };
  screen.onTurn = [this, write] {
    if (screen.formsShown().back() == "frmProgress (modeless)") write();
  };
  SlowMachine slow;
  const platform::Substitute inPlace(slow);
  EXPECT_TRUE(form().TDBGridAMS.userDeleteRows());
  EXPECT_GT(refusals, 0);
  EXPECT_EQ(antennas().size(), 1U);
  // And then anybody may.
  screen.onTurn = nullptr;
  EXPECT_FALSE(form().DataAMS.recordset()->LockEdits());
  refusals = 0;
  write();
  EXPECT_EQ(refusals, 0);
}

TEST_F(AntDeleteTest, CancellingTheProgressBringsAllPointsBack) {
  open();
  select(0);
  const auto azimuthsBefore = azimuths();
  const auto elevationsBefore = rows("AVDT0001", {"ATYPE_ID", "VERT_ANGLE", "VERT_FIELD"});
  SlowMachine slow;
  const platform::Substitute inPlace(slow);
  ImpatientUser user;
  user.policy = ScriptedDesktop::assume(ScriptedDesktop::Assume::yes);
  const DesktopInUse at(user);
  EXPECT_FALSE(form().TDBGridAMS.userDeleteRows());
  EXPECT_THAT(user.formsShown(), ElementsAre("frmProgress (modeless)"));
  EXPECT_EQ(antennas().size(), 2U);
  EXPECT_THAT(azimuths(), ::testing::UnorderedElementsAreArray(azimuthsBefore));
  EXPECT_THAT(rows("AVDT0001", {"ATYPE_ID", "VERT_ANGLE", "VERT_FIELD"}),
              ::testing::UnorderedElementsAreArray(elevationsBefore));
  EXPECT_EQ(form().DataAHD.RecordCount(), 4);
  EXPECT_FALSE(form().picHor.lines().empty());
  // In the order in which they stood.
  EXPECT_EQ(azimuths().back(), azimuthsBefore[3]);
}

TEST_F(AntDeleteTest, AReadOnlyListDeletesNothing) {
  open(kLookupMode);
  EXPECT_FALSE(removeRow(0));
  EXPECT_THAT(heard(), IsEmpty());
  EXPECT_EQ(antennas().size(), 2U);
}

TEST_F(AntDeleteTest, TenThousandPointsGoWithTheirAntenna) {
  const RecordsetPtr points = DBEngine::OpenDatabase(getAntennasPath())->OpenRecordset("select * from AHDT0001");
  RowBatch batch(*points);
  for (int i = 0; i < 10000; ++i) {
    batch.AddNew();
    batch.put(points->Fields("ATYPE_ID"), kFirst);
    batch.put(points->Fields("HOR_AZ"), i / 100.0);
    batch.put(points->Fields("HOR_FIELD"), 1);
    batch.Update();
  }
  batch.flush();
  open();
  EXPECT_TRUE(removeRow(0));
  EXPECT_EQ(azimuths().size(), 4U);
}

}  // namespace
}  // namespace vantrelix::test
