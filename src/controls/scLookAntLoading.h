// Marks the control as being filled: while one of these lives, the control raises no event, repaints nothing and
// converts no gain.
#pragma once

#include "controls/scLookAnt.h"

namespace vantrelix {

class scLookAntLoading {
 public:
  explicit scLookAntLoading(scLookAnt& control) : control_(&control) { control.bLoading_ = true; }
  ~scLookAntLoading() {
    if (control_) control_->bLoading_ = false;
  }
  scLookAntLoading(const scLookAntLoading&) = delete;
  scLookAntLoading& operator=(const scLookAntLoading&) = delete;

  // Leaves the control marked behind this object's end: a fill that failed half-way keeps the control silent until a
  // good one has run.
  void stay() { control_ = nullptr; }

 private:
  scLookAnt* control_;
};

}  // namespace vantrelix
