// What a query of the table gives, by a walk over its rows one after the other: conditions, keys and columns are
// evaluated from DbfFile::value alone, and compared by compareValues. The yardstick for all quicker ways to it.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/RunTimeFailure.h"
#include "tableInput.h"
#include "tables/DbfFile.h"
#include "tables/SqlCompare.h"
#include "tables/SqlFilter.h"
#include "tables/SqlLexer.h"
#include "tables/SqlParser.h"
#include "tables/SqlQuery.h"

namespace vantrelix::test {

// Of longer rows and results the rest is not looked at.
inline constexpr std::size_t kMostColumns = 12;
inline constexpr std::size_t kMostRows = 64;

// To the bit.
inline std::string shown(const Value& value) {
  if (value.isNull()) return "null";
  if (value.isText()) return "'" + value.text() + "'";
  if (value.isBoolean()) return value.boolean() ? "yes" : "no";
  if (value.isNumber()) return "number " + std::to_string(std::bit_cast<std::uint64_t>(value.number()));
  const DateTime& at = value.date();
  std::string text;
  for (const int part : {at.year, at.month, at.day, at.hour, at.minute, at.second}) text += std::to_string(part) + ".";
  return text;
}

// What the work tells, or the number of its failure.
template <class Work>
std::string answerOf(const Work& work) {
  try {
    return work();
  } catch (const RunTimeFailure& refusal) {
    return "failure " + std::to_string(refusal.number());
  }
}

class PlainWalk {
 public:
  // Fails as the query does.
  explicit PlainWalk(std::string_view sql) : PlainWalk(selectOf(sql)) {}

  std::string rows() {
    if (query_.aggregated()) return "1 rows\n" + aggregates() + "\n";
    std::string text = std::to_string(records_.size()) + " rows\n";
    for (std::size_t row = 0; row < std::min(records_.size(), kMostRows); ++row) text += columns(records_[row]) + "\n";
    return text;
  }

  // The place of the first row that meets a criterion.
  std::string find(const std::string& criterion) {
    SqlExpression condition = parseSqlCondition(criterion);
    if (query_.aggregated()) throw sqlSyntaxFailure(criterion, 0, "aggregates");
    query_.bind(condition, criterion);
    for (std::size_t row = 0; row < records_.size(); ++row) {
      row_.show(records_[row].data());
      if (isMet(condition, row_)) return std::to_string(row);
    }
    return "none";
  }

 private:
  using Record = std::vector<unsigned char>;

  explicit PlainWalk(SqlSelect select)
      : table_(DbfFile::open(kTable, true)), query_(std::move(select), table_), row_(*table_) {
    const std::optional<SqlExpression>& where = query_.select().where;
    table_->scan([&](std::uint32_t, const unsigned char* record) {
      row_.show(record);
      if (record[0] != '*' && (!where || isMet(*where, row_)))
        records_.emplace_back(record, record + table_->recordLength());
      return true;
    });
    sort();
  }

  static SqlSelect selectOf(std::string_view sql) {
    SqlStatement statement = parseSql(sql);
    if (auto* select = std::get_if<SqlSelect>(&statement)) return std::move(*select);
    throw sqlSyntaxFailure(sql, 0, "INSERT");
  }

  std::string columns(const Record& record) {
    row_.show(record.data());
    std::string text;
    for (std::size_t i = 0; i < std::min(query_.columns().size(), kMostColumns); ++i) {
      const SqlColumn& column = query_.columns()[i];
      const bool isField = column.field >= 0;
      text += shown(isField ? row_.value(static_cast<std::size_t>(column.field)) : evaluate(*column.expression, row_));
      text += "|";
    }
    return text;
  }

  std::string aggregates() {
    std::string text;
    for (std::size_t i = 0; i < std::min(query_.columns().size(), kMostColumns); ++i)
      text += shown(aggregate(query_.columns()[i])) + "|";
    return text;
  }

  Value aggregate(const SqlColumn& column) {
    double count = 0;
    double sum = 0;
    Value least;
    Value most;
    const bool isSummed = column.aggregate == SqlAggregate::sum || column.aggregate == SqlAggregate::average;
    for (const Record& record : records_) {
      row_.show(record.data());
      const Value value = evaluate(*column.expression, row_);
      const std::optional<double> number = numberIn(value);
      if (value.isNull() || (isSummed && !number)) continue;
      ++count;
      sum += number.value_or(0);
      if (least.isNull() || compareValues(value, least).value_or(0) < 0) least = value;
      if (most.isNull() || compareValues(value, most).value_or(0) > 0) most = value;
    }
    if (column.aggregate == SqlAggregate::count) return count;
    if (column.aggregate == SqlAggregate::minimum) return least;
    if (column.aggregate == SqlAggregate::maximum) return most;
    if (count == 0) return {};
    return column.aggregate == SqlAggregate::sum ? sum : sum / count;
  }

  static std::optional<double> numberIn(const Value& value) {
    if (value.isText()) return sqlNumber(value.text());
    if (value.isNumber() || value.isBoolean()) return value.asNumber();
    return std::nullopt;
  }

  // Nulls, numbers, dates, texts.
  static int rankOf(const Value& value) {
    if (value.isNull()) return 0;
    return value.isText() ? 3 : value.isDate() ? 2 : 1;
  }

  static int compareKeys(const Value& a, const Value& b) {
    if (rankOf(a) != rankOf(b)) return rankOf(a) - rankOf(b);
    if (rankOf(a) == 0) return 0;
    if (rankOf(a) != 1) return compareValues(a, b).value();
    return compareValues(a.asNumber(), b.asNumber()).value();
  }

  void sort() {
    struct Keyed {
      std::vector<Value> keys;
      Record record;
    };
    const std::vector<SqlOrder>& order = query_.select().order;
    if (order.empty()) return;
    std::vector<Keyed> rows;
    for (Record& record : records_) {
      row_.show(record.data());
      Keyed row;
      for (const SqlOrder& term : order) row.keys.push_back(evaluate(term.expression, row_));
      row.record = std::move(record);
      rows.push_back(std::move(row));
    }
    std::stable_sort(rows.begin(), rows.end(), [&](const Keyed& a, const Keyed& b) {
      for (std::size_t i = 0; i < order.size(); ++i) {
        const int compared = compareKeys(a.keys[i], b.keys[i]);
        if (compared != 0) return (compared < 0) != order[i].descending;
      }
      return false;
    });
    records_.clear();
    for (Keyed& row : rows) records_.push_back(std::move(row.record));
  }

  std::shared_ptr<DbfFile> table_;
  SqlQuery query_;
  RecordRow row_;
  std::vector<Record> records_;  // of the result, in its order
};

}  // namespace vantrelix::test
