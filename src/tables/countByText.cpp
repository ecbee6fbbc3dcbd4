#include "tables/countByText.h"

#include <algorithm>
#include <cstring>
#include <optional>

#include "foundation/extract.h"
#include "foundation/text.h"
#include "platform/RunTimeFailure.h"
#include "tables/dbfNumber.h"

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

 private:
  DbfFile& table_;
  std::size_t field_;
  std::optional<dbf::DigitsField> digits_;
};

}  // namespace

// Rows of one text mostly stand together, so that the counter of the row before is tried first.
TextCounts countByText(DbfFile& table, std::string_view text, const std::vector<std::string_view>& present) {
  const std::size_t textField = fieldOf(table, text);
  std::vector<NullTest> tests;
  tests.reserve(present.size());
  for (const std::string_view name : present) tests.emplace_back(table, fieldOf(table, name));
  const auto offset = static_cast<std::size_t>(table.fields()[textField].offset);
  const auto width = static_cast<std::size_t>(table.fields()[textField].width);
  const auto length = static_cast<std::size_t>(table.recordLength());
  TextCounts counts;
  std::vector<unsigned char> last;
  long* counter = nullptr;
  table.scanBlocks([&](std::uint32_t, const unsigned char* record, std::uint32_t rows) {
    for (; rows > 0; --rows, record += length) {
      if (record[0] == '*') continue;
      if (std::any_of(tests.begin(), tests.end(), [&](const NullTest& test) { return test.isNull(record); })) continue;
      const unsigned char* const bytes = record + offset;
      if (counter == nullptr || std::memcmp(bytes, last.data(), width) != 0) {
        const Value value = table.value(record, textField);
        counter = &counts[value.isNull() ? std::string() : trimRight(value.asText())];
        last.assign(bytes, bytes + width);
      }
      ++*counter;
    }
    return true;
  });
  return counts;
}

}  // namespace vantrelix
