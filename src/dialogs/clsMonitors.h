// The screens of the desktop in use, and the whole that they make.
//
// The bounds of the whole are asked for at each call; the screens are those that the last Refresh found, none before
// it, and those that the look-ups met since.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "dialogs/clsMonitor.h"
#include "ui/Form.h"

namespace vantrelix {

class clsMonitors {
 public:
  // The box round all screens; its left and top are negative where a screen stands left of or above the first.
  int DesktopLeftTwps() const;
  int DesktopTopTwps() const;
  int DesktopWidthTwps() const;
  int DesktopHeightTwps() const;
  // In pixels.
  int DesktopLeft() const;
  int DesktopTop() const;
  int DesktopWidth() const;
  int DesktopHeight() const;

  // The screen that holds most of the form; null where none holds any of it. Good until the next Refresh.
  const clsMonitor* GetMonitorFromWindow(const Form& form);
  // Centres the form in the work area of the screen that it is on, or that `reference` is on; false, and nothing done,
  // where that is on none.
  bool CenterFormOnMonitor(Form& form, const Form* reference = nullptr);
  // The screen at a place in pixels; null where there is none.
  const clsMonitor* GetMonitorFromXYPoint(int x, int y);
  // Finds the screens anew, by samples of 320 by 240 pixels, 640 by 480 apart: a screen that lies between the samples
  // is not found.
  void Refresh();

  std::size_t Count() const { return monitors_.size(); }
  // By the handle as text; null where there is none.
  const clsMonitor* Item(const std::string& key) const;
  // The keys in the order in which the screens were met.
  const std::vector<std::string>& Keys() const { return keys_; }

 private:
  const clsMonitor* take(MonitorHandle handle);

  std::map<std::string, clsMonitor> monitors_;
  std::vector<std::string> keys_;
};

}  // namespace vantrelix
