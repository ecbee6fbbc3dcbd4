#include "foundation/hostProgram.h"

#include <array>
#include <optional>
#include <string_view>

#include "foundation/characters.h"
#include "foundation/extract.h"
#include "platform/Platform.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {

namespace {

constexpr std::string_view kVersionName = "FileVersion";
constexpr std::size_t kVersionLimit = 64000;  // bytes looked through
constexpr std::size_t kVersionGap = 16;       // bytes that may stand between the name and its value

std::optional<HostProgram>& givenHost() {
  static std::optional<HostProgram> host;
  return host;
}

std::string& givenFolder() {
  static std::string folder;
  return folder;
}

std::string startOfFile(const std::string& path) {
  const auto file = platform::current().open(path, platform::OpenMode::read);
  std::string bytes(kVersionLimit, '\0');
  bytes.resize(file->readAt(0, bytes.data(), bytes.size()));
  return bytes;
}

// Version resources are UTF-16; the characters sought are ASCII, so every other byte of them is zero.
std::string widened(std::string_view text) {
  std::string wide;
  for (const char character : text) (wide += character) += '\0';
  return wide;
}

// The digits, points, commas and blanks at the front, each `step` bytes apart.
std::string versionText(std::string_view bytes, std::size_t step) {
  std::string version;
  for (std::size_t at = 0; at < bytes.size(); at += step) {
    const char character = bytes[at];
    if (!isDigit(character) && character != '.' && character != ',' && character != ' ') break;
    version += character;
  }
  version.erase(version.find_last_not_of(" .,") + 1);
  return version;
}

// The name also stands in programs that look for it; only where a number follows is it the version.
std::string findVersion(std::string_view bytes, std::string_view name, std::size_t step) {
  constexpr std::string_view kBetween("\0 \t=:\"", 6);
  for (std::size_t at = bytes.find(name); at != std::string_view::npos; at = bytes.find(name, at + 1)) {
    const std::string_view behind = bytes.substr(at + name.size());
    const std::size_t start = behind.find_first_not_of(kBetween);
    if (start < kVersionGap && isDigit(behind[start])) return versionText(behind.substr(start), step);
  }
  return {};
}

// The numbers of a version such as "3.1.0.27" or "3, 1, 0, 27".
std::array<int, 4> versionNumbers(std::string_view version) {
  std::array<int, 4> numbers{};
  std::size_t index = 0;
  for (const char character : version) {
    if (isDigit(character) && numbers[index] < 100000) {
      numbers[index] = numbers[index] * 10 + (character - '0');
    } else if ((character == '.' || character == ',') && ++index == numbers.size()) {
      break;
    }
  }
  return numbers;
}

HostProgram runningProgram() {
  const std::string path = platform::current().programPath();
  const std::array<int, 4> numbers = versionNumbers(modFileVerString(path));
  // The third number of a file version counts builds; where there is a fourth it is the revision.
  return {ExtractBaseName(path), numbers[0], numbers[1], numbers[3] != 0 ? numbers[3] : numbers[2]};
}

}  // namespace

HostProgram hostProgram() {
  if (givenHost()) return *givenHost();
  static const HostProgram running = runningProgram();
  return running;
}

void setHostProgram(const HostProgram& host) { givenHost() = host; }

std::string hostFolder() {
  return givenFolder().empty() ? ExtractFolderNoSlash(platform::current().programPath()) : givenFolder();
}

void setHostFolder(const std::string& folder) {
  givenFolder() = platform::current().fromMachine(folder);
  while (givenFolder().ends_with('\\')) givenFolder().pop_back();
}

std::string modFileVerString(const std::string& path) {
  try {
    const std::string bytes = startOfFile(path);
    const std::string wide = findVersion(bytes, widened(kVersionName), 2);
    return wide.empty() ? findVersion(bytes, kVersionName, 1) : wide;
  } catch (const RunTimeFailure&) {
    return {};  // a program that cannot be read tells no version
  }
}

}  // namespace vantrelix
