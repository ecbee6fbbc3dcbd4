#include "tables/restingFile.h"

namespace vantrelix::dbf {

namespace {

// Nanoseconds; longer than a tick of any file system, and than any write takes.
constexpr std::int64_t kRest = 3'000'000'000;

}  // namespace

const std::optional<platform::FileState>& RestingFile::look() {
  if (!hasOwnClock_) hasOwnClock_ = file_.hasOwnClock();
  state_.reset();
  if (!*hasOwnClock_) return state_;
  const platform::FileState now = file_.state();
  if (platform::current().wallNanoseconds() - now.modifiedNanoseconds > kRest) state_ = now;
  return state_;
}

bool RestingFile::isUnchanged() {
  if (!state_ || file_.state() == *state_) return state_.has_value();
  state_.reset();
  return false;
}

}  // namespace vantrelix::dbf
