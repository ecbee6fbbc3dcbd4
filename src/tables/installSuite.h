// Makes an installation folder: INI files, data folders, the dictionary. Keeps what is there.
#pragma once

#include <string>

namespace vantrelix {

// Makes the folder (library's form) an installation folder and uses it from now on. Throws what the file system throws.
void installSuite(const std::string& folder);

}  // namespace vantrelix
