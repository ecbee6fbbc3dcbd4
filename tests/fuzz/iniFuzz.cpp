// INI text of any kind is read without harm, and a key that is set is there afterwards, all others unchanged.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "foundation/IniFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using vantrelix::IniFile;
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  IniFile file(bytes);
  if (file.bytes() != bytes) std::abort();
  for (const std::string& section : file.sections()) {
    for (const std::string& key : file.keys(section)) static_cast<void>(file.get(section, key));
  }
  file.set("Antenna Lookup", "Units", "dBi");
  const IniFile again(file.bytes());
  if (again.get("Antenna Lookup", "Units") != "dBi") std::abort();
  return 0;
}
