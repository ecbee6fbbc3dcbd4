#include "tables/partnerFile.h"

#include <algorithm>

#include "foundation/text.h"
#include "platform/Platform.h"

namespace vantrelix {

std::string withExtension(const std::string& path, std::string_view extension) {
  const std::size_t point = path.find_last_of("./\\");
  const bool found = point != std::string::npos && path[point] == '.';
  return (found ? path.substr(0, point) : path) + "." + std::string(extension);
}

std::string partnerFile(const std::string& tablePath, std::string_view extension) {
  platform::Platform& system = platform::current();
  // The table's own spelling goes before one that differs in case.
  for (const std::string& candidate :
       {withExtension(tablePath, lowerCase(extension)), withExtension(tablePath, extension)}) {
    if (system.fileExists(candidate)) return candidate;
  }
  const std::string found = system.findIgnoringCase(withExtension(tablePath, extension));
  return system.fileExists(found) ? found : std::string();
}

std::string memoPartner(const std::string& tablePath, bool foxpro) {
  if (!foxpro) return partnerFile(tablePath, "DBT");
  const bool container = equalIgnoringCase(
      std::string_view(tablePath).substr(tablePath.size() - std::min<std::size_t>(4, tablePath.size())), ".DBC");
  return partnerFile(tablePath, container ? "DCT" : "FPT");
}

}  // namespace vantrelix
