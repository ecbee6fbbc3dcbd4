// The ways in which a library is named.
#pragma once

#include <string>
#include <string_view>

namespace vantrelix {

struct LibraryName {
  std::string folder;  // the library's form, no trailing backslash
  std::string stem;    // "AMSX0001", in capitals
  std::string code;    // "X0001": what follows the first three characters
};

// A name as a person gives it: "AMSX0001", "amsx0001.dbf", a path in the machine's form or the library's. Without a
// folder it is the antennas folder; a relative folder is made absolute.
LibraryName parseLibraryName(std::string_view text);

// The folder of the tables: the path itself, or the folder of the file that it names.
std::string tableFolder(const std::string& path);

// True where a table file can be reached, whatever the case of its name, even if it is empty.
bool tableFileExists(const std::string& path);

}  // namespace vantrelix
