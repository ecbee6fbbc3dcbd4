#include "qt/QtDesktop.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <QApplication>
#include <QCursor>
#include <QDir>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>

#include "foundation/text.h"
#include "platform/Platform.h"
#include "qt/FormWindow.h"
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

constexpr std::string_view kNul("\0", 1);

// The toolkit reads the pattern behind the description in brackets; its "*.*" would hide names without a point.
QStringList nameFilters(const std::string& filter) {
  QStringList filters;
  for (int field = 1; field < nAWK6(filter, kNul); field += 2) {
    const std::string pattern = sAWK6(filter, kNul, field + 1);
    filters << toQt(sAWK6(filter, kNul, field) + " (" + (pattern == "*.*" ? "*" : pattern) + ")");
  }
  return filters;
}

// One path, or the folder of the first and all names in it.
std::string openAnswer(const QStringList& files) {
  platform::Platform& system = platform::current();
  if (files.size() < 2) return files.empty() ? std::string() : system.fromMachine(fromQt(files.first()));
  const QDir folder = QFileInfo(files.first()).dir();
  std::string answer = system.fromMachine(fromQt(folder.path()));
  for (const QString& file : files)
    answer.append(kNul).append(system.fromMachine(fromQt(folder.relativeFilePath(file))));
  return answer;
}

// The window over which another is to come up.
QWidget* windowInUse() {
  QWidget* active = QApplication::activeWindow();
  return active ? active : QApplication::activeModalWidget();
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

void QtDesktop::popupMenu(Menu& menu) {
  QMenu popup(QApplication::activeWindow());
  std::vector<std::pair<QAction*, MenuItem*>> actions;
  for (MenuItem* item : menu.items()) {
    if (!item->visible()) continue;
    QAction* action = item->caption() == "-" ? popup.addSeparator() : popup.addAction(toQt(item->caption()));
    action->setEnabled(item->enabled());
    actions.emplace_back(action, item);
  }
  const QAction* chosen = popup.exec(QCursor::pos());
  for (const auto& [action, item] : actions) {
    if (action == chosen) return item->userClick();
  }
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

std::string QtDesktop::openFiles(const OpenFiles& request) {
  QFileDialog dialog(windowInUse(), toQt(request.title));
  dialog.setFileMode(QFileDialog::ExistingFiles);
  dialog.setOption(QFileDialog::HideNameFilterDetails);
  if (const std::string folder = trim(request.folder); !folder.empty()) {
    dialog.setDirectory(toQt(platform::current().toMachine(folder)));
  }
  const QStringList filters = nameFilters(request.filter);
  dialog.setNameFilters(filters);
  if (request.filterIndex >= 1 && request.filterIndex <= filters.size()) {
    dialog.selectNameFilter(filters[request.filterIndex - 1]);
  }
  return dialog.exec() == QDialog::Accepted ? openAnswer(dialog.selectedFiles()) : std::string();
}

MonitorPort& QtDesktop::monitors() { return monitors_; }

}  // namespace vantrelix::qt
