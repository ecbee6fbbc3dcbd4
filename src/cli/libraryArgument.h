// A library as the command line names it.
#pragma once

#include <string>

#include "antenna/AntRecord.h"
#include "antenna/libraryName.h"
#include "cli/Session.h"

namespace vantrelix::cli {

// An AMS or LMS file name with or without folder and extension; without a folder it is one of the installation's. A
// blank name is refused.
LibraryName libraryArgument(const Session& session, const std::string& argument);

// One antenna by Get_Ant_ArrayDB, in the units asked for or, where they are blank, as stored. `reason` tells why there
// is none or why it is not whole; blank where it is.
AntRecord antennaArgument(const Session& session, const LibraryName& library, const std::string& id, std::string units,
                          std::string& reason);

}  // namespace vantrelix::cli
