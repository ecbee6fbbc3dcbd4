// What can be saved of a damaged table, in a new sound one.
#pragma once

#include <cstdint>
#include <string>

#include "tables/tableCheck.h"

namespace vantrelix {

struct TableRecovery {
  std::uint32_t rows = 0;  // live rows of the new table
  std::uint32_t deleted = 0;
  std::uint32_t behindCount = 0;  // of both, those that the old header did not count
  std::uint64_t repairedValues = 0;
  // That the old header counts and the file does not hold, that were never written, or that the device does not give.
  std::uint32_t lostRows = 0;
  FaultList faults;  // of the old table; leftOver among them tells of bytes in which no rows could be made out
};

// Writes the rows of the table at `path`, which is only read, to a new table at `newPath` and the texts of its memo
// file to a new one beside that. Names, types and widths of the fields, the mark of the code page and the version stay
// where they can; rows stay byte for byte where they are sound, and deleted rows stay deleted. A value that is none
// becomes blank. Texts with bytes that the code page does not know are kept: that page may be the wrong one. Bytes of
// the rows that no field describes are kept in character fields of their own, REST1 and so on, behind the others.
//
// The table may be in use: no row is saved half written, and while rows behind the count are saved others can add none.
// The new files, a copy of the .CPG among them, are complete and durable before they get their names, and only those
// who may read the old ones may read them. 58 where a file of such a name exists; 3343 where no sense can be made of
// the old one; 3011 and 3051 as DbfFile::open; 3211 where there are rows behind the count and another program keeps the
// header locked for longer than DbfFile::lockWait(). What fails leaves nothing behind.
TableRecovery recoverTable(const std::string& path, const std::string& newPath, const CheckProgress& progress = {});

}  // namespace vantrelix
