// The rows of a recordset, for a data grid.
//
// Texts come without the blanks that fill their fields up. A row that another program has deleted reads as blank until
// the recordset is queried again. What the grid asks for moves no cursor and ends no edit; storing, adding and removing
// do.
#pragma once

#include <string>

#include "tables/Recordset.h"
#include "ui/GridRows.h"

namespace vantrelix {

class RecordsetRows : public GridRows {
 public:
  explicit RecordsetRows(RecordsetPtr recordset) : recordset_(std::move(recordset)) {}

  int count() const override { return static_cast<int>(recordset_->rowCount()); }
  std::string bookmark(int row) const override;
  int rowOf(const std::string& bookmark) const override;
  Value value(int row, const std::string& field) const override;
  // What fails leaves the row as it was.
  void store(int row, const GridFields& fields) override;
  int append(const GridFields& fields) override;
  void remove(int row) override;

 private:
  void put(const GridFields& fields);

  RecordsetPtr recordset_;
};

}  // namespace vantrelix
