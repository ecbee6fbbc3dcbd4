#include "qt/forms/fileAlias.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "qt/FormWindow.h"
#include "qt/failures.h"
#include "qt/gridKeys.h"
#include "qt/typing.h"

namespace vantrelix::qt {

ListKeys::ListKeys(frmFileAlias& form, QWidget& list, QWidget& button) : QObject(&list), form_(form), list_(list) {
  list.installEventFilter(this);
  button.installEventFilter(this);
}

bool ListKeys::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  auto& key = dynamic_cast<QKeyEvent&>(*event);
  if (takeEverywhere(key)) return true;
  if (watched == &list_ || !belongsToList(key)) return false;
  QCoreApplication::sendEvent(&list_, event);
  return true;
}

bool ListKeys::takeEverywhere(const QKeyEvent& key) {
  const auto modifiers = key.modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
  if (modifiers != Qt::NoModifier) return false;
  switch (key.key()) {
    case Qt::Key_Delete:
      runGuarded([this] { form_.userRemoveRow(); });
      return true;
    case Qt::Key_Home:
      runGuarded([this] { form_.TDBGrid1.userMove(GridMove::top); });
      return true;
    case Qt::Key_End:
      runGuarded([this] { form_.TDBGrid1.userMove(GridMove::bottom); });
      return true;
    default:
      return false;
  }
}

// A blank presses the button, unless it goes on with what is being typed.
bool ListKeys::belongsToList(const QKeyEvent& key) {
  const std::optional<GridMove> move = moveOf(key);
  if (move) return move != GridMove::left && move != GridMove::right;
  if (!isTyping(key)) return false;
  const bool goesOn = typed_.isValid() && typed_.elapsed() < QApplication::keyboardInputInterval();
  if (key.key() == Qt::Key_Space && !goesOn) return false;
  typed_.start();
  return true;
}

void layOutFileAlias(FormWindow& window, frmFileAlias& form) {
  auto* column = new QVBoxLayout(&window);
  QWidget& files = window.view(form.Frame1);
  QWidget& list = window.view(form.TDBGrid1);
  (new QVBoxLayout(&files))->addWidget(&list);
  column->addWidget(&files, 1);

  QWidget& path = window.view(form.fraPath);
  auto& label = dynamic_cast<QLabel&>(window.view(form.lblPath));
  label.setWordWrap(true);
  label.setTextInteractionFlags(Qt::TextSelectableByMouse);
  (new QVBoxLayout(&path))->addWidget(&label);
  column->addWidget(&path);

  auto* buttons = new QHBoxLayout;
  buttons->addWidget(&window.view(form.cmdNew));
  buttons->addStretch(1);
  QWidget& continuing = window.view(form.Command1[frmFileAlias::continuing]);
  buttons->addWidget(&continuing);
  buttons->addWidget(&window.view(form.Command1[frmFileAlias::cancelling]));
  column->addLayout(buttons);
  new ListKeys(form, list, continuing);
}

}  // namespace vantrelix::qt
