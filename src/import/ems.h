// The EMS format: each cut of an antenna in a text file of its own, without the gain of the major lobe.
//
// A line of up to three whole numbers without use, a line with the frequency in MHz, then lines "angle,attenuation"
// in dB to the end of the file. Name and plane are those of the file's name.
#pragma once

#include "import/ImportFormat.h"

namespace vantrelix {

// Tells that the gains are measured from 0 dBd.
ImportNotice emsNotice();

// Reads the chosen file and its partner. The plane is the last letter of the chosen file's base name, "A" for azimuth
// and "E" for elevation; with any other, PolLetter stays as it comes in. The partner has "e" or "a" in that place. 13
// or 6 where line 1 holds a word or a number that is too large, 62 where a file ends within its header, 6 where a cut
// has too many points.
void readEms(ImportSource& source, ImportedAntenna& antenna);

}  // namespace vantrelix
