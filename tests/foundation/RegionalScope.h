// Regional characters for one test, put back at its end.
#pragma once

#include "foundation/regional.h"

namespace vantrelix::test {

class RegionalScope {
 public:
  RegionalScope() = default;
  RegionalScope(const std::string& decimalCharacter, const std::string& digitSeparator) {
    regionalCharacters() = {decimalCharacter, digitSeparator};
  }
  ~RegionalScope() { regionalCharacters() = former_; }
  RegionalScope(const RegionalScope&) = delete;
  RegionalScope& operator=(const RegionalScope&) = delete;

 private:
  RegionalCharacters former_ = regionalCharacters();
};

}  // namespace vantrelix::test
