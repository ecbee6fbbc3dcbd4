// The screens of a Qt program. Pixels are Qt's own, which already follow each screen's scale: screens of different
// scales may leave gaps between one another.
#pragma once

#include <vector>

#include <QObject>
#include <QPointer>

#include "ui/MonitorPort.h"

namespace vantrelix::qt {

// Handles for objects that come and go: 1, 2, ... in the order in which they were first asked for. An object keeps its
// handle for life, and no other object ever has it.
class ObjectHandles {
 public:
  MonitorHandle handleOf(QObject* object);
  // Null once the object is gone, and for a handle that was never given.
  QObject* objectOf(MonitorHandle handle) const;

 private:
  std::vector<QPointer<QObject>> known_;
};

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

 private:
  ObjectHandles handles_;
};

}  // namespace vantrelix::qt
