// Rows that can be taken away again where what they belong to cannot be written whole.
#pragma once

#include "tables/Recordset.h"

namespace vantrelix {

// The rows that a cursor adds from the making of this object on. They stand at the cursor's end, and rows of other
// programs come into a cursor by Requery alone: whoever else writes to the table, only rows of this cursor are meant.
class RowsAdded {
 public:
  // An empty pointer or a closed cursor adds none.
  explicit RowsAdded(RecordsetPtr cursor);

  // Marks them deleted, the last one first; needs no room on the disk. Fails as Delete does, once it has tried them
  // all. The cursor's current row is another then.
  void takeAway();

 private:
  RecordsetPtr cursor_;
  long before_ = 0;  // rows that the cursor had
};

}  // namespace vantrelix
