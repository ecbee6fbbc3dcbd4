// Long scans of a table whose rows two threads look at, each at blocks of its own.
#pragma once

#include <vector>

#include "tables/DbfFile.h"

namespace vantrelix {

// Runs over the records as DbfFile::scanBlocks does, in two steps for each block:
// - `look(block, part)` gathers in a part what the block's bytes say. It may run in another thread, beside a look at
//   another block with another part and beside `join`, and may see rows that are not whole, of a block that is looked
//   at once more. A part comes as it was left by whatever block had it before.
// - `join(block, part)` takes that over in the caller's thread, in file order. Gives false to stop.
// Parts begin as copies of `part`. True where nothing stopped it.
template <class Part, class Look, class Join>
bool scanInParts(DbfFile& table, const Part& part, const Look& look, const Join& join) {
  std::vector<Part> parts(DbfFile::kScanParts, part);
  return table.scanParts([&](const RowBlock& block) { look(block, parts[block.part]); },
                         [&](const RowBlock& block) { return join(block, parts[block.part]); });
}

}  // namespace vantrelix
