// The units in which a row of the antenna list stands.
#pragma once

#include <string>

#include "foundation/Value.h"

namespace vantrelix {

inline constexpr const char* kFreqUnits = "MHz";  // of display

// The cell's units where they are known ones, letter for letter; else `otherwise`, and "MHz".
std::string knownGainUnits(const Value& cell, const std::string& otherwise);
std::string knownFreqUnits(const Value& cell);

}  // namespace vantrelix
