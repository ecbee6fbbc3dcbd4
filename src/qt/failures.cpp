#include "qt/failures.h"

#include "foundation/errHand.h"
#include "foundation/hostProgram.h"
#include "foundation/text.h"
#include "ui/Desktop.h"

namespace vantrelix::qt {

namespace {

RunTimeFailure numbered(const std::exception& failure) {
  if (const auto* known = dynamic_cast<const RunTimeFailure*>(&failure)) return *known;
  return RunTimeFailure(failure::internalError, failure.what());
}

}  // namespace

void showFailure(const std::exception& failure) {
  desktop().messageBox({"Error in " + upperCase(hostProgram().name), modErrStr(numbered(failure)), MsgButtons::ok,
                        MsgIcon::critical, 1});
}

}  // namespace vantrelix::qt
