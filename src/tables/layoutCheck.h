// The faults of a table whose rows have been made out. Private to the check and the recovery of tables.
#pragma once

#include "platform/Platform.h"
#include "tables/tableCheck.h"
#include "tables/tableLayout.h"

namespace vantrelix::dbf {

// Looks at the header, the end of the file, the rows that are counted and their memos, and adds to `check`.
void checkLayout(platform::File& file, const TableLayout& layout, const CheckProgress& progress, TableCheck& check);

}  // namespace vantrelix::dbf
