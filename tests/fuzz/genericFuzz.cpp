// A pattern file of any kind either fails with a run-time failure or gives cuts whose arrays agree with their counts.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "import/TextLines.h"
#include "import/generic.h"
#include "platform/RunTimeFailure.h"

namespace {

void requireCut(std::int16_t count, const std::vector<double>& angles, const std::vector<double>& values) {
  if (count < 0 || angles.size() != static_cast<std::size_t>(count) || values.size() != angles.size()) std::abort();
  for (std::size_t i = 0; i < angles.size(); ++i) {
    if (!std::isfinite(angles[i]) || !std::isfinite(values[i])) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vantrelix::ImportedAntenna antenna;
  try {
    vantrelix::TextLines lines(std::string(reinterpret_cast<const char*>(data), size));
    vantrelix::readGeneric(lines, antenna);
  } catch (const vantrelix::RunTimeFailure&) {
    return 0;
  }
  requireCut(antenna.HorCount, antenna.HorAngle, antenna.HorValue);
  requireCut(antenna.VerCount, antenna.VerAngle, antenna.VerValue);
  for (const double angle : antenna.HorAngle) {
    if (angle < 0 || angle > 360) std::abort();
  }
  return 0;
}
