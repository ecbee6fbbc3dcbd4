#include "qt/forms/parabGain.h"

#include <QVBoxLayout>

#include "qt/forms/labelledBox.h"

namespace vantrelix::qt {

namespace {

void fillFrame(FormWindow& window, frmParabGain& form) {
  auto* grid = new QGridLayout(&window.view(form.Frame1));
  for (std::size_t i = 0; i < form.Text1.size(); ++i) {
    addLabelledBox(window, *grid, static_cast<int>(i), form.Label1[i], form.Text1[i]);
  }
  QWidget& unit = window.view(form.Combo1);
  unit.setAccessibleName(toQt(form.Combo1.toolTip()));
  grid->addWidget(&unit, frmParabGain::diameter, 2);
  grid->setColumnStretch(1, 1);
}

}  // namespace

void layOutParabGain(FormWindow& window, frmParabGain& form) {
  auto* column = new QVBoxLayout(&window);
  column->addWidget(&window.view(form.Frame1));
  column->addLayout(buttonRow(window, form.Command1));
  column->setSizeConstraint(QLayout::SetFixedSize);
  fillFrame(window, form);
}

}  // namespace vantrelix::qt
