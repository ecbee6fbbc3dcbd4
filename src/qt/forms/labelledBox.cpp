#include "qt/forms/labelledBox.h"

#include <QLabel>

namespace vantrelix::qt {

namespace {

constexpr int kBoxInLetters = 14;

}  // namespace

void addLabelledBox(FormWindow& window, QGridLayout& grid, int row, Label& label, TextBox& box) {
  QWidget& field = window.view(box);
  auto& name = dynamic_cast<QLabel&>(window.view(label));
  name.setBuddy(&field);
  field.setAccessibleName(name.text());
  field.setMinimumWidth(kBoxInLetters * window.fontMetrics().averageCharWidth());
  grid.addWidget(&name, row, 0);
  grid.addWidget(&field, row, 1);
}

}  // namespace vantrelix::qt
