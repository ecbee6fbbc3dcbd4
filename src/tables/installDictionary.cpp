#include <sstream>

#include "foundation/extract.h"
#include "foundation/numbers.h"
#include "foundation/suitePaths.h"
#include "platform/RunTimeFailure.h"
#include "tables/dictionary.h"
#include "tables/tableFiles.h"

namespace vantrelix {

// The content of data/dictionary.txt.
extern const std::string_view dictionaryText;

namespace {

constexpr const char* kFileName = "QVDATASM.DBF";

const std::vector<DbfNewField>& columns() {
  static const std::vector<DbfNewField> all{
      {"TABLE_TYPE", 'C', 12, 0}, {"DATASUM_ID", 'N', 8, 0}, {"FLD_NAME", 'C', 10, 0}, {"FLD_WIDTH", 'N', 5, 0},
      {"FLD_DEC", 'N', 3, 0},     {"VB_TYPE", 'C', 12, 0},   {"FOX_TYPE", 'C', 1, 0}};
  return all;
}

std::vector<std::string> words(const std::string& line) {
  std::istringstream in(line);
  std::vector<std::string> found;
  for (std::string word; in >> word;) found.push_back(word);
  return found;
}

void appendRow(DbfFile& table, const std::vector<std::string>& row) {
  if (row.size() != columns().size()) {
    throw RunTimeFailure(failure::internalError, "A dictionary row has " + std::to_string(row.size()) + " columns.");
  }
  std::vector<unsigned char> record = table.blankRecord();
  for (std::size_t i = 0; i < row.size(); ++i) {
    const bool isNumber = columns()[i].type == 'N';
    table.put(record.data(), i, isNumber ? Value(CDbl(row[i])) : Value(row[i]));
  }
  table.append(record.data());
}

void writeRows(DbfFile& table) {
  std::istringstream in{std::string(dictionaryText)};
  for (std::string line; std::getline(in, line);) {
    const std::vector<std::string> row = words(line);
    if (!row.empty() && row.front().front() != '#') appendRow(table, row);
  }
}

}  // namespace

std::string installDictionary() {
  platform::Platform& system = platform::current();
  const std::string folder = getSystemPath();
  std::string path = system.findIgnoringCase(setPathName(folder, kFileName));
  if (getFileExistLEN(path)) return path;
  // A dictionary of half its rows would be kept for good, so the whole one comes to its name at once.
  const std::string made = reserveStampedTable(folder, "YYHHMMSS");
  try {
    DbfFile::create(made, columns());
    writeRows(*DbfFile::open(made));
  } catch (...) {
    removeQuietly(made);
    throw;
  }
  settleNewTable(made, path);
  system.syncFolder(folder);
  return path;
}

}  // namespace vantrelix
