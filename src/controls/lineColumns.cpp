#include "controls/lineColumns.h"

#include <algorithm>
#include <array>

#include "foundation/numbers.h"
#include "foundation/text.h"

namespace vantrelix {

namespace {

constexpr std::size_t kColumnGap = 2;

}  // namespace

std::vector<std::string> lineColumns(const LineList& lines) {
  std::vector<std::array<std::string, 4>> cells;
  std::array<std::size_t, 4> widths{};
  for (const LineRecord& line : lines) {
    const std::string band = line.hasRange ? generalText(line.fMin) + " - " + generalText(line.fMax) + " MHz" : "";
    cells.push_back({line.description, band, line.file, line.id});
    for (std::size_t i = 0; i < widths.size(); ++i) widths[i] = std::max(widths[i], characterCount(cells.back()[i]));
  }
  std::vector<std::string> rows;
  rows.reserve(cells.size());
  for (const auto& row : cells) {
    std::string text;
    for (std::size_t i = 0; i < widths.size(); ++i) {
      text += row[i] + std::string(widths[i] - characterCount(row[i]) + kColumnGap, ' ');
    }
    rows.push_back(trimRight(text));
  }
  return rows;
}

}  // namespace vantrelix
