// One antenna in memory.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vantrelix {

// The two arrays of a cut always have the same bounds. A cut without points has count 0 and arrays of one element, 0.
// Angles are in degrees; values have the units of the antenna's gain: absolute gain in dBd or dBi, or, for "REL", the
// field relative to the major lobe, 0 to 1 (the gain of a "REL" antenna is a power ratio over a half-wave dipole).
struct AntRecord {
  std::string library;  // AMS file stem, "AMS" and the five-character code
  std::string folder;
  std::string id;                 // ATYPE_ID
  std::string description;        // ANTENNA
  double gain = 0;                // of the major lobe
  std::string gainUnits = "dBd";  // "dBd", "dBi" or "REL"
  double lowFrequency = 0;        // in freqUnits
  double highFrequency = 0;
  std::string freqUnits = "MHz";
  std::int16_t nHor = 0;
  std::vector<double> HorAz{0};
  std::vector<double> HorField{0};
  std::int16_t nVer = 0;
  std::vector<double> VerAngle{0};
  std::vector<double> VerField{0};
};

}  // namespace vantrelix
