#include "ui/Form.h"

#include <memory>
#include <utility>

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
  // What the button sets off may end the form.
  auto token = std::make_shared<char>();
  const std::weak_ptr<char> alive = token;
  const Connection kept = changed.connect([token = std::move(token)] {});
  if (cancelButton_ && cancelButton_->reachable()) cancelButton_->userClick();
  if (!alive.expired()) hide();
}

}  // namespace vantrelix
