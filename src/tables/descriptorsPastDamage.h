// Descriptions of fields in which some bytes are damaged. Private to the check and the recovery of tables.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "tables/dbfDescriptors.h"

namespace vantrelix::dbf {

// The descriptions up to byte `limit`, beyond such as end the list for a reader: a name that begins with NUL or 0x0D, a
// type that is none. Only where the widths make up the record length with those, and not without them. A name that has
// lost its first byte gets an underscore there; a field of no type comes as a text whose bytes count.
std::optional<Descriptors> readPastDamage(std::string bytes, std::uint64_t limit, std::uint32_t recordLength);

}  // namespace vantrelix::dbf
