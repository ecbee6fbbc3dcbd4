// The layout of the alias picker: the list takes all the room there is.
#pragma once

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QObject>

#include "aliases/frmFileAlias.h"

namespace vantrelix::qt {

class FormWindow;

void layOutFileAlias(FormWindow& window, frmFileAlias& form);

// A move to another row hands the keyboard to "Continue". The keys of a list work there all the same: typing finds,
// arrows and pages move, Home and End go to the first and last row, Delete removes.
class ListKeys : public QObject {
  Q_OBJECT

 public:
  ListKeys(frmFileAlias& form, QWidget& list, QWidget& button);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool takeEverywhere(const QKeyEvent& key);
  bool belongsToList(const QKeyEvent& key);

  frmFileAlias& form_;
  QWidget& list_;
  QElapsedTimer typed_;  // since the last key of a search that began on the button
};

}  // namespace vantrelix::qt
