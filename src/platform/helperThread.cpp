#include "platform/helperThread.h"

#include <utility>

#include "platform/posixSignals.h"

namespace vantrelix::platform {

std::thread startHelper(std::function<void()> work) {
#ifndef _WIN32
  const posix::SignalsHeldBack heldBack;
#endif
  return std::thread(std::move(work));
}

}  // namespace vantrelix::platform
