// The keyboard in the window of a form: the order of the tab key, the widget that has the keyboard, and the button that
// Enter presses.
#pragma once

#include <map>

#include "qt/WidgetView.h"
#include "ui/Form.h"

namespace vantrelix::qt {

using FormViews = std::map<Widget*, WidgetView*>;

class FormFocus {
 public:
  // The views must stand as long as this does.
  FormFocus(const QWidget& window, const FormViews& views) : window_(window), views_(views) {}

  // The order of the models' tab indexes; a widget without one is passed over, unless the form gives none at all.
  void setTabOrder() const;
  // Gives the keyboard to the widget that the form names, once each time it names another.
  void follow(const Form& form);
  void markDefaultButton(const Form& form) const;
  // A widget of the window has got the keyboard: the model of its view, or of the nearest view round it; null where
  // there is none.
  Widget* entered(const QWidget& widget);

 private:
  Widget* modelAt(const QWidget* widget) const;

  const QWidget& window_;
  const FormViews& views_;
  const Widget* followed_ = nullptr;
};

}  // namespace vantrelix::qt
