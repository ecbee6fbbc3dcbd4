#include "demo/FacilityTable.h"

#include <algorithm>

#include "foundation/extract.h"
#include "foundation/suitePaths.h"
#include "platform/Platform.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix::demo {

namespace {

constexpr const char* kTable = "FACILITY";

}  // namespace

const std::vector<FacilityField>& facilityFields() {
  constexpr FieldType text = FieldType::text;
  constexpr FieldType number = FieldType::doubleNumber;
  static const std::vector<FacilityField> fields = {
      {"SITE", text, 40, "Site"},
      {"SERVICE", text, 40, "Service"},
      {"TX_FREQMHZ", number, 0, "Freque&ncy"},
      {"HEIGHT_M", number, 0, "&Height (m)"},
      {"LATITUDE", number, 0, "Latit&ude"},
      {"LONGITUDE", number, 0, "Lon&gitude"},
      // Of the antenna controls.
      {"TX_A1FNM", text, 8, nullptr},
      {"TX_A1TID", text, 12, nullptr},
      {"TX_A1TYP", text, 60, nullptr},
      {"TX_A1GAIN", number, 0, nullptr},
      {"TX_A1GNUN", text, 5, nullptr},
      {"TX_A1ORIEN", number, 0, nullptr},
      {"TX_A1ETILT", number, 0, nullptr},
      {"TX_A1MTILT", number, 0, nullptr},
      {"TX_A1MDIR", number, 0, nullptr},
      {"TX_A1INVRT", FieldType::boolean, 0, nullptr},
      {"TX_A1Pol", text, 5, nullptr},
      // Of the line control; a library describes a line in 75 characters.
      {"TX_L1FNM", text, 8, nullptr},
      {"TX_L1TID", text, 12, nullptr},
      {"TX_L1TYP", text, 75, nullptr},
      {"TX_L1LEN", number, 0, nullptr},
      {"TX_L1LENUN", text, 5, nullptr},
      {"TX_L1LOS", number, 0, nullptr},
  };
  return fields;
}

std::vector<FacilityField> siteFields() {
  std::vector<FacilityField> own;
  for (const FacilityField& field : facilityFields()) {
    if (field.caption) own.push_back(field);
  }
  return own;
}

std::string facilityTablePath() { return setPathName(getSuiteDir(), std::string(kTable) + ".DBF"); }
std::string facilityFilePath() { return setPathName(getSuiteDir(), std::string(kTable) + ".INI"); }

FacilityTable::FacilityTable()
    : path_(facilityTablePath()),
      record_(DBEngine::OpenDatabase(getSuiteDir())->OpenRecordset(std::string("Select * From [") + kTable + "]")) {
  settle(0);
}

// The count is exact once the last row has been reached.
void FacilityTable::settle(long position) {
  count_ = 0;
  if (record_->RecordCount() == 0) return;
  record_->MoveLast();
  count_ = record_->RecordCount();
  record_->setAbsolutePosition(std::clamp(position, 0L, count_ - 1));
}

bool FacilityTable::refresh() {
  requireThere();
  const long position = record_->AbsolutePosition();
  const bool onRow = position >= 0;
  const Recordset::Bookmark row = onRow ? record_->bookmark() : 0;
  record_->Requery();
  settle(position);
  if (!onRow) return false;
  try {
    record_->setBookmark(row);
    return true;
  } catch (const RunTimeFailure& failure) {
    if (failure.number() != failure::notABookmark) throw;
    return false;
  }
}

void FacilityTable::requireThere() const {
  platform::Platform& system = platform::current();
  if (system.fileExists(system.findIgnoringCase(path_))) return;
  throw RunTimeFailure(failure::noSuchTable, "There is no table '" + std::string(kTable) + "' any more: the file '" +
                                                 displayPath(path_) + "' was removed. Put it back and try again.");
}

}  // namespace vantrelix::demo
