// The correction of an elevation cut as the editor offers it: its questions, what it writes and what it leaves alone.
#include "EditorFixture.h"
#include "editor/correctAntPattern.h"
#include "editor/okAntPattern.h"
#include "editor/showCuts.h"

namespace vantrelix::test {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr const char* kSaved = "Corrected pattern saved to library database";
constexpr const char* kNotSaved = "Corrected pattern WAS NOT SAVED to library database";
constexpr const char* kCorrected =
    "Off Axis\r\nNon Major-Lobe El Pattern Cut corrected\r\nTest Library (AMST0001)  : Ant ID: T00010000001\r\n"
    "Gain values adjusted by 3.00 dBd";

class CorrectAntPatternTest : public EditorTest {
 protected:
  void openWith(const Cut& azimuth, const Cut& elevation, const std::string& unit = "dBd", double gain = 10) {
    add("Off Axis", gain, unit, azimuth, elevation);
    add("Other", 10, unit, azimuth, elevation);
    open();
    showCuts(form(), 0);
  }
  // A cut that was taken 3 dB below the major lobe.
  void openOffAxis() { openWith({{0, 90}, {7.05, 10}}, {{-45, 0, 45}, {-2, 7, 1}}); }

  static std::vector<std::string> elevations(const char* id = kFirst) {
    std::vector<std::string> found;
    for (const std::string& row : rows("AVDT0001", {"ATYPE_ID", "VERT_ANGLE", "VERT_FIELD"})) {
      if (row.starts_with(id)) found.push_back(row.substr(std::string(id).size() + 1));
    }
    return found;
  }
  // Another program's cursor over the elevations, on the row of an angle of the first antenna.
  static RecordsetPtr elevationAt(const std::string& angle) {
    RecordsetPtr row =
        DBEngine::OpenDatabase(getAntennasPath())
            ->OpenRecordset("select * from AVDT0001 where ucase(atype_id) = '" + std::string(kFirst) + "'");
    row->FindFirst("VERT_ANGLE = " + angle);
    return row;
  }
  // Answers Yes to saving, when something has happened meanwhile.
  void saveAfter(const std::function<void()>& happens) {
    screen.policy = [happens](const Message&) {
      happens();
      return MsgAnswer::yes;
    };
  }
  const Message& last() { return screen.shown().back().message; }
};

// --- The question.

TEST_F(CorrectAntPatternTest, AsksBeforeItTries) {
  openOffAxis();
  screen.answers = {MsgAnswer::no};
  askToCorrect(form());
  ASSERT_EQ(screen.shown().size(), 1U);
  EXPECT_EQ(last().title, "Correct Pattern?");
  EXPECT_EQ(last().buttons, MsgButtons::yesNo);
  EXPECT_EQ(last().text,
            "Do you want the program to attempt to correct the problem with the pattern?"
            "\r\n\r\nFor problems with maximum pattern gain values that are above or below the antenna gain, the "
            "program will attempt to normalize the gain values to the specified major lobe gain for the antenna."
            "\r\n\r\nIf the correction is successful, you will have the option to save the corrected pattern back to "
            "the antenna library.");
  EXPECT_EQ(suite.log(), "");
}

TEST_F(CorrectAntPatternTest, YesTwiceCorrectsAndSaves) {
  openOffAxis();
  screen.answers = {MsgAnswer::yes, MsgAnswer::yes};
  askToCorrect(form());
  EXPECT_EQ(last().title, "Save Corrected Pattern?");
  EXPECT_EQ(last().buttons, MsgButtons::yesNo);
  EXPECT_EQ(last().text,
            "The elevation pattern for this antenna has been corrected."
            "\r\n\r\nDo you want to save the corrected gain values to the antenna library?");
  EXPECT_THAT(elevations(), ElementsAre("-45|1", "0|10", "45|4"));
  EXPECT_THAT(elevations(kSecond), ElementsAre("-45|-2", "0|7", "45|1"));
  EXPECT_THAT(suite.log(), HasSubstr(std::string(":  ") + kCorrected + "  ("));
  EXPECT_THAT(suite.log(), HasSubstr(std::string(":  ") + kSaved + "  ("));
}

TEST_F(CorrectAntPatternTest, ContinueOffersTheCorrectionOfARefusedAntennaAndStaysOpen) {
  openOffAxis();
  form().setVisible(true);
  screen.answers = {MsgAnswer::no, MsgAnswer::ok, MsgAnswer::yes, MsgAnswer::yes};
  form().Command1[frmHDAntEditor::continuing].click();
  ASSERT_EQ(screen.shown().size(), 4U);
  EXPECT_EQ(screen.shown()[0].message.title, "Antenna Pattern Warning");
  EXPECT_EQ(screen.shown()[2].message.title, "Correct Pattern?");
  EXPECT_TRUE(form().visible());
  EXPECT_EQ(elevations()[1], "0|10");
  showCuts(form(), 0);
  EXPECT_TRUE(OKAntPattern(form()));
}

// --- Saving.

TEST_F(CorrectAntPatternTest, GivesWhatItDid) {
  openOffAxis();
  screen.answers = {MsgAnswer::yes};
  const Correction correction = CorrectAntPattern(form());
  EXPECT_EQ(correction.result, correction::corrected);
  EXPECT_EQ(correction.log, std::string(kCorrected) + "\r\n" + kSaved);
  EXPECT_TRUE(correction.saved);
  EXPECT_EQ(correction.passedOver, 0);
}

TEST_F(CorrectAntPatternTest, NoLeavesTheTableAsItWas) {
  openOffAxis();
  screen.answers = {MsgAnswer::no};
  const Correction correction = CorrectAntPattern(form());
  EXPECT_EQ(correction.result, correction::corrected);
  EXPECT_FALSE(correction.saved);
  EXPECT_EQ(correction.log, std::string(kCorrected) + "\r\n" + kNotSaved);
  EXPECT_THAT(elevations(), ElementsAre("-45|-2", "0|7", "45|1"));
  EXPECT_THAT(suite.log(), HasSubstr(std::string(":  ") + kNotSaved + "  ("));
}

TEST_F(CorrectAntPatternTest, TheGridsStayWhereTheyStandAndShowTheNewValues) {
  openOffAxis();
  form().TDBGridAHD.setCurrentRow(1);
  form().TDBGridAVD.setCurrentRow(2);
  screen.answers = {MsgAnswer::yes};
  CorrectAntPattern(form());
  EXPECT_EQ(form().TDBGridAHD.currentRow(), 1);
  EXPECT_EQ(form().TDBGridAVD.currentRow(), 2);
  EXPECT_EQ(form().TDBGridAVD.value(2, "VERT_FIELD"), Value(4));
}

TEST_F(CorrectAntPatternTest, CorrectsADescendingCut) {
  setINI("Antenna Editor", "VertPatSort", getDefaultsINI(), "DESC");
  openOffAxis();
  screen.answers = {MsgAnswer::yes};
  CorrectAntPattern(form());
  EXPECT_THAT(elevations(), ElementsAre("-45|1", "0|10", "45|4"));
}

TEST_F(CorrectAntPatternTest, CorrectsInTheAntennasOwnUnits) {
  setINI("System Units", "Antenna Gain Units", getDefaultsINI(), "dBi");
  resetSuitePaths();
  openWith({{0, 90}, {0.5, 1}}, {{-45, 0, 45}, {0.1, 0.5, 0.2}}, "REL", 1);
  screen.answers = {MsgAnswer::yes};
  EXPECT_EQ(CorrectAntPattern(form()).result, correction::corrected);
  EXPECT_THAT(elevations(), ElementsAre("-45|0.2", "0|1", "45|0.4"));
}

// --- What others do between reading and saving.

TEST_F(CorrectAntPatternTest, ARowDeletedMeanwhileLeavesTheRowsBehindItAsTheyWere) {
  openOffAxis();
  saveAfter([] { elevationAt("0")->Delete(); });
  const Correction correction = CorrectAntPattern(form());
  EXPECT_THAT(elevations(), ElementsAre("-45|1", "45|1"));
  EXPECT_TRUE(correction.saved);
  EXPECT_EQ(correction.passedOver, 1);
  EXPECT_THAT(correction.log, EndsWith("\r\n1 elevation had changed meanwhile and was left as it was"));
  EXPECT_THAT(suite.log(), HasSubstr("1 elevation had changed meanwhile"));
}

TEST_F(CorrectAntPatternTest, AnAngleChangedMeanwhileIsPassedOverAlone) {
  openOffAxis();
  saveAfter([] {
    const RecordsetPtr row = elevationAt("0");
    row->Edit();
    row->put("VERT_ANGLE", 1);
    row->Update();
  });
  const Correction correction = CorrectAntPattern(form());
  EXPECT_THAT(elevations(), ElementsAre("-45|1", "1|7", "45|4"));
  EXPECT_EQ(correction.passedOver, 1);
}

TEST_F(CorrectAntPatternTest, ARowThatCannotBeWrittenLeavesTheWholeCutAsItWas) {
  openOffAxis();
  RecordsetPtr other;
  saveAfter([&other] {
    other = elevationAt("45");
    other->LockEdits(true);
    other->Edit();
  });
  const Correction correction = CorrectAntPattern(form());
  other.reset();
  EXPECT_EQ(correction.result, correction::failed);
  EXPECT_FALSE(correction.saved);
  EXPECT_THAT(elevations(), ElementsAre("-45|-2", "0|7", "45|1"));
  EXPECT_THAT(last().title, HasSubstr("Error in "));
  EXPECT_THAT(suite.log(), HasSubstr("Procedure: 5501; Flag 500"));
  EXPECT_THAT(suite.log(), Not(HasSubstr(kSaved)));
}

// --- What is not corrected.

TEST_F(CorrectAntPatternTest, ACutThatCannotBeExplainedShowsOneMessageAndChangesNothing) {
  openWith({{0, 90}, {7.2, 10}}, {{-45, 0, 45}, {-2, 7, 1}});
  EXPECT_EQ(CorrectAntPattern(form()).result, correction::unexplained);
  EXPECT_THAT(heard(), ElementsAre(HasSubstr("Error in FixNonMajLobeElPat: Unable to correct problem with elevation "
                                             "pattern\r\nOff Axis\r\n\r\nPlease send")));
  EXPECT_THAT(elevations(), ElementsAre("-45|-2", "0|7", "45|1"));
}

TEST_F(CorrectAntPatternTest, AnElevationMaximumNearTheGainIsLeftInSilence) {
  openWith({{0, 90}, {7.2, 10}}, {{0, 45}, {9.95, 1}});
  EXPECT_EQ(CorrectAntPattern(form()).result, correction::nothingToCorrect);
  EXPECT_THAT(heard(), IsEmpty());
  EXPECT_THAT(elevations(), ElementsAre("0|9.95", "45|1"));
}

TEST_F(CorrectAntPatternTest, AnAntennaWithoutCutsAndDescriptionIsToldSo) {
  const RecordsetPtr row = DBEngine::OpenDatabase(getAntennasPath())->OpenRecordset("select * from AMST0001");
  row->AddNew();
  row->put("ATYPE_ID", kFirst);
  row->put("GAIN", 10);
  row->put("GAIN_UN", "dBd");
  row->Update();
  open();
  showCuts(form(), 0);
  EXPECT_EQ(CorrectAntPattern(form()).result, correction::azimuthFault);
  EXPECT_THAT(last().text, HasSubstr("Error on Az Pattern\r\nNO ANTENNA DESCRIPTION\r\n\r\n"));
}

TEST_F(CorrectAntPatternTest, BlankCellsStayBlankAndAreNoReference) {
  openWith({{0, 1, 90}, {3, 7, 10}}, {{-45, 0, 45}, {-2, 7, 1}});
  const auto blank = [](const char* table, const char* criterion, const char* field) {
    const RecordsetPtr row =
        DBEngine::OpenDatabase(getAntennasPath())->OpenRecordset("select * from " + std::string(table));
    row->FindFirst(criterion);
    row->Edit();
    row->put(field, Value());
    row->Update();
  };
  blank("AHDT0001", "HOR_AZ = 0", "HOR_AZ");
  blank("AVDT0001", "VERT_ANGLE = 45", "VERT_FIELD");
  showCuts(form(), 0);
  screen.answers = {MsgAnswer::yes};
  EXPECT_EQ(CorrectAntPattern(form()).result, correction::corrected);
  EXPECT_THAT(elevations(), ElementsAre("-45|1", "0|10", "45|"));
}

TEST_F(CorrectAntPatternTest, ATableThatCannotBeReadIsARunTimeFailure) {
  openOffAxis();
  form().DataAVD.recordset()->Close();
  EXPECT_EQ(CorrectAntPattern(form()).result, correction::failed);
  EXPECT_THAT(heard(), ElementsAre(HasSubstr("Error in ")));
  EXPECT_THAT(suite.log(), HasSubstr("Procedure: 5501; Flag 300"));
}

}  // namespace
}  // namespace vantrelix::test
