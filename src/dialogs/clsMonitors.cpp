#include "dialogs/clsMonitors.h"

#include <cmath>

#include "dialogs/windowPlacement.h"
#include "ui/Desktop.h"

namespace vantrelix {

namespace {

// Pixels.
constexpr int kStepAcross = 640;
constexpr int kStepDown = 480;
constexpr int kSampleWidth = 320;
constexpr int kSampleHeight = 240;

int twipsAcross(int pixels) { return static_cast<int>(std::lround(pixels * desktop().monitors().twipsPerPixelX())); }
int twipsDown(int pixels) { return static_cast<int>(std::lround(pixels * desktop().monitors().twipsPerPixelY())); }

}  // namespace

int clsMonitors::DesktopLeftTwps() const { return twipsAcross(DesktopLeft()); }
int clsMonitors::DesktopTopTwps() const { return twipsDown(DesktopTop()); }
int clsMonitors::DesktopWidthTwps() const { return twipsAcross(DesktopWidth()); }
int clsMonitors::DesktopHeightTwps() const { return twipsDown(DesktopHeight()); }
int clsMonitors::DesktopLeft() const { return desktop().monitors().desktop().left; }
int clsMonitors::DesktopTop() const { return desktop().monitors().desktop().top; }
int clsMonitors::DesktopWidth() const { return desktop().monitors().desktop().width; }
int clsMonitors::DesktopHeight() const { return desktop().monitors().desktop().height; }

const clsMonitor* clsMonitors::GetMonitorFromWindow(const Form& form) {
  return take(desktop().monitors().monitorFromWindow(form));
}

bool clsMonitors::CenterFormOnMonitor(Form& form, const Form* reference) {
  const clsMonitor* monitor = GetMonitorFromWindow(reference ? *reference : form);
  if (!monitor) return false;
  const int width = twipsAcross(monitor->WorkRight() - monitor->WorkLeft());
  const int height = twipsDown(monitor->WorkBottom() - monitor->WorkTop());
  form.moveTo(twipsAcross(monitor->WorkLeft()) + (width - form.width()) / 2,
              twipsDown(monitor->WorkTop()) + (height - form.height()) / 2);
  return true;
}

const clsMonitor* clsMonitors::GetMonitorFromXYPoint(int x, int y) {
  return take(desktop().monitors().monitorFromRect({x, y, 1, 1}));
}

void clsMonitors::Refresh() {
  monitors_.clear();
  keys_.clear();
  MonitorPort& port = desktop().monitors();
  if (port.count() == 0) return;
  const Rectangle whole = port.desktop();
  for (int y = whole.top; y <= whole.height; y += kStepDown) {
    for (int x = whole.left; x <= whole.width; x += kStepAcross) {
      take(port.monitorFromRect({x, y, kSampleWidth, kSampleHeight}));
    }
  }
}

const clsMonitor* clsMonitors::Item(const std::string& key) const {
  const auto found = monitors_.find(key);
  return found == monitors_.end() ? nullptr : &found->second;
}

const clsMonitor* clsMonitors::take(MonitorHandle handle) {
  if (handle == 0) return nullptr;
  const std::string key = std::to_string(handle);
  if (!monitors_.contains(key)) {
    monitors_.emplace(key, clsMonitor(handle, desktop().monitors().info(handle)));
    keys_.push_back(key);
  }
  return Item(key);
}

}  // namespace vantrelix
