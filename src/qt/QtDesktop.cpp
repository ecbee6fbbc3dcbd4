#include "qt/QtDesktop.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <QApplication>
#include <QClipboard>
#include <QCursor>
#include <QInputDialog>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QScopeGuard>
#include <QTimer>

#include "qt/FormWindow.h"
#include "qt/WidgetView.h"
#include "qt/fileDialogs.h"
#include "qt/menus.h"
#include "qt/qtText.h"

namespace vantrelix::qt {

namespace {

constexpr int kInputWidth = 360;

using Box = QMessageBox;
using Button = std::pair<Box::StandardButton, MsgAnswer>;

struct ButtonRow {
  MsgButtons kind;
  std::vector<Button> buttons;  // as they are counted for the default button
  Box::StandardButton escape;
};

const ButtonRow& rowOf(MsgButtons kind) {
  static const std::vector<ButtonRow> rows = {
      {MsgButtons::ok, {{Box::Ok, MsgAnswer::ok}}, Box::Ok},
      {MsgButtons::okCancel, {{Box::Ok, MsgAnswer::ok}, {Box::Cancel, MsgAnswer::cancel}}, Box::Cancel},
      {MsgButtons::abortRetryIgnore,
       {{Box::Abort, MsgAnswer::abort}, {Box::Retry, MsgAnswer::retry}, {Box::Ignore, MsgAnswer::ignore}},
       Box::Abort},
      {MsgButtons::yesNoCancel,
       {{Box::Yes, MsgAnswer::yes}, {Box::No, MsgAnswer::no}, {Box::Cancel, MsgAnswer::cancel}},
       Box::Cancel},
      {MsgButtons::yesNo, {{Box::Yes, MsgAnswer::yes}, {Box::No, MsgAnswer::no}}, Box::No},
      {MsgButtons::retryCancel, {{Box::Retry, MsgAnswer::retry}, {Box::Cancel, MsgAnswer::cancel}}, Box::Cancel},
  };
  return *std::find_if(rows.begin(), rows.end(), [kind](const ButtonRow& row) { return row.kind == kind; });
}

Box::Icon iconOf(MsgIcon icon) {
  switch (icon) {
    case MsgIcon::critical:
      return Box::Critical;
    case MsgIcon::question:
      return Box::Question;
    case MsgIcon::exclamation:
      return Box::Warning;
    case MsgIcon::information:
      return Box::Information;
    case MsgIcon::none:
      break;
  }
  return Box::NoIcon;
}

// The window over which another is to come up.
QWidget* windowInUse() {
  QWidget* active = QApplication::activeWindow();
  return active ? active : QApplication::activeModalWidget();
}

// Null where no window shows the widget.
const QWidget* viewOf(const Widget& model) {
  for (const QWidget* widget : QApplication::allWidgets()) {
    const auto* view = dynamic_cast<const WidgetView*>(widget);
    if (view && view->widgetModel() == &model && widget->isVisible()) return widget;
  }
  return nullptr;
}

void highlightFirst(QMenu& menu) {
  for (QAction* action : menu.actions()) {
    if (action->isSeparator() || !action->isEnabled() || !action->isVisible()) continue;
    return menu.setActiveAction(action);
  }
}

}  // namespace

MsgAnswer QtDesktop::messageBox(const Message& message) {
  const ButtonRow& row = rowOf(message.buttons);
  Box box(QApplication::activeWindow());
  box.setWindowTitle(toQt(message.title));
  box.setIcon(iconOf(message.icon));
  box.setTextFormat(Qt::PlainText);
  box.setText(linesToQt(message.text));
  box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  for (const Button& button : row.buttons) box.addButton(button.first)->setIcon({});
  const int byDefault = std::clamp(message.defaultButton, 1, static_cast<int>(row.buttons.size())) - 1;
  box.setDefaultButton(row.buttons[static_cast<std::size_t>(byDefault)].first);
  box.setEscapeButton(row.escape);
  const int pressed = box.exec();
  const auto answer = std::find_if(row.buttons.begin(), row.buttons.end(),
                                   [pressed](const Button& button) { return button.first == pressed; });
  return answer == row.buttons.end() ? defaultAnswer(message) : answer->second;
}

void QtDesktop::doEvents() { QCoreApplication::processEvents(); }

void QtDesktop::doEventsWithoutInput() { QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents); }

void QtDesktop::popupMenu(Menu& menu, const Widget* below) {
  const QWidget* view = below ? viewOf(*below) : nullptr;
  const QPointer<QMenu> popup = new QMenu(QApplication::activeWindow());
  const auto cleanUp = qScopeGuard([&popup] { delete popup; });
  fillMenu(*popup, menu);
  if (view) QTimer::singleShot(0, popup, [&popup] { highlightFirst(*popup); });
  QAction* chosen = popup->exec(view ? view->mapToGlobal(view->rect().bottomLeft()) : QCursor::pos());
  if (auto* action = dynamic_cast<ItemAction*>(chosen)) action->click();
}

void QtDesktop::showModal(Form& form) { FormWindow::runModal(form, windowInUse()); }

void QtDesktop::showModeless(Form& form, Activation activation) {
  FormWindow::showModeless(form, windowInUse(), activation == Activation::take);
}

std::string QtDesktop::inputBox(const std::string& prompt, const std::string& title, const std::string& text) {
  QInputDialog dialog(windowInUse());
  dialog.setWindowTitle(toQt(title));
  dialog.setLabelText(linesToQt(prompt));
  dialog.setTextValue(toQt(text));
  for (auto* label : dialog.findChildren<QLabel*>()) {
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
  }
  for (auto* button : dialog.findChildren<QPushButton*>()) button->setIcon({});
  dialog.resize(std::max(kInputWidth, dialog.minimumSizeHint().width()), dialog.sizeHint().height());
  return dialog.exec() == QDialog::Accepted ? fromQt(dialog.textValue()) : std::string();
}

std::string QtDesktop::openFiles(const OpenFiles& request) { return askFilesToOpen(request, windowInUse()); }

std::string QtDesktop::saveFile(const SaveFile& request) { return askFileToSave(request, windowInUse()); }

std::string QtDesktop::clipboardText() {
  return fromQt(linesToQt(fromQt(QApplication::clipboard()->text())).replace('\n', "\r\n"));
}

void QtDesktop::setClipboardText(const std::string& text) { QApplication::clipboard()->setText(linesToQt(text)); }

MonitorPort& QtDesktop::monitors() { return monitors_; }

}  // namespace vantrelix::qt
