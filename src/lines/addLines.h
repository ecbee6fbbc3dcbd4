// Line types added to a line library.
#pragma once

#include <string>
#include <vector>

#include "lines/lineTypes.h"

namespace vantrelix {

struct AddedLines {
  std::size_t lines = 0;
  std::size_t points = 0;
};

// Adds the lines to the library of an LMS file name, making both tables where neither is there. All of them are added
// or nothing is: a fault or a failure leaves the library as it was, and no file where there was none. Faults: an id
// that the library has already; a text or number that the table's fields cannot hold as it is (a number may lose
// decimals, but no two frequencies of a line may become one and none may become 0). Failures: 51 for a name that no
// library may have, 53 where one of the two tables is missing, what the table layer and the files have.
AddedLines addLines(const std::string& folder, const std::string& LineFile, const std::vector<LineType>& lines,
                    std::vector<LineFault>& faults);

}  // namespace vantrelix
