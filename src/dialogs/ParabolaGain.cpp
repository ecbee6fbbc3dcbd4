#include "dialogs/ParabolaGain.h"

#include <cmath>

#include "foundation/numbers.h"
#include "foundation/units.h"

namespace vantrelix {

namespace {

constexpr double kAtOneMetreAndOneGigahertz = 17.8;  // dBi

bool isAboveZero(double value) { return value > 0 && std::isfinite(value); }

}  // namespace

double ParabolaGain(double diameter, std::string_view unit, double freq, bool& failed) {
  const double metres = ConvertLen(unit, "m", diameter, failed);
  const double gigahertz = freq / 1000;
  failed = failed || !isAboveZero(metres) || !isAboveZero(gigahertz);
  if (failed) return 0;
  return 20 * log10(metres) + 20 * log10(gigahertz) + kAtOneMetreAndOneGigahertz;
}

}  // namespace vantrelix
