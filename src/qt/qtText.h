// Text and colours between the core's types and Qt's.
#pragma once

#include <string>

#include <QColor>
#include <QPalette>
#include <QString>

#include "ui/Widget.h"

namespace vantrelix::qt {

inline QString toQt(const std::string& text) { return QString::fromStdString(text); }
inline std::string fromQt(const QString& text) { return text.toStdString(); }
// A text of lines that end with CR LF, as Qt shows lines.
inline QString linesToQt(const std::string& text) { return toQt(text).replace("\r\n", "\n").replace('\r', '\n'); }

// A colour of the user's desktop is looked up in the palette.
QColor toQt(Color colour, const QPalette& palette);
Color fromQt(const QColor& colour);
inline bool isDesktopColour(Color colour) { return (colour & 0x80000000U) != 0; }

// Contrast ratio of two colours, 1 to 21, by the relative luminance of WCAG 2.1.
double contrast(const QColor& a, const QColor& b);
// Black or white, whichever reads better on the background.
QColor readableOn(const QColor& background);

// The palette of a widget with these colours. A text colour of the user's desktop gives way to black or white where it
// would not be readable on the background.
QPalette paletteFor(Color back, Color fore, const QPalette& base);

}  // namespace vantrelix::qt
