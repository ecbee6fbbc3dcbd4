#include "import/tiltek.h"
#include "importFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return vantrelix::fuzz::readAnyBytes(vantrelix::readTilTek, "C:\\ANT12AZ.TXT", data, size);
}
