#include "controls/reporting.h"

#include "foundation/hostProgram.h"
#include "foundation/messages.h"
#include "foundation/text.h"

namespace vantrelix {

RunTimeFailure asRunTimeFailure(const std::exception& failure) {
  const auto* own = dynamic_cast<const RunTimeFailure*>(&failure);
  return own ? *own : RunTimeFailure(failure::internalError, failure.what());
}

void report(const std::exception& failure) {
  try {
    ErrHand(failure);
  } catch (const RunTimeFailure& unlogged) {
    MsgBox({"Error in " + upperCase(hostProgram().name), unlogged.description(), MsgButtons::ok, MsgIcon::critical, 1});
  }
}

}  // namespace vantrelix
