// The local time of POSIX systems. Private to this folder.
#pragma once

#include <ctime>

#include "platform/Platform.h"

namespace vantrelix::platform::posix {

// In the time zone of the environment, or else of the machine.
DateTime localTime(std::time_t seconds);

}  // namespace vantrelix::platform::posix
