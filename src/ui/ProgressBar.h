// A bar that shows how far a work has come.
#pragma once

#include <algorithm>

#include "ui/Widget.h"

namespace vantrelix {

class ProgressBar : public Widget {
 public:
  using Widget::Widget;

  long done() const { return done_; }
  long total() const { return total_; }  // 0 where it is not known
  // Shows that there is work, not how much.
  bool busy() const { return total_ == 0; }

  // A total below 1 is one that is not known; `done` is taken into 0 to the total.
  void setProgress(long done, long total) {
    const long whole = std::max(total, 0L);
    const long part = std::clamp(done, 0L, whole);
    if (part == done_ && whole == total_) return;
    done_ = part;
    total_ = whole;
    changed();
  }

 private:
  long done_ = 0;
  long total_ = 0;
};

}  // namespace vantrelix
