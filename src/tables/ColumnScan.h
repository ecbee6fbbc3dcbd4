// A run over one field of a cursor's rows in large reads, for work that looks at every row. Private to this layer.
#pragma once

#include <functional>
#include <string>

#include "tables/DbfFile.h"
#include "tables/Recordset.h"

namespace vantrelix {

class ColumnScan {
 public:
  // 3265 for a name that the cursor does not have, 3027 for a column that its query computes.
  ColumnScan(Recordset& cursor, const std::string& field);

  DbfFile& table() const { return table_; }
  std::size_t index() const { return field_; }  // of the field in the table
  const DbfField& field() const { return table_.fields()[field_]; }
  // Whether the cursor's query is for all rows of the table.
  bool isWhole() const;
  // The field's value in the bytes of a record.
  Value value(const unsigned char* record) const { return table_.value(record, field_); }

  // Visits in file order the live rows of the table or, where the cursor has a part of them, its own and all others
  // that its query would find at this moment: those that other cursors and programs have added since. The cursor does
  // not move.
  void run(const std::function<void(const unsigned char* record)>& visit) const;

 private:
  void runOverPart(const std::function<void(const unsigned char* record)>& visit) const;
  static std::size_t tableField(const Recordset::Implementation& state, const std::string& name);

  const Recordset::Implementation& state_;
  DbfFile& table_;
  std::size_t field_;
};

}  // namespace vantrelix
