// The rows of a file that may be in use and may be damaged, read one behind the other. Private to the check and the
// recovery of tables.
//
// Rows that DbfFile cannot open are read as it reads its own: at rest without locks, else with the records' locks held
// shared for the moment of the read, never waiting for long.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "platform/Platform.h"
#include "tables/dbfLocks.h"
#include "tables/restingFile.h"
#include "tables/tableLayout.h"

namespace vantrelix::dbf {

class WholeRows {
 public:
  // The bytes of a row, null where the device does not give them. Gives false to stop.
  using Look = std::function<bool(std::uint32_t number, const unsigned char* bytes)>;
  // Told now and then how far it is.
  using Progress = std::function<void(std::uint64_t next)>;

  // Both must outlive it.
  WholeRows(platform::File& file, const TableLayout& layout);

  // Hands over the rows from `first` to before `end`, or to the end of the file.
  void each(std::uint32_t first, std::uint32_t end, const Look& look, const Progress& progress = {});

 private:
  bool give(std::uint32_t first, std::uint32_t count, const Look& look);
  std::uint32_t read(std::uint32_t first, std::uint32_t count, unsigned char* bytes);
  std::uint32_t readLocked(std::uint32_t first, std::uint32_t count, unsigned char* bytes);
  std::uint32_t readHeld(std::uint32_t first, std::uint32_t count, unsigned char* bytes, LockRange range);
  std::uint32_t readUnlocked(std::uint32_t first, std::uint32_t count, unsigned char* bytes);

  platform::File& file_;
  const TableLayout& layout_;
  RestingFile rest_;
  std::int64_t patience_;  // milliseconds that are left for rows that another program holds
  std::vector<unsigned char> chunk_;
};

}  // namespace vantrelix::dbf
