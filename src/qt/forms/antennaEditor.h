// The layout of the antenna editor: the list across the top, below it each cut with its thumbnail. Splitters divide the
// room, and every button stands with what it acts on.
#pragma once

#include "editor/frmHDAntEditor.h"

namespace vantrelix::qt {

class FormWindow;

void layOutAntennaEditor(FormWindow& window, frmHDAntEditor& form);

}  // namespace vantrelix::qt
