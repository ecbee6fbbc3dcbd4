// The loss of a length of transmission line at a frequency, out of a line library.
#pragma once

#include <string>

namespace vantrelix {

// LineFile is the name of an LMS file of the lines folder, LineID the line's type there; Length in LengthUnits (a word
// of units.h), Freq in MHz. Loss (dB) is linear in the logarithms of frequency and attenuation between the two points
// round Freq; there is no extrapolation. A refusal sets Failed and ErrorText and leaves Loss as it was; a line type of
// one point leaves Loss as it was and fails nothing. An unknown length unit sets Failed with a Loss of 0 and no text.
// Description, where it is wanted, is the line's description without trailing blanks, one blank where it has none; it
// is found for a length of 0 too. An attenuation of 0 or less beside Freq shows the "Math Error" box of log10 and
// counts as its logarithm was 0. A failure of the tables, and a result out of range (6, 11), passes to the caller.
void getLineLossValue(const std::string& LineFile, const std::string& LineID, double Length,
                      const std::string& LengthUnits, double Freq, double& Loss, bool& Failed, std::string& ErrorText,
                      std::string* Description = nullptr);

// The same with a library of the folder named.
void getLineLossValueIn(const std::string& folder, const std::string& LineFile, const std::string& LineID,
                        double Length, const std::string& LengthUnits, double Freq, double& Loss, bool& Failed,
                        std::string& ErrorText, std::string* Description = nullptr);

}  // namespace vantrelix
