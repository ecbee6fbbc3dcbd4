#include "qt/QtMonitors.h"

#include <algorithm>

#include <QGuiApplication>
#include <QScreen>

#include "qt/twips.h"
#include "ui/Form.h"

namespace vantrelix::qt {

namespace {

Rectangle boxOf(const QRect& rect) { return {rect.x(), rect.y(), rect.width(), rect.height()}; }

// A handle is the screen's place in the list, counted from 1.
QScreen* screenOf(MonitorHandle handle) {
  const QList<QScreen*> screens = QGuiApplication::screens();
  return handle < 1 || handle > screens.size() ? nullptr : screens[static_cast<qsizetype>(handle) - 1];
}

double twipsPerPixel(qreal (QScreen::*dotsPerInch)() const) {
  const QScreen* first = QGuiApplication::primaryScreen();
  return first ? kTwipsPerInch / (first->*dotsPerInch)() : kTwipsPerInch / 96.0;
}

}  // namespace

int QtMonitors::count() { return static_cast<int>(QGuiApplication::screens().size()); }

Rectangle QtMonitors::desktop() {
  const QScreen* first = QGuiApplication::primaryScreen();
  return first ? boxOf(first->virtualGeometry()) : Rectangle{};
}

Rectangle QtMonitors::screen() {
  const QScreen* first = QGuiApplication::primaryScreen();
  return first ? boxOf(first->geometry()) : Rectangle{};
}

MonitorHandle QtMonitors::monitorFromRect(const Rectangle& box) {
  const QRect wanted(box.left, box.top, box.width, box.height);
  MonitorHandle best = 0;
  qint64 most = 0;
  for (MonitorHandle handle = 1; handle <= count(); ++handle) {
    const QRect shared = screenOf(handle)->geometry() & wanted;
    const qint64 area = static_cast<qint64>(shared.width()) * shared.height();
    if (shared.isEmpty() || area <= most) continue;
    most = area;
    best = handle;
  }
  return best;
}

MonitorHandle QtMonitors::monitorFromWindow(const Form& form) {
  const Rectangle& place = form.geometry();
  const auto across = [this](int twips) { return qRound(twips / twipsPerPixelX()); };
  const auto down = [this](int twips) { return qRound(twips / twipsPerPixelY()); };
  return monitorFromRect({across(place.left), down(place.top), across(place.width), down(place.height)});
}

MonitorInfo QtMonitors::info(MonitorHandle handle) {
  const QScreen* screen = screenOf(handle);
  return screen ? MonitorInfo{boxOf(screen->geometry()), boxOf(screen->availableGeometry())} : MonitorInfo{};
}

double QtMonitors::twipsPerPixelX() { return twipsPerPixel(&QScreen::logicalDotsPerInchX); }
double QtMonitors::twipsPerPixelY() { return twipsPerPixel(&QScreen::logicalDotsPerInchY); }

}  // namespace vantrelix::qt
