// What a record that names a library antenna does to the lookup control.
#include <array>
#include <gmock/gmock.h>
#include <memory>
#include <new>

#include "controls/RecordFixture.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {
namespace {

using ::testing::HasSubstr;

class LookAntRecordPattern : public test::RecordTest {
 protected:
  LookAntRecordPattern() {
    addPanel();
    record = open();
    writeRow({{"TX_A1FNM", "AMST0001"}, {"TX_A1TID", "T00010000001"}});
    bind(control, record);
  }
  void writeRow(const std::vector<std::pair<const char*, const char*>>& cells) const {
    record->Edit();
    for (const auto& [field, text] : cells) record->put(field, text);
    record->Update();
  }
  void writeFile() {
    setINI("Site", "TX_A1FNM", ini, "AMST0001");
    setINI("Site", "TX_A1TID", ini, "T00010000001");
    setINI("Site", "TX_A1GAIN", ini, "3");
    control.HookINI(masterHook());
  }
  void damageLibrary() { suite.folder().write("ANTENNAS/AMST0001.DBF", "no table"); }
  bool drawn() const { return !control.picHor.lines().empty() && !control.picVer.lines().empty(); }
  // Whether the library owns the description, as the next locking shows it.
  bool libraryOwns() {
    control.Locked(false);
    return control.txtDesc.locked();
  }
  std::string antenna() const { return control.sValueDesc() + "|" + control.sValueGain() + "|" + control.sValueUnit(); }
};

TEST_F(LookAntRecordPattern, ATableRowShowsTheLibrarysAntenna) {
  control.UpdateDBF();
  EXPECT_EQ(antenna(), "Panel|12.50|dBi");
  EXPECT_TRUE(control.bPatAz() && control.bPatEl() && drawn());
  EXPECT_EQ(heard(), "");
}

TEST_F(LookAntRecordPattern, ATableRowMarksTheAntennaAsTheLibrarysWithoutLockingYet) {
  control.UpdateDBF();
  EXPECT_FALSE(control.txtDesc.locked() || control.txtGain.locked() || control.cboUnit.locked());
  EXPECT_TRUE(libraryOwns());
}

TEST_F(LookAntRecordPattern, ATableRowIsTheLibrarysWhateverNoGainLockSays) {
  setDefault("Antenna Lookup", "NoGainLock", "1");
  control.UpdateDBF();
  EXPECT_TRUE(libraryOwns());
}

TEST_F(LookAntRecordPattern, WithoutPreviewsTheLibraryIsNotRead) {
  control.SeePreview(false);
  control.UpdateDBF();
  EXPECT_EQ(antenna(), "Whip|6.50|REL");
  EXPECT_FALSE(control.bPatAz() || drawn());
  EXPECT_TRUE(libraryOwns());
}

TEST_F(LookAntRecordPattern, ARowWithoutAnAntennaClearsThePreviewsAndOpensTheDescription) {
  control.UpdateDBF();
  record->MoveNext();
  control.UpdateDBF();
  EXPECT_TRUE(control.picHor.lines().empty() && control.picVer.lines().empty());
  control.SeeAzimuth(10);
  control.SeeElevation(10);
  EXPECT_TRUE(control.picHor.lines().empty() && control.picVer.lines().empty());
  EXPECT_FALSE(control.bPatAz() || control.bPatEl());
  EXPECT_FALSE(libraryOwns());
}

TEST_F(LookAntRecordPattern, AFileWithoutAnIdOrAnIdWithoutAFileIsNoAntenna) {
  for (const char* blank : {"TX_A1FNM", "TX_A1TID"}) {
    writeRow({{"TX_A1FNM", "AMST0001"}, {"TX_A1TID", "T00010000001"}, {blank, ""}});
    control.UpdateDBF();
    EXPECT_EQ(antenna(), "Whip|6.50|REL") << blank;
    EXPECT_FALSE(libraryOwns()) << blank;
  }
}

TEST_F(LookAntRecordPattern, ThePlaceholdersOfARowThatWasNeverFilledAreNoAntenna) {
  writeRow({{"TX_A1FNM", "File"}, {"TX_A1TID", "ID"}});
  control.UpdateDBF();
  EXPECT_EQ(control.sValueFile() + control.sValueID(), "");
  EXPECT_FALSE(libraryOwns());
}

TEST_F(LookAntRecordPattern, AMissingLibraryGivesAnAlertInSilence) {
  writeRow({{"TX_A1FNM", "AMSN0001"}});
  control.Alerts("of the former row");
  heard();
  control.UpdateDBF();
  EXPECT_THAT(control.Alerts(), HasSubstr("The specified antenna data base was not found:"));
  EXPECT_EQ(control.Alerts().find("former"), std::string::npos);
  EXPECT_EQ(heard(), "");
}

TEST_F(LookAntRecordPattern, AFileRecordShowsTheLibrarysAntenna) {
  writeFile();
  control.UpdateINI();
  EXPECT_EQ(antenna(), "Panel|12.50|dBi");
  EXPECT_TRUE(drawn());
  EXPECT_FALSE(control.txtDesc.locked());
  EXPECT_TRUE(libraryOwns());
}

TEST_F(LookAntRecordPattern, AFileRecordWithoutPreviewsKeepsItsGain) {
  writeFile();
  control.SeePreview(false);
  control.UpdateINI();
  EXPECT_EQ(control.sValueGain(), "3.00");
  EXPECT_FALSE(libraryOwns());
}

TEST_F(LookAntRecordPattern, AFileRecordWithoutAnAntennaClearsThePreviewsAndLeavesTheMark) {
  const std::pair<const char*, const char*> names[] = {{"", ""}, {"AMST0001", ""}, {"", "T00010000001"}};
  for (const auto& [file, id] : names) {
    control.UpdateDBF();
    setINI("Site", "TX_A1FNM", ini, file);
    setINI("Site", "TX_A1TID", ini, id);
    control.HookINI(masterHook());
    control.UpdateINI();
    EXPECT_TRUE(control.picHor.lines().empty() && control.picVer.lines().empty()) << file << id;
    EXPECT_TRUE(libraryOwns()) << file << id;
  }
}

TEST_F(LookAntRecordPattern, ALibraryThatCannotBeReadIsToldAndTheFillEndsWell) {
  writeFile();
  damageLibrary();
  control.UpdateINI();
  ASSERT_EQ(screen.shown().size(), 1U);
  EXPECT_THAT(screen.shown()[0].message.text, HasSubstr("AMST0001"));
  EXPECT_THAT(suite.log(), HasSubstr("Procedure: 2302; Flag 5000"));
  EXPECT_TRUE(clicksAreTold());
  control.UpdateDBF();
  EXPECT_EQ(screen.shown().size(), 2U);
  EXPECT_TRUE(clicksAreTold());
}

TEST_F(LookAntRecordPattern, AFailureThatTheReadOfThePatternPassesOnLeavesTheControlHeard) {
  writeFile();
  damageLibrary();
  screen.policy = [](const Message& message) {
    if (message.icon == MsgIcon::critical) throw std::runtime_error("no screen");
    return MsgAnswer::ok;
  };
  control.UpdateINI();
  ASSERT_FALSE(screen.shown().empty());
  EXPECT_EQ(screen.shown().back().message.text, "5000 scLookAnt:UPdateINI");
  EXPECT_TRUE(clicksAreTold());
}

TEST_F(LookAntRecordPattern, AFailureToClearThePreviewsShowsItsFlagAndKeepsTheControlSilent) {
  control.UpdateDBF();
  control.HookINI(masterHook());
  control.picHor.changed.listen([] { throw RunTimeFailure(failure::overflow, "surface lost"); });
  control.UpdateINI();
  ASSERT_EQ(screen.shown().size(), 1U);
  EXPECT_EQ(screen.shown()[0].message.text, "5100 scLookAnt:UPdateINI");
  EXPECT_FALSE(clicksAreTold());
}

// The message about a library that cannot be read lets the host act. The control's place is watched when it has gone.
class LookAntDropped : public LookAntRecordPattern {
 protected:
  LookAntDropped() {
    damageLibrary();
    bind(*own, record);
    screen.policy = [this](const Message& message) {
      if (!own) return MsgAnswer::ok;
      pol = own->HookDBFPol();
      file = own->HookDBFFile();
      own.reset();
      return defaultAnswer(message);
    };
  }
  void TearDown() override {
    ASSERT_EQ(own, nullptr);
    EXPECT_TRUE(place == buried);
  }

  using Place = std::array<unsigned char, sizeof(scLookAnt)>;
  static Place filled() {
    Place bytes{};
    bytes.fill(1);
    return bytes;
  }
  struct Bury {
    Place* place;
    void operator()(scLookAnt* control) const {
      std::destroy_at(control);
      *place = filled();
    }
  };
  const Place buried = filled();
  alignas(scLookAnt) Place place{};
  std::unique_ptr<scLookAnt, Bury> own{new (place.data()) scLookAnt, Bury{&place}};
  IOHooksDBFPtr pol, file;
};

TEST_F(LookAntDropped, TheControlMayGoWhileItsTableIsRead) {
  own->HookINI(masterHook());
  setINI("Site", "TX_A1INVRT", ini, "perhaps");
  own->Update();
  EXPECT_EQ(screen.shown().size(), 1U);
  ASSERT_TRUE(file && pol);
  EXPECT_EQ(file->DBFField() + pol->DBFField(), "TX_A1Pol");
}

TEST_F(LookAntDropped, TheControlMayGoWhileItsFileIsRead) {
  writeFile();
  own->HookINI(masterHook());
  own->UpdateINI();
}

TEST_F(LookAntDropped, TheControlMayGoInTheMessageOfAFailedFill) {
  own->HookINI(masterHook());
  setINI("Site", "TX_A1INVRT", ini, "perhaps");
  own->UpdateINI();
}

TEST_F(LookAntDropped, TheControlMayGoWhileTheDeveloperSteps) {
  record->MovePrevious();
  own->Command1.setVisible(true);
  own->Command1.userClick();
  EXPECT_EQ(screen.shown().size(), 1U);
}

TEST_F(LookAntDropped, TheControlMayGoInTheMessageOfARefusedEdit) {
  own->HookDBFFile(nullptr);
  Value told;
  EXPECT_FALSE(own->bEdit(false, &told).boolean());
  EXPECT_FALSE(told.isNull());
}

}  // namespace
}  // namespace vantrelix
