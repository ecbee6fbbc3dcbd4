// Where the rows of a text stand in a large table, remembered from one query of a process to its next.
//
// A query that seeks a text in a character field has to look at every row once. While it does, the runs of rows with
// the same text are noted, so that the next one reads the rows of its own text alone. What is noted counts only while
// the file is the one it was: device, file number, size and time of the last change. Since two changes within one tick
// of the file system's clock have the same time, notes are taken only of a file that had stood unchanged for longer
// than a tick when the reading began, by this machine's steady clock. Private to this layer.
#pragma once

#include <cstdint>
#include <string>

#include "tables/DbfFile.h"

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

// Runs over the records as DbfFile::scan does, but may leave out such as do not have the text in the field.
void scanForText(DbfFile& table, const SoughtText& sought, const RecordVisitor& visit);

// The file has been opened, or written by this process: from now on it may be seen to stand unchanged.
void noteFileState(const DbfFile& table);

// Tables below this many bytes are read whole each time; 1 MiB unless set. For tests.
std::uint64_t smallestRemembered();
void setSmallestRemembered(std::uint64_t bytes);

}  // namespace vantrelix
