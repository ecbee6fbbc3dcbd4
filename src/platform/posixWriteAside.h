// Writes that outlive the program that asked for them. Part of the POSIX platform alone.
#pragma once

#ifndef _WIN32

#include <cstddef>
#include <sys/types.h>

namespace vantrelix::platform::posix {

// Writes as pwrite does and answers as it does, but to its end even where this program is killed meanwhile.
ssize_t writeAside(int descriptor, const void* bytes, std::size_t count, off_t offset);

}  // namespace vantrelix::platform::posix

#endif
