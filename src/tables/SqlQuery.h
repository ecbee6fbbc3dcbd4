// A query bound to its table, ready to be run.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tables/DbfFile.h"
#include "tables/FieldType.h"
#include "tables/SqlEvaluator.h"
#include "tables/SqlRows.h"

namespace vantrelix {

// One field of a result.
struct SqlColumn {
  std::string name;
  int field = -1;  // of the table; -1 where it is computed
  FieldType type = FieldType::text;
  int size = 0;
  int decimals = 0;
  SqlAggregate aggregate = SqlAggregate::none;
  const SqlExpression* expression = nullptr;  // of a select list; the query has it
};

class SqlQuery {
 public:
  // 3061 where the query names a field that the table does not have, or mixes rows and aggregates.
  SqlQuery(SqlSelect select, std::shared_ptr<DbfFile> table);
  SqlQuery(const SqlQuery&) = delete;
  SqlQuery& operator=(const SqlQuery&) = delete;

  DbfFile& table() const { return *table_; }
  const std::shared_ptr<DbfFile>& file() const { return table_; }
  const SqlSelect& select() const { return select_; }
  const std::vector<SqlColumn>& columns() const { return columns_; }
  // Every column is a field of the table, so that a row can be written through.
  bool updatable() const;
  bool aggregated() const { return aggregated_; }
  bool ordered() const { return !select_.order.empty(); }

  // The rows that the query gives, in its order; their bytes as well where they are no more than `mostKept`.
  SqlRows rows(std::size_t mostKept = 0) const;
  // Runs over the same records in file order; the bytes are valid during the call. Records added meanwhile are left
  // out.
  void visitRows(const std::function<void(std::uint32_t number, const unsigned char* record)>& visit) const;
  // The one row of a query of aggregates.
  std::vector<Value> aggregates() const;

  // Binds a condition given later (`text` is where it was read from) to the fields of the result and of the table.
  void bind(SqlExpression& condition, const std::string& text) const;

 private:
  template <class Part, class Look, class Visit>
  void eachRuns(const Part& part, const Look& look, const Visit& visit) const;
  template <class Visit>
  void eachRuns(const Visit& visit) const;
  std::vector<std::uint32_t> liveRows() const;
  SqlRows collectRows(std::size_t mostKept, std::size_t expected) const;
  void makeColumns();
  SqlColumn tableColumn(int field) const;
  SqlColumn itemColumn(const SqlItem& item, std::size_t number) const;
  void bindField(SqlExpression& node, const std::string& text) const;

  SqlSelect select_;
  std::shared_ptr<DbfFile> table_;
  std::vector<SqlColumn> columns_;
  bool aggregated_ = false;
};

}  // namespace vantrelix
