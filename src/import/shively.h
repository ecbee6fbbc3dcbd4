// The legacy Shively format: a plain table of azimuth and relative field, "angle,value" on each line.
//
// One file is one antenna with an azimuth cut and no elevation cut. Its name comes from the file's: AB6810H.TXT is
// "AB6810H - H Polarization".
#pragma once

#include "import/ImportFormat.h"

namespace vantrelix {

// Reads one file. The values become fractions of the highest, which is the gain (REL). 11 where no value is above 0, 6
// where the cut has too many points or a fraction leaves the range of numbers.
void readShively(ImportSource& source, ImportedAntenna& antenna);

}  // namespace vantrelix
