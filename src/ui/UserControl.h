// A control made of widgets, for a host's form.
#pragma once

#include <vector>

#include "ui/Widget.h"

namespace vantrelix {

class UserControl : public Widget {
 public:
  using Widget::Widget;

  // The widgets in the order in which they are stacked; owned by the control.
  const std::vector<Widget*>& widgets() const { return widgets_; }

  int width() const { return geometry().width; }
  int height() const { return geometry().height; }
  // The size as the host, or the user through the host, wants it; the control may correct it in `resize`.
  void setSize(int width, int height);

 protected:
  void add(Widget& widget) { widgets_.push_back(&widget); }
  // Called behind each change of the size.
  virtual void resize() {}

 private:
  std::vector<Widget*> widgets_;
  bool resizing_ = false;
};

}  // namespace vantrelix
