// The alias picker in its window, driven by the keyboard.
#include <gtest/gtest.h>

#include <QApplication>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include "aliases/modGetOpenFileAlias.h"
#include "foundation/extract.h"
#include "foundation/getINI.h"
#include "foundation/suitePaths.h"
#include "qt/QtDesktop.h"
#include "qt/qtText.h"
#include "support/TempSuite.h"

namespace vantrelix::qt {
namespace {

constexpr const char* kSection = "ANTENNAS\\AMS?????.DBF";

class FileAlias : public testing::Test {
 protected:
  FileAlias() {
    getAntennasPath();
    add("AMSX0001.DBF", "Andrew Dishes");
    add("AMSX0002.DBF", "Scala Panels");
    add("AMSX0003.DBF", "Scala Yagis");
    add("AMSX0004.DBF", "Sinclair");
  }
  void add(const std::string& file, const std::string& description) const {
    suite_.folder().write("ANTENNAS/" + file, "x");
    setINI(kSection, file, store(), description);
  }
  std::string store() const { return suite_.file("ANTENNAS/QVAliasANT.INI"); }
  std::string stored(const std::string& file) const {
    return getPrivateProfileString(kSection, file, "(none)", kIniBuffer, store());
  }

  // The picker, on which `user` acts once it has come up.
  template <class User>
  void open(User user) {
    bool acted = false;
    QTimer::singleShot(0, [&] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      EXPECT_TRUE(QTest::qWaitForWindowActive(dialog));
      user(*dialog);
      acted = true;
      if (dialog->isVisible()) dialog->close();
    });
    modGetOpenFileAliasNoDBClass(arguments_);
    EXPECT_TRUE(acted);
  }
  // Lets `user` act on the next dialog that comes up over the picker.
  template <class Dialog, class User>
  void onNext(User user) {
    QTimer::singleShot(0, [this, user] {
      auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      ++dialogs_;
      user(*dialog);
    });
  }
  // A screenless desktop does not hand the keyboard back when a dialog over the picker has gone.
  static void comeBack(QDialog& dialog) {
    dialog.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
  }
  static QTableView& list(const QDialog& dialog) { return *dialog.findChild<QTableView*>("TDBGrid1"); }
  static QString markedFile(const QDialog& dialog) {
    const QModelIndexList rows = list(dialog).selectionModel()->selectedRows(1);
    return rows.size() == 1 ? rows.front().data().toString() : QString::number(rows.size()) + " rows";
  }
  static QString focused() {
    const QWidget* widget = QApplication::focusWidget();
    return widget ? widget->objectName() : QString();
  }
  static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }
  static void type(const char* text) {
    // One key at a time: the first may move the focus.
    for (const char* key = text; *key != '\0'; ++key) QTest::keyClick(QApplication::focusWidget(), *key);
  }

  test::TempSuite suite_;
  QtDesktop desktop_;
  DesktopInUse inUse_{desktop_};
  OpenFileAlias arguments_{.sPrefix = "AMS", .sTitle = "Antenna Library to Open", .bAllowNew = true};
  int dialogs_ = 0;
};

TEST_F(FileAlias, TypingFindsAndEnterContinues) {
  open([](const QDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Antenna Library to Open - 4 files");
    EXPECT_EQ(focused(), "TDBGrid1");
    type("scala y");
    EXPECT_EQ(markedFile(dialog), "AMSX0003.DBF");
    EXPECT_EQ(focused(), "Command1_1");
    press(Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_FALSE(arguments_.bCancel);
  EXPECT_EQ(arguments_.sFile, "AMSX0003.DBF");
  EXPECT_EQ(arguments_.vAlias, "Scala Yagis");
}

TEST_F(FileAlias, NothingIsMarkedAndEnterTakesNothingUntilARowIsChosen) {
  open([this](QDialog& dialog) {
    EXPECT_EQ(focused(), "TDBGrid1");
    EXPECT_EQ(markedFile(dialog), "0 rows");
    onNext<QMessageBox>([](QMessageBox& box) {
      EXPECT_EQ(box.windowTitle(), "Nothing Selected");
      QTest::keyClick(&box, Qt::Key_Return);
    });
    press(Qt::Key_Return);
    EXPECT_EQ(dialogs_, 1);
    comeBack(dialog);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(markedFile(dialog), "0 rows");
    for (int i = 0; i < 4; ++i) press(Qt::Key_Tab);  // round to the list again
    EXPECT_EQ(focused(), "TDBGrid1");
    EXPECT_EQ(markedFile(dialog), "0 rows");
    press(Qt::Key_Down);
    EXPECT_EQ(markedFile(dialog), "AMSX0001.DBF");
    press(Qt::Key_Return);
  });
  EXPECT_EQ(arguments_.sFile, "AMSX0001.DBF");
}

TEST_F(FileAlias, TheKeysOfTheListWorkOnContinue) {
  arguments_.sFile = "AMSX0002.DBF";
  open([](const QDialog& dialog) {
    EXPECT_EQ(focused(), "Command1_1");
    EXPECT_EQ(markedFile(dialog), "AMSX0002.DBF");
    const std::pair<Qt::Key, const char*> steps[] = {
        {Qt::Key_Down, "AMSX0003.DBF"},   {Qt::Key_Up, "AMSX0002.DBF"},   {Qt::Key_End, "AMSX0004.DBF"},
        {Qt::Key_PageUp, "AMSX0001.DBF"}, {Qt::Key_Home, "AMSX0001.DBF"}, {Qt::Key_PageDown, "AMSX0004.DBF"},
    };
    for (const auto& [key, file] : steps) {
      press(key);
      EXPECT_EQ(markedFile(dialog), file) << key;
      EXPECT_EQ(focused(), "Command1_1");
    }
    press(Qt::Key_Space);
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_EQ(arguments_.sFile, "AMSX0004.DBF");
}

TEST_F(FileAlias, ANewFileIsNamedListedAndChosen) {
  open([this](QDialog& dialog) {
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), "cmdNew");
    onNext<QInputDialog>([](QInputDialog& box) {
      EXPECT_EQ(box.windowTitle(), "New Antenna Library");
      EXPECT_EQ(box.labelText(), "AMSX0005\nEnter the description for the new library created:");
      QTest::keyClicks(box.findChild<QLineEdit*>(), "Ours");
      QTest::keyClick(&box, Qt::Key_Return);
    });
    press(Qt::Key_Space);
    EXPECT_EQ(dialogs_, 1);
    comeBack(dialog);
    EXPECT_EQ(markedFile(dialog), "AMSX0005.DBF");
    EXPECT_EQ(focused(), "Command1_1");
    press(Qt::Key_Return);
  });
  EXPECT_EQ(arguments_.sFile, "AMSX0005.DBF");
  EXPECT_EQ(arguments_.vAlias, "Ours");
  EXPECT_EQ(stored("AMSX0005.DBF"), "Ours");
}

TEST_F(FileAlias, DeleteRemovesARowAfterItsQuestion) {
  open([this](QDialog& dialog) {
    press(Qt::Key_Home);
    onNext<QMessageBox>([](QMessageBox& box) {
      EXPECT_EQ(box.windowTitle(), "Remove Antenna Library?");
      EXPECT_EQ(box.text(), "Do you want to remove this antenna library?\n\nAndrew Dishes AMSX0001.DBF");
      EXPECT_TRUE(box.defaultButton() == box.button(QMessageBox::No));
      QTest::keyClick(&box, Qt::Key_Return);
    });
    press(Qt::Key_Delete);
    comeBack(dialog);
    EXPECT_EQ(list(dialog).model()->rowCount(), 4);
    press(Qt::Key_End);
    EXPECT_EQ(focused(), "Command1_1");
    onNext<QMessageBox>([](QMessageBox& box) { QTest::keyClick(box.button(QMessageBox::Yes), Qt::Key_Space); });
    press(Qt::Key_Delete);
    comeBack(dialog);
    EXPECT_EQ(dialogs_, 2);
    EXPECT_EQ(list(dialog).model()->rowCount(), 3);
    EXPECT_EQ(markedFile(dialog), "AMSX0003.DBF");
    press(Qt::Key_Return);
  });
  EXPECT_EQ(arguments_.sFile, "AMSX0003.DBF");
  EXPECT_EQ(stored("AMSX0004.DBF"), "Sinclair");
}

TEST_F(FileAlias, EscapeAndTheFrameCancel) {
  arguments_.sFile = "AMSX0002.DBF";
  open([](const QDialog& dialog) {
    press(Qt::Key_Down);
    press(Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_TRUE(arguments_.bCancel);
  EXPECT_EQ(arguments_.sFile, "AMSX0002.DBF");
  arguments_.bCancel = false;
  open([](QDialog& dialog) { dialog.close(); });
  EXPECT_TRUE(arguments_.bCancel);
}

TEST_F(FileAlias, TabRunsThroughItInTheOrderInWhichItIsRead) {
  open([](const QDialog&) {
    for (const char* name : {"TDBGrid1", "cmdNew", "Command1_1", "Command1_0", "TDBGrid1"}) {
      EXPECT_EQ(focused(), name);
      press(Qt::Key_Tab);
    }
  });
}

TEST_F(FileAlias, ClicksMarkAndADoubleClickContinues) {
  open([](const QDialog& dialog) {
    QTableView& table = list(dialog);
    const auto place = [&table](int row) { return table.visualRect(table.model()->index(row, 0)).center(); };
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, place(2));
    EXPECT_EQ(markedFile(dialog), "AMSX0003.DBF");
    EXPECT_EQ(focused(), "Command1_1");
    QTest::mouseDClick(table.viewport(), Qt::LeftButton, {}, place(1));
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_EQ(arguments_.sFile, "AMSX0002.DBF");
}

TEST_F(FileAlias, TheListTakesTheRoomAndShowsBothColumns) {
  open([](QDialog& dialog) {
    QTableView& table = list(dialog);
    EXPECT_GT(table.columnWidth(0), 2 * table.columnWidth(1));
    const QRect file = table.visualRect(table.model()->index(0, 1));
    EXPECT_TRUE(table.viewport()->rect().contains(file)) << file.right() << " of " << table.viewport()->width();
    EXPECT_GE(file.width(), table.fontMetrics().horizontalAdvance("AMSX0001.DBF"));
    const QSize before = table.size(), grown = dialog.size() + QSize(100, 200);
    dialog.resize(grown);
    QApplication::processEvents();
    EXPECT_GE(table.height(), before.height() + 190);
    EXPECT_GE(table.width(), before.width() + 90);
    const auto* path = dialog.findChild<QLabel*>("lblPath");
    EXPECT_EQ(path->text(), toQt(displayPath(setPathName(getAntennasPath(), "AMS?????.DBF"))));
    EXPECT_GE(path->height(), path->heightForWidth(path->width()));
  });
}

TEST_F(FileAlias, ThePreselectedRowIsInView) {
  for (int i = 100; i < 200; ++i) add("AMSX0" + std::to_string(i) + ".DBF", "T " + std::to_string(i));
  arguments_.sFile = "AMSX0150.DBF";
  open([](const QDialog& dialog) {
    QTableView& table = list(dialog);
    EXPECT_EQ(markedFile(dialog), "AMSX0150.DBF");
    EXPECT_TRUE(table.viewport()->rect().contains(table.visualRect(table.selectionModel()->selectedRows().front())));
  });
}

TEST_F(FileAlias, IsDrawnWhole) {
  add("AMSZ0017.DBF", "0404 Scala Archived (no longer in catalog)");
  arguments_.sFile = "AMSX0002.DBF";
  open([](QDialog& dialog) {
    for (const QWidget* widget : dialog.findChildren<QPushButton*>()) {
      EXPECT_GE(widget->width(), widget->minimumSizeHint().width()) << widget->objectName().toStdString();
    }
    const QByteArray picture = qgetenv("FILEALIAS_PICTURE");
    if (!picture.isEmpty()) dialog.grab().save(picture);
  });
}

}  // namespace
}  // namespace vantrelix::qt
