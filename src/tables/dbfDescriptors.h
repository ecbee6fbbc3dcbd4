// The descriptions of the fields in the header of a table file. Private to the table-file sources.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "tables/dbfHeader.h"

namespace vantrelix::dbf {

// In the flags of a field: it has a bit in the null flags; it is no text of a code page.
inline constexpr unsigned char kFlagNullable = 0x02;
inline constexpr unsigned char kFlagBinary = 0x04;

struct Descriptors {
  std::vector<DbfField> fields;      // names as bytes of the file, widths as stored, no place in the record
  std::vector<unsigned char> flags;  // byte 18 of each
  std::uint64_t end = kFixedHeader;  // where the terminator stands or should stand
  bool terminated = false;
};

// Whether the byte can stand for the type of a field.
bool isFieldType(unsigned char type);

// The descriptions in the first bytes of a file, up to the terminator, to byte `limit`, or to what is none.
Descriptors readDescriptors(std::string_view bytes, std::uint64_t limit);

// The record length that the widths make up, the deletion byte included; with `longText` the decimals of C fields count
// 256 each.
std::uint32_t sumOfWidths(const std::vector<DbfField>& fields, bool longText);
// FoxPro and Clipper keep the high byte of a long text's width in the byte of the decimals.
void takeLongTexts(std::vector<DbfField>& fields);

// Gives the fields their places in the record.
void placeFields(Header& header);
// Gives the fields of a table of the visual family their bits in the null flags.
void placeNullBits(Header& header, const std::vector<unsigned char>& flags);

}  // namespace vantrelix::dbf
