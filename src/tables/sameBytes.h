// Whether two rows have the same bytes in a field. Private to this layer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace vantrelix {

// Most fields of IDs have from 8 to 16 bytes: two reads, which may overlap, take the place of a call for each row.
inline bool sameBytes(const unsigned char* a, const unsigned char* b, std::size_t width) {
  if (width < 8 || width > 16) return std::memcmp(a, b, width) == 0;
  const auto eightBytes = [](const unsigned char* at) {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, at, sizeof bytes);
    return bytes;
  };
  const std::size_t tail = width - 8;
  return ((eightBytes(a) ^ eightBytes(b)) | (eightBytes(a + tail) ^ eightBytes(b + tail))) == 0;
}

}  // namespace vantrelix
