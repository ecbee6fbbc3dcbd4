// The screens of a Qt program. Pixels are Qt's own, which already follow each screen's scale.
#pragma once

#include "ui/MonitorPort.h"

namespace vantrelix::qt {

class QtMonitors : public MonitorPort {
 public:
  int count() override;
  Rectangle desktop() override;
  Rectangle screen() override;
  MonitorHandle monitorFromRect(const Rectangle& box) override;
  MonitorHandle monitorFromWindow(const Form& form) override;
  MonitorInfo info(MonitorHandle handle) override;
  double twipsPerPixelX() override;
  double twipsPerPixelY() override;
};

}  // namespace vantrelix::qt
