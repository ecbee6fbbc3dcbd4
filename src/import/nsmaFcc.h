// The NSMA (FCC) format: microwave antennas as filed with the FCC, one antenna in one file.
//
// Ten header lines, each told by its place: 1 maker, 2 model, 8 band in MHz ("5925-6425" or one number), 9 gain in dBi.
// Then a line "HH n" and n lines of azimuth and level, and a line "ELVV n" and n lines of elevation and level, both in
// dB relative to the gain, among any other lines. The two markers are keys "NSMA (FCC) AZ" and "NSMA (FCC) EL" of
// section "Antenna Data Path" of the defaults INI.
#pragma once

#include "import/ImportFormat.h"

namespace vantrelix {

// Reads one file. 62 where it ends within the header, within a block, or with the last point of a block; 13 or 6 where
// a point holds no number or one out of range; 9 where a block announces fewer points than none.
void readNsmaFcc(TextLines& lines, ImportedAntenna& antenna);

}  // namespace vantrelix
