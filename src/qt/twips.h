// Twips (1440 to the inch) to the logical pixels of a screen and back.
#pragma once

#include <QRect>
#include <QWidget>

#include "ui/Widget.h"

namespace vantrelix::qt {

inline constexpr int kTwipsPerInch = 1440;

inline int pixelsOf(int twips, int dotsPerInch) {
  return qRound(static_cast<double>(twips) * dotsPerInch / kTwipsPerInch);
}
inline int twipsOf(int pixels, int dotsPerInch) {
  return qRound(static_cast<double>(pixels) * kTwipsPerInch / dotsPerInch);
}

// Edges are rounded, not sizes, so that what touches in twips touches in pixels.
inline QRect pixelsOf(const Rectangle& box, const QWidget& on) {
  const int left = pixelsOf(box.left, on.logicalDpiX());
  const int top = pixelsOf(box.top, on.logicalDpiY());
  return QRect(left, top, pixelsOf(box.right(), on.logicalDpiX()) - left,
               pixelsOf(box.bottom(), on.logicalDpiY()) - top);
}

}  // namespace vantrelix::qt
