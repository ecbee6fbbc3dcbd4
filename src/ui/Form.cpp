#include "ui/Form.h"

#include "ui/widgets.h"

namespace vantrelix {

Form::Form(std::string name) : UserControl(std::move(name)) { setVisible(false); }

void Form::moveTo(int left, int top) {
  Rectangle place = geometry();
  place.left = left;
  place.top = top;
  placed_ = true;
  setGeometry(place);
}

void Form::userClose() { queryUnload(); }

void Form::queryUnload() {
  if (cancelButton_ && cancelButton_->reachable()) cancelButton_->userClick();
  hide();
}

}  // namespace vantrelix
