#include "ui/GridRows.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "foundation/text.h"

namespace vantrelix {

namespace {

// The value as it sorts: its kind first, then by number or by folded text.
using SortKey = std::tuple<int, double, std::string>;

SortKey sortKey(const Value& value) {
  if (value.isNull()) return {0, 0, ""};
  if (value.isText()) return {2, 0, upperCase(value.text())};
  return {1, value.asNumber(), ""};
}

}  // namespace

bool FieldOrder::operator()(const std::string& a, const std::string& b) const { return upperCase(a) < upperCase(b); }

bool GridRows::sort(const std::string&, bool) { return false; }

ArrayRows::ArrayRows(std::vector<std::string> fields) : fields_(std::move(fields)) {}

int ArrayRows::fieldAt(const std::string& field) const {
  const auto found = std::find_if(fields_.begin(), fields_.end(),
                                  [&](const std::string& own) { return equalIgnoringCase(own, field); });
  return found == fields_.end() ? -1 : static_cast<int>(found - fields_.begin());
}

void ArrayRows::insert(int before, Row values) {
  values.resize(fields_.size());
  const int at = std::clamp(before, 0, count());
  if (at < count()) {
    places_.clear();
  } else if (!places_.empty()) {
    places_.emplace(std::to_string(lastId_ + 1), at);
  }
  rows_.insert(rows_.begin() + at, Held{++lastId_, std::move(values)});
}

void ArrayRows::clear() {
  rows_.clear();
  places_.clear();
}

std::string ArrayRows::bookmark(int row) const { return std::to_string(rows_.at(static_cast<std::size_t>(row)).id); }

int ArrayRows::rowOf(const std::string& bookmark) const {
  if (places_.empty()) {
    for (int row = 0; row < count(); ++row) places_.emplace(this->bookmark(row), row);
  }
  const auto found = places_.find(bookmark);
  return found == places_.end() ? -1 : found->second;
}

Value ArrayRows::value(int row, const std::string& field) const {
  const int at = fieldAt(field);
  return at < 0 ? Value() : this->row(row)[static_cast<std::size_t>(at)];
}

void ArrayRows::store(int row, const GridFields& fields) {
  Row& values = rows_.at(static_cast<std::size_t>(row)).values;
  for (const auto& [field, value] : fields) {
    if (const int at = fieldAt(field); at >= 0) values[static_cast<std::size_t>(at)] = value;
  }
}

int ArrayRows::append(const GridFields& fields) {
  add({});
  store(count() - 1, fields);
  return count() - 1;
}

void ArrayRows::remove(int row) {
  rows_.erase(rows_.begin() + row);
  places_.clear();
}

bool ArrayRows::sort(const std::string& field, bool ascending) {
  const int at = fieldAt(field);
  if (at < 0) return false;
  std::vector<std::pair<SortKey, Held>> keyed;
  keyed.reserve(rows_.size());
  for (Held& held : rows_) {
    SortKey key = sortKey(held.values[static_cast<std::size_t>(at)]);
    keyed.emplace_back(std::move(key), std::move(held));
  }
  std::stable_sort(keyed.begin(), keyed.end(), [ascending](const auto& a, const auto& b) {
    return ascending ? a.first < b.first : b.first < a.first;
  });
  std::transform(keyed.begin(), keyed.end(), rows_.begin(), [](auto& pair) { return std::move(pair.second); });
  places_.clear();
  return true;
}

}  // namespace vantrelix
