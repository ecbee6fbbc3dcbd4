// What the operations on the selected antenna begin and end with.
#pragma once

#include <exception>
#include <string>

#include "editor/frmHDAntEditor.h"
#include "foundation/errHand.h"

namespace vantrelix {

// Whether exactly one antenna is selected; where it isn't, tells the user how to select one, `advice` below it.
bool requireSelection(const frmHDAntEditor& form, const std::string& advice);
// The same, where the current antenna serves as long as any are selected.
bool requireAnySelection(const frmHDAntEditor& form, const std::string& advice);

// A button that must not be pressed again while its work lets the event loop have a turn.
class DisabledMeanwhile {
 public:
  explicit DisabledMeanwhile(Widget& widget) : widget_(widget) { widget_.setEnabled(false); }
  ~DisabledMeanwhile() { widget_.setEnabled(true); }
  DisabledMeanwhile(const DisabledMeanwhile&) = delete;
  DisabledMeanwhile& operator=(const DisabledMeanwhile&) = delete;

 private:
  Widget& widget_;
};

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
