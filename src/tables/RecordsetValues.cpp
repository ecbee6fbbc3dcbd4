// The columns of a cursor and the values in its rows.
#include <algorithm>
#include <span>

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

// The row being added or edited, or else the current one.
const unsigned char* Recordset::Implementation::shownRecord() {
  return editing != Editing::none ? changed.data() : currentRecord();
}

void Recordset::Implementation::makeReaders() {
  const std::size_t columns = query->columns().size();
  readers.reserve(columns);
  for (std::size_t number = 0; number < columns; ++number) readers.emplace_back(*query, number);
}

Value Recordset::Implementation::value(std::size_t number) {
  if (!query->aggregated()) return reader(number).value(shownRecord());
  requireCurrent();
  return aggregates[number];
}

std::optional<double> Recordset::Implementation::numberOf(std::size_t number) {
  if (!query->aggregated()) return reader(number).number(shownRecord());
  requireCurrent();
  const Value& value = aggregates[number];
  return value.isNull() ? std::nullopt : std::optional(value.number());
}

std::optional<std::string_view> Recordset::Implementation::textOf(std::size_t number) {
  if (!query->aggregated()) return reader(number).text(shownRecord());
  requireCurrent();
  const Value& value = aggregates[number];
  return value.isNull() ? std::nullopt : std::optional<std::string_view>(value.text());
}

Value Recordset::Implementation::valueAt(long position, std::size_t number) {
  if (position < 0 || position >= size()) throw noCurrentRecord();
  if (query->aggregated()) return aggregates[number];
  if (const unsigned char* bytes = keptRecord(position)) return reader(number).value(bytes);
  DbfFile& table = query->table();
  std::vector<unsigned char> bytes(static_cast<std::size_t>(table.recordLength()));
  const bool there = table.readRecord(rows[static_cast<std::size_t>(position)], bytes.data()) && bytes[0] != '*';
  return there ? reader(number).value(bytes.data()) : Value();
}

// Adds a column's numbers in the rows from the current one on. False, and what was added is of no meaning, where that
// cannot be had of the bytes of all of them.
bool Recordset::Implementation::addKept(std::size_t number, std::vector<double>& numbers) const {
  const int field = column(number).field;
  if (kept.empty() || field < 0) return false;
  if (field == orderField) {
    numbers.insert(numbers.end(), orderNumbers.begin() + index, orderNumbers.end());
    return true;
  }
  const DbfFile& table = query->table();
  const auto digits = dbf::DigitsField::of(table.fields()[static_cast<std::size_t>(field)]);
  if (!digits) return false;
  const std::size_t former = numbers.size();
  numbers.resize(former + rows.size() - static_cast<std::size_t>(index));
  const std::span<double> added = std::span(numbers).subspan(former);
  if (keptPlaces.empty()) {
    return digits->readEach(keptRecord(index), static_cast<std::size_t>(table.recordLength()), added);
  }
  for (long row = index; row < size(); ++row) {
    if (!digits->read(keptRecord(row), added[static_cast<std::size_t>(row - index)])) return false;
  }
  return true;
}

void Recordset::Implementation::addNumbers(std::size_t first, std::size_t second, NumberPairs& pairs) {
  if (index < 0) throw noCurrentRecord();
  if (!hasCurrent()) return;
  const std::size_t former = pairs.firsts.size();
  const bool hasRoom = rows.size() - static_cast<std::size_t>(index) <= pairs.most - std::min(pairs.most, former);
  if (hasRoom && addKept(first, pairs.firsts) && addKept(second, pairs.seconds)) {
    index = reached = size();
    return;
  }
  pairs.firsts.resize(former);
  pairs.seconds.resize(former);
  for (; index < size() && pairs.firsts.size() < pairs.most; moveNext()) {
    const Value left = value(first);
    const Value right = value(second);
    if (left.isNull() || right.isNull()) continue;
    const double number = left.asNumber();
    pairs.seconds.push_back(right.asNumber());
    pairs.firsts.push_back(number);
  }
}

}  // namespace vantrelix
