// The lines of all libraries as rows of a list whose characters are of one width.
#pragma once

#include <string>
#include <vector>

#include "lines/lineList.h"

namespace vantrelix {

// Description, band (its numbers to the right), library and ID in columns.
std::vector<std::string> lineColumns(const LineList& lines);

}  // namespace vantrelix
