// Threads that help this library's own.
#pragma once

#include <functional>
#include <thread>

namespace vantrelix::platform {

// Runs `work` in a thread that takes none of the program's signals: their handlers expect a thread of the program's
// own. Throws std::system_error where there is no thread to be had.
std::thread startHelper(std::function<void()> work);

}  // namespace vantrelix::platform
