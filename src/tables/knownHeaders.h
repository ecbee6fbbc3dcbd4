// Headers read before, for tables that are opened again and again. Private to the table-file sources.
//
// A header counts only for the very state of a file at rest that it was read in.
#pragma once

#include <optional>

#include "platform/Platform.h"
#include "tables/dbfHeader.h"

namespace vantrelix::dbf {

std::optional<Header> knownHeader(const platform::FileState& state);
void keepHeader(const platform::FileState& state, const Header& header);

}  // namespace vantrelix::dbf
