#include "qt/qtText.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vantrelix::qt {

namespace {

// The desktop's own colours, by the number in their lowest byte.
constexpr std::pair<Color, QPalette::ColorRole> kDesktopColours[] = {
    {0x05, QPalette::Base},        {0x08, QPalette::Text},
    {0x0D, QPalette::Highlight},   {0x0E, QPalette::HighlightedText},
    {0x0F, QPalette::Button},      {0x12, QPalette::ButtonText},
    {0x17, QPalette::ToolTipText}, {0x18, QPalette::ToolTipBase},
};

constexpr double kReadableContrast = 4.5;
// How much of the text's own colour a disabled widget keeps.
constexpr double kDisabledStrength = 0.72;

double linear(double channel) {
  return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour) {
  return 0.2126 * linear(colour.red() / 255.0) + 0.7152 * linear(colour.green() / 255.0) +
         0.0722 * linear(colour.blue() / 255.0);
}

QColor mixed(const QColor& a, const QColor& b, double shareOfA) {
  const auto channel = [shareOfA](int x, int y) {
    return static_cast<int>(std::lround(x * shareOfA + y * (1 - shareOfA)));
  };
  return QColor(channel(a.red(), b.red()), channel(a.green(), b.green()), channel(a.blue(), b.blue()));
}

}  // namespace

QColor toQt(Color colour, const QPalette& palette) {
  if (!isDesktopColour(colour)) return QColor(colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF);
  const Color number = colour & 0xFF;
  const auto* found = std::find_if(std::begin(kDesktopColours), std::end(kDesktopColours),
                                   [number](const auto& entry) { return entry.first == number; });
  return palette.color(QPalette::Active, found == std::end(kDesktopColours) ? QPalette::Window : found->second);
}

Color fromQt(const QColor& colour) {
  return static_cast<Color>(colour.red()) | static_cast<Color>(colour.green()) << 8 |
         static_cast<Color>(colour.blue()) << 16;
}

double contrast(const QColor& a, const QColor& b) {
  const double x = luminance(a) + 0.05;
  const double y = luminance(b) + 0.05;
  return std::max(x, y) / std::min(x, y);
}

QColor readableOn(const QColor& background) {
  return contrast(Qt::black, background) >= contrast(Qt::white, background) ? Qt::black : Qt::white;
}

QPalette paletteFor(Color back, Color fore, const QPalette& base) {
  const QColor ground = toQt(back, base);
  QColor text = toQt(fore, base);
  if (isDesktopColour(fore) && contrast(text, ground) < kReadableContrast) text = readableOn(ground);
  QPalette painted = base;
  for (const auto role : {QPalette::Base, QPalette::Button, QPalette::Window}) painted.setColor(role, ground);
  for (const auto role : {QPalette::Text, QPalette::ButtonText, QPalette::WindowText}) {
    painted.setColor(role, text);
    painted.setColor(QPalette::Disabled, role, mixed(text, ground, kDisabledStrength));
  }
  return painted;
}

}  // namespace vantrelix::qt
