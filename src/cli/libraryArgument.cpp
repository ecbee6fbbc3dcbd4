#include "cli/libraryArgument.h"

#include "platform/Platform.h"

namespace vantrelix::cli {

LibraryName libraryArgument(const Session& session, const std::string& argument) {
  const std::string path = platform::current().fromMachine(argument);
  if (path.find('\\') != std::string::npos) return parseLibraryName(platform::current().absolute(path));
  session.needSuite();
  return parseLibraryName(path);
}

}  // namespace vantrelix::cli
