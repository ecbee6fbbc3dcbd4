#include "qt/AntPreview.h"

namespace vantrelix::qt {

AntPreview::AntPreview(QWidget* parent) : ControlWidget(parent) { showControl(control_); }

// The view first: it would outlive the control otherwise.
AntPreview::~AntPreview() { dropView(); }

}  // namespace vantrelix::qt
