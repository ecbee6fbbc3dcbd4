// Making and removing whole antennas.
#pragma once

namespace vantrelix {

class frmHDAntEditor;

// Adds a copy of the selected antenna, "Copy of " in front of its description, and goes to it.
void AntCopy(frmHDAntEditor& form);
// Asks before the current antenna is deleted and deletes its pattern rows first; `refused` calls the delete off.
void beforeAntDelete(frmHDAntEditor& form, bool& refused);

}  // namespace vantrelix
