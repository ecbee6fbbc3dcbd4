// The antenna lookup control and its host's facility record.
#include "controls/antennaValues.h"
#include "controls/scLookAnt.h"
#include "foundation/errHand.h"
#include "foundation/numbers.h"

namespace vantrelix {

struct scLookAnt::Slot {
  AntennaField field;
  DBFSlot scLookAnt::*dbf;
  INISlot scLookAnt::*ini;
  Value (*get)(const scLookAnt&);
  void (*put)(scLookAnt&, const Value&);
};

namespace {

using C = scLookAnt;
using L = LookupControl;
using F = AntennaField;

constexpr long kPatternFlag = 5000;
constexpr long kNoPatternFlag = 5100;

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

}  // namespace

// The order is that of every read and write of the record.
const std::vector<scLookAnt::Slot>& scLookAnt::recordSlots() {
  // clang-format off
  static const std::vector<Slot> all = {
      {F::file, &C::HookDBFFile, &C::HookINIFile, got<L, &L::sValueFile>, taken<L, &L::sValueFile>},
      {F::id, &C::HookDBFID, &C::HookINIID, got<L, &L::sValueID>, taken<L, &L::sValueID>},
      {F::desc, &C::HookDBFDesc, &C::HookINIDesc, got<L, &L::sValueDesc>, taken<L, &L::sValueDesc>},
      {F::gain, &C::HookDBFGain, &C::HookINIGain, got<C, &C::sValueGain>, taken<C, &C::sValueGain>},
      {F::unit, &C::HookDBFUnit, &C::HookINIUnit, got<C, &C::sValueUnit>, taken<C, &C::sValueUnit>},
      {F::orient, &C::HookDBFOrient, &C::HookINIOrient, got<C, &C::sValueOrient>, taken<C, &C::sValueOrient>},
      {F::eTilt, &C::HookDBFETilt, &C::HookINIETilt, got<C, &C::sValueEtilt>, taken<C, &C::sValueEtilt>},
      {F::mTilt, &C::HookDBFMTilt, &C::HookINIMTilt, got<C, &C::sValueMtilt>, taken<C, &C::sValueMtilt>},
      {F::mAzim, &C::HookDBFMAzim, &C::HookINIMAzim, got<C, &C::sValueMazim>, taken<C, &C::sValueMazim>},
      {F::invert, &C::HookDBFInvert, &C::HookINIInvert, inverted, taken<C, &C::sValueInvert>},
      {F::pol, &C::HookDBFPol, &C::HookINIPol, got<C, &C::sValuePol>, taken<C, &C::sValuePol>},
      {F::freq, &C::HookDBFFreq, &C::HookINIFreq, noValue, putFrequency},
  };
  // clang-format on
  return all;
}

void scLookAnt::bindValues() {
  for (const Slot& slot : recordSlots()) {
    FacilityValue value = antennaValue(slot.field);
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

}  // namespace vantrelix
