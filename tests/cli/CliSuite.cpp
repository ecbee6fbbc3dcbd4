#include "cli/CliSuite.h"

#include <cstdint>

#include "antenna/hdWrtAntDBF.h"
#include "antenna/makeAntFiles.h"

namespace vantrelix::test {

CliLibrary::CliLibrary() { EXPECT_EQ(MakeAntFiles("X0001"), ""); }

void CliLibrary::add(const std::string& description, const std::vector<double>& azimuths,
                     const std::vector<double>& azimuthGains, const std::vector<double>& elevations,
                     const std::vector<double>& elevationGains) {
  EXPECT_EQ(
      HDwrtAntDBF("X0001", description, 10, "dBd", static_cast<std::int16_t>(azimuths.size()), azimuths, azimuthGains,
                  static_cast<std::int16_t>(elevations.size()), elevations, elevationGains, 824, 896),
      "");
}

}  // namespace vantrelix::test
