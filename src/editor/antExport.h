// The selected antenna as an ASCII antenna file; antennaFile.h tells what stands in it.
#pragma once

#include <string>

namespace vantrelix {

class frmHDAntEditor;

// Asks where to, keeps folder and extension for the next time, and writes the file.
void AntExport(frmHDAntEditor& form);
// Writes the selected antenna to a file (the library's path). A failure is told by ErrHand; a file that was there is
// then as it was. False where it failed.
bool exportAntenna(frmHDAntEditor& form, const std::string& path);

}  // namespace vantrelix
