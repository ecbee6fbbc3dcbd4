// What every view of a widget model does: shows the common state, forwards focus, and lets go of a model that has
// ended.
#pragma once

#include <QFocusEvent>
#include <QPointer>
#include <QWidget>

#include "qt/ModelLink.h"
#include "qt/failures.h"
#include "qt/qtText.h"
#include "qt/twips.h"
#include "ui/Widget.h"

namespace vantrelix::qt {

class WidgetView {
 public:
  virtual ~WidgetView() = default;
  // Null once the model has been destroyed.
  virtual const Widget* widgetModel() const = 0;
  virtual QWidget& widget() = 0;
  // Shows the whole state of the model.
  virtual void refresh() = 0;
};

// Set on a view that a layout places: it does not follow the model's twips.
inline constexpr char kLaidOut[] = "laidOut";
// Name, place, tool tip, visibility, whether it can be used.
void showCommonState(QWidget& view, const Widget& model);
// Whether the focus moved between widgets, and did not just leave with the window or for a menu.
bool movesFocus(Qt::FocusReason reason);

// A message shown while a click moves the focus takes the release of the mouse, and the widget that was clicked would
// stay pressed: makeUp gives that widget a release outside of itself.
class SwallowedRelease {
 public:
  // The widget that the focus leaves.
  explicit SwallowedRelease(const QWidget& left);
  // Where the mouse was pressed when this object was made and is no longer.
  void makeUp() const;

 private:
  QPointer<QWidget> window_;
  bool pressed_;
};

// `QtWidget` bound to a `Model`. A view is made, then refreshed once by whoever made it.
template <class QtWidget, class Model>
class View : public QtWidget, public WidgetView {
 public:
  View(Model& model, QWidget* parent)
      : QtWidget(parent),
        link_(
            model, [this] { refresh(); }, [this] { QtWidget::setEnabled(false); }) {
    QtWidget::setObjectName(toQt(model.name()));
  }

  const Widget* widgetModel() const override { return link_.get(); }
  QWidget& widget() override { return *this; }
  void refresh() override {
    const Model* shown = link_.get();
    if (!shown) return;
    showCommonState(*this, *shown);
    showState(*shown);
  }

 protected:
  Model* model() const { return link_.get(); }
  virtual void showState(const Model& model) = 0;
  // Hands an act of the user to the model, where there still is one. What it sets off may fail, which is shown, or end
  // the view: gives whether the view still stands.
  template <class Act>
  bool handOver(Act act) {
    const QPointer<QWidget> self(this);
    if (Model* own = model()) runGuarded([&] { act(*own); });
    return !self.isNull();
  }
  QPalette coloursOf(const Model& model) const {
    return paletteFor(model.backColor(), model.foreColor(), QtWidget::parentWidget()->palette());
  }

  void focusInEvent(QFocusEvent* event) override {
    QtWidget::focusInEvent(event);
    if (movesFocus(event->reason())) handOver([](Model& focused) { focused.userFocus(); });
  }
  void focusOutEvent(QFocusEvent* event) override {
    QtWidget::focusOutEvent(event);
    if (!movesFocus(event->reason())) return;
    const SwallowedRelease release(*this);
    handOver([](Model& left) { left.userBlur(); });
    release.makeUp();
  }

 private:
  ModelLink<Model> link_;
};

}  // namespace vantrelix::qt
