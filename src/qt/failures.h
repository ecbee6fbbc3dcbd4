// Failures at the door between Qt and the models: an exception must not travel through Qt's event loop, which would end
// the program.
#pragma once

#include <exception>
#include <utility>

namespace vantrelix::qt {

// Tells a failure that nobody else has told: a message box with its number and description.
void showFailure(const std::exception& failure);

// Runs what an act of the user sets off; a failure is shown and goes no further. Gives whether it came to its end.
template <class Act>
bool runGuarded(Act&& act) {
  try {
    std::forward<Act>(act)();
    return true;
  } catch (const std::exception& failure) {
    showFailure(failure);
    return false;
  }
}

}  // namespace vantrelix::qt
