#include "qt/forms/parabGain.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>

#include "qt/FormWindow.h"

namespace vantrelix::qt {

namespace {

constexpr int kBoxInLetters = 14;

void fillFrame(FormWindow& window, frmParabGain& form) {
  auto* grid = new QGridLayout(&window.view(form.Frame1));
  const int narrowest = kBoxInLetters * window.fontMetrics().averageCharWidth();
  for (std::size_t i = 0; i < form.Text1.size(); ++i) {
    const int row = static_cast<int>(i);
    QWidget& box = window.view(form.Text1[i]);
    auto& label = dynamic_cast<QLabel&>(window.view(form.Label1[i]));
    label.setBuddy(&box);
    box.setAccessibleName(label.text());
    box.setMinimumWidth(narrowest);
    grid->addWidget(&label, row, 0);
    grid->addWidget(&box, row, 1);
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
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  for (CommandButton& button : form.Command1) buttons->addWidget(&window.view(button));
  column->addLayout(buttons);
  column->setSizeConstraint(QLayout::SetFixedSize);
  fillFrame(window, form);
}

}  // namespace vantrelix::qt
