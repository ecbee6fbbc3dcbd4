// Descriptions of the libraries that the suite ships, whether or not their files are there.
#pragma once

#include <string_view>

namespace vantrelix {

// The description of a file name in capitals; blank where the table of its family does not have it.
std::string_view builtInAntennaAlias(std::string_view file);
std::string_view builtInLineAlias(std::string_view file);

}  // namespace vantrelix
