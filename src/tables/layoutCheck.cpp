#include "tables/layoutCheck.h"

#include <algorithm>
#include <optional>
#include <set>

#include "foundation/dateTime.h"
#include "foundation/text.h"
#include "platform/RunTimeFailure.h"
#include "tables/dbfDescriptors.h"
#include "tables/dbfOpening.h"
#include "tables/fieldSoundness.h"
#include "tables/memoCheck.h"
#include "tables/partnerFile.h"
#include "tables/rowCheck.h"

namespace vantrelix::dbf {

namespace {

using Place = FaultList::Place;

constexpr const char* kRowsFound = " Its rows can be made out all the same; \"table recover\" saves them.";

constexpr const char* kBeingAdded =
    " Another program keeps the table locked and may be adding rows; look again once it is done.";

std::string number(std::uint64_t value) { return std::to_string(value); }

std::string hexByte(unsigned char byte) {
  constexpr const char* digits = "0123456789ABCDEF";
  return std::string("0x") + digits[byte >> 4] + digits[byte & 15];
}

class HeaderCheck {
 public:
  HeaderCheck(const TableLayout& layout, FaultList& faults) : layout_(layout), faults_(faults) {}

  void run() {
    if (!layout_.refusal.empty()) add(FaultKind::refused, layout_.refusal + kRowsFound, 0);
    checkDate();
    checkHeaderLength();
    checkTerminator();
    checkRecordLength();
    checkNames();
    checkPlaces();
    checkIndex();
    checkPageFile();
  }

 private:
  void add(FaultKind kind, const std::string& sentence, std::uint64_t offset, const std::string& field = "") {
    faults_.add(kind, sentence, Place{std::nullopt, field, offset});
  }

  void checkDate() {
    const std::uint32_t month = layout_.number(2, 1);
    const std::uint32_t day = layout_.number(3, 1);
    const int year = 1900 + static_cast<int>(layout_.number(1, 1));
    if (isValidDate(year, static_cast<int>(month), static_cast<int>(day))) return;
    add(FaultKind::headerDate,
        "The date of the last change in the header is none (month " + number(month) + ", day " + number(day) + ").", 1);
  }

  void checkHeaderLength() {
    const std::uint64_t claimed = layout_.headerLengthClaimed();
    if (claimed >= layout_.descriptorsEnd && claimed == layout_.header.headerLength) return;
    add(FaultKind::headerLength,
        "The header claims a length of " + number(claimed) + " bytes, but its fields reach to byte " +
            number(layout_.descriptorsEnd) + " and the rows begin at byte " + number(layout_.header.headerLength) + ".",
        8);
  }

  void checkTerminator() {
    if (layout_.terminated) return;
    const std::uint64_t at = layout_.descriptorsEnd;
    const bool inside = at < layout_.header.headerLength && at < layout_.headerBytes.size();
    add(FaultKind::terminator,
        inside ? "The list of fields ends with the byte " + hexByte(headerByte(at)) + " in the place of 0x0D."
               : "The list of fields ends without the byte 0x0D.",
        at);
  }

  void checkRecordLength() {
    const std::uint32_t widths = sumOfWidths(layout_.stored, false);
    const std::uint32_t claimed = layout_.recordLengthClaimed();
    if (widths == claimed) return;
    std::string sentence = "The header claims records of " + number(claimed) + " bytes, but the fields make up " +
                           number(widths) + "; rows are read as " + number(layout_.header.recordLength) +
                           " bytes each.";
    if (const std::uint32_t rest = layout_.restLength(); rest > 0)
      sentence += " No field shows the " + number(rest) +
                  " bytes behind the last field; a recovery keeps them as REST1" +
                  (rest > kWidestRest ? " and so on." : ".");
    add(FaultKind::recordLength, sentence, 10);
  }

  void checkNames() {
    std::set<std::string> seen;
    for (std::size_t i = 0; i < layout_.stored.size(); ++i) {
      const std::string& name = layout_.stored[i].name;
      const std::string shown = shownName(i);
      const std::uint64_t at = kFixedHeader + kDescriptor * i;
      const unsigned char first = headerByte(at);
      if (first == 0 || first == kHeaderEnd)
        add(FaultKind::fieldName,
            "The name of field number " + number(i + 1) + " begins with the byte " + hexByte(first) +
                ", which ends the list of fields: a reader finds neither this field nor those behind it.",
            at, shown);
      else if (isBlankText(name))
        add(FaultKind::fieldName, "Field number " + number(i + 1) + " has no name.", at, shown);
      if (std::any_of(name.begin(), name.end(), [](unsigned char byte) { return byte < ' ' || byte == 0x7F; }))
        add(FaultKind::fieldName,
            "The name of field number " + number(i + 1) + " holds characters that cannot be seen.", at, shown);
      if (!seen.insert(upperCase(layout_.context.text.decode(name))).second)
        add(FaultKind::fieldName, "The field name " + shown + " comes twice.", at, shown);
    }
  }

  void checkPlaces() {
    const bool tellsPlaces = !layout_.stored.empty() && placeTold(0) == 1;
    std::uint32_t place = 1;
    for (std::size_t i = 0; i < layout_.stored.size(); ++i) {
      checkField(i, place, tellsPlaces);
      place += static_cast<std::uint32_t>(layout_.stored[i].width);
    }
  }

  unsigned char headerByte(std::uint64_t at) const { return static_cast<unsigned char>(layout_.headerBytes[at]); }

  std::uint32_t placeTold(std::size_t field) const {
    return layout_.number(kFixedHeader + kDescriptor * field + 12, 4);
  }

  void checkField(std::size_t i, std::uint32_t place, bool tellsPlaces) {
    const DbfField& field = layout_.stored[i];
    const std::string name = shownName(i);
    const std::uint64_t at = kFixedHeader + kDescriptor * i;
    if (const unsigned char type = headerByte(at + 11); !isFieldType(type))
      add(FaultKind::fieldType,
          "The field " + name + " has the byte " + hexByte(type) +
              " as its type, which is none: a reader finds neither this field nor those behind it.",
          at + 11, name);
    if (!isWidthOfType(field, layout_.context))
      add(FaultKind::fieldWidth,
          "The field " + name + " of type " + std::string(1, field.type) + " has the width " +
              number(static_cast<std::uint64_t>(field.width)) + ", which its type cannot have.",
          at + 16, name);
    if (place + static_cast<std::uint32_t>(field.width) > layout_.header.recordLength)
      add(FaultKind::fieldBeyond,
          "The field " + name + " ends behind the last of the " + number(layout_.header.recordLength) +
              " bytes of a record.",
          at + 16, name);
    // Old programs left an address of their own memory there.
    if (tellsPlaces && placeTold(i) != place)
      add(FaultKind::displacement,
          "The header puts the field " + name + " at byte " + number(placeTold(i)) +
              " of the record, but the widths before it at byte " + number(place) + ".",
          at + 12, name);
  }

  void checkIndex() {
    if (!layout_.header.structuralIndex) return;
    if (!partnerFile(layout_.path, "CDX").empty() || !partnerFile(layout_.path, "MDX").empty()) return;
    if (!partnerFile(layout_.path, "DCX").empty()) return;
    add(FaultKind::indexMissing, "The header promises an index, but no .CDX or .MDX file stands beside the table.", 28);
  }

  void checkPageFile() {
    const std::string named = partnerFile(layout_.path, "CPG");
    if (named.empty()) return;
    try {
      platform::readWholeFile(named, kLongestPageName);
    } catch (const RunTimeFailure& cause) {
      faults_.add(FaultKind::pageFile, "The file that names the code page cannot be read. " + cause.description(), {});
    }
  }

  static bool isBlankText(const std::string& name) { return trim(name).empty(); }
  std::string shownName(std::size_t i) const { return layout_.context.text.decode(layout_.stored[i].name); }

  const TableLayout& layout_;
  FaultList& faults_;
};

// The count and the end of the file against the rows that are there.
class EndCheck {
 public:
  EndCheck(const TableLayout& layout, FaultList& faults) : layout_(layout), behind_(layout.behind), faults_(faults) {}

  void run() {
    const std::uint32_t promised = layout_.header.count;
    const std::uint32_t there = layout_.rowsInFile();
    if (promised > there) {
      add(FaultKind::countTooHigh,
          "The header counts " + number(promised) + " rows, but only " + number(there) + " are in the file whole" +
              (behind_.bytesLeft > 1 ? " and " + number(behind_.bytesLeft) + " bytes behind them." : "."),
          4);
      return;
    }
    if (behind_.rows > 0)
      add(FaultKind::countTooLow,
          "The header counts " + number(promised) + " rows, but behind them stand " + number(behind_.rows) + " more.",
          4);
    checkMark();
  }

 private:
  void add(FaultKind kind, const std::string& sentence, std::uint64_t offset) {
    faults_.add(kind, sentence + (layout_.isSettled ? "" : kBeingAdded), Place{std::nullopt, "", offset});
  }

  void checkMark() {
    if (behind_.bytesLeft == 0)
      return add(FaultKind::endMark, "The file ends without the mark 0x1A behind its last row.", behind_.end);
    if (behind_.next == kFileEnd) return checkBehindMark();
    if (behind_.next && (behind_.blankLeft || behind_.bytesLeft == 1))
      return add(
          FaultKind::endMark,
          "Behind the last row stands the byte " + hexByte(*behind_.next) + " in the place of the end mark 0x1A.",
          behind_.end);
    const std::uint64_t rows = behind_.bytesLeft / std::max<std::uint32_t>(1, layout_.header.recordLength);
    add(FaultKind::leftOver,
        "Behind the last row that can be made out stand " + number(behind_.bytesLeft) + " bytes, room for " +
            number(rows) + (rows == 1 ? " row" : " rows") + ", that are neither like rows nor the end of the table.",
        behind_.end);
  }

  void checkBehindMark() {
    const std::uint64_t rest = behind_.bytesLeft - 1;
    if (rest > 0)
      add(FaultKind::bytesBehind, "Behind the end mark stand " + number(rest) + " bytes that belong to no row.",
          behind_.end + 1);
  }

  const TableLayout& layout_;
  const RowsBehind& behind_;
  FaultList& faults_;
};

}  // namespace

void checkLayout(platform::File& file, const TableLayout& layout, const CheckProgress& progress, TableCheck& check) {
  HeaderCheck(layout, check.faults).run();
  EndCheck(layout, check.faults).run();
  MemoCheck memos(layout, check.faults);
  checkRows(file, layout, memos, progress, check);
  memos.finish();
}

}  // namespace vantrelix::dbf
