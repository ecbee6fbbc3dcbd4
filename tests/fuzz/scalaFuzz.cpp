#include "import/scala.h"
#include "importFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return vantrelix::fuzz::readAnyBytes(vantrelix::readScala, "C:\\PATTERNS\\AB123HA.PAT", data, size);
}
