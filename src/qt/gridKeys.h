// What the keys of a grid mean.
#pragma once

#include <optional>

#include <QKeyEvent>

#include "ui/GridTypes.h"

namespace vantrelix::qt {

// How a key moves the current cell.
std::optional<GridMove> moveOf(const QKeyEvent& event);
// Keys that end the edit of a cell and go on from it.
std::optional<GridMove> moveEndingEdit(const QKeyEvent& event);

}  // namespace vantrelix::qt
