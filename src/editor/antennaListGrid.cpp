// The antenna list of the editor.
#include <string_view>

#include "antenna/convertGain.h"
#include "dialogs/gridLayout.h"
#include "editor/antCopy.h"
#include "editor/frmHDAntEditor.h"
#include "editor/rowUnits.h"
#include "foundation/getINI.h"
#include "foundation/messages.h"
#include "foundation/numbers.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "foundation/units.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {

namespace {

constexpr const char* kNumberFormat = "##0.000";
constexpr int kNameWidth = 6000;  // twips, until the user has laid the columns out
constexpr int kEnterKey = 13;

struct ListColumn {
  const char* field;
  const char* caption;
  int minimumWidth;  // twips; 0 for a column that may be of any width or hidden
  bool shown;
  const char* format;
};

// In the order of the table; the gain's caption gets the display units.
constexpr ListColumn kColumns[] = {
    {"ATYPE_ID", "Antenna ID", 0, false, ""},
    {"ANTENNA", "Antenna", 2000, true, ""},
    {"GAIN", "Gain", 1000, true, kFormatTextEvent},
    {"GAIN_UN", "Gain Units", 0, false, ""},
    {"F_LOW", "Low Freq (MHz)", 1000, true, kFormatTextEvent},
    {"F_HIGH", "High Freq (MHz)", 1000, true, kFormatTextEvent},
    {"FREQ_UN", "Freq Units", 0, false, ""},
    {"POWER", "Power", 0, false, kFormatTextEvent},
    {"POWER_UN", "Power Units", 0, false, ""},
};

double numberOf(const Value& value) { return value.isNull() ? 0 : CValP(value.asText()); }

// Whether what was typed can be taken for a number; the table refuses the rest, and the text stays in the cell.
bool holdsNumber(const std::string& text) { return CValP(text) != 0 || isNumeric(text); }

}  // namespace

// --- Columns.

void frmHDAntEditor::designAMS() {
  std::vector<GridColumn> columns;
  for (const ListColumn& column : kColumns) {
    GridColumn designed;
    designed.caption = column.caption;
    designed.dataField = column.field;
    designed.visible = column.shown;
    if (column.minimumWidth > 0) designed.width = column.minimumWidth;
    if (column.format == std::string_view(kFormatTextEvent)) designed.alignment = GridAlignment::right;
    columns.push_back(std::move(designed));
  }
  TDBGridAMS.setColumns(std::move(columns));
  TDBGridAMS.setMultiSelect(DataGrid::MultiSelect::simple);
}

void frmHDAntEditor::SetColsAMS() {
  const GridHold hold(TDBGridAMS);
  GetGridCols("", name(), TDBGridAMS, TDBGridAMS.name());
  const bool laidOut = getLenTrim(getINIStr(name(), TDBGridAMS.name() + " Col Widths", "")) > 0;
  const bool showID = getINIBool("Antenna Editor", "ShowID", "0", getSuiteINI());
  for (const ListColumn& own : kColumns) {
    const int index = TDBGridAMS.columnOf(own.field);
    if (index < 0) continue;
    GridColumn column = TDBGridAMS.column(index);
    if (own.minimumWidth > 0 && (column.width < own.minimumWidth || !column.visible)) column.width = own.minimumWidth;
    if (!laidOut && column.dataField == "ANTENNA") column.width = kNameWidth;
    column.visible = own.shown || (showID && column.dataField == "ATYPE_ID");
    column.numberFormat = own.format;
    column.caption = own.caption;
    if (column.dataField == "GAIN") column.caption += " (" + GainUnits + ")";
    TDBGridAMS.setColumn(index, std::move(column));
  }
}

// --- Units and texts.

std::string frmHDAntEditor::ValidGainUn(int row) const {
  return knownGainUnits(TDBGridAMS.value(row, "GAIN_UN"), GainUnits);
}

std::string frmHDAntEditor::ValidFreqUn(int row) const { return knownFreqUnits(TDBGridAMS.value(row, "FREQ_UN")); }

void frmHDAntEditor::formatAMS(GridCellText& cell) const {
  // A word that the table will refuse stays in the cell as it was typed.
  if (cell.value.isText() && !holdsNumber(cell.value.text())) return;
  const std::string& field = TDBGridAMS.column(cell.cell.column).dataField;
  const int row = cell.cell.row;
  bool failed = false;
  double number = numberOf(cell.value);
  if (field == "GAIN") {
    number = ConvertAntGainDbl(ValidGainUn(row), GainUnits, number, failed);
  } else if (field == "F_LOW" || field == "F_HIGH") {
    number = ConvertFreq(ValidFreqUn(row), kFreqUnits, number, failed);
  }
  cell.text = formatNumber(number, kNumberFormat);
}

std::string frmHDAntEditor::amsCellText(int row, const std::string& field) const {
  if (field == "FREQ_UN") return ValidFreqUn(row);
  if (field == "GAIN_UN") return ValidGainUn(row);
  return TDBGridAMS.cellText(row, TDBGridAMS.columnOf(field));
}

int frmHDAntEditor::selectedRow() const {
  const SelBookmarks& selected = TDBGridAMS.selBookmarks();
  return selected.count() == 1 ? TDBGridAMS.rowOf(selected.item(0)) : -1;
}

Value frmHDAntEditor::amsValue(const std::string& field) const {
  return TDBGridAMS.value(TDBGridAMS.currentRow(), field);
}

std::string frmHDAntEditor::amsCell(const std::string& field) const {
  return amsCellText(TDBGridAMS.currentRow(), field);
}

void frmHDAntEditor::showID() {
  const Value id = amsValue("ATYPE_ID");
  txtID.setText("Ant ID: " + ChkNulls(id, "ID ERROR", false).asText());
}

// --- What the user does.

void frmHDAntEditor::listenToAMS() {
  designAMS();
  TDBGridAMS.formatText.listen([this](GridCellText& cell) { formatAMS(cell); });
  TDBGridAMS.fetchRowStyle.listen([this](int row, GridRowStyle& style) { colourRow(row, style); });
  TDBGridAMS.beforeColUpdate.listen([this](GridColumnUpdate& update) { storeInRowUnits(update); });
  TDBGridAMS.onAddNew.listen([this] { beginNewRow(); });
  TDBGridAMS.afterInsert.listen([this] { finishNewRow(); });
  TDBGridAMS.afterUpdate.listen([this] { showGainTyped(); });
  TDBGridAMS.beforeDelete.listen([this](bool& refused) { beforeAntDelete(*this, refused); });
  TDBGridAMS.afterDelete.listen([this] { MakeMyCaption(); });
  TDBGridAMS.headClick.listen([this](int column) { sortAMS(column); });
  TDBGridAMS.rowColChange.listen([this](const std::string& left, int) {
    if (left != TDBGridAMS.bookmark()) rowChanged();
  });
  TDBGridAMS.selChange.listen([this] {
    if (TDBGridAMS.selBookmarks().items() != selectionShown_) showSelection();
  });
  TDBGridAMS.click.listen([this] { commitClicked(TDBGridAMS, DataAMS); });

  // Enter here goes to the list and must not end the session.
  txtFreqDelta.gotFocus.listen([this] {
    setDefaultButton(nullptr);
    txtFreqDelta.setAllText();
  });
  txtFreqDelta.keyPress.listen([this](int& key) {
    if (key == kEnterKey) {
      key = 0;
      return setFocus(TDBGridAMS);
    }
    chkNumeric(key, true, false, false, false, false, false, false);
  });
  txtFreqDelta.lostFocus.listen([this] {
    setDefaultButton(&Command1[continuing]);
    toleranceChanged();
  });
  cboFreqDelta.click.listen([this] { toleranceChanged(); });
}

// Giving a grid its own bookmark again stores the entry under way; what fails shows when the row is left.
void frmHDAntEditor::commitClicked(DataGrid& grid, const DataControl& data) {
  if (!data.hasRecordset()) return;
  try {
    grid.setBookmark(grid.bookmark());
  } catch (const RunTimeFailure&) {
    // The entry stays, and so does the reason, for when the user leaves the row.
  }
}

void frmHDAntEditor::storeInRowUnits(GridColumnUpdate& update) {
  const std::string& field = TDBGridAMS.column(update.cell.column).dataField;
  if (!holdsNumber(update.text)) return;
  const double typed = CValP(update.text);
  bool failed = false;
  if (field == "GAIN") {
    update.value = ConvertAntGainDbl(GainUnits, ValidGainUn(update.cell.row), typed, failed);
  } else if (field == "F_LOW" || field == "F_HIGH") {
    update.value = ConvertFreq(kFreqUnits, ValidFreqUn(update.cell.row), typed, failed);
  }
  if (!failed) return;
  update.cancel = true;
  showInformation("Invalid Gain Value", "A ratio of 0 or less has no value in " + ValidGainUn(update.cell.row) + ".");
}

// Relative points are shown by the gain of their antenna, and new ones begin at it.
void frmHDAntEditor::showGainTyped() {
  const int row = selectedRow();
  if (row < 0 || row != TDBGridAMS.currentRow()) return;
  takeGainOf(row);
  TDBGridAHD.refreshCells();
  TDBGridAVD.refreshCells();
}

}  // namespace vantrelix
