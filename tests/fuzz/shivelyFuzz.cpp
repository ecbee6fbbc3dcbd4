#include "import/shively.h"
#include "importFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return vantrelix::fuzz::readAnyBytes(vantrelix::readShively, "C:\\PATTERNS\\AB6810H.TXT", data, size);
}
