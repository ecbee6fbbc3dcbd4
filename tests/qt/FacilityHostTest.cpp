// How the demo host moves among its records, edits and saves one, and what it tells where that fails.
#include <filesystem>
#include <gmock/gmock.h>

#include "antenna/hdWrtAntDBF.h"
#include "controls/LibraryUser.h"
#include "foundation/RegionalScope.h"
#include "platform/FaultPlatform.h"
#include "qt/FacilityFixture.h"
#include "support/Processes.h"

namespace vantrelix::demo {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class Facility : public test::FacilityTest {
 protected:
  void open() { host.open(); }
  // Types into the gain box and leaves it.
  void typeGain(const char* gain) {
    control.txtGain.userType(gain);
    control.txtGain.userBlur();
  }
  // A library of one antenna.
  static void storePanel() {
    const std::vector<double> angles = {0, 90, 180, 270}, values = {12.5, 6, -8, 6};
    ASSERT_EQ(HDwrtAntDBF("X0001", "Panel 120", 12.5, "dBd", 4, angles, values, 4, angles, values, 450, 470), "");
  }
  void typeDescription(const std::string& text) { control.txtDesc.userType(text); }

  scLookAnt control;
  scLookLine line;
  scLookAnt_Desc name;
  FacilityHost host{control, line, name};
};

TEST_F(Facility, MakesTheTableAndTheFileWhereTheyAreNotThere) {
  open();
  EXPECT_TRUE(suite.folder().exists("FACILITY.DBF"));
  EXPECT_TRUE(suite.folder().exists("FACILITY.INI"));
  EXPECT_EQ(host.position(), "Record 1 of 5");
  EXPECT_EQ(host.siteName(), "Crestline Ridge");
  const RecordsetPtr rows = table();
  ASSERT_EQ(rows->fieldCount(), facilityFields().size());
  for (const char* field : {"TX_A1FNM", "TX_A1TID", "TX_A1TYP", "TX_A1GAIN", "TX_A1GNUN", "TX_A1ORIEN", "TX_A1ETILT",
                            "TX_A1MTILT", "TX_A1MDIR", "TX_A1INVRT", "TX_A1Pol", "TX_FREQMHZ", "TX_L1FNM", "TX_L1TID",
                            "TX_L1TYP", "TX_L1LEN", "TX_L1LENUN", "TX_L1LOS"}) {
    EXPECT_NO_THROW(rows->Fields(field)) << field;
  }
  EXPECT_EQ(rows->value("TX_FREQMHZ"), Value(451.25));
}

TEST_F(Facility, NeverTouchesATableOrAFileThatIsThere) {
  makeTable(facilityFields(), true);
  write("SITE", "My own");
  suite.folder().write("FACILITY.INI", "[Facility Data]\r\nSITE=Mine\r\n");
  open();
  EXPECT_EQ(host.position(), "Record 1 of 1");
  EXPECT_EQ(host.siteName(), "My own");
  host.use(Place::file);
  EXPECT_EQ(host.siteName(), "Mine");
  EXPECT_EQ(suite.folder().read("FACILITY.INI"), "[Facility Data]\r\nSITE=Mine\r\n");
}

TEST_F(Facility, ShowsItsFirstRecordLocked) {
  open();
  EXPECT_EQ(control.sValueDesc(), "Collinear, 4 elements");
  EXPECT_EQ(control.sValueGain(), "6.00");
  EXPECT_EQ(control.sValuePol(), "Vertical");
  EXPECT_EQ(host.site().text("HEIGHT_M"), "42");
  EXPECT_TRUE(control.Locked());
  EXPECT_FALSE(host.editing());
  EXPECT_THAT(told(), IsEmpty());
}

TEST_F(Facility, MovesAmongItsRecordsAndNoFurther) {
  open();
  EXPECT_FALSE(host.canMove(Move::first) || host.canMove(Move::previous) || host.move(Move::previous));
  EXPECT_TRUE(host.move(Move::next));
  EXPECT_EQ(host.position(), "Record 2 of 5");
  EXPECT_EQ(control.sValueDesc(), "Folded dipole");
  EXPECT_EQ(control.sValueUnit(), "dBi");
  EXPECT_TRUE(host.move(Move::last));
  EXPECT_EQ(host.position(), "Record 5 of 5");
  EXPECT_FALSE(host.canMove(Move::next) || host.canMove(Move::last) || host.move(Move::next));
  EXPECT_TRUE(host.move(Move::previous));
  EXPECT_EQ(host.siteName(), "Old Mill Tower");
  EXPECT_TRUE(control.sValueInvert());
  EXPECT_TRUE(host.move(Move::first));
  EXPECT_EQ(host.siteName(), "Crestline Ridge");
}

TEST_F(Facility, SaveWritesTheControlsValuesAndTheHostsOwnAndLocksTheRecord) {
  open();
  ASSERT_TRUE(host.edit());
  EXPECT_FALSE(control.Locked());
  typeGain("7.25");
  control.sValuePol("Horizontal");
  host.siteText("SITE", "Crestline South");
  host.siteText("TX_FREQMHZ", "452.5");
  EXPECT_TRUE(host.dirty());
  EXPECT_TRUE(host.save());
  EXPECT_EQ(stored("TX_A1GAIN"), Value(7.25));
  EXPECT_EQ(text("TX_A1POL"), "hor");
  EXPECT_EQ(text("SITE"), "Crestline South");
  EXPECT_EQ(stored("TX_FREQMHZ"), Value(452.5));
  EXPECT_EQ(text("TX_L1TYP"), "7/8 in foam, 50 ohm");
  EXPECT_TRUE(control.Locked());
  EXPECT_FALSE(host.editing() || host.dirty());
  EXPECT_EQ(control.sValueGain(), "7.25");
  EXPECT_THAT(told(), IsEmpty());
}

TEST_F(Facility, SaveLeavesWhatAnotherHasWrittenToFieldsThatWereNotTyped) {
  open();
  const RecordsetPtr other = table();
  other->LockEdits(true);
  other->Edit();
  ASSERT_TRUE(host.edit());
  host.siteText("SITE", "New name");
  other->put("SERVICE", "New service");
  other->Update();
  EXPECT_TRUE(host.save());
  EXPECT_EQ(text("SITE"), "New name");
  EXPECT_EQ(text("SERVICE"), "New service");
  EXPECT_EQ(host.site().text("SERVICE"), "New service");
}

TEST_F(Facility, AnEditHoldsTheRowUntilItEnds) {
  open();
  const auto held = [this] {
    try {
      write("SERVICE", "elsewhere");
    } catch (const RunTimeFailure& failure) {
      return failure.number() == failure::locked;
    }
    return false;
  };
  host.edit();
  EXPECT_TRUE(held());
  host.cancel();
  EXPECT_FALSE(held());
  host.edit();
  EXPECT_TRUE(held());
  EXPECT_TRUE(host.save());
  EXPECT_FALSE(held());
}

TEST_F(Facility, CancelShowsTheRecordAsItIsStored) {
  open();
  host.edit();
  typeGain("99");
  host.siteText("SITE", "Nowhere");
  host.cancel();
  EXPECT_EQ(control.sValueGain(), "6.00");
  EXPECT_EQ(host.siteName(), "Crestline Ridge");
  EXPECT_TRUE(control.Locked());
  EXPECT_FALSE(host.editing());
  EXPECT_EQ(stored("TX_A1GAIN"), Value(6.0));
  EXPECT_EQ(control.Save(), "");  // the mark of the edit is gone
  EXPECT_TRUE(host.edit());
  EXPECT_FALSE(host.dirty());
}

TEST_F(Facility, TheRecordIsDirtyWhileItDiffersFromWhatWasRead) {
  open();
  int changes = 0;
  host.changed.listen([&] { ++changes; });
  typeGain("7");  // locked: takes nothing
  EXPECT_FALSE(host.dirty());
  host.edit();
  EXPECT_FALSE(host.dirty());
  changes = 0;
  typeDescription("Other");
  EXPECT_TRUE(host.dirty());
  EXPECT_EQ(changes, 1);
  typeDescription("Collinear, 4 elements");
  EXPECT_FALSE(host.dirty());
  EXPECT_EQ(changes, 2);
  host.siteText("HEIGHT_M", "43");
  EXPECT_TRUE(host.dirty());
  EXPECT_EQ(changes, 3);
}

TEST_F(Facility, LeavingAChangedRecordAsksWhetherToSaveIt) {
  open();
  host.edit();
  typeGain("7");
  screen.answers = {MsgAnswer::cancel, MsgAnswer::no};
  EXPECT_FALSE(host.move(Move::next));
  EXPECT_THAT(told(), ElementsAre("Save the changes to \"Crestline Ridge\"?"));
  EXPECT_TRUE(host.editing());
  EXPECT_EQ(control.sValueGain(), "7.00");
  EXPECT_TRUE(host.move(Move::next));
  EXPECT_EQ(host.position(), "Record 2 of 5");
  EXPECT_EQ(stored("TX_A1GAIN"), Value(6.0));
  host.edit();
  typeGain("3");
  screen.answers = {MsgAnswer::yes};
  EXPECT_TRUE(host.move(Move::previous));
  EXPECT_EQ(stored("TX_A1GAIN", 1), Value(3.0));
  EXPECT_EQ(host.position(), "Record 1 of 5");
}

TEST_F(Facility, LeavingAnUnchangedRecordDoesNotAsk) {
  open();
  host.edit();
  EXPECT_TRUE(host.move(Move::next));
  EXPECT_THAT(told(), IsEmpty());
  EXPECT_FALSE(host.editing());
  EXPECT_TRUE(control.Locked());
}

TEST_F(Facility, AMoveStaysWhereTheSavingFails) {
  open();
  host.edit();
  typeDescription(std::string(61, 'x'));
  screen.answers = {MsgAnswer::yes};
  EXPECT_FALSE(host.move(Move::next));
  EXPECT_EQ(host.position(), "Record 1 of 5");
  EXPECT_TRUE(host.editing());
}

TEST_F(Facility, WhatOthersAddChangeAndDeleteIsSeenAfterAMove) {
  open();
  write("SITE", "Renamed", 1);
  const RecordsetPtr other = table();
  other->AddNew();
  other->put("SITE", "Added");
  other->Update();
  EXPECT_TRUE(host.move(Move::next));
  EXPECT_EQ(host.siteName(), "Renamed");
  EXPECT_EQ(host.position(), "Record 2 of 6");
  other->MoveFirst();
  other->Delete();
  EXPECT_TRUE(host.move(Move::next));
  EXPECT_EQ(host.siteName(), "Juniper Flat");
  EXPECT_EQ(host.position(), "Record 2 of 5");
  EXPECT_TRUE(host.move(Move::last));
  EXPECT_EQ(host.siteName(), "Added");
}

TEST_F(Facility, AMoveFromARowThatIsGoneLeavesNoneOut) {
  open();
  const RecordsetPtr other = table();
  host.move(Move::next);
  other->setAbsolutePosition(1);
  other->Delete();
  EXPECT_TRUE(host.move(Move::next));
  EXPECT_EQ(host.siteName(), "Juniper Flat");
  EXPECT_EQ(host.position(), "Record 2 of 4");
  other->MoveNext();
  other->Delete();
  EXPECT_TRUE(host.move(Move::previous));
  EXPECT_EQ(host.siteName(), "Crestline Ridge");
  EXPECT_THAT(told(), IsEmpty());
}

TEST_F(Facility, AnEditBeginsWithWhatOthersHaveWrittenSinceTheRecordWasShown) {
  open();
  write("TX_A1GAIN", 8.5);
  write("SERVICE", "Changed");
  EXPECT_TRUE(host.edit());
  EXPECT_EQ(control.sValueGain(), "8.50");
  EXPECT_EQ(host.site().text("SERVICE"), "Changed");
  EXPECT_FALSE(host.dirty());
  EXPECT_TRUE(host.save());
  EXPECT_EQ(stored("TX_A1GAIN"), Value(8.5));
}

TEST_F(Facility, ARecordThatAnotherHasDeletedIsNotEditedInTheNextOnesPlace) {
  open();
  const RecordsetPtr other = table();
  other->Delete();
  EXPECT_FALSE(host.edit());
  EXPECT_THAT(told(), ElementsAre("Another program has deleted this record."));
  EXPECT_EQ(host.siteName(), "Harbour Point");
  EXPECT_EQ(control.sValueDesc(), "Folded dipole");
  EXPECT_EQ(host.position(), "Record 1 of 4");
  EXPECT_TRUE(host.edit());
}

TEST_F(Facility, ARowThatAnotherHoldsMayBeTypedIntoAndSavedOnceItIsFree) {
  open();
  std::string noted;
  host.did.listen([&](const std::string&, const std::string& detail) { noted = detail; });
  const RecordsetPtr other = table();
  other->LockEdits(true);
  other->Edit();
  ASSERT_TRUE(host.edit());
  EXPECT_THAT(noted, HasSubstr("another program holds the row"));
  EXPECT_THAT(told(), IsEmpty());
  typeGain("7");
  host.siteText("SITE", "Typed");
  EXPECT_FALSE(host.save());
  EXPECT_THAT(told(),
              ElementsAre(StartsWith("Error in Antenna Lookup SaveDBF\r\nField: TX_A1FNM Value:  Error: 3211 ")));
  EXPECT_EQ(stored("TX_A1GAIN"), Value(6.0));
  EXPECT_EQ(text("SITE"), "Crestline Ridge");
  EXPECT_TRUE(host.editing() && host.dirty());
  EXPECT_FALSE(control.Locked());
  EXPECT_EQ(control.sValueGain(), "7.00");
  other->CancelUpdate();
  EXPECT_TRUE(host.save());
  EXPECT_EQ(stored("TX_A1GAIN"), Value(7.0));
  EXPECT_EQ(text("SITE"), "Typed");
}

TEST_F(Facility, AnotherProgramThatHoldsTheRowIsNoticedToo) {
  open();
  int holding[2] = {}, done[2] = {};
  ASSERT_EQ(::pipe(holding) + ::pipe(done), 0);
  const pid_t child = vantrelix::test::startChild([&] {
    const RecordsetPtr rows = table();
    rows->LockEdits(true);
    rows->Edit();
    char byte = 'x';
    return ::write(holding[1], &byte, 1) == 1 && ::read(done[0], &byte, 1) == 1;
  });
  char byte = 0;
  ASSERT_EQ(::read(holding[0], &byte, 1), 1);
  host.edit();
  typeGain("7");
  EXPECT_FALSE(host.save());
  EXPECT_THAT(told(), ElementsAre(HasSubstr("Error: 3211 ")));
  EXPECT_EQ(stored("TX_A1GAIN"), Value(6.0));
  ASSERT_EQ(::write(done[1], &byte, 1), 1);
  EXPECT_EQ(vantrelix::test::exitCode(child), 0);
  EXPECT_TRUE(host.save());
  EXPECT_EQ(stored("TX_A1GAIN"), Value(7.0));
  for (const int end : {holding[0], holding[1], done[0], done[1]}) ::close(end);
}

TEST_F(Facility, AValueTooWideIsToldAndWhatWasWrittenBeforeItStays) {
  open();
  host.edit();
  control.sValueFile("AMSX0001");
  typeDescription(std::string(61, 'x'));
  host.siteText("SITE", "Typed");
  EXPECT_FALSE(host.save());
  EXPECT_THAT(told(), ElementsAre(AllOf(StartsWith("Error in Antenna Lookup SaveDBF\r\nField: TX_A1TYP Value: xxx"),
                                        HasSubstr(" Error: 3163 "))));
  EXPECT_EQ(text("TX_A1FNM"), "AMSX0001");
  EXPECT_EQ(text("TX_A1TYP"), "Collinear, 4 elements");
  EXPECT_EQ(text("SITE"), "Crestline Ridge");
  EXPECT_TRUE(host.editing());
  EXPECT_THROW(write("SERVICE", "elsewhere"), RunTimeFailure);  // held again
  typeDescription("Shorter");
  EXPECT_TRUE(host.save());
  EXPECT_EQ(text("TX_A1TYP"), "Shorter");
  EXPECT_EQ(text("SITE"), "Typed");
}

TEST_F(Facility, AnOwnTextTooWideIsToldAndCanBeShortened) {
  open();
  host.edit();
  host.siteText("SITE", std::string(41, 'x'));
  EXPECT_FALSE(host.save());
  EXPECT_THAT(told(), ElementsAre(StartsWith("Error 3163: ")));
  EXPECT_TRUE(host.editing());
  host.siteText("SITE", "Shorter");
  EXPECT_TRUE(host.save());
  EXPECT_EQ(text("SITE"), "Shorter");
}

TEST_F(Facility, AnOwnTextThatFailsLeavesNoEditBehind) {
  makeFacilityTable();
  const RecordsetPtr row = table();
  SiteValues values;
  values.read(*row);
  values.text("SITE", std::string(41, 'x'));
  EXPECT_THROW(values.save(*row), RunTimeFailure);
  EXPECT_FALSE(row->editing());
}

TEST_F(Facility, AFailureThatTheSupportLogHeldBeforeIsNotToldAgain) {
  suite.folder().write("QVTECSUP.TXT", "1/2/2026 3:04:05 PM:  Error in scLookAnt.Update at flag 1500\r\n");
  open();
  EXPECT_THAT(told(), IsEmpty());
}

TEST_F(Facility, AnOwnNumberThatIsNoneIsToldBeforeAnythingIsWritten) {
  open();
  host.edit();
  typeGain("7");
  host.siteText("HEIGHT_M", "tall");
  EXPECT_FALSE(host.save());
  EXPECT_THAT(told(), ElementsAre("Height (m) \"tall\" is no number. Correct it or leave it blank."));
  EXPECT_EQ(stored("TX_A1GAIN"), Value(6.0));
  host.siteText("HEIGHT_M", "");
  EXPECT_TRUE(host.save());
  EXPECT_TRUE(stored("HEIGHT_M").isNull());
}

TEST_F(Facility, AGainThatIsNoNumberIsStoredAsNone) {
  open();
  host.edit();
  control.sValueGain("--");
  EXPECT_TRUE(host.save());
  EXPECT_TRUE(stored("TX_A1GAIN").isNull());
  EXPECT_EQ(control.sValueGain(), "");
}

TEST_F(Facility, AFieldThatIsNotThereIsToldFromTheSupportLogAndAgainBySave) {
  std::vector<FacilityField> fields = facilityFields();
  std::erase_if(fields, [](const FacilityField& field) { return field.name == std::string("TX_A1ETILT"); });
  makeTable(fields, true);
  open();
  EXPECT_THAT(told(), ElementsAre(StartsWith("Error in scLookAnt.Update at flag 1500\r\n3265 There is no field "
                                             "'TX_A1ETILT'")));
  EXPECT_TRUE(host.edit());
  EXPECT_THAT(told(), ElementsAre(HasSubstr("at flag 1500\r\n3265 ")));
  typeDescription("Typed");
  EXPECT_FALSE(host.save());
  EXPECT_THAT(told(), ElementsAre(AllOf(StartsWith("Error in Antenna Lookup SaveDBF\r\nField: TX_A1ETILT"),
                                        HasSubstr("3265"))));
  EXPECT_EQ(text("TX_A1TYP"), "Typed");
}

TEST_F(Facility, ATableWithoutRowsHasNothingToEdit) {
  makeTable(facilityFields(), false);
  open();
  EXPECT_THAT(told(), ElementsAre(StartsWith("Error in scLookAnt.Update at flag 1000\r\n3021 ")));
  EXPECT_EQ(host.position(), "No record");
  for (const Move move : {Move::first, Move::previous, Move::next, Move::last}) EXPECT_FALSE(host.canMove(move));
  EXPECT_FALSE(host.edit());
  EXPECT_THAT(told(), ElementsAre("The facility table has no record to edit."));
}

TEST_F(Facility, ATableThatIsNoneLeavesTheControlWithoutARecord) {
  suite.folder().write("FACILITY.DBF", "this is no table");
  open();
  EXPECT_THAT(told(), ElementsAre(StartsWith("Error 3343: ")));
  EXPECT_FALSE(host.edit());
  EXPECT_THAT(told(), ElementsAre(StartsWith("scLookAnt\r\n")));
  EXPECT_EQ(screen.shown().back().message.title, "No Access");
  EXPECT_EQ(suite.folder().read("FACILITY.DBF"), "this is no table");
}

TEST_F(Facility, ATableThatIsRemovedMeanwhileIsToldAndNothingTypedIsLost) {
  open();
  host.edit();
  typeGain("7");
  std::filesystem::rename(suite.folder().machine("FACILITY.DBF"), suite.folder().machine("away"));
  EXPECT_FALSE(host.save());
  EXPECT_THAT(told(), ElementsAre(StartsWith("Error 3011: There is no table 'FACILITY' any more")));
  EXPECT_TRUE(host.editing());
  EXPECT_EQ(control.sValueGain(), "7.00");
  std::filesystem::rename(suite.folder().machine("away"), suite.folder().machine("FACILITY.DBF"));
  EXPECT_TRUE(host.save());
  EXPECT_EQ(stored("TX_A1GAIN"), Value(7.0));
  std::filesystem::remove(suite.folder().machine("FACILITY.DBF"));
  EXPECT_FALSE(host.move(Move::next));
  EXPECT_FALSE(host.edit());
  EXPECT_THAT(told(), ElementsAre(StartsWith("Error 3011: "), StartsWith("Error 3011: ")));
  EXPECT_EQ(host.position(), "Record 1 of 5");
}

TEST_F(Facility, TheRecordOfTheIniFileIsShownEditedAndSavedInItsPlace) {
  open();
  EXPECT_TRUE(host.use(Place::file));
  EXPECT_EQ(host.position(), "INI file");
  EXPECT_EQ(host.siteName(), "Portable kit");
  EXPECT_EQ(control.sValueDesc(), "Whip on trailer mast");
  EXPECT_TRUE(control.Locked());
  EXPECT_FALSE(host.canMove(Move::next) || host.canMove(Move::first));
  EXPECT_EQ(control.HookDBFPol(), nullptr);
  EXPECT_TRUE(host.edit());
  typeGain("4.5");
  host.siteText("SITE", "Spare kit");
  EXPECT_TRUE(host.save());
  EXPECT_THAT(suite.folder().read("FACILITY.INI"),
              AllOf(HasSubstr("TX_A1GAIN=4.50"), HasSubstr("SITE=Spare kit"), HasSubstr("TX_A1POL=ver")));
  EXPECT_EQ(stored("TX_A1GAIN"), Value(6.0));
  EXPECT_TRUE(host.use(Place::table));
  EXPECT_EQ(control.sValueGain(), "6.00");
  EXPECT_THAT(told(), IsEmpty());
  host.edit();
  EXPECT_TRUE(host.save());
  EXPECT_THAT(suite.folder().read("FACILITY.INI"), HasSubstr("TX_A1GAIN=4.50"));
}

TEST_F(Facility, CancelReadsTheIniFileAgain) {
  open();
  host.use(Place::file);
  host.edit();
  typeGain("4.5");
  host.cancel();
  EXPECT_EQ(control.sValueGain(), "3.00");
  EXPECT_TRUE(control.Locked());
}

TEST_F(Facility, AnotherPlaceIsNotTakenWhileTheUserStays) {
  open();
  host.edit();
  typeGain("7");
  screen.answers = {MsgAnswer::cancel};
  EXPECT_FALSE(host.use(Place::file));
  EXPECT_EQ(host.place(), Place::table);
  EXPECT_EQ(control.sValueGain(), "7.00");
}

// The files whose path holds a text take no writing.
class ReadOnlyFiles : public platform::FaultPlatform {
 public:
  explicit ReadOnlyFiles(std::string part) : FaultPlatform(platform::current()), part_(std::move(part)) {}
  std::unique_ptr<platform::File> open(const std::string& path, platform::OpenMode mode) override {
    if (mode != platform::OpenMode::read) refuse(path);
    return FaultPlatform::open(path, mode);
  }
  void rename(const std::string& from, const std::string& to) override {
    refuse(to);
    FaultPlatform::rename(from, to);
  }

 private:
  void refuse(const std::string& path) const {
    if (path.find(part_) != std::string::npos) throw RunTimeFailure(failure::permissionDenied, path);
  }
  std::string part_;
};

TEST_F(Facility, AnIniFileThatTakesNoWritingIsToldAndNothingTypedIsLost) {
  open();
  host.use(Place::file);
  const std::string before = suite.folder().read("FACILITY.INI");
  ReadOnlyFiles readOnly("FACILITY.INI");
  const platform::Substitute substitute(readOnly);
  host.edit();
  typeGain("4.5");
  EXPECT_FALSE(host.save());
  EXPECT_THAT(told(), ElementsAre(AllOf(StartsWith("Error in Antenna Lookup SaveINI \r\nField: HookINIFIle Value: "),
                                        HasSubstr(" Error: 75 "))));
  EXPECT_EQ(suite.folder().read("FACILITY.INI"), before);
  EXPECT_TRUE(host.editing());
  EXPECT_EQ(control.sValueGain(), "4.50");
}

TEST_F(Facility, ATableThatTakesNoWritingIsShownAndNotOpenedForAnEdit) {
  makeFacilityTable();
  ReadOnlyFiles readOnly("FACILITY.DBF");
  const platform::Substitute substitute(readOnly);
  open();
  EXPECT_EQ(host.siteName(), "Crestline Ridge");
  EXPECT_FALSE(host.edit());
  EXPECT_THAT(told(), ElementsAre(StartsWith("Error 3027: ")));
  EXPECT_TRUE(control.Locked());
}

TEST_F(Facility, ATableThatCannotBeOpenedLeavesTheIniFileAlone) {
  open();
  host.use(Place::file);
  const std::string before = suite.folder().read("FACILITY.INI");
  suite.folder().write("FACILITY.DBF", "this is no table");
  host.use(Place::table);
  EXPECT_THAT(told(), ElementsAre(StartsWith("Error 3343: ")));
  EXPECT_EQ(host.position(), "No record");
  control.sValueGain("1");
  EXPECT_EQ(control.Save(), "");
  EXPECT_EQ(suite.folder().read("FACILITY.INI"), before);
}

TEST_F(Facility, TheControlLooksUpAtTheFrequencyOfTheRecord) {
  storePanel();
  vantrelix::test::EditorOpened editor;
  editor.watch(screen);
  open();
  host.edit();
  const auto asked = [&](CommandButton& look) {
    editor.freq.clear();
    look.userClick();
    return editor.freq;
  };
  EXPECT_EQ(asked(control.cmdLook) + asked(name.cmdLook), "451.25451.25");
  host.siteText("TX_FREQMHZ", "460.5");
  EXPECT_EQ(asked(control.cmdLook) + asked(name.cmdLook), "460.5460.5");
  screen.answers = {MsgAnswer::no};
  host.use(Place::file);
  host.edit();
  EXPECT_EQ(asked(control.cmdLook) + asked(name.cmdLook), "462.675462.675");
}

// --- The antenna in one line.

TEST_F(Facility, TheOneLineShowsTheAntennaOfTheRecordAndIsLockedWithIt) {
  open();
  EXPECT_EQ(name.sValueDesc(), "Collinear, 4 elements");
  EXPECT_TRUE(name.Locked());
  EXPECT_FALSE(name.cmdLook.enabled());
  host.move(Move::next);
  EXPECT_EQ(name.sValueDesc(), "Folded dipole");
  host.edit();
  EXPECT_FALSE(name.Locked());
  EXPECT_TRUE(name.cmdLook.enabled());
  host.use(Place::file);
  EXPECT_EQ(name.sValueDesc(), "Whip on trailer mast");
}

TEST_F(Facility, WhatIsTypedInEitherAntennaControlStandsInBothAndIsSaved) {
  open();
  host.edit();
  EXPECT_FALSE(host.dirty());
  name.txtDesc.userType("Corner reflector ");
  EXPECT_EQ(control.txtDesc.text(), "Corner reflector ");
  EXPECT_TRUE(host.dirty());
  typeDescription("Yagi");
  EXPECT_EQ(name.sValueDesc(), "Yagi");
  name.txtDesc.userType("Corner reflector");
  ASSERT_TRUE(host.save());
  EXPECT_EQ(text("TX_A1TYP"), "Corner reflector");
  EXPECT_EQ(text("TX_A1FNM"), "");
}

TEST_F(Facility, AnAntennaChosenInOneLineIsTakenWithItsGainAndItsPattern) {
  storePanel();
  vantrelix::test::LibraryUser::takes(screen, 0);
  open();
  host.edit();
  name.cmdLook.userClick();
  host.takeNamed();
  EXPECT_EQ(control.sValueFile() + "|" + control.sValueID() + "|" + control.sValueDesc(),
            "AMSX0001|X00010000001|Panel 120");
  EXPECT_EQ(control.sValueGain(), "12.50");
  EXPECT_TRUE(control.bPatAz());
  EXPECT_EQ(name.sValueDesc(), "Panel 120");
  EXPECT_TRUE(name.txtDesc.locked());
  EXPECT_TRUE(host.dirty());
  ASSERT_TRUE(host.save());
  EXPECT_EQ(text("TX_A1FNM") + "|" + text("TX_A1TID") + "|" + text("TX_A1TYP"), "AMSX0001|X00010000001|Panel 120");
  host.edit();
  EXPECT_TRUE(name.txtDesc.locked());
  screen.answers = {MsgAnswer::ok};
  name.cmdClear.userClick();
  host.takeNamed();
  EXPECT_EQ(control.sValueFile() + control.sValueID() + control.sValueDesc(), "");
  EXPECT_FALSE(control.bPatAz());
  EXPECT_FALSE(control.txtDesc.locked() || name.txtDesc.locked());
}

TEST_F(Facility, AnAntennaChosenInTheLargeControlShowsInTheOneLine) {
  storePanel();
  vantrelix::test::LibraryUser::takes(screen, 0);
  open();
  host.edit();
  control.cmdLook.userClick();
  EXPECT_EQ(name.sValueFile() + "|" + name.sValueID() + "|" + name.sValueDesc(), "AMSX0001|X00010000001|Panel 120");
  EXPECT_TRUE(name.txtDesc.locked());
}

TEST_F(Facility, AFolderThatTakesNoFilesIsTold) {
  ReadOnlyFiles readOnly("FACILITY");
  const platform::Substitute substitute(readOnly);
  open();
  EXPECT_EQ(told().size(), 1U);
  EXPECT_FALSE(host.use(Place::file) && host.editing());
  EXPECT_EQ(host.siteName(), "");
}

TEST_F(Facility, ARecordAfterOneWhoseAntennaWasClearedCanBeMounted) {
  open();
  host.edit();
  screen.answers = {MsgAnswer::ok, MsgAnswer::no};
  control.cmdClear.userClick();
  EXPECT_FALSE(control.txtOrient.enabled());
  host.move(Move::next);
  host.edit();
  EXPECT_TRUE(control.txtOrient.enabled() && control.cboPol.enabled());
  EXPECT_FALSE(control.cboPol.locked());
}

TEST_F(Facility, NumbersOfTheFirstRecordsDoNotDependOnTheRegionalSetting) {
  const vantrelix::test::RegionalScope comma(",", ".");
  open();
  EXPECT_EQ(stored("LATITUDE", 4), Value(45.0142));
  EXPECT_EQ(stored("TX_L1LOS"), Value(1.27));
  EXPECT_EQ(stored("TX_A1INVRT", 3), Value(true));
}

}  // namespace
}  // namespace vantrelix::demo
