// A family of formats with one cut in each text file: Celwave, Sinclair, Decibel and TX RX.
//
// A header without keywords, its lines told by their places alone, then lines of angle and attenuation in dB below the
// gain to the end of the file. The gain is in dBd, frequencies are in MHz. The other cut of the antenna is in a file of
// which the name differs in one letter; name, gain and band are those of the file that is read last.
#pragma once

#include "import/ImportFormat.h"

namespace vantrelix {

// Each reads the chosen file and its partner. ErrFlag is -1 where the plane line names no plane (in Sinclair the cuts
// then stay empty); 62 where a file ends within its header, 6 where a cut has too many points.

// 18 lines of header with a band of their own. The partner has "V", then "E", in place of the first "H" of the base
// name, or "H" in place of the first "V", else "E".
void readCelwave(ImportSource& source, ImportedAntenna& antenna);
// 7 lines of header; azimuths are counted from the antenna's side, elevations upward. The partner as in Celwave.
void readSinclair(ImportSource& source, ImportedAntenna& antenna);
// 7 lines of header; elevations are counted upward. The partner has "V" in place of the last "H" of the whole path, or
// the reverse. TX RX files are the same.
void readDecibel(ImportSource& source, ImportedAntenna& antenna);

}  // namespace vantrelix
