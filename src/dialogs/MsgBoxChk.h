// A message with a check box that silences it.
//
// Which messages are silenced stands in MsgBoxChk.INI in the suite's folder, section "DO NOT SHOW": the trimmed
// identifier of the message as key, a number other than 0 as value; anything that is no number does not silence.
#pragma once

#include <string>
#include <vector>

#include "dialogs/frmMsgBoxChk.h"

namespace vantrelix {

struct MsgBoxChkButton {
  std::string caption;  // blank: the button is not shown; of the first one: its designed caption stays
  std::string toolTip;
};

// Shows the message and gives the answer of the button pressed, as frmMsgBoxChk tells; a silenced message is not shown
// and gives the default button's answer (counted from 0). Buttons that are not listed are not shown. The window comes
// up centred on the owner, on the screen where there is none.
//
// Where the tick cannot be stored, its user is told so, and the message stays silent until the program ends. A file
// that is no text is not written to. Without a suite folder, or an identifier that an INI
// file can hold as a key, there is no check box.
void MsgBoxChk(const std::string& key, const std::string& text, const std::string& title, MsgAnswer& result,
               const std::vector<MsgBoxChkButton>& buttons = {{"OK", ""}}, int defaultButton = 0,
               const Form* owner = nullptr);

}  // namespace vantrelix
