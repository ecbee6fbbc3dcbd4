// What the operations on the selected antenna begin and end with.
#pragma once

#include <exception>
#include <string>

#include "editor/frmHDAntEditor.h"
#include "foundation/errHand.h"

namespace vantrelix {

// Whether an antenna is selected; where none is, tells the user how to select one, `advice` below it.
bool requireSelection(const frmHDAntEditor& form, const std::string& advice);

// Runs a work as a procedure; what fails goes to ErrHand. Gives whether the work came to its end.
template <class Work>
bool runReported(const frmHDAntEditor& form, int procedure, const Work& work) {
  const Procedure guard(procedure);
  try {
    work();
    return true;
  } catch (const RunTimeFailure& failure) {
    ErrHand(failure, form.AMSName);
  } catch (const std::exception& failure) {
    ErrHand(failure, form.AMSName);
  }
  return false;
}

}  // namespace vantrelix
