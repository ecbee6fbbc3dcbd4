// Index files that other programs keep beside a table. Private to this layer.
#pragma once

#include <string>

namespace vantrelix {

// Before rows of a table are changed: names in the log, once in a process, the index files (CDX, IDX, MDX, NDX, NTX) of
// the table's name. The table's header does not say that one belongs to it, so that no program opens one by itself;
// one who does has to build it anew. What cannot be found out or logged keeps nobody from writing.
void tellOfIndexFiles(const std::string& tablePath);

}  // namespace vantrelix
