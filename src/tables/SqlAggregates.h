// The one row of a query of aggregates.
#pragma once

#include <cstdint>
#include <vector>

#include "tables/RunList.h"
#include "tables/SqlFilter.h"
#include "tables/dbfNumber.h"

namespace vantrelix {

struct SqlColumn;

// Gathers the values of the columns over the rows that it is given; nulls do not count.
class SqlAggregates {
 private:
  struct Total {
    std::uint64_t count = 0;
    double sum = 0;
    Value extreme;
  };

 public:
  // What a block's rows give by themselves.
  struct Part {
    std::vector<const unsigned char*> records;
    std::vector<std::vector<double>> numbers;  // of each number field that columns ask for
    std::vector<Total> totals;                 // as the columns; without sums, which depend on their order
  };

  // Both outlive this.
  SqlAggregates(DbfFile& table, const std::vector<SqlColumn>& columns);

  // The two steps of a scan in parts (scanInParts.h), over the runs of a block's rows. Every block takes both.
  Part part() const;
  void look(const RowBlock& rows, const std::vector<RowRun>& runs, Part& part) const;
  void join(const Part& part);

  // One value a column.
  std::vector<Value> results() const;

 private:
  // A number field that columns ask for.
  struct Source {
    std::size_t fieldNumber;
    dbf::DigitsField field;
  };

  int sourceOf(const SqlColumn& column);
  void addComputed(const unsigned char* record);

  static Total totalOf(SqlAggregate aggregate, const std::vector<double>& numbers);
  static void addTotal(SqlAggregate aggregate, Total& total, const Total& added);
  static void addValue(SqlAggregate aggregate, Total& total, const Value& value);
  static void addExtreme(SqlAggregate aggregate, Total& total, const Value& value);

  const std::vector<SqlColumn>& columns_;
  RecordRow row_;
  DbfFile& table_;
  std::size_t length_;  // of a record
  std::vector<Source> sources_;
  std::vector<int> sourceOf_;  // as the columns; -1 where an expression is computed for each row
  std::vector<Total> totals_;  // as the columns
  bool computes_ = false;
};

}  // namespace vantrelix
