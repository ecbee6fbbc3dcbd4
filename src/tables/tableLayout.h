// How the rows of a table stand in its file, as far as sense can be made of a header that may be damaged. Private to
// the check and the recovery of tables.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/Platform.h"
#include "tables/dbfHeader.h"
#include "tables/dbfLocks.h"
#include "tables/fieldCodec.h"

namespace vantrelix::dbf {

// Of the fields that a recovery makes of bytes that no field describes, at most.
inline constexpr std::uint32_t kWidestRest = 254;

// What stands behind the rows that are counted.
struct RowsBehind {
  std::uint32_t rows = 0;             // that look like rows, up to the last that is not blank
  std::uint64_t end = 0;              // the byte behind them
  std::uint64_t bytesLeft = 0;        // from there to the end of the file
  std::optional<unsigned char> next;  // the first of those, where there is one and the device gives it
  bool blankLeft = false;             // nothing but blanks and NULs among them, but for a mark at their end
};

struct TableLayout {
  std::string path;
  std::string refusal;      // why DbfFile::open refuses the table; blank where it does not
  std::string headerBytes;  // the first bytes of the file
  std::uint64_t fileSize = 0;
  Header header;                     // the lengths as the rows need them; fields with the parts that lie in the record
  std::vector<DbfField> stored;      // the fields with the widths that their descriptions give
  std::vector<unsigned char> flags;  // of the fields
  std::uint64_t descriptorsEnd = 0;
  bool terminated = false;
  FieldContext context;
  RowsBehind behind;
  bool isSettled = true;  // false where another program may have been adding rows meanwhile

  std::uint32_t headerLengthClaimed() const { return number(8, 2); }
  std::uint32_t recordLengthClaimed() const { return number(10, 2); }
  std::uint32_t number(std::size_t at, int bytes) const {
    return littleEndian(reinterpret_cast<const unsigned char*>(headerBytes.data()) + at, bytes);
  }
  std::uint64_t offsetOf(std::uint64_t row) const { return header.headerLength + row * header.recordLength; }
  // Whole rows that lie in the file, and those of them that are counted.
  std::uint32_t rowsInFile() const;
  std::uint32_t rowsCounted() const { return std::min(rowsInFile(), header.count); }
  // Bytes of a record that no field describes, at its end, and the place of the first of them.
  std::uint32_t restLength() const { return header.recordLength - restOffset(); }
  std::uint32_t restOffset() const;
};

// Of the table at the path, which may be in use. Takes the header's lock, shared: no row is just being added then, and
// the count belongs to what stands behind the rows; who gives up the lock lets others add rows again. Where another
// keeps the lock for longer than DbfFile::lockWait() it is not taken, and what counts is two looks at the file's size
// and count that agree. 3343 where no sense can be made of the file: no header, another format, nothing that looks like
// rows.
TableLayout findLayout(platform::File& file, const std::string& path, std::optional<HeldLock>& header);

}  // namespace vantrelix::dbf
