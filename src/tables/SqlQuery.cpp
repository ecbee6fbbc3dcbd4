#include "tables/SqlQuery.h"

#include <algorithm>
#include <numeric>

#include "foundation/extract.h"
#include "foundation/text.h"
#include "tables/SqlCompare.h"
#include "tables/SqlFilter.h"
#include "tables/SqlLexer.h"

namespace vantrelix {

namespace {

constexpr int kComputedTextSize = 255;
constexpr int kNumberSize = 8;

RunTimeFailure noSuchFieldFailure(const DbfFile& table, const std::string& name, const std::string& text,
                                  std::size_t position) {
  std::string known;
  for (const DbfField& field : table.fields()) {
    if (field.system) continue;
    if (known.size() > 400) {
      known += ", ...";
      break;
    }
    known += (known.empty() ? "" : ", ") + field.name;
  }
  return {failure::badQuery, "Field '" + name + "' at position " + std::to_string(sqlPlace(text, position)) +
                                 " of the query is not in table '" + displayPath(table.path()) +
                                 "'. Its fields are: " + known + "."};
}

// What kind of value an expression gives, as far as that can be told without a row.
FieldType typeOf(const SqlExpression& e, const DbfFile& table) {
  switch (e.kind) {
    case SqlKind::field:
      return fieldTypeOf(table.fields()[static_cast<std::size_t>(e.field)]);
    case SqlKind::literal:
      if (e.literal.isBoolean()) return FieldType::boolean;
      if (e.literal.isDate()) return FieldType::date;
      return e.literal.isNumber() ? FieldType::doubleNumber : FieldType::text;
    case SqlKind::join:
      return FieldType::text;
    case SqlKind::sum:
      return std::all_of(e.arguments.begin(), e.arguments.end(),
                         [&](const SqlExpression& part) { return typeOf(part, table) == FieldType::text; })
                 ? FieldType::text
                 : FieldType::doubleNumber;
    case SqlKind::negate:
    case SqlKind::product:
      return FieldType::doubleNumber;
    case SqlKind::function:
      return e.function >= SqlFunction::len ? FieldType::doubleNumber : FieldType::text;
    default:
      return FieldType::boolean;
  }
}

int sizeOf(FieldType type) {
  if (type == FieldType::boolean) return 1;
  return type == FieldType::text || type == FieldType::memo ? kComputedTextSize : kNumberSize;
}

// One aggregate over the rows seen so far; nulls do not count.
class Accumulator {
 public:
  explicit Accumulator(const SqlColumn& column) : column_(column) {}

  void add(const SqlRow& row) {
    const Value value = evaluate(column_.expression, row);
    if (value.isNull()) return;
    if (column_.aggregate == SqlAggregate::sum || column_.aggregate == SqlAggregate::average) return addNumber(value);
    ++count_;
    if (column_.aggregate == SqlAggregate::count) return;
    const int wanted = column_.aggregate == SqlAggregate::minimum ? -1 : 1;
    const auto order = compareValues(value, extreme_);
    if (extreme_.isNull() || (order && *order * wanted > 0)) extreme_ = value;
  }

  Value result() const {
    if (column_.aggregate == SqlAggregate::count) return static_cast<double>(count_);
    if (count_ == 0) return {};
    if (column_.aggregate == SqlAggregate::sum) return sum_;
    return column_.aggregate == SqlAggregate::average ? Value(sum_ / static_cast<double>(count_)) : extreme_;
  }

 private:
  void addNumber(const Value& value) {
    const auto number = value.isText() ? sqlNumber(value.text()) : std::optional<double>();
    if (!number && !value.isNumber() && !value.isBoolean()) return;
    sum_ += number ? *number : value.asNumber();
    ++count_;
  }

  const SqlColumn& column_;
  std::uint64_t count_ = 0;
  double sum_ = 0;
  Value extreme_;
};

// Sorts row numbers by the keys taken beside them, `terms` keys a row.
std::vector<std::uint32_t> sortedRows(const std::vector<std::uint32_t>& rows, const std::vector<SortKey>& keys,
                                      const std::vector<SqlOrder>& terms) {
  std::vector<std::size_t> order(rows.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    for (std::size_t term = 0; term < terms.size(); ++term) {
      const int result = compareKeys(keys[a * terms.size() + term], keys[b * terms.size() + term]);
      if (result != 0) return terms[term].descending ? result > 0 : result < 0;
    }
    return false;
  });
  std::vector<std::uint32_t> sorted;
  sorted.reserve(rows.size());
  for (const std::size_t index : order) sorted.push_back(rows[index]);
  return sorted;
}

}  // namespace

SqlQuery::SqlQuery(SqlSelect select, std::shared_ptr<DbfFile> table)
    : select_(std::move(select)), table_(std::move(table)) {
  for (SqlItem& item : select_.items) {
    bind(item.expression, select_.text);
  }
  makeColumns();
  if (select_.where) bind(*select_.where, select_.text);
  for (SqlOrder& order : select_.order) bind(order.expression, select_.text);
}

void SqlQuery::makeColumns() {
  if (select_.items.empty()) {
    for (std::size_t i = 0; i < table_->fields().size(); ++i) {
      if (!table_->fields()[i].system) columns_.push_back(tableColumn(static_cast<int>(i)));
    }
    return;
  }
  const auto isAggregate = [](const SqlItem& item) { return item.aggregate != SqlAggregate::none; };
  aggregated_ = isAggregate(select_.items.front());
  for (const SqlItem& item : select_.items) {
    if (isAggregate(item) != aggregated_) {
      throw sqlSyntaxFailure(select_.text, item.expression.position, "aggregates and fields cannot stand in one list.");
    }
    columns_.push_back(itemColumn(item, columns_.size()));
  }
  if (aggregated_ && ordered()) {
    throw sqlSyntaxFailure(select_.text, select_.order.front().expression.position,
                           "there is nothing to sort in the one row of a query of aggregates.");
  }
}

SqlColumn SqlQuery::tableColumn(int field) const {
  const DbfField& stored = table_->fields()[static_cast<std::size_t>(field)];
  SqlColumn column;
  column.name = stored.name;
  column.field = field;
  column.type = fieldTypeOf(stored);
  column.size = stored.width;
  column.decimals = stored.decimals;
  return column;
}

SqlColumn SqlQuery::itemColumn(const SqlItem& item, std::size_t number) const {
  SqlColumn column;
  const bool isField = item.expression.kind == SqlKind::field;
  const bool keepsType = item.aggregate == SqlAggregate::none || item.aggregate == SqlAggregate::minimum ||
                         item.aggregate == SqlAggregate::maximum;
  if (isField && keepsType) {
    column = tableColumn(item.expression.field);
  } else {
    column.type = item.aggregate == SqlAggregate::count ? FieldType::longInteger
                  : keepsType                           ? typeOf(item.expression, *table_)
                                                        : FieldType::doubleNumber;
    column.size = sizeOf(column.type);
  }
  if (item.aggregate != SqlAggregate::none || !isField) {
    column.field = -1;
    column.name = "Expr" + std::to_string(1000 + number);
  }
  if (!item.alias.empty()) column.name = item.alias;
  column.aggregate = item.aggregate;
  column.expression = item.expression;
  return column;
}

void SqlQuery::bind(SqlExpression& condition, const std::string& text) const {
  if (condition.kind == SqlKind::field) return bindField(condition, text);
  for (SqlExpression& argument : condition.arguments) bind(argument, text);
}

void SqlQuery::bindField(SqlExpression& node, const std::string& text) const {
  node.field = table_->fieldIndex(node.name);
  if (node.field >= 0) return;
  for (const SqlColumn& column : columns_) {
    if (column.field < 0 || !equalIgnoringCase(column.name, node.name)) continue;
    node.field = column.field;
    return;
  }
  throw noSuchFieldFailure(*table_, node.name, text, node.position);
}

bool SqlQuery::updatable() const {
  return std::all_of(columns_.begin(), columns_.end(), [](const SqlColumn& column) { return column.field >= 0; });
}

void SqlQuery::visitRows(const std::function<void(std::uint32_t, const unsigned char*)>& visit) const {
  SqlFilter filter(*table_, select_.where ? &*select_.where : nullptr);
  const std::uint32_t count = table_->recordCount();
  const RecordVisitor look = [&](std::uint32_t number, const unsigned char* record) {
    if (number >= count) return false;
    if (filter.matches(record)) visit(number, record);
    return true;
  };
  if (const auto sought = filter.soughtText()) {
    scanForText(*table_, *sought, look);
  } else {
    table_->scan(look);
  }
}

// Of a table of millions of rows a step less for each counts.
std::vector<std::uint32_t> SqlQuery::liveRows() const {
  std::vector<std::uint32_t> found;
  const std::uint32_t count = table_->recordCount();
  found.reserve(count);
  const auto length = static_cast<std::size_t>(table_->recordLength());
  table_->scanBlocks(
      [&](std::uint32_t first, const unsigned char* records, std::uint32_t rows) {
        for (std::uint32_t row = 0; row < rows; ++row) {
          if (records[row * length] != '*') found.push_back(first + row);
        }
        return true;
      },
      0, count);
  return found;
}

std::vector<std::uint32_t> SqlQuery::rows() const {
  if (!select_.where && !ordered()) return liveRows();
  std::vector<std::uint32_t> found;
  std::vector<SortKey> keys;
  RecordRow row(*table_);
  visitRows([&](std::uint32_t number, const unsigned char* record) {
    found.push_back(number);
    row.show(record);
    for (const SqlOrder& order : select_.order) keys.emplace_back(evaluate(order.expression, row));
  });
  return ordered() ? sortedRows(found, keys, select_.order) : found;
}

std::vector<Value> SqlQuery::aggregates() const {
  std::vector<Accumulator> accumulators(columns_.begin(), columns_.end());
  RecordRow row(*table_);
  visitRows([&](std::uint32_t, const unsigned char* record) {
    row.show(record);
    for (Accumulator& accumulator : accumulators) accumulator.add(row);
  });
  std::vector<Value> values;
  values.reserve(accumulators.size());
  for (const Accumulator& accumulator : accumulators) values.push_back(accumulator.result());
  return values;
}

}  // namespace vantrelix
