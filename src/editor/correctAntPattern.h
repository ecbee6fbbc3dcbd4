// Mending an elevation cut that was not taken through the major lobe.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vantrelix {

class frmHDAntEditor;

namespace correction {
inline constexpr int nothingToCorrect = 0;
inline constexpr int corrected = 1;
inline constexpr int unexplained = 3;   // no cut off the major lobe
inline constexpr int azimuthFault = 4;  // the azimuth cut does not reach the gain
inline constexpr int failed = 88;
}  // namespace correction

// Asks whether to correct the selected antenna, and does it on Yes.
void askToCorrect(frmHDAntEditor& form);
// Corrects the elevation cut of the selected antenna where it can be, and saves it where the user wants that. Gives the
// result and the log text, for the command line.
struct Correction {
  int result = correction::nothingToCorrect;
  std::string log;
  bool saved = false;
  long passedOver = 0;  // rows that had changed since the cut was read, left as they were
};
Correction CorrectAntPattern(frmHDAntEditor& form);

// Shifts the elevation cut so that its maximum is the gain, where it is shown to peak at the azimuth cut's value
// nearest 0 degrees. nAz and nEl are the highest indices of the arrays, from 0; all values are in the antenna's own
// units.
void FixNonMajLobeElPat(double Gain, const std::string& GainUn, std::int16_t nAz, const std::vector<double>& Az,
                        const std::vector<double>& AzGain, std::int16_t nEl, const std::vector<double>& El,
                        std::vector<double>& ElGain, const std::string& LibLabel, const std::string& AntID,
                        std::string& LogText, int& Result);

}  // namespace vantrelix
