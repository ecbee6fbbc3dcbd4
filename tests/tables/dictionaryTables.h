// Tables for the tests of dictionary and structure: made, filled and read back below the cursors.
#pragma once

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "foundation/text.h"
#include "platform/FaultPlatform.h"
#include "support/TempSuite.h"
#include "tables/DbfFile.h"
#include "tables/dictionary.h"

namespace vantrelix::test {

// An installation folder that has the library's dictionary.
struct DictionarySuite : TempSuite {
  DictionarySuite() : dictionary(installDictionary()) {}
  std::string dictionary;
};

// A clock that stands still, so that two operations fall in one second, and a list of what was renamed.
class StoppedClock : public platform::FaultPlatform {
 public:
  using FaultPlatform::FaultPlatform;
  platform::DateTime now() override { return {2026, 11, 21, 16, 2, 48}; }
  bool hasRenamed(const std::string& name) const {
    return std::any_of(journal().begin(), journal().end(), [&](const std::string& call) {
      return call.rfind("rename", 0) == 0 && call.find(name) != std::string::npos;
    });
  }
};

using Row = std::map<std::string, Value>;

inline void addRow(const std::string& path, const Row& row) {
  const auto table = DbfFile::open(path);
  std::vector<unsigned char> record = table->blankRecord();
  for (const auto& [name, value] : row) {
    table->put(record.data(), static_cast<std::size_t>(table->fieldIndex(name)), value);
  }
  table->append(record.data());
}

inline void addDictionaryRow(const std::string& dictionary, const std::string& type, int key, const std::string& name,
                             int width, int decimals, const std::string& word, const std::string& letter) {
  addRow(dictionary, {{"TABLE_TYPE", type},
                      {"DATASUM_ID", key},
                      {"FLD_NAME", name},
                      {"FLD_WIDTH", width},
                      {"FLD_DEC", decimals},
                      {"VB_TYPE", word},
                      {"FOX_TYPE", letter}});
}

// The field in every live row, as trimmed text; "(null)" where it is null.
inline std::vector<std::string> column(const std::string& path, const std::string& field) {
  const auto table = DbfFile::open(path, true);
  const int index = table->fieldIndex(field);
  std::vector<std::string> found;
  table->scan([&](std::uint32_t, const unsigned char* record) {
    if (*record == '*') return true;
    const Value value = table->value(record, static_cast<std::size_t>(index));
    found.push_back(value.isNull() ? "(null)" : trim(value.asText()));
    return true;
  });
  return found;
}

// Base names of a folder's files whose name begins so, in order.
inline std::vector<std::string> filesThatBegin(const TempFolder& folder, const std::string& start) {
  std::vector<std::string> found;
  for (const auto& entry : std::filesystem::directory_iterator(folder.machine())) {
    const std::string name = entry.path().filename().string();
    if (name.rfind(start, 0) == 0) found.push_back(name);
  }
  std::sort(found.begin(), found.end());
  return found;
}

// A master table as an early version made it: no POWER fields, one field of its own, two rows and a deleted one.
inline std::string oldMaster(const TempFolder& folder, const std::string& name = "AMSTEST1.DBF") {
  const std::string path = folder.file(name);
  DbfFile::create(path, {{"ATYPE_ID", 'C', 12, 0},
                         {"ANTENNA", 'C', 40, 0},
                         {"GAIN", 'N', 8, 2},
                         {"GAIN_UN", 'C', 5, 0},
                         {"F_LOW", 'N', 10, 3},
                         {"F_HIGH", 'N', 10, 3},
                         {"FREQ_UN", 'C', 5, 0},
                         {"NOTE", 'C', 20, 0}});
  addRow(path, {{"ATYPE_ID", "TEST10000001"}, {"ANTENNA", "First"}, {"GAIN", 10.25}, {"NOTE", "kept in the old file"}});
  addRow(path, {{"ATYPE_ID", "TEST10000002"}, {"ANTENNA", "Gone"}});
  addRow(path, {{"ATYPE_ID", "TEST10000003"}, {"ANTENNA", "Second"}, {"GAIN_UN", "dBi"}});
  DbfFile::open(path)->markDeleted(1);
  return path;
}

}  // namespace vantrelix::test
