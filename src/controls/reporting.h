// Failures told where nobody stands behind to take them: in what a control does on its user's act.
#pragma once

#include <exception>

#include "foundation/errHand.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {

// A failure that is not of the library's own type counts as an internal error.
RunTimeFailure asRunTimeFailure(const std::exception& failure);

// ErrHand for a handler that must not fail itself: where the log cannot be written, the message alone.
void report(const std::exception& failure);

}  // namespace vantrelix
