#include "tables/SqlAggregates.h"

#include <algorithm>
#include <functional>
#include <iterator>

#include "tables/SqlCompare.h"
#include "tables/SqlQuery.h"

namespace vantrelix {

namespace {

bool isSummed(SqlAggregate aggregate) { return aggregate == SqlAggregate::sum || aggregate == SqlAggregate::average; }

// The one that stands before all others. Four at a time: each has to wait for the one before it in its own lane alone.
template <class Before>
double firstOf(const std::vector<double>& numbers, Before before) {
  constexpr std::size_t kLanes = 4;
  const double any = numbers.front();
  double lanes[kLanes] = {any, any, any, any};
  std::size_t i = 0;
  for (; i + kLanes <= numbers.size(); i += kLanes) {
    for (std::size_t lane = 0; lane < kLanes; ++lane) {
      const double number = numbers[i + lane];
      lanes[lane] = before(number, lanes[lane]) ? number : lanes[lane];
    }
  }
  for (; i < numbers.size(); ++i) lanes[0] = before(numbers[i], lanes[0]) ? numbers[i] : lanes[0];
  return *std::min_element(std::begin(lanes), std::end(lanes), before);
}

}  // namespace

SqlAggregates::SqlAggregates(DbfFile& table, const std::vector<SqlColumn>& columns)
    : columns_(columns),
      row_(table),
      table_(table),
      length_(static_cast<std::size_t>(table.recordLength())),
      totals_(columns.size()) {
  for (const SqlColumn& column : columns) {
    sourceOf_.push_back(sourceOf(column));
    computes_ = computes_ || sourceOf_.back() < 0;
  }
}

int SqlAggregates::sourceOf(const SqlColumn& column) {
  if (column.expression->kind != SqlKind::field) return -1;
  const auto number = static_cast<std::size_t>(column.expression->field);
  const auto known =
      std::find_if(sources_.begin(), sources_.end(), [&](const Source& s) { return s.fieldNumber == number; });
  if (known != sources_.end()) return static_cast<int>(known - sources_.begin());
  const auto digits = dbf::DigitsField::of(table_.fields()[number]);
  if (!digits) return -1;
  sources_.push_back({number, *digits});
  return static_cast<int>(sources_.size()) - 1;
}

SqlAggregates::Part SqlAggregates::part() const {
  return {{}, std::vector<std::vector<double>>(sources_.size()), std::vector<Total>(columns_.size())};
}

// One loop for each step costs less than one for all.
void SqlAggregates::look(const RowBlock& rows, const std::vector<RowRun>& runs, Part& part) const {
  part.records.clear();
  for (const RowRun& run : runs) {
    for (std::uint32_t row = run.first; row < run.end(); ++row) part.records.push_back(rows.bytes + row * length_);
  }
  for (std::size_t i = 0; i < sources_.size(); ++i) {
    part.numbers[i].clear();
    sources_[i].field.readAll(part.records, part.numbers[i]);
  }
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    if (sourceOf_[i] < 0) continue;
    part.totals[i] = totalOf(columns_[i].aggregate, part.numbers[static_cast<std::size_t>(sourceOf_[i])]);
  }
}

void SqlAggregates::join(const Part& part) {
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    if (sourceOf_[i] < 0) continue;
    addTotal(columns_[i].aggregate, totals_[i], part.totals[i]);
    if (!isSummed(columns_[i].aggregate)) continue;
    for (const double number : part.numbers[static_cast<std::size_t>(sourceOf_[i])]) totals_[i].sum += number;
  }
  if (!computes_) return;
  for (const unsigned char* record : part.records) addComputed(record);
}

SqlAggregates::Total SqlAggregates::totalOf(SqlAggregate aggregate, const std::vector<double>& numbers) {
  Total total;
  total.count = numbers.size();
  if (numbers.empty()) return total;
  if (aggregate == SqlAggregate::minimum) total.extreme = firstOf(numbers, std::less<>());
  if (aggregate == SqlAggregate::maximum) total.extreme = firstOf(numbers, std::greater<>());
  return total;
}

void SqlAggregates::addTotal(SqlAggregate aggregate, Total& total, const Total& added) {
  total.count += added.count;
  if (!added.extreme.isNull()) addExtreme(aggregate, total, added.extreme);
}

void SqlAggregates::addComputed(const unsigned char* record) {
  row_.show(record);
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    if (sourceOf_[i] < 0) addValue(columns_[i].aggregate, totals_[i], evaluate(*columns_[i].expression, row_));
  }
}

void SqlAggregates::addValue(SqlAggregate aggregate, Total& total, const Value& value) {
  if (value.isNull()) return;
  if (isSummed(aggregate)) {
    const auto number = value.isText() ? sqlNumber(value.text()) : std::optional<double>();
    if (!number && !value.isNumber() && !value.isBoolean()) return;
    total.sum += number ? *number : value.asNumber();
    ++total.count;
    return;
  }
  ++total.count;
  if (aggregate != SqlAggregate::count) addExtreme(aggregate, total, value);
}

void SqlAggregates::addExtreme(SqlAggregate aggregate, Total& total, const Value& value) {
  const int wanted = aggregate == SqlAggregate::minimum ? -1 : 1;
  const auto order = compareValues(value, total.extreme);
  if (total.extreme.isNull() || (order && *order * wanted > 0)) total.extreme = value;
}

std::vector<Value> SqlAggregates::results() const {
  std::vector<Value> values;
  values.reserve(columns_.size());
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const SqlAggregate aggregate = columns_[i].aggregate;
    const Total& total = totals_[i];
    const auto count = static_cast<double>(total.count);
    if (aggregate == SqlAggregate::count) {
      values.emplace_back(count);
    } else if (total.count == 0) {
      values.emplace_back();
    } else if (aggregate == SqlAggregate::sum) {
      values.emplace_back(total.sum);
    } else {
      values.push_back(aggregate == SqlAggregate::average ? Value(total.sum / count) : total.extreme);
    }
  }
  return values;
}

}  // namespace vantrelix
