// The library look-up of the antenna controls, and what else their buttons share.
#pragma once

#include <functional>
#include <string>

namespace vantrelix {

class LookupControl;

// What the look-up of a control opens: the editor's look-up, or the editor itself.
enum eEditLookup { eLookup = 0, eEdit = 1 };

// How a control looks an antenna up.
struct AntennaLook {
  double dFreq = 0;  // the host's working frequency, MHz
  // "LOOKUP", or anything else for the editor; blank, and so the editor, until the host has put its mode.
  std::string sLookMode;

  void mode(eEditLookup mode);
  // Lets the user choose, what the control names preselected, and puts file, ID and description into the control. False
  // where nothing was chosen, or the control, this with it, is no longer there. Failures are told.
  bool choose(LookupControl& control, const std::function<bool()>& alive) const;
};

// As AntLibLook in the editor's mode; what is chosen goes to the caller, the library without its extension, and to no
// control.
bool lookIntoLibraries(double& dFreq, std::string& sLibFile, std::string& sAntID, std::string& sAntDesc);

// Asks whether the antenna is to be taken off the facility; only OK confirms.
bool confirmsRemoval();

// Takes over the regional settings for a control that comes up.
void guardRegionalSettings();

}  // namespace vantrelix
