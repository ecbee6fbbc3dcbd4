#include "controls/lineColumns.h"

#include <algorithm>

#include "foundation/numbers.h"
#include "foundation/text.h"

namespace vantrelix {

namespace {

constexpr const char* kColumnGap = "  ";

enum class Side { left, right };

// Texts filled up to the width of the widest of them.
class Column {
 public:
  explicit Column(Side side) : side_(side) {}

  void add(std::string text) {
    width_ = std::max(width_, characterCount(text));
    texts_.push_back(std::move(text));
  }
  std::string cell(std::size_t row) const {
    const std::string filling(width_ - characterCount(texts_[row]), ' ');
    return side_ == Side::left ? texts_[row] + filling : filling + texts_[row];
  }

 private:
  Side side_;
  std::size_t width_ = 0;
  std::vector<std::string> texts_;
};

}  // namespace

std::vector<std::string> lineColumns(const LineList& lines) {
  Column description(Side::left), low(Side::right), dash(Side::left), high(Side::right), unit(Side::left),
      file(Side::left), id(Side::left);
  for (const LineRecord& line : lines) {
    description.add(line.description);
    low.add(line.hasRange ? generalText(line.fMin) : "");
    dash.add(line.hasRange ? " - " : "");
    high.add(line.hasRange ? generalText(line.fMax) : "");
    unit.add(line.hasRange ? " MHz" : "");
    file.add(line.file);
    id.add(line.id);
  }
  std::vector<std::string> rows;
  rows.reserve(lines.size());
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::string band = low.cell(i) + dash.cell(i) + high.cell(i) + unit.cell(i);
    rows.push_back(
        trimRight(description.cell(i) + kColumnGap + band + kColumnGap + file.cell(i) + kColumnGap + id.cell(i)));
  }
  return rows;
}

}  // namespace vantrelix
