// The dialog for a file to write, and the clipboard.
#include <functional>
#include <gtest/gtest.h>
#include <vector>

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "qt/QtDesktop.h"
#include "qt/qtText.h"
#include "support/TempFolder.h"

namespace vantrelix::qt {
namespace {

using std::string_literals::operator""s;

class QtSaveFile : public testing::Test {
 protected:
  using User = std::function<void(QFileDialog&)>;

  // The answer of the dialog in which the user does this; he cancels one that stays open.
  std::string answer(const User& user) {
    bool seen = false;
    QTimer::singleShot(0, [&] {
      auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      if (!dialog) return;
      seen = true;
      user(*dialog);
      if (dialog->isVisible()) dialog->QDialog::reject();
    });
    std::string file = QtDesktop().saveFile(request);
    EXPECT_TRUE(seen);
    return file;
  }
  static QString proposed(const QFileDialog& dialog) { return dialog.findChild<QLineEdit*>("fileNameEdit")->text(); }
  // Types a name and presses Save; answers the question that comes, where one comes.
  void save(QFileDialog& dialog, const char* name, QMessageBox::StandardButton reply = QMessageBox::No) {
    auto& edit = *dialog.findChild<QLineEdit*>("fileNameEdit");
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    edit.setFocus();
    edit.setText(name);
    // As a click on the button does.
    dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save)->setFocus();
    QTimer::singleShot(0, [this, reply] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (!box) return;
      questions.push_back(fromQt(box->text()));
      box->button(reply)->click();
    });
    static_cast<QDialog&>(dialog).accept();
    QApplication::processEvents();  // the timer, where no question came
  }
  std::string saved(const char* name, QMessageBox::StandardButton reply = QMessageBox::No) {
    return answer([&](QFileDialog& dialog) { save(dialog, name, reply); });
  }

  test::TempFolder folder;
  std::vector<std::string> questions;
  Desktop::SaveFile request{"ASCII Antenna File to Write",
                            folder.path(),
                            "Yagi 2.4 GHz.ANT",
                            "Antennas\0*.ANT\0All Files (*.*)\0*.*"s,
                            "ANT",
                            1};
};

TEST_F(QtSaveFile, TheDialogHasItsTitleFolderNameAndFilters) {
  answer([this](QFileDialog& dialog) {
    EXPECT_EQ(fromQt(dialog.windowTitle()), "ASCII Antenna File to Write");
    EXPECT_EQ(fromQt(dialog.directory().path()), folder.machine());
    EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptSave);
    EXPECT_EQ(dialog.nameFilters(), (QStringList{"Antennas (*.ANT)", "All Files (*.*) (*)"}));
    EXPECT_EQ(fromQt(dialog.selectedNameFilter()), "Antennas");
    EXPECT_EQ(proposed(dialog), "Yagi 2.4 GHz.ANT");
  });
  request.filterIndex = 2;
  answer([](QFileDialog& dialog) { EXPECT_EQ(fromQt(dialog.selectedNameFilter()), "All Files (*.*)"); });
}

TEST_F(QtSaveFile, TheProposedNameCanBeTakenAsItIs) {
  EXPECT_EQ(answer([](QFileDialog& dialog) { static_cast<QDialog&>(dialog).accept(); }),
            folder.file("Yagi 2.4 GHz.ANT"));
}

TEST_F(QtSaveFile, ANewNameIsTakenWithoutAQuestion) {
  EXPECT_EQ(saved("a.txt"), folder.file("a.txt"));
  EXPECT_TRUE(questions.empty());
  EXPECT_FALSE(folder.exists("a.txt"));
}

TEST_F(QtSaveFile, ANameWithoutAnExtensionGetsTheDefaultOne) {
  EXPECT_EQ(saved("Dipole"), folder.file("Dipole.ANT"));
  EXPECT_EQ(saved("Dipole 1.5"), folder.file("Dipole 1.5.ANT"));
  request.extension = "";
  EXPECT_EQ(saved("Dipole"), folder.file("Dipole"));
}

TEST_F(QtSaveFile, AFileThatExistsIsReplacedOnlyWhereTheUserSaysSo) {
  folder.write("a.txt", "old");
  EXPECT_EQ(saved("a.txt", QMessageBox::No), "");
  EXPECT_EQ(saved("a.txt", QMessageBox::Yes), folder.file("a.txt"));
  EXPECT_EQ(questions.size(), 2U);
  EXPECT_EQ(folder.read("a.txt"), "old");
}

TEST_F(QtSaveFile, TheQuestionIsAboutTheNameWithItsExtension) {
  folder.write("Dipole.ANT", "old");
  folder.write("Loop", "another file");
  EXPECT_EQ(saved("Dipole", QMessageBox::No), "");
  ASSERT_EQ(questions.size(), 1U);
  EXPECT_NE(questions[0].find("Dipole.ANT"), std::string::npos) << questions[0];
  EXPECT_EQ(saved("Dipole", QMessageBox::Yes), folder.file("Dipole.ANT"));
  EXPECT_EQ(questions.size(), 2U);
  EXPECT_EQ(saved("Loop"), folder.file("Loop.ANT"));
  EXPECT_EQ(questions.size(), 2U) << questions.back();
}

TEST_F(QtSaveFile, AfterARefusalAnotherNameCanBeTyped) {
  folder.write("Dipole.ANT", "old");
  EXPECT_EQ(answer([this](QFileDialog& dialog) {
              save(dialog, "Dipole", QMessageBox::No);
              EXPECT_TRUE(dialog.isVisible());
              EXPECT_EQ(proposed(dialog), "Dipole.ANT");
              save(dialog, "Loop");
            }),
            folder.file("Loop.ANT"));
}

TEST_F(QtSaveFile, TheNameOfAFolderOpensIt) {
  folder.write("sub\\x.txt", "");
  EXPECT_EQ(answer([this](QFileDialog& dialog) {
              save(dialog, "sub");
              EXPECT_TRUE(dialog.isVisible());
              EXPECT_EQ(fromQt(dialog.directory().path()), folder.machine("sub"));
              save(dialog, "Loop");
            }),
            folder.file("sub\\Loop.ANT"));
  EXPECT_TRUE(questions.empty());
}

TEST_F(QtSaveFile, CancellingGivesNothing) {
  EXPECT_EQ(answer([](QFileDialog& dialog) { static_cast<QDialog&>(dialog).reject(); }), "");
}

TEST(QtClipboard, GivesOtherProgramsTheirOwnLinesAndTakesThemBack) {
  QtDesktop screen;
  screen.setClipboardText("angle\t\xC2\xB0\r\n1\t2\r\n");
  EXPECT_EQ(QApplication::clipboard()->text(), "angle\t°\n1\t2\n");
  EXPECT_EQ(screen.clipboardText(), "angle\t\xC2\xB0\r\n1\t2\r\n");
  for (const char* lines : {"a\nb", "a\r\nb", "a\rb"}) {
    QApplication::clipboard()->setText(lines);
    EXPECT_EQ(screen.clipboardText(), "a\r\nb");
  }
  QApplication::clipboard()->clear();
  EXPECT_EQ(screen.clipboardText(), "");
}

}  // namespace
}  // namespace vantrelix::qt
