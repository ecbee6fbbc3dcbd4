// Rows added to a cursor's table many at a time.
//
// AddNew, put and Update mean what they mean at the cursor, but that Update gathers the row. flush writes what has been
// gathered under one lock with one write of the rows and one of their count; when it returns the rows are in the file
// and at the cursor's end, just as if they had been added one by one. Before that nothing of them is.
#pragma once

#include <cstdint>
#include <vector>

#include "tables/Recordset.h"
#include "tables/numberDigits.h"

namespace vantrelix {

class RowBatch {
 public:
  // What writes the rows gathered, besides flush.
  enum class Writing {
    asItGrows,  // a megabyte of them, and a put that fails, so that what stood before it is in the table
    atFlush,    // nothing
  };

  // The cursor outlives the batch and is not queried anew meanwhile. 3027 where it cannot be written to.
  explicit RowBatch(Recordset& cursor, Writing writing = Writing::asItGrows);
  RowBatch(const RowBatch&) = delete;
  RowBatch& operator=(const RowBatch&) = delete;

  // A field that gets a number in row after row, looked up once for all of them.
  class NumberField {
    friend class RowBatch;
    std::size_t index = 0;  // in the table
    bool onlyDigits = false;
    std::size_t offset = 0;
    dbf::DigitsForm digits;
  };
  // 3265 for a field of another cursor.
  NumberField numberField(const Field& field) const;

  // Begins a blank row; one that no Update has taken is dropped.
  void AddNew();
  // Puts a value into the row begun. Fails as Field::put does. 3265 for a field of another cursor.
  void put(const Field& field, const Value& value);
  // Puts the number that the general text of `number` stands for (generalNumber), and fails as that does too.
  void putGeneral(const NumberField& field, double number);
  // Takes the row. 3020 without AddNew.
  void Update();
  // Puts a value into all rows gathered. Fails as put does, but then writes nothing and changes none of them.
  void putAll(const Field& field, const Value& value);
  // Writes the rows gathered; fails as DbfFile::append does, and then none of them is in the file. They stay gathered.
  void flush();

 private:
  std::size_t gatheredBytes() const { return count_ * blank_.size(); }
  unsigned char* begunRow() { return rows_.data() + gatheredBytes(); }
  void putValue(std::size_t index, const Value& value);
  void makeRoom();
  std::size_t tableField(const Field& field) const;

  Recordset& cursor_;
  Writing writing_;
  std::vector<unsigned char> blank_;
  std::vector<unsigned char> rows_;  // those gathered, behind them the one begun, behind that blank ones
  std::size_t count_ = 0;            // of those gathered
  bool begun_ = false;
};

}  // namespace vantrelix
