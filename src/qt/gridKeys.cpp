#include "qt/gridKeys.h"

namespace vantrelix::qt {

namespace {

struct Meaning {
  int key;
  bool ctrl;
  GridMove move;
};

constexpr Meaning kMoves[] = {
    {Qt::Key_Up, false, GridMove::up},         {Qt::Key_Down, false, GridMove::down},
    {Qt::Key_Left, false, GridMove::left},     {Qt::Key_Right, false, GridMove::right},
    {Qt::Key_PageUp, false, GridMove::pageUp}, {Qt::Key_PageDown, false, GridMove::pageDown},
    {Qt::Key_Home, false, GridMove::rowStart}, {Qt::Key_End, false, GridMove::rowEnd},
    {Qt::Key_Home, true, GridMove::top},       {Qt::Key_End, true, GridMove::bottom},
};

}  // namespace

std::optional<GridMove> moveOf(const QKeyEvent& event) {
  const auto modifiers = event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
  if (modifiers != Qt::NoModifier && modifiers != Qt::ControlModifier) return std::nullopt;
  for (const Meaning& meaning : kMoves) {
    if (meaning.key == event.key() && meaning.ctrl == (modifiers == Qt::ControlModifier)) return meaning.move;
  }
  return std::nullopt;
}

std::optional<GridMove> moveEndingEdit(const QKeyEvent& event) {
  const bool back = event.modifiers().testFlag(Qt::ShiftModifier);
  switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return back ? GridMove::up : GridMove::down;
    case Qt::Key_Tab:
      return GridMove::next;
    case Qt::Key_Backtab:
      return GridMove::previous;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      return moveOf(event);
    default:
      return std::nullopt;
  }
}

}  // namespace vantrelix::qt
