#include "lines/lineList.h"

#include <algorithm>
#include <unordered_map>

#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "lines/lineLibrary.h"
#include "tables/SqlCompare.h"

namespace vantrelix {

namespace {

struct Range {
  bool any = false;
  double least = 0;
  double most = 0;

  void add(double value) {
    least = any ? std::min(least, value) : value;
    most = any ? std::max(most, value) : value;
    any = true;
  }
};

using Ranges = std::unordered_map<std::string, Range>;

std::string_view fieldBytes(const DbfField& field, const unsigned char* record) {
  return {reinterpret_cast<const char*>(record) + field.offset, static_cast<std::size_t>(field.width)};
}

std::string textOf(DbfFile& table, const unsigned char* record, std::size_t field) {
  const Value value = table.value(record, field);
  return value.isNull() ? std::string() : std::string(withoutPadding(value.asText()));
}

// The points of one line mostly stand together, so the range of the row before is tried first.
Ranges readRanges(const std::string& path) {
  Ranges ranges;
  const std::shared_ptr<DbfFile> table = DbfFile::open(path, true);
  const std::size_t id = lineField(*table, kLineIdField);
  const std::size_t freq = lineField(*table, kLineFreqField);
  std::string lastId;
  Range* range = nullptr;
  table->scan([&](std::uint32_t, const unsigned char* record) {
    if (record[0] == '*') return true;
    const Value value = table->value(record, freq);
    if (value.isNull()) return true;
    const std::string_view bytes = fieldBytes(table->fields()[id], record);
    if (range == nullptr || bytes != lastId) {
      range = &ranges[textOf(*table, record, id)];
      lastId = bytes;
    }
    range->add(value.asNumber());
    return true;
  });
  return ranges;
}

struct MasterRow {
  std::string id;
  std::string description;
};

std::vector<MasterRow> readMaster(const std::string& path) {
  std::vector<MasterRow> rows;
  const std::shared_ptr<DbfFile> table = DbfFile::open(path, true);
  const std::size_t id = lineField(*table, kLineIdField);
  const std::size_t description = lineField(*table, kLineDescriptionField);
  table->scan([&](std::uint32_t, const unsigned char* record) {
    if (record[0] != '*') rows.push_back({textOf(*table, record, id), textOf(*table, record, description)});
    return true;
  });
  return rows;
}

// What `read` gives, or nothing of it where that fails and somebody wants to be told.
template <class Read>
auto readOrReport(const std::string& file, const LineListRules& rules, Read read) -> decltype(read()) {
  try {
    return read();
  } catch (const RunTimeFailure& failure) {
    if (!rules.unreadable) throw;
    rules.unreadable(file, failure);
  }
  return {};
}

LineRecord recordOf(const MasterRow& row, const std::string& master, const Ranges& ranges, const LineListRules& rules) {
  LineRecord record;
  record.description = trimRight(
      leftCharacters(getLenTrim(row.description) == 0 ? rules.noDescription : row.description, kLineDescriptionWidth));
  record.file = leftCharacters(master, kLineFileWidth);
  record.id = trimRight(leftCharacters(row.id, kLineIdWidth));
  if (const auto range = ranges.find(row.id); range != ranges.end()) {
    record.hasRange = true;
    record.fMin = range->second.least;
    record.fMax = range->second.most;
  }
  return record;
}

bool isMasterFile(const std::string& name) {
  const std::string folded = upperCase(name);
  return folded.starts_with("LMS") && folded.ends_with(".DBF");
}

std::vector<std::string> masterFiles(const std::string& folder) {
  std::vector<std::string> files;
  platform::Platform& system = platform::current();
  if (!system.folderExists(folder)) return files;
  for (const std::string& name : system.list(folder)) {
    if (isMasterFile(name) && system.fileExists(setPathName(folder, name))) files.push_back(name);
  }
  std::sort(files.begin(), files.end(),
            [](const std::string& a, const std::string& b) { return upperCase(a) < upperCase(b); });
  return files;
}

void logUnreadable(const std::string& file, const RunTimeFailure& failure) {
  wrtTechSupNoMak(modErrStr(failure, file));
}

}  // namespace

LineListRules lookListRules() {
  return {"", [](const std::string& file) { wrtTechSupNoMak("Bad TX Line in " + file); }, logUnreadable};
}

LineListRules allLinesRules() {
  return {"NO DESCRIPTION",
          [](const std::string& file) { wrtTechSupNoMak("Bad TX line in " + file + kLineBreak + "BLANK ID"); },
          logUnreadable};
}

LineList loadLineList(const LineListRules& rules) {
  LineList list;
  const std::string folder = getLinesPath();
  for (const std::string& file : masterFiles(folder)) {
    LineList lines = readLineLibrary(folder, file, rules);
    std::move(lines.begin(), lines.end(), std::back_inserter(list));
  }
  return list;
}

LineList readLineLibrary(const std::string& folder, const std::string& file, const LineListRules& rules) {
  LineList list;
  const LineTables tables = lineTables(folder, file);
  const auto rows = readOrReport(file, rules, [&] { return readMaster(tables.masterPath()); });
  if (rows.empty()) return list;
  const Ranges ranges = readOrReport(file, rules, [&] { return readRanges(tables.pointsPath()); });
  for (const MasterRow& row : rows) {
    if (getLenTrim(row.id) != 0) {
      list.push_back(recordOf(row, tables.master, ranges, rules));
    } else if (rules.badRow) {
      rules.badRow(file);
    }
  }
  return list;
}

const LineRecord* lineOfDescription(const LineList& list, std::string_view sLine) {
  const std::string wanted = trim(sLine);
  const auto found = std::find_if(list.begin(), list.end(),
                                  [&](const LineRecord& record) { return trim(record.description) == wanted; });
  return found == list.end() ? nullptr : &*found;
}

void GetLineFileID(const LineList& list, std::string_view sLine, std::string& sFile, std::string& sID) {
  const LineRecord* record = lineOfDescription(list, sLine);
  sFile = record == nullptr ? "" : record->file;
  sID = record == nullptr ? "" : record->id;
}

void GetLineFreqRange(const LineList& list, std::string_view sLine, double& dFreqMin, double& dFreqMax) {
  const LineRecord* record = lineOfDescription(list, sLine);
  dFreqMin = record == nullptr ? 0 : record->fMin;
  dFreqMax = record == nullptr ? 0 : record->fMax;
}

}  // namespace vantrelix
