// Lengths and frequencies.
#pragma once

#include <string_view>

namespace vantrelix {

// The length in another unit. The words are those of the table in units.cpp, compared exactly; the same word on both
// sides gives the value unchanged. An unknown word sets err and gives 0.
double ConvertLen(std::string_view from, std::string_view to, double value, bool& err);
double ConvertLenStr(std::string_view from, std::string_view to, std::string_view value, bool& err);

// The frequency in another unit ("Hz", "KHz", "MHz", "GHz", exactly so). An unknown word sets err and gives -88.
double ConvertFreq(std::string_view from, std::string_view to, double value, bool& err);

}  // namespace vantrelix
