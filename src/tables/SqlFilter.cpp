#include "tables/SqlFilter.h"

#include <algorithm>
#include <cstring>

#include "tables/SqlCompare.h"

namespace vantrelix {

namespace {

// In every encoding of a table such a text has the same bytes, and no other bytes are read as it.
bool isPlain(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return c != '\0' && static_cast<unsigned char>(c) < 0x80; });
}

bool isUpperCaseOfField(const SqlExpression& e) {
  return e.kind == SqlKind::function && e.function == SqlFunction::ucase && e.arguments[0].kind == SqlKind::field;
}

}  // namespace

bool SqlFilter::ByteEquality::matches(const unsigned char* record) const {
  const unsigned char* bytes = record + offset;
  if (!folded) {
    if (std::memcmp(bytes, wanted.data(), wanted.size()) != 0) return false;
  } else {
    for (std::size_t i = 0; i < wanted.size(); ++i) {
      if (upperByte(bytes[i]) != static_cast<unsigned char>(wanted[i])) return false;
    }
  }
  // A NUL ends a text, whatever stands behind it.
  const unsigned char* end = bytes + width;
  const unsigned char* rest = std::find_if(bytes + wanted.size(), end, [](unsigned char c) { return c != ' '; });
  return rest == end || *rest == '\0';
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
  rest_.push_back(&term);
}

bool SqlFilter::addEquality(const SqlExpression& field, const SqlExpression& literal) {
  const bool folded = isUpperCaseOfField(field);
  if (!folded && field.kind != SqlKind::field) return false;
  if (literal.kind != SqlKind::literal || !literal.literal.isText()) return false;
  const int index = folded ? field.arguments[0].field : field.field;
  const DbfField& column = table_.fields()[static_cast<std::size_t>(index)];
  if (column.type != 'C' || column.nullBit >= 0 || column.lengthBit >= 0) return false;
  ByteEquality equality;
  equality.folded = folded;
  equality.wanted = withoutPadding(literal.literal.text());
  if (equality.wanted.empty() || !isPlain(equality.wanted)) return false;
  if (equality.wanted.size() > static_cast<std::size_t>(column.width)) {
    never_ = true;
    return true;
  }
  equality.offset = static_cast<std::size_t>(column.offset);
  equality.width = static_cast<std::size_t>(column.width);
  equalities_.push_back(std::move(equality));
  return true;
}

std::optional<SoughtText> SqlFilter::soughtText() const {
  if (equalities_.empty()) return std::nullopt;
  const ByteEquality& first = equalities_.front();
  SoughtText sought{first.offset, first.width, first.wanted};
  for (char& c : sought.text) c = static_cast<char>(upperByte(static_cast<unsigned char>(c)));
  return sought;
}

bool SqlFilter::matches(const unsigned char* record) {
  if (record[0] == '*' || never_) return false;
  for (const ByteEquality& equality : equalities_) {
    if (!equality.matches(record)) return false;
  }
  row_.show(record);
  return std::all_of(rest_.begin(), rest_.end(), [this](const SqlExpression* term) { return isMet(*term, row_); });
}

}  // namespace vantrelix
