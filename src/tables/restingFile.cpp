#include "tables/restingFile.h"

#include <algorithm>
#include <array>

namespace vantrelix::dbf {

namespace {

// Nanoseconds; longer than a tick of any file system, and than any write takes.
constexpr std::int64_t kRest = 3'000'000'000;

// The last files that were found to have this machine's own times. One of the same number, size and time is the same.
bool hasOwnClock(platform::File& file, const platform::FileState& state) {
  static std::array<platform::FileState, 16> known;
  static std::size_t next = 0;
  if (std::find(known.begin(), known.end(), state) != known.end()) return true;
  if (!file.hasOwnClock()) return false;
  known[next++ % known.size()] = state;
  return true;
}

}  // namespace

const std::optional<platform::FileState>& RestingFile::look(const platform::FileState& now) {
  const bool isOld = platform::current().wallNanoseconds() - now.modifiedNanoseconds > kRest;
  state_.reset();
  wasUnchanged_ = false;
  if (isOld && hasOwnClock(file_, now)) state_ = now;
  return state_;
}

bool RestingFile::isUnchanged() {
  wasUnchanged_ = state_ && file_.state() == *state_;
  if (!wasUnchanged_) state_.reset();
  return wasUnchanged_;
}

}  // namespace vantrelix::dbf
