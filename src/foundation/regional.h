// The regional characters, and the guard that notices when they change.
#pragma once

#include <string>

namespace vantrelix {

// The two texts that GetRegional fills; "." and "," until it has run.
struct RegionalCharacters {
  std::string decimalCharacter = ".";
  std::string digitSeparator = ",";
};
RegionalCharacters& regionalCharacters();

// Reads the regional characters and compares them with "Last Decimal" and "Last Dig Sep" of section CONFIG of the
// defaults INI. With warn, a change is told to the user and logged, and the stored characters stay; otherwise they are
// written.
void GetRegional(bool warn);

}  // namespace vantrelix
