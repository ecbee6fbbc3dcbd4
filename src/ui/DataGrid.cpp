#include "ui/DataGrid.h"

#include <algorithm>

#include "foundation/text.h"

namespace vantrelix {

DataGrid::DataGrid(std::string name) : Widget(std::move(name)) {
  selectedChanged_.listen([this] { tell(); });
}

// --- Telling.

void DataGrid::tell() {
  if (held()) {
    toldLater_ = true;
  } else {
    changed();
  }
}

void DataGrid::tell(const GridChange& change) {
  ++revision_;
  if (held() || raise(rowsChanged, change)) tell();
}

void DataGrid::tellAll() {
  ++revision_;
  tell();
}

void DataGrid::hold() {
  if (++holds_ == 1) heldChanged();
}

void DataGrid::release() {
  if (holds_ == 0 || --holds_ > 0) return;
  if (raise(heldChanged) && std::exchange(toldLater_, false)) changed();
}

// --- Columns.

int DataGrid::columnOf(const std::string& dataField) const {
  const auto found = std::find_if(columns_.begin(), columns_.end(), [&](const GridColumn& column) {
    return equalIgnoringCase(column.dataField, dataField);
  });
  return found == columns_.end() ? -1 : static_cast<int>(found - columns_.begin());
}

void DataGrid::setColumns(std::vector<GridColumn> columns) {
  if (columns == columns_) return;
  columns_ = std::move(columns);
  settle();
  tellAll();
}

void DataGrid::addColumn(GridColumn column) {
  columns_.push_back(std::move(column));
  settle();
  tellAll();
}

void DataGrid::removeColumn(int index) {
  if (!hasColumn(index)) return;
  columns_.erase(columns_.begin() + index);
  if (current_.column > index) --current_.column;
  settle();
  tellAll();
}

// Width and visibility don't touch what the cells show.
void DataGrid::setColumn(int index, GridColumn column) {
  GridColumn& own = columns_.at(static_cast<std::size_t>(index));
  if (column == own) return;
  GridColumn laidOut = own;
  laidOut.width = column.width;
  laidOut.visible = column.visible;
  const bool sameCells = laidOut == column;
  own = std::move(column);
  settle();
  if (sameCells) {
    tell();
  } else {
    tellAll();
  }
}

void DataGrid::setColumnCaption(int index, std::string caption) {
  GridColumn wanted = column(index);
  wanted.caption = std::move(caption);
  setColumn(index, std::move(wanted));
}

void DataGrid::setColumnWidth(int index, int twips) {
  GridColumn wanted = column(index);
  wanted.width = std::max(twips, 0);
  setColumn(index, std::move(wanted));
}

void DataGrid::setColumnVisible(int index, bool visible) {
  GridColumn wanted = column(index);
  wanted.visible = visible;
  setColumn(index, std::move(wanted));
}

void DataGrid::setColumnNumberFormat(int index, std::string format) {
  GridColumn wanted = column(index);
  wanted.numberFormat = std::move(format);
  setColumn(index, std::move(wanted));
}

int DataGrid::visibleColumn(int column, int direction) const {
  for (int at = column; hasColumn(at); at += direction) {
    if (this->column(at).visible) return at;
  }
  return -1;
}

// --- Rows.

void DataGrid::setRows(std::shared_ptr<GridRows> rows) {
  rows_ = std::move(rows);
  entry_.reset();
  editing_.reset();
  selectionStart_.clear();
  selected_.replace({});
  current_.row = -1;
  leftRows_ = false;
  firstRow_ = 0;
  settle();
  tellAll();
}

void DataGrid::refresh() {
  if (entry_ && !entry_->adding && rowOf(entry_->bookmark) < 0) entry_.reset();
  const bool onNewRow = current_.row >= 0 && standing_.empty();
  const int row = onNewRow ? dataRowCount() : rowOf(standing_);
  if (row >= 0) current_.row = row;
  forgetGoneRows();
  settle();
  tellAll();
}

void DataGrid::refreshCells() {
  if (rowCount() > 0) tell({GridChange::Kind::cells, 0, rowCount() - 1});
}

int DataGrid::rowCount() const {
  if (!rows_) return 0;
  return rows_->count() + (allowAddNew_ || addingRow() ? 1 : 0);
}

std::string DataGrid::bookmarkOf(int row) const {
  return row >= 0 && row < dataRowCount() ? rows_->bookmark(row) : std::string();
}

int DataGrid::rowOf(const std::string& bookmark) const {
  return rows_ && !bookmark.empty() ? rows_->rowOf(bookmark) : -1;
}

int DataGrid::appendRow(const GridFields& fields) {
  const int row = rows_->append(fields);
  shiftBehind(row, 1);
  tell({GridChange::Kind::insert, row, row});
  return row;
}

void DataGrid::removeRow(int row) {
  if (entryAt(row)) entry_.reset();
  rows_->remove(row);
  forgetGoneRows();
  shiftBehind(row, -1);
  tell({GridChange::Kind::remove, row, row});
}

// Rows from `row` on have moved by one.
void DataGrid::shiftBehind(int row, int by) {
  const bool removedItself = by < 0 && current_.row == row;
  if (current_.row >= row && !removedItself) current_.row += by;
  settle();
}

void DataGrid::forgetGoneRows() {
  std::vector<std::string> left;
  for (const std::string& bookmark : selected_.items()) {
    if (rowOf(bookmark) >= 0) left.push_back(bookmark);
  }
  if (left != selected_.items()) selected_.replace(std::move(left));
}

void DataGrid::setAllowAddNew(bool allow) {
  if (allow == allowAddNew_) return;
  allowAddNew_ = allow;
  settle();
  tellAll();
}

void DataGrid::setFetchRowStyle(bool fetch) {
  if (fetch == fetchesRowStyle_) return;
  fetchesRowStyle_ = fetch;
  refreshCells();
}

// Brings the place back among the rows and visible columns there are.
void DataGrid::settle() {
  const int column = std::clamp(current_.column, 0, std::max(columnCount() - 1, 0));
  current_.column = std::max(visibleColumn(column, 1), visibleColumn(column, -1));
  firstRow_ = std::clamp(firstRow_, 0, std::max(rowCount() - 1, 0));
  stand(rowCount() == 0 || leftRows_ ? -1 : std::clamp(current_.row, 0, rowCount() - 1));
  anchor_ = extent_ = current_;
}

void DataGrid::stand(int row) {
  current_.row = row;
  if (row >= 0) leftRows_ = false;
  standing_ = bookmarkOf(row);
}

void DataGrid::setSortMark(std::string field, bool ascending) {
  if (field == sortField_ && ascending == sortAscending_) return;
  sortField_ = std::move(field);
  sortAscending_ = ascending;
  tell();
}

}  // namespace vantrelix
