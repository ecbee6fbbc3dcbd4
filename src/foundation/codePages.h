// The mapping tables of the single-byte code pages.
#pragma once

#include <cstdint>

namespace vantrelix {

// The 128 characters of bytes 0x80 to 0xFF, all below U+10000 and each once; null where the page is not known.
const std::uint16_t* upperHalf(int codePage);

}  // namespace vantrelix
