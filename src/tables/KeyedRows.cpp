#include "tables/KeyedRows.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <numeric>
#include <span>

#include "foundation/extract.h"
#include "foundation/text.h"
#include "platform/RunTimeFailure.h"
#include "tables/DbfFile.h"
#include "tables/TextEquality.h"
#include "tables/TextRuns.h"
#include "tables/dbfNumber.h"

namespace vantrelix {

namespace {

// More bytes of rows than this are left to a query, which need not keep them.
constexpr std::size_t kMostKept = std::size_t{16} << 20;

// Whether the name between brackets is the same name to a query.
bool isPlainName(std::string_view name) {
  const auto isPlain = [](char c) { return c > ' ' && c != '[' && c != ']' && c != '\\' && c != '/' && c != '\x7F'; };
  return !name.empty() && std::all_of(name.begin(), name.end(), isPlain);
}

std::string queryOf(const Database& database, const KeyedRows::Key& key) {
  std::string sql = "Select * from " + TableTokenFromParts(database.folder(), key.table, ".DBF");
  sql += " WHERE " + key.field + " = '" + replaceAll(key.text, "'", "''") + "'";
  if (!key.orderedBy.empty()) sql += " ORDER BY " + key.orderedBy;
  return sql;
}

// Without a branch for each of them: they mostly are.
bool isAscending(const std::vector<double>& numbers) {
  bool falls = false;
  for (std::size_t i = 1; i < numbers.size(); ++i) falls = falls | (numbers[i] < numbers[i - 1]);
  return !falls;
}

struct Records {
  const unsigned char* bytes;
  std::size_t length;  // of each
  std::uint32_t count;
};

// Calls `take` with the bytes of live records that have the text, as many at a time as stand behind one another.
template <class Take>
void forEachMatch(const TextEquality& wanted, const Records& records, const Take& take) {
  for (std::uint32_t row = 0; row < records.count;) {
    const unsigned char* const first = records.bytes + row * records.length;
    ++row;
    if (first[0] == '*' || !wanted.matches(first)) continue;
    row = wanted.endOfAlike(first, records.length, row, records.count);
    take(first, static_cast<std::size_t>(records.bytes + row * records.length - first));
  }
}

RunTimeFailure noSuchField(std::string_view name, const DbfFile& table) {
  return {failure::noSuchField, "There is no field '" + std::string(name) + "' in the rows of table '" +
                                    displayPath(table.path()) + "'. Check its name."};
}

}  // namespace

KeyedRows::KeyedRows(Database& database, const Key& key) {
  try {
    if (isPlainName(key.table) && read(database, key)) return;
  } catch (const RunTimeFailure&) {
    // The query tells it in its own words, or finds that it has passed.
  }
  close();
  query_ = database.OpenRecordset(queryOf(database, key), RecordsetType::snapshot);
}

// False where a query is to do it.
bool KeyedRows::read(Database& database, const Key& key) {
  table_ = database.openKnown(key.table);
  if (table_ && readRows(key, Proven::behindReads) && table_->isAsOpened()) return true;
  close();
  table_ = database.openToRead(key.table);
  return readRows(key, Proven::byOpening);
}

bool KeyedRows::readRows(const Key& key, Proven isProven) {
  const int field = table_->fieldIndex(key.field);
  if (field < 0) return false;
  const auto wanted = TextEquality::of(table_->fields()[static_cast<std::size_t>(field)], key.text, false);
  if (!wanted || !wanted->isPossible()) return false;
  if (!gatherKnown(*wanted)) {
    // All rows are walked by the header, and where they stand is remembered: it has to be this file's.
    if (isProven == Proven::behindReads && !table_->isAsOpened()) return false;
    if (!gather(*wanted)) return false;
  }
  return key.orderedBy.empty() || readOrder(key);
}

// False where the rows are too many.
bool KeyedRows::gather(const TextEquality& wanted) {
  noteOpening(*table_);
  std::vector<unsigned char> rows;
  const auto length = static_cast<std::size_t>(table_->recordLength());
  const auto keep = [&](std::uint32_t, const unsigned char* records, std::uint32_t count) {
    forEachMatch(wanted, {records, length, count},
                 [&](const unsigned char* first, std::size_t size) { rows.insert(rows.end(), first, first + size); });
    return rows.size() <= kMostKept;
  };
  scanBlocksForText(*table_, wanted.sought(), std::ref(keep));
  if (rows.size() > kMostKept) return false;
  rows_ = Rows(rows.size());
  std::copy(rows.begin(), rows.end(), rows_.bytes.get());
  return true;
}

// The same of rows that are known to be the only ones in question. False where none are known, or not any more.
bool KeyedRows::gatherKnown(const TextEquality& wanted) {
  const auto runs = runsAtRest(*table_, wanted.sought());
  if (!runs) return false;
  const auto length = static_cast<std::size_t>(table_->recordLength());
  std::uint64_t count = 0;
  for (const RowRun& run : *runs) count += run.count;
  if (count * length > kMostKept) return false;
  rows_ = Rows(static_cast<std::size_t>(count) * length);
  unsigned char* end = rows_.bytes.get();
  for (const RowRun& run : *runs) {
    if (table_->readRecords(run.first, run.count, end) < run.count || !table_->lastRest()) return false;
    end += run.count * length;
  }
  if (!table_->isAsOpened()) return false;
  unsigned char* kept = rows_.bytes.get();
  forEachMatch(wanted, {kept, length, static_cast<std::uint32_t>(count)},
               [&](const unsigned char* first, std::size_t size) {
                 if (first != kept) std::memmove(kept, first, size);
                 kept += size;
               });
  rows_.size = static_cast<std::size_t>(kept - rows_.bytes.get());
  return true;
}

// Puts the rows in the order of a number field. False where their bytes do not tell its numbers.
bool KeyedRows::readOrder(const Key& key) {
  const int field = table_->fieldIndex(key.orderedBy);
  if (field < 0 || !addAll(static_cast<std::size_t>(field), orderNumbers_)) return false;
  orderField_ = field;
  if (!isAscending(orderNumbers_)) sortRows();
  return true;
}

// Rows of one number stay in the order of the file.
void KeyedRows::sortRows() {
  std::vector<std::uint32_t> places(orderNumbers_.size());
  std::iota(places.begin(), places.end(), 0U);
  std::stable_sort(places.begin(), places.end(),
                   [&](std::uint32_t a, std::uint32_t b) { return orderNumbers_[a] < orderNumbers_[b]; });
  const auto length = static_cast<std::size_t>(table_->recordLength());
  Rows rows(rows_.size);
  std::vector<double> numbers;
  numbers.reserve(places.size());
  unsigned char* end = rows.bytes.get();
  for (const std::uint32_t place : places) {
    end = std::copy_n(rows_.bytes.get() + place * length, length, end);
    numbers.push_back(orderNumbers_[place]);
  }
  rows_ = std::move(rows);
  orderNumbers_ = std::move(numbers);
}

std::size_t KeyedRows::rowCount() const { return rows_.size / static_cast<std::size_t>(table_->recordLength()); }

// False, and what was added is of no meaning, where the bytes of a row do not tell its number. The numbers of the order
// are handed over once; who asks again has them read again.
bool KeyedRows::addAll(std::size_t field, std::vector<double>& numbers) {
  if (static_cast<int>(field) == orderField_ && numbers.empty()) {
    numbers = std::move(orderNumbers_);
    orderField_ = -1;
    return true;
  }
  const auto digits = dbf::DigitsField::of(table_->fields()[field]);
  if (!digits) return false;
  const std::size_t before = numbers.size();
  numbers.resize(before + rowCount());
  return digits->readEach(rows_.bytes.get(), static_cast<std::size_t>(table_->recordLength()),
                          std::span(numbers).subspan(before));
}

void KeyedRows::requireOpen() const {
  if (!table_) throw RunTimeFailure(failure::objectNotSet, "The cursor is closed. Open it again.");
}

bool KeyedRows::empty() const {
  if (query_) return query_->rowCount() == 0;
  requireOpen();
  return rows_.size == 0;
}

std::size_t KeyedRows::fieldNumber(std::string_view name) const {
  const int field = table_->fieldIndex(name);
  if (field < 0) throw noSuchField(name, *table_);
  return static_cast<std::size_t>(field);
}

Value KeyedRows::value(std::string_view field) {
  if (query_) return query_->valueAt(0, field);
  requireOpen();
  const std::size_t number = fieldNumber(field);
  if (rows_.size > 0) return table_->value(rows_.bytes.get(), number);
  throw RunTimeFailure(failure::noCurrentRecord, "There is no current record. Move to a row first.");
}

void KeyedRows::addNumbers(std::string_view first, std::string_view second, NumberPairs& pairs) {
  if (query_) {
    if (query_->rowCount() > 0) query_->MoveFirst();
    return query_->addNumbers(query_->Fields(first), query_->Fields(second), pairs);
  }
  requireOpen();
  const std::size_t left = fieldNumber(first);
  const std::size_t right = fieldNumber(second);
  const std::size_t before = pairs.firsts.size();
  const bool hasRoom = rowCount() <= pairs.most - std::min(pairs.most, before);
  if (hasRoom && addAll(left, pairs.firsts) && addAll(right, pairs.seconds)) return;
  pairs.firsts.resize(before);
  pairs.seconds.resize(before);
  const auto length = static_cast<std::size_t>(table_->recordLength());
  for (std::size_t at = 0; at < rows_.size && pairs.firsts.size() < pairs.most; at += length) {
    const Value one = table_->value(rows_.bytes.get() + at, left);
    const Value other = table_->value(rows_.bytes.get() + at, right);
    if (one.isNull() || other.isNull()) continue;
    const double number = one.asNumber();
    pairs.seconds.push_back(other.asNumber());
    pairs.firsts.push_back(number);
  }
}

void KeyedRows::close() {
  table_.reset();
  query_.reset();
  rows_ = {};
  orderNumbers_.clear();
  orderField_ = -1;
}

}  // namespace vantrelix
