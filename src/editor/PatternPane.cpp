#include "editor/PatternPane.h"

#include <algorithm>
#include <cmath>
#include <iostream>

#include "antenna/convertGain.h"
#include "dialogs/gridLayout.h"
#include "editor/frmHDAntEditor.h"
#include "foundation/getINI.h"
#include "foundation/messages.h"
#include "foundation/numbers.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"

namespace vantrelix {

namespace {

constexpr const char* kIDField = "ATYPE_ID";
constexpr const char* kNumberFormat = "##0.000";
constexpr double kFarthest = 88888;  // degrees, further from 0 than any angle
constexpr int kNoRow = -88;

std::string keyOf(const std::string& id) { return upperCase(trim(id)); }
double numberOf(const Value& value) { return CValP(ChkNulls(value, 0, false)); }

}  // namespace

PatternPane::PatternPane(frmHDAntEditor& form, const PatternPlane& plane_)
    : plane(plane_),
      grid(plane_.grid),
      data(grid),
      frame(plane_.frame),
      progress(plane_.progress),
      thumbnailFrame(plane_.thumbnailFrame),
      thumbnail(plane_.thumbnail),
      form_(form) {
  thumbnailFrame.setCaption(plane.thumbnailCaption);
  design();
  listen();
}

// --- Columns.

void PatternPane::design() {
  grid.addColumn({.caption = "Antenna ID", .dataField = kIDField, .visible = false});
  for (const char* field : {plane.angleField, plane.gainField}) {
    grid.addColumn({.dataField = field, .alignment = GridAlignment::right});
  }
}

int PatternPane::showColumn(const std::string& field, const std::string& caption, const char* format, bool visible) {
  const int index = grid.columnOf(field);
  if (index < 0) return index;
  GridColumn column = grid.column(index);
  column.caption = caption;
  column.numberFormat = format;
  column.visible = visible;
  grid.setColumn(index, std::move(column));
  return index;
}

void PatternPane::SetCols() {
  const GridHold hold(grid);
  GetGridCols("", form_.name(), grid, plane.grid);
  const bool showID = getINIBool("Antenna Editor", "ShowID", "0", getSuiteINI());
  colID_ = showColumn(kIDField, "Antenna ID", "", showID);
  colAngle_ = showColumn(plane.angleField, plane.angleCaption, kNumberFormat, true);
  colGain_ = showColumn(plane.gainField, "Gain", kFormatTextEvent, true);
  frame.setCaption(plane.frameCaption + form_.amsCell("ANTENNA"));
}

// --- Rows.

void PatternPane::load(const std::string& id, const std::string& order) {
  const std::string& table = plane.plane == Plane::azimuth ? form_.AHDName : form_.AVDName;
  data.DatabaseName = form_.folder();
  data.RecordSource = "select * from [" + table + "] where ucase(atype_id) = '" + replaceAll(keyOf(id), "'", "''") +
                      "' Order by [" + plane.angleField + "]" + order;
  data.Refresh();
  id_ = id;
}

void PatternPane::reorder(const std::string& order) {
  if (!data.hasRecordset()) return;
  load(id_, order);
  SetCols();
}

bool PatternPane::shows(const Value& id) const {
  const std::string key = keyOf(ChkNulls(id, "", false).asText());
  return key.empty() ? !data.hasRecordset() : data.hasRecordset() && key == keyOf(id_);
}

void PatternPane::clear() {
  data.clear();
  thumbnail.Cls();
  frame.setCaption(plane.frameCaption + form_.amsCell("ANTENNA"));
}

int PatternPane::nearestZero() const {
  double nearest = kFarthest;
  int found = kNoRow;
  for (int row = 0; row < data.RecordCount(); ++row) {
    const double distance = std::abs(numberOf(grid.value(row, plane.angleField)));
    if (distance >= nearest) continue;
    nearest = distance;
    found = row;
  }
  return found;
}

void PatternPane::scrollToZero() {
  const int row = nearestZero();
  if (row < 0) return;
  if (row <= grid.visibleRows()) {
    grid.setCurrentRow(row);
    return;
  }
  const int half = grid.visibleRows() / 2;
  grid.setFirstRow(row - half);
  grid.setVisualRow(half);
}

void PatternPane::GetPat(std::int16_t& n, std::vector<double>& angles, std::vector<double>& gains) const {
  n = CInt(static_cast<double>(data.RecordCount()));
  if (n < 1) return;
  const auto count = static_cast<std::size_t>(n);
  angles.resize(count);
  gains.resize(count);
  for (std::size_t i = 0; i < count; ++i) {
    angles[i] = numberOf(grid.value(static_cast<int>(i), plane.angleField));
    gains[i] = numberOf(grid.value(static_cast<int>(i), plane.gainField));
  }
}

PatternPoints PatternPane::shownPoints() {
  if (!justLoaded) data.Requery();
  SetCols();
  PatternPoints points;
  for (int row = 0; row < data.RecordCount(); ++row) {
    const Value angle = grid.value(row, plane.angleField);
    const Value gain = grid.value(row, plane.gainField);
    if (angle.isNull() || gain.isNull()) continue;
    points.count = CInt(points.count + 1.0);
    points.angles.push_back(CValP(angle));
    points.gains.push_back(CValP(gain));
    points.low = std::min(points.low, points.gains.back());
  }
  return points;
}

// --- What the user does.

void PatternPane::listen() {
  grid.beforeInsert.listen([this](bool& refused) { beforeEdit(refused); });
  grid.beforeColEdit.listen([this](int, bool& refused) { beforeEdit(refused); });
  grid.beforeColUpdate.listen([this](GridColumnUpdate& update) { beforeColUpdate(update); });
  grid.onAddNew.listen([this] { onAddNew(); });
  grid.formatText.listen([this](GridCellText& cell) { formatText(cell); });
  grid.click.listen([this] { frmHDAntEditor::commitClicked(grid, data); });
}

// What is typed for one antenna must not go to another. An entry under way belongs to the rows shown.
bool PatternPane::belongsToSelected() const {
  return grid.dataChanged() || shows(form_.TDBGridAMS.value(form_.selectedRow(), kIDField));
}

// Where no antenna was selected, or another's rows are shown still, the rows have just become those of the current one.
void PatternPane::beforeEdit(bool& refused) {
  if (form_.IsAntSelected()) {
    if (belongsToSelected()) return;
    form_.selectionChanged();
  }
  form_.setFocus(form_.TDBGridAMS);
  refused = true;
}

void PatternPane::beforeColUpdate(GridColumnUpdate& update) {
  const double typed = CValP(update.text);
  std::clog << plane.grid << "_BeforeColUpdate strvalue |" << update.text << "| dvalue = " << generalText(typed)
            << std::endl;
  if (update.cell.column == colAngle_ && !plane.allows(typed)) {
    refuse(update, plane.angleTitle, plane.angleText);
  } else if (update.cell.column == colGain_) {
    takeGain(update, typed);
  }
}

void PatternPane::refuse(GridColumnUpdate& update, const std::string& title, const std::string& text) const {
  update.cancel = true;
  showInformation(title, text);
}

void PatternPane::takeGain(GridColumnUpdate& update, double typed) const {
  if (typed > CValP(form_.amsCell("GAIN"))) {
    return refuse(update, "Invalid Gain Value", plane.gainText + std::string(kBlankLine) + plane.gainHint);
  }
  // A blank empties the cell; the table refuses what is no number, and the text stays in the cell.
  if (typed == 0 && !isNumeric(update.text)) return;
  bool failed = false;
  const double own =
      ConvertAntPatternDbl(form_.GainUnits, form_.AntGainUn, typed, form_.AntGain, form_.AntGainUn, failed);
  update.value = failed ? 0 : own;
}

void PatternPane::onAddNew() {
  const int antenna = form_.selectedRow();
  const int row = grid.currentRow();
  grid.setValue(row, kIDField, form_.TDBGridAMS.value(antenna, "ATYPE_ID"));
  grid.setValue(row, plane.gainField, form_.TDBGridAMS.value(antenna, "GAIN"));
}

void PatternPane::formatText(GridCellText& cell) const {
  if (cell.value.isNull()) return;
  bool failed = false;
  const double shown =
      ConvertAntPatternDbl(form_.AntGainUn, form_.GainUnits, CValP(cell.value), form_.AntGain, form_.AntGainUn, failed);
  cell.text = formatNumber(shown, kNumberFormat);
}

}  // namespace vantrelix
