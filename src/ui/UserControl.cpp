#include "ui/UserControl.h"

#include <algorithm>

namespace vantrelix {

namespace {

// A control that corrects its size while it takes one must not be asked again for its own correction.
class Flag {
 public:
  explicit Flag(bool& flag) : flag_(flag) { flag_ = true; }
  ~Flag() { flag_ = false; }
  Flag(const Flag&) = delete;
  Flag& operator=(const Flag&) = delete;

 private:
  bool& flag_;
};

}  // namespace

void UserControl::setSize(int width, int height) {
  Rectangle place = geometry();
  place.width = std::max(width, 0);
  place.height = std::max(height, 0);
  if (place == geometry()) return;
  setGeometry(place);
  if (resizing_) return;
  const Flag busy(resizing_);
  resize();
}

}  // namespace vantrelix
