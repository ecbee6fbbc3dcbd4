#include "qt/forms/sequentialValues.h"

#include <QVBoxLayout>

#include "qt/forms/labelledBox.h"

namespace vantrelix::qt {

void layOutSequentialValues(FormWindow& window, frmGetSequentialValues& form) {
  auto* column = new QVBoxLayout(&window);
  auto* grid = new QGridLayout;
  for (std::size_t i = 0; i < form.Text1.size(); ++i) {
    addLabelledBox(window, *grid, static_cast<int>(i), form.Label1[i], form.Text1[i]);
  }
  grid->setColumnStretch(1, 1);
  column->addLayout(grid);
  column->addLayout(buttonRow(window, form.Command1));
  column->setSizeConstraint(QLayout::SetFixedSize);
}

}  // namespace vantrelix::qt
