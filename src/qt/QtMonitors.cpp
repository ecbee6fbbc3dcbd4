#include "qt/QtMonitors.h"

#include <algorithm>

#include <QGuiApplication>
#include <QScreen>

#include "qt/twips.h"
#include "ui/Form.h"

namespace vantrelix::qt {

namespace {

Rectangle boxOf(const QRect& rect) { return {rect.x(), rect.y(), rect.width(), rect.height()}; }

// One scale for the whole desktop, the first screen's; a place on it could not be told otherwise.
double twipsPerPixel(qreal (QScreen::*dotsPerInch)() const) {
  const QScreen* first = QGuiApplication::primaryScreen();
  return first ? kTwipsPerInch / (first->*dotsPerInch)() : kTwipsPerInch / 96.0;
}

}  // namespace

MonitorHandle ObjectHandles::handleOf(QObject* object) {
  if (!object) return 0;
  const auto found = std::find(known_.begin(), known_.end(), object);
  const auto place = found - known_.begin();
  if (found == known_.end()) known_.emplace_back(object);
  return static_cast<MonitorHandle>(place) + 1;
}

QObject* ObjectHandles::objectOf(MonitorHandle handle) const {
  const bool known = handle >= 1 && handle <= static_cast<MonitorHandle>(known_.size());
  return known ? known_[static_cast<std::size_t>(handle) - 1].data() : nullptr;
}

int QtMonitors::count() { return static_cast<int>(QGuiApplication::screens().size()); }

Rectangle QtMonitors::desktop() {
  QRect whole;
  for (const QScreen* each : QGuiApplication::screens()) whole |= each->geometry();
  return boxOf(whole);
}

Rectangle QtMonitors::screen() {
  const QScreen* first = QGuiApplication::primaryScreen();
  return first ? boxOf(first->geometry()) : Rectangle{};
}

MonitorHandle QtMonitors::monitorFromRect(const Rectangle& box) {
  const QRect wanted(box.left, box.top, box.width, box.height);
  QScreen* best = nullptr;
  qint64 most = 0;
  for (QScreen* each : QGuiApplication::screens()) {
    const QRect shared = each->geometry() & wanted;
    const qint64 area = static_cast<qint64>(shared.width()) * shared.height();
    if (area <= most) continue;
    most = area;
    best = each;
  }
  return handles_.handleOf(best);
}

MonitorHandle QtMonitors::monitorFromWindow(const Form& form) {
  const Rectangle& place = form.geometry();
  const auto across = [this](int twips) { return qRound(twips / twipsPerPixelX()); };
  const auto down = [this](int twips) { return qRound(twips / twipsPerPixelY()); };
  return monitorFromRect({across(place.left), down(place.top), across(place.width), down(place.height)});
}

MonitorInfo QtMonitors::info(MonitorHandle handle) {
  const auto* screen = qobject_cast<QScreen*>(handles_.objectOf(handle));
  return screen ? MonitorInfo{boxOf(screen->geometry()), boxOf(screen->availableGeometry())} : MonitorInfo{};
}

double QtMonitors::twipsPerPixelX() { return twipsPerPixel(&QScreen::logicalDotsPerInchX); }
double QtMonitors::twipsPerPixelY() { return twipsPerPixel(&QScreen::logicalDotsPerInchY); }

}  // namespace vantrelix::qt
