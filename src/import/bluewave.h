// The legacy Bluewave format: one cut in each file below one title line, two files for one antenna.
//
// The title, "ABC-12 F=1850MHz V", is the antenna's name; it ends in the letter of the plane. Below it stand lines of
// angle and level in dBd. The other file's path has the last "H" or "V", anywhere in it, as the other letter.
#pragma once

#include "import/ImportFormat.h"

namespace vantrelix {

// Reads one file and its partner, whose title is the name in the end. The highest azimuth level is the gain; without an
// azimuth cut it is -88888. 62 where a file is empty, 6 where a cut has too many points.
void readBluewave(ImportSource& source, ImportedAntenna& antenna);

}  // namespace vantrelix
