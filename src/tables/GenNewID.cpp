#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>

#include "foundation/errHand.h"
#include "foundation/numbers.h"
#include "foundation/procedures.h"
#include "foundation/text.h"
#include "tables/ColumnScan.h"
#include "tables/structure.h"

namespace vantrelix {

namespace {

// Behind this a double no longer tells one whole number from the next.
constexpr double kLargestNumber = 9007199254740991.0;

class NewId {
 public:
  NewId(Recordset& cursor, const std::string& field, const std::string& prefix, const std::string& start)
      : cursor_(cursor),
        field_(cursor.Fields(field)),
        column_(cursor, field),
        prefix_(trim(prefix)),
        prefixLength_(characterCount(prefix_)),
        start_(CValP(start)) {}

  std::string make();

 private:
  bool isNumberField() const { return field_.Type() != FieldType::text && field_.Type() != FieldType::memo; }
  std::string text(double number) const;
  double firstCandidate();
  double lastRowsLimit(double candidate);
  std::optional<double> numberIn(const unsigned char* record) const;
  std::vector<double> numbersAbove(double limit) const;

  Recordset& cursor_;
  Field field_;
  ColumnScan column_;
  std::string prefix_;
  std::size_t prefixLength_;
  double start_;
};

std::string NewId::text(double number) const {
  const auto size = static_cast<std::size_t>(std::max(0, field_.Size()));
  const std::size_t width = size > prefixLength_ ? size - prefixLength_ : 0;
  std::string digits = std::to_string(static_cast<std::int64_t>(std::clamp(number, 0.0, kLargestNumber)));
  if (digits.size() > width) {
    throw RunTimeFailure(failure::fieldTooSmall, "The field " + field_.Name() + " of " + std::to_string(size) +
                                                     " characters has no room for the next ID, " + prefix_ + digits +
                                                     ". Use another library or a shorter prefix.");
  }
  return prefix_ + std::string(width - digits.size(), '0') + digits;
}

double NewId::lastRowsLimit(double candidate) {
  const Value last = field_.value();
  return last.isNull() ? candidate : std::min(candidate, CValP(last));
}

double NewId::firstCandidate() {
  cursor_.MoveLast();
  const double candidate = std::max(static_cast<double>(cursor_.RecordCount()), std::floor(start_));
  return isNumberField() ? lastRowsLimit(candidate) : candidate;
}

// Digits and nothing else, as nearly every ID has them, up to a length that a double holds; the text's blanks at its
// end do not count.
std::optional<double> plainDigits(const unsigned char* begin, const unsigned char* end) {
  constexpr std::ptrdiff_t kDigits = 15;
  while (end != begin && end[-1] == ' ') --end;
  if (end == begin || end - begin > kDigits) return std::nullopt;
  std::int64_t number = 0;
  for (; begin != end; ++begin) {
    if (*begin < '0' || *begin > '9') return std::nullopt;
    number = number * 10 + (*begin - '0');
  }
  return static_cast<double>(number);
}

bool isAscii(const unsigned char* begin, const unsigned char* end) {
  return std::all_of(begin, end, [](unsigned char byte) { return byte < 0x80; });
}

// The number that a row's ID takes away from new ones.
std::optional<double> NewId::numberIn(const unsigned char* record) const {
  const DbfField& stored = column_.field();
  const unsigned char* begin = record + stored.offset;
  const unsigned char* end = begin + stored.width;
  if (stored.type == 'C' && stored.nullBit < 0 && prefixLength_ < static_cast<std::size_t>(stored.width) &&
      isAscii(begin, begin + prefixLength_)) {
    const std::optional<double> digits = plainDigits(begin + prefixLength_, end);
    if (digits) return digits;
  }
  const Value value = column_.value(record);
  if (value.isNull()) return std::nullopt;
  if (value.isNumber() && prefixLength_ == 0) return value.number();
  const std::string id = value.asText();
  return plainNumber(prefixLength_ == 0 ? id : midCharacters(id, prefixLength_ + 1));
}

// In ascending order. One pass gathers what a scan per candidate would find again and again.
std::vector<double> NewId::numbersAbove(double limit) const {
  std::vector<double> numbers;
  column_.run([&](const unsigned char* record) {
    const std::optional<double> number = numberIn(record);
    if (number && *number > limit) numbers.push_back(*number);
  });
  std::sort(numbers.begin(), numbers.end());
  return numbers;
}

std::string NewId::make() {
  if (cursor_.RecordCount() == 0) return text(roundHalfEven(start_));
  SetFlag(200);
  double candidate = firstCandidate();
  SetFlag(300);
  const std::vector<double> used = numbersAbove(candidate);
  SetFlag(400);
  for (auto next = used.begin();;) {
    ++candidate;
    next = std::lower_bound(next, used.end(), candidate);
    if (next != used.end() && *next == candidate) continue;
    std::string id = text(candidate);
    cursor_.FindFirst(field_.Name() + " = '" + id + "'");
    if (cursor_.NoMatch()) return id;
  }
}

}  // namespace

std::string GenNewID_RS(Recordset& cursor, const std::string& field, const std::string& prefix,
                        const std::string& start) {
  Procedure guard(procedure::GenNewID_RS);
  SetFlag(100);
  std::string id = NewId(cursor, field, prefix, start).make();
  // A search without a match leaves the row undefined.
  if (cursor.RecordCount() > 0) cursor.MoveLast();
  return id;
}

}  // namespace vantrelix
