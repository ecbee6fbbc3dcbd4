// Numbers as the digits of a fixed-width field. Private to the table-file sources.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vantrelix::dbf {

// The nearest double to the digits of a field: blanks and NULs around, one sign, digits with at most one point, an
// exponent. Nothing where the field is blank, full of asterisks or holds anything else.
std::optional<double> parseNumber(std::string_view bytes);

// The digits that fill a field: rounded half away from zero on the number's text of 15 digits, right-aligned. Fewer
// decimals where the whole part needs the room; nothing where even the whole part does not fit or there is no such
// number.
std::optional<std::string> numberDigits(double value, std::size_t width, int decimals);

}  // namespace vantrelix::dbf
