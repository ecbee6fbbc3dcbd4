// The columns of a cursor and the values in its rows.
#include <algorithm>

#include "foundation/extract.h"
#include "foundation/text.h"
#include "tables/RecordsetState.h"

namespace vantrelix {

namespace {

RunTimeFailure recordDeleted(const DbfFile& table) {
  return {failure::recordDeleted,
          "The record of table '" + displayPath(table.path()) + "' has been deleted. Move to another row."};
}

}  // namespace

std::size_t Recordset::Implementation::columnNumber(std::string_view name) const {
  const auto& columns = query->columns();
  const auto found = std::find_if(columns.begin(), columns.end(),
                                  [&](const SqlColumn& column) { return equalIgnoringCase(column.name, name); });
  if (found == columns.end()) {
    throw RunTimeFailure(failure::noSuchField, "There is no field '" + std::string(name) + "' in the rows of table '" +
                                                   displayPath(query->table().path()) + "'. Check its name.");
  }
  return static_cast<std::size_t>(found - columns.begin());
}

// Null where the rows are read from the file.
const unsigned char* Recordset::Implementation::keptRecord(long position) const {
  if (kept.empty()) return nullptr;
  return kept.data() + static_cast<std::size_t>(position) * static_cast<std::size_t>(query->table().recordLength());
}

const unsigned char* Recordset::Implementation::currentRecord() {
  requireCurrent();
  if (const unsigned char* bytes = keptRecord(index)) return bytes;
  DbfFile& table = query->table();
  if (currentDeleted) throw recordDeleted(table);
  if (!recordRead || recordWrites != *writes) {
    record.resize(static_cast<std::size_t>(table.recordLength()));
    if (!table.readRecord(rows[static_cast<std::size_t>(index)], record.data())) throw recordDeleted(table);
    recordRead = true;
    recordWrites = *writes;
  }
  if (record[0] == '*') throw recordDeleted(table);
  return record.data();
}

Value Recordset::Implementation::value(std::size_t number) {
  const SqlColumn& shown = column(number);
  const auto field = static_cast<std::size_t>(shown.field);
  if (editing != Editing::none) return query->table().value(changed.data(), field);
  if (query->aggregated()) {
    requireCurrent();
    return aggregates[number];
  }
  return shownValue(shown, currentRecord());
}

Value Recordset::Implementation::shownValue(const SqlColumn& shown, const unsigned char* bytes) const {
  if (shown.field >= 0) return query->table().value(bytes, static_cast<std::size_t>(shown.field));
  RecordRow row(query->table());
  row.show(bytes);
  return evaluate(shown.expression, row);
}

Value Recordset::Implementation::valueAt(long position, std::size_t number) const {
  if (position < 0 || position >= size()) throw noCurrentRecord();
  if (query->aggregated()) return aggregates[number];
  if (const unsigned char* bytes = keptRecord(position)) return shownValue(column(number), bytes);
  DbfFile& table = query->table();
  std::vector<unsigned char> bytes(static_cast<std::size_t>(table.recordLength()));
  const bool there = table.readRecord(rows[static_cast<std::size_t>(position)], bytes.data()) && bytes[0] != '*';
  return there ? shownValue(column(number), bytes.data()) : Value();
}

void Recordset::Implementation::visitKept(int first, const dbf::DigitsField& a, const dbf::DigitsField& b,
                                          const std::function<void(double, double)>& visit) {
  const auto length = static_cast<std::size_t>(query->table().recordLength());
  const unsigned char* bytes = keptRecord(index);
  reached = size();
  std::vector<double> numbers(static_cast<std::size_t>(size() - index));
  if (first == orderField && b.readEach(bytes, length, numbers)) {
    for (const double number : numbers) {
      visit(orderNumbers[static_cast<std::size_t>(index)], number);
      ++index;
    }
    return;
  }
  for (; index < size(); ++index, bytes += length) {
    double left = 0;
    double right = 0;
    if (a.read(bytes, left) && b.read(bytes, right)) visit(left, right);
  }
}

void Recordset::Implementation::visitNumbers(std::size_t first, std::size_t second,
                                             const std::function<void(double, double)>& visit) {
  const auto digitsOf = [this](std::size_t number) {
    const int field = column(number).field;
    if (kept.empty() || field < 0) return std::optional<dbf::DigitsField>();
    return dbf::DigitsField::of(query->table().fields()[static_cast<std::size_t>(field)]);
  };
  if (index < 0) throw noCurrentRecord();
  const auto a = digitsOf(first);
  const auto b = digitsOf(second);
  if (a && b) {
    return visitKept(column(first).field, *a, *b, visit);
  }
  for (; index < size(); moveNext()) {
    const Value left = value(first);
    const Value right = value(second);
    if (!left.isNull() && !right.isNull()) visit(left.asNumber(), right.asNumber());
  }
}

}  // namespace vantrelix
