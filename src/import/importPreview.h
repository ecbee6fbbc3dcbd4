// The previews of an import run in their window.
#pragma once

#include "import/importRun.h"

namespace vantrelix {

// The owner, with frmAntPreview as its preview. The window is made at the first antenna that is shown, serves the whole
// run and is unloaded where the run ends, where an unloadPreview of the owner is called too. An antenna that
// cannot be drawn throws as drawCut does, which fails its file.
//
// A window that goes without an answer of its own, by its frame or with the window over which it stands, cancels.
ImportOwner withPreviews(ImportOwner owner = {});

}  // namespace vantrelix
