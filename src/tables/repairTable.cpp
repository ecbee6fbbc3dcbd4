#include "tables/repairTable.h"

#include <algorithm>
#include <utility>
#include <variant>
#include <vector>

#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/text.h"
#include "tables/Database.h"
#include "tables/SqlInsert.h"
#include "tables/SqlParser.h"
#include "tables/dbfCreate.h"
#include "tables/dbfOpening.h"
#include "tables/heldPlaces.h"
#include "tables/indexFiles.h"
#include "tables/lostValues.h"
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

// By which length its rows are read is a guess, which the new table would make final.
void refuseLengthInDoubt(const DbfFile& table) {
  const auto file = platform::current().open(table.path(), platform::OpenMode::read);
  if (!dbf::readHeader(*file, displayPath(table.path())).isLengthInDoubt) return;
  refuse(table, "has a header that names a wrong record length, so that its values may be read wrong",
         "Mend it with the program that made it.");
}

void refuseStranger(const DbfFile& table, const FieldList& fields) {
  if (std::any_of(fields.begin(), fields.end(), [&](const auto& field) { return table.fieldIndex(field.Name) >= 0; })) {
    return;
  }
  refuse(table, "has none of the fields that it should have", "Check whether the file is the one that is meant.");
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
                            language.page == dbf::kUtf8 ? "UTF-8" : std::to_string(language.page), old.path());
}

// Whether a query takes the bare name for that of a field.
bool isPlainName(const std::string& name) {
  try {
    const auto query = std::get<SqlSelect>(parseSql("Select " + name + " From [T]"));
    const SqlItem& item = query.items.at(0);
    return query.items.size() == 1 && item.alias.empty() && item.aggregate == SqlAggregate::none &&
           item.expression.kind == SqlKind::field && item.expression.name == name;
  } catch (const std::exception&) {
    return false;
  }
}

// The statement that copies the rows. It is not read from its text: the names of fields are no matter of the language.
SqlInsert insertStatement(const FieldList& fields, const DbfFile& old, const std::string& target,
                          const std::string& source) {
  SqlInsert insert;
  std::string list;
  for (const FieldDescription& field : fields) {
    if (old.fieldIndex(field.Name) < 0) continue;
    list = AddALine(list, isPlainName(field.Name) ? field.Name : "[" + field.Name + "]", ", ");
    insert.fields.push_back({field.Name});
    SqlExpression& from = insert.source.items.emplace_back().expression;
    from.kind = SqlKind::field;
    from.name = field.Name;
  }
  insert.source.text = "Insert Into " + target + " Select " + list + " From " + source;
  return insert;
}

// Whether another program has mended the table between the look at its fields and its exclusive opening.
bool lacksField(const DbfFile& table, const FieldList& fields) {
  return std::any_of(fields.begin(), fields.end(),
                     [&](const FieldDescription& field) { return table.fieldIndex(field.Name) < 0; });
}

// The old rows in a table of the new fields, written and made durable. Gives what they lost.
std::vector<LostValues> fillTemporary(const FieldList& fields, const std::shared_ptr<DbfFile>& old,
                                      const std::string& temporary, TableTrace& trace) {
  SetFlag(4300);
  trace.tempTable = TableToken(temporary);
  SqlInsert insert = insertStatement(fields, *old, trace.tempTable, TableToken(old->path()));
  trace.sql = insert.source.text;
  const auto made = DbfFile::open(temporary, false, Sharing::exclusive);
  runInsert(std::move(insert), old, made, InsertedTexts::bytes);
  syncFile(temporary);
  std::vector<LostValues> lost = lostValues(*old, *made, fields);
  SetFlag(4400);
  return lost;
}

// A program of another make, which knows no lock of opening, may have put a table of its own at the path.
void requireStanding(const DbfFile& old) {
  const auto there = platform::current().state(old.path());
  if (there && isSameFile(*there, old.state())) return;
  throw RunTimeFailure(failure::noSuchTable, "The table " + displayPath(old.path()) +
                                                 " was removed or replaced while it was being mended. Open it again.");
}

void tellOfLosses(const std::vector<LostValues>& lost, const std::string& path, const std::string& kept) {
  if (lost.empty()) return;
  logQuietly("Table " + displayPath(path) + ": its repair could not keep every value: " + listOf(lost) +
             ". The table as it was is kept as " + displayPath(kept) + ".");
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
  refuseStranger(*old, fields);
  refuseLengthInDoubt(*old);
  refuseIndex(*old);
  const dbf::HeldPlaces places(path);
  const dbf::Language language = dbf::languageOf(path);
  keepPage(*old, fields, language);
  SetFlag(3100);
  const std::string folder = ExtractFolderNoSlash(path);
  const std::string temporary = makeStampedTable(fields, folder, "SSMMHHYY", path);
  if (temporary.empty()) return false;
  const std::vector<LostValues> lost = fillTemporary(fields, old, temporary, trace);
  SetFlag(4500);
  keepDatedCopy(path, trace.newName);
  if (dbf::codePageOfMark(language.mark) == 0) copyPageName(path, trace.newName);
  system.syncFolder(folder);  // the dated name is on the disk before the old table's own one goes
  SetFlag(4600);
  // The old table stays held until the new one stands in its place: a row that another writes meanwhile would be lost.
  requireStanding(*old);
  system.rename(temporary, path);
  syncFolderQuietly(folder);
  tellOfLosses(lost, path, trace.newName);
  SetFlag(4700);
  return true;
}

}  // namespace vantrelix
