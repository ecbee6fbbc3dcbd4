#include "demo/facilityHooks.h"

#include "demo/FacilityTable.h"

namespace vantrelix::demo {

void unbind(scLookAnt& antenna) {
  antenna.DisconnectDBF();
  antenna.HookDBFPol(nullptr);  // the one that DisconnectDBF passes over
  antenna.HookINI(nullptr);
}

void bindToTable(scLookAnt& antenna, const RecordsetPtr& record) {
  struct Binding {
    DBFSlot scLookAnt::*slot;
    const char* field;
  };
  constexpr Binding bindings[] = {
      {&scLookAnt::HookDBFFile, "TX_A1FNM"},    {&scLookAnt::HookDBFID, "TX_A1TID"},
      {&scLookAnt::HookDBFDesc, "TX_A1TYP"},    {&scLookAnt::HookDBFGain, "TX_A1GAIN"},
      {&scLookAnt::HookDBFUnit, "TX_A1GNUN"},   {&scLookAnt::HookDBFOrient, "TX_A1ORIEN"},
      {&scLookAnt::HookDBFETilt, "TX_A1ETILT"}, {&scLookAnt::HookDBFMTilt, "TX_A1MTILT"},
      {&scLookAnt::HookDBFMAzim, "TX_A1MDIR"},  {&scLookAnt::HookDBFInvert, "TX_A1INVRT"},
      {&scLookAnt::HookDBFPol, "TX_A1Pol"},     {&scLookAnt::HookDBFFreq, "TX_FREQMHZ"},
  };
  unbind(antenna);
  for (const auto& [slot, field] : bindings) {
    const auto hook = std::make_shared<IOHooksDBF>();
    hook->DBFRS(record);
    hook->DBFField(field);
    (antenna.*slot)(hook);
  }
}

void bindToFile(scLookAnt& antenna, const std::string& file) {
  unbind(antenna);
  const auto master = std::make_shared<IOHooksINI>();
  master->iniFile(file);
  master->INISection(kFacilitySection);
  antenna.HookINI(master);
}

}  // namespace vantrelix::demo
