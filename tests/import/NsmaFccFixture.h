// Files of the NSMA (FCC) format given as text.
#pragma once

#include <gtest/gtest.h>
#include <string>

#include "import/TextLines.h"
#include "import/nsmaFcc.h"
#include "platform/RunTimeFailure.h"
#include "support/TempSuite.h"

namespace vantrelix::test {

class NsmaFcc : public ::testing::Test {
 protected:
  static ImportedAntenna read(const std::string& text) {
    ImportedAntenna antenna;
    TextLines lines(text);
    readNsmaFcc(lines, antenna);
    return antenna;
  }
  // The number of the failure, 0 where there is none.
  static int failureOf(const std::string& text) {
    try {
      read(text);
      return 0;
    } catch (const RunTimeFailure& failure) {
      return failure.number();
    }
  }
  static std::string header(const std::string& maker = "MAKER Inc. of Sometown", const std::string& model = "PAR6-59W",
                            const std::string& band = "5925-6425", const std::string& gain = "30") {
    return maker + "\n" + model + "\n3\n4\n5\n6\n7\n" + band + "\n" + gain + "\n10\n";
  }
  static std::string sample(const std::string& name) {
    return readMachineFile(std::string(VANTRELIX_SOURCE_DIR) + "/tests/data/nsmaFcc/" + name);
  }

  TempSuite suite;
};

}  // namespace vantrelix::test
