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

// Of a whole table also those that others have added since between two of the cursor's own.
void ColumnScan::run(const std::function<void(const unsigned char* record)>& visit) const {
  RowNumbers sorted;
  if (state_.query->ordered() && !isWhole()) {
    std::vector<std::uint32_t> numbers(state_.rows.begin(), state_.rows.end());
    std::sort(numbers.begin(), numbers.end());
    sorted = RowNumbers(std::move(numbers));
  }
  const RowNumbers& rows = state_.query->ordered() ? sorted : state_.rows;
  auto next = rows.begin();
  const auto isOurs = [&](std::uint32_t number) {
    while (next != rows.end() && *next < number) ++next;
    return next == rows.end() || *next == number;
  };
  table_.scan([&](std::uint32_t number, const unsigned char* record) {
    if (*record != '*' && (isWhole() || isOurs(number))) visit(record);
    return true;
  });
}

}  // namespace vantrelix
