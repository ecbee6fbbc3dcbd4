#include "foundation/suitePaths.h"
#include "import/nsma.h"
#include "importFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // A folder that holds nothing: without one, each run would log that none was found.
  vantrelix::setSuiteDir("\\nonexistent");
  return vantrelix::fuzz::readAnyBytes(vantrelix::readNsma, "\\files\\a.adf", data, size);
}
