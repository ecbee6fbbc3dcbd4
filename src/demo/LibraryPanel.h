// A choice of antenna library and antenna, with a filter over the antennas.
#pragma once

#include <optional>
#include <vector>

#include <QWidget>

#include "aliases/aliasStore.h"
#include "antenna/antennaList.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QModelIndex;
class QSortFilterProxyModel;
class QTableView;
class QTimer;

namespace vantrelix::demo {

class AntennaTable;

class LibraryPanel : public QWidget {
  Q_OBJECT

 public:
  explicit LibraryPanel(QWidget* parent = nullptr);

  // Chooses without saying so. The wanted library by file name, with or without extension, case aside; blank chooses
  // the first. False where there is no such library or antenna.
  bool choose(const QString& library, const QString& antenna);

  // Lists what there is by now, on the same library and antenna where they still exist, without saying so.
  void reload();

  // Chooses no antenna, without saying so.
  void forget();

  // What is chosen; a blank file where there is no library.
  LibraryEntry library() const;
  std::optional<AntennaListEntry> antenna() const;

 Q_SIGNALS:
  // The user stands on an antenna.
  void antennaChosen();
  // The user wants just this antenna: a double click, or Enter.
  void antennaActivated();
  // Other antennas are listed; the one that was chosen may be gone.
  void listed();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void build();
  void loadLibraries();
  void loadAntennas();
  void filter(const QString& text);
  QString countText() const;
  void showCount();
  void stand(int proxyRow);
  void fitDescription();
  void settle();

  std::vector<LibraryEntry> libraries_;
  QComboBox* library_;
  QLineEdit* find_;
  QTableView* list_;
  QTimer* resized_;
  QLabel* note_;
  AntennaTable* antennas_;
  QSortFilterProxyModel* shown_;
  QString failure_;
  bool quiet_ = false;  // the program moves the selection, not the user
};

}  // namespace vantrelix::demo
