#include "controls/antennaValues.h"

#include <iterator>

#include "controls/polarisation.h"

namespace vantrelix {

namespace {

using Row = FacilityValue;
using Kind = Row::Kind;

Row row(const char* name, const char* field, const char* variable, const char* iniLabel, Row::Flags flags,
        Kind kind = Kind::text, int passed = Row::none) {
  return {name, field, variable, iniLabel, kind, passed, flags, nullptr, nullptr, nullptr, nullptr, {}, {}};
}

Row polarisation() {
  Row made = row("Pol", "TX_A1Pol", "TX_A1POL", "HookINIPol", {1850, 2800, 2950, 4150}, Kind::text,
                 Row::byHookArray | Row::byRelease);
  made.fromStored = PolCodeToName;
  made.toStored = PolNameToCode;
  return made;
}

}  // namespace

FacilityValue antennaValue(AntennaField field) {
  static const Row rows[] = {
      row("File", "TX_A1FNM", "TX_A1FNM", "HookINIFIle", {1000, 1000, 1100, 3200}),
      row("ID", "TX_A1TID", "TX_A1TID", "HookINIID", {1100, 1200, 1300, 3300}),
      row("Desc", "TX_A1TYP", "TX_A1TYP", "HookINIDesc", {1150, 1400, 1500, 3400}),
      row("Gain", "TX_A1GAIN", "TX_A1GAIN", "HookINIGain", {1200, 1600, 1700, 3500}, Kind::number),
      row("Unit", "TX_A1GNUN", "TX_A1GNUN", "HookINIUnit", {1300, 1800, 1900, 3600}),
      row("Orient", "TX_A1ORIEN", "TX_A1ORIEN", "HookINIOrient", {1400, 2000, 2100, 3700}, Kind::number),
      row("ETilt", "TX_A1ETILT", "TX_A1ETILT", "HookINIEtilt", {1500, 2200, 2300, 3800}, Kind::number),
      row("MTilt", "TX_A1MTILT", "TX_A1MTILT", "HookINIMtilt", {1600, 2400, 2500, 3900}, Kind::number),
      row("MAzim", "TX_A1MDIR", "TX_A1MDIR", "HookINIMazim", {1700, 2600, 2700, 4000}, Kind::number),
      row("Invert", "TX_A1INVRT", "TX_A1INVRT", "HookINIInvert", {1800, 2800, 2900, 4100}, Kind::flag),
      polarisation(),
      row("Freq", "TX_FREQMHZ", "TX_FREQMHZ", "", {1900, 3000, 3100, 4200}, Kind::text, Row::byHookArray | Row::bySave),
  };
  static_assert(std::size(rows) == static_cast<std::size_t>(AntennaField::freq) + 1);
  return rows[static_cast<std::size_t>(field)];
}

}  // namespace vantrelix
