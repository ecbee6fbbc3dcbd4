#include "tables/rowCheck.h"

#include "foundation/text.h"
#include "tables/fieldSoundness.h"
#include "tables/wholeRows.h"

namespace vantrelix::dbf {

namespace {

constexpr std::size_t kLongestShown = 40;

const char* whatIsWrong(FaultKind kind) {
  switch (kind) {
    case FaultKind::number:
      return "which is no number and reads as null";
    case FaultKind::numberNul:
      return "with NUL bytes in it";
    case FaultKind::asterisks:
      return "in the place of a number that was too long for it; it reads as null";
    case FaultKind::date:
    case FaultKind::dateTime:
      return "which is no date and reads as null";
    case FaultKind::logical:
      return "which is neither true nor false and reads as null";
    case FaultKind::realNumber:
      return "which is no finite number and reads as null";
    case FaultKind::textLength:
      return "of which it claims more bytes than it has";
    case FaultKind::textBytes:
      return "with bytes that its code page does not know";
    case FaultKind::markInText:
      return "with the mark 0x1A of the file's end in it";
    default:
      return "which is no block of a memo file";
  }
}

// Bytes as a person can read them.
std::string shown(std::string_view bytes, bool binary, const FieldContext& context) {
  constexpr const char* digits = "0123456789ABCDEF";
  std::string text;
  if (binary) {
    for (const char byte : bytes) text += std::string{digits[byte >> 4 & 15], digits[byte & 15], ' '};
    return "the bytes " + trim(text);
  }
  text = context.text.decode(bytes.substr(0, kLongestShown));
  for (char& character : text) {
    if (static_cast<unsigned char>(character) < ' ') character = '.';
  }
  return "\"" + trim(text) + (bytes.size() > kLongestShown ? "...\"" : "\"");
}

class RowCheck {
 public:
  RowCheck(const TableLayout& layout, MemoCheck& memos, TableCheck& check)
      : layout_(layout), memos_(memos), check_(check), soundness_(layout.context, layout.header.fields, layout.flags) {
    for (std::size_t i = 0; i < layout.header.fields.size(); ++i) {
      if (pointsToMemo(layout.header.fields[i], layout.context)) memoFields_.push_back(i);
    }
  }

  void look(std::uint32_t number, const unsigned char* row) {
    if (row == nullptr) return noteUnreadable(number);
    row[0] == '*' ? ++check_.deleted : ++check_.rows;
    if (row[0] != ' ' && row[0] != '*') noteDeletionByte(number, row[0]);
    for (std::size_t i = 0; i < layout_.header.fields.size(); ++i) {
      if (const auto unsound = soundness_.faultOf(row, i)) note(number, row, i, *unsound);
    }
    for (const std::size_t i : memoFields_) memos_.look(number, row, i);
  }

 private:
  std::string rowName(std::uint32_t number) const { return "Row " + std::to_string(std::uint64_t{number} + 1); }

  void noteUnreadable(std::uint32_t number) {
    check_.faults.add(
        FaultKind::unreadable, [&] { return rowName(number) + " is not given by the device that the file lies on."; },
        [&] {
          return FaultList::Place{number, "", layout_.offsetOf(number)};
        });
  }

  void noteDeletionByte(std::uint32_t number, unsigned char byte) {
    check_.faults.add(
        FaultKind::deletionByte,
        [&] {
          return rowName(number) + " begins with " +
                 shown(std::string(1, static_cast<char>(byte)), true, layout_.context) +
                 " in the place of a blank or an asterisk.";
        },
        [&] {
          return FaultList::Place{number, "", layout_.offsetOf(number)};
        });
  }

  void note(std::uint32_t number, const unsigned char* row, std::size_t index, const Unsound& unsound) {
    const DbfField& field = layout_.header.fields[index];
    const std::string_view bytes(reinterpret_cast<const char*>(row) + field.offset,
                                 static_cast<std::size_t>(field.width));
    const std::string name = layout_.context.text.decode(field.name);
    check_.faults.add(
        unsound.kind,
        [&] {
          const bool binary = field.type == 'T' || field.type == 'B';
          return rowName(number) + " has in the field " + name + " " + shown(bytes, binary, layout_.context) + ", " +
                 whatIsWrong(unsound.kind) + ".";
        },
        [&] {
          const auto at = static_cast<std::uint64_t>(field.offset) + unsound.at;
          return FaultList::Place{number, name, layout_.offsetOf(number) + at};
        });
  }

  const TableLayout& layout_;
  MemoCheck& memos_;
  TableCheck& check_;
  Soundness soundness_;
  std::vector<std::size_t> memoFields_;
};

}  // namespace

void checkRows(platform::File& file, const TableLayout& layout, MemoCheck& memos, const CheckProgress& progress,
               TableCheck& check) {
  const std::uint32_t rows = layout.rowsCounted();
  RowCheck rowCheck(layout, memos, check);
  WholeRows(file, layout)
      .each(
          0, rows,
          [&](std::uint32_t number, const unsigned char* row) {
            rowCheck.look(number, row);
            return true;
          },
          [&](std::uint64_t next) {
            if (progress) progress(next, rows);
          });
}

}  // namespace vantrelix::dbf
