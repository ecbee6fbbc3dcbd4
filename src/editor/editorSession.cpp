// How a session of the antenna editor starts and ends.
#include <exception>
#include <initializer_list>

#include "aliases/aliasStore.h"
#include "antenna/libraryName.h"
#include "antenna/makeAntFiles.h"
#include "dialogs/frmMsgFloat.h"
#include "dialogs/gridLayout.h"
#include "dialogs/windowPlacement.h"
#include "editor/correctAntPattern.h"
#include "editor/frmHDAntEditor.h"
#include "editor/okAntPattern.h"
#include "editor/selectedAntenna.h"
#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/getINI.h"
#include "foundation/messages.h"
#include "foundation/numbers.h"
#include "foundation/procedures.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "tables/EditingMark.h"
#include "tables/dictionary.h"
#include "tables/learnTexts.h"
#include "tables/structure.h"
#include "ui/Desktop.h"

namespace vantrelix {

namespace {

constexpr const char* kSection = "Antenna Editor";
constexpr const char* kPathSection = "Antenna Data Path";
constexpr const char* kRangeKey = "FreqRange";
// The first field is of no use any more; the second is the tolerance, the third its unit.
constexpr const char* kRange[] = {"0", "0.", "MHz"};
constexpr const char* kSeparator = "|";
constexpr const char* kTableType = "AMSPDBASE";

std::string rangeField(const std::string& range, int number) {
  return sAWK6(range, kSeparator, number, kRange[number - 1]);
}

// What the user sees of a library before it has been opened.
class OpeningNote {
 public:
  OpeningNote(const std::string& title, bool exists) {
    note_.show(title + kLineBreak + (exists ? "Opening" : "Creating") + " Antenna Database Files", "Antenna Editor");
    desktop().doEvents();
  }
  ~OpeningNote() { note_.unload(); }
  OpeningNote(const OpeningNote&) = delete;
  OpeningNote& operator=(const OpeningNote&) = delete;

 private:
  frmMsgFloat note_;
};

// Before the user's first click on an antenna, which would have to look through the whole of a large library.
void learnAntennas(const std::string& table) {
  try {
    learnTexts(table, "ATYPE_ID");
  } catch (const RunTimeFailure&) {
    // What is wrong with the table shows when a cut is read from it.
  }
}

}  // namespace

// --- Coming up and going.

void frmHDAntEditor::load() {
  std::string suiteINI = getSuiteINI();
  const std::string range =
      getINIStr(kPathSection, kRangeKey, AddALine(kRange[0], kRange[1], kSeparator) + kSeparator + kRange[2], suiteINI);
  txtFreqDelta.setText(formatNumber(CValP(rangeField(range, 2)), "#0.####"));
  cboFreqDelta.setEntries({"MHz", "KHz"});
  modSetComboBox(cboFreqDelta, rangeField(range, 3), false);
  SetFormLoc(*this);
  SetFormSize(*this, 0, 0);
}

void frmHDAntEditor::unload() {
  SaveFormLoc(*this);
  SaveFormSize(*this);
  for (const DataGrid* grid : {&TDBGridAMS, &TDBGridAHD, &TDBGridAVD}) SaveGridCols("", name(), grid->name(), *grid);
  const std::string range = kRange[0] + (kSeparator + trim(txtFreqDelta.text())) + kSeparator + cboFreqDelta.text();
  if (setINI(kPathSection, kRangeKey, getSuiteINI(), range)) return;
  logQuietly("The tolerance of the frequency of interest could not be kept in " + displayPath(getSuiteINI()));
}

// What was typed counts. Leaving the look-up by the frame loses nothing, but whoever opened it waits for an antenna.
void frmHDAntEditor::queryUnload() {
  bool stored = false;
  runReported(*this, procedure::frmHDAntEditor_queryUnload, [&] { stored = storeEntries(); });
  if (!stored) return;
  const bool open = SessionResult != sessionResult::ended && SessionResult != sessionResult::cancelled;
  if (lookingUp() && open) {
    const MsgAnswer answer = MsgBox(
        {"CANCEL Lookup?", "Do you want to CANCEL this antenna lookup?", MsgButtons::yesNo, MsgIcon::information, 2});
    if (answer != MsgAnswer::yes) return;
    SessionResult = sessionResult::cancelled;
  }
  hide();
}

// --- Opening.

void frmHDAntEditor::InitForm(const std::string& FileName, const std::string& LibDesc_, const std::string& Mode,
                              double Freq_, const std::string& Title, const std::string& ID) {
  const Procedure guard(procedure::frmHDAntEditor_InitForm);
  FormMode = Mode;
  Freq = generalText(Freq_);
  SessionResult = lookingUp() ? sessionResult::lookingUp : sessionResult::ended;
  Loading = true;
  std::string error;
  try {
    SetFlag(100);
    readVertSort();
    SetFlag(200);
    nameLibrary(FileName, LibDesc_);
    SetFlag(300);
    error = openLibrary(Title);
    if (error.empty()) {
      SetFlag(400);
      showLibrary();
      SetFlag(500);
      showJob();
    }
    SetFlag(600);
    Loading = false;
    if (error.empty()) standOn(ID);
  } catch (const RunTimeFailure& failure) {
    ErrHand(failure, LibDesc, true);
    error = modErrStr(failure);
  } catch (const std::exception& failure) {
    ErrHand(failure, LibDesc, true);
    error = failure.what();
  }
  Loading = false;
  if (error.empty()) return;
  showInformation("Error on Editor Form", error);
  SessionResult = sessionResult::cancelled;
}

void frmHDAntEditor::readVertSort() {
  VertSort = getINIStr(kSection, "VertPatSort", "ASC");
  mnuConfigVertSortDESC.setChecked(VertSort == "DESC");
  mnuConfigVertSortASC.setChecked(VertSort != "DESC");
}

void frmHDAntEditor::nameLibrary(const std::string& FileName, const std::string& LibDesc_) {
  const LibraryName library = parseLibraryName(FileName);
  folder_ = library.folder;
  AMSName = library.stem;
  Mfg = midCharacters(AMSName, 4, 5);
  LibDesc = LibDesc_;
  if (getLenTrim(LibDesc) == 0) {
    const AliasFamily& family = aliasFamily(LibraryFamily::antenna);
    getINI(family.section, AMSName + ".DBF", setPathName(folder_, family.store), "ANTENNAS\\AMS?????.DBF", LibDesc);
  }
  AHDName = partnerTable(AMSName, "AHD");
  AVDName = partnerTable(AMSName, "AVD");
}

// Gives what went wrong; blank where all is well.
std::string frmHDAntEditor::openLibrary(const std::string& title) {
  const std::string path = setPathName(folder_, AMSName + ".DBF");
  {
    const OpeningNote note(title, tableFileExists(path));
    std::string error = folder_ == getAntennasPath() ? MakeAntFiles(Mfg) : makeElsewhere();
    if (!error.empty()) return error;
    for (const std::string& table : {AHDName, AVDName}) learnAntennas(setPathName(folder_, table + ".DBF"));
  }
  return lookingUp() ? std::string() : claimLibrary(path);
}

std::string frmHDAntEditor::makeElsewhere() {
  openLibraryTables(folder_, Mfg);
  return "";
}

// One editor at a time: it finds out whether another is at work, and shows that it is. Behind the look at the table one
// may have come: the mark lets in a single one.
std::string frmHDAntEditor::claimLibrary(const std::string& path) {
  int code = RSTblValidRS(FieldsFromDataSum(kTableType), path, false, false, kTableType, RecordsetType::table,
                          recordsetOption::denyWrite);
  if (code == tableCode::fine) {
    editing_ = EditingMark::unlessInUse(path);
    if (editing_) return "";
    code = tableCode::inUse;
  }
  std::string text = AMSName + kLineBreak + "Error opening database:" + kBlankLine + GetTblErrText(code);
  showInformation("Database Error", text);
  return text;
}

void frmHDAntEditor::showLibrary() {
  GainUnits = trim(getAntGainUnits());
  DataAMS.DatabaseName = folder_;
  DataAMS.RecordSource = "select * from [" + AMSName + "] Order by [ANTENNA] ASC";
  DataAMS.Refresh();
  MakeMyCaption();
  SetColsAMS();
  clearPatterns();
  SetColsAHD();
  SetColsAVD();
}

void frmHDAntEditor::showJob() {
  Command1[continuing].setVisible(true);
  Command1[cancelling].setVisible(true);
  Command1[plottingAzimuth].setVisible(false);
  Command1[plottingElevation].setVisible(false);
  for (std::size_t button = copying; button < continuing; ++button) Command1[button].setEnabled(!lookingUp());
  chkReadOnly.setVisible(false);
  chkReadOnly.setValue(lookingUp() ? 1 : 0);
  chkReadOnly_Click();
  if (lookingUp()) SessionResult = sessionResult::lookingUp;
  const double freq = CValP(Freq);
  TDBGridAMS.setFetchRowStyle(lookingUp() || freq >= 0);
  showFrequency(lookingUp() ? freq > 0 : freq >= 0);
}

void frmHDAntEditor::showFrequency(bool show) {
  for (Widget* widget : std::initializer_list<Widget*>{&lblFreq, &txtFreq, &txtFreqDelta, &cboFreqDelta}) {
    widget->setVisible(show);
  }
  if (!show) return;
  cboFreqDelta.setEntries({"MHz", "KHz"});
  modSetComboBox(cboFreqDelta, "MHz", false);
  txtFreq.setText(formatNumber(CValP(Freq), "#0.0000") + "+/-");
}

void frmHDAntEditor::standOn(const std::string& id) {
  if (CValP(Freq) > 0) FreqDelta = CalcFreqDelta();
  if (getLenTrim(id) > 0) goToAntenna(id);
}

void frmHDAntEditor::chkReadOnly_Click() {
  const bool open = chkReadOnly.value() == 0;
  for (DataGrid* grid : {&TDBGridAMS, &TDBGridAHD, &TDBGridAVD}) {
    grid->setAllowAddNew(open);
    grid->setAllowUpdate(open);
    grid->setAllowDelete(open);
  }
  Command1[addingAzimuths].setEnabled(open);
  Command1[addingElevations].setEnabled(open);
}

void frmHDAntEditor::MakeMyCaption() {
  std::string title = lookingUp() ? "Antenna Database Lookup" : "Antenna Database Editor";
  title += ": " + LibDesc + " (" + AMSName + ") ";
  if (DataAMS.hasRecordset()) title += " " + std::to_string(DataAMS.RecordCount()) + " records";
  setCaption(title);
}

// --- Ending.

// What stands in a cell or a row still counts.
bool frmHDAntEditor::storeEntries() { return TDBGridAMS.update() && TDBGridAHD.update() && TDBGridAVD.update(); }

void frmHDAntEditor::continueSession() {
  const Procedure guard(procedure::frmHDAntEditor_Continue);
  if (!storeEntries()) return;
  SessionResult = sessionResult::ended;
  if (selectedRow() < 0) return leaveWithout();
  if (OKAntPattern(*this)) {
    takeSelection();
    return hide();
  }
  showInformation("Invalid Antenna Settings",
                  "You must select a different antenna or correct the problems with this antenna." +
                      std::string(kBlankLine) + "You can also Cancel to exit this editor.");
  askToCorrect(*this);
}

void frmHDAntEditor::takeSelection() {
  const int row = selectedRow();
  for (const auto& [text, field] : selection()) {
    *text = upperCase(trim(ChkNulls(TDBGridAMS.value(row, field), "", false).asText()));
  }
}

void frmHDAntEditor::leaveWithout() {
  for (const auto& [text, field] : selection()) text->clear();
  SessionResult = sessionResult::cancelled;
  hide();
}

std::array<std::pair<std::string*, const char*>, 7> frmHDAntEditor::selection() {
  return {{{&SelID, "ATYPE_ID"},
           {&SelAntenna, "ANTENNA"},
           {&SelGain, "GAIN"},
           {&SelGainUn, "GAIN_UN"},
           {&SelFLow, "F_LOW"},
           {&SelFHigh, "F_HIGH"},
           {&SelFreqUn, "FREQ_UN"}}};
}

}  // namespace vantrelix
