#include "aliases/aliasStore.h"

#include <algorithm>

#include "aliases/builtInAliases.h"
#include "foundation/extract.h"
#include "foundation/hostProgram.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "platform/Platform.h"

namespace vantrelix {

namespace {

constexpr const char* kNoAlias = "|";
constexpr const char* kGeneralStore = "QVALIAS.INI";
constexpr const char* kAntennaDefaults = "QVAliasAntDefaults.INI";

constexpr AliasFamily kFamilies[] = {
    {LibraryFamily::antenna, "AMS", "ANTENNAS\\AMS?????.DBF", "AMS?????.DBF", getAntennasPath, "QVAliasANT.INI"},
    {LibraryFamily::line, "LMS", "LINES\\LMS?????.DBF", "LMS?????.DBF", getLinesPath, "QVAliasLIN.INI"},
};

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
std::string folderStore(const AliasFamily& family, const std::string& storeFolder) {
  std::string store = setPathName(storeFolder, family.store);
  if (fileExists(store)) return store;
  for (const std::string& folder : programFolders()) {
    std::string fallback = setPathName(setPathName(folder, "SYSNODTA"), kGeneralStore);
    if (fileExists(fallback)) return fallback;
  }
  return store;
}

ProfileSection readDefaults(std::string_view section) {
  return {section, setPathName(getAntennasPath(), kAntennaDefaults)};
}

std::string builtIn(const AliasFamily& family, std::string_view file) {
  const std::string name = upperCase(file);
  return std::string(family.family == LibraryFamily::antenna ? builtInAntennaAlias(name) : builtInLineAlias(name));
}

// `defaults` is null for a family whose defaults file is not read.
std::string defaultAlias(const AliasFamily& family, const ProfileSection* defaults, std::string_view file) {
  std::string description = defaults ? defaults->get(file, "") : "";
  return isAlias(description) ? description : builtIn(family, file);
}

bool matches(std::string_view pattern, const std::string& file) {
  const std::string name = upperCase(file);
  const std::size_t unknown = pattern.find('?');
  const std::size_t behind = pattern.find_last_of('?') + 1;
  return characterCount(name) == pattern.size() && name.starts_with(pattern.substr(0, unknown)) &&
         name.ends_with(pattern.substr(behind));
}

}  // namespace

const AliasFamily& aliasFamily(LibraryFamily family) { return kFamilies[family == LibraryFamily::line ? 1 : 0]; }

const AliasFamily* aliasFamilyOf(std::string_view prefix) {
  const std::string letters = upperCase(leftCharacters(prefix, 3));
  const auto* found = std::find_if(std::begin(kFamilies), std::end(kFamilies),
                                   [&](const AliasFamily& family) { return family.prefix == letters; });
  return found == std::end(kFamilies) ? nullptr : found;
}

AliasStore::AliasStore(const AliasFamily& family, const std::string& folder)
    : family_(family), folder_(getLenTrim(folder) > 0 ? folder : family.folder()) {
  chain_.emplace_back(family.section, folderStore(family, folder_));
  for (const std::string& program : programFolders()) {
    chain_.emplace_back(family.section, setPathName(program, kGeneralStore));
  }
  if (family.family == LibraryFamily::antenna) defaults_ = readDefaults(family.section);
}

std::string AliasStore::description(std::string_view file) const {
  for (const ProfileSection& store : chain_) {
    if (std::string description = store.get(file, " "); isAlias(description)) return description;
  }
  std::string description = defaultAlias(family_, defaults_ ? &*defaults_ : nullptr, file);
  return isAlias(description) ? description : kNoAlias;
}

std::vector<LibraryEntry> AliasStore::files() const {
  const std::string folder = platform::current().findIgnoringCase(folder_);
  std::vector<LibraryEntry> entries;
  for (const std::string& file : platform::current().list(folder)) {
    if (!matches(family_.filePattern, file) || !platform::current().fileExists(setPathName(folder, file))) continue;
    entries.push_back({file, description(file)});
  }
  // Each new one moving up past those behind it in the order comes to the same.
  std::stable_sort(entries.begin(), entries.end(),
                   [](const LibraryEntry& a, const LibraryEntry& b) { return a.description < b.description; });
  return entries;
}

bool AliasStore::save(const std::vector<LibraryEntry>& entries) const {
  std::vector<IniEntry> keys;
  keys.reserve(entries.size());
  for (const LibraryEntry& entry : entries) keys.push_back({entry.file, entry.description});
  return setINI(family_.section, keys, setPathName(folder_, family_.store));
}

std::string libraryDescription(LibraryFamily family, const std::string& file) {
  return AliasStore(aliasFamily(family)).description(file);
}

std::vector<LibraryEntry> libraryFiles(LibraryFamily family) { return AliasStore(aliasFamily(family)).files(); }

std::string GetAliasDefault(const std::string& sSection, const std::string& sFile) {
  const std::string section = upperCase(sSection);
  for (const AliasFamily& family : kFamilies) {
    if (family.section != section) continue;
    if (family.family == LibraryFamily::line) return defaultAlias(family, nullptr, sFile);
    const ProfileSection defaults = readDefaults(section);
    return defaultAlias(family, &defaults, sFile);
  }
  return "";
}

}  // namespace vantrelix
