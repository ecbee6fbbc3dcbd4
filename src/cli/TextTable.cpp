#include "cli/TextTable.h"

#include <algorithm>

#include "foundation/text.h"

namespace vantrelix::cli {

namespace {

std::string padded(const std::string& text, std::size_t width, TextTable::Align align) {
  const std::string fill(width - std::min(width, characterCount(text)), ' ');
  return align == TextTable::Align::left ? text + fill : fill + text;
}

}  // namespace

void TextTable::write(std::ostream& out) const {
  std::vector<std::size_t> widths;
  for (std::size_t c = 0; c < columns_.size(); ++c) {
    std::size_t width = characterCount(columns_[c].heading);
    for (const auto& row : rows_) width = std::max(width, characterCount(row[c]));
    widths.push_back(width);
  }
  const auto line = [&](const auto& cell) {
    std::string text;
    for (std::size_t c = 0; c < columns_.size(); ++c) {
      if (c > 0) text += "  ";
      text += padded(cell(c), widths[c], columns_[c].align);
    }
    out << trimRight(text) << '\n';
  };
  line([&](std::size_t c) { return columns_[c].heading; });
  for (const auto& row : rows_) line([&](std::size_t c) { return row[c]; });
}

}  // namespace vantrelix::cli
