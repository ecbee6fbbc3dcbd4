#include "qt/FormFocus.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <QPushButton>

#include "ui/widgets.h"

namespace vantrelix::qt {

void FormFocus::setTabOrder() const {
  std::vector<std::pair<int, QWidget*>> stops;
  for (const auto& [model, view] : views_) {
    if (model->tabIndex() >= 0) stops.emplace_back(model->tabIndex(), &view->widget());
  }
  if (stops.empty()) return;
  std::stable_sort(stops.begin(), stops.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  for (std::size_t i = 1; i < stops.size(); ++i) QWidget::setTabOrder(stops[i - 1].second, stops[i].second);
  for (const auto& [model, view] : views_) {
    QWidget& widget = view->widget();
    const bool stop = (widget.focusPolicy() & Qt::TabFocus) != 0;
    if (stop && model->tabIndex() < 0) widget.setFocusPolicy(Qt::ClickFocus);
  }
}

void FormFocus::follow(const Form& form) {
  Widget* wanted = form.activeWidget();
  if (!wanted || wanted == followed_) return;
  followed_ = wanted;
  if (const auto found = views_.find(wanted); found != views_.end()) found->second->widget().setFocus();
}

// The toolkit's own way, buttons that become the default one by themselves, would give every form a default button.
void FormFocus::markDefaultButton(const Form& form) const {
  const auto* focused = qobject_cast<QPushButton*>(window_.focusWidget());
  for (const auto& [model, view] : views_) {
    auto* button = qobject_cast<QPushButton*>(&view->widget());
    if (!button) continue;
    const bool wanted = focused ? button == focused : model == form.defaultButton();
    if (button->isDefault() != wanted) button->setDefault(wanted);
  }
}

// What the form will name on hearing of it has the keyboard already, itself or a box inside of it.
Widget* FormFocus::entered(const QWidget& widget) {
  Widget* model = modelAt(&widget);
  if (model) followed_ = model;
  return model;
}

Widget* FormFocus::modelAt(const QWidget* widget) const {
  for (; widget && widget != &window_; widget = widget->parentWidget()) {
    for (const auto& [model, view] : views_) {
      if (view->widgetModel() && &view->widget() == widget) return model;
    }
  }
  return nullptr;
}

}  // namespace vantrelix::qt
