// Headers read before, for tables that are opened again and again. Private to the table-file sources.
//
// A header counts only for the very state of a file at rest that it was read in.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/Platform.h"
#include "tables/dbfHeader.h"

namespace vantrelix::dbf {

using SharedHeader = std::shared_ptr<const Header>;

struct KnownFile {
  platform::FileState state;
  SharedHeader header;
};

// The file last known to stand at the path; another may stand there meanwhile.
std::optional<KnownFile> knownFile(const std::string& path);
// The header of a file that is in that state; null where none is known.
SharedHeader knownHeader(const platform::FileState& state);
void keepHeader(const std::string& path, const KnownFile& file);

}  // namespace vantrelix::dbf
