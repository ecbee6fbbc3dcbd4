// What the tests of this layer share.
#pragma once

#include <functional>

#include "platform/RunTimeFailure.h"

namespace vantrelix::test {

// The number of the failure that `work` ends in, 0 where it ends in none.
inline int failureOf(const std::function<void()>& work) {
  try {
    work();
  } catch (const RunTimeFailure& failure) {
    return failure.number();
  }
  return 0;
}

}  // namespace vantrelix::test
