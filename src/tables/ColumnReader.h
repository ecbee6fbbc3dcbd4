// One column of a query's rows, made ready for being read in many of them.
#pragma once

#include <optional>
#include <string_view>

#include "tables/SqlQuery.h"
#include "tables/dbfNumber.h"
#include "tables/dbfTextField.h"

namespace vantrelix {

class ColumnReader {
 public:
  // A column of a query that is no aggregate. The query outlives this.
  ColumnReader(const SqlQuery& query, std::size_t column);

  Value value(const unsigned char* record) const;
  // The value's number; nothing where it is null, 13 where it is of another kind.
  std::optional<double> number(const unsigned char* record) const;
  // The value's text in the same way: a view of the record or of this reader, which ends at its next text.
  std::optional<std::string_view> text(const unsigned char* record);

  // Where the digits in the record decide the value.
  const std::optional<dbf::DigitsField>& digits() const { return digits_; }

 private:
  Value decoded(const unsigned char* record) const;

  DbfFile& table_;
  const SqlColumn& column_;
  std::optional<dbf::DigitsField> digits_;
  std::optional<dbf::TextField> ascii_;
  Value shown_;  // the last text that is no view of its record
};

}  // namespace vantrelix
