// The antennas of a library, as front ends list them.
#pragma once

#include <string>
#include <vector>

namespace vantrelix {

struct AntennaListEntry {
  std::string id;           // ATYPE_ID without trailing blanks
  std::string description;  // "[NO DESCRIPTION]" where blank
  double gain = 0;          // in gainUnits; 0 where null
  std::string gainUnits;
  double fLow = 0;  // in freqUnits; 0 where null
  double fHigh = 0;
  std::string freqUnits;
  long horizontalPoints = 0;  // rows of both values; 0 where the table is missing
  long verticalPoints = 0;
};

// All antennas of the library, by the file stem of its AMS table, in ascending order of description. A run-time failure
// 53 that names the file where there is no AMS table, the folder's own failure where that cannot be read, and whatever
// the table engine has where one cannot be read.
std::vector<AntennaListEntry> listAntennas(const std::string& folder, const std::string& library);

}  // namespace vantrelix
