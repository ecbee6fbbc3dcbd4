// Numbers from text, text from numbers, and the small arithmetic that goes with them.
//
// No function here looks at the C or C++ locale: the decimal character and the digit separator are those that
// GetRegional keeps (regional.h).
#pragma once

#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/Value.h"

namespace vantrelix {

// "No valid value" in arrays and unit conversions.
inline constexpr double kNoValue = -88;

// A plain conversion: outer blanks and tabs, one sign in front, digits with the digit separator anywhere behind the
// first digit of the whole part, the decimal character, an exponent ("E" or "e"). Nothing where the text is anything
// else or out of range.
std::optional<double> plainNumber(std::string_view text);
bool isNumeric(std::string_view text);
// The plain conversion, failing with 13 (type mismatch) or 6 (overflow).
double CDbl(std::string_view text);

// A double from any value; never fails. Null gives 0. A text that is no number is cut from its right end while its last
// character is not a digit and the rest converted; what still is no number gives 0.
double CValP(const Value& value);
double CValP(std::string_view text);
inline double CValP(const char* text) { return CValP(std::string_view(text)); }
inline double CValP(const std::string& text) { return CValP(std::string_view(text)); }
// CValP for a 16-bit integer, halves to even; 0 out of range.
std::int16_t CIntP(std::string_view text);
// Conversion to a 16-bit integer, halves to even; fails with 6 out of range.
std::int16_t CInt(double value);
// Nearest integer, halves to even.
double roundHalfEven(double value);

// General text: up to 15 significant digits, exponent form below 1E-04 and from 1E+15 ("1E-05", "0.5", "-3").
std::string generalText(double value);
// The number that the general text of a value stands for; fails as CDbl does where that is none.
double generalNumber(double value);
// A named format such as "0.0000", "#0.00", "###0.0000" or "###,###,##0": rounds half away from zero on the general
// decimal text; a negative that rounds to zero loses its sign. "," in the whole part asks for digit separators.
std::string formatNumber(double value, std::string_view format);
// The same with `decimals` decimals, a point and no separators, whatever the regional setting. For files.
std::string fixedDecimals(double value, int decimals);

// Common logarithm. For 0 or less: a message "Math Error" that names the procedure, and 0.
double log10(double value);

double MinOf(std::initializer_list<double> values);
double MaxOf(std::initializer_list<double> values);

// Filters one key press of a numeric text box: a refused key becomes 0. Key codes are Unicode code points.
void chkNumeric(int& KeyAscii, bool decimalOK, bool minusOK, bool plusOK, bool digitSepOK, bool nsewOK, bool slashOK,
                bool spaceOK);

// The upper bound of the array in a dimension (from 1), or `fallback` where it has no element or no such dimension.
template <class T>
double ArrayTest(const std::vector<T>& array, double fallback = kNoValue, int dimension = 1) {
  return array.empty() || dimension != 1 ? fallback : static_cast<double>(array.size() - 1);
}
template <class T>
double ArrayTest(const std::vector<std::vector<T>>& array, double fallback, int dimension) {
  if (dimension == 1 || array.empty()) return ArrayTest(array, fallback);
  return dimension == 2 ? ArrayTest(array.front(), fallback) : fallback;
}

}  // namespace vantrelix
