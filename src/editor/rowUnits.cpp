#include "editor/rowUnits.h"

#include <initializer_list>
#include <string_view>

#include "foundation/text.h"

namespace vantrelix {

namespace {

std::string knownUnits(const Value& cell, std::initializer_list<std::string_view> known, const std::string& otherwise) {
  if (cell.isNull()) return otherwise;
  std::string text = trimRight(cell.asText());
  for (const std::string_view units : known) {
    if (text == units) return text;
  }
  return otherwise;
}

}  // namespace

std::string knownGainUnits(const Value& cell, const std::string& otherwise) {
  return knownUnits(cell, {"dBd", "dBi", "REL"}, otherwise);
}

std::string knownFreqUnits(const Value& cell) { return knownUnits(cell, {"MHz", "GHz", "KHz", "Hz"}, kFreqUnits); }

}  // namespace vantrelix
