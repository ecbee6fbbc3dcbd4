#include "dialogs/gridLayout.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "dialogs/storedNumber.h"
#include "foundation/getINI.h"
#include "foundation/numbers.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"

namespace vantrelix {

namespace {

constexpr const char* kWidths = " Col Widths";
constexpr const char* kVisible = " Col Visible";
constexpr const char* kRowHeight = " Row Height";
constexpr const char* kSeparator = "|";
constexpr const char* kDefaultWidth = "1500.";
// Twips. No one drags a column or a row to more; a number beyond is none.
constexpr int kWidestColumn = 144000;
constexpr int kTallestRow = 14400;

// The keys of one grid in one file.
class StoredLayout {
 public:
  StoredLayout(const std::string& file, const std::string& section, const std::string& key)
      : file_(getLenTrim(file) > 0 ? file : getDefaultsINI()),
        section_(getLenTrim(section) > 0 ? section : "CONFIG"),
        key_(key) {}

  std::string get(const char* suffix, const char* fallback = "") const {
    std::string text;
    getINI(section_, key_ + suffix, file_, fallback, text);
    return text;
  }
  void set(const char* suffix, const std::string& value) const { setINI(section_, key_ + suffix, file_, value); }

 private:
  std::string file_;
  std::string section_;
  std::string key_;
};

bool marksAnId(std::string_view caption) {
  constexpr std::array<std::string_view, 5> kMarks = {" ID", "PARENT ", "ID ", "ID_", "_ID"};
  return std::any_of(kMarks.begin(), kMarks.end(),
                     [caption](std::string_view mark) { return caption.find(mark) != std::string_view::npos; });
}

std::optional<bool> storedFlag(const std::string& text) {
  const std::string flag = upperCase(trim(text));
  if (flag == "-1" || flag == "1" || flag == "TRUE") return true;
  if (flag == "0" || flag == "FALSE") return false;
  return std::nullopt;
}

// Up to `largest`; nothing for a text that gives no such length.
std::optional<int> storedLength(const std::string& text, int largest) {
  const std::optional<int> length = storedNumber(text);
  return length && *length <= largest ? length : std::nullopt;
}

int widthOf(const std::string& field) {
  if (const auto width = storedLength(field, kWidestColumn)) return *width;
  return storedNumber(kDefaultWidth).value_or(kGridColumnWidth);
}

std::string flagOf(const GridColumn& column) { return column.visible ? "-1" : "0"; }
std::string shownWidthOf(const GridColumn& column) { return column.visible ? generalText(column.width) : "0"; }

// A list of one field a column.
template <class Field>
std::string listOf(const DataGrid& grid, Field field) {
  std::string list;
  for (const GridColumn& column : grid.columns()) list = AddALine(list, field(column), kSeparator);
  return list;
}

}  // namespace

void GetGridCols(const std::string& file, const std::string& section, DataGrid& grid, const std::string& key) {
  const StoredLayout stored(file, section, key);
  const std::string flags = stored.get(kVisible), widths = stored.get(kWidths);
  const GridHold hold(grid);
  for (int i = 0; i < grid.columnCount(); ++i) {
    const std::optional<bool> flag = storedFlag(sAWK6(flags, kSeparator, i + 1));
    grid.setColumnVisible(i, flag.value_or(!marksAnId(grid.column(i).caption)));
    if (const int width = widthOf(sAWK6(widths, kSeparator, i + 1, kDefaultWidth)); width > 0) {
      grid.setColumnWidth(i, width);
    }
  }
  const int height = storedLength(stored.get(kRowHeight, "0"), kTallestRow).value_or(0);
  if (height > 0) grid.setRowHeight(height);
}

void SaveGridCols(const std::string& file, const std::string& section, const std::string& key, const DataGrid& grid) {
  if (grid.columnCount() == 0) return;
  const StoredLayout stored(file, section, key);
  stored.set(kVisible, listOf(grid, flagOf));
  stored.set(kWidths, listOf(grid, shownWidthOf));
  stored.set(kRowHeight, generalText(grid.rowHeight()));
}

void modTGDRemCols(DataGrid& grid) {
  for (int i = grid.columnCount() - 1; i >= 0; --i) {
    if (getLenTrim(grid.column(i).dataField) == 0) grid.removeColumn(i);
  }
}

}  // namespace vantrelix
