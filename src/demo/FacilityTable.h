// The facility table of this host: one row for each of its sites, with the fields of the suite's facility tables for
// one transmit antenna and its line, and the fields that are the host's own.
#pragma once

#include <string>
#include <vector>

#include "tables/Database.h"

namespace vantrelix::demo {

struct FacilityField {
  const char* name;  // at most 10 characters
  FieldType type;
  int size;             // of a text, in characters
  const char* caption;  // on this host's form; null for a field that a control shows

  bool isNumber() const { return type == FieldType::doubleNumber; }
};

// In table order.
const std::vector<FacilityField>& facilityFields();
// The host's own: those with a caption.
std::vector<FacilityField> siteFields();

// The files of the installation folder that hold this host's records.
std::string facilityTablePath();
std::string facilityFilePath();
inline constexpr const char* kFacilitySection = "Facility Data";
// Makes each with made-up sites where it is not there, and never touches it otherwise.
void makeFacilityTable();
void makeFacilityFile();

// A cursor over the facility table, on one of its rows.
class FacilityTable {
 public:
  // Opens the table on its first row. Fails as Database::OpenRecordset does.
  FacilityTable();

  const RecordsetPtr& record() const { return record_; }
  long count() const { return count_; }
  // Reads the rows anew, without those that others have deleted and with those that they have added, and stays on the
  // current one. False where that is gone: it then stands on the one behind it, or on the last. 3011 where the table
  // has been taken away.
  bool refresh();
  // 3011 where the table has been taken away: what is written to a removed file is lost.
  void requireThere() const;

 private:
  void settle(long position);

  std::string path_;
  RecordsetPtr record_;
  long count_ = 0;
};

}  // namespace vantrelix::demo
