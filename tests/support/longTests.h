// How much a test does: little in the quick check, all of it where VANTRELIX_LONG is set.
#pragma once

#include <cstdlib>

namespace vantrelix::test {

inline int quickOrLong(int quick, int full) { return std::getenv("VANTRELIX_LONG") != nullptr ? full : quick; }

}  // namespace vantrelix::test
