// A value as the box of a control shows it.
#pragma once

#include <string>
#include <string_view>

#include "foundation/Value.h"

namespace vantrelix {

std::string shownText(const Value& value, const char* forNull = "");
// A number in a named format; text that is no number stays.
std::string numberShown(const Value& value, std::string_view format = "#0.00");

}  // namespace vantrelix
