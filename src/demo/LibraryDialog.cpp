#include "demo/LibraryDialog.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QVBoxLayout>

#include "demo/LibraryPanel.h"
#include "foundation/extract.h"
#include "qt/qtText.h"

namespace vantrelix::demo {

LibraryDialog::LibraryDialog(const scLookAnt::LibraryChoice& chosen, QWidget* parent)
    : QDialog(parent),
      panel_(new LibraryPanel(this)),
      buttons_(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this)) {
  setObjectName("libraryDialog");
  setWindowTitle("Antenna Library Lookup");
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(panel_, 1);
  layout->addWidget(buttons_);
  for (QAbstractButton* button : buttons_->buttons()) button->setIcon({});
  panel_->choose(qt::toQt(chosen.file), qt::toQt(chosen.id));
  connect(panel_, &LibraryPanel::antennaChosen, this, &LibraryDialog::showState);
  connect(panel_, &LibraryPanel::listed, this, &LibraryDialog::showState);
  connect(panel_, &LibraryPanel::antennaActivated, this, &QDialog::accept);
  connect(buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
  showState();
}

QSize LibraryDialog::sizeHint() const {
  return QSize(90 * fontMetrics().averageCharWidth(), 28 * fontMetrics().lineSpacing());
}

void LibraryDialog::showState() { buttons_->button(QDialogButtonBox::Ok)->setEnabled(panel_->antenna().has_value()); }

void LibraryDialog::take(scLookAnt::LibraryChoice& choice) const {
  const auto antenna = panel_->antenna();
  if (!antenna) return;
  choice.file = ExtractBaseName(panel_->library().file);
  choice.id = antenna->id;
  choice.description = antenna->description;
}

}  // namespace vantrelix::demo
