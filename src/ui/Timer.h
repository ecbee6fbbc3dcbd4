// A timer of a form: while it runs, what shows the form ticks it.
#pragma once

#include "ui/Widget.h"

namespace vantrelix {

class Timer : public Widget {
 public:
  using Widget::Widget;

  int interval() const { return interval_; }  // milliseconds; 0 does not run
  void setInterval(int milliseconds) { assign(interval_, milliseconds); }
  bool running() const { return enabled() && interval_ > 0; }

  Signal<> tick;
  void userTick() {
    if (running()) tick();
  }

 private:
  int interval_ = 0;
};

}  // namespace vantrelix
