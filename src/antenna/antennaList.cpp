#include "antenna/antennaList.h"

#include <string_view>
#include <unordered_map>

#include "antenna/libraryName.h"
#include "antenna/makeAntFiles.h"
#include "foundation/extract.h"
#include "foundation/text.h"
#include "platform/Platform.h"
#include "platform/RunTimeFailure.h"
#include "tables/Database.h"
#include "tables/DbfFile.h"

namespace vantrelix {

namespace {

using PointCounts = std::unordered_map<std::string, long>;

std::size_t fieldOf(const DbfFile& table, std::string_view name) {
  const int index = table.fieldIndex(name);
  if (index < 0) {
    throw RunTimeFailure(failure::noSuchField, "The table " + displayPath(table.path()) + " has no field " +
                                                   std::string(name) + "; repair the table to add it");
  }
  return static_cast<std::size_t>(index);
}

// Counts the points of all antennas in one pass. Rows of one antenna mostly stand together, so the counter of the row
// before is tried first.
PointCounts countPoints(const std::string& path, std::string_view angleField, std::string_view valueField) {
  PointCounts counts;
  if (!tableFileExists(path)) return counts;
  const std::shared_ptr<DbfFile> table = DbfFile::open(platform::current().findIgnoringCase(path), true);
  const std::size_t id = fieldOf(*table, "ATYPE_ID");
  const std::size_t angle = fieldOf(*table, angleField);
  const std::size_t value = fieldOf(*table, valueField);
  const DbfField& idField = table->fields()[id];
  std::string lastBytes;
  long* counter = nullptr;
  table->scan([&](std::uint32_t, const unsigned char* record) {
    if (record[0] == '*' || table->value(record, angle).isNull() || table->value(record, value).isNull()) return true;
    const std::string_view bytes(reinterpret_cast<const char*>(record) + idField.offset,
                                 static_cast<std::size_t>(idField.width));
    if (counter == nullptr || bytes != lastBytes) {
      const Value text = table->value(record, id);
      counter = &counts[text.isNull() ? std::string() : trimRight(text.asText())];
      lastBytes = bytes;
    }
    ++*counter;
    return true;
  });
  return counts;
}

long countOf(const PointCounts& counts, const std::string& id) {
  const auto found = counts.find(id);
  return found == counts.end() ? 0 : found->second;
}

std::string textOf(Recordset& rows, std::string_view field, const char* fallback) {
  const Value value = rows.value(field);
  return value.isNull() || getLenTrim(value.asText()) == 0 ? fallback : trimRight(value.asText());
}

double numberOf(Recordset& rows, std::string_view field) {
  const Value value = rows.value(field);
  return value.isNull() ? 0 : value.asNumber();
}

AntennaListEntry entryOf(Recordset& rows) {
  AntennaListEntry entry;
  entry.id = textOf(rows, "ATYPE_ID", "");
  entry.description = trim(textOf(rows, "ANTENNA", "[NO DESCRIPTION]"));
  entry.gain = numberOf(rows, "GAIN");
  entry.gainUnits = textOf(rows, "GAIN_UN", "");
  entry.fLow = numberOf(rows, "F_LOW");
  entry.fHigh = numberOf(rows, "F_HIGH");
  entry.freqUnits = trim(textOf(rows, "FREQ_UN", "MHz"));
  return entry;
}

}  // namespace

std::vector<AntennaListEntry> listAntennas(const std::string& folder, const std::string& library) {
  const std::string stem = trim(library);
  const std::string path = setPathName(folder, stem + ".DBF");
  if (!tableFileExists(path)) {
    platform::current().list(folder);  // a folder that cannot be read has a reason of its own
    throw RunTimeFailure(failure::fileNotFound, "The antenna library " + displayPath(path) +
                                                    " was not found; import antennas into it to make it");
  }
  const DatabasePtr database = DBEngine::OpenDatabase(folder, false, true, "FoxPro 2.6");
  const RecordsetPtr rows =
      database->OpenRecordset("Select * from " + TableTokenFromParts(folder, stem, ".DBF") + " Order by [ANTENNA] ASC");
  const PointCounts horizontal =
      countPoints(setPathName(folder, partnerTable(stem, "AHD") + ".DBF"), "HOR_AZ", "HOR_FIELD");
  const PointCounts vertical =
      countPoints(setPathName(folder, partnerTable(stem, "AVD") + ".DBF"), "VERT_ANGLE", "VERT_FIELD");
  std::vector<AntennaListEntry> entries;
  for (; !rows->Eof(); rows->MoveNext()) {
    entries.push_back(entryOf(*rows));
    entries.back().horizontalPoints = countOf(horizontal, entries.back().id);
    entries.back().verticalPoints = countOf(vertical, entries.back().id);
  }
  return entries;
}

}  // namespace vantrelix
