// The lock points of a table file. Private to the table-file sources.
//
// Records and the header are locked where programs of the FoxPro family look for it, so that they and this library see
// each other's writes; the two bytes for sharing are this library's own. docs/table-format.md tells the places.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/Platform.h"
#include "tables/DbfFile.h"

namespace vantrelix::dbf {

struct LockRange {
  std::uint64_t offset;
  std::uint64_t length;
};

// Every program of the family counts file offsets in 31 bits.
inline constexpr std::uint64_t kLargestFile = 0x7FFFFFFF;

inline constexpr LockRange kHeaderLock{0x40000000, 1};
inline constexpr LockRange kDenyWriteLock{0x7FFFFFFE, 1};
inline constexpr LockRange kSharingLock{0x7FFFFFFF, 1};
// Where the header and all records have their locks: before the bytes for sharing and, from 1 GB on, behind them.
inline constexpr LockRange kLowPlaces{kHeaderLock.offset, kDenyWriteLock.offset - kHeaderLock.offset};
inline constexpr LockRange kHighPlaces{kSharingLock.offset + 1,
                                       kHeaderLock.offset + kLargestFile - kSharingLock.offset};

// The lock of a record, by its offset in the file and its number. Where that range, at 1 GB, would hold a byte for
// sharing, it is the part before or behind those.
LockRange recordLock(std::uint64_t recordOffset, std::uint64_t recordLength, std::uint32_t number,
                     bool structuralIndex);
// One range with the locks of `count` records, by the offset and number of the first; nothing where it would hold a
// byte for sharing too.
std::optional<LockRange> blockLock(std::uint64_t firstOffset, std::uint64_t recordLength, std::uint32_t first,
                                   std::uint32_t count, bool structuralIndex);

// Takes the locks that an opening holds for as long as the file is open. Fails with 3051 where another holds the table
// exclusively or, for an exclusive opening, holds it at all; with 3211 where another denies writing.
void lockForSharing(platform::File& file, Sharing sharing, const std::string& path);

// Pauses of one who asks for a lock again and again. The first take microseconds, as readers and writers at work do.
class Pauses {
 public:
  void pause();
  // Whether the next one takes microseconds.
  bool isShort() const;

 private:
  int short_ = 0;
  int milliseconds_ = 1;
};

// A lock held until its end. Waits for it as long as DbfFile::lockWait() tells, then fails with 3211.
class HeldLock {
 public:
  HeldLock(platform::File& file, LockRange range, platform::LockKind kind, const std::string& displayName);
  ~HeldLock();
  HeldLock(const HeldLock&) = delete;
  HeldLock& operator=(const HeldLock&) = delete;

  // Lets others lock the range shared, so that they can read; nobody can write.
  void share();
  // Keeps readers out as well, for a write. Waits and fails as at first, and is shared then.
  void makeExclusive();

 private:
  void take(platform::LockKind kind);

  platform::File& file_;
  LockRange range_;
  std::string displayName_;
};

// A shared lock for the moment of a read. Doesn't wait: false where another holds the range exclusively.
class ReadLock {
 public:
  ReadLock(platform::File& file, LockRange range);
  ~ReadLock();
  ReadLock(const ReadLock&) = delete;
  ReadLock& operator=(const ReadLock&) = delete;

  explicit operator bool() const { return taken_; }

 private:
  platform::File& file_;
  LockRange range_;
  bool taken_;
};

}  // namespace vantrelix::dbf
