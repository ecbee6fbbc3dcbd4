// The Antel format: both cuts of one antenna in one text file, the header by the place of its lines.
//
// Line 3 is the frequency in MHz, line 7 the gain and its unit, line 9 the model, each behind a keyword that is not
// looked at; a tab in line 1 makes the tab what separates their fields, else each single blank does. Then
// "HORIZONTAL n" and n lines of azimuth and attenuation in dB, "VERTICAL n" and n lines of elevation and attenuation.
#pragma once

#include "import/ImportFormat.h"

namespace vantrelix {

// Reads one file. ErrFlag is -1 where a cut does not begin with its keyword and a count of 1 to 32767; 62 where the
// file ends before one begins. A line without two numbers leaves its point at angle 0 and value 0, and so does the last
// line of the file, which is never used.
void readAntel(TextLines& lines, ImportedAntenna& antenna);

}  // namespace vantrelix
