// The values of an antenna in a facility record.
#pragma once

#include "controls/FacilityRecord.h"

namespace vantrelix {

// In the order of every read and write of the record.
enum class AntennaField { file, id, desc, gain, unit, orient, eTilt, mTilt, mAzim, invert, pol, freq };

// How the value stands in the record. Its hooks and how its control gives and takes it are the control's to fill in.
FacilityValue antennaValue(AntennaField field);

// What the saving of an antenna reports.
inline constexpr FacilityRecord::Texts kAntennaTexts = {
    "Error in Antenna Lookup SaveDBF", "Error in Antenna Lookup SaveINI ", "Error in Antenna Save function"};

}  // namespace vantrelix
