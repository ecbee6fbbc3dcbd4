// The one way into the antenna editor: for a look-up and for editing.
#pragma once

#include <string>

namespace vantrelix {

// Lets the user choose a library, opens the editor on it and, where the user continued with an antenna, gives true with
// the library's file name, the antenna's ID and its description. `Freq` is the frequency of interest in MHz. `Mode` is
// "LOOKUP" for a look-up, anything else for the editor, in which a new library may be made. `FileName` and `ID` are
// preselected. Failures are told by ErrHand.
bool AntLibLook(double Freq, std::string& FileName, std::string& ID, std::string& Desc, const std::string& Mode);

}  // namespace vantrelix
