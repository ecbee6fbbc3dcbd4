#include "foundation/suitePaths.h"

#include <optional>

#include "foundation/dateTime.h"
#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/getINI.h"
#include "foundation/hostProgram.h"
#include "foundation/text.h"
#include "platform/Platform.h"

namespace vantrelix {

namespace {

using platform::current;

constexpr int kRoots[] = {0, 1, 2};  // local machine, current user, classes root
constexpr const char* kPrograms[] = {"qvzor32.exe", "qvmerlin.exe",   "qvkestrel.exe",
                                     "qvheron.exe", "qvzor6menu.exe", "qvosprey.exe"};
constexpr const char* kAppPaths = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\";
constexpr std::size_t kFirstBuffer = 250;
constexpr std::size_t kLargestBuffer = 2500;
constexpr const char* kHostLog = "QVTechSup.TXT";
constexpr std::size_t kGainUnitField = 5;

// What is found once and kept.
struct Kept {
  std::string defaultsIni;
  std::string suiteIni;
  std::string systemPath;
  std::string workPath;
  std::string antennasPath;
  std::string linesPath;
  std::string antGainUnits;
};

struct State {
  std::string givenFolder;
  std::string login;
  Kept kept;
};

State& state() {
  static State instance;
  return instance;
}

struct RegistryHit {
  std::string program;
  std::string value;
};

std::string registryKey(const std::string& program) { return kAppPaths + program; }

std::optional<RegistryHit> firstHit(std::size_t limit) {
  for (const int root : kRoots) {
    for (const char* program : kPrograms) {
      if (auto value = current().registryValue(root, registryKey(program), limit)) return RegistryHit{program, *value};
    }
  }
  return std::nullopt;
}

// With a buffer that grows as long as the value fills it.
std::optional<RegistryHit> searchRegistry() {
  std::optional<RegistryHit> hit;
  for (std::size_t limit = kFirstBuffer; limit <= kLargestBuffer; limit += kFirstBuffer) {
    hit = firstHit(limit);
    if (!hit || hit->value.size() != limit) break;
  }
  return hit;
}

void appendToHostLog(const std::string& text) {
  const std::string record = generalDate(current().now()) + ":  " + text + kLineBreak + " " + kLineBreak;
  try {
    const auto file = current().open(setPathName(hostFolder(), kHostLog), platform::OpenMode::append);
    file->append(record.data(), record.size());
  } catch (const RunTimeFailure&) {
    // Nothing here fails loudly: what needs the folder fails later, with a text of its own.
  }
}

std::string folderOfHit(const RegistryHit& hit) {
  const bool namesProgram = upperCase(hit.value).find(upperCase(hit.program)) != std::string::npos;
  std::string folder = namesProgram ? ExtractFolder(hit.value) : hit.value;
  if (getLenTrim(folder) == 0) {
    appendToHostLog("Empty return in getQuorvendalDirectoryAny" + std::string(kLineBreak) +
                    "Registry Key: " + registryKey(hit.program));
  }
  return folder;
}

// Why the fall-back file gave no folder.
RunTimeFailure fallBackFailure(const std::string& ini) {
  const std::string name = displayPath(ini);
  if (!getFileExistLEN(ini, true)) return {failure::fileNotFound, "File not found: " + name};
  return {0, "No QuorvendalDirectory in section CONFIG of " + name};
}

std::string fallBackFile() { return setPathName(hostFolder(), "QVRegistry.INI"); }

std::string quietFallBackFolder() {
  std::string folder;
  getINI("CONFIG", "QuorvendalDirectory", fallBackFile(), "", folder);
  return trim(folder);
}

std::string fallBackFolder() {
  std::string folder = quietFallBackFolder();
  if (!folder.empty()) return folder;
  const std::string ini = fallBackFile();
  const RunTimeFailure failure = fallBackFailure(ini);
  std::string text = "No Registry Entry found; try INI file";
  text = AddALine(text, "Unable to get Quorvendal Directory from Windows Registry");
  text = AddALine(text, "Error in getQuorvendalDirectoryAny");
  text = AddALine(text, "Error " + std::to_string(failure.number()) + ": " + failure.description());
  text = AddALine(text, "Registry Key: " + registryKey(*std::rbegin(kPrograms)));
  appendToHostLog(text);
  return {};
}

// The library's form; of two separators at the end one goes, and again.
std::string normalised(const std::string& folder) {
  std::string result = current().fromMachine(folder);
  while (result.ends_with("\\\\")) result.pop_back();
  return result;
}

// A name in the installation folder; relative where there is none, as a path that begins with a backslash would lead to
// the root of the file system.
std::string inSuite(const std::string& name) {
  const std::string folder = getSuiteDir();
  return getLenTrim(folder) == 0 ? name : setPathName(folder, name);
}

std::string withoutEndSlash(std::string path) {
  while (path.size() > 1 && path.ends_with('\\')) path.pop_back();
  return path;
}

// The folder that a key of the suite INI names, else the one of that name in the installation folder.
std::string configuredFolder(const char* key, const char* name) {
  std::string folder;
  getINI("CONFIG", key, getSuiteINI(), "", folder);
  folder = current().fromMachine(trim(folder));
  return current().findIgnoringCase(withoutEndSlash(folder.empty() ? inSuite(name) : folder));
}

// A bare name stands for a folder of an installation that was not found; making it would litter the current folder.
void makeExist(const std::string& folder) {
  if (folder.find('\\') != std::string::npos) getPathExist(folder, false, true);
}

const std::string& configured(std::string& kept, const char* key, const char* name) {
  if (kept.empty()) kept = configuredFolder(key, name);
  makeExist(kept);
  return kept;
}

const std::string& fixed(std::string& kept, const char* name) {
  if (!kept.empty()) return kept;
  kept = current().findIgnoringCase(inSuite(name));
  makeExist(kept);
  return kept;
}

// A login such as "DOMAIN\ann" must not lead into another folder.
std::string forFileName(const std::string& login) {
  const std::string illegal = GetIllegalChars();
  std::string name = login;
  for (char& character : name) {
    if (illegal.find(character) != std::string::npos) character = '_';
  }
  return name;
}

std::string defaultsName() {
  const std::string login = trim(state().login);
  const std::string name = "QVDEFAULTS.INI";
  return login.empty() ? name : ExtractBaseName(name) + "_" + forFileName(login) + ".INI";
}

bool isGainUnit(const std::string& unit) { return unit == "dBd" || unit == "dBi" || unit == "REL"; }

}  // namespace

std::string getSuiteDir() {
  if (!state().givenFolder.empty()) return state().givenFolder;
  const auto hit = searchRegistry();
  return normalised(hit ? folderOfHit(*hit) : fallBackFolder());
}

std::string findSuiteDir() {
  if (!state().givenFolder.empty()) return state().givenFolder;
  const auto hit = searchRegistry();
  return normalised(hit ? folderOfHit(*hit) : quietFallBackFolder());
}

void setSuiteDir(const std::string& folder) {
  resetSuitePaths();
  state().givenFolder = normalised(trim(folder));
}

std::string getDefaultsINI() {
  std::string& kept = state().kept.defaultsIni;
  if (kept.empty()) kept = inSuite(defaultsName());
  return kept;
}

std::string getSuiteINI() {
  std::string& kept = state().kept.suiteIni;
  if (kept.empty()) kept = inSuite("QVZOR32.INI");
  return kept;
}

std::string getSystemPath() { return configured(state().kept.systemPath, "SYSTEM_PATH", "SYSTEM"); }
std::string getWorkPath() { return configured(state().kept.workPath, "WORK PATH", "WORK"); }
std::string getAntennasPath() { return fixed(state().kept.antennasPath, "ANTENNAS"); }
std::string getLinesPath() { return fixed(state().kept.linesPath, "LINES"); }

std::string getAntGainUnits() {
  std::string& field = state().kept.antGainUnits;
  if (!isGainUnit(trim(field))) {
    field = leftCharacters(getINIStr("System Units", "Antenna Gain Units", "dBd"), kGainUnitField);
  }
  return trim(field);
}

void setUserLogin(const std::string& login) {
  state().login = login;
  state().kept.defaultsIni.clear();
}

const std::string& userLogin() { return state().login; }

std::string supportAddress() {
  std::string address;
  getINI("CONFIG", "SupportAddress", getSuiteINI(), "your ZOR supplier", address);
  return address;
}

void resetSuitePaths() {
  state().kept = Kept{};
  resetTechSupFile();
}

}  // namespace vantrelix
