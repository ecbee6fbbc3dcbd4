// Any text as a query, and as a criterion, over a row of every kind of value. A refusal is fine; anything else is a
// finding.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/RunTimeFailure.h"
#include "tables/SqlEvaluator.h"
#include "tables/SqlParser.h"
#include "tables/SqlSort.h"

namespace {

using namespace vantrelix;

// A field's name decides what it holds.
class AnyRow : public SqlRow {
 public:
  Value value(std::size_t field) const override {
    switch (field % 5) {
      case 0:
        return "Antenna 12   ";
      case 1:
        return -12.5;
      case 2:
        return DateTime{2026, 11, 21, 16, 2, 48};
      case 3:
        return true;
      default:
        return {};
    }
  }
};

void bind(SqlExpression& expression) {
  if (expression.kind == SqlKind::field) expression.field = static_cast<unsigned char>(expression.name.front());
  for (SqlExpression& argument : expression.arguments) bind(argument);
}

void evaluateAll(SqlExpression& expression) {
  const AnyRow row;
  bind(expression);
  SortKeys keys({false});
  keys.add(evaluate(expression, row));
  keys.add(evaluate(expression, row));
  if (isMet(expression, row) && keys.order().front() != 0) __builtin_trap();
}

void runSelect(SqlSelect& select) {
  for (SqlItem& item : select.items) evaluateAll(item.expression);
  if (select.where) evaluateAll(*select.where);
  for (SqlOrder& order : select.order) evaluateAll(order.expression);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  try {
    SqlStatement statement = parseSql(text);
    if (auto* insert = std::get_if<SqlInsert>(&statement)) {
      runSelect(insert->source);
    } else {
      runSelect(std::get<SqlSelect>(statement));
    }
  } catch (const RunTimeFailure& refusal) {
    if (refusal.number() != failure::badQuery) throw;
  }
  try {
    SqlExpression condition = parseSqlCondition(text);
    evaluateAll(condition);
  } catch (const RunTimeFailure& refusal) {
    if (refusal.number() != failure::badQuery) throw;
  }
  return 0;
}
