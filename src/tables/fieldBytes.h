// The bytes of one field, and the flags that belong to it. Private to the sources of the field codec.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "tables/dbfHeader.h"
#include "tables/fieldCodec.h"

namespace vantrelix::dbf {

inline constexpr int kBinaryPointer = 4;  // bytes of a memo field that holds no digits
inline constexpr long kJulianDayOf1970 = 2440588;

inline std::string_view bytesOf(const unsigned char* record, const DbfField& field) {
  return {reinterpret_cast<const char*>(record) + field.offset, static_cast<std::size_t>(field.width)};
}

inline bool isBlank(std::string_view bytes) {
  return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return byte == ' ' || byte == '\0'; });
}

inline bool flag(const unsigned char* record, int bit, const FieldContext& context) {
  return bit >= 0 && context.nullFlagsOffset >= 0 && (record[context.nullFlagsOffset + bit / 8] >> (bit % 8) & 1) != 0;
}

inline void setFlag(unsigned char* record, int bit, const FieldContext& context, bool on) {
  if (bit < 0 || context.nullFlagsOffset < 0) return;
  unsigned char& byte = record[context.nullFlagsOffset + bit / 8];
  const auto mask = static_cast<unsigned char>(1 << (bit % 8));
  byte = static_cast<unsigned char>(on ? byte | mask : byte & ~mask);
}

inline std::uint64_t wide(const unsigned char* bytes) {
  return littleEndian(bytes, 4) | static_cast<std::uint64_t>(littleEndian(bytes + 4, 4)) << 32;
}

inline void putWide(unsigned char* bytes, std::uint64_t value) {
  putLittleEndian(bytes, static_cast<std::uint32_t>(value), 4);
  putLittleEndian(bytes + 4, static_cast<std::uint32_t>(value >> 32), 4);
}

inline void putBytes(unsigned char* record, const DbfField& field, std::string_view bytes, char padding) {
  unsigned char* at = record + field.offset;
  std::fill(std::copy(bytes.begin(), bytes.end(), at), at + field.width, static_cast<unsigned char>(padding));
}

}  // namespace vantrelix::dbf
