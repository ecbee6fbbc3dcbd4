#include "antenna/antennaList.h"

#include <string_view>

#include "antenna/libraryName.h"
#include "antenna/makeAntFiles.h"
#include "foundation/extract.h"
#include "foundation/text.h"
#include "platform/Platform.h"
#include "platform/RunTimeFailure.h"
#include "tables/Database.h"
#include "tables/DbfFile.h"
#include "tables/countByText.h"

namespace vantrelix {

namespace {

TextCounts countPoints(const std::string& path, std::string_view angleField, std::string_view valueField) {
  if (!tableFileExists(path)) return {};
  const std::shared_ptr<DbfFile> table = DbfFile::open(path, true);
  return countByText(*table, "ATYPE_ID", {angleField, valueField});
}

long countOf(const TextCounts& counts, const std::string& id) {
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
      database->OpenRecordset("Select * from " + TableTokenFromParts(folder, stem, ".DBF") + " Order by [ANTENNA] ASC",
                              RecordsetType::snapshot);
  const TextCounts horizontal =
      countPoints(setPathName(folder, partnerTable(stem, "AHD") + ".DBF"), "HOR_AZ", "HOR_FIELD");
  const TextCounts vertical =
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
