// The layout of the window that asks for a run of values.
#pragma once

#include "editor/frmGetSequentialValues.h"

namespace vantrelix::qt {

class FormWindow;

void layOutSequentialValues(FormWindow& window, frmGetSequentialValues& form);

}  // namespace vantrelix::qt
