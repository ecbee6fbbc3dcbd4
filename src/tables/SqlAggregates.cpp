#include "tables/SqlAggregates.h"

#include <algorithm>
#include <functional>
#include <iterator>

#include "tables/SqlCompare.h"
#include "tables/SqlQuery.h"

namespace vantrelix {

namespace {

// The one that stands before all others. Four at a time: each has to wait for the one before it in its own lane alone.
template <class Before>
double firstOf(const std::vector<double>& numbers, double so, Before before) {
  constexpr std::size_t kLanes = 4;
  double lanes[kLanes] = {so, so, so, so};
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
    : columns_(columns), row_(table), table_(table), totals_(columns.size()) {
  for (std::size_t i = 0; i < columns.size(); ++i) {
    totals_[i].source = sourceOf(columns[i]);
    computes_ = computes_ || totals_[i].source < 0;
  }
}

int SqlAggregates::sourceOf(const SqlColumn& column) {
  if (column.expression.kind != SqlKind::field) return -1;
  const auto number = static_cast<std::size_t>(column.expression.field);
  const auto known =
      std::find_if(sources_.begin(), sources_.end(), [&](const Numbers& s) { return s.fieldNumber == number; });
  if (known != sources_.end()) return static_cast<int>(known - sources_.begin());
  const auto digits = dbf::DigitsField::of(table_.fields()[number]);
  if (!digits) return -1;
  sources_.push_back({number, *digits, {}});
  return static_cast<int>(sources_.size()) - 1;
}

// One loop for each step costs less than one for all.
void SqlAggregates::add(const std::vector<const unsigned char*>& records) {
  for (Numbers& source : sources_) {
    source.values.clear();
    source.field.readAll(records, source.values);
  }
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const int source = totals_[i].source;
    if (source >= 0) addNumbers(columns_[i], totals_[i], sources_[static_cast<std::size_t>(source)].values);
  }
  if (!computes_) return;
  for (const unsigned char* record : records) addComputed(record);
}

void SqlAggregates::addNumbers(const SqlColumn& column, Total& total, const std::vector<double>& numbers) const {
  if (numbers.empty()) return;
  total.count += numbers.size();
  if (column.aggregate == SqlAggregate::sum || column.aggregate == SqlAggregate::average) {
    for (const double number : numbers) total.sum += number;
    return;
  }
  if (column.aggregate == SqlAggregate::count) return;
  const double extreme = total.extreme.isNull() ? numbers.front() : total.extreme.number();
  const bool lowest = column.aggregate == SqlAggregate::minimum;
  total.extreme = lowest ? firstOf(numbers, extreme, std::less<>()) : firstOf(numbers, extreme, std::greater<>());
}

void SqlAggregates::addComputed(const unsigned char* record) {
  row_.show(record);
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    if (totals_[i].source < 0) addValue(columns_[i], totals_[i], evaluate(columns_[i].expression, row_));
  }
}

void SqlAggregates::addValue(const SqlColumn& column, Total& total, const Value& value) const {
  if (value.isNull()) return;
  if (column.aggregate == SqlAggregate::sum || column.aggregate == SqlAggregate::average) {
    const auto number = value.isText() ? sqlNumber(value.text()) : std::optional<double>();
    if (!number && !value.isNumber() && !value.isBoolean()) return;
    total.sum += number ? *number : value.asNumber();
    ++total.count;
    return;
  }
  ++total.count;
  if (column.aggregate == SqlAggregate::count) return;
  const int wanted = column.aggregate == SqlAggregate::minimum ? -1 : 1;
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
