// The screens of the platform, in its own pixels: what the collection of monitors and the placement of windows ask.
#pragma once

#include <cstdint>

#include "ui/Widget.h"

namespace vantrelix {

class Form;

using MonitorHandle = std::intptr_t;  // 0 for no monitor

struct MonitorInfo {
  Rectangle bounds;    // pixels
  Rectangle workArea;  // pixels, without the desktop's bars
};

class MonitorPort {
 public:
  virtual ~MonitorPort() = default;

  virtual int count() = 0;
  // The box round all screens; its left and top may be negative.
  virtual Rectangle desktop() = 0;
  // The first screen, whole: what "the screen" means where only one is meant.
  virtual Rectangle screen() = 0;
  // The screen that holds most of the rectangle (pixels); 0 where none holds any of it.
  virtual MonitorHandle monitorFromRect(const Rectangle& box) = 0;
  // The screen that holds most of the form's window; 0 where it is on none.
  virtual MonitorHandle monitorFromWindow(const Form& form) = 0;
  // Empty boxes for a handle that names no screen (any more).
  virtual MonitorInfo info(MonitorHandle handle) = 0;
  virtual double twipsPerPixelX() = 0;
  virtual double twipsPerPixelY() = 0;
};

}  // namespace vantrelix
