// How the values of a query compare.
//
// Text is equal where it is the same but for trailing blanks; it orders without regard to case first, then by character
// code. A boolean counts as -1 or 0 beside numbers. Text beside a number, a date or a boolean counts as what it says.
#pragma once

#include <optional>
#include <string_view>

#include "foundation/Value.h"

namespace vantrelix {

// The text without its trailing blanks and NULs.
std::string_view withoutPadding(std::string_view text);

// Negative, 0 or positive.
int compareText(std::string_view a, std::string_view b);
// The same; nothing where one is null or the two cannot be compared.
std::optional<int> compareValues(const Value& a, const Value& b);

// A number with a point for its decimals, outer blanks allowed; nothing where the text is anything else.
std::optional<double> sqlNumber(std::string_view text);
// The number a text begins with, 0 where it begins with none.
double sqlLeadingNumber(std::string_view text);
// A date as month/day/year or year-month-day, a time of day behind it allowed (hours:minutes[:seconds], AM, PM).
std::optional<DateTime> sqlDate(std::string_view text);

// Whether the whole text matches: "*" and "%" stand for any text, "?" and "_" for one character; letters match in any
// case.
bool matchesPattern(std::string_view text, std::string_view pattern);

}  // namespace vantrelix
