// The one row of a query of aggregates.
#pragma once

#include <cstdint>
#include <vector>

#include "tables/SqlFilter.h"
#include "tables/dbfNumber.h"

namespace vantrelix {

struct SqlColumn;

// Gathers the values of the columns over the rows that it is given; nulls do not count.
class SqlAggregates {
 public:
  // Both outlive this.
  SqlAggregates(DbfFile& table, const std::vector<SqlColumn>& columns);

  void add(const std::vector<const unsigned char*>& records);

  // One value a column.
  std::vector<Value> results() const;

 private:
  // A number field that columns ask for.
  struct Numbers {
    std::size_t fieldNumber;
    dbf::DigitsField field;
    std::vector<double> values;  // in the records added last
  };

  struct Total {
    int source = -1;  // of its numbers; -1 where its expression is computed for each row
    std::uint64_t count = 0;
    double sum = 0;
    Value extreme;
  };

  int sourceOf(const SqlColumn& column);
  void addNumbers(const SqlColumn& column, Total& total, const std::vector<double>& numbers) const;
  void addComputed(const unsigned char* record);
  void addValue(const SqlColumn& column, Total& total, const Value& value) const;

  const std::vector<SqlColumn>& columns_;
  RecordRow row_;
  DbfFile& table_;
  std::vector<Numbers> sources_;
  std::vector<Total> totals_;  // as the columns
  bool computes_ = false;
};

}  // namespace vantrelix
