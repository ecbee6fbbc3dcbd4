// The TIL-TEK format: each cut of an antenna in a text file of its own.
//
// A title, a line that begins with the plane ("E" for elevation, anything else for azimuth), two lines without use,
// then lines of angle and level in dBd to the end of the file. Azimuths are counted in the opposite sense to the
// library's. There is neither a gain nor a frequency.
#pragma once

#include "import/ImportFormat.h"

namespace vantrelix {

// Reads the chosen file and its partner, the path with its last "AZ" as "EL" or the reverse. Gain is the highest level
// of the azimuth cut, at least 0, but is set back where the elevation file is read behind it: the cut that was chosen
// decides. 62 where a file ends within its header, 6 where a cut has too many points.
void readTilTek(ImportSource& source, ImportedAntenna& antenna);

}  // namespace vantrelix
