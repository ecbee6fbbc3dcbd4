// The DAPA format: each cut of an antenna in a text file of its own, below a header of lines "label: value".
//
// Only the place of a header line counts: name in line 2, plane in line 3, gain and its unit in line 7, frequency in
// MHz in line 8. Lines of angle and attenuation in dB follow to the end of the file.
#pragma once

#include "import/ImportFormat.h"

namespace vantrelix {

// Reads the chosen file and its partner. Planes are "H" for azimuth and "V" or "E" for elevation, in capitals; with
// any other both cuts stay empty. The partner has "e" or "h" in place of the first letter of the base name. 62 where a
// file ends within its header, 6 where a cut has too many points.
void readDapa(ImportSource& source, ImportedAntenna& antenna);

}  // namespace vantrelix
