// The layouts of the message dialogs.
#pragma once

#include "dialogs/frmListSelect.h"
#include "dialogs/frmMsgBoxChk.h"
#include "dialogs/frmMsgFloat.h"

namespace vantrelix::qt {

class FormWindow;

void layOutMsgBoxChk(FormWindow& window, frmMsgBoxChk& form);
void layOutMsgFloat(FormWindow& window, frmMsgFloat& form);
void layOutListSelect(FormWindow& window, frmListSelect& form);

}  // namespace vantrelix::qt
