// Antenna gain and pattern values between dBd, dBi and REL.
//
// dBi = dBd + 2.15, one fixed value everywhere in the system. "REL" is a power ratio over a half-wave dipole for a gain
// (10 log10) and a field ratio to the major lobe for a pattern value (20 log10). Units compare trimmed and upper-cased.
// Results have four decimals. A value that has no logarithm sets err and gives the empty text.
#pragma once

#include <string>

namespace vantrelix {

inline constexpr double kDipoleOverIsotropic = 2.15;

std::string ConvertAntGain(const std::string& unitsIn, const std::string& unitsOut, const std::string& value,
                           bool& err);
double ConvertAntGainDbl(const std::string& unitsIn, const std::string& unitsOut, double value, bool& err);

// The units of the major lobe must match one side of the conversion.
std::string ConvertAntPattern(const std::string& unitsIn, const std::string& unitsOut, const std::string& value,
                              const std::string& majLobeGain, const std::string& majLobeUnits, bool& err);
double ConvertAntPatternDbl(const std::string& unitsIn, const std::string& unitsOut, double value, double majLobeGain,
                            const std::string& majLobeUnits, bool& err);

}  // namespace vantrelix
