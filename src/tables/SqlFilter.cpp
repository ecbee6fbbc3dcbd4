#include "tables/SqlFilter.h"

#include <algorithm>
#include <cstring>

#include "foundation/text.h"
#include "tables/SqlCompare.h"

namespace vantrelix {

namespace {

// Upper case of each byte of a code page; nothing where that is no byte of the page for one of them.
std::vector<unsigned char> foldTable(const CodePage& page) {
  std::vector<unsigned char> table(256);
  for (std::size_t byte = 0; byte < table.size(); ++byte) {
    const std::string upper = upperCase(page.decode(std::string(1, static_cast<char>(byte))));
    const std::string encoded = page.encode(upper);
    if (encoded.size() != 1 || page.decode(encoded) != upper) return {};
    table[byte] = static_cast<unsigned char>(encoded[0]);
  }
  return table;
}

bool isUpperCaseOfField(const SqlExpression& e) {
  return e.kind == SqlKind::function && e.function == SqlFunction::ucase && e.arguments[0].kind == SqlKind::field;
}

}  // namespace

bool SqlFilter::ByteEquality::matches(const unsigned char* record) const {
  const unsigned char* bytes = record + offset;
  if (fold.empty()) {
    if (std::memcmp(bytes, wanted.data(), wanted.size()) != 0) return false;
  } else {
    for (std::size_t i = 0; i < wanted.size(); ++i) {
      if (fold[bytes[i]] != static_cast<unsigned char>(wanted[i])) return false;
    }
  }
  return std::all_of(bytes + wanted.size(), bytes + width, [](unsigned char c) { return c == ' ' || c == '\0'; });
}

SqlFilter::SqlFilter(DbfFile& table, const SqlExpression* condition) : table_(table), row_(table) {
  if (condition == nullptr) return;
  if (condition->kind != SqlKind::logicalAnd) return add(*condition);
  for (const SqlExpression& term : condition->arguments) add(term);
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
  const CodePage& page = table_.codePage();
  if (column.type != 'C' || column.nullBit >= 0 || column.lengthBit >= 0 || !page.singleByte()) return false;
  ByteEquality equality;
  if (folded) equality.fold = foldTable(page);
  if (folded && equality.fold.empty()) return false;
  const std::string text(withoutPadding(literal.literal.text()));
  equality.wanted = page.encode(text);
  // A blank field is null, which equals nothing; a text that the page cannot hold is in no record.
  if (text.empty() || page.decode(equality.wanted) != text ||
      equality.wanted.size() > static_cast<std::size_t>(column.width)) {
    never_ = true;
    return true;
  }
  equality.offset = static_cast<std::size_t>(column.offset);
  equality.width = static_cast<std::size_t>(column.width);
  equalities_.push_back(std::move(equality));
  return true;
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
