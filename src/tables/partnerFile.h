// Files that stand beside a table under its name. Private to the table-file sources.
#pragma once

#include <string>
#include <string_view>

namespace vantrelix {

// The path with another extension (without its point).
std::string withExtension(const std::string& path, std::string_view extension);

// The file of the table's name with that extension, whatever its case; blank where there is none.
std::string partnerFile(const std::string& tablePath, std::string_view extension);

// The memo file of a table: .FPT (.DCT beside a .DBC) or .DBT.
std::string memoPartner(const std::string& tablePath, bool foxpro);

}  // namespace vantrelix
