// Shows any control model: a view for each of its widgets, at the control's own geometry.
//
// The control is the host's; either may end first. The width of the view is the control's, as far as the control takes
// it; height and enabled state follow the control.
#pragma once

#include <vector>

#include <QWidget>

#include "qt/WidgetView.h"
#include "ui/UserControl.h"

namespace vantrelix::qt {

class ControlView : public QWidget {
  Q_OBJECT

 public:
  explicit ControlView(UserControl& control, QWidget* parent = nullptr);
  ~ControlView() override;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void makeViews(UserControl& control);
  void followControl();
  void followTabOrder();

  ModelLink<UserControl> link_;
  std::vector<WidgetView*> views_;  // children of this widget
  std::vector<Connection> tabChanges_;
  std::vector<QWidget*> tabOrder_;
  int naturalWidth_ = 0;  // twips
  int minimumWidth_ = 0;
  bool sizing_ = false;
};

}  // namespace vantrelix::qt
