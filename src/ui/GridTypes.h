// What a data grid is made of and what its events carry.
#pragma once

#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "foundation/Value.h"
#include "ui/Widget.h"

namespace vantrelix {

inline constexpr int kGridColumnWidth = 1500;  // twips
// The number format of a column whose texts come from DataGrid::formatText.
inline constexpr const char* kFormatTextEvent = "FormatText Event";

enum class GridAlignment { left, right, centre };

struct GridColumn {
  std::string caption{};
  std::string dataField{};       // blank for a column that shows no field
  int width = kGridColumnWidth;  // twips; kept while the column is hidden
  bool visible = true;
  std::string numberFormat{};  // of formatNumber, or kFormatTextEvent; blank shows the value as it is
  GridAlignment alignment = GridAlignment::left;
  bool locked = false;  // takes no entries
  friend bool operator==(const GridColumn&, const GridColumn&) = default;
};

struct GridCell {
  int row = -1;
  int column = -1;
  friend bool operator==(const GridCell&, const GridCell&) = default;
};

// The bookmarks of the rows that are marked as selected, in the order in which they came.
class SelBookmarks {
 public:
  explicit SelBookmarks(Signal<>& changed) : changed_(changed) {}
  SelBookmarks(const SelBookmarks&) = delete;
  SelBookmarks& operator=(const SelBookmarks&) = delete;

  int count() const { return static_cast<int>(items_.size()); }
  const std::string& item(int index) const { return items_.at(static_cast<std::size_t>(index)); }
  const std::vector<std::string>& items() const { return items_; }
  bool contains(const std::string& bookmark) const { return known_.contains(bookmark); }
  // A blank bookmark and one that is there already are passed over.
  void add(const std::string& bookmark);
  void remove(int index);
  void clear() { assign({}); }
  void assign(const std::vector<std::string>& bookmarks);
  // Counts the changes made so far.
  long revision() const { return revision_; }

 private:
  friend class DataGrid;
  void replace(std::vector<std::string> bookmarks);  // tells nobody
  void tell();

  Signal<>& changed_;
  std::vector<std::string> items_;
  std::unordered_set<std::string> known_;
  long revision_ = 0;
};

// A value is about to be put into a cell. A listener may replace the value, or refuse it.
struct GridColumnUpdate {
  GridCell cell;
  std::string text;  // as typed
  Value oldValue;
  Value value;  // what will be put
  bool cancel = false;
};

// The text of a cell of a column that asks for it, preset to the plain text of the value.
struct GridCellText {
  GridCell cell;
  Value value;
  std::string text;
};

struct GridRowStyle {
  std::optional<Color> back;
  std::optional<Color> fore;
};

// What happened to the rows as the grid shows them, so that a view need not show all of them anew.
struct GridChange {
  enum class Kind { cells, insert, remove };
  Kind kind;
  int first;
  int last;
};

// How the keyboard moves the current cell.
enum class GridMove { up, down, left, right, pageUp, pageDown, rowStart, rowEnd, top, bottom, next, previous };

}  // namespace vantrelix
