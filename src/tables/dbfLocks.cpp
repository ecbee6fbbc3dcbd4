#include "tables/dbfLocks.h"

#include <algorithm>

#include "platform/RunTimeFailure.h"

namespace vantrelix::dbf {

namespace {

using platform::LockKind;

bool tryLock(platform::File& file, LockRange range, LockKind kind) {
  return file.tryLock(range.offset, range.length, kind);
}

// Asks again in growing steps until `attempt` answers true or the waiting time is over.
template <class Attempt>
bool waitFor(const Attempt& attempt) {
  platform::Platform& system = platform::current();
  const std::int64_t end = system.steadyMilliseconds() + DbfFile::lockWait();
  for (int pause = 1;; pause = std::min(pause * 2, 16)) {
    if (attempt()) return true;
    if (system.steadyMilliseconds() >= end) return false;
    system.sleepMilliseconds(pause);
  }
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
  return {kHeaderLock.offset + recordOffset, recordLength};
}

void lockForSharing(platform::File& file, Sharing sharing, const std::string& displayName) {
  const bool exclusive = sharing == Sharing::exclusive;
  if (!tryLock(file, kSharingLock, exclusive ? LockKind::exclusive : LockKind::shared)) {
    throw RunTimeFailure(
        failure::cannotOpen,
        exclusive ? "The table " + displayName + " cannot be opened exclusively: another cursor or program has it open."
                  : "The table " + displayName + " cannot be opened: another cursor or program holds it exclusively.");
  }
  if (sharing == Sharing::denyWrite) denyWriting(file, displayName);
}

HeldLock::HeldLock(platform::File& file, LockRange range, platform::LockKind kind, const std::string& displayName)
    : file_(file), range_(range) {
  if (waitFor([&] { return tryLock(file, range, kind); })) return;
  if (range.offset == kDenyWriteLock.offset) denied(displayName);
  throw RunTimeFailure(failure::locked, "The table " + displayName + " is locked by another user (waited " +
                                            std::to_string(DbfFile::lockWait()) + " ms). Try again later.");
}

HeldLock::~HeldLock() {
  try {
    file_.unlock(range_.offset, range_.length);
  } catch (const RunTimeFailure&) {
    // Closing the file drops the lock at the latest; a destructor has nobody to tell.
  }
}

}  // namespace vantrelix::dbf
