// The Generic format: the MSI Planet antenna file, both cuts of one antenna in one text file.
//
// Keyword lines (NAME, FREQUENCY, GAIN, ...), then "HORIZONTAL n" and lines of azimuth and attenuation in dB, then
// "VERTICAL n" and lines of elevation and attenuation. Tabs and blanks both separate.
#pragma once

#include "import/ImportFormat.h"

namespace vantrelix {

// Reads one file. 62 where it ends within the header, 13 where GAIN is no number, 11 where a relative cut has no peak,
// 6 where a cut has too many points.
void readGeneric(TextLines& lines, ImportedAntenna& antenna);

}  // namespace vantrelix
