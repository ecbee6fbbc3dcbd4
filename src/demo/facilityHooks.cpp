#include "demo/facilityHooks.h"

#include "demo/FacilityTable.h"

namespace vantrelix::demo {

namespace {

template <class Control>
struct Binding {
  DBFSlot Control::*slot;
  const char* field;
};

template <class Control, std::size_t count>
void bind(Control& control, const Binding<Control> (&bindings)[count], const RecordsetPtr& record) {
  for (const auto& [slot, field] : bindings) {
    const auto hook = std::make_shared<IOHooksDBF>();
    hook->DBFRS(record);
    hook->DBFField(field);
    (control.*slot)(hook);
  }
}

void unbindAll(LookupControl& control) {
  control.DisconnectDBF();
  control.HookINI(nullptr);
}

}  // namespace

void unbind(scLookAnt& antenna) {
  unbindAll(antenna);
  antenna.HookDBFPol(nullptr);  // the one that DisconnectDBF passes over
}

void unbind(scLookLine& line) { unbindAll(line); }
void unbind(scLookAnt_Desc& name) { unbindAll(name); }

void bindToTable(scLookAnt& antenna, const RecordsetPtr& record) {
  constexpr Binding<scLookAnt> bindings[] = {
      {&scLookAnt::HookDBFFile, "TX_A1FNM"},    {&scLookAnt::HookDBFID, "TX_A1TID"},
      {&scLookAnt::HookDBFDesc, "TX_A1TYP"},    {&scLookAnt::HookDBFGain, "TX_A1GAIN"},
      {&scLookAnt::HookDBFUnit, "TX_A1GNUN"},   {&scLookAnt::HookDBFOrient, "TX_A1ORIEN"},
      {&scLookAnt::HookDBFETilt, "TX_A1ETILT"}, {&scLookAnt::HookDBFMTilt, "TX_A1MTILT"},
      {&scLookAnt::HookDBFMAzim, "TX_A1MDIR"},  {&scLookAnt::HookDBFInvert, "TX_A1INVRT"},
      {&scLookAnt::HookDBFPol, "TX_A1Pol"},     {&scLookAnt::HookDBFFreq, "TX_FREQMHZ"},
  };
  unbind(antenna);
  bind(antenna, bindings, record);
}

void bindToTable(scLookLine& line, const RecordsetPtr& record) {
  constexpr Binding<scLookLine> bindings[] = {
      {&scLookLine::HookDBFFile, "TX_L1FNM"},   {&scLookLine::HookDBFID, "TX_L1TID"},
      {&scLookLine::HookDBFDesc, "TX_L1TYP"},   {&scLookLine::HookDBFLen, "TX_L1LEN"},
      {&scLookLine::HookDBFUnit, "TX_L1LENUN"}, {&scLookLine::HookDBFLoss, "TX_L1LOS"},
      {&scLookLine::HookDBFFreq, "TX_FREQMHZ"},
  };
  unbind(line);
  bind(line, bindings, record);
}

void bindToTable(scLookAnt_Desc& name, const RecordsetPtr& record) {
  constexpr Binding<scLookAnt_Desc> bindings[] = {
      {&scLookAnt_Desc::HookDBFFile, "TX_A1FNM"},
      {&scLookAnt_Desc::HookDBFID, "TX_A1TID"},
      {&scLookAnt_Desc::HookDBFDesc, "TX_A1TYP"},
      {&scLookAnt_Desc::HookDBFFreq, "TX_FREQMHZ"},
  };
  unbind(name);
  bind(name, bindings, record);
}

void bindToFile(LookupControl& control, const std::string& file) {
  const auto master = std::make_shared<IOHooksINI>();
  master->iniFile(file);
  master->INISection(kFacilitySection);
  control.HookINI(master);
}

}  // namespace vantrelix::demo
