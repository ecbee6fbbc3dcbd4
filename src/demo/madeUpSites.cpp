// The records that the facility table and the INI file begin with.
#include <charconv>
#include <string_view>

#include "demo/FacilityTable.h"
#include "foundation/extract.h"
#include "foundation/getINI.h"
#include "foundation/numbers.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "platform/Platform.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix::demo {

namespace {

// One text for each of facilityFields(). None of them names an antenna library: which there is depends on what its user
// imports. The lines are those that data/lines makes into a library, with the loss that it gives.
using Record = std::vector<std::string_view>;

const std::vector<Record>& madeUpSites() {
  // clang-format off
  static const std::vector<Record> sites = {
      {"Crestline Ridge", "Dispatch base, transmit", "451.25", "42", "44.1203", "-121.3317",
       "", "", "Collinear, 4 elements", "6", "dBd", "120", "-2", "0", "120", "0", "ver",
       "LMSX0001", "F78", "7/8 in foam, 50 ohm", "48", "m", "1.27"},
      {"Harbour Point", "Coast station, marine", "156.8", "28.5", "43.3471", "-124.3209",
       "", "", "Folded dipole", "2.15", "dBi", "265", "0", "0", "0", "0", "ver",
       "LMSX0001", "F12", "1/2 in foam, 50 ohm", "33", "m", "0.9"},
      {"Juniper Flat", "Telemetry, master", "928.0125", "61", "42.9018", "-120.7764",
       "", "", "Panel 90 degrees", "13.5", "dBi", "310", "-4", "-1", "310", "0", "hor",
       "LMSX0001", "F78", "7/8 in foam, 50 ohm", "66", "m", "2.6"},
      {"Old Mill Tower", "Paging, transmit", "152.0075", "90", "44.6385", "-123.1120",
       "", "", "Slotted cylinder", "8", "dBd", "0", "-1.5", "0", "0", "-1", "ver",
       "LMSX0001", "R158", "1-5/8 in rigid, air, 50 ohm", "310", "ft", "0.72"},
      {"Larkspur Knoll", "Programme feeder", "1492.75", "18", "45.0142", "-122.4451",
       "", "", "Grid parabola 1.2 m", "22.4", "dBi", "77", "0", "2", "77", "0", "hor",
       "LMSX0001", "R78", "7/8 in rigid, air, 50 ohm", "24", "m", "1.11"},
  };
  // clang-format on
  return sites;
}

const Record& portableSite() {
  // clang-format off
  static const Record site = {
      "Portable kit", "Emergency repeater", "462.675", "9", "44.0582", "-121.3153",
      "", "", "Whip on trailer mast", "3", "dBd", "0", "0", "0", "0", "0", "ver",
      "LMSX0001", "B405", "0.405 in low-loss braid, foam, 50 ohm", "12", "m", "1.08"};
  // clang-format on
  return site;
}

// The numbers above are written with a point, whatever the regional setting.
Value contentOf(const FacilityField& field, std::string_view text) {
  if (!field.isNumber()) return text.empty() ? Value() : Value(text);
  double number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

}  // namespace

void makeFacilityTable() {
  const std::string path = platform::current().findIgnoringCase(facilityTablePath());
  if (platform::current().fileExists(path)) return;
  const DatabasePtr folder = DBEngine::OpenDatabase(getSuiteDir());
  TableDef table = folder->CreateTableDef(ExtractBaseName(path));
  for (const FacilityField& field : facilityFields()) table.append(field.name, field.type, field.size);
  folder->append(table);
  const RecordsetPtr rows = folder->OpenRecordset("Select * From [" + ExtractBaseName(path) + "]");
  for (const Record& site : madeUpSites()) {
    rows->AddNew();
    for (std::size_t i = 0; i < site.size(); ++i) {
      rows->put(facilityFields()[i].name, contentOf(facilityFields()[i], site[i]));
    }
    rows->Update();
  }
}

void makeFacilityFile() {
  const std::string path = platform::current().findIgnoringCase(facilityFilePath());
  if (platform::current().fileExists(path)) return;
  std::vector<IniEntry> entries;
  for (std::size_t i = 0; i < facilityFields().size(); ++i) {
    const FacilityField& field = facilityFields()[i];
    const Value content = contentOf(field, portableSite()[i]);
    entries.push_back({upperCase(field.name), content.isNull() ? "" : content.asText()});
  }
  if (setINI(kFacilitySection, entries, path)) return;
  throw RunTimeFailure(failure::pathAccess, "The file " + displayPath(path) + " cannot be made. Check its folder.");
}

}  // namespace vantrelix::demo
