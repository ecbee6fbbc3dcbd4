// Which formats' readers accept a file.
#pragma once

#include <string>
#include <vector>

#include "import/ImportFormat.h"

namespace vantrelix {

struct AcceptingFormat {
  const ImportFormat* format;
  std::vector<ImportedAntenna> antennas;  // at least one, each with points
};

// What each format would make of the file, in menu order: those alone whose reader ends without an error and finds an
// antenna with points. The other file of a pair is read with it. Stores nothing, and shows no message: a reader that
// asks is answered No. Throws RunTimeFailure where the file itself cannot be read.
std::vector<AcceptingFormat> identifyFile(const std::string& path);

}  // namespace vantrelix
