// The mending of a table that lacks fields. Private to this layer.
#pragma once

#include <string>

#include "tables/FieldType.h"

namespace vantrelix {

// What the log tells of a failed check or repair of a table.
struct TableTrace {
  std::string pathName;
  std::string databasePath;
  std::string select;
  std::string newName;
  std::string sql;
  std::string tempTable;

  // The labelled lines.
  std::string text() const;
};

// Makes a table of `fields` with the rows of the table at path and puts it in its place; the old file is kept beside it
// under a dated name. Texts keep their bytes, and the table its language and its permissions. At every instant there is
// a complete table at path. The table is held exclusively meanwhile, and against programs of other makes by the locks
// that they know: 3051 where another has it open, 3211 where one holds a lock of it. The log names the fields that lost
// values. Answers false where the temporary table could not be made; other failures are thrown, with the temporary
// table left in the folder where it was made.
bool repairTable(const FieldList& fields, const std::string& path, TableTrace& trace);

}  // namespace vantrelix
