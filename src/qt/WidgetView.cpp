#include "qt/WidgetView.h"

#include <QGuiApplication>
#include <QMouseEvent>

namespace vantrelix::qt {

void showCommonState(QWidget& view, const Widget& model) {
  if (!view.property(kLaidOut).toBool()) view.setGeometry(pixelsOf(model.geometry(), view));
  view.setToolTip(toQt(model.toolTip()));
  view.setAccessibleDescription(toQt(model.toolTip()));
  view.setEnabled(model.enabled());
  view.setVisible(model.visible());
}

bool movesFocus(Qt::FocusReason reason) {
  return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason && reason != Qt::MenuBarFocusReason;
}

SwallowedRelease::SwallowedRelease(const QWidget& left)
    : window_(left.window()), pressed_(QGuiApplication::mouseButtons().testFlag(Qt::LeftButton)) {}

// The press itself is delivered behind the move of the focus, so the release is posted.
void SwallowedRelease::makeUp() const {
  // The window's own record: the message may not have given the desktop's focus back yet.
  QWidget* clicked = window_ ? window_->focusWidget() : nullptr;
  if (!pressed_ || !clicked || QGuiApplication::mouseButtons().testFlag(Qt::LeftButton)) return;
  const QPointF outside(-1, -1);
  QCoreApplication::postEvent(
      clicked, new QMouseEvent(QEvent::MouseButtonRelease, outside, clicked->mapToGlobal(outside), Qt::LeftButton,
                               Qt::NoButton, Qt::NoModifier));
}

}  // namespace vantrelix::qt
