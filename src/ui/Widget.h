// What every widget model has. A model is a plain object: it holds what the system reads and writes, takes the user's
// acts through its user... functions, and says "changed" to whoever shows it.
#pragma once

#include <cstdint>
#include <string>

#include "ui/Signal.h"

namespace vantrelix {

// Colours are in blue-green-red order (0xFF0000 is blue, 255 is red); with the highest bit set, a colour of the user's
// desktop.
using Color = std::uint32_t;
namespace color {
inline constexpr Color white = 16777215;
inline constexpr Color red = 255;
inline constexpr Color blue = 0xFF0000;
inline constexpr Color windowBackground = 0x80000005;
inline constexpr Color windowText = 0x80000008;
inline constexpr Color buttonFace = 0x8000000F;
inline constexpr Color buttonText = 0x80000012;
}  // namespace color

// Places and sizes are in twips, 1440 to the inch of the screen.
struct Rectangle {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;

  int right() const { return left + width; }
  int bottom() const { return top + height; }
  friend bool operator==(const Rectangle&, const Rectangle&) = default;
};

class Widget {
 public:
  explicit Widget(std::string name) : name_(std::move(name)) {}
  virtual ~Widget() = default;
  Widget(const Widget&) = delete;
  Widget& operator=(const Widget&) = delete;

  const std::string& name() const { return name_; }

  const Rectangle& geometry() const { return geometry_; }
  void setGeometry(const Rectangle& geometry) { assign(geometry_, geometry); }
  bool visible() const { return visible_; }
  void setVisible(bool visible) { assign(visible_, visible); }
  bool enabled() const { return enabled_; }
  void setEnabled(bool enabled) { assign(enabled_, enabled); }
  const std::string& toolTip() const { return toolTip_; }
  void setToolTip(std::string text) { assign(toolTip_, std::move(text)); }
  Color backColor() const { return backColor_; }
  void setBackColor(Color colour) { assign(backColor_, colour); }
  Color foreColor() const { return foreColor_; }
  void setForeColor(Color colour) { assign(foreColor_, colour); }
  // -1 for a widget that the tab key passes over.
  int tabIndex() const { return tabIndex_; }
  void setTabIndex(int index) { assign(tabIndex_, index); }

  // Whether the user can act on it.
  bool reachable() const { return visible_ && enabled_; }

  // Any state changed. Program-made changes raise this alone, no event.
  Signal<> changed;

  // Keyboard focus came or went.
  Signal<> gotFocus;
  Signal<> lostFocus;
  void userFocus() { gotFocus(); }
  void userBlur() { lostFocus(); }

 protected:
  template <class T>
  void assign(T& member, T value) {
    if (member == value) return;
    member = std::move(value);
    changed();
  }

 private:
  std::string name_;
  Rectangle geometry_;
  bool visible_ = true;
  bool enabled_ = true;
  std::string toolTip_;
  Color backColor_ = color::windowBackground;
  Color foreColor_ = color::windowText;
  int tabIndex_ = -1;
};

}  // namespace vantrelix
