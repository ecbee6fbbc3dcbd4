// Failures at the door between Qt and the models: an exception must not travel through Qt's event loop, which would end
// the program.
#pragma once

#include <exception>
#include <utility>

#include "controls/reporting.h"

namespace vantrelix::qt {

// Runs what an act of the user sets off; a failure is reported and goes no further.
template <class Act>
void runGuarded(Act&& act) {
  try {
    std::forward<Act>(act)();
  } catch (const std::exception& failure) {
    report(failure);
  }
}

}  // namespace vantrelix::qt
