#include "tables/SqlQuery.h"

#include <algorithm>

#include "foundation/extract.h"
#include "foundation/text.h"
#include "tables/SqlAggregates.h"
#include "tables/SqlFilter.h"
#include "tables/SqlLexer.h"
#include "tables/scanInParts.h"

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
  columns_.reserve(select_.items.empty() ? table_->fields().size() : select_.items.size());
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
  column.expression = &item.expression;
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

// Gives the runs of the rows in file order, those of one read at a time: `visit` gets the records read, whose bytes are
// valid during the call, and the runs counted from the first of them. Before that `look` gathers in a part what is to
// be had without the rows before them; it runs in any thread where the condition can be decided in any.
template <class Part, class Look, class Visit>
void SqlQuery::eachRuns(const Part& part, const Look& look, const Visit& visit) const {
  struct Chosen {
    SqlFilter filter;
    std::vector<RowRun> runs;
    Part part;
  };
  Chosen chosen{SqlFilter(*table_, select_.where ? &*select_.where : nullptr), {}, part};
  const auto choose = [&](const RowBlock& rows, Chosen& own) {
    own.runs.clear();
    own.filter.choose(rows.bytes, rows.count, own.runs);
    look(rows, own.runs, own.part);
  };
  const auto take = [&](const RowBlock& rows, const Chosen& own) {
    visit(rows, own.runs, own.part);
    return true;
  };
  const BlockVisitor inOneThread = [&](std::uint32_t first, const unsigned char* records, std::uint32_t count) {
    const RowBlock rows{first, records, count};
    choose(rows, chosen);
    return take(rows, chosen);
  };
  if (const auto sought = chosen.filter.soughtText()) {
    scanBlocksForText(*table_, *sought, inOneThread);
  } else if (chosen.filter.readsBytesAlone()) {
    scanInParts(*table_, chosen, choose, take);
  } else {
    table_->scanBlocks(inOneThread);
  }
}

template <class Visit>
void SqlQuery::eachRuns(const Visit& visit) const {
  struct Nothing {};
  eachRuns(
      Nothing(), [](const RowBlock&, const std::vector<RowRun>&, Nothing&) {},
      [&](const RowBlock& rows, const std::vector<RowRun>& runs, const Nothing&) { visit(rows, runs); });
}

// A visitor may add rows to the table.
void SqlQuery::visitRows(const std::function<void(std::uint32_t, const unsigned char*)>& visit) const {
  const std::uint32_t count = table_->recordCount();
  const auto length = static_cast<std::size_t>(table_->recordLength());
  eachRuns([&](const RowBlock& rows, const std::vector<RowRun>& runs) {
    for (const RowRun& run : runs) {
      for (std::uint32_t row = run.first; row < run.end() && rows.first + row < count; ++row) {
        visit(rows.first + row, rows.bytes + row * length);
      }
    }
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
  return collectRows(mostKept, 0);
}

SqlRows SqlQuery::collectRows(std::size_t mostKept, std::size_t expected) const {
  RowCollector collector(*table_, select_.order, mostKept);
  collector.reserve(expected);
  const auto length = static_cast<std::size_t>(table_->recordLength());
  eachRuns([&](const RowBlock& rows, const std::vector<RowRun>& runs) {
    for (const RowRun& run : runs) collector.add(rows.first + run.first, rows.bytes + run.first * length, run.count);
  });
  return collector.take();
}

std::vector<Value> SqlQuery::aggregates() const {
  SqlAggregates totals(*table_, columns_);
  using Part = SqlAggregates::Part;
  using Runs = std::vector<RowRun>;
  eachRuns(
      totals.part(), [&](const RowBlock& rows, const Runs& runs, Part& part) { totals.look(rows, runs, part); },
      [&](const RowBlock&, const Runs&, const Part& part) { totals.join(part); });
  return totals.results();
}

}  // namespace vantrelix
