#include "dialogs/clsMonitor.h"

namespace vantrelix {

clsMonitor::clsMonitor(MonitorHandle handle, const MonitorInfo& info)
    : handle_(handle),
      height_(info.bounds.height),
      width_(info.bounds.width),
      left_(info.bounds.left),
      right_(info.bounds.right()),
      top_(info.bounds.top),
      bottom_(info.bounds.bottom()),
      workLeft_(info.workArea.left),
      workRight_(info.workArea.right()),
      workTop_(info.workArea.top),
      workBottom_(info.workArea.bottom()) {}

}  // namespace vantrelix
