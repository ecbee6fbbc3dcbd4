// The lock points of a table file. Private to the table-file sources.
//
// Records and the header are locked where programs of the FoxPro family look for it, so that they and this library see
// each other's writes; the two bytes for sharing are this library's own. docs/table-format.md tells the places.
#pragma once

#include <cstdint>
#include <string>

#include "platform/Platform.h"
#include "tables/DbfFile.h"

namespace vantrelix::dbf {

struct LockRange {
  std::uint64_t offset;
  std::uint64_t length;
};

inline constexpr LockRange kHeaderLock{0x40000000, 1};
inline constexpr LockRange kDenyWriteLock{0x7FFFFFFE, 1};
inline constexpr LockRange kSharingLock{0x7FFFFFFF, 1};

LockRange recordLock(std::uint64_t recordOffset, std::uint64_t recordLength, std::uint32_t number,
                     bool structuralIndex);

// Takes the locks that an opening holds for as long as the file is open. Fails with 3051 where another holds the table
// exclusively or, for an exclusive opening, holds it at all; with 3211 where another denies writing.
void lockForSharing(platform::File& file, Sharing sharing, const std::string& displayName);

// A lock held until its end. Waits for it as long as DbfFile::lockWait() tells, then fails with 3211.
class HeldLock {
 public:
  HeldLock(platform::File& file, LockRange range, platform::LockKind kind, const std::string& displayName);
  ~HeldLock();
  HeldLock(const HeldLock&) = delete;
  HeldLock& operator=(const HeldLock&) = delete;

 private:
  platform::File& file_;
  LockRange range_;
};

}  // namespace vantrelix::dbf
