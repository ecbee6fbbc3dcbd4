// Screens as a test or a run without a screen sets them up.
#pragma once

#include <vector>

#include "ui/MonitorPort.h"

namespace vantrelix {

class ScriptedMonitors : public MonitorPort {
 public:
  // Handles are 1, 2, ... in this order; the first is "the screen".
  std::vector<MonitorInfo> monitors{{{0, 0, 1920, 1080}, {0, 0, 1920, 1040}}};
  double scale = 15;  // twips per pixel

  int count() override { return static_cast<int>(monitors.size()); }
  Rectangle desktop() override;
  Rectangle screen() override { return monitors.empty() ? Rectangle{} : monitors.front().bounds; }
  MonitorHandle monitorFromRect(const Rectangle& box) override;
  MonitorHandle monitorFromWindow(const Form& form) override;
  MonitorInfo info(MonitorHandle handle) override;
  double twipsPerPixelX() override { return scale; }
  double twipsPerPixelY() override { return scale; }
};

}  // namespace vantrelix
