// Files of the EMS format in a folder.
#pragma once

#include <string>

#include "FormatImport.h"

namespace vantrelix::test {

class Ems : public FormatImport {
 protected:
  Ems() : FormatImport("ems") {}

  static std::string text(const std::string& points = "0,0\n90,3\n", const std::string& Freq = "1850") {
    return "1,2,3\n" + Freq + "\n" + points;
  }
};

}  // namespace vantrelix::test
