// The header of a table file: what is read from its bytes and checked against the file, and the bytes of a new one.
// Private to the table-file sources. The rules for damaged headers are written down in docs/table-format.md.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tables/DbfFile.h"

namespace vantrelix::dbf {

inline constexpr std::uint64_t kFixedHeader = 32;
inline constexpr std::uint64_t kDescriptor = 32;
inline constexpr unsigned char kHeaderEnd = 0x0D;
inline constexpr unsigned char kFileEnd = 0x1A;
inline constexpr std::uint64_t kBackLink = 263;  // bytes behind the terminator in the visual family
// The flags of the table, byte 28.
inline constexpr unsigned char kTableFlagIndex = 0x01;
inline constexpr unsigned char kTableFlagMemo = 0x02;

enum class MemoFormat { none, dbase3, dbase4, foxpro };

struct Header {
  int version = 3;
  std::uint32_t count = 0;  // as the header says
  std::uint32_t headerLength = 0;
  std::uint32_t recordLength = 0;  // as the rows stand in the file
  bool isLengthInDoubt = false;    // the fields make up more than the header says: it depends on the file's size
  bool structuralIndex = false;
  bool autoIncrement = false;
  unsigned char languageMark = 0;
  int nullFlags = -1;            // index of the null-flags field
  std::vector<DbfField> fields;  // names as bytes of the file
};

// Reads the 16-bit and 32-bit numbers of the format, lowest byte first.
std::uint32_t littleEndian(const unsigned char* bytes, int count);
void putLittleEndian(unsigned char* bytes, std::uint32_t value, int count);

// The header of the file whose first bytes are given: at least min(fileSize, 65536 + 32) of them. Fails with 3343,
// naming the file and the fault.
Header parseHeader(std::string_view bytes, std::uint64_t fileSize, const std::string& displayName);

// Rows that both the header's count and the file's size promise.
std::uint32_t rowsWithin(std::uint64_t fileSize, const Header& header, std::uint32_t count);

bool isReadable(int version);
// Of a format that is refused by its name.
bool isStranger(int version);
// Whether a table of the version is of the family that keeps numbers in binary (0x30 to 0x32).
bool isVisual(int version);
MemoFormat memoFormatOf(int version);

// The bytes of a new table without rows, the end mark included. The names are those that are to be stored.
std::string newHeader(const std::vector<DbfNewField>& fields, const platform::DateTime& today,
                      unsigned char languageMark);

}  // namespace vantrelix::dbf
