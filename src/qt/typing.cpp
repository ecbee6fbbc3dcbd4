#include "qt/typing.h"

namespace vantrelix::qt {

bool isTyping(const QKeyEvent& event) {
  const auto modifiers = event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier | Qt::GroupSwitchModifier);
  const bool altGr = modifiers == (Qt::ControlModifier | Qt::AltModifier);
  return !event.text().isEmpty() && event.text().front().isPrint() && (modifiers == Qt::NoModifier || altGr);
}

}  // namespace vantrelix::qt
