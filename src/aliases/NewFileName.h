// The name of a library that is to be made.
#pragma once

#include <string>

namespace vantrelix {

// The first name of the prefix, "X" and a count from 1 of at least nDigits digits that no file of the folder bears with
// the extension, whatever its case. Fails where the folder cannot be read.
std::string NewFileName(const std::string& sPrefix, const std::string& sPath, const std::string& sExt, int nDigits);

}  // namespace vantrelix
