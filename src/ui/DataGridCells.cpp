#include <map>

#include "foundation/numbers.h"
#include "foundation/text.h"
#include "platform/RunTimeFailure.h"
#include "ui/DataGrid.h"

namespace vantrelix {

namespace {

// A text that holds a number is formatted as one: text columns hold numbers too.
std::string formatted(const Value& value, const std::string& format) {
  if (format.empty() || format == kFormatTextEvent) return value.asText();
  if (value.isNumber()) return formatNumber(value.number(), format);
  const std::optional<double> number = value.isText() ? plainNumber(value.text()) : std::nullopt;
  return number ? formatNumber(*number, format) : value.asText();
}

// What a typed text means for a cell: a number where the column or the old value is one and the text can be read so.
Value entered(const std::string& text, const GridColumn& column, const Value& oldValue) {
  if (column.numberFormat.empty() && !oldValue.isNumber()) return text;
  if (trim(text).empty()) return {};
  const std::optional<double> number = plainNumber(text);
  return number ? Value(*number) : Value(text);
}

}  // namespace

// --- Reading.

bool DataGrid::entryAt(int row) const { return entry_ && row >= 0 && row == entryRow(); }

int DataGrid::entryRow() const { return entry_->adding ? dataRowCount() : rowOf(entry_->bookmark); }

Value DataGrid::value(int row, const std::string& field) const {
  if (entryAt(row)) {
    if (const auto found = entry_->fields.find(field); found != entry_->fields.end()) return found->second;
  }
  return row >= 0 && row < dataRowCount() ? rows_->value(row, field) : Value();
}

Value DataGrid::cellValue(int row, int column) const {
  if (!hasRow(row) || !hasColumn(column)) return {};
  const std::string& field = this->column(column).dataField;
  if (!field.empty()) return value(row, field);
  Value fetched;
  unboundColumnFetch({row, column}, fetched);
  return fetched;
}

std::string DataGrid::cellText(int row, int column) const {
  const bool blankRow = isAddRow(row) && !addingRow();
  if (!hasRow(row) || !hasColumn(column) || blankRow) return "";
  const Value value = cellValue(row, column);
  const std::string& format = this->column(column).numberFormat;
  std::string text = value.isNull() ? "" : formatted(value, format);
  if (format != kFormatTextEvent) return text;
  GridCellText asked{{row, column}, value, std::move(text)};
  formatText(asked);
  return asked.text;
}

GridRowStyle DataGrid::rowStyle(int row) const {
  GridRowStyle style;
  const bool blankRow = isAddRow(row) && !addingRow();
  if (fetchesRowStyle_ && hasRow(row) && !blankRow) fetchRowStyle(row, style);
  return style;
}

bool DataGrid::editable(int row, int column) const {
  if (locked_ || !hasRow(row) || !hasColumn(column)) return false;
  const GridColumn& own = this->column(column);
  const bool allow = isAddRow(row) ? allowAddNew_ : allowUpdate_;
  return allow && own.visible && !own.locked && !own.dataField.empty();
}

bool DataGrid::anyEditable() const { return !locked_ && enabled() && (allowUpdate_ || allowAddNew_); }

// --- The entry under way.

void DataGrid::setValue(int row, const std::string& field, const Value& value) {
  if (!hasRow(row)) return;
  if (isAddRow(row) && !entry_) entry_ = Entry{"", true, {}};
  if (entryAt(row)) {
    entry_->fields[field] = value;
  } else if (row < dataRowCount()) {
    rows_->store(row, {{field, value}});
  }
  tellRow(row);
}

bool DataGrid::beginEntry(int row) {
  if (entryAt(row)) return true;
  if (!isAddRow(row)) {
    entry_ = Entry{bookmarkOf(row), false, {}};
    return true;
  }
  bool refused = false;
  if (!raise(beforeInsert, refused) || refused || !isAddRow(row)) return false;
  entry_ = Entry{"", true, {}};
  return raise(onAddNew) && entryAt(row);
}

void DataGrid::cancelUpdate() {
  if (!entry_) return;
  const int row = entryRow();
  const bool blankRowGoes = entry_->adding && !allowAddNew_;
  entry_.reset();
  if (!blankRowGoes) return tellRow(row);
  settle();
  tellAll();
}

bool DataGrid::update() {
  if (!entry_) return true;
  bool refused = false;
  if (!raise(beforeUpdate, refused) || refused) return false;
  if (!entry_) return true;
  const bool added = entry_->adding;
  const std::weak_ptr<char> life = life_;
  storeEntry();
  if (life.expired() || (added && !raise(afterInsert))) return false;
  return raise(afterUpdate);
}

void DataGrid::storeEntry() {
  if (!entry_->adding) {
    const int row = entryRow();
    if (row < 0) throw RunTimeFailure(failure::recordDeleted, "Record is deleted.");
    rows_->store(row, entry_->fields);
    entry_.reset();
    return tellRow(row);
  }
  const int blank = dataRowCount();
  const int row = rows_->append(entry_->fields);
  const bool stoodThere = current_.row == blank;
  entry_.reset();
  if (stoodThere) stand(row);
  if (row != blank) {
    settle();
    return tellAll();
  }
  const std::weak_ptr<char> life = life_;
  tellRow(row);
  if (!life.expired() && allowAddNew_) tell({GridChange::Kind::insert, row + 1, row + 1});
}

// --- Editing by the user.

bool DataGrid::userBeginEdit(int row, int column) {
  if (!reachable() || !editable(row, column)) return false;
  const GridCell cell{row, column};
  if (!(cell == current_) && (!userMoveTo(row, column) || !(cell == current_))) return false;
  if (editing_ == cell) return true;
  bool refused = false;
  if (!raise(beforeColEdit, column, refused) || refused) return false;
  if (!(cell == current_) || !editable(row, column)) return false;
  editing_ = cell;
  return true;
}

bool DataGrid::userEdit(int row, int column, const std::string& text) {
  if (!userBeginEdit(row, column)) return false;
  editing_.reset();
  if (text == cellText(row, column)) return true;
  const bool fresh = !entry_;
  const std::weak_ptr<char> life = life_;
  if (!beginEntry(row)) return false;
  const Value oldValue = cellValue(row, column);
  GridColumnUpdate update{{row, column}, text, oldValue, entered(text, this->column(column), oldValue)};
  if (takeValue(update)) return raise(afterColUpdate, column);
  if (!life.expired() && fresh) cancelUpdate();
  return false;
}

bool DataGrid::takeValue(GridColumnUpdate& update) {
  if (!raise(beforeColUpdate, update) || update.cancel) return false;
  if (!entryAt(update.cell.row) || !hasColumn(update.cell.column)) return false;
  const std::weak_ptr<char> life = life_;
  entry_->fields[column(update.cell.column).dataField] = update.value;
  tellRow(update.cell.row);
  return !life.expired();
}

bool DataGrid::userCancelRow() {
  if (!reachable() || !entry_) return false;
  cancelUpdate();
  return true;
}

// --- Removing by the user.

bool DataGrid::userDeleteRows() {
  if (!reachable() || locked_ || !allowDelete_ || selected_.count() == 0) return false;
  std::map<int, std::string> inOrder;
  for (const std::string& bookmark : selected_.items()) inOrder.emplace(rowOf(bookmark), bookmark);
  inOrder.erase(-1);
  for (const auto& [row, bookmark] : inOrder) {
    if (!deleteByUser(bookmark)) return false;
  }
  return true;
}

// The row becomes the current one first: what is asked and removed along with it goes by the current row.
bool DataGrid::deleteByUser(const std::string& bookmark) {
  const std::weak_ptr<char> life = life_;
  if (!userMoveTo(rowOf(bookmark), current_.column)) return false;
  bool refused = false;
  if (!raise(beforeDelete, refused) || refused) return false;
  if (const int row = rowOf(bookmark); row >= 0) removeRow(row);
  if (life.expired() || !raise(afterDelete)) return false;
  return raise(rowColChange, bookmark, current_.column);
}

}  // namespace vantrelix
