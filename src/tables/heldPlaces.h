// All places where programs of the family lock a table's header and records, held against their writes. Private to
// this layer.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/Platform.h"
#include "tables/dbfLocks.h"

namespace vantrelix::dbf {

// Nobody locks the header, a record or the whole file for a write while this lives; readers go on, those of this
// object's owner among them. What is known of programs of other makes are these locks alone: one that has the table
// open and holds none is not noticed.
class HeldPlaces {
 public:
  // Waits for a writer as long as DbfFile::lockWait() tells, then fails with 3211.
  explicit HeldPlaces(const std::string& path);

 private:
  // A file of its own: a lock of the table's own object would end with that object's next read.
  std::unique_ptr<platform::File> file_;
  HeldLock low_;
  std::optional<HeldLock> high_;
};

}  // namespace vantrelix::dbf
