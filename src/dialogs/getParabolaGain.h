// The gain of a dish, asked of the user.
#pragma once

#include <cstdint>
#include <string>

namespace vantrelix {

// Shows frmParabGain for a frequency (MHz) and gives what stood in its boxes when the user left it: the gain in dBi
// with two decimals (0 where none could be computed), the diameter and its unit ("cm", "ft", "in" or "m"). `ok` is a
// 16-bit boolean (-1 true, 0 false): true where the user continued with a gain above 0.
void getParabolaGain(double freq, double& gain, double& diameter, std::string& unit, std::int16_t& ok);

}  // namespace vantrelix
