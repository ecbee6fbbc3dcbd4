#include "cli/libraryArgument.h"

#include "antenna/getAntArrayDB.h"
#include "foundation/text.h"
#include "platform/Platform.h"

namespace vantrelix::cli {

LibraryName libraryArgument(const Session& session, const std::string& argument) {
  const std::string path = platform::current().fromMachine(argument);
  const bool hasFolder = path.find('\\') != std::string::npos;
  if (!hasFolder) session.needSuite();
  LibraryName name = parseLibraryName(path);
  if (getLenTrim(name.stem) == 0) {
    throw Refused("No library is named by \"" + argument + "\": name its AMS file, as in AMSX0001 or FOLDER/AMSX0001.");
  }
  return name;
}

AntRecord antennaArgument(const Session& session, const LibraryName& library, const std::string& id, std::string units,
                          std::string& reason) {
  const std::size_t before = session.boxesShown();
  AntRecord antenna = readAntenna(library.folder, library.stem, id, units, false, reason);
  if (getLenTrim(id) == 0) reason = "No antenna is named: the ID is blank.";
  if (getLenTrim(reason) == 0) reason = session.failureShown(before);
  reason = trim(replaceAll(reason, kLineBreak, " "));
  return antenna;
}

}  // namespace vantrelix::cli
