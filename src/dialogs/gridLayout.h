// Grids come back with the columns as the user left them.
//
// A layout stands under three keys of one section: `key` with " Col Widths" and " Col Visible" (lists parted by "|", in
// the order of the columns) and " Row Height" behind it; twips, and "-1" or "0". A blank file means the user's defaults
// file, a blank section "CONFIG".
#pragma once

#include <string>

#include "ui/DataGrid.h"

namespace vantrelix {

// Applies what is stored; writes nothing. A column whose flag is not there or is none is shown unless its caption marks
// an ID; one whose width is not there or is none gets the width of a new grid. A width of 0, which a hidden column has
// in the list, and a row height of 0 leave what the grid has. Fields beyond the last column are passed over.
void GetGridCols(const std::string& file, const std::string& section, DataGrid& grid, const std::string& key);
// Writes the grid as it is; nothing for a grid that has no columns (yet).
void SaveGridCols(const std::string& file, const std::string& section, const std::string& key, const DataGrid& grid);
// Removes all columns that show no field. To be done before a layout is applied, which goes by position.
void modTGDRemCols(DataGrid& grid);

}  // namespace vantrelix
