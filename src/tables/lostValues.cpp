#include "tables/lostValues.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "tables/SqlCompare.h"
#include "tables/fieldBytes.h"

namespace vantrelix {

namespace {

using namespace std::literals;

// A field of the old table and the one that got its values.
struct Carried {
  std::size_t from;
  std::size_t to;
  LostValues lost;
};

bool isText(const DbfField& field) { return field.type == 'C' || field.type == 'V'; }

std::vector<Carried> carriedFields(const DbfFile& old, const DbfFile& made, const FieldList& fields) {
  std::vector<Carried> found;
  for (const FieldDescription& field : fields) {
    const int from = old.fieldIndex(field.Name);
    const int to = made.fieldIndex(field.Name);
    if (from < 0 || to < 0) continue;
    const auto fromIndex = static_cast<std::size_t>(from);
    const auto toIndex = static_cast<std::size_t>(to);
    if (isText(old.fields()[fromIndex]) && isText(made.fields()[toIndex])) continue;
    found.push_back({fromIndex, toIndex, {field.Name, 0}});
  }
  return found;
}

dbf::FieldContext flagsOf(const DbfFile& table) {
  dbf::FieldContext context;
  for (const DbfField& field : table.fields()) {
    if (field.system && field.type == '0') context.nullFlagsOffset = field.offset;
  }
  return context;
}

// Bytes of a field without a value: whether they are more than what programs put there for nothing, such as "  /  /  ".
bool holdsSomething(const unsigned char* record, const DbfField& field, const dbf::FieldContext& flags) {
  if (field.width == 0 || dbf::isNullByFlag(record, field, flags)) return false;
  const bool written = "NFDL"sv.find(field.type) != std::string_view::npos;
  return dbf::bytesOf(record, field).find_first_not_of(written ? "\0 .-/0?"sv : "\0 "sv) != std::string_view::npos;
}

std::optional<double> numberIn(const Value& value) {
  if (value.isNumber()) return value.number();
  return value.isText() ? sqlNumber(value.text()) : std::nullopt;
}

// Whether the value that came of another one says less than that. What cannot become a value of the new field's type
// keeps a repair from being done.
bool saysLess(const Value& after, const Value& before) {
  if (before.isDate() && after.isDate()) return before != after;
  const std::optional<double> number = numberIn(before);
  if (!number) return false;
  if (after.isBoolean()) return *number != 0 && std::abs(*number) != 1;
  return numberIn(after) != number;
}

class Comparison {
 public:
  Comparison(DbfFile& old, DbfFile& made, std::vector<Carried>& carried)
      : old_(old), made_(made), carried_(carried), flags_(flagsOf(old)) {}

  void run() {
    const auto length = static_cast<std::size_t>(old_.recordLength());
    old_.scanBlocks([&](std::uint32_t, const unsigned char* records, std::uint32_t count) {
      live_.clear();
      for (std::uint32_t row = 0; row < count; ++row) {
        if (records[row * length] != '*') live_.push_back(records + row * length);
      }
      return compareLive();
    });
  }

 private:
  // False where the new table has no more rows.
  bool compareLive() {
    const auto length = static_cast<std::size_t>(made_.recordLength());
    const auto count = static_cast<std::uint32_t>(live_.size());
    copies_.resize(live_.size() * length);
    const std::uint32_t got = count == 0 ? 0 : made_.readRecords(next_, count, copies_.data());
    for (std::uint32_t row = 0; row < got; ++row) compare(live_[row], copies_.data() + row * length);
    next_ += got;
    return got == count;
  }

  void compare(const unsigned char* before, const unsigned char* after) {
    for (Carried& field : carried_) {
      const Value value = old_.value(before, field.from);
      const bool lost = value.isNull() ? holdsSomething(before, old_.fields()[field.from], flags_)
                                       : saysLess(made_.value(after, field.to), value);
      if (lost) ++field.lost.rows;
    }
  }

  DbfFile& old_;
  DbfFile& made_;
  std::vector<Carried>& carried_;
  const dbf::FieldContext flags_;
  std::vector<const unsigned char*> live_;  // rows of one read
  std::vector<unsigned char> copies_;       // and what was made of them
  std::uint32_t next_ = 0;
};

}  // namespace

std::vector<LostValues> lostValues(DbfFile& old, DbfFile& made, const FieldList& fields) {
  std::vector<Carried> carried = carriedFields(old, made, fields);
  if (carried.empty()) return {};
  Comparison(old, made, carried).run();
  std::vector<LostValues> found;
  for (const Carried& field : carried) {
    if (field.lost.rows > 0) found.push_back(field.lost);
  }
  return found;
}

std::string listOf(const std::vector<LostValues>& lost) {
  std::string list;
  for (const LostValues& field : lost) {
    if (!list.empty()) list += ", ";
    list += field.field;
    list += " in ";
    list += std::to_string(field.rows);
    list += field.rows == 1 ? " row" : " rows";
  }
  return list;
}

}  // namespace vantrelix
