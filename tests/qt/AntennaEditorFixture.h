// The antenna editor in its window, on a library of three antennas, driven as its user drives it.
#pragma once

#include <deque>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include "editor/EditorFixture.h"
#include "qt/QtDesktop.h"
#include "qt/qtText.h"

namespace vantrelix::qt {

// Real windows and menus; messages are answered in order, else by their default button, and kept.
class AnsweringDesktop : public QtDesktop {
 public:
  std::deque<MsgAnswer> answers;
  std::vector<std::string> shown;  // "title: text"

  MsgAnswer messageBox(const Message& message) override {
    shown.push_back(message.title + ": " + message.text);
    if (answers.empty()) return defaultAnswer(message);
    const MsgAnswer answer = answers.front();
    answers.pop_front();
    return answer;
  }
};

class AntennaEditorTest : public test::EditorTest {
 protected:
  // By description: Corner 9 dBd, Dish 18 dBd, Panel 12.5 dBd; the Dish does not cover 850 MHz.
  AntennaEditorTest() {
    addAntenna("Panel", 12.5);
    addAntenna("Corner", 9);
    addAntenna("Dish", 18, 5900, 6400);
    setINI("Antenna Editor", "VertPatSort", getDefaultsINI(), "ASC");
  }

  static void addAntenna(const std::string& description, double gain, double low = 824, double high = 896) {
    add(description, gain, "dBd", {{0, 90, 180, 270}, {gain, 4, -20, 4}}, {{-90, 0, 90}, {-12, gain, -15}}, low, high);
  }

  // Takes rows out of a table as another program does: all, or those of the description.
  static void take(const std::string& table, const std::string& description = "") {
    const RecordsetPtr rows = DBEngine::OpenDatabase(getAntennasPath())->OpenRecordset("select * from " + table);
    for (; !rows->Eof(); rows->MoveNext()) {
      if (description.empty() || trimRight(rows->value("ANTENNA").asText()) == description) rows->Delete();
    }
  }

  // Opens the editor; the user acts once its window has come up. A form that stays open is taken away.
  template <class User>
  void run(const std::string& mode, double freq, User user) {
    frmHDAntEditor& shown = open(mode, freq);
    ASSERT_NE(shown.SessionResult, sessionResult::cancelled);
    bool acted = false;
    QTimer::singleShot(0, qApp, [&] {
      auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(window, nullptr);
      ASSERT_TRUE(QTest::qWaitForWindowActive(window));
      window_ = window;
      acted = true;
      user();
      if (shown.visible()) shown.hide();
    });
    desktop_.showModal(shown);
    EXPECT_TRUE(acted);
  }
  template <class User>
  void edit(User user) {
    run(" ", 0, user);
  }

  QDialog& window() { return *window_; }
  template <class Kind = QWidget>
  Kind& find(const std::string& name) {
    return *window_->findChild<Kind*>(toQt(name));
  }
  QTableView& list() { return find<QTableView>("TDBGridAMS"); }
  static QString focused() {
    const QWidget* widget = QApplication::focusWidget();
    return widget ? widget->objectName() : QString();
  }
  static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }
  static void type(const char* text) {
    for (const char* at = text; *at; ++at) QTest::keyClick(QApplication::focusWidget(), *at);
  }
  // By the arrow keys, from no row to a cell of the list.
  void goTo(int row, const std::string& field) {
    list().setFocus();
    for (int i = 0; i <= row; ++i) press(Qt::Key_Down);
    press(Qt::Key_Home);
    while (form().TDBGridAMS.currentColumn() < form().TDBGridAMS.columnOf(field)) press(Qt::Key_Right);
  }
  QString cell(int row, const std::string& field) {
    return list().model()->index(row, form().TDBGridAMS.columnOf(field)).data().toString();
  }
  std::vector<std::string> descriptions() {
    std::vector<std::string> found;
    for (int row = 0; row < form().TDBGridAMS.dataRowCount(); ++row) found.push_back(fromQt(cell(row, "ANTENNA")));
    return found;
  }

  AnsweringDesktop desktop_;
  DesktopInUse inUse_{desktop_};
  QDialog* window_ = nullptr;
};

}  // namespace vantrelix::qt
