// The gain unit of the antenna lookup control, and the gain that follows it.
#include <cmath>
#include <optional>

#include "antenna/convertGain.h"
#include "controls/reporting.h"
#include "controls/scLookAnt.h"
#include "controls/shownText.h"
#include "foundation/extract.h"
#include "foundation/getINI.h"
#include "foundation/numbers.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"

namespace vantrelix {

namespace {

constexpr const char* kSection = "Antenna Lookup";
constexpr const char* kUnitsKey = "Units";

// Not the conversion of the antenna library: the gain stands here with two decimals and in its own text alone.
std::optional<double> toDbd(const std::string& unit, double value) {
  if (unit == "dBd") return value;
  if (unit == "dBi") return value - kDipoleOverIsotropic;
  if (unit == "REL" && value > 0) return 10 * log10(value);
  return {};
}

std::optional<double> fromDbd(const std::string& unit, double dbd) {
  if (unit == "dBd") return dbd;
  if (unit == "dBi") return dbd + kDipoleOverIsotropic;
  if (unit == "REL") return std::pow(10, dbd / 10);
  return {};
}

void rememberUnit(const std::string& unit) {
  if (setINI(kSection, kUnitsKey, getDefaultsINI(), unit)) return;
  logQuietly("The gain units could not be kept as the default in " + displayPath(getDefaultsINI()));
}

}  // namespace

std::string scLookAnt::sValueUnit() const { return trim(cboUnit.text()); }

void scLookAnt::sValueUnit(const Value& value) {
  const std::string unit = shownText(value);
  for (const char* accepted : {"dBd", "dBi", "REL", "DBD", "DBI"}) {
    if (unit != accepted) continue;
    selectUnit(unit);
    return;
  }
  InitGainUnit();
}

void scLookAnt::InitGainUnit() {
  std::string unit = getINIStr(kSection, kUnitsKey, "dBd");
  if (getLenTrim(unit) == 0) unit = "dBd";
  selectUnit(unit);
  sLastUnit_ = cboUnit.text();
}

void scLookAnt::selectUnit(const std::string& unit) {
  const int former = cboUnit.listIndex();
  if (modSetComboBox(cboUnit, unit, true) != former) cboUnit_Change();
}

void scLookAnt::cboUnit_Change() {
  if (!loading()) {
    bDirty_ = true;
    convertGain();
  }
  sLastUnit_ = cboUnit.text();
}

void scLookAnt::convertGain() {
  const std::string unit = cboUnit.text();
  const std::optional<double> dbd = toDbd(sLastUnit_, CValP(txtGain.text()));
  const std::optional<double> gain = dbd ? fromDbd(unit, *dbd) : std::nullopt;
  if (!gain || !std::isfinite(*gain)) {
    sValueGain("");
    return;
  }
  sValueGain(*gain);
  rememberUnit(unit);
}

}  // namespace vantrelix
