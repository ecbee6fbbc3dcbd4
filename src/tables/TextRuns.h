// Where the rows of a text stand in a table, remembered from one query of a process to its next.
//
// A query that seeks a text in a character field has to look at every row once. While it does, the runs of rows with
// the same text are noted, so that the next one reads the rows of its own text alone. When what is noted counts, and
// how it lasts over writes of this process, tells RememberedTable.h. Private to this layer.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tables/DbfFile.h"
#include "tables/RunList.h"

namespace vantrelix {

// ASCII letters alone: other bytes may be parts of characters.
inline unsigned char upperByte(unsigned char c) {
  return c >= 'a' && c <= 'z' ? static_cast<unsigned char>(c - 'a' + 'A') : c;
}

// A text of ASCII characters without NUL and without blanks at its end, in upper case; sought in a field whatever the
// case in which it stands there.
struct SoughtText {
  std::size_t offset = 0;  // of the field in a record
  std::size_t width = 0;
  std::string text;
};

// Runs over the records as DbfFile::scanBlocks does, but may leave out such as do not have the text in the field.
void scanBlocksForText(DbfFile& table, const SoughtText& sought, const BlockVisitor& visit);

// The runs of rows that may have the text, where they are remembered of the state in which the file was last seen at
// rest; null where they are not. What is read of them counts where the file is in that state still behind the read.
std::optional<std::vector<RowRun>> runsAtRest(const DbfFile& table, const SoughtText& sought);

// The table has just been opened: from now on it may be seen to stand unchanged. Gives the state of its file.
platform::FileState noteOpening(const DbfFile& table);

// Tables below this many bytes are read whole each time; 64 KiB unless set. For tests.
std::uint64_t smallestRemembered();
void setSmallestRemembered(std::uint64_t bytes);

}  // namespace vantrelix
