#include "tables/SqlFilter.h"

#include <algorithm>

#include "tables/SqlCompare.h"

namespace vantrelix {

namespace {

bool isUpperCaseOfField(const SqlExpression& e) {
  return e.kind == SqlKind::function && e.function == SqlFunction::ucase && e.arguments[0].kind == SqlKind::field;
}

// A number as it is written, a minus sign before it or none.
std::optional<double> numberIn(const SqlExpression& e) {
  if (e.kind == SqlKind::negate) {
    const auto number = numberIn(e.arguments[0]);
    return number ? std::optional<double>(-*number) : number;
  }
  if (e.kind != SqlKind::literal || !e.literal.isNumber()) return std::nullopt;
  return e.literal.number();
}

// The comparison that holds of b and a where this one holds of a and b.
SqlComparison mirrored(SqlComparison comparison) {
  switch (comparison) {
    case SqlComparison::less:
      return SqlComparison::greater;
    case SqlComparison::lessOrEqual:
      return SqlComparison::greaterOrEqual;
    case SqlComparison::greater:
      return SqlComparison::less;
    case SqlComparison::greaterOrEqual:
      return SqlComparison::lessOrEqual;
    default:
      return comparison;
  }
}

}  // namespace

bool SqlFilter::NumberTest::matches(const unsigned char* record) const {
  double number = 0;
  if (!field.read(record, number)) return false;
  switch (comparison) {
    case SqlComparison::equal:
      return number == wanted;
    case SqlComparison::notEqual:
      return number != wanted;
    case SqlComparison::less:
      return number < wanted;
    case SqlComparison::lessOrEqual:
      return number <= wanted;
    case SqlComparison::greater:
      return number > wanted;
    case SqlComparison::greaterOrEqual:
      return number >= wanted;
  }
  return false;
}

SqlFilter::SqlFilter(DbfFile& table, const SqlExpression* condition) : table_(table), row_(table) {
  if (condition == nullptr) return;
  if (condition->kind == SqlKind::logicalAnd) {
    for (const SqlExpression& term : condition->arguments) add(term);
  } else {
    add(*condition);
  }
}

void SqlFilter::add(const SqlExpression& term) {
  if (term.kind == SqlKind::comparison && term.comparison == SqlComparison::equal) {
    if (addEquality(term.arguments[0], term.arguments[1])) return;
    if (addEquality(term.arguments[1], term.arguments[0])) return;
  }
  if (!addTests(term)) rest_.push_back(&term);
}

bool SqlFilter::addTests(const SqlExpression& term) {
  const std::vector<SqlExpression>& parts = term.arguments;
  if (term.kind == SqlKind::comparison) {
    return addTest(term.comparison, parts[0], parts[1]) || addTest(mirrored(term.comparison), parts[1], parts[0]);
  }
  if (term.kind != SqlKind::between || term.negated || !numberIn(parts[1]) || !numberIn(parts[2])) return false;
  return addTest(SqlComparison::greaterOrEqual, parts[0], parts[1]) &&
         addTest(SqlComparison::lessOrEqual, parts[0], parts[2]);
}

bool SqlFilter::addTest(SqlComparison comparison, const SqlExpression& field, const SqlExpression& number) {
  if (field.kind != SqlKind::field) return false;
  const auto wanted = numberIn(number);
  const auto digits = dbf::DigitsField::of(table_.fields()[static_cast<std::size_t>(field.field)]);
  if (!wanted || !digits) return false;
  tests_.push_back({*digits, comparison, *wanted});
  return true;
}

bool SqlFilter::addEquality(const SqlExpression& field, const SqlExpression& literal) {
  const bool folded = isUpperCaseOfField(field);
  if (!folded && field.kind != SqlKind::field) return false;
  if (literal.kind != SqlKind::literal || !literal.literal.isText()) return false;
  const int index = folded ? field.arguments[0].field : field.field;
  const DbfField& column = table_.fields()[static_cast<std::size_t>(index)];
  std::optional<TextEquality> equality = TextEquality::of(column, literal.literal.text(), folded);
  if (!equality) return false;
  never_ = never_ || !equality->isPossible();
  if (equality->isPossible()) equalities_.push_back(std::move(*equality));
  return true;
}

std::optional<SoughtText> SqlFilter::soughtText() const {
  if (equalities_.empty()) return std::nullopt;
  return equalities_.front().sought();
}

// Rows of one text mostly stand together: what is known of a field's bytes holds of the same bytes in the next row.
void SqlFilter::choose(const unsigned char* records, std::uint32_t count, std::vector<RowRun>& chosen) {
  const auto length = static_cast<std::size_t>(table_.recordLength());
  const bool testsMore = never_ || !tests_.empty() || !rest_.empty();
  const bool livingWillDo = !testsMore && equalities_.empty();
  const TextEquality* const only = !testsMore && equalities_.size() == 1 ? &equalities_.front() : nullptr;
  for (std::uint32_t row = 0; row < count;) {
    const unsigned char* record = records + row * length;
    const std::uint32_t first = row++;
    if (livingWillDo ? record[0] == '*' : !matches(record)) continue;
    if (livingWillDo) {
      while (row < count && (record += length)[0] != '*') ++row;
    } else if (only != nullptr) {
      row = only->endOfAlike(record, length, row, count);
    }
    if (!chosen.empty() && chosen.back().end() == first) {
      chosen.back().count += row - first;
    } else {
      chosen.push_back({first, row - first});
    }
  }
}

bool SqlFilter::matches(const unsigned char* record) {
  if (record[0] == '*' || never_) return false;
  for (const TextEquality& equality : equalities_) {
    if (!equality.matches(record)) return false;
  }
  for (const NumberTest& test : tests_) {
    if (!test.matches(record)) return false;
  }
  if (rest_.empty()) return true;
  row_.show(record);
  return std::all_of(rest_.begin(), rest_.end(), [this](const SqlExpression* term) { return isMet(*term, row_); });
}

}  // namespace vantrelix
