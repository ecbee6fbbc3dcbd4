#include "import/bluewave.h"
#include "importFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return vantrelix::fuzz::readAnyBytes(vantrelix::readBluewave, "C:\\PATTERNS\\AB12H.TXT", data, size);
}
