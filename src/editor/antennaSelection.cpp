// Which antenna of the list is current, in which order they stand, and which cover the frequency of interest.
#include <exception>

#include "editor/frmHDAntEditor.h"
#include "editor/rowUnits.h"
#include "foundation/errHand.h"
#include "foundation/numbers.h"
#include "foundation/procedures.h"
#include "foundation/text.h"
#include "ui/Desktop.h"

namespace vantrelix {

namespace {

constexpr Color kOutOfBand = 0x8080FF;

}  // namespace

void frmHDAntEditor::rowChanged() {
  showID();
  desktop().doEvents();
  SelectAntenna();
}

void frmHDAntEditor::showSelection() {
  selectionShown_ = TDBGridAMS.selBookmarks().items();
  selectionChanged();
}

void frmHDAntEditor::SelectAntenna() {
  SelBookmarks& selected = TDBGridAMS.selBookmarks();
  while (selected.count() > 0) selected.remove(0);
  if (DataAMS.RecordCount() > 0) selected.add(TDBGridAMS.bookmark());
  showSelection();
}

bool frmHDAntEditor::IsAntSelected() {
  if (TDBGridAMS.selBookmarks().count() == 1) return true;
  setFocus(TDBGridAMS);
  SelectAntenna();
  setFocus(TDBGridAHD);
  return false;
}

int frmHDAntEditor::rowOfAntenna(const std::string& id) {
  return DataAMS.FindFirst("ATYPE_ID = '" + replaceAll(id, "'", "''") + "'");
}

bool frmHDAntEditor::goToAntenna(const std::string& id) {
  const int row = rowOfAntenna(id);
  if (row < 0 || !TDBGridAMS.setCurrentRow(row)) return false;
  rowChanged();
  return true;
}

// --- Order.

void frmHDAntEditor::sortAMS(int column) {
  const std::string field = TDBGridAMS.column(column).dataField;
  if (field.empty() || !DataAMS.hasRecordset()) return;
  const bool ascending = field != TDBGridAMS.sortField() || !TDBGridAMS.sortAscending();
  try {
    // What was typed for the antenna shown so far still counts.
    if (!TDBGridAHD.update() || !TDBGridAVD.update()) return;
    DataAMS.RecordSource = "select * from [" + AMSName + "] Order by [" + field + "] " + (ascending ? "ASC" : "DESC");
    DataAMS.Refresh();
    SetColsAMS();
    TDBGridAMS.setSortMark(field, ascending);
    selectionShown_.clear();
    clearPatterns();
  } catch (const std::exception& failure) {
    ErrHand(failure, AMSName);
  }
}

// --- The frequency of interest.

double frmHDAntEditor::CalcFreqDelta() {
  const double tolerance = CValP(txtFreqDelta.text());
  if (tolerance < 0) return 0;
  const std::string units = cboFreqDelta.text();
  if (units == kFreqUnits) FreqDelta = tolerance;
  if (units == "KHz") FreqDelta = tolerance / 1000;
  TDBGridAMS.refreshCells();
  return FreqDelta;
}

void frmHDAntEditor::toleranceChanged() {
  if (!Loading) FreqDelta = CalcFreqDelta();
}

void frmHDAntEditor::colourRow(int row, GridRowStyle& style) const {
  const double wanted = CValP(Freq);
  if (wanted <= 0) return;
  const double low = CValP(amsCellText(row, "F_LOW"));
  const double high = CValP(amsCellText(row, "F_HIGH"));
  const bool covers = low - FreqDelta <= wanted && high + FreqDelta >= wanted && low > 0 && high > 0;
  if (!covers) style.back = kOutOfBand;
}

}  // namespace vantrelix
