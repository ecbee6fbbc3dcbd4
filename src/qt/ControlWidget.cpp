#include "qt/ControlWidget.h"

#include <utility>

#include <QVBoxLayout>

#include "qt/ControlView.h"

namespace vantrelix::qt {

void ControlWidget::showControl(UserControl& control) {
  view_ = new ControlView(control, this);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(view_);
  setSizePolicy(view_->sizePolicy());
}

void ControlWidget::dropView() { delete std::exchange(view_, nullptr); }

QSize ControlWidget::sizeHint() const { return view_ ? view_->sizeHint() : QWidget::sizeHint(); }

QSize ControlWidget::minimumSizeHint() const { return view_ ? view_->minimumSizeHint() : QWidget::minimumSizeHint(); }

}  // namespace vantrelix::qt
