// The layout of the parabolic gain calculator.
#pragma once

#include "dialogs/frmParabGain.h"

namespace vantrelix::qt {

class FormWindow;

void layOutParabGain(FormWindow& window, frmParabGain& form);

}  // namespace vantrelix::qt
