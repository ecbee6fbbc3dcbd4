// Rows added to a cursor's table many at a time.
//
// AddNew, put and Update mean what they mean at the cursor, but that Update gathers the row. flush writes what has been
// gathered under one lock with one write of the rows and one of their count; when it returns the rows are in the file
// and at the cursor's end, just as if they had been added one by one. Before that nothing of them is.
#pragma once

#include <cstdint>
#include <vector>

#include "tables/Recordset.h"

namespace vantrelix {

class RowBatch {
 public:
  // The cursor outlives the batch. 3027 where it cannot be written to.
  explicit RowBatch(Recordset& cursor);
  RowBatch(const RowBatch&) = delete;
  RowBatch& operator=(const RowBatch&) = delete;

  // Begins a blank row; one that no Update has taken is dropped.
  void AddNew();
  // Puts a value into the row begun. Fails as Field::put does; the rows gathered before this one are then written
  // first, so that a failure in the middle leaves what stood before it. 3265 for a field of another cursor.
  void put(const Field& field, const Value& value);
  // Takes the row. 3020 without AddNew. What has been gathered is written where it grows beyond a megabyte.
  void Update();
  // Writes the rows gathered; fails as DbfFile::append does, and then none of them is in the file. They stay gathered.
  void flush();

 private:
  Recordset& cursor_;
  std::vector<unsigned char> blank_;
  std::vector<unsigned char> row_;  // empty where none is begun
  std::vector<unsigned char> gathered_;
  std::uint32_t count_ = 0;
};

}  // namespace vantrelix
