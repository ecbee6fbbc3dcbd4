#include "qt/FormWindow.h"

#include <algorithm>

#include <QApplication>
#include <QCloseEvent>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLayout>
#include <QPushButton>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QScreen>
#include <QThread>
#include <QWindow>

#include "qt/FormTimer.h"
#include "qt/formLayouts.h"
#include "qt/makeView.h"
#include "qt/menus.h"
#include "ui/widgets.h"

namespace vantrelix::qt {

namespace {

constexpr qint64 kLongestWaitForScreen = 200;  // milliseconds
constexpr int kEnterKey = 13;

using State = Form::WindowState;

State stateOf(Qt::WindowStates states) {
  if (states.testFlag(Qt::WindowMinimized)) return State::minimised;
  const bool fills = states.testFlag(Qt::WindowMaximized) || states.testFlag(Qt::WindowFullScreen);
  return fills ? State::maximised : State::normal;
}

Qt::WindowState qtStateOf(State state) {
  if (state == State::minimised) return Qt::WindowMinimized;
  return state == State::maximised ? Qt::WindowMaximized : Qt::WindowNoState;
}

// A window of work that goes on at once would else stay blank until the work lets the screen have a turn.
void waitUntilPainted(QPointer<QWidget> window) {
  QElapsedTimer clock;
  clock.start();
  const auto seen = [&window] { return !window->windowHandle() || window->windowHandle()->isExposed(); };
  while (window && window->isVisible() && !seen() && clock.elapsed() < kLongestWaitForScreen) {
    QThread::msleep(1);
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  }
  if (window) window->repaint();
}

}  // namespace

FormWindow::FormWindow(Form& form, QWidget* parent)
    : QDialog(parent),
      link_(
          form, [this] { follow(); }, [this] { end(); }) {
  setObjectName(toQt(form.name()));
  layOut(*this, form);
  if (!form.menuBar().empty()) layout()->setMenuBar(makeMenuBar(form.menuBar(), this));
  watchFrames();
  focus_.setTabOrder();
  for (Widget* widget : form.widgets()) {
    if (auto* timer = dynamic_cast<Timer*>(widget)) timers_.push_back(new FormTimer(*timer, this));
  }
  setWindowTitle(toQt(form.caption()));
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, const QWidget* now) { tellFocus(now); });
}

FormWindow::~FormWindow() {
  disconnect(qApp, nullptr, this, nullptr);
  if (ended_) return;
  runGuarded([this] {
    if (Form* form = link_.get()) form->hide();
  });
}

QWidget& FormWindow::view(Widget& model) {
  if (const auto made = views_.find(&model); made != views_.end()) return made->second->widget();
  WidgetView* view = makeView(model, this);
  if (!view) qFatal("no view shows the widget %s", model.name().c_str());
  view->widget().setProperty(kLaidOut, true);
  if (auto* button = qobject_cast<QPushButton*>(&view->widget())) button->setAutoDefault(false);
  view->refresh();
  views_.emplace(&model, view);
  return view->widget();
}

void FormWindow::runModal(Form& form, QWidget* parent) {
  const QPointer<FormWindow> window = new FormWindow(form, parent);
  const auto cleanUp = qScopeGuard([&window] { delete window; });
  QEventLoop loop;
  window->loop_ = &loop;
  window->setWindowModality(Qt::ApplicationModal);
  form.setVisible(true);
  window->present();
  if (window && !window->ended_) loop.exec(QEventLoop::DialogExec);
}

void FormWindow::showModeless(Form& form, QWidget* parent, bool takesFocus) {
  for (QWidget* shown : QApplication::topLevelWidgets()) {
    auto* own = qobject_cast<FormWindow*>(shown);
    if (!own || own->ended_ || own->link_.get() != &form) continue;
    own->raise();
    if (takesFocus) own->activateWindow();
    return;
  }
  auto* window = new FormWindow(form, parent);
  window->modeless_ = true;
  window->leavesFocus_ = !takesFocus;
  if (!takesFocus) {
    window->setAttribute(Qt::WA_ShowWithoutActivating);
    window->setWindowFlag(Qt::WindowDoesNotAcceptFocus);
  }
  form.setVisible(true);
  window->present();
  if (!takesFocus || window->isModal()) waitUntilPainted(window);
}

void FormWindow::present() {
  place();
  follow();
  if (!ended_) {
    const QScopedValueRollback<bool> rollback(showing_, true);
    show();
  }
  if (ended_) leave();
}

void FormWindow::place() {
  const Form* form = link_.get();
  if (!form) return;
  const QScopedValueRollback<bool> quiet(placing_, true);
  const QRect box = pixelsOf(form->geometry(), *this);
  const QSize wanted = box.isEmpty() ? sizeHint() : box.size();
  const QRect room = roomFor(box);
  const QSize fitting = wanted.boundedTo(room.size());
  resize(fitting.expandedTo(minimumSizeHint()));
  const bool fits = fitting == wanted;
  if (form->placed()) {
    move(fits ? box.topLeft() : QPoint(std::max(box.left(), room.left()), std::max(box.top(), room.top())));
  }
  if (form->windowState() != State::normal) setWindowState(qtStateOf(form->windowState()));
}

// Of the screen that has its middle, less the title bar.
QRect FormWindow::roomFor(const QRect& box) const {
  const QScreen* there = link_.get()->placed() ? QGuiApplication::screenAt(box.center()) : nullptr;
  return (there ? there : screen())->availableGeometry().adjusted(0, 0, 0, -2 * fontMetrics().lineSpacing());
}

void FormWindow::follow() {
  const Form* form = link_.get();
  if (!form || ended_) return;
  if (windowTitle() != toQt(form->caption())) setWindowTitle(toQt(form->caption()));
  if (!form->visible()) return end();
  focus_.follow(*form);
  focus_.markDefaultButton(*form);
  if (!placing_ && presented_) followGeometry(*form);
}

void FormWindow::followGeometry(const Form& form) {
  if (form.windowState() != stateOf(windowState())) setWindowState(qtStateOf(form.windowState()));
  if (!form.placed() || form.windowState() != State::normal) return;
  const QScopedValueRollback<bool> quiet(placing_, true);
  const QRect box = pixelsOf(form.geometry(), *this);
  if (box.topLeft() != pos()) move(box.topLeft());
  if (!box.isEmpty() && box.size() != size()) resize(box.size().expandedTo(minimumSizeHint()));
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
  runGuarded([this] {
    if (Form* form = link_.get()) form->userClose();
  });
  event->setAccepted(ended_);
}

void FormWindow::reject() {
  const Form* form = link_.get();
  CommandButton* cancel = form ? form->cancelButton() : nullptr;
  if (cancel) runGuarded([cancel] { cancel->userClick(); });
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
  const auto type = event->type();
  if (type == QEvent::WindowStateChange) {
    if (Form* form = link_.get()) runGuarded([&] { form->setWindowState(stateOf(windowState())); });
  }
  // Where the desktop activates a window all the same.
  if (type == QEvent::ActivationChange && leavesFocus_ && isActiveWindow() && parentWidget()) {
    parentWidget()->activateWindow();
  }
  if (type == QEvent::PaletteChange || type == QEvent::StyleChange || type == QEvent::FontChange) {
    for (const auto& [model, view] : views_) view->refresh();
  }
}

// A default button takes Enter before any box does.
TextBox* FormWindow::boxForEnter() const {
  const Form* form = link_.get();
  if (!form || ended_ || form->defaultButton()) return nullptr;
  auto* box = dynamic_cast<TextBox*>(form->activeWidget());
  const auto found = box ? views_.find(box) : views_.end();
  return found != views_.end() && found->second->widget().hasFocus() ? box : nullptr;
}

void FormWindow::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  TextBox* box = enter ? boxForEnter() : nullptr;
  if (!box) return QDialog::keyPressEvent(event);
  runGuarded([box] { box->userKey(kEnterKey); });
  event->accept();
}

void FormWindow::tellFocus(const QWidget* now) {
  Form* form = link_.get();
  if (!now || !form || ended_ || !isAncestorOf(now)) return;
  focus_.markDefaultButton(*form);
  if (Widget* model = focus_.entered(*now)) runGuarded([&] { form->setFocus(*model); });
}

// Only a window in its normal state has a place worth keeping.
void FormWindow::tellGeometry() {
  Form* form = link_.get();
  if (!form || ended_ || placing_ || !presented_ || stateOf(windowState()) != State::normal) return;
  const QScopedValueRollback<bool> quiet(placing_, true);
  runGuarded([&] {
    form->moveTo(twipsOf(x(), logicalDpiX()), twipsOf(y(), logicalDpiY()));
    if (link_.get()) form->setSize(twipsOf(width(), logicalDpiX()), twipsOf(height(), logicalDpiY()));
  });
}

// A frame moves with whatever it stands in.
void FormWindow::watchFrames() {
  for (const auto& [model, view] : views_) {
    if (!dynamic_cast<Frame*>(model)) continue;
    for (QWidget* widget = &view->widget(); widget && widget != this; widget = widget->parentWidget()) {
      widget->installEventFilter(this);
    }
  }
}

bool FormWindow::eventFilter(QObject* watched, QEvent* event) {
  const auto type = event->type();
  if (type == QEvent::Move || type == QEvent::Resize || type == QEvent::Show) tellFrames();
  return QDialog::eventFilter(watched, event);
}

void FormWindow::tellFrames() {
  if (!link_.get() || ended_) return;
  for (const auto& [model, view] : views_) {
    if (!dynamic_cast<Frame*>(model)) continue;
    const QWidget& shown = view->widget();
    const QPoint corner = shown.mapTo(this, QPoint());
    model->setGeometry({twipsOf(corner.x(), logicalDpiX()), twipsOf(corner.y(), logicalDpiY()),
                        twipsOf(shown.width(), logicalDpiX()), twipsOf(shown.height(), logicalDpiY())});
  }
}

void FormWindow::end() {
  if (ended_) return;
  ended_ = true;
  for (FormTimer* timer : timers_) timer->end();
  // A window cannot be hidden while it is being shown.
  if (!showing_) leave();
}

void FormWindow::leave() {
  const bool inUse = modeless_ && isActiveWindow() && parentWidget();
  hide();
  // Not every desktop gives the keyboard back to the window behind.
  if (inUse) parentWidget()->activateWindow();
  if (loop_) loop_->quit();
  if (modeless_) deleteLater();
}

}  // namespace vantrelix::qt
