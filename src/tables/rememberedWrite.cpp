#include "tables/rememberedWrite.h"

#include "platform/RunTimeFailure.h"

namespace vantrelix::dbf {

namespace {

// Where the header and all records have their locks: before the bytes for sharing and, from 1 GB on, behind them.
constexpr std::uint64_t kSharingEnd = kSharingLock.offset + kSharingLock.length;
constexpr LockRange kLockPlaces[] = {
    {kHeaderLock.offset, kDenyWriteLock.offset - kHeaderLock.offset},
    {kSharingEnd, kHeaderLock.offset + kLargestFile + 1 - kSharingEnd},
};

}  // namespace

OthersKeptOut::OthersKeptOut(platform::File& file, LockRange taken) : file_(file) {
  const std::uint64_t takenEnd = taken.offset + taken.length;
  for (const LockRange& place : kLockPlaces) {
    const std::uint64_t end = place.offset + place.length;
    if (taken.offset < place.offset || takenEnd > end) {
      whole_ = whole_ && take(place);
      continue;
    }
    whole_ = whole_ && take({place.offset, taken.offset - place.offset}) && take({takenEnd, end - takenEnd});
  }
}

OthersKeptOut::~OthersKeptOut() {
  for (const LockRange& range : ranges_) {
    try {
      file_.unlock(range.offset, range.length);
    } catch (const RunTimeFailure&) {
      // Closing the file drops the lock at the latest; a destructor has nobody to tell.
    }
  }
}

bool OthersKeptOut::take(LockRange range) {
  constexpr int kMoments = 20;
  for (int moment = 0; moment < kMoments; ++moment) {
    if (file_.tryLock(range.offset, range.length, platform::LockKind::shared)) {
      ranges_.push_back(range);
      return true;
    }
    platform::current().yield();
  }
  return false;
}

RememberedWrite::RememberedWrite(DbfFile& table, platform::File& file, LockRange taken, bool besideEdit) {
  if (!besideEdit && hasNotes(file.state())) others_.emplace(file, taken);
  before_ = file.state();
  remembered_.emplace(table, file, before_, others_ && others_->whole());
}

}  // namespace vantrelix::dbf
