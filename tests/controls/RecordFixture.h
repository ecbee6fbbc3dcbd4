// A lookup control bound to a host's facility table and INI file.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "controls/LookAntFixture.h"
#include "dialogs/frmParabGain.h"
#include "foundation/numbers.h"
#include "foundation/text.h"
#include "tables/Database.h"
#include "tables/DbfFile.h"

namespace vantrelix::test {

// One value of the control, in the order in which its record is visited, with two rows of what it may hold.
struct BoundValue {
  const char* name;
  const char* field;
  const char* variable;
  const char* iniLabel;  // blank for the frequency, which is never saved
  DBFSlot scLookAnt::*dbf;
  INISlot scLookAnt::*ini;
  const char* tableFlag;
  Value row;           // in the table's first row
  const char* shown;   // what the control then shows
  const char* other;   // another value as the control shows it
  const char* stored;  // and as it is stored
};

using A = scLookAnt;
inline const std::vector<BoundValue> kBoundValues = {
    {"File", "TX_A1FNM", "TX_A1FNM", "HookINIFIle", &A::HookDBFFile, &A::HookINIFile, "1000", "AMSN0001", "AMSN0001",
     "AMSN0002", "AMSN0002"},
    {"ID", "TX_A1TID", "TX_A1TID", "HookINIID", &A::HookDBFID, &A::HookINIID, "1100", "ID1", "ID1", "ID2", "ID2"},
    {"Desc", "TX_A1TYP", "TX_A1TYP", "HookINIDesc", &A::HookDBFDesc, &A::HookINIDesc, "1150", "Whip", "Whip", "Yagi",
     "Yagi"},
    {"Gain", "TX_A1GAIN", "TX_A1GAIN", "HookINIGain", &A::HookDBFGain, &A::HookINIGain, "1200", 6.5, "6.50", "7.25",
     "7.25"},
    {"Unit", "TX_A1GNUN", "TX_A1GNUN", "HookINIUnit", &A::HookDBFUnit, &A::HookINIUnit, "1300", "REL", "REL", "dBi",
     "dBi"},
    {"Orient", "TX_A1ORIEN", "TX_A1ORIEN", "HookINIOrient", &A::HookDBFOrient, &A::HookINIOrient, "1400", 120, "120",
     "240", "240"},
    {"ETilt", "TX_A1ETILT", "TX_A1ETILT", "HookINIEtilt", &A::HookDBFETilt, &A::HookINIETilt, "1500", -2, "-2", "-3",
     "-3"},
    {"MTilt", "TX_A1MTILT", "TX_A1MTILT", "HookINIMtilt", &A::HookDBFMTilt, &A::HookINIMTilt, "1600", 1.5, "1.5", "2.5",
     "2.5"},
    {"MAzim", "TX_A1MDIR", "TX_A1MDIR", "HookINIMazim", &A::HookDBFMAzim, &A::HookINIMAzim, "1700", 90, "90", "180",
     "180"},
    {"Invert", "TX_A1INVRT", "TX_A1INVRT", "HookINIInvert", &A::HookDBFInvert, &A::HookINIInvert, "1800", true, "True",
     "False", "0"},
    {"Pol", "TX_A1Pol", "TX_A1POL", "HookINIPol", &A::HookDBFPol, &A::HookINIPol, "1850", "ver", "Vertical", "Circular",
     "cir"},
    {"Freq", "TX_FREQMHZ", "TX_FREQMHZ", "", &A::HookDBFFreq, &A::HookINIFreq, "1900", 451.25, "451.25", "900", "900"},
};
inline constexpr std::size_t kSaved = 11;  // all but the frequency

// What the host gave as the frequency, as the dialog of the gain box is told it: with two decimals.
inline double frequencyOf(scLookAnt& control) {
  auto& screen = dynamic_cast<ScriptedDesktop&>(desktop());
  double told = -1;
  screen.onModal["frmParabGain"] = [&told](Form& shown) {
    told = CValP(dynamic_cast<frmParabGain&>(shown).Text1[frmParabGain::frequency].text());
  };
  control.mnuPopupParabolic.userClick();
  screen.onModal.erase("frmParabGain");
  return told;
}

// What the control shows, in the order of kBoundValues.
inline std::vector<std::string> shownIn(scLookAnt& control) {
  return {control.sValueFile(),  control.sValueID(),
          control.sValueDesc(),  control.sValueGain(),
          control.sValueUnit(),  control.sValueOrient(),
          control.sValueEtilt(), control.sValueMtilt(),
          control.sValueMazim(), control.sValueInvert() ? "True" : "False",
          control.sValuePol(),   generalText(frequencyOf(control))};
}

// FACILITY.DBF in the installation folder with the row of kBoundValues and a row of nulls; FACILITY.INI beside it. Both
// name a library that is not there.
class RecordTest : public LookAntLibraryTest {
 protected:
  RecordTest() {
    DbfFile::create(table, {{"TX_A1FNM", 'C', 12, 0},
                            {"TX_A1TID", 'C', 12, 0},
                            {"TX_A1TYP", 'C', 20, 0},
                            {"TX_A1GAIN", 'N', 8, 2},
                            {"TX_A1GNUN", 'C', 4, 0},
                            {"TX_A1ORIEN", 'N', 7, 2},
                            {"TX_A1ETILT", 'N', 6, 2},
                            {"TX_A1MTILT", 'N', 6, 2},
                            {"TX_A1MDIR", 'N', 7, 2},
                            {"TX_A1INVRT", 'L', 1, 0},
                            {"TX_A1POL", 'C', 6, 0},
                            {"TX_FREQMHZ", 'N', 12, 4}});
    addRow([](const BoundValue& value) { return value.row; });
    addRow([](const BoundValue&) { return Value(); });
  }

  void addRow(const std::function<Value(const BoundValue&)>& cell) const {
    const auto file = DbfFile::open(table);
    std::vector<unsigned char> bytes = file->blankRecord();
    for (const BoundValue& value : kBoundValues) {
      file->put(bytes.data(), static_cast<std::size_t>(file->fieldIndex(value.field)), cell(value));
    }
    file->append(bytes.data());
  }
  RecordsetPtr open(const char* sql = "Select * from [FACILITY]") const {
    return DBEngine::OpenDatabase(suite.path())->OpenRecordset(sql);
  }
  // The field in the table's first row as text without its padding; "(null)" for a null.
  std::string inTable(const std::string& field) const {
    const Value value = open()->value(field);
    return value.isNull() ? "(null)" : trim(value.asText());
  }
  std::string inFile(const std::string& key) const { return getPrivateProfileString("Site", key, "(none)", 2000, ini); }

  static IOHooksDBFPtr hookFor(const RecordsetPtr& rows, const std::string& field) {
    auto hook = std::make_shared<IOHooksDBF>();
    hook->DBFRS(rows);
    hook->DBFField(field);
    return hook;
  }
  // All values to the fields of one recordset.
  void bind(scLookAnt& to, const RecordsetPtr& rows) const {
    for (const BoundValue& value : kBoundValues) (to.*value.dbf)(hookFor(rows, value.field));
  }
  void bind() {
    record = open();
    bind(control, record);
  }
  IOHooksINIPtr masterHook() const {
    auto master = std::make_shared<IOHooksINI>();
    master->iniFile(ini);
    master->INISection("Site");
    return master;
  }
  // All INI hooks to section Site of the INI file, without a read.
  void bindINI() {
    control.HookINI(masterHook());
    for (const BoundValue& value : kBoundValues) (control.*value.ini)()->INISection("Site");
  }

  // Puts the other value of each into the control.
  void putOthers() {
    const auto put = [](std::size_t i) { return Value(kBoundValues[i].other); };
    control.sValueFile(put(0));
    control.sValueID(put(1));
    control.sValueDesc(put(2));
    control.sValueUnit(put(4));
    control.sValueGain(put(3));
    control.sValueOrient(put(5));
    control.sValueEtilt(put(6));
    control.sValueMtilt(put(7));
    control.sValueMazim(put(8));
    control.sValueInvert(put(9));
    control.sValuePol(put(10));
    control.sValueFreq(900);
  }
  // The first `count` values are those of the row, the rest the others.
  void expectRowUpTo(std::size_t count, const std::string& where) {
    const std::vector<std::string> shown = shownIn(control);
    for (std::size_t i = 0; i < kBoundValues.size(); ++i) {
      const BoundValue& value = kBoundValues[i];
      EXPECT_EQ(shown[i], i < count ? value.shown : value.other) << value.name << ", " << where;
    }
  }
  // Whether a click of the user is told to the host.
  bool clicksAreTold() {
    heard();
    control.cboPol.userSelect(control.cboPol.listIndex());
    return heard() == "mounting ";
  }

  const std::string table = suite.file("FACILITY.DBF");
  const std::string ini = suite.file("FACILITY.INI");
  RecordsetPtr record;
};

}  // namespace vantrelix::test
