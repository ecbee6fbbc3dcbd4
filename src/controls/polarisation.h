// Polarisation is stored as a code and shown as a name.
#pragma once

#include <string>
#include <string_view>

namespace vantrelix {

// Exact, blanks round the code aside; "None" for a code that is not known.
std::string PolCodeToName(std::string_view code);
// Exact; "none" for a name that is not known.
std::string PolNameToCode(std::string_view name);

}  // namespace vantrelix
