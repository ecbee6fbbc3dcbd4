// The layout of the window of a long work.
#pragma once

#include "dialogs/frmProgress.h"

namespace vantrelix::qt {

class FormWindow;

void layOutProgress(FormWindow& window, frmProgress& form);

}  // namespace vantrelix::qt
