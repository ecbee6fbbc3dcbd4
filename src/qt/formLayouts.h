// How the window of each kind of form is laid out.
#pragma once

#include "ui/Form.h"

namespace vantrelix::qt {

class FormWindow;

// Puts the views of the form's widgets into the window. A kind without a layout of its own is a column of its widgets
// with its buttons in a row below.
void layOut(FormWindow& window, Form& form);

}  // namespace vantrelix::qt
