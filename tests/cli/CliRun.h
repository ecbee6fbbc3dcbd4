// One run of the command line inside a test.
#pragma once

#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "cli/commandLine.h"

namespace vantrelix::test {

struct CliRun {
  int status = 0;
  std::string out;
  std::string err;

  nlohmann::json json() const { return nlohmann::json::parse(out); }
};

inline CliRun runCli(const std::vector<std::string>& arguments, const cli::PictureWriter& pictureWriter = {},
                     bool errIsTerminal = false) {
  std::ostringstream out;
  std::ostringstream err;
  const int status = cli::runCommandLine(arguments, out, err, pictureWriter, errIsTerminal);
  return {status, out.str(), err.str()};
}

}  // namespace vantrelix::test
