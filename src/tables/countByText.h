// How many rows of a table there are for each text of a field.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "tables/DbfFile.h"

namespace vantrelix {

using TextCounts = std::unordered_map<std::string, long>;

// Counts the live rows in which none of the fields in `present` is null, in one pass, by the text without its trailing
// blanks that the field `text` holds; null counts as the empty text. 3265 for a field that the table does not have.
TextCounts countByText(DbfFile& table, std::string_view text, const std::vector<std::string_view>& present);

}  // namespace vantrelix
