#include "import/celwave.h"
#include "importFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return vantrelix::fuzz::readAnyBytes(vantrelix::readCelwave, "C:\\PATTERNS\\HVE12.ANT", data, size);
}
