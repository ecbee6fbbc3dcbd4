// Puts widgets to their places, a line each.
#pragma once

#include <initializer_list>

#include "ui/Widget.h"

namespace vantrelix {

struct WidgetPlace {
  Widget* widget;
  Rectangle place;
};

inline void placeWidgets(std::initializer_list<WidgetPlace> places) {
  for (const WidgetPlace& entry : places) entry.widget->setGeometry(entry.place);
}

}  // namespace vantrelix
