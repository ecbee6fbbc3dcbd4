#include "controls/LineFigures.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "controls/reporting.h"
#include "controls/shownText.h"
#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/getINI.h"
#include "foundation/numbers.h"
#include "foundation/procedures.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "foundation/units.h"
#include "lines/getLineLossValue.h"

namespace vantrelix {

namespace {

constexpr const char* kUnitsKey = "Units";
constexpr std::size_t kPlaces = 2;

bool libraryExists(const std::string& file) {
  platform::Platform& system = platform::current();
  return system.fileExists(system.findIgnoringCase(getLinesPath() + "\\" + file + ".DBF"));
}

// As a record holds it: the very word, or the word in capitals.
bool isLengthUnit(const std::string& text) {
  const std::vector<std::string>& units = lengthUnits();
  return std::any_of(units.begin(), units.end(),
                     [&](const std::string& unit) { return text == unit || text == upperCase(unit); });
}

}  // namespace

std::string FreqFormat(double number) {
  if (number == 0 || !std::isfinite(number)) return "#0.00";
  const double more = std::max(0.0, std::ceil(-std::log10(std::abs(number))));
  return "0." + std::string(kPlaces + static_cast<std::size_t>(more), '0');
}

const std::vector<std::string>& lengthUnits() {
  static const std::vector<std::string> units = {"ft", "in", "m", "cm"};
  return units;
}

void keepLineChoice(const char* section, const char* key, const std::string& value) {
  if (setINI(section, key, getDefaultsINI(), value)) return;
  logQuietly(std::string("The choice '") + key + "' of section '" + section + "' could not be kept in " +
             displayPath(getDefaultsINI()));
}

LineFigures::LineFigures(Widgets widgets, const char* section)
    : widgets_(widgets), section_(section), frequency_(kNoValue) {
  widgets_.unit.setEntries(lengthUnits());
}

void LineFigures::showFrequency(const Value& value) {
  frequency_ = value.isNull() ? kNoValue : CValP(value);
  widgets_.freq.setCaption(value.isNull() ? "Invalid Freq" : formatNumber(frequency_, FreqFormat(frequency_)) + "MHz");
}

void LineFigures::selectDefault() {
  if (modSetComboBox(widgets_.unit, getINIStr(section_, kUnitsKey, ""), true) < 0) widgets_.unit.setListIndex(0);
}

void LineFigures::startUnit() {
  selectDefault();
  sLastUnit_ = widgets_.unit.text();
}

bool LineFigures::selectUnit(const Value& value) {
  const int former = widgets_.unit.listIndex();
  const std::string unit = shownText(value);
  if (isLengthUnit(unit)) {
    modSetComboBox(widgets_.unit, unit, true);
  } else {
    selectDefault();
  }
  return widgets_.unit.listIndex() != former;
}

void LineFigures::unitChosen(bool loading) {
  const std::string unit = widgets_.unit.text();
  if (!loading) {
    // A length that was never given stays so.
    if (getLenTrim(widgets_.len.text()) != 0) {
      bool unknown = false;
      const double converted = ConvertLen(sLastUnit_, unit, CValP(widgets_.len.text()), unknown);
      widgets_.len.setText(unknown ? std::string() : formatNumber(converted, FreqFormat(converted)));
    }
    keepLineChoice(section_, kUnitsKey, unit);
  }
  sLastUnit_ = unit;
}

void LineFigures::formatLength() { widgets_.len.setText(numberShown(widgets_.len.text())); }

void LineFigures::refresh(const std::function<bool()>& alive, const std::function<void(const std::string&)>& alert) {
  const Procedure guard(procedure::lineFigures_refresh);
  try {
    const Loss loss = computed();
    if (!alive()) return;
    if (loss.text) widgets_.loss.setText(numberShown(*loss.text));
    if (!loss.alert.empty()) alert(loss.alert);
  } catch (const std::exception& failure) {
    if (alive()) widgets_.loss.setText("");
    report(failure);
  }
}

LineFigures::Loss LineFigures::computed() const {
  const std::string file = trim(widgets_.file.text());
  const std::string id = trim(widgets_.id.text());
  const std::string unit = trim(widgets_.unit.text());
  const double length = CValP(widgets_.len.text());
  if (length < 0 || std::trunc(frequency_) == 0 || file.empty() || id.empty() || unit.empty()) return {};
  if (length == 0) return {"0", ""};
  if (!libraryExists(file)) return {"0", std::string("Transmission line library not found:") + kLineBreak + file};
  double loss = std::numeric_limits<double>::quiet_NaN();
  bool failed = false;
  std::string why;
  getLineLossValue(file, id, length, unit, frequency_, loss, failed, why);
  if (failed) return {"", why};
  if (!std::isnan(loss)) return {generalText(loss), ""};
  // Left as it was: the line has one point alone, and that gives no loss even at its own frequency.
  return {"", "No loss can be computed: the line has a single frequency in its library."};
}

}  // namespace vantrelix
