// The chooser that the "..." button of the control runs in this host.
#pragma once

#include <QDialog>

#include "controls/scLookAnt.h"

class QDialogButtonBox;

namespace vantrelix::demo {

class LibraryPanel;

class LibraryDialog : public QDialog {
  Q_OBJECT

 public:
  // Preselects what is chosen already.
  LibraryDialog(const scLookAnt::LibraryChoice& chosen, QWidget* parent);

  // Puts what the user chose; leaves the frequency.
  void take(scLookAnt::LibraryChoice& choice) const;

  QSize sizeHint() const override;

 private:
  void showState();

  LibraryPanel* panel_;
  QDialogButtonBox* buttons_;
};

}  // namespace vantrelix::demo
