#include "tables/dbfLocks.h"

#include <algorithm>

#include "foundation/extract.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix::dbf {

namespace {

using platform::LockKind;

bool tryLock(platform::File& file, LockRange range, LockKind kind) {
  return file.tryLock(range.offset, range.length, kind);
}

constexpr int kShortPauses = 50;
constexpr int kLongestPause = 4;

// Asks again until `attempt` answers true or the waiting time is over.
template <class Attempt>
bool waitFor(const Attempt& attempt) {
  if (attempt()) return true;
  platform::Platform& system = platform::current();
  const std::int64_t end = system.steadyMilliseconds() + DbfFile::lockWait();
  for (Pauses pauses; system.steadyMilliseconds() < end;) {
    pauses.pause();
    if (attempt()) return true;
  }
  return false;
}

// Closing the file drops a lock at the latest; a destructor has nobody to tell.
void unlockQuietly(platform::File& file, LockRange range) noexcept {
  try {
    file.unlock(range.offset, range.length);
  } catch (const RunTimeFailure&) {
  }
}

constexpr std::uint64_t endOf(LockRange range) { return range.offset + range.length; }

bool holdsSharingByte(LockRange range) {
  return range.offset < endOf(kSharingLock) && endOf(range) > kDenyWriteLock.offset;
}

// A lock of one of the bytes for sharing would be given up with the range, and it is not for a record to take.
LockRange besideSharingBytes(LockRange range) {
  if (!holdsSharingByte(range)) return range;
  if (range.offset < kDenyWriteLock.offset) return {range.offset, kDenyWriteLock.offset - range.offset};
  return {endOf(kSharingLock), std::max<std::uint64_t>(1, endOf(range) - endOf(kSharingLock))};
}

[[noreturn]] void denied(const std::string& name) {
  throw RunTimeFailure(
      failure::locked,
      "The table " + name + " is locked: another cursor or program denies writing to it. Try again later.");
}

// A writer at work goes in a moment and is waited for; one who denies writing stays, and is not.
void denyWriting(platform::File& file, const std::string& name) {
  bool held = false;
  const bool taken = waitFor([&] {
    if (tryLock(file, kDenyWriteLock, LockKind::exclusive)) return true;
    held = !tryLock(file, kDenyWriteLock, LockKind::shared);
    if (!held) file.unlock(kDenyWriteLock.offset, kDenyWriteLock.length);
    return held;
  });
  if (!taken || held) denied(name);
}

}  // namespace

LockRange recordLock(std::uint64_t recordOffset, std::uint64_t recordLength, std::uint32_t number,
                     bool structuralIndex) {
  if (structuralIndex) return {kDenyWriteLock.offset - (std::uint64_t{number} + 1), 1};
  return besideSharingBytes({kHeaderLock.offset + recordOffset, recordLength});
}

std::optional<LockRange> blockLock(std::uint64_t firstOffset, std::uint64_t recordLength, std::uint32_t first,
                                   std::uint32_t count, bool structuralIndex) {
  if (count == 1) return recordLock(firstOffset, recordLength, first, structuralIndex);
  if (structuralIndex) return LockRange{kDenyWriteLock.offset - (std::uint64_t{first} + count), count};
  const LockRange range{kHeaderLock.offset + firstOffset, recordLength * count};
  if (holdsSharingByte(range)) return std::nullopt;
  return range;
}

bool Pauses::isShort() const { return short_ < kShortPauses; }

void Pauses::pause() {
  if (isShort()) {
    ++short_;
    return platform::current().yield();
  }
  platform::current().sleepMilliseconds(milliseconds_);
  milliseconds_ = std::min(milliseconds_ * 2, kLongestPause);
}

void lockForSharing(platform::File& file, Sharing sharing, const std::string& path) {
  const bool exclusive = sharing == Sharing::exclusive;
  if (!tryLock(file, kSharingLock, exclusive ? LockKind::exclusive : LockKind::shared)) {
    const std::string name = displayPath(path);
    throw RunTimeFailure(
        failure::cannotOpen,
        exclusive ? "The table " + name + " cannot be opened exclusively: another cursor or program has it open."
                  : "The table " + name + " cannot be opened: another cursor or program holds it exclusively.");
  }
  if (sharing == Sharing::denyWrite) denyWriting(file, displayPath(path));
}

HeldLock::HeldLock(platform::File& file, LockRange range, platform::LockKind kind, const std::string& displayName)
    : file_(file), range_(range), displayName_(displayName) {
  take(kind);
}

HeldLock::~HeldLock() { unlockQuietly(file_, range_); }

void HeldLock::take(LockKind kind) {
  if (waitFor([&] { return tryLock(file_, range_, kind); })) return;
  if (range_.offset == kDenyWriteLock.offset) denied(displayName_);
  throw RunTimeFailure(failure::locked, "The table " + displayName_ + " is locked by another user (waited " +
                                            std::to_string(DbfFile::lockWait()) + " ms). Try again later.");
}

void HeldLock::share() { take(LockKind::shared); }
void HeldLock::makeExclusive() { take(LockKind::exclusive); }

ReadLock::ReadLock(platform::File& file, LockRange range)
    : file_(file), range_(range), taken_(tryLock(file, range, LockKind::shared)) {}

ReadLock::~ReadLock() {
  if (taken_) unlockQuietly(file_, range_);
}

}  // namespace vantrelix::dbf
