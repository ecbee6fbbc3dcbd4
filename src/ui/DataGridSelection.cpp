#include <algorithm>

#include "ui/DataGrid.h"

namespace vantrelix {

namespace {

// A cell's text in a copy, where tabs and line breaks part the cells.
std::string onOneLine(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\t' || c == '\r' || c == '\n'; }, ' ');
  return text;
}

}  // namespace

// --- Selected rows and marked cells.

// The move to the row raises its own events first; what their listeners select gives way to what the user selects.
bool DataGrid::userSelectRow(int row, bool ctrl, bool shift) {
  if (!reachable() || !hasRow(row)) return false;
  const std::vector<std::string> wanted = selectionWanted(row, ctrl, shift);
  const bool fromHere = multiSelect_ != MultiSelect::extended || !shift || selectionStart_.empty();
  const std::string start = fromHere ? (shift ? bookmark() : bookmarkOf(row)) : selectionStart_;
  if (!userMoveTo(row, current_.column)) return false;
  selectionStart_ = start;
  if (multiSelect_ == MultiSelect::none) return true;
  const std::weak_ptr<char> life = life_;
  selected_.assign(wanted);
  return !life.expired() && raise(selChange);
}

std::vector<std::string> DataGrid::selectionWanted(int row, bool ctrl, bool shift) const {
  const std::string clicked = bookmarkOf(row);
  if (multiSelect_ != MultiSelect::extended || (!ctrl && !shift)) return {clicked};
  if (shift) {
    const int start = rowOf(selectionStart_);
    return selectionBetween(start >= 0 ? start : std::max(current_.row, 0), row);
  }
  std::vector<std::string> wanted = selected_.items();
  if (std::erase(wanted, clicked) == 0) wanted.push_back(clicked);
  return wanted;
}

std::vector<std::string> DataGrid::selectionBetween(int row, int other) const {
  std::vector<std::string> between;
  for (int at = std::max(std::min(row, other), 0); at <= std::max(row, other); ++at) between.push_back(bookmarkOf(at));
  return between;
}

// The current cell stays where it is: marking all cells is no move.
void DataGrid::userSelectAll() {
  if (!reachable() || dataRowCount() == 0 || visibleColumn(0, 1) < 0) return;
  anchor_ = {0, visibleColumn(0, 1)};
  extent_ = {dataRowCount() - 1, visibleColumn(columnCount() - 1, -1)};
  tell();
}

std::string DataGrid::rowText(int row, int left, int right) const {
  const int first = visibleColumn(left, 1);
  std::string text;
  for (int column = first; column >= 0 && column <= right; column = visibleColumn(column + 1, 1)) {
    if (column > first) text += '\t';
    text += onOneLine(cellText(row, column));
  }
  return text;
}

std::vector<int> DataGrid::rowsToCopy() const {
  std::vector<int> rows;
  if (hasRange() || selected_.count() == 0) {
    const auto [top, bottom] = std::minmax(anchor_.row, extent_.row);
    for (int row = std::max(top, 0); row <= bottom; ++row) rows.push_back(row);
    return rows;
  }
  for (const std::string& bookmark : selected_.items()) rows.push_back(rowOf(bookmark));
  std::erase(rows, -1);
  std::sort(rows.begin(), rows.end());
  return rows;
}

std::string DataGrid::copyText() const {
  const bool wholeRows = !hasRange() && (selected_.count() > 0 || marksRow());
  const auto [left, right] = std::minmax(anchor_.column, extent_.column);
  std::string text;
  const char* parting = "";
  for (const int row : rowsToCopy()) {
    text += parting + (wholeRows ? rowText(row, 0, columnCount() - 1) : rowText(row, left, right));
    parting = "\n";
  }
  return text;
}

}  // namespace vantrelix
