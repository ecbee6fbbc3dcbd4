// The selected antenna's cuts as print tabulations.
#pragma once

#include <string>

namespace vantrelix {

class frmHDAntEditor;

// Writes the tabulation of a cut (0 azimuth, 1 elevation) to the print file and hands it to the print path. Failures
// are told by ErrHand.
void AntPrint(frmHDAntEditor& form, int which);
// The tabulation: description, gain, headings, then a line for each row in the order of the grid. Lines end with CR LF.
std::string tabulation(frmHDAntEditor& form, int which);
// Plots are not made here; the buttons that would ask for one are never shown.
void AntPlot(frmHDAntEditor& form, int which);

}  // namespace vantrelix
