// Files that no program is writing to, read without a lock. Private to the table-file sources.
//
// Every write changes the time of a file's last change before it touches a byte. So where that time lies seconds back
// before a read and is the same behind it, no write met the read but one that stood still for all those seconds. That
// needs times of this machine's own clock; elsewhere a file never counts as being at rest.
#pragma once

#include <optional>

#include "platform/Platform.h"

namespace vantrelix::dbf {

class RestingFile {
 public:
  explicit RestingFile(platform::File& file) : file_(file) {}

  // Looks at the file: whether it is at rest, and in which state.
  const std::optional<platform::FileState>& look() { return look(file_.state()); }
  // The same of a state that the file has just been found in.
  const std::optional<platform::FileState>& look(const platform::FileState& now);
  // Whether it is at rest still, in the state last looked at: what was read since then is whole.
  bool isUnchanged();
  bool isKnown() const { return state_.has_value(); }
  // Whether isUnchanged() has told so since it was last looked at; nothing is asked of the system.
  bool wasUnchanged() const { return isKnown() && wasUnchanged_; }
  // As it was last looked at; nothing is asked of the system.
  const std::optional<platform::FileState>& last() const { return state_; }

 private:
  platform::File& file_;
  std::optional<platform::FileState> state_;
  bool wasUnchanged_ = false;
};

}  // namespace vantrelix::dbf
