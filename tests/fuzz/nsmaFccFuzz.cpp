#include "foundation/suitePaths.h"
#include "import/nsmaFcc.h"
#include "importFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // A folder that holds nothing: without one, each run would log that none was found.
  vantrelix::setSuiteDir("\\nonexistent");
  const auto read = [](vantrelix::ImportSource& source, vantrelix::ImportedAntenna& antenna) {
    vantrelix::readNsmaFcc(source.lines(), antenna);
  };
  return vantrelix::fuzz::readAnyBytes(read, "\\files\\a.txt", data, size);
}
