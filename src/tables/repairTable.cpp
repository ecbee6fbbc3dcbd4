#include "tables/repairTable.h"

#include <algorithm>
#include <variant>

#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/text.h"
#include "tables/Database.h"
#include "tables/SqlInsert.h"
#include "tables/SqlParser.h"
#include "tables/dbfCreate.h"
#include "tables/dbfOpening.h"
#include "tables/indexFiles.h"
#include "tables/partnerFile.h"
#include "tables/structure.h"
#include "tables/tableFiles.h"

namespace vantrelix {

namespace {

bool isMemo(FieldType type) { return type == FieldType::memo || type == FieldType::binary; }

[[noreturn]] void refuse(const DbfFile& table, const std::string& reason,
                         const std::string& remedy = "Add the field with the program that made the table.") {
  throw RunTimeFailure(failure::readOnlyTable,
                       "The table " + displayPath(table.path()) + " lacks a field and " + reason + ". " + remedy);
}

// A memo's texts lie in a second file, and two files cannot be exchanged at one instant.
void refuseMemos(const DbfFile& table, const FieldList& fields) {
  for (const DbfField& field : table.fields()) {
    if (isMemo(fieldTypeOf(field))) refuse(table, "holds memos or binary fields, which a repair does not carry along");
  }
  for (const FieldDescription& field : fields) {
    if (isMemo(field.Type)) {
      refuse(table,
             "is to have the memo field " + field.Name + ", whose memo file a repair does not make along with it");
    }
  }
}

// The new table's rows stand at other places, and its header names no index.
void refuseIndex(const DbfFile& table) {
  if (!table.hasStructuralIndex()) return tellOfIndexFiles(table.path());
  refuse(table, "has a structural index, which a repair would leave wrong");
}

// The page that the new table's texts would be read in at the old one's path.
int pageBehind(const FieldList& fields, const std::string& path, const dbf::Language& language) {
  const dbf::TextCodec codec(language.page);
  dbf::Header header;
  header.languageMark = language.mark;
  for (const FieldDescription& field : fields) {
    header.fields.emplace_back().name = dbf::nameToStore(field.Name, codec);
  }
  return dbf::codePageOf(header, path);
}

// Where the old table's field names alone tell its page, and those of the new one do not, a file is to tell it.
void keepPage(const DbfFile& old, const FieldList& fields, const dbf::Language& language) {
  if (pageBehind(fields, old.path(), language) == language.page) return;
  if (!partnerFile(old.path(), "CPG").empty()) {
    refuse(old, "has a .CPG file that names no code page, while its field names show one",
           "Write the name of its code page into the file, such as UTF-8.");
  }
  platform::createWholeFile(withExtension(old.path(), "CPG"),
                            language.page == dbf::kUtf8 ? "UTF-8" : std::to_string(language.page));
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
  runInsert(std::get<SqlInsert>(parseSql(trace.sql)), old, made, InsertedTexts::bytes);
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
  const dbf::Language language = dbf::languageOf(path);
  keepPage(*old, fields, language);
  SetFlag(3100);
  const std::string folder = ExtractFolderNoSlash(path);
  const std::string temporary = makeStampedTable(fields, folder, "SSMMHHYY", path);
  if (temporary.empty()) return false;
  fillTemporary(fields, old, temporary, trace);
  SetFlag(4500);
  trace.newName = keepDatedCopy(path);
  if (dbf::codePageOfMark(language.mark) == 0) copyPageName(path, trace.newName);
  system.syncFolder(folder);  // the dated name is on the disk before the old table's own one goes
  SetFlag(4600);
  // The old table stays held until the new one stands in its place: a row that another writes meanwhile would be lost.
  system.rename(temporary, path);
  syncFolderQuietly(folder);
  SetFlag(4700);
  return true;
}

}  // namespace vantrelix
