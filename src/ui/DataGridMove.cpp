#include <algorithm>

#include "foundation/text.h"
#include "ui/DataGrid.h"

namespace vantrelix {

// --- The current cell.

bool DataGrid::canStandAt(GridCell cell) const {
  if (!hasRow(cell.row)) return false;
  return cell.column == current_.column || (hasColumn(cell.column) && column(cell.column).visible);
}

bool DataGrid::setCurrent(int row, int column) {
  if (!canStandAt({row, column})) return false;
  const std::string wanted = bookmarkOf(row);
  if (row != current_.row && !update()) return false;
  // Storing may have moved the rows.
  const int found = rowFor(wanted);
  if (!canStandAt({found, column})) return false;
  put({found, column}, false);
  return true;
}

bool DataGrid::leaveRows() {
  if (!update()) return false;
  editing_.reset();
  stand(-1);
  leftRows_ = true;
  anchor_ = extent_ = current_;
  tell();
  return true;
}

bool DataGrid::setBookmark(const std::string& bookmark) {
  const int row = rowOf(bookmark);
  if (row < 0) return false;
  return row == current_.row ? update() : setCurrentRow(row);
}

void DataGrid::put(GridCell cell, bool extend) {
  editing_.reset();
  stand(cell.row);
  current_.column = cell.column;
  extent_ = current_;
  if (!extend || anchor_.row < 0) anchor_ = current_;
  firstRow_ = firstRowFor(cell.row);
  tell();
}

bool DataGrid::userMoveTo(int row, int column, bool extend) {
  if (!reachable() || !canStandAt({row, column})) return false;
  const bool otherRow = row != current_.row;
  const int columnLeft = current_.column;
  const std::string wanted = bookmarkOf(row);
  if (otherRow && !update()) return false;
  // Storing may have moved the rows.
  const int found = rowFor(wanted);
  if (!canStandAt({found, column})) return false;
  const std::string rowLeft = bookmark();
  if (otherRow) selected_.replace({});
  const std::weak_ptr<char> life = life_;
  put({found, column}, extend);
  if (life.expired()) return false;
  const bool moved = otherRow || column != columnLeft;
  return !moved || raise(rowColChange, rowLeft, columnLeft);
}

bool DataGrid::userMove(GridMove move, bool extend) {
  std::optional<GridCell> cell = target(move);
  const bool onward = move == GridMove::down || move == GridMove::next;
  if (!cell && onward && addingRow() && reachable()) {
    if (!update()) return false;
    cell = target(move);
  }
  return cell && userMoveTo(cell->row, cell->column, extend);
}

// Nothing where the move leads out of the grid.
std::optional<GridCell> DataGrid::target(GridMove move) const {
  const auto [row, column] = current_;
  const int lastRow = rowCount() - 1;
  const int first = visibleColumn(0, 1);
  const int last = visibleColumn(columnCount() - 1, -1);
  const int page = std::max(visibleRows_ - 1, 1);
  const auto inside = [](bool stays, GridCell cell) { return stays ? std::optional(cell) : std::nullopt; };
  const int left = visibleColumn(column - 1, -1);
  const int right = visibleColumn(column + 1, 1);
  switch (move) {
    case GridMove::up:
      return inside(row > 0, {row - 1, column});
    case GridMove::down:
      return inside(row < lastRow, {row + 1, column});
    case GridMove::left:
      return inside(left >= 0, {row, left});
    case GridMove::right:
      return inside(right >= 0, {row, right});
    case GridMove::pageUp:
      return GridCell{std::max(row - page, 0), column};
    case GridMove::pageDown:
      return GridCell{std::min(row + page, lastRow), column};
    case GridMove::rowStart:
      return GridCell{row, first};
    case GridMove::rowEnd:
      return GridCell{row, last};
    case GridMove::top:
      return GridCell{0, first};
    case GridMove::bottom:
      return GridCell{std::max(dataRowCount() - 1, 0), last};
    case GridMove::next:
      return right >= 0 ? GridCell{row, right} : inside(row < lastRow, {row + 1, first});
    case GridMove::previous:
      return left >= 0 ? GridCell{row, left} : inside(row > 0, {row - 1, last});
  }
  return std::nullopt;
}

void DataGrid::userClick(int row, int column, bool extend) {
  if (userMoveTo(row, column, extend)) click();
}

void DataGrid::userDoubleClick(int row, int column) {
  if (userMoveTo(row, column)) doubleClick();
}

// --- What is in view.

void DataGrid::setFirstRow(int row) { set(firstRow_, std::clamp(row, 0, std::max(rowCount() - 1, 0))); }

int DataGrid::firstRowFor(int row) const {
  if (row < firstRow_) return row;
  return std::max(firstRow_, row - visibleRows_ + 1);
}

void DataGrid::ensureVisible(int row) {
  if (hasRow(row)) setFirstRow(firstRowFor(row));
}

void DataGrid::userScroll(int firstRow) { setFirstRow(firstRow); }

void DataGrid::userVisibleRows(int rows) {
  if (std::max(rows, 1) == visibleRows_) return;
  const bool inView = rowInView(current_.row);
  visibleRows_ = std::max(rows, 1);
  if (inView) firstRow_ = firstRowFor(current_.row);
  tell();
}

// --- Headings and keys.

void DataGrid::userHeadClick(int column) {
  if (!reachable() || !hasColumn(column) || !update()) return;
  if (!raise(headClick, column) || !allowSort_ || !hasColumn(column)) return;
  const std::string field = this->column(column).dataField;
  if (field.empty() || !rows_) return;
  const bool ascending = !(equalIgnoringCase(field, sortField_) && sortAscending_);
  if (!rows_->sort(field, ascending)) {
    if (raise(sortRequested, field, ascending)) setSortMark(field, ascending);
    return;
  }
  sortField_ = field;
  sortAscending_ = ascending;
  refresh();
  ensureVisible(current_.row);
}

void DataGrid::userResizeColumn(int column, int twips) {
  if (!hasColumn(column) || twips <= 0) return;
  const std::weak_ptr<char> life = life_;
  setColumnWidth(column, twips);
  if (!life.expired()) colResize(column);
}

bool DataGrid::userKey(int key) {
  if (!reachable() || key == 0) return false;
  return raise(keyPress, key) && key != 0;
}

bool DataGrid::userFind(const std::string& typed, bool goesOn) {
  if (!reachable()) return false;
  sought_ = (goesOn ? sought_ : "") + upperCase(typed);
  const int column = visibleColumn(0, 1);
  const std::size_t length = characterCount(sought_);
  for (int row = 0; row < dataRowCount() && column >= 0; ++row) {
    if (upperCase(leftCharacters(cellText(row, column), length)) == sought_) return userMoveTo(row, current_.column);
  }
  return false;
}

}  // namespace vantrelix
