// For how long files have stood unchanged, as far as this process has looked. Private to this layer; one thread.
//
// Every write changes the time of a file's last change before it touches a byte. So a write that meets a read shows in
// the file's state behind it, but where it began in the very tick of the clock that gave the file the time it had
// before. Once a file has stood in one state for longer than such a tick and a write together, what was read of it is
// whole if the state is the same behind the read.
#pragma once

#include <cstdint>

#include "platform/Platform.h"

namespace vantrelix {

// Two seconds are the longest tick of a file system whose times are whole seconds, 16 ms that of a system itself.
constexpr bool isWholeSeconds(const platform::FileState& state) {
  return state.modifiedNanoseconds % 1'000'000'000 == 0;
}
// Milliseconds that no tick lasts of a clock that gives such times: two changes within one leave the same time.
constexpr std::int64_t kCoarseTick = 2100;
constexpr std::int64_t kFineTick = 100;
constexpr std::int64_t tickOf(const platform::FileState& state) {
  return isWholeSeconds(state) ? kCoarseTick : kFineTick;
}

// Milliseconds of the steady clock since this was first asked of the file in that state; of the last files asked for.
std::int64_t stoodFor(const platform::FileState& state);
// The file was seen to change, whatever its state tells: it stands from the next question on.
void forgetStanding(const platform::FileState& state);

}  // namespace vantrelix
