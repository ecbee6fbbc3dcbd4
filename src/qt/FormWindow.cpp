#include "qt/FormWindow.h"

#include <algorithm>

#include <QApplication>
#include <QCloseEvent>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTimer>

#include "qt/formLayouts.h"
#include "qt/makeView.h"
#include "ui/Timer.h"
#include "ui/widgets.h"

namespace vantrelix::qt {

namespace {

Form::WindowState stateOf(Qt::WindowStates states) {
  if (states.testFlag(Qt::WindowMinimized)) return Form::WindowState::minimised;
  if (states.testFlag(Qt::WindowMaximized) || states.testFlag(Qt::WindowFullScreen)) {
    return Form::WindowState::maximised;
  }
  return Form::WindowState::normal;
}

}  // namespace

FormWindow::FormWindow(Form& form, QWidget* parent)
    : QDialog(parent),
      link_(
          form, [this] { follow(); }, [this] { end(); }) {
  setObjectName(toQt(form.name()));
  layOut(*this, form);
  followTabOrder();
  addTimers(form);
  setWindowTitle(toQt(form.caption()));
}

FormWindow::~FormWindow() = default;

QWidget& FormWindow::view(Widget& model) {
  if (const auto made = views_.find(&model); made != views_.end()) return made->second->widget();
  WidgetView* view = makeView(model, this);
  if (!view) qFatal("no view shows the widget %s", model.name().c_str());
  view->widget().setProperty(kLaidOut, true);
  view->refresh();
  views_.emplace(&model, view);
  return view->widget();
}

// The order of the models' tab indexes; a widget without one keeps out of it.
void FormWindow::followTabOrder() {
  std::vector<std::pair<const Widget*, QWidget*>> stops;
  for (const auto& [model, view] : views_) {
    if (model->tabIndex() >= 0) stops.emplace_back(model, &view->widget());
  }
  std::stable_sort(stops.begin(), stops.end(),
                   [](const auto& a, const auto& b) { return a.first->tabIndex() < b.first->tabIndex(); });
  for (std::size_t i = 1; i < stops.size(); ++i) setTabOrder(stops[i - 1].second, stops[i].second);
}

void FormWindow::addTimers(Form& form) {
  for (Widget* widget : form.widgets()) {
    auto* model = dynamic_cast<Timer*>(widget);
    if (!model) continue;
    auto* timer = new QTimer(this);
    timer->setObjectName(toQt(model->name()));
    const auto run = [timer, model] {
      timer->setInterval(model->interval());
      if (model->running() != timer->isActive()) model->running() ? timer->start() : timer->stop();
    };
    connect(timer, &QTimer::timeout, this, [this, model] {
      if (link_.get()) runGuarded([model] { model->userTick(); });
    });
    timerChanges_.push_back(model->changed.connect(run));
    run();
  }
}

void FormWindow::runModal(Form& form, QWidget* parent) {
  FormWindow window(form, parent);
  QEventLoop loop;
  window.loop_ = &loop;
  window.setWindowModality(Qt::ApplicationModal);
  form.setVisible(true);
  window.present();
  if (window.isVisible()) loop.exec();
}

void FormWindow::showModeless(Form& form, QWidget* parent, bool takesFocus) {
  auto* window = new FormWindow(form, parent);
  window->modeless_ = true;
  if (!takesFocus) {
    window->setAttribute(Qt::WA_ShowWithoutActivating);
    window->setWindowFlag(Qt::WindowDoesNotAcceptFocus);
  }
  form.setVisible(true);
  window->present();
}

void FormWindow::present() {
  place();
  follow();
  show();
}

void FormWindow::place() {
  const Form* form = link_.get();
  if (!form) return;
  const QScopedValueRollback<bool> quiet(placing_, true);
  const QRect box = pixelsOf(form->geometry(), *this);
  const QSize wanted = box.isEmpty() ? sizeHint() : box.size();
  resize(wanted.expandedTo(minimumSizeHint()));
  if (form->placed()) move(box.topLeft());
  if (form->windowState() == Form::WindowState::maximised) setWindowState(Qt::WindowMaximized);
}

void FormWindow::follow() {
  const Form* form = link_.get();
  if (!form) return;
  if (windowTitle() != toQt(form->caption())) setWindowTitle(toQt(form->caption()));
  if (!form->visible()) return end();
  for (const auto& [model, view] : views_) {
    auto* button = qobject_cast<QPushButton*>(&view->widget());
    if (!button) continue;
    button->setAutoDefault(false);
    if (const bool wanted = model == form->defaultButton(); button->isDefault() != wanted) button->setDefault(wanted);
  }
  followFocus();
  if (placing_ || !presented_ || !form->placed()) return;
  const QScopedValueRollback<bool> quiet(placing_, true);
  const QRect box = pixelsOf(form->geometry(), *this);
  if (box.topLeft() != pos()) move(box.topLeft());
  if (!box.isEmpty() && box.size() != size()) resize(box.size().expandedTo(minimumSizeHint()));
}

void FormWindow::followFocus() {
  const Form* form = link_.get();
  Widget* wanted = form->activeWidget();
  if (!wanted || wanted == focused_) return;
  focused_ = wanted;
  if (const auto found = views_.find(wanted); found != views_.end()) found->second->widget().setFocus();
}

void FormWindow::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (presented_) return;
  presented_ = true;
  tellGeometry();
  runGuarded([this] {
    if (Form* form = link_.get()) form->userActivated();
  });
}

// The form alone says whether it goes; its hiding ends the window.
void FormWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  runGuarded([this] {
    if (Form* form = link_.get()) form->userClose();
  });
}

void FormWindow::reject() {
  const Form* form = link_.get();
  if (!form) return end();
  CommandButton* cancel = form->cancelButton();
  if (cancel && cancel->reachable()) return runGuarded([cancel] { cancel->userClick(); });
  close();
}

void FormWindow::moveEvent(QMoveEvent* event) {
  QDialog::moveEvent(event);
  tellGeometry();
}

void FormWindow::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  tellGeometry();
}

void FormWindow::changeEvent(QEvent* event) {
  QDialog::changeEvent(event);
  if (event->type() == QEvent::WindowStateChange) {
    if (Form* form = link_.get()) form->setWindowState(stateOf(windowState()));
  }
  const bool look = event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange;
  if (look) {
    for (const auto& [model, view] : views_) view->refresh();
  }
}

// Only a window in its normal state has a place worth keeping.
void FormWindow::tellGeometry() {
  Form* form = link_.get();
  if (!form || placing_ || !presented_ || stateOf(windowState()) != Form::WindowState::normal) return;
  const QScopedValueRollback<bool> quiet(placing_, true);
  runGuarded([&] {
    form->moveTo(twipsOf(x(), logicalDpiX()), twipsOf(y(), logicalDpiY()));
    form->setSize(twipsOf(width(), logicalDpiX()), twipsOf(height(), logicalDpiY()));
  });
}

void FormWindow::end() {
  hide();
  if (loop_) loop_->quit();
  if (modeless_) deleteLater();
}

}  // namespace vantrelix::qt
