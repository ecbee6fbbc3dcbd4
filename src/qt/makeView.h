// The view of a widget model, chosen by the model's kind.
#pragma once

#include "qt/WidgetView.h"

namespace vantrelix::qt {

// A child of `parent`, to be refreshed once by whoever made it; null for a kind that is not seen (a timer, a menu
// item).
WidgetView* makeView(Widget& model, QWidget* parent);

}  // namespace vantrelix::qt
