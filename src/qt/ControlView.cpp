#include "qt/ControlView.h"

#include <algorithm>

#include <QEvent>
#include <QResizeEvent>
#include <QScopedValueRollback>

#include "qt/makeView.h"
#include "ui/widgets.h"

namespace vantrelix::qt {

namespace {

constexpr double kLargestFontPoints = 9;  // what fits into places measured in twips

// A clickable label without a place of its own in the order comes last: all that can be clicked can be reached by keys.
constexpr int kBehindAll = 1 << 20;

int tabPlace(const Widget& model) {
  const auto* label = dynamic_cast<const Label*>(&model);
  return model.tabIndex() < 0 && label && label->clickable() ? kBehindAll : model.tabIndex();
}

Qt::FocusPolicy focusPolicyOf(const Widget& model) {
  if (tabPlace(model) >= 0) return dynamic_cast<const Label*>(&model) ? Qt::TabFocus : Qt::StrongFocus;
  return dynamic_cast<const TextBox*>(&model) ? Qt::ClickFocus : Qt::NoFocus;
}

}  // namespace

ControlView::ControlView(UserControl& control, QWidget* parent)
    : QWidget(parent),
      link_(
          control, [this] { followControl(); }, [this] { setEnabled(false); }) {
  setObjectName(toQt(control.name()));
  QFont shown = font();
  shown.setPointSizeF(std::min(shown.pointSizeF(), kLargestFontPoints));
  setFont(shown);
  naturalWidth_ = control.width();
  minimumWidth_ = control.width();
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  makeViews(control);
  followTabOrder();
  resize(ControlView::sizeHint());
  followControl();
}

ControlView::~ControlView() = default;

void ControlView::makeViews(UserControl& control) {
  views_.reserve(control.widgets().size());
  tabChanges_.reserve(control.widgets().size());
  for (Widget* model : control.widgets()) {
    WidgetView* view = makeView(*model, this);
    if (!view) continue;
    view->refresh();
    views_.push_back(view);
    tabChanges_.push_back(model->changed.connect([this] { followTabOrder(); }));
  }
}

void ControlView::followControl() {
  const UserControl* control = link_.get();
  if (!control || sizing_) return;
  setEnabled(control->enabled());
  setFixedHeight(pixelsOf(control->height(), logicalDpiY()));
  updateGeometry();
}

void ControlView::followTabOrder() {
  std::vector<WidgetView*> stops;
  for (WidgetView* view : views_) {
    const Widget* model = view->widgetModel();
    if (!model) continue;
    if (view->widget().focusPolicy() != focusPolicyOf(*model)) view->widget().setFocusPolicy(focusPolicyOf(*model));
    if (tabPlace(*model) >= 0) stops.push_back(view);
  }
  std::stable_sort(stops.begin(), stops.end(), [](const WidgetView* a, const WidgetView* b) {
    return tabPlace(*a->widgetModel()) < tabPlace(*b->widgetModel());
  });
  std::vector<QWidget*> order;
  order.reserve(stops.size());
  for (WidgetView* view : stops) order.push_back(&view->widget());
  if (order == tabOrder_) return;
  tabOrder_ = std::move(order);
  for (std::size_t i = 1; i < tabOrder_.size(); ++i) setTabOrder(tabOrder_[i - 1], tabOrder_[i]);
}

QSize ControlView::sizeHint() const {
  const UserControl* control = link_.get();
  const int tall = control ? pixelsOf(control->height(), logicalDpiY()) : height();
  return {pixelsOf(naturalWidth_, logicalDpiX()), tall};
}

QSize ControlView::minimumSizeHint() const { return {pixelsOf(minimumWidth_, logicalDpiX()), sizeHint().height()}; }

void ControlView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  UserControl* control = link_.get();
  if (!control || sizing_ || event->size().width() == event->oldSize().width()) return;
  const int asked = twipsOf(event->size().width(), logicalDpiX());
  {
    const QScopedValueRollback<bool> rollback(sizing_, true);
    runGuarded([&] { control->setSize(asked, control->height()); });
  }
  minimumWidth_ = std::max(minimumWidth_, control->width() > asked ? control->width() : 0);
  followControl();
}

void ControlView::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  const auto type = event->type();
  if (type != QEvent::PaletteChange && type != QEvent::StyleChange && type != QEvent::FontChange) return;
  for (WidgetView* view : views_) view->refresh();
}

}  // namespace vantrelix::qt
