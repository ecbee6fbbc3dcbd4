// A record in the support log where its failure must not stop what the user is doing.
#pragma once

#include <string>

#include "foundation/errHand.h"

namespace vantrelix {

inline void logQuietly(const std::string& text) {
  try {
    wrtTechSupNoMak(text);
  } catch (const RunTimeFailure&) {
    // There is no further place to tell it.
    return;
  }
}

}  // namespace vantrelix
