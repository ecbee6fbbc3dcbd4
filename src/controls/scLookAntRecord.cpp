// The antenna lookup control and its host's facility record.
#include "controls/polarisation.h"
#include "controls/scLookAnt.h"
#include "foundation/errHand.h"
#include "foundation/numbers.h"
#include "foundation/text.h"

namespace vantrelix {

struct scLookAnt::Slot {
  FacilityValue value;
  DBFSlot scLookAnt::*dbf;
  INISlot scLookAnt::*ini;
  Value (*get)(const scLookAnt&);
  void (*put)(scLookAnt&, const Value&);
};

namespace {

using C = scLookAnt;
using Row = FacilityValue;
using Kind = Row::Kind;

constexpr long kPatternFlag = 5000;
constexpr long kNoPatternFlag = 5100;

using L = LookupControl;

template <class Owner, std::string (Owner::*Get)() const>
Value got(const C& control) {
  return Value((control.*Get)());
}
template <class Owner, void (Owner::*Put)(const Value&)>
void taken(C& control, const Value& value) {
  (control.*Put)(value);
}
Value inverted(const C& control) { return Value(control.sValueInvert()); }
// The frequency is only ever read into the control.
Value noValue(const C&) { return Value(""); }
void putFrequency(C& control, const Value& value) { control.sValueFreq(CValP(value)); }

constexpr int kOutsideHookArray = Row::byHookArray;

Row row(const char* name, const char* field, const char* variable, const char* iniLabel, Row::Flags flags,
        Kind kind = Kind::text, int passed = Row::none) {
  return {name, field, variable, iniLabel, kind, passed, flags, nullptr, nullptr, nullptr, nullptr, {}, {}};
}

Row polarisation() {
  Row made = row("Pol", "TX_A1Pol", "TX_A1POL", "HookINIPol", {1850, 2800, 2950, 4150}, Kind::text,
                 kOutsideHookArray | Row::byRelease);
  made.fromStored = PolCodeToName;
  made.toStored = PolNameToCode;
  return made;
}

}  // namespace

// The order is that of every read and write of the record.
const std::vector<scLookAnt::Slot>& scLookAnt::recordSlots() {
  // clang-format off
  static const std::vector<Slot> all = {
      {row("File", "TX_A1FNM", "TX_A1FNM", "HookINIFIle", {1000, 1000, 1100, 3200}),
       &C::HookDBFFile, &C::HookINIFile, got<L, &L::sValueFile>, taken<L, &L::sValueFile>},
      {row("ID", "TX_A1TID", "TX_A1TID", "HookINIID", {1100, 1200, 1300, 3300}),
       &C::HookDBFID, &C::HookINIID, got<L, &L::sValueID>, taken<L, &L::sValueID>},
      {row("Desc", "TX_A1TYP", "TX_A1TYP", "HookINIDesc", {1150, 1400, 1500, 3400}),
       &C::HookDBFDesc, &C::HookINIDesc, got<L, &L::sValueDesc>, taken<L, &L::sValueDesc>},
      {row("Gain", "TX_A1GAIN", "TX_A1GAIN", "HookINIGain", {1200, 1600, 1700, 3500}, Kind::number),
       &C::HookDBFGain, &C::HookINIGain, got<C, &C::sValueGain>, taken<C, &C::sValueGain>},
      {row("Unit", "TX_A1GNUN", "TX_A1GNUN", "HookINIUnit", {1300, 1800, 1900, 3600}),
       &C::HookDBFUnit, &C::HookINIUnit, got<C, &C::sValueUnit>, taken<C, &C::sValueUnit>},
      {row("Orient", "TX_A1ORIEN", "TX_A1ORIEN", "HookINIOrient", {1400, 2000, 2100, 3700}, Kind::number),
       &C::HookDBFOrient, &C::HookINIOrient, got<C, &C::sValueOrient>, taken<C, &C::sValueOrient>},
      {row("ETilt", "TX_A1ETILT", "TX_A1ETILT", "HookINIEtilt", {1500, 2200, 2300, 3800}, Kind::number),
       &C::HookDBFETilt, &C::HookINIETilt, got<C, &C::sValueEtilt>, taken<C, &C::sValueEtilt>},
      {row("MTilt", "TX_A1MTILT", "TX_A1MTILT", "HookINIMtilt", {1600, 2400, 2500, 3900}, Kind::number),
       &C::HookDBFMTilt, &C::HookINIMTilt, got<C, &C::sValueMtilt>, taken<C, &C::sValueMtilt>},
      {row("MAzim", "TX_A1MDIR", "TX_A1MDIR", "HookINIMazim", {1700, 2600, 2700, 4000}, Kind::number),
       &C::HookDBFMAzim, &C::HookINIMAzim, got<C, &C::sValueMazim>, taken<C, &C::sValueMazim>},
      {row("Invert", "TX_A1INVRT", "TX_A1INVRT", "HookINIInvert", {1800, 2800, 2900, 4100}, Kind::flag),
       &C::HookDBFInvert, &C::HookINIInvert, inverted, taken<C, &C::sValueInvert>},
      {polarisation(),
       &C::HookDBFPol, &C::HookINIPol, got<C, &C::sValuePol>, taken<C, &C::sValuePol>},
      {row("Freq", "TX_FREQMHZ", "TX_FREQMHZ", "", {1900, 3000, 3100, 4200}, Kind::text, kOutsideHookArray | Row::bySave),
       &C::HookDBFFreq, &C::HookINIFreq, noValue, putFrequency},
  };
  // clang-format on
  return all;
}

void scLookAnt::bindValues() {
  for (const Slot& slot : recordSlots()) {
    FacilityValue value = slot.value;
    value.dbf = &(this->*slot.dbf);
    value.ini = &(this->*slot.ini);
    value.get = [this, &slot] { return slot.get(*this); };
    value.put = [this, &slot](const Value& given) { slot.put(*this, given); };
    record_.add(std::move(value));
  }
}

// The patterns of what the record names, or none.
void scLookAnt::takeRecord() {
  const bool named = !sValueFile().empty() && !sValueID().empty();
  SetFlag(named && bSeePreview_ ? kPatternFlag : kNoPatternFlag);
  if (named && bSeePreview_) return GetAntPat();
  clearPreviews();
  bPatAz_ = bPatEl_ = bAzDrawn_ = bElDrawn_ = false;
}

bool scLookAnt::isBehindValues(long flag) const { return flag == kPatternFlag; }

// A record that names a library antenna is the library's, whatever the read of it decided.
void scLookAnt::settleTableRecord() { LookupOnly(!sValueFile().empty() && !sValueID().empty()); }

std::string scLookAnt::noRecordAdvice() const { return name() + kLineBreak + supportAdvice(); }

}  // namespace vantrelix
