#include "aliases/aliasStore.h"

#include <algorithm>

#include "aliases/builtInAliases.h"
#include "foundation/extract.h"
#include "foundation/getINI.h"
#include "foundation/hostProgram.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "platform/Platform.h"

namespace vantrelix {

namespace {

constexpr const char* kNoAlias = "|";
constexpr const char* kGeneralStore = "QVALIAS.INI";

struct Family {
  const char* section;
  const char* prefix;
  std::string (*folder)();
  const char* store;
};

constexpr Family kAntennaFamily{"ANTENNAS\\AMS?????.DBF", "AMS", getAntennasPath, "QVAliasANT.INI"};
constexpr Family kLineFamily{"LINES\\LMS?????.DBF", "LMS", getLinesPath, "QVAliasLIN.INI"};
constexpr const char* kAntennaDefaults = "QVAliasAntDefaults.INI";

const Family& familyOf(LibraryFamily family) { return family == LibraryFamily::antenna ? kAntennaFamily : kLineFamily; }

bool isAlias(const std::string& description) { return getLenTrim(description) > 0 && trim(description) != kNoAlias; }

bool fileExists(const std::string& path) {
  return platform::current().fileExists(platform::current().findIgnoringCase(path));
}

// The program's folder, and the installation folder for a host that stands elsewhere.
std::vector<std::string> programFolders() {
  std::vector<std::string> folders{hostFolder()};
  const std::string suite = getSuiteDir();
  if (getLenTrim(suite) > 0 && suite != folders.front()) folders.push_back(suite);
  return folders;
}

// The folder's store, or what takes its place where it does not exist.
std::string folderStore(const Family& family) {
  std::string store = setPathName(family.folder(), family.store);
  if (fileExists(store)) return store;
  for (const std::string& folder : programFolders()) {
    std::string fallback = setPathName(setPathName(folder, "SYSNODTA"), kGeneralStore);
    if (fileExists(fallback)) return fallback;
  }
  return store;
}

std::string read(const Family& family, const std::string& file, std::string store) {
  return getINIStr(family.section, file, " ", store);
}

// "AMS?????.DBF", each question mark one character.
bool matchesPattern(const Family& family, const std::string& file) {
  const std::string name = upperCase(file);
  return characterCount(name) == 12 && name.starts_with(family.prefix) && name.ends_with(".DBF");
}

}  // namespace

std::string GetAliasDefault(const std::string& sSection, const std::string& sFile) {
  const std::string section = upperCase(sSection);
  const std::string name = upperCase(sFile);
  if (section == kLineFamily.section) return std::string(builtInLineAlias(name));
  if (section != kAntennaFamily.section) return "";
  std::string defaults = setPathName(getAntennasPath(), kAntennaDefaults);
  std::string description = getINIStr(sSection, sFile, "", defaults);
  return isAlias(description) ? description : std::string(builtInAntennaAlias(name));
}

std::string libraryDescription(LibraryFamily family, const std::string& file) {
  const Family& known = familyOf(family);
  std::vector<std::string> stores{folderStore(known)};
  for (const std::string& folder : programFolders()) stores.push_back(setPathName(folder, kGeneralStore));
  for (const std::string& store : stores) {
    if (std::string description = read(known, file, store); isAlias(description)) return description;
  }
  std::string description = GetAliasDefault(known.section, file);
  return isAlias(description) ? description : kNoAlias;
}

std::vector<LibraryEntry> libraryFiles(LibraryFamily family) {
  const Family& known = familyOf(family);
  const std::string folder = known.folder();
  std::vector<LibraryEntry> entries;
  for (const std::string& file : platform::current().list(folder)) {
    if (!matchesPattern(known, file) || !platform::current().fileExists(setPathName(folder, file))) continue;
    entries.push_back({file, libraryDescription(family, file)});
  }
  std::stable_sort(entries.begin(), entries.end(),
                   [](const LibraryEntry& a, const LibraryEntry& b) { return a.description < b.description; });
  return entries;
}

}  // namespace vantrelix
