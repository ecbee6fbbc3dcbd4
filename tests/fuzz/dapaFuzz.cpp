#include "import/dapa.h"
#include "importFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return vantrelix::fuzz::readAnyBytes(vantrelix::readDapa, "C:\\HAB12.TXT", data, size);
}
