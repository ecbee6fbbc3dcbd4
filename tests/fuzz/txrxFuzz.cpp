#include "import/celwave.h"
#include "importFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return vantrelix::fuzz::readAnyBytes(vantrelix::readDecibel, "C:\\PATTERNS\\HVE12.DAT", data, size);
}
