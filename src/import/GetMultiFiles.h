// The open dialog for several files.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "import/ImportFormat.h"

namespace vantrelix {

// Asks for files in the desktop's open dialog, which begins in `folder` and offers the filters and then "All Files".
// `filterIndex` names the filter chosen at first, counted from 1; a negative one, or one of 65535 and more, the last.
//
// Gives full paths from element 1 on; element 0 is always blank, so the greatest index is the number of files. With the
// dialog cancelled there is element 0 alone. A failure is told by ErrHand; what was found until then is given.
std::vector<std::string> GetMultiFiles(const std::string& title, const std::string& folder,
                                       const std::vector<FileFilter>& filters, std::int32_t filterIndex);

}  // namespace vantrelix
