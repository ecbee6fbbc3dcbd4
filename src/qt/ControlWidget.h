// What the widgets of the lookup controls share: the view of a control that the widget's own class keeps.
#pragma once

#include <QWidget>

#include "ui/UserControl.h"

namespace vantrelix::qt {

class ControlView;

// The height is the control's and follows it; the width may be anything from the control's smallest.
class ControlWidget : public QWidget {
  Q_OBJECT

 public:
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  explicit ControlWidget(QWidget* parent) : QWidget(parent) {}
  // Once, in the constructor of the class that owns the control.
  void showControl(UserControl& control);
  // In its destructor, while the control still is.
  void dropView();

 private:
  ControlView* view_ = nullptr;  // a child of this widget
};

}  // namespace vantrelix::qt
