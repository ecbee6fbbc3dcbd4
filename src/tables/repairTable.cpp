#include "tables/repairTable.h"

#include <algorithm>
#include <variant>

#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/text.h"
#include "tables/Database.h"
#include "tables/SqlInsert.h"
#include "tables/SqlParser.h"
#include "tables/indexFiles.h"
#include "tables/structure.h"
#include "tables/tableFiles.h"

namespace vantrelix {

namespace {

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

// The new table's rows stand at other places, and its header names no index.
void refuseIndex(const DbfFile& table) {
  if (!table.hasStructuralIndex()) return tellOfIndexFiles(table.path());
  throw RunTimeFailure(failure::readOnlyTable, "The table " + displayPath(table.path()) +
                                                   " lacks a field and has a structural index, which a repair would "
                                                   "leave wrong. Add the field with the program that made the table.");
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
void fillTemporary(const FieldList& fields, const std::shared_ptr<DbfFile>& old, const std::string& temporary,
                   TableTrace& trace) {
  SetFlag(4300);
  trace.tempTable = TableToken(temporary);
  trace.sql = insertStatement(fields, *old, trace.tempTable, TableToken(old->path()));
  const auto made = DbfFile::open(temporary, false, Sharing::exclusive);
  runInsert(std::get<SqlInsert>(parseSql(trace.sql)), old, made);
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
  refuseIndex(*old);
  SetFlag(3100);
  const std::string folder = ExtractFolderNoSlash(path);
  const std::string temporary = makeStampedTable(fields, folder, "SSMMHHYY");
  if (temporary.empty()) return false;
  fillTemporary(fields, old, temporary, trace);
  SetFlag(4500);
  trace.newName = keepDatedCopy(path);
  system.syncFolder(folder);  // the dated name is on the disk before the old table's own one goes
  SetFlag(4600);
  // The old table stays held until the new one stands in its place: a row that another writes meanwhile would be lost.
  system.copyPermissions(path, temporary);
  system.rename(temporary, path);
  syncFolderQuietly(folder);
  SetFlag(4700);
  return true;
}

}  // namespace vantrelix
