#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "foundation/errHand.h"
#include "foundation/numbers.h"
#include "foundation/procedures.h"
#include "foundation/text.h"
#include "tables/ColumnScan.h"
#include "tables/RememberedTable.h"
#include "tables/structure.h"

namespace vantrelix {

namespace {

// Behind this a double no longer tells one whole number from the next.
constexpr double kLargestNumber = 9007199254740991.0;

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

// A field of IDs that begin with a prefix of so many characters.
struct IdField {
  std::size_t field;
  std::size_t prefixLength;

  // The number that a row's ID takes away from new ones.
  std::optional<double> numberIn(DbfFile& table, const unsigned char* record) const;
};

std::optional<double> IdField::numberIn(DbfFile& table, const unsigned char* record) const {
  if (*record == '*') return std::nullopt;
  const DbfField& stored = table.fields()[field];
  const unsigned char* begin = record + stored.offset;
  const unsigned char* end = begin + stored.width;
  if (stored.type == 'C' && stored.nullBit < 0 && prefixLength < static_cast<std::size_t>(stored.width) &&
      isAscii(begin, begin + prefixLength)) {
    const std::optional<double> digits = plainDigits(begin + prefixLength, end);
    if (digits) return digits;
  }
  const Value value = table.value(record, field);
  if (value.isNull()) return std::nullopt;
  if (value.isNumber() && prefixLength == 0) return value.number();
  const std::string id = value.asText();
  return plainNumber(prefixLength == 0 ? id : midCharacters(id, prefixLength + 1));
}

// The numbers above a limit that the rows of a table take away. Remembered, so that the next ID of a table to which
// this process alone adds rows costs no run over it.
class UsedNumbers : public RowNotes {
 public:
  // `numbers`: all above the limit.
  UsedNumbers(IdField ids, double limit, std::vector<double> numbers)
      : ids_(ids), limit_(limit), numbers_(std::move(numbers)), searchedFrom_(limit), free_(limit + 1) {
    std::sort(numbers_.begin(), numbers_.end());
  }

  void add(double number) {
    const bool isLast = numbers_.empty() || numbers_.back() <= number;
    numbers_.insert(isLast ? numbers_.end() : std::upper_bound(numbers_.begin(), numbers_.end(), number), number);
  }

  bool tellsAbove(double limit) const { return limit >= limit_; }

  // The first of limit + 1, limit + 2 and so on that is free. Only whole steps are searched once for all: what was used
  // stays so.
  double freeAbove(double limit) {
    const bool goesOn = limit >= searchedFrom_ && limit < free_ && std::floor(limit) == limit;
    double next = goesOn ? free_ : limit + 1;
    while (std::binary_search(numbers_.begin(), numbers_.end(), next)) ++next;
    if (std::floor(limit) == limit) {
      searchedFrom_ = limit;
      free_ = next;
    }
    return next;
  }

  bool rowsAdded(DbfFile& table, std::uint32_t /*first*/, const unsigned char* records, std::uint32_t count) override {
    const auto length = static_cast<std::size_t>(table.recordLength());
    for (std::uint32_t row = 0; row < count; ++row) {
      const std::optional<double> number = ids_.numberIn(table, records + row * length);
      if (number && *number > limit_) add(*number);
    }
    return numbers_.size() <= kMostNumbers;
  }

  bool rowChanged(DbfFile& table, std::uint32_t /*number*/, const unsigned char* before,
                  const unsigned char* after) override {
    return ids_.numberIn(table, before) == ids_.numberIn(table, after);
  }

 private:
  static constexpr std::size_t kMostNumbers = std::size_t{1} << 18;

  IdField ids_;
  double limit_;
  std::vector<double> numbers_;  // ascending
  double searchedFrom_;          // all between this and free_ are used
  double free_;
};

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
  std::string notesName() const {
    return "numbers at " + std::to_string(column_.field().offset) + " behind " + prefix_;
  }
  std::vector<double> numbersAbove(IdField ids, double limit) const;
  std::string search(UsedNumbers& used, double limit);

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

// An empty cursor's table may have got rows of others since it was opened.
double NewId::firstCandidate() {
  if (cursor_.RecordCount() == 0) return roundHalfEven(start_) - 1;
  cursor_.MoveLast();
  const double candidate = std::max(static_cast<double>(cursor_.RecordCount()), std::floor(start_));
  return isNumberField() ? lastRowsLimit(candidate) : candidate;
}

// One pass gathers what a scan per candidate would find again and again.
std::vector<double> NewId::numbersAbove(IdField ids, double limit) const {
  std::vector<double> numbers;
  column_.run([&](const unsigned char* record) {
    const std::optional<double> number = ids.numberIn(column_.table(), record);
    if (number && *number > limit) numbers.push_back(*number);
  });
  return numbers;
}

// The first free number whose ID the cursor does not find either.
std::string NewId::search(UsedNumbers& used, double limit) {
  for (;;) {
    const double number = used.freeAbove(limit);
    std::string id = text(number);
    cursor_.FindFirst(field_.Name() + " = '" + id + "'");
    if (cursor_.NoMatch()) return id;
    used.add(number);
  }
}

std::string NewId::make() {
  if (column_.table().recordCount() == 0) return text(roundHalfEven(start_));
  SetFlag(200);
  const double limit = firstCandidate();
  const TableLook look(column_.table());
  const auto known = std::dynamic_pointer_cast<UsedNumbers>(look.notes(notesName()));
  if (known && column_.isWhole() && known->tellsAbove(limit)) return text(known->freeAbove(limit));
  SetFlag(300);
  const bool trusted = look.canBeTrusted();
  const IdField ids{column_.index(), prefixLength_};
  const auto used = std::make_shared<UsedNumbers>(ids, limit, numbersAbove(ids, limit));
  SetFlag(400);
  std::string id = search(*used, limit);
  if (!column_.isWhole()) return id;
  if (trusted) {
    look.keep(notesName(), used);
  } else {
    look.askForTrust();
  }
  return id;
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
