#include "lines/lineLibrary.h"

#include <algorithm>

#include "foundation/extract.h"
#include "foundation/text.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {

namespace {

constexpr std::string_view kExtension = ".DBF";
constexpr std::string_view kMasterPrefix = "LMS";
constexpr std::string_view kPointsPrefix = "LND";
constexpr std::size_t kCodeLength = 5;

bool endsWithExtension(const std::string& name) {
  return name.size() > kExtension.size() &&
         equalIgnoringCase(std::string_view(name).substr(name.size() - kExtension.size()), kExtension);
}

std::string tableFile(const std::string& folder, const std::string& table) {
  return platform::current().findIgnoringCase(setPathName(folder, table + std::string(kExtension)));
}

}  // namespace

std::string LineTables::masterPath() const { return tableFile(folder, master); }
std::string LineTables::pointsPath() const { return tableFile(folder, points); }

LineTables lineTables(const std::string& folder, const std::string& LineFile) {
  LineTables tables{folder, trim(LineFile), ""};
  if (endsWithExtension(tables.master)) tables.master.resize(tables.master.size() - kExtension.size());
  tables.points = std::string(kPointsPrefix) + midCharacters(tables.master, kMasterPrefix.size() + 1, kCodeLength);
  return tables;
}

bool isLineLibraryName(std::string_view stem) {
  return characterCount(stem) == kMasterPrefix.size() + kCodeLength &&
         equalIgnoringCase(stem.substr(0, kMasterPrefix.size()), kMasterPrefix) &&
         stem.find_first_of(" []") == std::string_view::npos;
}

RecordsetPtr linesOfType(const std::string& folder, const std::string& table, const std::string& LineID,
                         const std::string& order) {
  const DatabasePtr database = DBEngine::OpenDatabase(folder, false, true, kLineConnect);
  return database->OpenRecordset("Select * from " + TableTokenFromParts(folder, table, std::string(kExtension)) +
                                 " Where " + kLineIdField + " = '" + LineID + "'" + order);
}

std::size_t lineField(const DbfFile& table, std::string_view name) {
  const int index = table.fieldIndex(name);
  if (index >= 0) return static_cast<std::size_t>(index);
  throw RunTimeFailure(failure::noSuchField, "The table " + displayPath(table.path()) + " has no field " +
                                                 std::string(name) + "; it is not one of a line library");
}

}  // namespace vantrelix
