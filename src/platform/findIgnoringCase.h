// The search behind Platform::findIgnoringCase, for platforms whose file names mind case.
#pragma once

#include <string>

#include "platform/Platform.h"

namespace vantrelix::platform {

// Looks through the folders by `platform.list`. Of several names that differ in case alone, one that leads on to the
// rest of the path is taken, in the order of their bytes.
std::string findIgnoringCase(Platform& platform, const std::string& path);

}  // namespace vantrelix::platform
