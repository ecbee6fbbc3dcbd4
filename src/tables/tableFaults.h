// What can be wrong with a table, and a list of what was found.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vantrelix {

enum class FaultKind {
  // The header.
  refused,       // the table cannot be opened at all
  headerDate,    // no date
  headerLength,  // ends before the fields do, or does not lead to the first row
  terminator,    // missing or another byte
  recordLength,  // not what the widths of the fields make up
  fieldName,     // none, one that another field has, one with odd characters, or one that ends the list of fields
  fieldType,     // none
  fieldWidth,    // none, or not that of the type
  fieldBeyond,   // the field does not lie in the record whole
  displacement,  // the place that the header gives to a field is not that of the widths
  indexMissing,  // the header promises a structural index
  pageFile,      // the .CPG file cannot be read
  // The file against its header.
  countTooHigh,
  countTooLow,  // whole rows stand behind those that are counted
  endMark,      // missing or another byte
  bytesBehind,  // behind the end mark
  leftOver,     // behind the last row, neither rows nor an end mark
  // The rows.
  unreadable,    // the device does not give the row
  deletionByte,  // neither a blank nor an asterisk
  number,        // bytes that are no number
  numberNul,     // a NUL in a number
  asterisks,     // a number that was too long for its field
  date,
  dateTime,
  logical,
  realNumber,  // a binary number that is infinite or none
  textLength,  // a text of varying length that claims more than its field
  textBytes,   // bytes that the code page does not know
  markInText,  // the mark of the file's end within a text
  // The memo file.
  memoMissing,
  memoFile,     // cannot be read
  memoPointer,  // no block number
  memoBlock,    // a block outside the file, or a length that leaves it
  memoShared,   // two records point to one text
  memoNextFree  // new texts would be written over old ones, or beyond the end
};

// The name of the kind, as "count_too_high".
const char* faultName(FaultKind kind);

struct TableFault {
  FaultKind kind = FaultKind::refused;
  std::optional<std::uint32_t> record;  // numbered from 0
  std::string field;                    // blank where it is none of a field
  std::optional<std::uint64_t> offset;  // of a byte in the table's file, or in the memo file for faults of that
  std::string text;                     // what is wrong there and what to do, in plain sentences
};

class FaultList {
 public:
  // Of each kind as many are kept with their places; all are counted.
  static constexpr std::uint64_t kKeptOfEach = 20;

  struct Place {
    std::optional<std::uint32_t> record;
    std::string field;
    std::optional<std::uint64_t> offset;
  };
  // `sentence` tells what is wrong, without the remedy; it is asked for only where the fault is kept.
  void add(FaultKind kind, const std::function<std::string()>& sentence, const std::function<Place()>& place);
  void add(FaultKind kind, const std::string& sentence, const Place& place);

  const std::vector<TableFault>& kept() const { return kept_; }
  // By kind, only those that were found.
  const std::map<FaultKind, std::uint64_t>& totals() const { return totals_; }
  bool empty() const { return totals_.empty(); }

 private:
  std::vector<TableFault> kept_;
  std::map<FaultKind, std::uint64_t> totals_;
};

}  // namespace vantrelix
