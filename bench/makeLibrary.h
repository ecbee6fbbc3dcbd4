// Libraries of made-up antennas, written by the library's own procedure.
#pragma once

#include <filesystem>
#include <string>

#include "antenna/makeAntFiles.h"
#include "madeAntennas.h"

namespace vantrelix::bench {

constexpr const char* kLibrary = "AMSBENCH";

// Makes the folder an installation of the suite where it is none yet, and uses it from now on.
void useSuite(const std::filesystem::path& folder);

// Appends the antenna by the import's own procedure; its ID is the next free one.
void appendAntenna(const MadeAntenna& antenna, const LibraryTables& tables);
// Makes the tables in the folder (library's form) and writes the antennas into them. The suite in use has to have its
// dictionary. Gives the tables open.
LibraryTables makeLibrary(const std::string& folder, int antennas);
// The master table alone, its IDs from `firstPlace` on.
RecordsetPtr makeMasterTable(const std::string& folder, int antennas, int firstPlace);

}  // namespace vantrelix::bench
