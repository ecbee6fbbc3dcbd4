// How a session starts, what it shows in either job, and how it ends.
#include "EditorFixture.h"
#include "editor/AntLibLook.h"
#include "import/importRun.h"
#include "support/MeasuredPlatform.h"
#include "support/Processes.h"
#include "tables/DbfFile.h"
#include "tables/EditingMark.h"
#include "tables/TextRuns.h"

namespace vantrelix::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;
using Button = frmHDAntEditor::Button;

class SessionTest : public EditorTest {
 protected:
  static std::string stored(const std::string& key, const std::string& section = "Antenna Data Path") {
    std::string file = getSuiteINI();
    return getINIStr(section, key, "(none)", file);
  }
  static void store(const std::string& key, const std::string& value,
                    const std::string& section = "Antenna Data Path") {
    ASSERT_TRUE(setINI(section, key, getSuiteINI(), value));
  }
  std::vector<int> enabledButtons() {
    std::vector<int> enabled;
    for (std::size_t i = 0; i < frmHDAntEditor::buttonCount; ++i) {
      if (form().Command1[i].reachable()) enabled.push_back(static_cast<int>(i));
    }
    return enabled;
  }
  bool frequencyShown() {
    return form().txtFreq.visible() && form().txtFreqDelta.visible() && form().cboFreqDelta.visible();
  }
  void skipValid() { setINI("HDAntenna", "SkipValid", getDefaultsINI(), "-1"); }
};

// --- Opening.

TEST_F(SessionTest, TheTitleNamesTheJobTheLibraryAndTheNumberOfItsAntennas) {
  addPanel();
  addPanel("Other");
  EXPECT_EQ(open().caption(), "Antenna Database Editor: Test Library (AMST0001)  2 records");
  EXPECT_EQ(open("LOOKUP").caption(), "Antenna Database Lookup: Test Library (AMST0001)  2 records");
}

TEST_F(SessionTest, NamesItsTablesByTheLibrary) {
  open();
  EXPECT_EQ(form().AMSName, "AMST0001");
  EXPECT_EQ(form().AHDName, "AHDT0001");
  EXPECT_EQ(form().AVDName, "AVDT0001");
  EXPECT_EQ(form().Mfg, "T0001");
}

TEST_F(SessionTest, TheEditorBeginsEndedAndTheLookUpOpen) {
  EXPECT_EQ(open().SessionResult, 0);
  EXPECT_EQ(open("LOOKUP").SessionResult, 88);
  EXPECT_FALSE(form().Loading);
}

TEST_F(SessionTest, ALibraryThatIsNotThereIsMadeBeforeTheFormIsShown) {
  std::vector<std::string> notes;
  screen.onTurn = [&] { notes = screen.formsShown(); };
  form_ = std::make_unique<frmHDAntEditor>();
  form_->InitForm("AMSNEW01.DBF", "", " ", 0, "New One", "");
  EXPECT_THAT(notes, ElementsAre("frmMsgFloat (modeless)"));
  EXPECT_EQ(form().SessionResult, 0);
  EXPECT_EQ(rows("AMSNEW01", {"ATYPE_ID"}).size(), 0U);
  EXPECT_EQ(rows("AHDNEW01", {"ATYPE_ID"}).size(), 0U);
  EXPECT_EQ(rows("AVDNEW01", {"ATYPE_ID"}).size(), 0U);
}

// Keeps what notes say.
class NoteReader : public ScriptedDesktop {
 public:
  void showModeless(Form& form, Activation activation) override {
    ScriptedDesktop::showModeless(form, activation);
    if (const auto* note = dynamic_cast<frmMsgFloat*>(&form)) {
      notes.push_back(note->caption() + ": " + note->Label1.caption());
    }
  }

  std::vector<std::string> notes;
};

TEST_F(SessionTest, ANoteSaysWhetherTheFilesAreMadeOrOpened) {
  NoteReader user;
  const DesktopInUse at(user);
  for (int time = 0; time < 2; ++time) {
    frmHDAntEditor form;
    form.InitForm("AMSNEW02.DBF", "", "LOOKUP", 0, "New Two", "");
    EXPECT_EQ(form.SessionResult, 88);
  }
  EXPECT_THAT(user.notes, ElementsAre("Antenna Editor: New Two\r\nCreating Antenna Database Files",
                                      "Antenna Editor: New Two\r\nOpening Antenna Database Files"));
}

TEST_F(SessionTest, ABlankNameOfTheLibraryIsLookedUp) {
  ASSERT_TRUE(
      setINI("ANTENNAS\\AMS?????.DBF", "AMST0001.DBF", setPathName(getAntennasPath(), "QVAliasANT.INI"), "Looked Up"));
  frmHDAntEditor form;
  form.InitForm("AMST0001.DBF", " ", " ", 0, "", "");
  EXPECT_EQ(form.LibDesc, "Looked Up");
  frmHDAntEditor unnamed;
  unnamed.InitForm("AMSNEW03.DBF", "", " ", 0, "", "");
  EXPECT_EQ(unnamed.LibDesc, "ANTENNAS\\AMS?????.DBF");
}

TEST_F(SessionTest, TheOrderOfElevationsComesFromTheUsersDefaults) {
  EXPECT_EQ(open().VertSort, "ASC");
  EXPECT_TRUE(form().mnuConfigVertSortASC.checked());
  EXPECT_FALSE(form().mnuConfigVertSortDESC.checked());
  setINI("Antenna Editor", "VertPatSort", getDefaultsINI(), "DESC");
  EXPECT_EQ(open().VertSort, "DESC");
  EXPECT_FALSE(form().mnuConfigVertSortASC.checked());
  EXPECT_TRUE(form().mnuConfigVertSortDESC.checked());
}

TEST_F(SessionTest, NothingIsSelectedUntilTheUserOrTheCallerSaysSo) {
  addPanel();
  open();
  EXPECT_EQ(form().selectedRow(), -1);
  EXPECT_EQ(form().TDBGridAHD.rows(), nullptr);
  open(" ", 0, kFirst);
  EXPECT_EQ(form().selectedRow(), 0);
  EXPECT_EQ(form().txtID.text(), std::string("Ant ID: ") + kFirst);
}

TEST_F(SessionTest, AnAntennaThatIsNotThereSelectsNothing) {
  addPanel();
  open(" ", 0, "T0001'000001");
  EXPECT_EQ(form().selectedRow(), -1);
  EXPECT_EQ(form().SessionResult, 0);
  EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(SessionTest, AnAntennaWhoseIDHoldsAQuoteIsStoodOnAndHandedOver) {
  skipValid();
  const RecordsetPtr row = DBEngine::OpenDatabase(getAntennasPath())->OpenRecordset("select * from AMST0001");
  row->AddNew();
  row->put("ATYPE_ID", "T0001'O'0001");
  row->Update();
  open(" ", 0, "T0001'O'0001");
  EXPECT_EQ(form().selectedRow(), 0);
  form().Command1[Button::continuing].userClick();
  EXPECT_EQ(form().SelID, "T0001'O'0001");
  EXPECT_EQ(form().SelAntenna, "");
  EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(SessionTest, TheEditorOffersItsButtonsAndTheLookUpOnlyItsEnds) {
  open();
  EXPECT_THAT(enabledButtons(), ElementsAre(0, 1, 4, 5, 6, 7, 8, 9, 10, 11, 12));
  EXPECT_FALSE(form().chkReadOnly.visible());
  EXPECT_EQ(form().chkReadOnly.value(), 0);
  open("LOOKUP");
  EXPECT_THAT(enabledButtons(), ElementsAre(11, 12));
  for (int i = 0; i <= 10; ++i) EXPECT_FALSE(form().Command1[static_cast<std::size_t>(i)].enabled()) << i;
  EXPECT_FALSE(form().chkReadOnly.visible());
  EXPECT_EQ(form().chkReadOnly.value(), 1);
}

TEST_F(SessionTest, TheLookUpLetsNothingBeChanged) {
  open("LOOKUP");
  for (DataGrid* grid : {&form().TDBGridAMS, &form().TDBGridAHD, &form().TDBGridAVD}) {
    EXPECT_FALSE(grid->allowAddNew() || grid->allowUpdate() || grid->allowDelete()) << grid->name();
  }
  open();
  for (DataGrid* grid : {&form().TDBGridAMS, &form().TDBGridAHD, &form().TDBGridAVD}) {
    EXPECT_TRUE(grid->allowAddNew() && grid->allowUpdate() && grid->allowDelete()) << grid->name();
  }
}

// --- The frequency of interest.

TEST_F(SessionTest, AFrequencyOf0HidesItsControlsInTheLookUpAndShowsThemInTheEditor) {
  open("LOOKUP", 0);
  EXPECT_FALSE(frequencyShown());
  open(" ", 0);
  EXPECT_TRUE(frequencyShown());
  open("LOOKUP", 850);
  EXPECT_TRUE(frequencyShown());
}

TEST_F(SessionTest, ANegativeFrequencyHidesItsControlsInTheEditorAndColoursNoRow) {
  open(" ", -1);
  EXPECT_FALSE(frequencyShown());
  EXPECT_FALSE(form().TDBGridAMS.fetchesRowStyle());
  open(" ", 0);
  EXPECT_TRUE(form().TDBGridAMS.fetchesRowStyle());
  open("LOOKUP", -1);
  EXPECT_TRUE(form().TDBGridAMS.fetchesRowStyle());
}

TEST_F(SessionTest, TheFrequencyShowsFourDecimalsAndItsToleranceInMHz) {
  store("FreqRange", "0|25.5|KHz");
  open(" ", 850.25);
  EXPECT_EQ(form().txtFreq.text(), "850.2500+/-");
  EXPECT_TRUE(form().txtFreq.locked());
  EXPECT_EQ(form().txtFreqDelta.text(), "25.5");
  EXPECT_THAT(form().cboFreqDelta.entries(), ElementsAre("MHz", "KHz"));
  EXPECT_EQ(form().cboFreqDelta.text(), "MHz");
  EXPECT_EQ(form().FreqDelta, 25.5);
}

TEST_F(SessionTest, AToleranceOfFewerThanThreeFieldsGetsTheDefaultsOfTheMissing) {
  store("FreqRange", "0|2.5");
  open("LOOKUP", 0);
  EXPECT_EQ(form().txtFreqDelta.text(), "2.5");
  EXPECT_EQ(form().cboFreqDelta.text(), "MHz");
  store("FreqRange", "0");
  open("LOOKUP", 0);
  EXPECT_EQ(form().txtFreqDelta.text(), "0.");
  store("FreqRange", "0|4|KHz");
  open("LOOKUP", 0);
  EXPECT_EQ(form().cboFreqDelta.text(), "KHz");
}

TEST_F(SessionTest, ClosingKeepsTheTolerance) {
  open(" ", 100);
  form().txtFreqDelta.setText(" 12 ");
  form().cboFreqDelta.setListIndex(1);
  form().unload();
  EXPECT_EQ(stored("FreqRange"), "0|12|KHz");
}

TEST_F(SessionTest, PlaceSizeAndColumnsComeBack) {
  open();
  form().moveTo(1200, 900);
  form().setSize(9000, 7000);
  form().TDBGridAMS.setColumnWidth(form().TDBGridAMS.columnOf("ANTENNA"), 3333);
  form().unload();
  open();
  EXPECT_EQ(form().geometry(), (Rectangle{1200, 900, 9000, 7000}));
  EXPECT_EQ(form().TDBGridAMS.column(form().TDBGridAMS.columnOf("ANTENNA")).width, 3333);
}

// --- Libraries that cannot be opened.

TEST_F(SessionTest, ALibraryThatAnotherEditorHasOpenIsRefused) {
  DbfFile::setLockWait(20);
  open();
  frmHDAntEditor second;
  second.InitForm("AMST0001.DBF", "Test Library", " ", 0, "Test Library", "");
  DbfFile::setLockWait(2000);
  EXPECT_EQ(second.SessionResult, 65535);
  const std::string text = "AMST0001\r\nError opening database:\r\n\r\n" + GetTblErrText(tableCode::inUse);
  EXPECT_THAT(heard(), ElementsAre("Database Error: " + text, "Error on Editor Form: " + text));
}

TEST_F(SessionTest, ALookUpOpensBesideAnEditor) {
  addPanel();
  open();
  frmHDAntEditor second;
  second.InitForm("AMST0001.DBF", "Test Library", "LOOKUP", 0, "Test Library", "");
  EXPECT_EQ(second.SessionResult, 88);
  EXPECT_EQ(second.DataAMS.RecordCount(), 1);
}

TEST_F(SessionTest, AnEditorThatHasEndedLetsTheNextOneIn) {
  open();
  open();
  EXPECT_EQ(form().SessionResult, 0);
  EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(SessionTest, ALibraryThatIsNoTableEndsTheSessionBeforeItIsShown) {
  suite.folder().write("ANTENNAS/AMSBAD01.DBF", std::string(500, 'x'));
  form_ = std::make_unique<frmHDAntEditor>();
  form_->InitForm("AMSBAD01.DBF", "Bad", "LOOKUP", 0, "Bad", "");
  EXPECT_EQ(form().SessionResult, 65535);
  ASSERT_FALSE(heard().empty());
  EXPECT_EQ(screen.shown().back().message.title, "Error on Editor Form");
  EXPECT_NE(screen.shown().back().message.text, "");
}

// --- Other programs at the same library.

// A second process that does something and keeps it until it is told to end.
class Neighbour {
 public:
  // `begin` gives what is kept; the process says in the folder when it stands.
  Neighbour(const TempSuite& suite, const std::function<std::shared_ptr<void>()>& begin) : suite_(suite) {
    child_ = startChild([&] {
      const std::shared_ptr<void> kept = begin();
      suite_.folder().write("STANDS", "");
      return kept && comes("END");
    });
    stands_ = comes("STANDS");
  }
  ~Neighbour() { end(); }
  Neighbour(const Neighbour&) = delete;
  Neighbour& operator=(const Neighbour&) = delete;

  bool stands() const { return stands_; }
  void end() {
    if (child_ == 0) return;
    suite_.folder().write("END", "");
    EXPECT_EQ(exitCode(child_), 0);
    child_ = 0;
    for (const char* sign : {"STANDS", "END"}) std::filesystem::remove(suite_.folder().machine(sign));
  }

 private:
  bool comes(const char* sign) const {
    for (int tries = 0; tries < 4000 && !suite_.folder().exists(sign); ++tries) {
      platform::current().sleepMilliseconds(5);
    }
    return suite_.folder().exists(sign);
  }

  const TempSuite& suite_;
  pid_t child_ = 0;
  bool stands_ = false;
};

class NeighbourTest : public SessionTest {
 protected:
  NeighbourTest() { DbfFile::setLockWait(20); }
  ~NeighbourTest() override { DbfFile::setLockWait(2000); }

  static std::function<std::shared_ptr<void>()> holding(const std::string& table) {
    return [table]() -> std::shared_ptr<void> {
      return DbfFile::open(setPathName(getAntennasPath(), table + ".DBF"), false, Sharing::exclusive);
    };
  }
  std::string bytes(const std::string& table) const { return suite.folder().read("ANTENNAS/" + table + ".DBF"); }
};

TEST_F(NeighbourTest, TheSecondEditorIsRefusedWhileLookUpsImportsAndHostsGoOn) {
  addPanel();
  Neighbour editor(suite, [&]() -> std::shared_ptr<void> {
    auto first = std::make_shared<frmHDAntEditor>();
    first->InitForm("AMST0001.DBF", "Test Library", " ", 0, "Test Library", kFirst);
    return first->SessionResult == 0 ? first : nullptr;
  });
  ASSERT_TRUE(editor.stands());
  EXPECT_EQ(open().SessionResult, 65535);
  const std::string text = "AMST0001\r\nError opening database:\r\n\r\n" + GetTblErrText(tableCode::inUse);
  EXPECT_THAT(heard(), ElementsAre("Database Error: " + text, "Error on Editor Form: " + text));

  suite.folder().write("a.msi", "NAME Imported\nFREQUENCY 450\nGAIN 10 dBd\nHORIZONTAL 1\n0 0\nVERTICAL 1\n0 0\n");
  const LibraryTables tables = openLibraryTables("", "T0001");
  EXPECT_EQ(importFiles(*findImportFormat("generic"), "T0001", tables.rsAMS, tables.rsAHD, tables.rsAVD,
                        {suite.file("a.msi")}, false)
                .added.size(),
            1U);
  addPanel("Of a host");
  EXPECT_EQ(open("LOOKUP").SessionResult, 88);
  EXPECT_EQ(form().DataAMS.RecordCount(), 3);
  select(1);
  EXPECT_EQ(form().TDBGridAHD.dataRowCount(), 4);
  EXPECT_THAT(heard(), IsEmpty());

  editor.end();
  EXPECT_EQ(open().SessionResult, 0);
  EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(NeighbourTest, AListThatAnotherProgramHoldsEndsEitherSessionBeforeItIsShown) {
  addPanel();
  const std::string before = bytes("AMST0001");
  Neighbour holder(suite, holding("AMST0001"));
  ASSERT_TRUE(holder.stands());
  for (const char* mode : {" ", "LOOKUP"}) {
    EXPECT_EQ(open(mode).SessionResult, 65535) << mode;
    EXPECT_THAT(heard().back(), StartsWith("Error on Editor Form: ")) << mode;
  }
  holder.end();
  EXPECT_EQ(bytes("AMST0001"), before);
  EXPECT_EQ(open().SessionResult, 0);
  EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(NeighbourTest, APatternTableThatAnotherProgramHoldsIsToldAndShownOnceItIsFree) {
  addPanel();
  for (const char* table : {"AHDT0001", "AVDT0001"}) {
    const std::string before = bytes(table);
    Neighbour holder(suite, holding(table));
    ASSERT_TRUE(holder.stands());
    EXPECT_EQ(open().SessionResult, 0) << table;
    EXPECT_THAT(heard(), Not(IsEmpty())) << table;
    select(0);
    EXPECT_THAT(heard(), Not(IsEmpty())) << table;
    EXPECT_EQ(form().selectedRow(), 0) << table;
    holder.end();
    form().SelectAntenna();
    EXPECT_EQ(form().TDBGridAHD.dataRowCount(), 4) << table;
    EXPECT_EQ(form().TDBGridAVD.dataRowCount(), 3) << table;
    EXPECT_THAT(heard(), IsEmpty()) << table;
    EXPECT_EQ(bytes(table), before) << table;
    form_.reset();
  }
}

// --- Damaged libraries.

TEST_F(SessionTest, APatternTableThatIsMissingIsMadeAnew) {
  addPanel();
  for (const char* table : {"AHDT0001", "AVDT0001"}) {
    std::filesystem::remove(platform::current().toMachine(setPathName(getAntennasPath(), std::string(table) + ".DBF")));
  }
  open(" ", 0, kFirst);
  EXPECT_EQ(form().SessionResult, 0);
  EXPECT_EQ(form().TDBGridAHD.dataRowCount(), 0);
  EXPECT_EQ(form().TDBGridAVD.dataRowCount(), 0);
  ASSERT_TRUE(form().TDBGridAHD.userEdit(0, form().TDBGridAHD.columnOf("HOR_AZ"), "10"));
  ASSERT_TRUE(form().TDBGridAHD.update());
  EXPECT_THAT(azimuths(), ElementsAre(std::string(kFirst) + "|10|12.5"));
  EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(SessionTest, APatternTableThatIsDamagedIsToldAndLeftAsItIs) {
  addPanel();
  addPanel("Other");
  for (const char* table : {"AHDT0001", "AVDT0001"}) {
    const std::string file = "ANTENNAS/" + std::string(table) + ".DBF";
    const std::string sound = suite.folder().read(file);
    suite.folder().write(file, "no table at all");
    open();
    EXPECT_EQ(form().SessionResult, 0) << table;
    EXPECT_THAT(heard(), Not(IsEmpty())) << table;
    for (const int row : {0, 1}) {
      select(row);
      EXPECT_THAT(heard(), testing::SizeIs(1)) << table;
    }
    EXPECT_EQ(suite.folder().read(file), "no table at all") << table;
    suite.folder().write(file, sound);
    form().SelectAntenna();
    EXPECT_EQ(form().TDBGridAVD.dataRowCount(), 3) << table;
    EXPECT_THAT(heard(), IsEmpty()) << table;
  }
}

// --- Ending.

TEST_F(SessionTest, ClosingALookUpAsksFirst) {
  open("LOOKUP");
  form().setVisible(true);
  screen.answers = {MsgAnswer::no};
  form().userClose();
  EXPECT_TRUE(form().visible());
  EXPECT_EQ(form().SessionResult, 88);
  EXPECT_THAT(heard(), ElementsAre("CANCEL Lookup?: Do you want to CANCEL this antenna lookup?"));
  EXPECT_EQ(screen.shown().back().message.defaultButton, 2);
  screen.answers = {MsgAnswer::yes};
  form().userClose();
  EXPECT_FALSE(form().visible());
  EXPECT_EQ(form().SessionResult, 65535);
}

TEST_F(SessionTest, ClosingTheEditorOrAnEndedLookUpAsksNothing) {
  open();
  form().setVisible(true);
  form().userClose();
  EXPECT_FALSE(form().visible());
  EXPECT_EQ(form().SessionResult, 0);
  open("LOOKUP");
  form().setVisible(true);
  form().SessionResult = 0;
  form().userClose();
  EXPECT_FALSE(form().visible());
  EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(SessionTest, ContinueHandsTheSelectedAntennaOverTrimmedAndInCapitals) {
  skipValid();
  addPanel("Panel x");
  open("LOOKUP", 0, kFirst);
  form().setVisible(true);
  form().Command1[Button::continuing].userClick();
  EXPECT_FALSE(form().visible());
  EXPECT_EQ(form().SessionResult, 0);
  EXPECT_EQ(form().SelID, kFirst);
  EXPECT_EQ(form().SelAntenna, "PANEL X");
  EXPECT_EQ(form().SelGain, "12.5");
  EXPECT_EQ(form().SelGainUn, "DBI");
  EXPECT_EQ(form().SelFLow, "824");
  EXPECT_EQ(form().SelFHigh, "896");
  EXPECT_EQ(form().SelFreqUn, "MHZ");
}

TEST_F(SessionTest, ContinueWithNoneOrTwoSelectedEndsTheSessionAsCancelledWithoutAWord) {
  skipValid();
  addPanel();
  addPanel("Other");
  for (const bool two : {false, true}) {
    open("LOOKUP");
    form().setVisible(true);
    form().SelID = "left over";
    if (two)
      form().TDBGridAMS.selBookmarks().assign({form().TDBGridAMS.bookmarkOf(0), form().TDBGridAMS.bookmarkOf(1)});
    form().Command1[Button::continuing].userClick();
    EXPECT_FALSE(form().visible());
    EXPECT_EQ(form().SessionResult, 65535);
    EXPECT_EQ(form().SelID, "");
    EXPECT_THAT(heard(), IsEmpty());
  }
}

TEST_F(SessionTest, AnAntennaThatFailsKeepsTheFormOpenAndTheSessionEnded) {
  add("Weak", 12.5, "dBi", {{0, 90}, {2, 1}}, {{0, 10}, {12.5, 4}});
  open("LOOKUP", 0, kFirst);
  form().setVisible(true);
  screen.answers = {MsgAnswer::no, MsgAnswer::ok, MsgAnswer::no};
  form().Command1[Button::continuing].userClick();
  EXPECT_TRUE(form().visible());
  EXPECT_EQ(form().SessionResult, 0);
  const std::vector<std::string> texts = heard();
  ASSERT_EQ(texts.size(), 3U);
  EXPECT_EQ(texts[1],
            "Invalid Antenna Settings: You must select a different antenna or correct the problems with this "
            "antenna.\r\n\r\nYou can also Cancel to exit this editor.");
  form().userClose();
  EXPECT_FALSE(form().visible());
  EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(SessionTest, ContinueStoresWhatStandsInTheCellsFirst) {
  skipValid();
  addPanel();
  open(" ", 0, kFirst);
  form().setVisible(true);
  const auto type = [](DataGrid& grid, const char* field, const char* text) {
    ASSERT_TRUE(grid.userEdit(0, grid.columnOf(field), text)) << field;
  };
  type(form().TDBGridAVD, "VERT_FIELD", "-11");
  type(form().TDBGridAHD, "HOR_FIELD", "-3");
  type(form().TDBGridAMS, "ANTENNA", "Renamed");
  form().Command1[Button::continuing].userClick();
  EXPECT_FALSE(form().visible());
  EXPECT_EQ(form().SelAntenna, "RENAMED");
  EXPECT_THAT(rows("AMST0001", {"ANTENNA"}), ElementsAre("Renamed"));
  for (DataGrid* grid : {&form().TDBGridAMS, &form().TDBGridAHD, &form().TDBGridAVD}) {
    EXPECT_FALSE(grid->dataChanged()) << grid->name();
  }
  EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(SessionTest, ContinueTellsWhatCannotBeStoredAndStays) {
  skipValid();
  addPanel();
  for (const char* table : {"AMS", "AHD", "AVD"}) {
    open(" ", 0, kFirst);
    form().setVisible(true);
    form().SelID = "left over";
    DataGrid& grid = table == std::string("AMS")   ? form().TDBGridAMS
                     : table == std::string("AHD") ? form().TDBGridAHD
                                                   : form().TDBGridAVD;
    const int column = table == std::string("AMS") ? grid.columnOf("ANTENNA") : 2;
    ASSERT_TRUE(grid.userEdit(0, column, std::string(300, 'x')));
    form().Command1[Button::continuing].userClick();
    EXPECT_TRUE(form().visible()) << table;
    EXPECT_EQ(form().SessionResult, 0) << table;
    EXPECT_EQ(form().SelID, "left over") << table;
    EXPECT_THAT(heard(), testing::SizeIs(1)) << table;
    EXPECT_TRUE(grid.dataChanged()) << table;
    EXPECT_EQ(grid.cellValue(0, column).asText(), std::string(300, 'x')) << table;
    EXPECT_TRUE(grid.userCancelRow());
    form().Command1[Button::continuing].userClick();
    EXPECT_FALSE(form().visible()) << table;
  }
  EXPECT_THAT(rows("AMST0001", {"ANTENNA"}), ElementsAre("Panel"));
}

TEST_F(SessionTest, CancelBlanksTheSelectionAndEndsTheSession) {
  addPanel();
  open(" ", 0, kFirst);
  form().setVisible(true);
  form().SelAntenna = "left over";
  form().Command1[Button::cancelling].userClick();
  EXPECT_FALSE(form().visible());
  EXPECT_EQ(form().SessionResult, 65535);
  EXPECT_EQ(form().SelAntenna, "");
}

TEST_F(SessionTest, TheOrderOfElevationsIsKeptAsItIsChosen) {
  open();
  form().mnuConfigVertSortDESC.userClick();
  EXPECT_EQ(form().VertSort, "DESC");
  EXPECT_TRUE(form().mnuConfigVertSortDESC.checked());
  EXPECT_FALSE(form().mnuConfigVertSortASC.checked());
  EXPECT_EQ(getINIStr("Antenna Editor", "VertPatSort", "(none)"), "DESC");
  form().mnuConfigVertSortASC.userClick();
  EXPECT_EQ(getINIStr("Antenna Editor", "VertPatSort", "(none)"), "ASC");
  EXPECT_TRUE(form().mnuConfigVertSortASC.checked());
}

TEST_F(SessionTest, ClosingByTheFrameStoresWhatWasTyped) {
  addPanel();
  open(" ", 0, kFirst);
  form().setVisible(true);
  DataGrid& list = form().TDBGridAMS;
  ASSERT_TRUE(list.userEdit(0, list.columnOf("ANTENNA"), "Typed"));
  form().userClose();
  EXPECT_FALSE(form().visible());
  EXPECT_EQ(rows("AMST0001", {"ANTENNA"}), std::vector<std::string>{"Typed"});
}

TEST_F(SessionTest, ClosingByTheFrameKeepsTheFormOpenWhereWhatWasTypedCannotBeStored) {
  addPanel();
  open(" ", 0, kFirst);
  form().setVisible(true);
  DataGrid& list = form().TDBGridAMS;
  ASSERT_TRUE(list.userEdit(0, list.columnOf("ANTENNA"), std::string(300, 'x')));
  form().userClose();
  EXPECT_TRUE(form().visible());
  EXPECT_EQ(heard().size(), 1U);
  list.userCancelRow();
  form().userClose();
  EXPECT_FALSE(form().visible());
  EXPECT_EQ(rows("AMST0001", {"ANTENNA"}), std::vector<std::string>{"Panel"});
}

// --- The one way in.

class AntLibLookTest : public SessionTest {
 protected:
  // The user picks the library in the list, then does `act` in the editor.
  void user(const std::function<void(frmHDAntEditor&)>& act) {
    screen.onModal["frmFileAlias"] = [](Form& shown) {
      auto& picker = dynamic_cast<frmFileAlias&>(shown);
      picker.Command1[frmFileAlias::continuing].userClick();
    };
    screen.onModal["frmHDAntEditor"] = [act](Form& shown) { act(dynamic_cast<frmHDAntEditor&>(shown)); };
  }

  std::string file = "AMST0001.DBF", id, desc = "before";
};

TEST_F(AntLibLookTest, GivesTheAntennaThatTheUserContinuedWith) {
  skipValid();
  addPanel();
  user([](frmHDAntEditor& editor) {
    editor.TDBGridAMS.userSelectRow(0);
    editor.txtFreqDelta.setText("7");
    editor.Command1[Button::continuing].userClick();
  });
  EXPECT_TRUE(AntLibLook(850, file, id, desc, "LOOKUP"));
  EXPECT_EQ(file, "AMST0001.DBF");
  EXPECT_EQ(id, kFirst);
  EXPECT_EQ(desc, "PANEL");
  EXPECT_EQ(stored("FreqRange"), "0|7|MHz");
}

TEST_F(AntLibLookTest, CancelledAnywhereItGivesFalseAndChangesNothing) {
  addPanel();
  user([](frmHDAntEditor& editor) { editor.Command1[Button::cancelling].userClick(); });
  EXPECT_FALSE(AntLibLook(850, file, id, desc, "LOOKUP"));
  EXPECT_EQ(desc, "before");
  screen.onModal["frmFileAlias"] = [](Form& shown) {
    dynamic_cast<frmFileAlias&>(shown).Command1[frmFileAlias::cancelling].userClick();
  };
  EXPECT_FALSE(AntLibLook(850, file, id, desc, "LOOKUP"));
  EXPECT_EQ(desc, "before");
}

TEST_F(AntLibLookTest, ClosedAfterAFailedContinueItGivesTrueWithBlanks) {
  add("Weak", 12.5, "dBi", {{0, 90}, {2, 1}}, {{0, 10}, {12.5, 4}});
  id = kFirst;
  user([](frmHDAntEditor& editor) {
    editor.Command1[Button::continuing].userClick();
    editor.userClose();
  });
  screen.answers = {MsgAnswer::no, MsgAnswer::ok, MsgAnswer::no};
  EXPECT_TRUE(AntLibLook(850, file, id, desc, "LOOKUP"));
  EXPECT_EQ(id, "");
  EXPECT_EQ(desc, "");
}

TEST_F(AntLibLookTest, OnlyTheEditorMayMakeALibrary) {
  std::vector<bool> allowed;
  screen.onModal["frmFileAlias"] = [&](Form& shown) {
    allowed.push_back(dynamic_cast<frmFileAlias&>(shown).cmdNew.reachable());
  };
  AntLibLook(0, file, id, desc, "LOOKUP");
  AntLibLook(0, file, id, desc, " ");
  EXPECT_THAT(allowed, ElementsAre(false, true));
}

TEST_F(AntLibLookTest, TheDialogHasTheTitleOfTheJob) {
  std::string title;
  screen.onModal["frmFileAlias"] = [&](Form& shown) { title = shown.caption(); };
  AntLibLook(0, file, id, desc, "LOOKUP");
  EXPECT_EQ(title, "Antenna Library to Open - 1 files");
}

TEST_F(AntLibLookTest, NeverShowsALibraryThatCannotBeOpened) {
  DbfFile::setLockWait(20);
  const EditingMark other(setPathName(getAntennasPath(), "AMST0001.DBF"));
  user([](frmHDAntEditor&) { FAIL() << "shown"; });
  EXPECT_FALSE(AntLibLook(850, file, id, desc, " "));
  DbfFile::setLockWait(2000);
}

// A library of 100 antennas, of which every table counts as a large one. What is read of one of its tables is counted.
class LargeLibraryTest : public EditorTest {
 protected:
  LargeLibraryTest() {
    for (int i = 0; i < 100; ++i) addPanel("Panel " + std::to_string(i));
    setSmallestRemembered(0);
  }
  ~LargeLibraryTest() override {
    form_.reset();
    setSmallestRemembered(formerSmallest_);
  }
  std::size_t sizeOf(const std::string& table) {
    return static_cast<std::size_t>(platform::current().state(setPathName(getAntennasPath(), table + ".DBF"))->size);
  }
  std::size_t costOfClick(int row) {
    const std::size_t before = machine_.bytesRead;
    select(row);
    EXPECT_EQ(form().selectedRow(), row);
    EXPECT_EQ(form().DataAHD.RecordCount(), 4);
    EXPECT_EQ(form().DataAVD.RecordCount(), 3);
    return machine_.bytesRead - before;
  }

  MeasuredPlatform machine_;

 private:
  platform::Substitute use_{machine_};
  std::uint64_t formerSmallest_ = smallestRemembered();
};

TEST_F(LargeLibraryTest, TheFirstClickReadsTheRowsOfItsAntennaAlone) {
  for (const char* mode : {" ", kLookupMode}) {
    for (const char* table : {"AHD", "AVD"}) {
      machine_.counted = table;
      open(mode);
      EXPECT_LT(costOfClick(57), sizeOf(table + std::string("T0001")) / 2) << mode << table;
    }
  }
}

TEST_F(LargeLibraryTest, TheClickBehindAnEditReadsTheTableOnce) {
  machine_.counted = "AHD";
  open();
  select(3);
  ASSERT_TRUE(form().TDBGridAHD.userEdit(1, form().azimuth.colGain(), "2.5"));
  ASSERT_TRUE(form().TDBGridAHD.update());
  const std::size_t size = sizeOf("AHDT0001");
  const std::size_t cost = costOfClick(57);
  EXPECT_GT(cost, size - 100);
  EXPECT_LT(cost, size * 3 / 2);
  MeasuredPlatform::now += 200;
  costOfClick(3);
  EXPECT_LT(costOfClick(58), size / 2);
}

TEST_F(LargeLibraryTest, OpensThoughAnotherHoldsTheTableOfACut) {
  const std::string path = setPathName(getAntennasPath(), "AVDT0001.DBF");
  {
    const auto other = DbfFile::open(path, false, Sharing::exclusive);
    DbfFile::setLockWait(20);
    open();
    DbfFile::setLockWait(2000);
  }
  EXPECT_EQ(form().SessionResult, sessionResult::ended);
  select(3);
  EXPECT_EQ(form().DataAVD.RecordCount(), 3);
}

}  // namespace
}  // namespace vantrelix::test
