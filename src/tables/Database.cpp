#include "tables/Database.h"

#include <algorithm>

#include "foundation/extract.h"
#include "foundation/text.h"
#include "tables/RecordsetState.h"
#include "tables/SqlInsert.h"
#include "tables/SqlLexer.h"
#include "tables/SqlParser.h"
#include "tables/tableSettings.h"

namespace vantrelix {

namespace {

constexpr std::string_view kExtension = ".DBF";
constexpr std::string_view kSlashes = "\\/";

std::string namedPath(const std::string& folder, const std::string& name) {
  const auto cannotBe = [](char c) { return c == '\\' || c == '/' || c == '\0'; };
  if (getLenTrim(name) == 0 || std::any_of(name.begin(), name.end(), cannotBe)) {
    throw RunTimeFailure(failure::noSuchTable, "'" + name + "' cannot be the name of a table in '" +
                                                   displayPath(folder) + "'. Name a file of that folder.");
  }
  return setPathName(folder, name + std::string(kExtension));
}

// The file of a table: as named, or found without regard to case.
std::string tablePath(const std::string& folder, const std::string& name) {
  return platform::current().findIgnoringCase(namedPath(folder, name));
}

std::shared_ptr<DbfFile> openTable(const std::string& folder, const std::string& name, bool readOnly, Sharing sharing) {
  try {
    return DbfFile::open(namedPath(folder, name), readOnly, sharing);
  } catch (const RunTimeFailure&) {
    const std::string found = tablePath(folder, name);
    if (platform::current().fileExists(found)) throw;
    throw RunTimeFailure(failure::noSuchTable, "There is no table '" + name + "': the file '" + displayPath(found) +
                                                   "' does not exist. Check the name and the folder.");
  }
}

// A table's name without the brackets of its token.
std::string bareName(std::string_view text) {
  std::string name = trim(text);
  if (name.size() >= 2 && name.front() == '[' && name.back() == ']') name = trim(name.substr(1, name.size() - 2));
  return name;
}

SqlSelect selectOf(std::string_view sql, RecordsetType type) {
  SqlSelect select;
  if (type == RecordsetType::table) {
    select.text = sql;
    select.table = bareName(sql);
    return select;
  }
  SqlStatement statement = parseSql(sql);
  if (auto* parsed = std::get_if<SqlSelect>(&statement)) return std::move(*parsed);
  throw sqlSyntaxFailure(sql, 0, "an INSERT gives no rows. Execute it.");
}

Sharing sharingOf(bool exclusive, int options) {
  if (exclusive || (options & recordsetOption::denyRead) != 0) return Sharing::exclusive;
  return (options & recordsetOption::denyWrite) != 0 ? Sharing::denyWrite : Sharing::shared;
}

// Without the backslashes at its end, but for that of a root.
std::string withoutEndSlash(std::string path) {
  while (path.size() > 1 && kSlashes.find(path.back()) != std::string_view::npos && path[path.size() - 2] != ':') {
    path.pop_back();
  }
  return path;
}

bool looksLikeTable(std::string_view path) {
  return path.size() > kExtension.size() && equalIgnoringCase(path.substr(path.size() - kExtension.size()), kExtension);
}

std::string parentFolder(const std::string& path) {
  const std::size_t slash = path.find_last_of(kSlashes);
  return slash == std::string::npos ? std::string() : withoutEndSlash(path.substr(0, slash + 1));
}

// The base name as SQL knows it: the extension alone goes, so that a name with points stays reachable.
std::string baseName(std::string_view path) {
  const std::size_t slash = path.find_last_of(kSlashes);
  const std::string_view file = slash == std::string_view::npos ? path : path.substr(slash + 1);
  return trim(file.substr(0, file.rfind('.')));
}

// An empty file where there was none, taken away again at the end of its life. A folder that is not there is no
// failure. Where not even the folder has a short name, a file would have none and is not made: another program would
// find an empty table for a moment.
class MomentaryFile {
 public:
  // The path outlives this.
  explicit MomentaryFile(const std::string& path) : path_(path) {
    platform::Platform& system = platform::current();
    if (!system.shortName(parentFolder(path)) || system.fileExists(system.findIgnoringCase(path))) return;
    try {
      system.open(path, platform::OpenMode::createNew);
      made_ = true;
    } catch (const RunTimeFailure&) {
      made_ = false;
    }
  }
  ~MomentaryFile() {
    if (!made_) return;
    try {
      // What another program has written to it meanwhile is that program's.
      const auto state = platform::current().state(path_);
      if (state && state->size == 0) platform::current().remove(path_);
    } catch (const std::exception&) {
      made_ = false;
    }
  }
  MomentaryFile(const MomentaryFile&) = delete;
  MomentaryFile& operator=(const MomentaryFile&) = delete;

 private:
  const std::string& path_;
  bool made_ = false;
};

}  // namespace

void TableDef::append(std::string_view name, FieldType type, int size) {
  fields_.push_back(engineField(name, type, size));
}

void Database::requireOpen() const {
  if (!open_)
    throw RunTimeFailure(failure::objectNotSet,
                         "The database '" + displayPath(folder()) + "' is closed. Open it again.");
}

void Database::requireWritable() const {
  if (!opening_.readOnly) return;
  throw RunTimeFailure(failure::readOnlyTable,
                       "The database '" + displayPath(folder()) + "' is open for reading only. Open it for writing.");
}

RecordsetPtr Database::OpenRecordset(std::string_view sql, RecordsetType type, int options) {
  requireOpen();
  SqlSelect select = selectOf(sql, type);
  const bool onlyReads = type == RecordsetType::snapshot || type == RecordsetType::forwardOnly;
  const bool readOnly = opening_.readOnly || onlyReads || (options & recordsetOption::readOnly) != 0;
  const Sharing sharing = sharingOf(opening_.exclusive, options);
  auto opener = [folder = folder(), name = select.table, readOnly, sharing] {
    return openTable(folder, name, readOnly, sharing);
  };
  auto state = std::make_unique<Recordset::Implementation>(std::move(select), std::move(opener), type,
                                                           sharing == Sharing::shared);
  return std::make_shared<Recordset>(std::move(state));
}

std::shared_ptr<DbfFile> Database::openToRead(const std::string& name) const {
  requireOpen();
  return openTable(folder(), name, true, sharingOf(opening_.exclusive, 0));
}

std::shared_ptr<DbfFile> Database::openKnown(const std::string& name) const {
  requireOpen();
  return opening_.exclusive ? nullptr : DbfFile::openKnown(namedPath(folder(), name));
}

long Database::Execute(std::string_view sql) {
  requireOpen();
  SqlStatement statement = parseSql(sql);
  auto* insert = std::get_if<SqlInsert>(&statement);
  if (insert == nullptr) throw sqlSyntaxFailure(sql, 0, "only an INSERT can be executed. Open a cursor over a SELECT.");
  requireWritable();
  const Sharing sharing = sharingOf(opening_.exclusive, 0);
  const bool same = tablePath(folder(), insert->target) == tablePath(folder(), insert->source.table);
  const auto target = openTable(folder(), insert->target, false, sharing);
  const auto source = same ? target : openTable(folder(), insert->source.table, true, sharing);
  return runInsert(std::move(*insert), source, target);
}

void Database::append(const TableDef& table) {
  requireOpen();
  const std::string path = tablePath(folder(), table.Name());
  requireWritable();
  if (platform::current().fileExists(path)) {
    throw RunTimeFailure(failure::fileExists, "The table '" + displayPath(path) +
                                                  "' exists already. Choose another name or remove the file.");
  }
  DbfFile::create(path, table.fields());
}

void Database::Close() { open_ = false; }

DatabasePtr DBEngine::OpenDatabase(const std::string& folder, bool exclusive, bool readOnly,
                                   const std::string& connect) {
  readTableSettings();
  platform::Platform& system = platform::current();
  const std::string bare = withoutEndSlash(folder);
  if (!bare.empty() && system.folderExists(bare)) {
    return std::make_shared<Database>(Database::Opening{bare, exclusive, readOnly, connect});
  }
  std::string found = bare.empty() ? bare : system.findIgnoringCase(bare);
  if (!found.empty() && !system.folderExists(found) && (system.fileExists(found) || looksLikeTable(found))) {
    found = parentFolder(found);
    if (!found.empty()) found = system.findIgnoringCase(found);
  }
  if (found.empty() || !system.folderExists(found)) {
    throw RunTimeFailure(failure::badPath,
                         "'" + displayPath(folder) + "' is not a folder that can be opened. Check the path.");
  }
  return std::make_shared<Database>(Database::Opening{found, exclusive, readOnly, connect});
}

std::string getShortName(const std::string& path) { return platform::current().shortName(path).value_or(path); }

std::string TableToken(const std::string& path) {
  const MomentaryFile momentary(path);
  const std::optional<std::string> shortName = platform::current().shortName(path);
  return "[" + baseName(shortName ? *shortName : path) + "]";
}

std::string TableTokenFromParts(const std::string& folder, const std::string& base, const std::string& extension) {
  const bool hasPoint = !extension.empty() && extension.front() == '.';
  return TableToken(setPathName(folder, base) + (hasPoint ? "" : ".") + extension);
}

}  // namespace vantrelix
