// The legacy Scala format: one cut in each file, two files for one antenna.
//
// The name of the antenna and its frequency stand in line 2 as "name (frequency", the points, angle and attenuation in
// dB, from line 7 on. The last letter but one of the file's base name tells the cut: AB123HA.PAT holds the azimuth cut,
// AB123VA.PAT or AB123EA.PAT the elevation cut. The file has no gain: the values are dB below 0 dBd.
#pragma once

#include "import/ImportFormat.h"

namespace vantrelix {

// Reads one file and its partner. 9 where the base name has no letter before its last, 62 where a file ends within its
// header, 6 where a cut has too many points; ErrFlag where line 2 has no "(".
void readScala(ImportSource& source, ImportedAntenna& antenna);

}  // namespace vantrelix
