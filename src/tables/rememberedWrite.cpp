#include "tables/rememberedWrite.h"

#include "platform/RunTimeFailure.h"

namespace vantrelix::dbf {

// Once the low places are locked nobody else adds rows: the file's size then tells whether records have high ones.
platform::FileState OthersKeptOut::lock(std::uint64_t added) {
  whole_ = takeBeside(kLowPlaces);
  platform::FileState found = file_.state();
  if (whole_ && found.size + added > kLowPlaces.length) {
    whole_ = takeBeside(kHighPlaces);
    found = file_.state();
  }
  return found;
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

bool OthersKeptOut::takeBeside(LockRange place) {
  const std::uint64_t end = place.offset + place.length, takenEnd = taken_.offset + taken_.length;
  if (taken_.offset < place.offset || takenEnd > end) return take(place);
  return take({place.offset, taken_.offset - place.offset}) && take({takenEnd, end - takenEnd});
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

RememberedWrite::RememberedWrite(DbfFile& table, platform::File& file, const Writer& writer) {
  before_ = file.state();
  if (!writer.besideOther && hasNotes(before_)) {
    others_.emplace(file, writer.taken);
    before_ = others_->lock(writer.added);
  }
  remembered_.emplace(table, file, before_, others_ && others_->whole());
}

}  // namespace vantrelix::dbf
