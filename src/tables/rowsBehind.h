// What stands behind the rows that a table counts. Private to the check and the recovery of tables.
#pragma once

#include "platform/Platform.h"
#include "tables/tableLayout.h"

namespace vantrelix::dbf {

// Looks behind the rows that the layout counts. Rows are what begins with a blank or an asterisk and is like its
// fields; a row with odd values in it is one where the rows around it are. Blank rows are none at the end.
RowsBehind lookBehind(platform::File& file, const TableLayout& layout);

}  // namespace vantrelix::dbf
