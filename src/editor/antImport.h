// Importing antenna files into the open library.
#pragma once

namespace vantrelix {

struct ImportFormat;
class frmHDAntEditor;

// Pops the import menu up at its button.
void AntImport(frmHDAntEditor& form);
// Runs a filter of the menu, with previews, progress and cancel, and shows the library anew.
void importInto(frmHDAntEditor& form, const ImportFormat& format);

}  // namespace vantrelix
