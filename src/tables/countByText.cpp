#include "tables/countByText.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <utility>

#include "foundation/extract.h"
#include "foundation/text.h"
#include "platform/RunTimeFailure.h"
#include "tables/dbfNumber.h"
#include "tables/sameBytes.h"
#include "tables/scanInParts.h"

namespace vantrelix {

namespace {

std::size_t fieldOf(const DbfFile& table, std::string_view name) {
  const int index = table.fieldIndex(name);
  if (index >= 0) return static_cast<std::size_t>(index);
  throw RunTimeFailure(failure::noSuchField, "The table " + displayPath(table.path()) + " has no field " +
                                                 std::string(name) + "; repair the table to add it");
}

// Whether a field of a record is null; of a number field its digits tell it.
class NullTest {
 public:
  NullTest(DbfFile& table, std::size_t field)
      : table_(table), field_(field), digits_(dbf::DigitsField::of(table.fields()[field])) {}

  bool isNull(const unsigned char* record) const {
    double number = 0;
    return digits_ ? !digits_->read(record, number) : table_.value(record, field_).isNull();
  }
  // Whether the record's bytes alone tell it, so that any thread may ask.
  bool readsBytesAlone() const { return digits_.has_value(); }

 private:
  DbfFile& table_;
  std::size_t field_;
  std::optional<dbf::DigitsField> digits_;
};

// Rows of a block, one after the other among those that count, whose text is the same by the field's bytes: the first
// of them, and how many they are.
struct Alike {
  const unsigned char* record;
  long count;
};

class Counter {
 public:
  Counter(DbfFile& table, std::size_t field, const std::vector<NullTest>& tests)
      : table_(table),
        field_(field),
        offset_(static_cast<std::size_t>(table.fields()[field].offset)),
        width_(static_cast<std::size_t>(table.fields()[field].width)),
        length_(static_cast<std::size_t>(table.recordLength())),
        hasFlags_(table.fields()[field].nullBit >= 0 || table.fields()[field].lengthBit >= 0),
        tests_(tests) {}

  void look(const RowBlock& rows, std::vector<Alike>& found) const {
    found.clear();
    const unsigned char* const end = rows.bytes + rows.count * length_;
    for (const unsigned char* record = rows.bytes; record != end; record += length_) {
      if (!counts(record)) continue;
      const bool goesOn =
          !found.empty() && !hasFlags_ && sameBytes(found.back().record + offset_, record + offset_, width_);
      if (!goesOn) found.push_back({record, 0});
      ++found.back().count;
    }
  }

  void join(const std::vector<Alike>& found) {
    for (const Alike& rows : found) {
      const Value value = table_.value(rows.record, field_);
      counts_[value.isNull() ? std::string() : trimRight(value.asText())] += rows.count;
    }
  }

  TextCounts take() { return std::move(counts_); }

 private:
  bool counts(const unsigned char* record) const {
    return record[0] != '*' &&
           std::none_of(tests_.begin(), tests_.end(), [&](const NullTest& test) { return test.isNull(record); });
  }

  DbfFile& table_;
  std::size_t field_;
  std::size_t offset_;
  std::size_t width_;
  std::size_t length_;
  bool hasFlags_;  // which decide the text with its bytes
  const std::vector<NullTest>& tests_;
  TextCounts counts_;
};

}  // namespace

TextCounts countByText(DbfFile& table, std::string_view text, const std::vector<std::string_view>& present) {
  const std::size_t field = fieldOf(table, text);
  std::vector<NullTest> tests;
  tests.reserve(present.size());
  for (const std::string_view name : present) tests.emplace_back(table, fieldOf(table, name));
  const bool inAnyThread = std::all_of(tests.begin(), tests.end(), std::mem_fn(&NullTest::readsBytesAlone));
  Counter counter(table, field, tests);
  using Found = std::vector<Alike>;
  const auto look = [&](const RowBlock& rows, Found& found) {
    if (inAnyThread) counter.look(rows, found);
  };
  const auto join = [&](const RowBlock& rows, Found& found) {
    if (!inAnyThread) counter.look(rows, found);
    counter.join(found);
    return true;
  };
  scanInParts(table, Found(), look, join);
  return counter.take();
}

}  // namespace vantrelix
