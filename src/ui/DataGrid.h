// A data grid: columns over the fields of a row source, one current cell, a list of selected rows, cells that are
// edited as in a spreadsheet.
//
// What the user enters is gathered for the current row, the entry, and stored as a whole when the row is left or by
// update(). Where rows may be added, one blank row stands behind the last; entering something there begins a new row.
// What is shown counts this row, the source doesn't.
//
// The program's own acts raise `changed` alone, but the storing of an entry raises its events whoever asked for it. The
// user's acts (user...) raise the events too. A listener may bind the grid anew, move it, or end it.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ui/GridRows.h"
#include "ui/GridTypes.h"
#include "ui/Widget.h"

namespace vantrelix {

class DataGrid : public Widget {
 public:
  explicit DataGrid(std::string name);

  // --- Columns, in order. A column is found by its data field without regard to case: -1 where none has it.
  int columnCount() const { return static_cast<int>(columns_.size()); }
  const std::vector<GridColumn>& columns() const { return columns_; }
  const GridColumn& column(int index) const { return columns_.at(static_cast<std::size_t>(index)); }
  int columnOf(const std::string& dataField) const;
  void setColumns(std::vector<GridColumn> columns);
  void addColumn(GridColumn column);
  void removeColumn(int index);
  void setColumn(int index, GridColumn column);
  void setColumnCaption(int index, std::string caption);
  void setColumnWidth(int index, int twips);
  void setColumnVisible(int index, bool visible);
  void setColumnNumberFormat(int index, std::string format);
  // In twips; 0 lets it follow the font.
  int rowHeight() const { return rowHeight_; }
  void setRowHeight(int twips) { set(rowHeight_, twips); }

  // --- Rows. Binding to a source drops an entry under way and goes to its first row; null shows nothing.
  void setRows(std::shared_ptr<GridRows> rows);
  GridRows* rows() const { return rows_.get(); }
  // The source has changed by other hands: shows it anew, on the same rows where they still exist.
  void refresh();
  // The same rows, with texts and colours asked for again.
  void refreshCells();
  // Rows as shown, and those of the source among them.
  int rowCount() const;
  int dataRowCount() const { return rows_ ? rows_->count() : 0; }
  bool isAddRow(int row) const { return rowCount() > dataRowCount() && row == dataRowCount(); }
  std::string bookmarkOf(int row) const;                 // blank for the row to be added
  int rowOf(const std::string& bookmark) const;          // -1 where it is gone
  Value value(int row, const std::string& field) const;  // what was entered, else the source's; null where neither
  Value cellValue(int row, int column) const;
  std::string cellText(int row, int column) const;  // as shown; blank outside the rows
  GridRowStyle rowStyle(int row) const;
  // Writes a cell without an event: into the entry under way where the row has one, else into the source at once.
  void setValue(int row, const std::string& field, const Value& value);
  // Adds and removes a row in the source without an event; the new row's place.
  int appendRow(const GridFields& fields);
  void removeRow(int row);

  // --- What the user may do. All but sorting is allowed at first.
  bool locked() const { return locked_; }
  void setLocked(bool locked) { set(locked_, locked); }
  bool allowUpdate() const { return allowUpdate_; }
  void setAllowUpdate(bool allow) { set(allowUpdate_, allow); }
  bool allowAddNew() const { return allowAddNew_; }  // off at first
  void setAllowAddNew(bool allow);
  bool allowDelete() const { return allowDelete_; }
  void setAllowDelete(bool allow) { set(allowDelete_, allow); }
  bool allowSort() const { return allowSort_; }
  void setAllowSort(bool allow) { set(allowSort_, allow); }
  enum class MultiSelect { none, simple, extended };
  MultiSelect multiSelect() const { return multiSelect_; }
  void setMultiSelect(MultiSelect mode) { set(multiSelect_, mode); }
  // Whether rows are asked for their colours.
  bool fetchesRowStyle() const { return fetchesRowStyle_; }
  void setFetchRowStyle(bool fetch);
  bool editable(int row, int column) const;
  bool anyEditable() const;

  // --- The current cell; row -1 where there are no rows. Moving brings the row into view. A move to another row stores
  // the entry under way first; it gives false where a listener refuses that, or where there is no such row.
  int currentRow() const { return current_.row; }
  int currentColumn() const { return current_.column; }
  bool setCurrent(int row, int column);
  bool setCurrentRow(int row) { return setCurrent(row, current_.column); }
  // Stands on no row, -1, until the next move or source. False where a listener refuses to store the entry.
  bool leaveRows();
  std::string bookmark() const { return bookmarkOf(current_.row); }
  // Setting the current bookmark again stores the entry under way.
  bool setBookmark(const std::string& bookmark);
  SelBookmarks& selBookmarks() { return selected_; }
  const SelBookmarks& selBookmarks() const { return selected_; }
  // The marked cells lie between these two; a range is more than one cell.
  GridCell anchor() const { return anchor_; }
  GridCell extent() const { return extent_; }
  bool hasRange() const { return !(anchor_ == extent_); }
  // Where no cell can be edited, the current row stands for its cells, as in a list.
  bool marksRow() const { return !anyEditable(); }
  // The marked cells, else the selected rows, else the current cell or row: visible columns parted by tabs, rows by
  // line feeds.
  std::string copyText() const;

  // --- What is in view.
  int firstRow() const { return firstRow_; }
  void setFirstRow(int row);  // kept within the rows
  int visibleRows() const { return visibleRows_; }
  bool rowInView(int row) const { return row >= firstRow_ && row < firstRow_ + visibleRows_; }
  void ensureVisible(int row);
  // The current row's place among the rows in view; setting it moves the current row.
  int visualRow() const { return current_.row - firstRow_; }
  bool setVisualRow(int place) { return setCurrentRow(firstRow_ + place); }
  // The first visible column from `column` on in a direction (1 or -1), -1 where there is none.
  int visibleColumn(int column, int direction) const;

  // --- The sort mark: the heading's field and direction; a blank field for none.
  const std::string& sortField() const { return sortField_; }
  bool sortAscending() const { return sortAscending_; }
  void setSortMark(std::string field, bool ascending);

  // --- The entry under way.
  bool dataChanged() const { return entry_.has_value(); }
  bool addingRow() const { return entry_ && entry_->adding; }
  // Stores it. False where a listener refuses; a failure of the source passes on, and the entry stays.
  bool update();
  void cancelUpdate();

  // --- Suspended repainting. While held, the grid says nothing of its rows, columns and place; the last release says
  // `changed` once.
  void hold();
  void release();
  bool held() const { return holds_ > 0; }
  Signal<> heldChanged;

  // --- Events of the user's acts. A reference to bool refuses the act when set.
  Signal<const std::string&, int> rowColChange;  // the bookmark and the column left
  Signal<> selChange;                            // the user selected rows
  Signal<> click;                                // on a cell, the current one by then
  Signal<> doubleClick;
  Signal<int&> keyPress;  // a listener that sets it to 0 swallows it
  Signal<int> headClick;  // the column, before sorting
  // The user wants an order which the source can't give: field, ascending.
  Signal<const std::string&, bool> sortRequested;
  Signal<int> colResize;                      // the column
  Signal<int, bool&> beforeColEdit;           // the column: a cell is about to be edited
  Signal<bool&> beforeInsert;                 // a new row is about to begin
  Signal<> onAddNew;                          // it has begun: setValue fills it
  Signal<GridColumnUpdate&> beforeColUpdate;  // a cell is about to take an entry
  Signal<int> afterColUpdate;                 // the column
  Signal<bool&> beforeUpdate;                 // the row is about to be stored
  Signal<> afterInsert;                       // stored; the row was a new one
  Signal<> afterUpdate;
  Signal<bool&> beforeDelete;  // the current row is about to be removed
  Signal<> afterDelete;

  // --- Callbacks for what is shown; also raised for the program's reading.
  Signal<GridCellText&> formatText;             // columns with kFormatTextEvent
  Signal<GridCell, Value&> unboundColumnFetch;  // columns without a data field
  Signal<int, GridRowStyle&> fetchRowStyle;     // the row

  // --- For views: rows have changed in this one way; `changed` follows. Every change of the rows or columns counts the
  // revision up: a view that finds it further than by these signals has to show all anew.
  Signal<const GridChange&> rowsChanged;
  long revision() const { return revision_; }

  // --- What the user does. Each gives whether it was done; none works on a grid that can't be reached.
  bool userMoveTo(int row, int column, bool extend = false);
  bool userMove(GridMove move, bool extend = false);
  void userClick(int row, int column, bool extend = false);
  void userDoubleClick(int row, int column);
  bool userSelectRow(int row, bool ctrl = false, bool shift = false);
  void userSelectAll();
  bool userBeginEdit(int row, int column);
  bool userEdit(int row, int column, const std::string& text);
  // Leaves the cell as it was.
  void userEndEdit() { editing_.reset(); }
  // Drops the current row's entry; false where there is none.
  bool userCancelRow();
  // Removes the selected rows, each asked for by beforeDelete; stops at a refusal.
  bool userDeleteRows();
  void userHeadClick(int column);
  void userResizeColumn(int column, int twips);
  void userScroll(int firstRow);
  // A current row that was in view stays so.
  void userVisibleRows(int rows);
  bool userKey(int key);
  // Goes to the first row whose first visible column begins with what was typed, case aside; `goesOn` joins the text to
  // what was typed before.
  bool userFind(const std::string& typed, bool goesOn);

 private:
  struct Entry {
    std::string bookmark;  // blank for a new row
    bool adding = false;
    GridFields fields;
  };
  friend class GridHold;
  // Raises an event; gives whether the grid still stands.
  template <class Event, class... Arguments>
  bool raise(const Event& event, Arguments&&... arguments) const {
    const std::weak_ptr<char> life = life_;
    event(std::forward<Arguments>(arguments)...);
    return !life.expired();
  }
  template <class T>
  void set(T& member, T value) {
    if (member == value) return;
    member = std::move(value);
    tell();
  }

  void tell();
  void tell(const GridChange& change);
  void tellRow(int row) { tell({GridChange::Kind::cells, row, row}); }
  void tellAll();
  bool hasRow(int row) const { return row >= 0 && row < rowCount(); }
  bool hasColumn(int column) const { return column >= 0 && column < columnCount(); }
  bool canStandAt(GridCell cell) const;
  void settle();
  void put(GridCell cell, bool extend);
  void stand(int row);
  // A blank bookmark is that of the row to be added.
  int rowFor(const std::string& bookmark) const { return bookmark.empty() ? dataRowCount() : rowOf(bookmark); }
  void shiftBehind(int row, int by);
  void forgetGoneRows();
  bool entryAt(int row) const;
  int entryRow() const;
  bool beginEntry(int row);
  void storeEntry();
  bool takeValue(GridColumnUpdate& update);
  bool deleteByUser(const std::string& bookmark);
  int firstRowFor(int row) const;
  std::optional<GridCell> target(GridMove move) const;
  std::vector<std::string> selectionWanted(int row, bool ctrl, bool shift) const;
  std::vector<std::string> selectionBetween(int row, int other) const;
  std::vector<int> rowsToCopy() const;
  std::string rowText(int row, int left, int right) const;

  std::shared_ptr<char> life_ = std::make_shared<char>();
  std::vector<GridColumn> columns_;
  std::shared_ptr<GridRows> rows_;
  GridCell current_;
  std::string standing_;  // the bookmark of the current row
  bool leftRows_ = false;
  GridCell anchor_;
  GridCell extent_;
  Signal<> selectedChanged_;
  SelBookmarks selected_{selectedChanged_};
  std::string selectionStart_;  // where a selection with shift begins
  std::optional<Entry> entry_;
  std::optional<GridCell> editing_;
  std::string sortField_;
  std::string sought_;
  long revision_ = 0;
  int holds_ = 0;
  bool toldLater_ = false;
  int rowHeight_ = 0;
  int firstRow_ = 0;
  int visibleRows_ = 10;
  bool sortAscending_ = true;
  bool locked_ = false;
  bool allowUpdate_ = true;
  bool allowAddNew_ = false;
  bool allowDelete_ = true;
  bool allowSort_ = false;
  bool fetchesRowStyle_ = true;
  MultiSelect multiSelect_ = MultiSelect::extended;
};

// Suspends a grid's repainting for its own lifetime.
class GridHold {
 public:
  explicit GridHold(DataGrid& grid) : grid_(grid), life_(grid.life_) { grid_.hold(); }
  // The grid may have ended meanwhile.
  ~GridHold() {
    if (!life_.expired()) grid_.release();
  }
  GridHold(const GridHold&) = delete;
  GridHold& operator=(const GridHold&) = delete;

 private:
  DataGrid& grid_;
  std::weak_ptr<char> life_;
};

}  // namespace vantrelix
