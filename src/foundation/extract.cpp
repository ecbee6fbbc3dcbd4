#include "foundation/extract.h"

#include "foundation/messages.h"
#include "foundation/text.h"
#include "platform/Platform.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {

namespace {

using platform::current;

// The place behind the last backslash.
std::size_t nameStart(std::string_view path) {
  const std::size_t slash = path.find_last_of('\\');
  return slash == std::string_view::npos ? 0 : slash + 1;
}

bool isBareDrive(std::string_view path) { return path.size() == 2 && path[1] == ':'; }

bool folderIsThere(const std::string& path) { return current().folderExists(current().findIgnoringCase(path)); }

bool askForCurrentFolder() {
  const std::string text = "Since no path was specified, the program will use the path:" + std::string(kLineBreak) +
                           displayPath(current().currentFolder().empty() ? "\\" : current().currentFolder());
  return MsgBox({"Path Specification", text, MsgButtons::okCancel, MsgIcon::question, 1}) == MsgAnswer::ok;
}

std::string missingPathText(const std::string& path, std::string_view further) {
  return "The specified path does not exist:" + std::string(kLineBreak) + displayPath(path) + kLineBreak +
         std::string(further);
}

bool askToCreate(const std::string& path) {
  const std::string text = missingPathText(path, "Do you want to create the new path?");
  if (MsgBox({"Path Not Found", text, MsgButtons::yesNo, MsgIcon::question, 1}) != MsgAnswer::yes) return false;
  MakeDirPath(path);
  return true;
}

bool tellThatItMustExist(const std::string& path) {
  showInformation("Path Error", missingPathText(path, "You must specify an existing path for this function."));
  return false;
}

bool createAndLookAgain(const std::string& path) {
  MakeDirPath(path);
  return folderIsThere(path);
}

// Tables and INI files are found in any case; other files, the partner of an import among them, as they are named.
bool isFoundInAnyCase(std::string_view path) {
  const std::string upper = upperCase(path);
  return upper.ends_with(".DBF") || upper.ends_with(".INI");
}

}  // namespace

std::string setPathName(std::string_view folder, std::string_view file, bool forwardSlashes) {
  file.remove_prefix(std::min(file.find_first_not_of("\\/"), file.size()));
  while (!folder.empty() && (folder.back() == '\0' || folder.back() == ' ')) folder.remove_suffix(1);
  while (!folder.empty() && (folder.back() == '\\' || folder.back() == '/')) folder.remove_suffix(1);
  std::string path;
  path.reserve(folder.size() + 1 + file.size());
  path.append(folder).append("\\").append(file);
  if (forwardSlashes) return replaceAll(path, "\\", "/");
  return path;
}

bool getFileExistLEN(const std::string& path, bool emptyCounts) {
  const std::string found = isFoundInAnyCase(path) ? current().findIgnoringCase(path) : path;
  const auto state = current().state(found);
  if (!state || !current().fileExists(found)) return false;
  return state->size > 0 || emptyCounts;
}

bool getPathExist(const std::string& path, bool prompt, bool create) {
  if (getLenTrim(path) == 0) return prompt && askForCurrentFolder();
  const bool cut = path.size() > 1 && path.back() == '\\';
  const std::string folder = cut ? path.substr(0, path.size() - 1) : path;
  if (isBareDrive(folder) || folderIsThere(folder)) return true;
  if (prompt) return create ? askToCreate(folder) : tellThatItMustExist(folder);
  return create && createAndLookAgain(folder);
}

void MakeDirPath(const std::string& path) {
  const std::string full = current().fromMachine(path);
  std::string made;
  for (std::size_t at = 0; at < full.size();) {
    const std::size_t end = std::min(full.find('\\', at), full.size());
    made += full.substr(at, end - at);
    // Behind a separator that begins the path, or doubled, there is no level to make.
    if (end > at && !isBareDrive(made)) {
      made = current().findIgnoringCase(made);
      try {
        current().makeFolder(made);
      } catch (const RunTimeFailure&) {
        // A level may be there without being ours to make; the last one decides, and the caller looks at it.
      }
    }
    if (end < full.size()) made += '\\';
    at = end + 1;
  }
}

std::string ExtractFileName(std::string_view path) { return std::string(path.substr(nameStart(path))); }

std::string ExtractBaseName(std::string_view path) {
  const std::string_view name = path.substr(nameStart(path));
  return std::string(name.substr(0, name.find('.')));
}

std::string ExtractExtension(std::string_view path, std::size_t longest) {
  const std::string_view name = path.substr(nameStart(path));
  const std::size_t point = name.find('.');
  if (point == std::string_view::npos) return {};
  const std::string_view extension = name.substr(point + 1);
  return characterCount(extension) > longest ? std::string() : std::string(extension);
}

std::string ExtractFolder(std::string_view path) { return std::string(path.substr(0, nameStart(path))); }

std::string ExtractFolderNoSlash(std::string_view path) {
  const std::size_t start = nameStart(path);
  return std::string(path.substr(0, start == 0 ? 0 : start - 1));
}

std::string ExtractPathNoExtension(std::string_view path) { return ExtractFolder(path) + ExtractBaseName(path); }

std::string displayPath(std::string_view path) { return current().toMachine(path); }

}  // namespace vantrelix
