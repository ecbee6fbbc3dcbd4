// Opening the three tables of an antenna library, made or mended where needed.
#pragma once

#include <string>

#include "tables/Database.h"

namespace vantrelix {

// Makes sure that the three files of a library are there and sound; blank unless it fails at run time itself.
std::string MakeAntFiles(const std::string& code);

// An open updatable cursor over the whole table, or nothing.
RecordsetPtr MakeAMSFile(const std::string& code);
RecordsetPtr MakeAHDFile(const std::string& code);
RecordsetPtr MakeAVDFile(const std::string& code);

// The three tables of the library in a folder of the caller's choice; blank means the antennas folder. The first one
// that gives no cursor leaves those behind it untouched.
struct LibraryTables {
  RecordsetPtr rsAMS, rsAHD, rsAVD;
};
LibraryTables openLibraryTables(const std::string& folder, const std::string& code);

// "AHD" or "AVD" in the place of the first three characters of an AMS name.
std::string partnerTable(const std::string& amsName, const std::string& prefix);

}  // namespace vantrelix
