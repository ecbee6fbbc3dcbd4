// A library as the command line names it.
#pragma once

#include <string>

#include "antenna/libraryName.h"
#include "cli/Session.h"

namespace vantrelix::cli {

// An AMS or LMS file name with or without folder and extension; without a folder it is one of the installation's.
LibraryName libraryArgument(const Session& session, const std::string& argument);

}  // namespace vantrelix::cli
