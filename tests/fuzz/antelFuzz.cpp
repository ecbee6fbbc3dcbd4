#include "import/antel.h"
#include "importFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto read = [](vantrelix::ImportSource& source, vantrelix::ImportedAntenna& antenna) {
    vantrelix::readAntel(source.lines(), antenna);
  };
  return vantrelix::fuzz::readAnyBytes(read, "C:\\PATTERNS\\AB12.MSI", data, size);
}
