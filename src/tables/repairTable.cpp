#include "tables/repairTable.h"

#include <algorithm>
#include <utility>

#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/numbers.h"
#include "foundation/text.h"
#include "tables/Database.h"
#include "tables/structure.h"
#include "tables/tableFiles.h"

namespace vantrelix {

namespace {

constexpr std::size_t kBatchBytes = std::size_t{1} << 20;

using FieldPair = std::pair<std::size_t, std::size_t>;  // index in the old table, in the new one

bool isMemo(FieldType type) { return type == FieldType::memo || type == FieldType::binary; }

// A memo's texts lie in a second file, and two files cannot be exchanged at one instant.
void refuseMemos(const DbfFile& table, const FieldList& fields) {
  bool found = std::any_of(fields.begin(), fields.end(), [](const auto& field) { return isMemo(field.Type); });
  for (const DbfField& field : table.fields()) found = found || isMemo(fieldTypeOf(field));
  if (!found) return;
  throw RunTimeFailure(failure::readOnlyTable, "The table " + displayPath(table.path()) +
                                                   " lacks a field and holds memos, which a repair does not carry "
                                                   "along. Add the field with the program that made the table.");
}

std::vector<FieldPair> commonFields(const DbfFile& from, const DbfFile& to) {
  std::vector<FieldPair> pairs;
  for (std::size_t i = 0; i < to.fields().size(); ++i) {
    const int source = from.fieldIndex(to.fields()[i].name);
    if (source >= 0) pairs.emplace_back(static_cast<std::size_t>(source), i);
  }
  return pairs;
}

// A value as a field of that kind takes it: a table of old may hold as text what the dictionary now has as a number.
Value fitted(const Value& value, const DbfField& target) {
  const bool wantsText = target.type == 'C';
  if (value.isText() && wantsText) return trimRight(value.text());
  if (value.isText() && (target.type == 'N' || target.type == 'F')) {
    const std::string text = trim(value.text());
    return text.empty() ? Value() : Value(CDbl(text));
  }
  if (wantsText && !value.isNull()) return value.asText();
  return value;
}

void copyRows(DbfFile& from, DbfFile& to) {
  const std::vector<FieldPair> pairs = commonFields(from, to);
  const std::vector<unsigned char> blank = to.blankRecord();
  std::vector<unsigned char> batch;
  std::uint32_t rows = 0;
  const auto flush = [&] {
    if (rows > 0) to.append(batch.data(), rows);
    batch.clear();
    rows = 0;
  };
  from.scan([&](std::uint32_t, const unsigned char* record) {
    if (*record == '*') return true;
    std::vector<unsigned char> made = blank;
    for (const auto& [source, target] : pairs) {
      to.put(made.data(), target, fitted(from.value(record, source), to.fields()[target]));
    }
    batch.insert(batch.end(), made.begin(), made.end());
    ++rows;
    if (batch.size() >= kBatchBytes) flush();
    return true;
  });
  flush();
}

std::string insertStatement(const FieldList& fields, const DbfFile& old, const std::string& target,
                            const std::string& source) {
  std::string list;
  for (const FieldDescription& field : fields) {
    if (old.fieldIndex(field.Name) >= 0) list = AddALine(list, field.Name, ", ");
  }
  return "Insert Into " + target + " Select " + list + " From " + source;
}

// Whether another program has mended the table between the look at its fields and its exclusive opening.
bool lacksField(const DbfFile& table, const FieldList& fields) {
  return std::any_of(fields.begin(), fields.end(),
                     [&](const FieldDescription& field) { return table.fieldIndex(field.Name) < 0; });
}

// The old rows in a table of the new fields, written and made durable.
void fillTemporary(const FieldList& fields, DbfFile& old, const std::string& temporary, TableTrace& trace) {
  SetFlag(4300);
  trace.tempTable = TableToken(temporary);
  trace.sql = insertStatement(fields, old, trace.tempTable, TableToken(old.path()));
  const auto made = DbfFile::open(temporary, false, Sharing::exclusive);
  copyRows(old, *made);
  syncFile(temporary);
  SetFlag(4400);
}

}  // namespace

std::string TableTrace::text() const {
  std::string lines = "PathName: " + displayPath(pathName);
  for (const std::string& line : {"DB Path: " + displayPath(databasePath), "SELECT: " + select,
                                  "NewName: " + displayPath(newName), "SQL: " + sql, "TempTable: " + tempTable}) {
    lines = AddALine(lines, line);
  }
  return lines;
}

bool repairTable(const FieldList& fields, const std::string& tablePath, TableTrace& trace) {
  SetFlag(3000);
  platform::Platform& system = platform::current();
  const std::string path = system.linkTarget(tablePath);  // the new table is to stand behind the link, not in its place
  const auto old = DbfFile::open(path, false, Sharing::exclusive);
  if (!lacksField(*old, fields)) return true;
  refuseMemos(*old, fields);
  SetFlag(3100);
  const std::string folder = ExtractFolderNoSlash(path);
  const std::string temporary = reserveStampedTable(folder, "SSMMHHYY");
  trace.tempTable = displayPath(temporary);
  if (!NewTable(fields, temporary)) {
    removeQuietly(temporary);
    return false;
  }
  fillTemporary(fields, *old, temporary, trace);
  SetFlag(4500);
  trace.newName = keepDatedCopy(path);
  SetFlag(4600);
  // The old table stays held until the new one stands in its place: a row that another writes meanwhile would be lost.
  system.copyPermissions(path, temporary);
  system.rename(temporary, path);
  system.syncFolder(folder);
  SetFlag(4700);
  return true;
}

}  // namespace vantrelix
