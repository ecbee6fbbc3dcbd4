// Where a cursor finds the row that meets a criterion.
#include <algorithm>

#include "tables/RecordsetState.h"
#include "tables/SqlLexer.h"
#include "tables/SqlParser.h"

namespace vantrelix {

void Recordset::Implementation::findFirst(std::string_view criterion) {
  SqlExpression condition = parseSqlCondition(criterion);
  if (query->aggregated()) {
    throw sqlSyntaxFailure(criterion, 0, "the one row of a query of aggregates cannot be searched.");
  }
  query->bind(condition, std::string(criterion));
  settle();
  SqlFilter filter(query->table(), &condition);
  const std::optional<long> found = search(filter);
  noMatch = !found;
  if (found) moveTo(*found);
}

std::optional<long> Recordset::Implementation::search(SqlFilter& filter) {
  // One read for a few rows costs less than a run over the whole file.
  constexpr std::size_t kRunPays = 8;
  DbfFile& table = query->table();
  if (!kept.empty()) {
    for (long i = 0; i < size(); ++i) {
      if (filter.matches(keptRecord(i))) return i;
    }
    return std::nullopt;
  }
  if (rows.size() * kRunPays >= table.recordCount()) return searchFile(filter);
  std::vector<unsigned char> bytes(static_cast<std::size_t>(table.recordLength()));
  for (long i = 0; i < size(); ++i) {
    if (table.readRecord(rows[static_cast<std::size_t>(i)], bytes.data()) && filter.matches(bytes.data())) return i;
  }
  return std::nullopt;
}

std::optional<long> Recordset::Implementation::searchFile(SqlFilter& filter) {
  std::vector<std::uint32_t> found;  // in file order
  const bool firstWillDo = !query->ordered();
  query->table().scan([&](std::uint32_t number, const unsigned char* bytes) {
    if (!filter.matches(bytes)) return true;
    if (firstWillDo && positionOf(number) == size()) return true;
    found.push_back(number);
    return !firstWillDo;
  });
  if (found.empty()) return std::nullopt;
  if (firstWillDo) return positionOf(found.front());
  const auto first = std::find_if(rows.begin(), rows.end(), [&](std::uint32_t number) {
    return std::binary_search(found.begin(), found.end(), number);
  });
  return first == rows.end() ? std::optional<long>() : first - rows.begin();
}

}  // namespace vantrelix
