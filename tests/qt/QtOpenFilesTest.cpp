#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QTimer>

#include "qt/QtDesktop.h"
#include "qt/qtText.h"
#include "support/TempFolder.h"

namespace vantrelix::qt {
namespace {

using std::string_literals::operator""s;

const std::string kFilter = ".msi\0*.MSI\0All Files (*.*)\0*.*"s;

class QtOpenFiles : public testing::Test {
 protected:
  // The answer of the dialog in which the user does this.
  std::string answer(const std::function<void(QFileDialog&)>& user, int filterIndex = 2) {
    bool seen = false;
    QTimer::singleShot(0, [&] {
      auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      if (!dialog) return;
      seen = true;
      user(*dialog);
      if (dialog->isVisible()) static_cast<QDialog*>(dialog)->reject();
    });
    std::string files = QtDesktop().openFiles({"SCALA Files to Read", folder.path(), kFilter, filterIndex});
    EXPECT_TRUE(seen);
    return files;
  }
  static void choose(QFileDialog& dialog, const char* names) {
    auto* edit = dialog.findChild<QLineEdit*>("fileNameEdit");
    ASSERT_NE(edit, nullptr);
    edit->setText(names);
    static_cast<QDialog*>(&dialog)->accept();
  }

  test::TempFolder folder;
};

TEST_F(QtOpenFiles, TheDialogHasItsTitleFolderAndFilters) {
  answer([this](QFileDialog& dialog) {
    EXPECT_EQ(fromQt(dialog.windowTitle()), "SCALA Files to Read");
    EXPECT_EQ(fromQt(dialog.directory().path()), folder.machine());
    EXPECT_EQ(dialog.fileMode(), QFileDialog::ExistingFiles);
    EXPECT_EQ(dialog.nameFilters(), (QStringList{".msi (*.MSI)", "All Files (*.*) (*)"}));
    EXPECT_EQ(fromQt(dialog.selectedNameFilter()), "All Files (*.*)");
  });
  answer([](QFileDialog& dialog) { EXPECT_EQ(fromQt(dialog.selectedNameFilter()), ".msi"); }, 1);
}

TEST_F(QtOpenFiles, OneFileIsItsPath) {
  const std::string path = folder.write("a.msi", "x");
  EXPECT_EQ(answer([](QFileDialog& dialog) { choose(dialog, "a.msi"); }), path);
}

TEST_F(QtOpenFiles, SeveralFilesAreTheirFolderAndTheirNames) {
  folder.write("a.msi", "x");
  folder.write("b c.msi", "x");
  EXPECT_EQ(answer([](QFileDialog& dialog) { choose(dialog, "\"a.msi\" \"b c.msi\""); }),
            folder.path() + "\0a.msi\0b c.msi"s);
}

TEST_F(QtOpenFiles, CancellingGivesNothing) {
  EXPECT_EQ(answer([](QFileDialog& dialog) { static_cast<QDialog*>(&dialog)->reject(); }), "");
}

TEST(QtPopupMenu, AnItemWithAHyphenIsASeparator) {
  Menu menu("menu");
  MenuItem first("first", "First"), separator("separator", "-"), last("last", "Last");
  for (MenuItem* item : {&first, &separator, &last}) menu.addItem(*item);
  QTimer::singleShot(0, [] {
    auto* popup = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(popup, nullptr);
    ASSERT_EQ(popup->actions().size(), 3);
    EXPECT_FALSE(popup->actions()[0]->isSeparator());
    EXPECT_TRUE(popup->actions()[1]->isSeparator());
    EXPECT_FALSE(popup->actions()[2]->isSeparator());
    popup->close();
  });
  QtDesktop().popupMenu(menu);
}

}  // namespace
}  // namespace vantrelix::qt
