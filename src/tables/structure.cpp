#include "tables/structure.h"

#include <optional>

#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/messages.h"
#include "foundation/procedures.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "tables/heldPlaces.h"
#include "tables/repairTable.h"
#include "tables/tableFiles.h"

namespace vantrelix {

namespace {

constexpr const char* kConnect = "FoxPro 2.6";

// How a table is to be opened for its check.
struct Opening {
  RecordsetType type = RecordsetType::dynaset;
  int options = 0;
  bool exclusive = false;
  bool readOnly = false;
};

struct Check {
  const FieldList& fields;
  std::string path;
  bool repair;
  bool create;
  std::string tableType;
  Opening opening;
};

std::string nameOfToken(const std::string& token) { return trim(token.substr(1, token.size() - 2)); }

// Makes the missing table, complete, under a name of its own first: another program finds it at its path with its final
// header or not at all. Nothing where another has made the table meanwhile: that one stays and is to be checked.
std::optional<int> createMissing(const Check& check) {
  const std::string made = makeStampedTable(check.fields, ExtractFolderNoSlash(check.path), "YYHHMMSS");
  if (made.empty()) {
    SetFlag(1400);
    return tableCode::creationError;
  }
  const bool typed = getLenTrim(check.tableType) > 0;
  SetFlag(typed ? 1220 : 1300);
  if (typed && !ModNewDBF(check.tableType, made)) {
    removeTableQuietly(made);
    return tableCode::headerError;
  }
  if (!settleNewTable(made, check.path)) return std::nullopt;
  return tableCode::fine;
}

// Opens the table as asked and tells whether it has every field of the list.
bool hasAllFields(const Check& check, TableTrace& trace) {
  trace.databasePath = ExtractFolderNoSlash(getShortName(check.path));
  const DatabasePtr database =
      DBEngine::OpenDatabase(trace.databasePath, check.opening.exclusive, check.opening.readOnly, kConnect);
  const std::string token = TableToken(check.path);
  trace.select = check.opening.type == RecordsetType::table ? nameOfToken(token) : "SELECT * from " + token;
  const RecordsetPtr cursor = database->OpenRecordset(trace.select, check.opening.type, check.opening.options);
  SetFlag(2400);
  bool all = true;
  for (const FieldDescription& field : check.fields) {
    all = all && getIsFieldInTable(*cursor, field.Name);
  }
  cursor->Close();
  database->Close();
  return all;
}

int checkTable(const Check& check, TableTrace& trace) {
  SetFlag(100);
  trace.pathName = check.path;
  if (!getFileExistLEN(check.path)) {
    SetFlag(1100);
    if (!check.create) return tableCode::missingFile;
    if (const auto code = createMissing(check)) return *code;
  }
  SetFlag(2000);
  if (check.fields.empty()) throw RunTimeFailure(failure::objectNotSet, "There is no field list to check against.");
  if (hasAllFields(check, trace)) {
    SetFlag(2500);
    return tableCode::fine;
  }
  if (!check.repair) return tableCode::structureUnknown;
  if (check.opening.readOnly) {
    throw RunTimeFailure(failure::readOnlyTable, "The table " + displayPath(check.path) +
                                                     " lacks a field and is opened for reading. Open it for writing.");
  }
  return repairTable(check.fields, check.path, trace) ? tableCode::fine : tableCode::temporaryFileError;
}

// A table that is not there in the given case is the one that differs from it in case only.
std::string tablePath(const std::string& path) { return platform::current().findIgnoringCase(path); }

struct Outcome {
  int code = tableCode::fine;
  std::string error;  // of a run-time failure, as text
};

bool takesErrorWay(int code) { return code == tableCode::creationError || code == tableCode::temporaryFileError; }

Outcome validTable(const Check& check) {
  Procedure guard(procedure::RSTblValid);
  TableTrace trace;
  try {
    const int code = checkTable(check, trace);
    if (takesErrorWay(code)) ErrHand(0, GetTblErrShort(code), trace.text());
    return {code, ""};
  } catch (const RunTimeFailure& failure) {
    ErrHand(failure, trace.text());
    return {tableCode::unknown, modErrStr(failure)};
  } catch (const std::exception& failure) {
    ErrHand(failure, trace.text());
    return {tableCode::unknown, failure.what()};
  }
}

void logFailure(int code, const std::string& error, const TableTrace& trace) {
  wrtTechSupNoMak(AddALine(AddALine(error, trace.text()), GetTblErrShort(code)));
}

void showOpenError(const std::string& path, const Outcome& outcome, const std::string& tableType) {
  const std::string what = outcome.error.empty() ? GetTblErrShort(outcome.code) : outcome.error;
  std::string text = displayPath(path);
  for (const std::string& line : {std::string("RSTblValid Error opening database:"),
                                  "MakeDataSmTableFile Open Error: " + what, tableType, TableToken(path)}) {
    text = AddALine(text, line);
  }
  wrtTechSupNoMak(text);
  text = AddALine(text,
                  "Please send the QVTECSUP.TXT file, along with a description of what you were trying to do when this "
                  "error happened, to:");
  showInformation("Database Error", text + kBlankLine + supportAddress());
}

// Holds the table that is to be replaced, if there is one: who has it open would go on writing to a file that nobody
// looks at again. What is no table is in nobody's use.
class FormerTable {
 public:
  explicit FormerTable(const std::string& path) : stands_(getFileExistLEN(path)) {
    if (!stands_) return;
    try {
      table_ = DbfFile::open(path, false, Sharing::exclusive);
      places_.emplace(path);
    } catch (const RunTimeFailure& failure) {
      if (failure.number() != failure::damagedTable) throw;
    }
  }
  bool stands() const { return stands_; }

 private:
  bool stands_;
  std::shared_ptr<DbfFile> table_;
  std::optional<dbf::HeldPlaces> places_;
};

}  // namespace

bool NewTable(const FieldList& fields, const std::string& path) {
  Procedure guard(procedure::NewTable);
  std::string file = path;
  std::string working;
  try {
    SetFlag(100);
    file = tablePath(path);
    const FormerTable former(file);
    const std::string name = nameOfToken(TableToken(file));
    if (name.find_first_of(" []") == std::string::npos) {
      SetFlag(200);
      createTable(fields, file);
      return true;
    }
    SetFlag(300);
    working = reserveStampedTable(ExtractFolderNoSlash(file), "YYHHMMSS");
    if (former.stands()) platform::current().copyPermissions(file, working);
    createTable(fields, working);
    SetFlag(400);
    settleMemo(working, file);
    platform::current().rename(working, file);
    syncFolderQuietly(ExtractFolderNoSlash(file));
    return true;
  } catch (const RunTimeFailure& failure) {
    ErrHand(failure, "PathName: " + displayPath(file));
  } catch (const std::exception& failure) {
    ErrHand(failure, "PathName: " + displayPath(file));
  }
  if (!working.empty()) removeTableQuietly(working);
  return false;
}

bool RSTblValid(const FieldList& fields, const std::string& path, bool repair, bool create,
                const std::string& tableType) {
  return validTable({fields, tablePath(path), repair, create, tableType, {}}).code == tableCode::fine;
}

int RSTblValidRS(const FieldList& fields, const std::string& path, bool repair, bool create,
                 const std::string& tableType, RecordsetType openType, int openOptions, bool exclusive, bool readOnly) {
  Procedure guard(procedure::RSTblValidRS);
  TableTrace trace;
  int code = tableCode::unknown;
  std::string error;
  try {
    code = checkTable(
        {fields, tablePath(path), repair, create, tableType, {openType, openOptions, exclusive, readOnly}}, trace);
    if (!takesErrorWay(code)) return code;
  } catch (const RunTimeFailure& failure) {
    const bool inUse = failure.number() == failure::cannotOpen || failure.number() == failure::locked;
    code = inUse ? tableCode::inUse : tableCode::unknown;
    error = modErrStr(failure);
  } catch (const std::exception& failure) {
    error = failure.what();
  }
  logFailure(code, error, trace);
  return code;
}

RecordsetPtr MakeDataSmTableFile(const std::string& path, const std::string& tableType) {
  Procedure guard(procedure::MakeDataSmTableFile);
  SetFlag(100);
  const std::string file = tablePath(path);
  const DatabasePtr database = DBEngine::OpenDatabase(ExtractFolderNoSlash(file), false, false, kConnect);
  const std::string token = TableToken(file);
  const FieldList fields = FieldsFromDataSum(tableType);
  SetFlag(200);
  const Outcome outcome = validTable({fields, file, true, true, tableType, {}});
  if (outcome.code != tableCode::fine) {
    showOpenError(file, outcome, tableType);
    return nullptr;
  }
  SetFlag(300);
  RecordsetPtr cursor = database->OpenRecordset("SELECT * from " + token);
  if (cursor->RecordCount() > 0) cursor->MoveFirst();
  return cursor;
}

}  // namespace vantrelix
