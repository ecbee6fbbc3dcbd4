// The empty antenna preview control as a widget for any Qt form: a place without behaviour. The widget owns the
// control.
#pragma once

#include "controls/scAntPreview.h"
#include "qt/ControlWidget.h"

namespace vantrelix::qt {

class AntPreview : public ControlWidget {
  Q_OBJECT

 public:
  explicit AntPreview(QWidget* parent = nullptr);
  ~AntPreview() override;

  scAntPreview& control() { return control_; }

 private:
  scAntPreview control_;
};

}  // namespace vantrelix::qt
