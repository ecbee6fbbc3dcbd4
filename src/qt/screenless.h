// Running Qt where no window is wanted.
#pragma once

namespace vantrelix::qt {

// Makes an application that starts later one without a screen. What Qt has to say of a missing desktop is no news then
// and is held back, unless the user's environment has logging rules of its own.
void goScreenless();

}  // namespace vantrelix::qt
