#include "foundation/units.h"

#include "foundation/numbers.h"

namespace vantrelix {

namespace {

// So many of the pivot unit: factor / divisor, as a fraction so that 9.5 decimeters are 0.95 m and not nearly that.
struct Unit {
  std::string_view word;
  double factor;
  double divisor = 1;
};

constexpr Unit kMetres[] = {
    {"m", 1},
    {"meter", 1},
    {"meters", 1},
    {"Meter", 1},
    {"METER", 1},
    {"Meters", 1},
    {"METERS", 1},
    {"km", 1000},
    {"decimeter", 1, 10},
    {"decimeters", 1, 10},
    {"Decimeter", 1, 10},
    {"DECIMETER", 1, 10},
    {"Decimeters", 1, 10},
    {"DECIMETERS", 1, 10},
    {"cm", 1, 100},
    {"mm", 1, 1000},
    {"ft", 0.3048},
    {"in", 0.0254},
    {"mi", 1609.344},
    // Not the 1852 m of the international nautical mile: the suite's data were all made with this one.
    {"nm", 1853},
};

constexpr Unit kMegahertz[] = {{"Hz", 1, 1000000}, {"KHz", 1, 1000}, {"MHz", 1}, {"GHz", 1000}};

template <std::size_t N>
double convert(const Unit (&units)[N], std::string_view from, std::string_view to, double value, double unknown,
               bool& err) {
  err = false;
  if (from == to) return value;
  const Unit* source = nullptr;
  const Unit* target = nullptr;
  for (const Unit& unit : units) {
    if (unit.word == from) source = &unit;
    if (unit.word == to) target = &unit;
  }
  err = source == nullptr || target == nullptr;
  if (err) return unknown;
  return value * source->factor / source->divisor * target->divisor / target->factor;
}

}  // namespace

double ConvertLen(std::string_view from, std::string_view to, double value, bool& err) {
  return convert(kMetres, from, to, value, 0, err);
}

double ConvertLenStr(std::string_view from, std::string_view to, std::string_view value, bool& err) {
  return ConvertLen(from, to, CValP(value), err);
}

double ConvertFreq(std::string_view from, std::string_view to, double value, bool& err) {
  return convert(kMegahertz, from, to, value, kNoValue, err);
}

}  // namespace vantrelix
