#include "aliases/frmFileAlias.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

#include "aliases/NewFileName.h"
#include "dialogs/storedNumber.h"
#include "dialogs/windowPlacement.h"
#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/messages.h"
#include "foundation/procedures.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "ui/Desktop.h"

namespace vantrelix {

namespace {

constexpr const char* kDescription = "Description";
constexpr const char* kFile = "File";

// Twips.
constexpr int kWidth = 9900;
constexpr int kHeight = 7500;
constexpr int kRoundGrid = 600;  // what of the window's width is not the grid's
constexpr int kWidestColumn = 144000;

struct GridColumnRow {
  const char* caption;
  double share;  // of the grid's width, where no width is stored
};
// The rest is for the row headers and the scroll bar.
constexpr GridColumnRow kColumns[] = {{kDescription, 0.58}, {kFile, 0.28}};

constexpr const char* kSection = "CONFIG";
constexpr const char* kSeparator = "|";
constexpr int kNewDigits = 4;

struct FamilyTexts {
  const char* select;
  const char* newTitle;
};
constexpr FamilyTexts kAntennaTexts{"Select Antenna Library", "New Antenna Library"};
constexpr FamilyTexts kLineTexts{"Select Transmission Line Library", "New Line Library"};

const FamilyTexts& textsOf(const AliasFamily& family) {
  return family.family == LibraryFamily::antenna ? kAntennaTexts : kLineTexts;
}

std::string gridKey(const Form& form) { return form.name() + " Grid"; }

}  // namespace

frmFileAlias::frmFileAlias() : Form("frmFileAlias") {
  nameWidgets();
  listen();
  setDefaultButton(&Command1[continuing]);
  setCancelButton(&Command1[cancelling]);
  setFocus(TDBGrid1);
  setSize(kWidth, kHeight);
  SetFormSize(*this, kHeight, kWidth);
  SetFormLoc(*this);
}

void frmFileAlias::nameWidgets() {
  Frame1.setCaption("Select File");
  fraPath.setCaption("Path");
  cmdNew.setCaption("New File");
  cmdNew.setToolTip("Adds a new library to the list");
  Command1[cancelling].setCaption("Cancel");
  Command1[continuing].setCaption("Continue");
  Command1[continuing].setToolTip("Takes the library of the marked row");
  TDBGrid1.setToolTip("Type the beginning of a description to find it; Delete removes a row from the list");
  TDBGrid1.setAllowUpdate(false);
  TDBGrid1.setMultiSelect(DataGrid::MultiSelect::simple);
  for (Widget* widget : std::initializer_list<Widget*>{&Frame1, &TDBGrid1, &fraPath, &lblPath, &cmdNew,
                                                       &Command1[cancelling], &Command1[continuing]}) {
    add(*widget);
  }
  int tabIndex = 0;
  for (Widget* widget :
       std::initializer_list<Widget*>{&TDBGrid1, &cmdNew, &Command1[continuing], &Command1[cancelling]}) {
    widget->setTabIndex(tabIndex++);
  }
}

void frmFileAlias::listen() {
  cmdNew.click.listen([this] {
    const Procedure guard(procedure::frmFileAlias_cmdNew);
    try {
      newFile();
    } catch (const std::exception& failure) {
      ErrHand(failure);
    }
  });
  Command1[cancelling].click.listen([this] { cancel(); });
  Command1[continuing].click.listen([this] { choose(); });
  TDBGrid1.rowColChange.listen([this](const std::string&, int) { rowChanged(); });
  TDBGrid1.doubleClick.listen([this] { Command1[continuing].userClick(); });
  TDBGrid1.beforeDelete.listen([this](bool& refused) { askBeforeDelete(refused); });
}

void frmFileAlias::InitForm() {
  family_ = aliasFamilyOf(sPrefix);
  if (family_ && getLenTrim(caption()) == 0) setCaption(textsOf(*family_).select);
  lblPath.setCaption(displayPath(setPathName(folder(), family_ ? family_->filePattern : "")));
}

void frmFileAlias::InitGrid() {
  const std::string stored = getINIStr(kSection, gridKey(*this), "");
  std::vector<GridColumn> columns;
  int field = 2;  // behind the grid's own width
  for (const GridColumnRow& row : kColumns) {
    GridColumn column;
    column.caption = column.dataField = row.caption;
    const int width = storedNumber(sAWK6(stored, kSeparator, field++)).value_or(0);
    const bool sensible = width > 0 && width <= kWidestColumn;
    column.width = sensible ? width : static_cast<int>(std::lround(row.share * TDBGrid1.geometry().width));
    columns.push_back(std::move(column));
  }
  TDBGrid1.setColumns(std::move(columns));
}

void frmFileAlias::GetFiles() {
  list_ = std::make_shared<ArrayRows>(std::vector<std::string>{kDescription, kFile});
  if (family_) {
    store_.emplace(*family_, sPath);
    for (LibraryEntry& entry : store_->files()) list_->add({std::move(entry.description), std::move(entry.file)});
  }
  TDBGrid1.setRows(list_);
  setCaption(caption() + " - " + std::to_string(list_->count()) + " files");
}

void frmFileAlias::allowNew(bool allow) { cmdNew.setEnabled(allow && family_); }

bool frmFileAlias::FindAliasMatch(const std::string& file) {
  TDBGrid1.selBookmarks().clear();
  const int row = rowOfFile(file);
  // What nobody chose is not to be taken by a key pressed too early.
  if (row < 0) TDBGrid1.leaveRows();
  if (row >= 0) selectRow(row);
  return row >= 0;
}

void frmFileAlias::selectRow(int row) {
  if (!TDBGrid1.rowInView(row)) TDBGrid1.setFirstRow(row);
  TDBGrid1.setCurrentRow(row);
  rowChanged();
}

int frmFileAlias::rowOfFile(const std::string& file) const {
  const std::string wanted = upperCase(trim(file));
  for (int row = 0; row < TDBGrid1.dataRowCount(); ++row) {
    if (upperCase(cell(row, kFile)) == wanted) return row;
  }
  return -1;
}

// What is current is what is marked, and what is marked is what Delete removes.
void frmFileAlias::rowChanged() {
  TDBGrid1.selBookmarks().assign({TDBGrid1.bookmark()});
  const std::string file = cell(TDBGrid1.currentRow(), kFile);
  if (file == lastRowFile_) return;
  lastRowFile_ = file;
  setFocus(Command1[continuing]);
}

void frmFileAlias::newFile() {
  if (!family_) return;
  const std::string name = NewFileName(sPrefix, folder(), sExt, kNewDigits);
  const std::string prompt = name + kLineBreak + "Enter the description for the new library created:";
  const std::string description = desktop().inputBox(prompt, textsOf(*family_).newTitle, "");
  if (getLenTrim(description) == 0) return;
  const std::string file = name + "." + sExt;
  if (!FindAliasMatch(file)) selectRow(TDBGrid1.appendRow({{kDescription, description}, {kFile, file}}));
  setFocus(Command1[continuing]);
}

void frmFileAlias::cancel() {
  bCancel = true;
  sFile = " ";
  hide();
}

void frmFileAlias::choose() {
  bCancel = false;
  const int row = TDBGrid1.currentRow();
  sFile = cell(row, kFile);
  sDesc = trim(cell(row, kDescription));
  if (getLenTrim(sFile) > 0) return hide();
  showInformation("Nothing Selected",
                  "You must select the line you want by clicking the selection button on the left.");
}

void frmFileAlias::userRemoveRow() {
  if (TDBGrid1.selBookmarks().count() == 0) TDBGrid1.selBookmarks().add(TDBGrid1.bookmark());
  TDBGrid1.userDeleteRows();
}

void frmFileAlias::askBeforeDelete(bool& refused) {
  const int row = TDBGrid1.currentRow();
  const std::string text = "Do you want to remove this antenna library?" + std::string(kBlankLine) +
                           cell(row, kDescription) + " " + cell(row, kFile);
  const Message question{"Remove Antenna Library?", text, MsgButtons::yesNo, MsgIcon::question, 2};
  refused = MsgBox(question) != MsgAnswer::yes;
}

void frmFileAlias::close() {
  if (!bCancel && store_) store_->save(entries());
  SaveFormLoc(*this);
  SaveFormSize(*this);
  saveGrid();
}

void frmFileAlias::saveGrid() const {
  std::string widths = std::to_string(TDBGrid1.geometry().width);
  for (const GridColumn& column : TDBGrid1.columns()) widths += kSeparator + std::to_string(column.width);
  setINI(kSection, gridKey(*this), getDefaultsINI(), widths);
}

void frmFileAlias::resize() {
  Rectangle box = TDBGrid1.geometry();
  box.width = std::max(width() - kRoundGrid, 0);
  TDBGrid1.setGeometry(box);
}

std::string frmFileAlias::cell(int row, const char* field) const {
  const Value value = TDBGrid1.value(row, field);
  return value.isNull() ? "" : value.asText();
}

std::string frmFileAlias::folder() const {
  if (getLenTrim(sPath) > 0 || !family_) return trim(sPath);
  return family_->folder();
}

std::vector<LibraryEntry> frmFileAlias::entries() const {
  std::vector<LibraryEntry> entries;
  entries.reserve(static_cast<std::size_t>(TDBGrid1.dataRowCount()));
  for (int row = 0; row < TDBGrid1.dataRowCount(); ++row) {
    entries.push_back({cell(row, kFile), cell(row, kDescription)});
  }
  return entries;
}

}  // namespace vantrelix
