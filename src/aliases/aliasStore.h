// Friendly descriptions of library files: a chain of INI files and a built-in table.
#pragma once

#include <string>
#include <vector>

namespace vantrelix {

enum class LibraryFamily { antenna, line };

// The description of a library file by the chain; "|" where none is known.
std::string libraryDescription(LibraryFamily family, const std::string& file);
// The description from the folder's defaults file or the built-in table; blank where neither knows the file.
std::string GetAliasDefault(const std::string& sSection, const std::string& sFile);

struct LibraryEntry {
  std::string file;  // "AMSX0001.DBF"
  std::string description;
};
// The library files of a family in the order of the picker: ascending by description, ties in order of arrival.
std::vector<LibraryEntry> libraryFiles(LibraryFamily family);

}  // namespace vantrelix
