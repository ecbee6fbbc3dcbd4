// The antenna description control on a library, and on the table and the INI file of a host.
#pragma once

#include <string>
#include <utility>

#include "controls/LibraryUser.h"
#include "controls/RecordFixture.h"
#include "controls/scLookAnt_Desc.h"

namespace vantrelix::test {

// One value of the control, in the order in which its record is visited.
struct DescValue {
  const char* name;
  const char* field;
  DBFSlot scLookAnt_Desc::*dbf;
  INISlot scLookAnt_Desc::*ini;
  const char* tableFlag;
};
inline constexpr DescValue kDescValues[] = {
    {"File", "TX_A1FNM", &scLookAnt_Desc::HookDBFFile, &scLookAnt_Desc::HookINIFile, "1000"},
    {"ID", "TX_A1TID", &scLookAnt_Desc::HookDBFID, &scLookAnt_Desc::HookINIID, "1100"},
    {"Desc", "TX_A1TYP", &scLookAnt_Desc::HookDBFDesc, &scLookAnt_Desc::HookINIDesc, "1150"},
    {"Freq", "TX_FREQMHZ", &scLookAnt_Desc::HookDBFFreq, &scLookAnt_Desc::HookINIFreq, "1900"},
};

class LookAntDescTest : public RecordTest {
 protected:
  LookAntDescTest() {
    addPanel();
    desc.ChangeAntenna.listen([this] { told += "antenna "; });
    desc.NewAlert.listen([this] { told += "alert "; });
  }

  std::string events() { return std::exchange(told, ""); }
  std::string shown() { return desc.sValueFile() + "|" + desc.sValueID() + "|" + desc.sValueDesc(); }
  void put(const std::string& file, const std::string& id, const std::string& description) {
    desc.sValueFile(file);
    desc.sValueID(id);
    desc.sValueDesc(description);
  }
  void bindDesc() {
    record = open();
    for (const DescValue& value : kDescValues) (desc.*value.dbf)(hookFor(record, value.field));
  }
  // The frequency, as the look-up is told it.
  std::string frequency() {
    EditorOpened editor;
    editor.watch(screen);
    desc.cmdLook.userClick();
    screen.onModal.clear();
    return editor.freq;
  }

  scLookAnt_Desc desc;
  std::string told;
};

}  // namespace vantrelix::test
