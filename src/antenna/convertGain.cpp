#include "antenna/convertGain.h"

#include <cmath>
#include <optional>

#include "foundation/errHand.h"
#include "foundation/numbers.h"
#include "foundation/procedures.h"
#include "foundation/text.h"

namespace vantrelix {

namespace {

constexpr const char* kConverted = "0.0000";
constexpr const char* kReported = "###0.0000";

// One quantity in each of the three units. A unit that is not known leaves all at 0.
struct Levels {
  double dBd = 0;
  double dBi = 0;
  double rel = 0;
};

std::string unitWord(const std::string& units) { return upperCase(trim(units)); }

bool isDecibel(const std::string& unit) { return unit.starts_with("DB"); }

double powerOfTen(double exponent) {
  const double result = std::pow(10.0, exponent);
  if (!std::isfinite(result)) throw RunTimeFailure(failure::overflow, "Overflow");
  return result;
}

std::string inUnits(const Levels& levels, const std::string& unit) {
  if (unit == "DBD") return formatNumber(levels.dBd, kConverted);
  if (unit == "DBI") return formatNumber(levels.dBi, kConverted);
  if (unit == "REL") return formatNumber(levels.rel, kConverted);
  return "";
}

// Nothing where the value has no logarithm.
std::optional<Levels> gainLevels(const std::string& unit, double value) {
  Levels levels;
  if (unit == "REL") {
    if (value <= 0) return std::nullopt;
    levels.rel = value;
    levels.dBd = 10 * log10(value);
    levels.dBi = levels.dBd + kDipoleOverIsotropic;
  } else if (unit == "DBD" || unit == "DBI") {
    levels.dBd = unit == "DBD" ? value : value - kDipoleOverIsotropic;
    levels.dBi = unit == "DBI" ? value : value + kDipoleOverIsotropic;
    levels.rel = powerOfTen(levels.dBd / 10);
  }
  return levels;
}

// majorLobe is in the units of the output where those are decibels, and in dBd otherwise.
std::optional<Levels> patternLevels(const std::string& unit, double value, double majorLobe) {
  Levels levels;
  if (unit == "REL") {
    if (value <= 0) return std::nullopt;
    levels.rel = value;
    levels.dBd = levels.dBi = 20 * log10(value) + majorLobe;
  } else if (unit == "DBD" || unit == "DBI") {
    levels.dBd = unit == "DBD" ? value : value - kDipoleOverIsotropic;
    levels.dBi = unit == "DBI" ? value : value + kDipoleOverIsotropic;
    levels.rel = powerOfTen((levels.dBd - majorLobe) / 20);
  }
  return levels;
}

std::string convertGain(const std::string& unitsIn, const std::string& unitsOut, const std::string& value, bool& err) {
  const std::optional<Levels> levels = gainLevels(unitWord(unitsIn), CValP(value));
  err = !levels;
  return levels ? inUnits(*levels, unitWord(unitsOut)) : "";
}

struct MajorLobe {
  std::string gain;
  std::string units;
};

std::string convertPattern(const std::string& unitsIn, const std::string& unitsOut, const std::string& value,
                           const MajorLobe& lobe, bool& err) {
  err = true;
  if (getLenTrim(value) == 0 || getLenTrim(lobe.gain) == 0) return "";
  const std::string in = unitWord(unitsIn);
  const std::string out = unitWord(unitsOut);
  const std::string lobeUnit = unitWord(lobe.units);
  double majorLobe = CValP(lobe.gain);
  bool lobeFailed = false;
  if (lobeUnit == out) {
    // A lobe that cannot be converted counts as 0 dBd here.
    if (!isDecibel(out)) majorLobe = CValP(ConvertAntGain(lobe.units, "dBd", lobe.gain, lobeFailed));
  } else if (lobeUnit == in) {
    majorLobe = CValP(ConvertAntGain(lobe.units, isDecibel(out) ? unitsOut : "dBd", lobe.gain, lobeFailed));
    if (lobeFailed) return "";
  } else {
    return isDecibel(out) ? "0.0" : "1.0";
  }
  const std::optional<Levels> levels = patternLevels(in, CValP(value), majorLobe);
  err = !levels;
  return levels ? inUnits(*levels, out) : "";
}

std::string reportLine(const std::string& unitsIn, const std::string& unitsOut, const std::string& value) {
  return "Convert: " + formatNumber(CValP(value), kReported) + " " + unitsIn + " to " + unitsOut;
}

}  // namespace

std::string ConvertAntGain(const std::string& unitsIn, const std::string& unitsOut, const std::string& value,
                           bool& err) {
  const Procedure guard(procedure::ConvertAntGain);
  try {
    return convertGain(unitsIn, unitsOut, value, err);
  } catch (const RunTimeFailure& failure) {
    err = true;
    ErrHand(failure, reportLine(unitsIn, unitsOut, value));
    return "";
  }
}

double ConvertAntGainDbl(const std::string& unitsIn, const std::string& unitsOut, double value, bool& err) {
  return CValP(ConvertAntGain(unitsIn, unitsOut, generalText(value), err));
}

std::string ConvertAntPattern(const std::string& unitsIn, const std::string& unitsOut, const std::string& value,
                              const std::string& majLobeGain, const std::string& majLobeUnits, bool& err) {
  const Procedure guard(procedure::ConvertAntPattern);
  try {
    return convertPattern(unitsIn, unitsOut, value, {majLobeGain, majLobeUnits}, err);
  } catch (const RunTimeFailure& failure) {
    err = true;
    const std::string lobe =
        "Where Maj Lobe Gain is " + formatNumber(CValP(majLobeGain), kReported) + " " + majLobeUnits;
    ErrHand(failure, AddALine(reportLine(unitsIn, unitsOut, value), lobe));
    return "";
  }
}

double ConvertAntPatternDbl(const std::string& unitsIn, const std::string& unitsOut, double value, double majLobeGain,
                            const std::string& majLobeUnits, bool& err) {
  return CValP(ConvertAntPattern(unitsIn, unitsOut, generalText(value), generalText(majLobeGain), majLobeUnits, err));
}

}  // namespace vantrelix
