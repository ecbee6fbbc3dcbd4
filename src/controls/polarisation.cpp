#include "controls/polarisation.h"

#include "foundation/text.h"

namespace vantrelix {

namespace {

struct Polarisation {
  const char* code;
  const char* name;
};

constexpr Polarisation kPolarisations[] = {
    {"hor", "Horizontal"}, {"ver", "Vertical"}, {"cir", "Circular"}, {"hel", "Helical"}, {"other", "Other"},
};

}  // namespace

std::string PolCodeToName(std::string_view code) {
  const std::string wanted = trim(code);
  for (const Polarisation& known : kPolarisations) {
    if (wanted == known.code) return known.name;
  }
  return "None";
}

std::string PolNameToCode(std::string_view name) {
  for (const Polarisation& known : kPolarisations) {
    if (name == known.name) return known.code;
  }
  return "none";
}

}  // namespace vantrelix
