// The gain of a parabolic dish.
#pragma once

#include <string_view>

namespace vantrelix {

// In dBi, of a dish of that diameter (`unit` is a length of foundation/units.h) at `freq` MHz:
//   20 log10(diameter in m) + 20 log10(freq / 1000) + 17.8
// 17.8 is this system's own constant and stands for an aperture efficiency. An unknown unit, a diameter or a frequency
// that is not above 0, or one so large or small that no number holds the way to the result, sets `failed` and gives 0.
double ParabolaGain(double diameter, std::string_view unit, double freq, bool& failed);

}  // namespace vantrelix
