#include "tables/SqlQuery.h"

#include <algorithm>

#include "foundation/extract.h"
#include "foundation/text.h"
#include "tables/SqlAggregates.h"
#include "tables/SqlFilter.h"
#include "tables/SqlLexer.h"

namespace vantrelix {

namespace {

constexpr int kComputedTextSize = 255;
constexpr int kNumberSize = 8;
// Room for the points of one antenna, so that a search does not move what it finds again and again.
constexpr std::size_t kUsualFinds = 512;

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

// Gives records in file order, many at a time where they stand behind one another; their bytes are valid during the
// call.
template <class Visit>
void SqlQuery::eachRows(const Visit& visit) const {
  SqlFilter filter(*table_, select_.where ? &*select_.where : nullptr);
  std::vector<const unsigned char*> chosen;
  const BlockVisitor look = [&](std::uint32_t first, const unsigned char* records, std::uint32_t rows) {
    chosen.clear();
    filter.choose(records, rows, chosen);
    visit(chosen, first, records);
    return true;
  };
  if (const auto sought = filter.soughtText()) {
    scanBlocksForText(*table_, *sought, look);
  } else {
    table_->scanBlocks(look);
  }
}

template <class Visit>
void SqlQuery::eachRow(const Visit& visit) const {
  const auto length = table_->recordLength();
  eachRows([&](const std::vector<const unsigned char*>& chosen, std::uint32_t first, const unsigned char* records) {
    for (const unsigned char* record : chosen) {
      visit(first + static_cast<std::uint32_t>((record - records) / length), record);
    }
  });
}

// A visitor may add rows to the table.
void SqlQuery::visitRows(const std::function<void(std::uint32_t, const unsigned char*)>& visit) const {
  const std::uint32_t count = table_->recordCount();
  eachRow([&](std::uint32_t number, const unsigned char* record) {
    if (number < count) visit(number, record);
  });
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

SqlRows SqlQuery::rows(std::size_t mostKept) const {
  if (!select_.where) {
    const std::size_t count = table_->recordCount();
    if (count * static_cast<std::size_t>(table_->recordLength()) > mostKept) mostKept = 0;
    if (mostKept == 0 && !ordered()) {
      SqlRows found;
      found.numbers = liveRows();
      return found;
    }
    return collectRows(mostKept, count);
  }
  return collectRows(mostKept, kUsualFinds);
}

SqlRows SqlQuery::collectRows(std::size_t mostKept, std::size_t expected) const {
  RowCollector collector(*table_, select_.order, mostKept);
  collector.reserve(expected);
  const auto length = static_cast<std::size_t>(table_->recordLength());
  eachRows([&](const std::vector<const unsigned char*>& chosen, std::uint32_t first, const unsigned char* records) {
    for (auto run = chosen.begin(); run != chosen.end();) {
      const unsigned char* const begin = *run;
      const unsigned char* end = begin;
      for (; run != chosen.end() && *run == end; ++run) end += length;
      const auto place = static_cast<std::size_t>(begin - records) / length;
      collector.add(first + static_cast<std::uint32_t>(place), begin,
                    static_cast<std::uint32_t>(static_cast<std::size_t>(end - begin) / length));
    }
  });
  return collector.take();
}

std::vector<Value> SqlQuery::aggregates() const {
  SqlAggregates totals(*table_, columns_);
  eachRows([&](const std::vector<const unsigned char*>& chosen, std::uint32_t, const unsigned char*) {
    totals.add(chosen);
  });
  return totals.results();
}

}  // namespace vantrelix
