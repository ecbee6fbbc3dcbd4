// What the small input windows are made of.
#pragma once

#include <array>

#include <QGridLayout>
#include <QHBoxLayout>

#include "qt/FormWindow.h"
#include "ui/widgets.h"

namespace vantrelix::qt {

// A row of the grid: a label, and the box that it names.
void addLabelledBox(FormWindow& window, QGridLayout& grid, int row, Label& label, TextBox& box);

// The buttons in a row, at its right end.
template <std::size_t Count>
QHBoxLayout* buttonRow(FormWindow& window, std::array<CommandButton, Count>& buttons) {
  auto* row = new QHBoxLayout;
  row->addStretch(1);
  for (CommandButton& button : buttons) row->addWidget(&window.view(button));
  return row;
}

}  // namespace vantrelix::qt
