// The loss of a length of transmission line at a frequency, out of a line library.
#pragma once

#include <string>

namespace vantrelix {

// LineFile is the name of an LMS file of the lines folder, LineID the line's type there; Length in LengthUnits, Freq in
// MHz. Loss (dB) is linear in the logarithms of frequency and attenuation between the two points round Freq; there is
// no extrapolation. A refusal sets Failed and ErrorText and leaves Loss as it was; a line type of one point leaves Loss
// as it was and fails nothing. Description, where it is wanted, is the line's description: a blank where it has none.
// A failure of the tables passes to the caller.
void getLineLossValue(const std::string& LineFile, const std::string& LineID, double Length,
                      const std::string& LengthUnits, double Freq, double& Loss, bool& Failed, std::string& ErrorText,
                      std::string* Description = nullptr);

}  // namespace vantrelix
