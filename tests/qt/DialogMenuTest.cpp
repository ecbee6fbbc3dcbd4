// The demo host's menu of the library's dialogs.
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

#include "aliases/frmFileAlias.h"
#include "antenna/hdWrtAntDBF.h"
#include "demo/AntennaTable.h"
#include "demo/DemoWindow.h"
#include "demo/LibraryPanel.h"
#include "dialogs/frmListSelect.h"
#include "dialogs/frmMsgBoxChk.h"
#include "dialogs/frmParabGain.h"
#include "editor/frmHDAntEditor.h"
#include "foundation/getINI.h"
#include "foundation/suitePaths.h"
#include "platform/RunTimeFailure.h"
#include "qt/QtDesktop.h"
#include "support/TempSuite.h"
#include "tables/installSuite.h"
#include "ui/ScriptedDesktop.h"

namespace vantrelix::demo {
namespace {

constexpr const char* kEntries[] = {"messageAction",  "noteAction",  "listAction",     "printAction",
                                    "antennasAction", "linesAction", "parabolaAction", "editorAction"};

// The demo host on an installation folder of its own that has one antenna library.
class DialogMenuHost : public testing::Test {
 protected:
  DialogMenuHost() {
    installSuite(suite_.path());
    const std::vector<double> angles = {0, 180}, values = {6, 0};
    EXPECT_EQ(HDwrtAntDBF("X0001", "Panel", 6, "dBd", 2, angles, values, 2, angles, values, 450, 470), "");
    setINI("ANTENNAS\\AMS?????.DBF", "AMSX0001.DBF", getAntennasPath() + "\\QVAliasANT.INI", "Measured panels");
  }

  // As after a start of the program.
  void start() {
    window_ = std::make_unique<DemoWindow>();
    window_->show();
    window_->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window_.get()));
  }
  void restart() {
    window_.reset();
    start();
  }
  QMenu& menu() { return *window_->findChild<QMenu*>("dialogMenu"); }
  QAction& entry(const char* name) { return *menu().findChild<QAction*>(name); }
  // Opens a dialog, and gives what came back: "call: detail" of the last event, blank where there was no new one.
  std::string open(const char* name) {
    const auto& list = *window_->findChild<QTreeWidget*>("eventList");
    const int before = list.topLevelItemCount();
    entry(name).trigger();
    const QTreeWidgetItem* last = list.topLevelItem(list.topLevelItemCount() - 1);
    if (list.topLevelItemCount() != before + 1) return "";
    EXPECT_EQ(last->text(1), "host");
    return (last->text(2) + ": " + last->text(3)).toStdString();
  }

  test::TempSuite suite_;
  std::unique_ptr<DemoWindow> window_;
};

// With a scripted user in the dialogs.
class DialogMenuScripted : public DialogMenuHost {
 protected:
  DialogMenuScripted() { start(); }
  ~DialogMenuScripted() override { window_.reset(); }

  template <class Kind, class User>
  void let(const char* form, User user) {
    desktop_.onModal[form] = [user](Form& shown) { user(dynamic_cast<Kind&>(shown)); };
  }

  ScriptedDesktop desktop_;
  DesktopInUse inUse_{desktop_};
};

TEST_F(DialogMenuScripted, StandsInTheMenuBarWithItsEntriesInOrder) {
  ASSERT_EQ(window_->menuBar()->actions().size(), 1);
  EXPECT_EQ(window_->menuBar()->actions()[0]->text(), "&Dialogs");
  QStringList names, captions;
  for (const QAction* action : menu().actions()) {
    names << action->objectName();
    captions << action->text().remove('&');
  }
  EXPECT_EQ(names, QStringList(std::begin(kEntries), std::end(kEntries)));
  EXPECT_EQ(captions, QStringList({"Message with check box...", "Floating note", "Select from a list...",
                                   "Print a text file...", "Antenna library by name...", "Line library by name...",
                                   "Parabolic gain...", "Antenna Editor..."}));
}

TEST_F(DialogMenuScripted, NoTwoEntriesShareAMnemonic) {
  QStringList keys;
  for (const QAction* action : menu().actions()) keys << QKeySequence::mnemonic(action->text()).toString();
  EXPECT_FALSE(keys.contains(""));
  EXPECT_EQ(keys.removeDuplicates(), 0);
}

TEST_F(DialogMenuScripted, TheMessageTellsItsAnswer) {
  for (const auto& [button, told] : {std::pair{0, "6"}, std::pair{1, "7"}, std::pair{2, "2"}}) {
    let<frmMsgBoxChk>("frmMsgBoxChk", [at = static_cast<std::size_t>(button)](frmMsgBoxChk& form) {
      EXPECT_FALSE(form.Label1.caption().empty());
      form.Command1[at].userClick();
    });
    EXPECT_EQ(open("messageAction"), std::string("MsgBoxChk: answered ") + told);
  }
}

TEST_F(DialogMenuScripted, TheNoteStaysUntilItIsChosenAgain) {
  EXPECT_EQ(open("noteAction"), "frmMsgFloat: shown");
  EXPECT_EQ(desktop_.formsShown(), std::vector<std::string>{"frmMsgFloat (modeless)"});
  EXPECT_TRUE(entry("noteAction").isChecked());
  EXPECT_EQ(open("noteAction"), "frmMsgFloat: unloaded: Computing the coverage");
  EXPECT_FALSE(entry("noteAction").isChecked());
  EXPECT_FALSE(menu().findChild<QTimer*>("noteWork")->isActive());
  EXPECT_EQ(open("noteAction"), "frmMsgFloat: shown");
}

TEST_F(DialogMenuScripted, TheNoteGoesWhenTheWorkIsDone) {
  auto* work = menu().findChild<QTimer*>("noteWork");
  EXPECT_GE(work->interval(), 3000);
  work->setInterval(1);
  EXPECT_EQ(open("noteAction"), "frmMsgFloat: shown");
  EXPECT_TRUE(QTest::qWaitFor([this] { return !entry("noteAction").isChecked(); }));
  EXPECT_EQ(open("noteAction"), "frmMsgFloat: shown");
}

TEST_F(DialogMenuScripted, TheListTellsTheLineThatWasChosen) {
  std::string line;
  let<frmListSelect>("frmListSelect", [&line](frmListSelect& form) {
    EXPECT_GT(form.List1.entries().size(), 2U);
    form.List1.userSelect(1);
    EXPECT_EQ(form.Label1.caption(), "Up to 2500 MHz");
    line = form.List1.text();
    form.cmdContinue.userClick();
  });
  const std::string told = open("listAction");
  EXPECT_EQ(told, "frmListSelect: " + line);
  EXPECT_NE(line, "");
  desktop_.onModal.clear();
  EXPECT_EQ(open("listAction"), "frmListSelect: cancelled");
}

TEST_F(DialogMenuScripted, AnAntennaLibraryComesBackWithItsDescriptionAndIsPreselectedTheNextTime) {
  std::string preselected;
  let<frmFileAlias>("frmFileAlias", [&preselected](frmFileAlias& form) {
    const int row = form.TDBGrid1.currentRow();
    preselected = form.TDBGrid1.selBookmarks().count() > 0 ? form.TDBGrid1.cellText(row, 1) : "";
    form.FindAliasMatch("amsx0001.dbf");
    form.Command1[frmFileAlias::continuing].userClick();
  });
  EXPECT_EQ(open("antennasAction"), "modGetOpenFileAliasNoDBClass: AMSX0001.DBF, Measured panels");
  EXPECT_EQ(preselected, "");
  EXPECT_EQ(open("antennasAction"), "modGetOpenFileAliasNoDBClass: AMSX0001.DBF, Measured panels");
  EXPECT_EQ(preselected, "AMSX0001.DBF");
  desktop_.onModal.clear();
  EXPECT_EQ(open("antennasAction"), "modGetOpenFileAliasNoDBClass: cancelled");
}

TEST_F(DialogMenuScripted, TheEditorTellsTheAntennaItEndedWithAndThePanelListsWhatWasMade) {
  let<frmFileAlias>("frmFileAlias", [](frmFileAlias& form) {
    form.TDBGrid1.userMoveTo(0, 0);
    form.Command1[frmFileAlias::continuing].userClick();
  });
  setINI("HDAntenna", "SkipValid", getDefaultsINI(), "-1");
  let<frmHDAntEditor>("frmHDAntEditor", [](frmHDAntEditor& form) {
    EXPECT_FALSE(form.lookingUp());
    EXPECT_TRUE(form.txtFreq.visible());
    form.TDBGridAMS.userMoveTo(0, form.TDBGridAMS.columnOf("ANTENNA"));
    form.TDBGridAMS.userEdit(0, form.TDBGridAMS.columnOf("ANTENNA"), "Renamed");
    form.Command1[frmHDAntEditor::continuing].userClick();
  });
  EXPECT_EQ(open("editorAction"), "AntLibLook: AMSX0001.DBF, X00010000001, RENAMED");
  const auto* list = window_->findChild<LibraryPanel*>()->findChild<QTableView*>();
  EXPECT_EQ(list->model()->index(0, AntennaTable::description).data().toString(), "Renamed");
  desktop_.onModal.clear();
  EXPECT_EQ(open("editorAction"), "AntLibLook: cancelled");
}

TEST_F(DialogMenuScripted, LineLibrariesHaveTheirOwnList) {
  suite_.folder().write("LINES/LMSX0001.DBF", "");
  int antennas = -1, lines = -1;
  std::string caption;
  let<frmFileAlias>("frmFileAlias", [&](const frmFileAlias& form) { antennas = form.TDBGrid1.dataRowCount(); });
  open("antennasAction");
  let<frmFileAlias>("frmFileAlias", [&](const frmFileAlias& form) {
    lines = form.TDBGrid1.dataRowCount();
    caption = form.caption();
  });
  EXPECT_EQ(open("linesAction"), "modGetOpenFileAliasNoDBClass: cancelled");
  EXPECT_EQ(antennas, static_cast<int>(libraryFiles(LibraryFamily::antenna).size()));
  EXPECT_EQ(lines, static_cast<int>(libraryFiles(LibraryFamily::line).size()));
  EXPECT_EQ(caption.rfind("Select Transmission Line Library", 0), 0U) << caption;
}

TEST_F(DialogMenuScripted, TheParabolicGainTellsTheDishAndItsGain) {
  let<frmParabGain>("frmParabGain", [](frmParabGain& form) {
    EXPECT_EQ(form.Text1[0].text(), "6000.00");
    form.Text1[1].userType("10");
    form.Combo1.userSelect(1);
    form.Command1[0].userClick();
  });
  EXPECT_EQ(open("parabolaAction"), "getParabolaGain: 43.04 dBi, 10.00 ft parabola");
  desktop_.onModal.clear();
  EXPECT_EQ(open("parabolaAction"), "getParabolaGain: no gain");
}

TEST_F(DialogMenuScripted, AFailureOfADialogIsToldAndTheMenuGoesOn) {
  let<frmParabGain>("frmParabGain",
                    [](const frmParabGain&) { throw RunTimeFailure(failure::overflow, "Overflow in a test"); });
  EXPECT_EQ(open("parabolaAction"), "");
  ASSERT_EQ(desktop_.shown().size(), 1U);
  EXPECT_NE(desktop_.shown()[0].message.text.find("Overflow in a test"), std::string::npos);
  desktop_.onModal.clear();
  EXPECT_EQ(open("parabolaAction"), "getParabolaGain: no gain");
}

// With the real windows.
class DialogMenuShown : public DialogMenuHost {
 protected:
  DialogMenuShown() { start(); }
  ~DialogMenuShown() override { window_.reset(); }

  // Opens a dialog on which `user` acts; what is left open is closed.
  template <class User>
  std::string act(const char* name, User user) {
    bool acted = false;
    QTimer::singleShot(0, window_.get(), [&] {
      acted = true;
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (!dialog) return;
      EXPECT_TRUE(QTest::qWaitForWindowActive(dialog));
      user(*dialog);
      if (dialog->isVisible()) dialog->close();
    });
    const std::string told = open(name);
    EXPECT_TRUE(QTest::qWaitFor([&acted] { return acted; }));
    return told;
  }

  qt::QtDesktop desktop_;
  DesktopInUse inUse_{desktop_};
};

TEST_F(DialogMenuShown, ASilencedMessageStaysSilentAfterARestart) {
  int shown = 0;
  const auto user = [&shown](const QDialog& dialog) {
    ++shown;
    dialog.findChild<QCheckBox*>("Check1")->click();
    dialog.findChild<QPushButton*>("Command1(1)")->click();
  };
  EXPECT_EQ(act("messageAction", user), "MsgBoxChk: answered 7");
  restart();
  EXPECT_EQ(act("messageAction", user), "MsgBoxChk: answered 6");
  EXPECT_EQ(shown, 1);
}

TEST_F(DialogMenuShown, WindowsComeBackWhereTheyWereAfterARestart) {
  for (const char* name : {"listAction", "antennasAction", "parabolaAction"}) {
    QPoint left, back;
    act(name, [&left](QDialog& dialog) {
      dialog.move(dialog.pos() + QPoint(-40, 35));
      left = dialog.pos();
    });
    restart();
    act(name, [&back](const QDialog& dialog) { back = dialog.pos(); });
    EXPECT_EQ(back, left) << name;
    EXPECT_NE(back, QPoint()) << name;
  }
}

TEST_F(DialogMenuShown, TheListComesBackAsLargeAsItWasAfterARestart) {
  QSize left, back;
  act("listAction", [&left](QDialog& dialog) {
    dialog.resize(dialog.size() + QSize(60, 45));
    left = dialog.size();
  });
  restart();
  act("listAction", [&back](const QDialog& dialog) { back = dialog.size(); });
  EXPECT_EQ(back, left);
  EXPECT_TRUE(back.isValid());
}

TEST_F(DialogMenuShown, ColumnWidthsComeBackAfterARestart) {
  int width = 0, back = 0;
  act("antennasAction", [&width](const QDialog& dialog) {
    auto* grid = dialog.findChild<QTableView*>("TDBGrid1");
    ASSERT_NE(grid, nullptr);
    grid->horizontalHeader()->resizeSection(0, grid->columnWidth(0) - 60);
    width = grid->columnWidth(0);
  });
  restart();
  act("antennasAction", [&back](const QDialog& dialog) {
    auto* grid = dialog.findChild<QTableView*>("TDBGrid1");
    ASSERT_NE(grid, nullptr);
    back = grid->columnWidth(0);
  });
  EXPECT_GT(width, 0);
  EXPECT_EQ(back, width);
}

TEST_F(DialogMenuShown, TheNoteGrowsWhileTheHostIsInUseAndLeavesItTheKeyboard) {
  EXPECT_EQ(open("noteAction"), "frmMsgFloat: shown");
  const auto note = [] {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (widget->objectName() == "frmMsgFloat" && widget->isVisible()) return widget;
    }
    return static_cast<QWidget*>(nullptr);
  };
  ASSERT_NE(note(), nullptr);
  EXPECT_TRUE(window_->isActiveWindow());
  const auto text = [&] { return note()->findChild<QLabel*>("Label1")->text(); };
  note()->findChild<QTimer*>("Timer1")->setInterval(1);
  EXPECT_TRUE(QTest::qWaitFor([&] { return text().endsWith(" ."); }));
  EXPECT_NE(open("noteAction").find("unloaded: Computing the coverage ."), std::string::npos);
  EXPECT_TRUE(QTest::qWaitFor([&] { return note() == nullptr; }));
}

TEST_F(DialogMenuShown, TheHostCanEndWhileTheNoteIsUp) {
  EXPECT_EQ(open("noteAction"), "frmMsgFloat: shown");
  restart();
  EXPECT_FALSE(entry("noteAction").isChecked());
}

TEST_F(DialogMenuShown, ATextFileIsHandedToThePrintProgram) {
  const std::string program = suite_.folder().machine("print");
  suite_.folder().write("print", "#!/bin/sh\nprintf %s \"$1\" > \"$0.part\" && mv \"$0.part\" \"$0.done\"\n");
  ASSERT_EQ(std::system(("chmod +x '" + program + "'").c_str()), 0);
  setINI("CONFIG", "PrintProgram", getSuiteINI(), program);
  suite_.folder().write("a text.txt", "text");
  const QString file = QString::fromStdString(suite_.folder().machine("a text.txt"));
  const auto choose = [&file](const QDialog& dialog) {
    EXPECT_NE(qobject_cast<const QFileDialog*>(&dialog), nullptr);
    auto* name = dialog.findChild<QLineEdit*>("fileNameEdit");
    name->setText(file);
    QTest::keyClick(name, Qt::Key_Return);
  };
  EXPECT_EQ(act("printAction", choose), "PrtOutUtils: " + file.toStdString());
  EXPECT_TRUE(QTest::qWaitFor([this] { return suite_.folder().exists("print.done"); }));
  EXPECT_EQ(suite_.folder().read("print.done"), file.toStdString());
  EXPECT_EQ(act("printAction", [](const QDialog&) {}), "PrtOutUtils: cancelled");
}

}  // namespace
}  // namespace vantrelix::demo
