// A folder with a small antenna table for the tests of queries and cursors.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "foundation/text.h"
#include "platform/RunTimeFailure.h"
#include "support/TempFolder.h"
#include "tables/Database.h"

namespace vantrelix::test {

using Cells = std::vector<std::pair<std::string, Value>>;

inline void addCells(const std::string& path, const Cells& cells) {
  const auto table = DbfFile::open(path);
  std::vector<unsigned char> record = table->blankRecord();
  for (const auto& [name, value] : cells) {
    table->put(record.data(), static_cast<std::size_t>(table->fieldIndex(name)), value);
  }
  table->append(record.data());
}

// The number of a failure that `work` throws, 0 where it throws none; its description goes to `text`.
template <class Work>
int failureNumberOf(Work work, std::string* text = nullptr) {
  try {
    work();
  } catch (const RunTimeFailure& problem) {
    if (text != nullptr) *text = problem.description();
    return problem.number();
  }
  return 0;
}

// Table AMSTEST:  ATYPE_ID  ANTENNA    GAIN   FREQ   MADE        ACTIVE
//                 A1        Dipole     2.15   150    2026-11-21  true
//                 B2        array      10     900    null        false
//                 A1        panel      9.5    null   2025-01-02  null
//                 C3        null       null   450    2024-06-30  true
struct CursorTables {
  CursorTables() {
    const std::string path = folder.file("AMSTEST.DBF");
    DbfFile::create(path, {{"ATYPE_ID", 'C', 12, 0},
                           {"ANTENNA", 'C', 20, 0},
                           {"GAIN", 'N', 12, 4},
                           {"FREQ", 'N', 10, 2},
                           {"MADE", 'D', 8, 0},
                           {"ACTIVE", 'L', 1, 0}});
    add("A1", "Dipole", 2.15, 150, DateTime{2026, 11, 21, 0, 0, 0}, true);
    add("B2", "array", 10, 900, Value(), false);
    add("A1", "panel", 9.5, Value(), DateTime{2025, 1, 2, 0, 0, 0}, Value());
    add("C3", Value(), Value(), 450, DateTime{2024, 6, 30, 0, 0, 0}, true);
    database = DBEngine::OpenDatabase(folder.path());
  }

  void add(const Value& id, const Value& antenna, const Value& gain, const Value& freq, const Value& made = Value(),
           const Value& active = Value()) const {
    addCells(
        folder.file("AMSTEST.DBF"),
        {{"ATYPE_ID", id}, {"ANTENNA", antenna}, {"GAIN", gain}, {"FREQ", freq}, {"MADE", made}, {"ACTIVE", active}});
  }

  RecordsetPtr open(const std::string& sql, RecordsetType type = RecordsetType::dynaset, int options = 0) const {
    return database->OpenRecordset(sql, type, options);
  }

  // A field of all rows of a query, trimmed, with blanks between; "-" is null.
  std::string list(const std::string& sql, const std::string& field = "GAIN") const {
    std::string result;
    for (const RecordsetPtr rows = open(sql); !rows->Eof(); rows->MoveNext()) {
      const Value value = rows->value(field);
      result += (result.empty() ? "" : " ") + (value.isNull() ? "-" : trim(value.asText()));
    }
    return result;
  }
  // The gains of the rows that meet a condition.
  std::string where(const std::string& condition) const { return list("Select * from [AMSTEST] where " + condition); }

  TempFolder folder;
  DatabasePtr database;
};

}  // namespace vantrelix::test
