// Filling a cut with evenly spaced angles.
#pragma once

namespace vantrelix {

class frmHDAntEditor;

// Ask for start, stop and step and add the angles that are not there yet, at the antenna's gain.
void AddSeqAHD(frmHDAntEditor& form);
void AddSeqAVD(frmHDAntEditor& form);

}  // namespace vantrelix
