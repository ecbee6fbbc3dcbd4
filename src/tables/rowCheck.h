// The rows of a table looked through. Private to the check of tables.
#pragma once

#include "tables/memoCheck.h"
#include "tables/tableCheck.h"
#include "tables/tableLayout.h"

namespace vantrelix::dbf {

// Looks at the rows that are counted, counts them in `check` and hands their memo pointers to `memos`.
void checkRows(platform::File& file, const TableLayout& layout, MemoCheck& memos, const CheckProgress& progress,
               TableCheck& check);

}  // namespace vantrelix::dbf
