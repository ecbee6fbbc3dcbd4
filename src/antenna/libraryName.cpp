#include "antenna/libraryName.h"

#include "foundation/extract.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "platform/Platform.h"

namespace vantrelix {

LibraryName parseLibraryName(std::string_view text) {
  const std::string path = platform::current().fromMachine(trim(text));
  LibraryName name;
  const bool hasFolder = path.find('\\') != std::string::npos;
  name.folder = hasFolder ? ExtractFolderNoSlash(platform::current().absolute(path)) : getAntennasPath();
  name.stem = upperCase(ExtractFileName(path));
  if (name.stem.ends_with(".DBF")) name.stem.resize(name.stem.size() - 4);
  name.code = midCharacters(name.stem, 4);
  return name;
}

std::string tableFolder(const std::string& path) {
  platform::Platform& platform = platform::current();
  if (platform.folderExists(path)) return path;
  return platform.fileExists(platform.findIgnoringCase(path)) ? ExtractFolderNoSlash(path) : path;
}

bool tableFileExists(const std::string& path) {
  if (platform::current().fileExists(path)) return true;
  return getFileExistLEN(platform::current().findIgnoringCase(path), true);
}

}  // namespace vantrelix
