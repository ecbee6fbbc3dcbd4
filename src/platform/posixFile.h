// The POSIX side of File, and how its errors become failures. Private to the platform layer.
#pragma once

#include <cerrno>
#include <memory>
#include <string>
#include <string_view>
#include <sys/stat.h>

#include "platform/Platform.h"

namespace vantrelix::platform::posix {

// Throws the RunTimeFailure that stands for a value of errno. `path` is in the machine's form.
[[noreturn]] void fail(int error, const std::string& path);

// The machine's form of a path. A path that holds a NUL names nothing and fails with 76.
std::string native(std::string_view path);

FileState stateOf(const struct stat& found);

std::unique_ptr<File> openFile(std::string nativePath, OpenMode mode);
// Platform::openUnseen.
std::unique_ptr<File> openUnseen(std::string nativePath);

// A call again and again while a signal interrupts it.
template <class Call>
auto retry(Call call) {
  for (;;) {
    const auto result = call();
    if (result >= 0 || errno != EINTR) return result;
  }
}

}  // namespace vantrelix::platform::posix
