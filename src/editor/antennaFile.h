// The ASCII antenna file: what stands in it, written into a text.
//
// Lines end with CR LF. A pattern line holds an angle and the loss below the gain, both with two decimals; elevations
// are downward-positive in the file and upward-positive in the table. Gains are in the row's own units and are never
// converted. Each procedure tells a failure by ErrHand and sets `failed`.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vantrelix {

class PatternPane;

// Description, frequency and gain.
void SavAntPLAHdr(std::string& file, double freq, const std::string& name, double gain, const std::string& gainUn,
                  bool& failed);
// The horizontal and the vertical block; nothing for a cut without points.
void SavAntPLAHor(std::string& file, double gain, std::int16_t n, const std::vector<double>& az,
                  const std::vector<double>& azGain, bool& failed);
void SavAntPLAVer(std::string& file, double gain, std::int16_t n, const std::vector<double>& el,
                  const std::vector<double>& elGain, bool& failed);
// The vertical block read from the table of the pane, in the order of the file; the grid is shown upward again.
void SavAntPLAVerRS(std::string& file, double gain, const std::string& id, PatternPane& elevation, bool& failed);

}  // namespace vantrelix
