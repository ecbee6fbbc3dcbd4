// A menu of the library's dialogs, each of which tells the list of events what came back.
#pragma once

#include <QMenu>
#include <QTimer>

#include "dialogs/frmMsgFloat.h"

class QMainWindow;

namespace vantrelix::demo {

class DialogMenu : public QMenu {
  Q_OBJECT

 public:
  // Puts itself into the window's menu bar; reports to the EventList in the window.
  explicit DialogMenu(QMainWindow& window);

 private:
  using Act = void (DialogMenu::*)();
  struct Entry;

  void addEntry(const Entry& entry);
  void showMessage();
  void turnNote();
  void endNote();
  void selectLine();
  void printFile();
  void chooseAntennas();
  void chooseLines();
  void chooseLibrary(const char* prefix, const char* title, QString& file);
  void computeGain();
  void editAntennas();
  void report(const QString& call, const QString& result);

  QMainWindow& window_;
  frmMsgFloat note_;
  QTimer work_;  // of which the note tells
  QAction* noteAction_ = nullptr;
  // The libraries chosen last, preselected the next time.
  QString antennas_, lines_;
  std::string edited_, antenna_;
};

}  // namespace vantrelix::demo
