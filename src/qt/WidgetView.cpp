#include "qt/WidgetView.h"

namespace vantrelix::qt {

void showCommonState(QWidget& view, const Widget& model) {
  view.setGeometry(pixelsOf(model.geometry(), view));
  view.setToolTip(toQt(model.toolTip()));
  view.setAccessibleDescription(toQt(model.toolTip()));
  view.setEnabled(model.enabled());
  view.setVisible(model.visible());
}

bool movesFocus(Qt::FocusReason reason) {
  return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason && reason != Qt::MenuBarFocusReason;
}

}  // namespace vantrelix::qt
