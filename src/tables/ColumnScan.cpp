#include "tables/ColumnScan.h"

#include <algorithm>

#include "platform/RunTimeFailure.h"
#include "tables/RecordsetState.h"

namespace vantrelix {

std::size_t ColumnScan::tableField(const Recordset::Implementation& state, const std::string& name) {
  const SqlColumn& column = state.column(state.columnNumber(name));
  if (column.field >= 0 && !state.query->aggregated()) return static_cast<std::size_t>(column.field);
  throw RunTimeFailure(failure::readOnlyTable,
                       "The column " + name + " is computed by its query. Name a table's field.");
}

ColumnScan::ColumnScan(Recordset& cursor, const std::string& field)
    : state_(cursor.state()), table_(state_.query->table()), field_(tableField(state_, field)) {}

bool ColumnScan::isWhole() const { return !state_.query->select().where; }

void ColumnScan::run(const std::function<void(const unsigned char* record)>& visit) const {
  if (isWhole()) {
    table_.scan([&](std::uint32_t, const unsigned char* record) {
      if (*record != '*') visit(record);
      return true;
    });
  } else {
    runOverPart(visit);
  }
}

void ColumnScan::runOverPart(const std::function<void(const unsigned char* record)>& visit) const {
  RowNumbers sorted;
  if (state_.query->ordered()) {
    std::vector<std::uint32_t> numbers(state_.rows.begin(), state_.rows.end());
    std::sort(numbers.begin(), numbers.end());
    sorted = RowNumbers(std::move(numbers));
  }
  const RowNumbers& rows = state_.query->ordered() ? sorted : state_.rows;
  SqlFilter filter(table_, &*state_.query->select().where);
  auto next = rows.begin();
  const auto end = rows.end();
  table_.scan([&](std::uint32_t number, const unsigned char* record) {
    while (next != end && *next < number) ++next;
    const bool isOwn = next != end && *next == number;
    if (*record != '*' && (isOwn || filter.matches(record))) visit(record);
    return true;
  });
}

}  // namespace vantrelix
