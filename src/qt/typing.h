// Which keys type.
#pragma once

#include <QKeyEvent>

namespace vantrelix::qt {

// Whether the key types its text: as line edits decide it.
bool isTyping(const QKeyEvent& event);

}  // namespace vantrelix::qt
