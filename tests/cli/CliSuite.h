// An installation folder that was made by the command line, and runs of the command line in it.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "cli/CliRun.h"
#include "support/TempSuite.h"

namespace vantrelix::test {

class CliSuite : public testing::Test {
 protected:
  CliSuite() { EXPECT_EQ(run({"suite", "init", suite_.folder().machine()}).status, 0); }

  CliRun run(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {"--suite", suite_.folder().machine()});
    return runCli(arguments);
  }
  CliRun json(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), "--json");
    return run(std::move(arguments));
  }

  TempSuite suite_;
};

// An installation folder with the empty antenna library AMSX0001.
class CliLibrary : public CliSuite {
 protected:
  CliLibrary();

  // An antenna of 10 dBd, 824 to 896 MHz, with these cuts.
  static void add(const std::string& description, const std::vector<double>& azimuths,
                  const std::vector<double>& azimuthGains, const std::vector<double>& elevations,
                  const std::vector<double>& elevationGains);
};

}  // namespace vantrelix::test
