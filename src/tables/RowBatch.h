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
  // What writes the rows gathered, besides flush.
  enum class Writing {
    asItGrows,  // a megabyte of them, and a put that fails, so that what stood before it is in the table
    atFlush,    // nothing
  };

  // The cursor outlives the batch. 3027 where it cannot be written to.
  explicit RowBatch(Recordset& cursor, Writing writing = Writing::asItGrows);
  RowBatch(const RowBatch&) = delete;
  RowBatch& operator=(const RowBatch&) = delete;

  // Begins a blank row; one that no Update has taken is dropped.
  void AddNew();
  // Puts a value into the row begun. Fails as Field::put does. 3265 for a field of another cursor.
  void put(const Field& field, const Value& value);
  // Takes the row. 3020 without AddNew.
  void Update();
  // Puts a value into all rows gathered. Fails as put does, but then writes nothing and changes none of them.
  void putAll(const Field& field, const Value& value);
  // Writes the rows gathered; fails as DbfFile::append does, and then none of them is in the file. They stay gathered.
  void flush();

 private:
  std::size_t gatheredBytes() const { return count_ * blank_.size(); }
  std::size_t tableField(const Field& field) const;

  Recordset& cursor_;
  Writing writing_;
  std::vector<unsigned char> blank_;
  std::vector<unsigned char> rows_;  // those gathered, and the one begun behind them
  std::size_t count_ = 0;            // of those gathered
  bool begun_ = false;
};

}  // namespace vantrelix
