#include "ui/ScriptedMonitors.h"

#include <algorithm>
#include <cmath>

#include "ui/Form.h"

namespace vantrelix {

namespace {

Rectangle around(const Rectangle& a, const Rectangle& b) {
  const int left = std::min(a.left, b.left);
  const int top = std::min(a.top, b.top);
  return {left, top, std::max(a.right(), b.right()) - left, std::max(a.bottom(), b.bottom()) - top};
}

long overlap(const Rectangle& a, const Rectangle& b) {
  const long wide = std::min(a.right(), b.right()) - std::max(a.left, b.left);
  const long high = std::min(a.bottom(), b.bottom()) - std::max(a.top, b.top);
  return wide > 0 && high > 0 ? wide * high : 0;
}

}  // namespace

Rectangle ScriptedMonitors::desktop() {
  Rectangle whole = screen();
  for (const MonitorInfo& monitor : monitors) whole = around(whole, monitor.bounds);
  return whole;
}

MonitorHandle ScriptedMonitors::monitorFromRect(const Rectangle& box) {
  MonitorHandle best = 0;
  long most = 0;
  for (std::size_t i = 0; i < monitors.size(); ++i) {
    const long shared = overlap(monitors[i].bounds, box);
    if (shared <= most) continue;
    most = shared;
    best = static_cast<MonitorHandle>(i) + 1;
  }
  return best;
}

MonitorHandle ScriptedMonitors::monitorFromWindow(const Form& form) {
  const auto pixels = [this](int twips) { return static_cast<int>(std::lround(twips / scale)); };
  const Rectangle& place = form.geometry();
  return monitorFromRect({pixels(place.left), pixels(place.top), pixels(place.width), pixels(place.height)});
}

MonitorInfo ScriptedMonitors::info(MonitorHandle handle) {
  if (handle < 1 || handle > static_cast<MonitorHandle>(monitors.size())) return {};
  return monitors[static_cast<std::size_t>(handle) - 1];
}

}  // namespace vantrelix
