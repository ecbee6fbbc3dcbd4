// Insert Into ... Select ... run between two table files. Private to Database.
#pragma once

#include <memory>

#include "tables/SqlQuery.h"

namespace vantrelix {

enum class InsertedTexts {
  values,  // decoded, and written in the page of the target
  bytes,   // as they stand, from text field to text field, whatever the pages of the tables are
};

// Copies the rows of the query's source to the target. A field of the target that is not named stays blank. Rows are
// written many at a time; what was written before a failure stays. The failure names the row of the source. Gives the
// number of rows added.
long runInsert(SqlInsert insert, const std::shared_ptr<DbfFile>& source, const std::shared_ptr<DbfFile>& target,
               InsertedTexts texts = InsertedTexts::values);

}  // namespace vantrelix
