#include "tables/tableFaults.h"

namespace vantrelix {

namespace {

struct KindText {
  FaultKind kind;
  const char* name;
  const char* remedy;
};

constexpr const char* kRecover = "\"table recover\" writes a table without this fault.";
constexpr const char* kTypeAnew = "Type the value anew; \"table recover\" makes it blank.";

constexpr KindText kTexts[] = {
    {FaultKind::refused, "refused", ""},
    {FaultKind::headerDate, "header_date", "The next change of a row writes a sound one."},
    {FaultKind::headerLength, "header_length", kRecover},
    {FaultKind::terminator, "terminator", kRecover},
    {FaultKind::recordLength, "record_length", kRecover},
    {FaultKind::fieldName, "field_name", "\"table recover\" gives it a name of its own."},
    {FaultKind::fieldType, "field_type", "\"table recover\" keeps its bytes in a text field."},
    {FaultKind::fieldWidth, "field_width", "\"table recover\" gives it a width of its type."},
    {FaultKind::fieldBeyond, "field_beyond_record", kRecover},
    {FaultKind::displacement, "displacement", "The widths are followed; \"table recover\" writes the right place."},
    {FaultKind::indexMissing, "index_missing",
     "Put it back beside the table; \"table recover\" writes a table that needs none."},
    {FaultKind::pageFile, "page_file",
     "Write the name of the code page into one anew; \"table recover\" makes a table without one."},
    {FaultKind::countTooHigh, "count_too_high",
     "Look for a longer copy of the file; \"table recover\" keeps the rows that are there."},
    {FaultKind::countTooLow, "count_too_low",
     "The next added row would be written over them; \"table recover\" saves them."},
    {FaultKind::endMark, "end_mark", "The next added row writes one behind it."},
    {FaultKind::bytesBehind, "bytes_behind_end", "\"table recover\" leaves them out."},
    {FaultKind::leftOver, "left_over",
     "Keep a copy of the file: the next added row is written over them, and \"table recover\" leaves them out."},
    {FaultKind::unreadable, "unreadable",
     "Copy what the device still gives to another one; \"table recover\" saves the other rows."},
    {FaultKind::deletionByte, "deletion_byte", "The row counts as live; \"table recover\" makes it so."},
    {FaultKind::number, "number", kTypeAnew},
    {FaultKind::numberNul, "number_nul", "\"table recover\" puts blanks in their place."},
    {FaultKind::asterisks, "asterisks", "Type a number that fits; \"table recover\" makes it blank."},
    {FaultKind::date, "date", kTypeAnew},
    {FaultKind::dateTime, "date_time", kTypeAnew},
    {FaultKind::logical, "logical", kTypeAnew},
    {FaultKind::realNumber, "real_number", kTypeAnew},
    {FaultKind::textLength, "text_length", "\"table recover\" cuts it to the field."},
    {FaultKind::textBytes, "text_bytes", "The header may name the wrong code page; the bytes are kept as they are."},
    {FaultKind::markInText, "mark_in_text", "Some programs stop reading there; \"table recover\" puts a blank."},
    {FaultKind::memoMissing, "memo_missing", "Put it back beside the table; its texts are nowhere else."},
    {FaultKind::memoFile, "memo_file", "Look for a sound copy of it; its texts are nowhere else."},
    {FaultKind::memoPointer, "memo_pointer", kTypeAnew},
    {FaultKind::memoBlock, "memo_block", "Type the text anew; \"table recover\" makes it blank."},
    {FaultKind::memoShared, "memo_shared", "\"table recover\" gives each record a text of its own."},
    {FaultKind::memoNextFree, "memo_next_free", "\"table recover\" writes a memo file with the right one."},
};

const KindText& textOf(FaultKind kind) {
  for (const KindText& text : kTexts) {
    if (text.kind == kind) return text;
  }
  return kTexts[0];
}

std::string withRemedy(const std::string& sentence, FaultKind kind) {
  const char* remedy = textOf(kind).remedy;
  return *remedy == '\0' ? sentence : sentence + " " + remedy;
}

}  // namespace

const char* faultName(FaultKind kind) { return textOf(kind).name; }

void FaultList::add(FaultKind kind, const std::function<std::string()>& sentence, const std::function<Place()>& place) {
  if (++totals_[kind] > kKeptOfEach) return;
  const Place where = place();
  kept_.push_back({kind, where.record, where.field, where.offset, withRemedy(sentence(), kind)});
}

void FaultList::add(FaultKind kind, const std::string& sentence, const Place& place) {
  add(
      kind, [&] { return sentence; }, [&] { return place; });
}

}  // namespace vantrelix
