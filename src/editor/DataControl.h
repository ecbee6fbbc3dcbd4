// What binds a query to a data grid: the grid's rows are those of the recordset.
//
// The grid's current row is the row that counts: the recordset's own place is only where the last change was made.
#pragma once

#include <string>
#include <string_view>

#include "foundation/Value.h"
#include "tables/Database.h"
#include "ui/DataGrid.h"

namespace vantrelix {

class DataControl {
 public:
  explicit DataControl(DataGrid& grid) : grid_(grid) {}
  DataControl(const DataControl&) = delete;
  DataControl& operator=(const DataControl&) = delete;

  std::string DatabaseName;  // the folder, in the library's form
  std::string RecordSource;  // the query

  // Opens the query anew and shows what it gives; the grid then stands on no row, and none is selected. A failure
  // leaves what was shown.
  void Refresh();
  // Runs the query again over the same rows, which keep their bookmarks, their selection and the place where they still
  // exist; rows of other programs come in, those that they deleted leave.
  void Requery();
  // Shows nothing.
  void clear();

  bool hasRecordset() const { return recordset_ != nullptr; }
  const RecordsetPtr& recordset() const { return recordset_; }
  // All rows; 0 without a recordset.
  long RecordCount() const { return recordset_ ? recordset_->rowCount() : 0; }
  // The first row that meets the criterion, -1 where none does. Moves nothing.
  int FindFirst(std::string_view criterion);
  // The declared text cut to the field's width.
  std::string cut(std::string_view field, std::string_view text) const;

 private:
  DataGrid& grid_;
  RecordsetPtr recordset_;
};

}  // namespace vantrelix
