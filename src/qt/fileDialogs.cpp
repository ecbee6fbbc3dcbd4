#include "qt/fileDialogs.h"

#include <string_view>

#include <QAbstractItemView>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>

#include "foundation/text.h"
#include "platform/Platform.h"
#include "qt/qtText.h"

namespace vantrelix::qt {

namespace {

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

void startAt(QFileDialog& dialog, const std::string& folder, const std::string& filter, int filterIndex) {
  dialog.setOption(QFileDialog::HideNameFilterDetails);
  if (const std::string start = trim(folder); !start.empty()) {
    dialog.setDirectory(toQt(platform::current().toMachine(start)));
  }
  const QStringList filters = nameFilters(filter);
  dialog.setNameFilters(filters);
  if (filterIndex >= 1 && filterIndex <= filters.size()) dialog.selectNameFilter(filters[filterIndex - 1]);
}

std::string pathOf(const QString& file) { return platform::current().fromMachine(fromQt(file)); }

// One path, or the folder of the first and all names in it.
std::string openAnswer(const QStringList& files) {
  if (files.size() < 2) return files.empty() ? std::string() : pathOf(files.first());
  const QDir folder = QFileInfo(files.first()).dir();
  std::string answer = pathOf(folder.path());
  for (const QString& file : files) answer.append(kNul).append(pathOf(folder.relativeFilePath(file)));
  return answer;
}

// Gives the name its extension before it is asked whether a file of that name is to be replaced. The toolkit's own way
// would take any point in the name for one, and on some desktops asks for the name as it was typed.
class SaveDialog : public QFileDialog {
 public:
  SaveDialog(const Desktop::SaveFile& request, QWidget* over)
      : QFileDialog(over, toQt(request.title)), extension_(request.extension) {
    setFileMode(AnyFile);
    setAcceptMode(AcceptSave);
    startAt(*this, request.folder, request.filter, request.filterIndex);
    selectFile(toQt(request.name));
  }

  // Blank where the user cancels.
  QString ask() {
    do {
      refused_ = false;
    } while (exec() != Accepted && refused_);
    return result() == Accepted ? whole(selectedFiles().value(0)) : QString();
  }

  void accept() override {
    const QString typed = selectedFiles().value(0);
    const QString file = whole(typed);
    auto* box = findChild<QLineEdit*>("fileNameEdit");
    if (box && file != typed) {
      // A file of the name as typed, which the list selects meanwhile, would be taken in place of the text.
      for (auto* list : findChildren<QAbstractItemView*>()) list->clearSelection();
      box->setText(box->text() + file.mid(typed.size()));
    } else if (!box && file != typed && QFileInfo::exists(file) && !mayReplace(file)) {
      // The desktop's own dialog has asked for the name as typed, and has closed.
      refused_ = true;
      return;
    }
    QFileDialog::accept();
  }

 private:
  // A folder is not a name yet: it is opened.
  QString whole(const QString& file) const {
    if (QFileInfo(file).isDir()) return file;
    const std::string path = fromQt(file);
    return file + toQt(withExtension(path, extension_).substr(path.size()));
  }
  bool mayReplace(const QString& file) {
    const QString text = tr("%1 already exists.\nDo you want to replace it?").arg(QFileInfo(file).fileName());
    return QMessageBox::warning(this, windowTitle(), text, QMessageBox::Yes | QMessageBox::No, QMessageBox::No) ==
           QMessageBox::Yes;
  }

  std::string extension_;
  bool refused_ = false;
};

}  // namespace

std::string askFilesToOpen(const Desktop::OpenFiles& request, QWidget* over) {
  QFileDialog dialog(over, toQt(request.title));
  dialog.setFileMode(QFileDialog::ExistingFiles);
  startAt(dialog, request.folder, request.filter, request.filterIndex);
  return dialog.exec() == QDialog::Accepted ? openAnswer(dialog.selectedFiles()) : std::string();
}

std::string askFileToSave(const Desktop::SaveFile& request, QWidget* over) {
  const QString file = SaveDialog(request, over).ask();
  return file.isEmpty() ? std::string() : pathOf(file);
}

}  // namespace vantrelix::qt
