// The NSMA format: the standard antenna data file of NSMA recommendation WG16.99.050. One file holds up to two
// antennas, one for horizontal and one for vertical polarisation.
#pragma once

#include "import/ImportFormat.h"

namespace vantrelix {

// Reads one file and stores its antennas, the horizontal one first; one whose cuts are both empty is none. Nothing is
// stored of a file that cannot be read to its end. Tells the user why a file is not imported, and sets ErrFlag: 1 where
// its content is refused, -1 where reading failed. An antenna that is skipped or cancelled in the preview ends the
// reading without an error.
void readNsma(ImportSource& source, ImportedAntenna& antenna);

}  // namespace vantrelix
