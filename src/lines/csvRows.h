// The rows of a comma-separated text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vantrelix {

struct CsvRow {
  int line = 1;  // of its first character, counted from 1
  std::vector<std::string> fields;
  std::string fault;  // why the row cannot be read; blank where it can
};

// Lines end at CR LF, CR or LF. A field between double quotes may hold commas, line breaks and doubled quotes; blanks
// and tabs round a field go, those between its quotes stay. Blank lines and lines that begin with "#" are no rows.
std::vector<CsvRow> readCsvRows(std::string_view text);

}  // namespace vantrelix
