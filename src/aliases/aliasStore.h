// Friendly descriptions of library files: a chain of INI files and a built-in table.
//
// A description is known where it is neither blank nor "|". The first that is known wins, of: the folder's store, or
// SYSNODTA\QVALIAS.INI of the program's folder where that file does not exist; QVALIAS.INI of the program's folder;
// GetAliasDefault. The installation folder serves a program that stands elsewhere, behind the program's own.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/getINI.h"

namespace vantrelix {

enum class LibraryFamily { antenna, line };

struct AliasFamily {
  LibraryFamily family;
  std::string_view prefix;       // "AMS"
  std::string_view section;      // of all its INI files: "ANTENNAS\AMS?????.DBF"
  std::string_view filePattern;  // "AMS?????.DBF", each question mark one character
  std::string (*folder)();       // getAntennasPath
  std::string_view store;        // "QVAliasANT.INI", in the folder
};
const AliasFamily& aliasFamily(LibraryFamily family);
// The family that the first three letters name, in any case; null where they name none.
const AliasFamily* aliasFamilyOf(std::string_view prefix);

struct LibraryEntry {
  std::string file;  // "AMSX0001.DBF"
  std::string description;
};

// The stores of a family in a folder, each read once, when this is made: for the descriptions of many files.
class AliasStore {
 public:
  // A blank folder means the family's own.
  explicit AliasStore(const AliasFamily& family, const std::string& folder = {});

  // The description of a file by the chain; "|" where none is known.
  std::string description(std::string_view file) const;
  // The library files of the folder in the order of the picker: ascending by description in the order of character
  // codes, ties in order of arrival. Fails where the folder cannot be read.
  std::vector<LibraryEntry> files() const;
  // Writes the descriptions into the folder's store, in one write; what else stands there is kept. False where it
  // cannot be written.
  bool save(const std::vector<LibraryEntry>& entries) const;

 private:
  const AliasFamily& family_;
  std::string folder_;
  std::vector<ProfileSection> chain_;
  std::optional<ProfileSection> defaults_;
};

// The description of a library file by the chain, in the family's own folder; "|" where none is known.
std::string libraryDescription(LibraryFamily family, const std::string& file);
// AliasStore::files of the family's own folder.
std::vector<LibraryEntry> libraryFiles(LibraryFamily family);
// The description from the defaults file of the antennas folder, for an antenna, or from the built-in table of the
// section's family; blank where neither knows the file, and for any other section.
std::string GetAliasDefault(const std::string& sSection, const std::string& sFile);

}  // namespace vantrelix
