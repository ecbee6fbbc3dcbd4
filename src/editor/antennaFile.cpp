#include "editor/antennaFile.h"

#include <exception>

#include "editor/PatternPane.h"
#include "foundation/errHand.h"
#include "foundation/numbers.h"
#include "foundation/procedures.h"
#include "foundation/text.h"

namespace vantrelix {

namespace {

constexpr const char* kFormat = "###0.00";

std::string twoDecimals(double value) { return formatNumber(value, kFormat); }

template <class Write>
void trapped(int number, bool& failed, const Write& write) {
  const Procedure guard(number);
  failed = true;
  try {
    write();
    failed = false;
  } catch (const RunTimeFailure& failure) {
    ErrHand(failure);
  } catch (const std::exception& failure) {
    ErrHand(failure);
  }
}

void writeBlock(std::string& file, const char* heading, double angleSign, double gain, std::int16_t n,
                const std::vector<double>& angles, const std::vector<double>& gains) {
  if (n <= 0) return;
  file += std::string(heading) + " " + std::to_string(n) + kLineBreak;
  for (std::size_t i = 0; i < static_cast<std::size_t>(n); ++i) {
    file += twoDecimals(angleSign * angles.at(i)) + " " + twoDecimals(gain - gains.at(i)) + kLineBreak;
  }
}

}  // namespace

void SavAntPLAHdr(std::string& file, double freq, const std::string& name, double gain, const std::string& gainUn,
                  bool& failed) {
  trapped(procedure::SavAntPLAHdr, failed, [&] {
    file += "NAME " + name + kLineBreak + "Frequency " + generalText(freq) + kLineBreak + "GAIN " + generalText(gain) +
            " " + gainUn + kLineBreak;
  });
}

void SavAntPLAHor(std::string& file, double gain, std::int16_t n, const std::vector<double>& az,
                  const std::vector<double>& azGain, bool& failed) {
  trapped(procedure::SavAntPLAHor, failed, [&] { writeBlock(file, "HORIZONTAL", 1, gain, n, az, azGain); });
}

void SavAntPLAVer(std::string& file, double gain, std::int16_t n, const std::vector<double>& el,
                  const std::vector<double>& elGain, bool& failed) {
  trapped(procedure::SavAntPLAVer, failed, [&] { writeBlock(file, "VERTICAL", -1, gain, n, el, elGain); });
}

void SavAntPLAVerRS(std::string& file, double gain, const std::string& id, PatternPane& elevation, bool& failed) {
  trapped(procedure::SavAntPLAVerRS, failed, [&] {
    const GridHold hold(elevation.grid);
    elevation.load(id, "");
    const std::string& shown = elevation.data.RecordSource;
    elevation.data.RecordSource = shown.substr(0, shown.rfind(" Order by")) + " Order by 180-[VERT_ANGLE] DESC";
    elevation.data.Refresh();
    DBEngine::Idle();
    std::int16_t n = 0;
    std::vector<double> angles, gains;
    elevation.GetPat(n, angles, gains);
    writeBlock(file, "VERTICAL", -1, gain, n, angles, gains);
    elevation.load(id, "");
    DBEngine::Idle();
  });
}

}  // namespace vantrelix
