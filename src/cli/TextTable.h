// Rows of text in aligned columns, for people.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace vantrelix::cli {

class TextTable {
 public:
  enum class Align { left, right };
  struct Column {
    std::string heading;
    Align align = Align::left;
  };

  explicit TextTable(std::vector<Column> columns) : columns_(std::move(columns)) {}
  void add(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }
  void write(std::ostream& out) const;

 private:
  std::vector<Column> columns_;
  std::vector<std::vector<std::string>> rows_;
};

}  // namespace vantrelix::cli
