#include "import/ems.h"
#include "importFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return vantrelix::fuzz::readAnyBytes(vantrelix::readEms, "C:\\AB12E.TXT", data, size);
}
