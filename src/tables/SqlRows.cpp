#include "tables/SqlRows.h"

#include <algorithm>
#include <functional>
#include <numeric>

namespace vantrelix {

namespace {

std::vector<bool> directions(const std::vector<SqlOrder>& order) {
  std::vector<bool> descending;
  descending.reserve(order.size());
  for (const SqlOrder& term : order) descending.push_back(term.descending);
  return descending;
}

}  // namespace

RowCollector::RowCollector(DbfFile& table, const std::vector<SqlOrder>& order, std::size_t mostKept)
    : row_(table),
      length_(static_cast<std::size_t>(table.recordLength())),
      mostKept_(mostKept),
      keys_(directions(order)) {
  rows_.kept = mostKept > 0;
  for (const SqlOrder& wanted : order) {
    Term term{&wanted.expression, wanted.descending, -1, std::nullopt, std::nullopt};
    if (wanted.expression.kind == SqlKind::field) {
      const DbfField& field = table.fields()[static_cast<std::size_t>(wanted.expression.field)];
      term.field = wanted.expression.field;
      term.digits = dbf::DigitsField::of(field);
      term.text = dbf::TextField::of(field, table.fields());
    }
    terms_.push_back(term);
  }
}

void RowCollector::reserve(std::size_t rows) {
  rows_.numbers.reserve(rows);
  if (!rows_.kept) keys_.reserve(rows);
  if (rows_.kept && rows <= mostKept_ / length_) rows_.records.reserve(rows * length_);
}

void RowCollector::add(std::uint32_t first, const unsigned char* records, std::uint32_t count) {
  rows_.numbers.resize(rows_.numbers.size() + count);
  std::iota(rows_.numbers.end() - count, rows_.numbers.end(), first);
  const unsigned char* const end = records + count * length_;
  if (rows_.kept && rows_.records.size() + count * length_ <= mostKept_) {
    rows_.records.insert(rows_.records.end(), records, end);
    return;
  }
  for (; records != end; records += length_) {
    if (rows_.kept) {
      keep(records);
    } else {
      addKeys(records);
    }
  }
}

void RowCollector::keep(const unsigned char* record) {
  if (rows_.records.size() + length_ <= mostKept_) {
    rows_.records.insert(rows_.records.end(), record, record + length_);
    return;
  }
  addKeysOfKept();
  addKeys(record);
  rows_.kept = false;
  rows_.records = {};
}

void RowCollector::addKeysOfKept() {
  keys_.reserve(rows_.numbers.size());
  for (std::size_t at = 0; at < rows_.records.size(); at += length_) addKeys(rows_.records.data() + at);
}

// Whether rows that are kept, as the points of an antenna mostly are, stand in their order by one number already.
bool RowCollector::standInOrder() {
  if (!rows_.kept || terms_.size() != 1 || !terms_.front().digits) return false;
  const Term& term = terms_.front();
  std::vector<double> found(rows_.numbers.size());
  if (!term.digits->readEach(rows_.records.data(), length_, found)) return false;
  const bool inOrder = term.descending ? std::is_sorted(found.begin(), found.end(), std::greater<>())
                                       : std::is_sorted(found.begin(), found.end());
  if (!inOrder) return false;
  rows_.numbersOf = term.field;
  rows_.orderNumbers = std::move(found);
  return true;
}

void RowCollector::addKey(const Term& term, const unsigned char* record) {
  if (term.digits) {
    double number = 0;
    return term.digits->read(record, number) ? keys_.addNumber(number) : keys_.addNull();
  }
  std::string_view text;
  if (term.text && term.text->read(record, text)) return text.empty() ? keys_.addNull() : keys_.addAscii(text);
  row_.show(record);
  keys_.add(evaluate(*term.expression, row_));
}

SqlRows RowCollector::take() {
  if (terms_.empty() || standInOrder()) return std::move(rows_);
  if (rows_.kept) addKeysOfKept();
  if (keys_.inOrder()) return std::move(rows_);
  SqlRows sorted;
  std::vector<std::uint32_t> places = keys_.order();
  sorted.numbers.reserve(places.size());
  for (const std::uint32_t place : places) sorted.numbers.push_back(rows_.numbers[place]);
  sorted.kept = rows_.kept;
  if (sorted.kept) {
    sorted.records = std::move(rows_.records);
    sorted.places = std::move(places);
  }
  rows_ = {};
  return sorted;
}

}  // namespace vantrelix
