// The one door to the dialog in which a library is chosen by its description.
#pragma once

#include <string>

#include "foundation/Value.h"

namespace vantrelix {

// What is handed in and given back.
struct OpenFileAlias {
  std::string sPrefix = {};           // "AMS" for antennas, "LMS" for transmission lines
  std::string sPath = {};             // the folder, the library's form; blank for the family's own
  std::string sFile = {};             // in: the name to preselect; out: the name chosen, "AMSX0001.DBF"
  std::string sExt = "DBF";           // of a new file
  bool bOpt1 = false, bOpt2 = false;  // these four and the next go to the form unchanged
  bool bOpt3 = false, bOpt4 = false;
  bool bCancel = false;  // out
  Value vOpt = {};
  std::string sTitle = {};  // blank means "Select Antenna Library"
  Value vReserved = {};
  bool bAllowNew = false;   // whether a new file can be added; whoever opens it creates it
  std::string vAlias = {};  // out: the description of the file chosen
};

// Shows the dialog modally. A name that is not in the list preselects nothing. Cancelled, or where it fails at run time
// (told by ErrHand), sets bCancel and leaves sFile and vAlias as they are.
void modGetOpenFileAliasNoDBClass(OpenFileAlias& arguments);

}  // namespace vantrelix
