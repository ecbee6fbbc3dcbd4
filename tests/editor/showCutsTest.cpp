// An antenna in the editor without a screen: by a query, or out of a library that was read as a whole.
#include "EditorFixture.h"
#include "editor/showCuts.h"

namespace vantrelix::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Both ways must show the same.
class ShowCutsTest : public EditorTest, public testing::WithParamInterface<bool> {
 protected:
  void show(int row) { GetParam() ? LibraryCuts(form()).show(row) : showCuts(form(), row); }
  bool show(const std::string& id) { return GetParam() ? LibraryCuts(form()).show(id) : showCuts(form(), id); }
  static std::vector<std::string> shown(const PatternPane& pane) {
    std::vector<std::string> points;
    for (int row = 0; row < pane.grid.dataRowCount(); ++row) {
      const auto text = [&](const char* field) { return ChkNulls(pane.grid.value(row, field), "", false).asText(); };
      points.push_back(text(pane.plane.angleField) + "|" + text(pane.plane.gainField));
    }
    return points;
  }
  static RecordsetPtr table(const std::string& name) {
    return DBEngine::OpenDatabase(getAntennasPath())->OpenRecordset("select * from " + name);
  }
};

INSTANTIATE_TEST_SUITE_P(ByQueryAndFromTheWhole, ShowCutsTest, testing::Bool());

TEST_P(ShowCutsTest, ShowsTheCutsOfTheAntennaInTheOrderOfTheirAngles) {
  addPanel("A");
  add("B", 7, "dBi", {{180, 0}, {3, 7}}, {{90, -90, 0}, {-1, -2, 7}});
  open();
  show(1);
  EXPECT_THAT(shown(form().azimuth), ElementsAre("0|7", "180|3"));
  EXPECT_THAT(shown(form().elevation), ElementsAre("-90|-2", "0|7", "90|-1"));
  EXPECT_EQ(form().TDBGridAHD.currentRow(), -1);
}

TEST_P(ShowCutsTest, ElevationsAloneFollowTheSuitesOrder) {
  setINI("Antenna Editor", "VertPatSort", getDefaultsINI(), "DESC");
  addPanel();
  open();
  show(0);
  EXPECT_THAT(shown(form().elevation), ElementsAre("90|-15", "0|12.5", "-90|-12"));
  EXPECT_THAT(shown(form().azimuth), ElementsAre("0|12.5", "90|4", "180|-20", "270|4"));
}

TEST_P(ShowCutsTest, BlankCellsStandFirstAndStayBlank) {
  add("A", 7, "dBd", {{0, 90}, {7, 3}}, {});
  const RecordsetPtr row = table("AHDT0001");
  row->FindFirst("HOR_AZ = 90");
  row->Edit();
  row->put("HOR_AZ", Value());
  row->Update();
  open();
  show(0);
  EXPECT_THAT(shown(form().azimuth), ElementsAre("|3", "0|7"));
}

TEST_P(ShowCutsTest, MakesTheAntennaTheSelectedOneInItsOwnUnits) {
  addPanel("A");
  add("B", 7, "dBi", {{0}, {7}}, {});
  open();
  show(0);
  EXPECT_TRUE(show(kSecond));
  EXPECT_EQ(form().selectedRow(), 1);
  EXPECT_EQ(form().TDBGridAMS.currentRow(), 1);
  EXPECT_EQ(form().AntGain, 7);
  EXPECT_EQ(form().AntGainUn, "dBi");
  EXPECT_EQ(form().txtID.text(), "Ant ID: T00010000002");
  EXPECT_THAT(shown(form().elevation), IsEmpty());
}

TEST_P(ShowCutsTest, AnIDThatIsNotThereChangesNothing) {
  addPanel();
  open();
  show(0);
  EXPECT_FALSE(show("O'Hara"));
  EXPECT_EQ(form().selectedRow(), 0);
  EXPECT_EQ(shown(form().azimuth).size(), 4U);
}

TEST_P(ShowCutsTest, PointsBelongToAnIDWhateverItsCase) {
  addPanel();
  const RecordsetPtr row = table("AMST0001");
  row->Edit();
  row->put("ATYPE_ID", "o'hara");
  row->Update();
  for (const RecordsetPtr point = table("AHDT0001"); !point->Eof(); point->MoveNext()) {
    point->Edit();
    point->put("ATYPE_ID", "O'Hara");
    point->Update();
  }
  open();
  EXPECT_TRUE(show("o'hara"));
  EXPECT_EQ(shown(form().azimuth).size(), 4U);
}

TEST_P(ShowCutsTest, ARowWithoutAnIDHasNoCuts) {
  addPanel();
  for (const char* name : {"AMST0001", "AHDT0001"}) {
    const RecordsetPtr row = table(name);
    row->Edit();
    row->put("ATYPE_ID", Value());
    row->Update();
  }
  open();
  show(0);
  EXPECT_THAT(shown(form().azimuth), IsEmpty());
  EXPECT_THAT(shown(form().elevation), IsEmpty());
}

TEST_P(ShowCutsTest, ATableThatIsNotThereFails) {
  addPanel();
  open();
  std::remove(suite.folder().machine("ANTENNAS/AVDT0001.DBF").c_str());
  EXPECT_THROW(show(0), RunTimeFailure);
}

}  // namespace
}  // namespace vantrelix::test
