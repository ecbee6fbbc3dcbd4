#include "platform/findIgnoringCase.h"

#include <algorithm>

#include "platform/RunTimeFailure.h"

namespace vantrelix::platform {

namespace {

// Lower case of the letters of ASCII and of U+00C0 to U+00DE, which are those of Windows-1252 names.
std::string folded(std::string_view name) {
  std::string result(name);
  bool behindC3 = false;
  for (char& character : result) {
    const auto byte = static_cast<unsigned char>(character);
    const bool letter = behindC3 ? byte >= 0x80U && byte <= 0x9EU && byte != 0x97U : byte >= 'A' && byte <= 'Z';
    if (letter) character = static_cast<char>(byte + 0x20U);
    behindC3 = byte == 0xC3U;
  }
  return result;
}

std::vector<std::string> candidates(Platform& platform, const std::string& folder, std::string_view name) {
  std::vector<std::string> found;
  const std::string wanted = folded(name);
  try {
    for (std::string& entry : platform.list(folder.empty() ? "." : folder)) {
      if (folded(entry) == wanted) found.push_back(std::move(entry));
    }
  } catch (const RunTimeFailure&) {
    // A folder that cannot be looked through holds nothing that could be found but what is named exactly.
    if (platform.state(folder + std::string(name))) found.emplace_back(name);
  }
  std::sort(found.begin(), found.end());
  // The name as given comes first.
  std::stable_partition(found.begin(), found.end(), [&](const std::string& entry) { return entry == name; });
  return found;
}

// The rest of the path below `folder`, which is blank or ends with a separator; blank where nothing is found.
std::string search(Platform& platform, const std::string& folder, std::string_view rest) {
  const std::size_t end = std::min(rest.find_first_of("\\/"), rest.size());
  const std::size_t next = std::min(rest.find_first_not_of("\\/", end), rest.size());
  const std::string_view name = rest.substr(0, end);
  const std::string separator = end < rest.size() ? "\\" : "";
  const bool fixed = name == "." || name == "..";
  const auto names = fixed ? std::vector{std::string(name)} : candidates(platform, folder, name);
  for (const std::string& entry : names) {
    const std::string found = folder + entry;
    if (next == rest.size()) return found + separator;
    std::string below = search(platform, found + separator, rest.substr(next));
    if (!below.empty()) return below;
  }
  return {};
}

}  // namespace

std::string findIgnoringCase(Platform& platform, const std::string& path) {
  if (path.empty() || platform.state(path)) return path;
  const std::size_t start = std::min(path.find_first_not_of("\\/"), path.size());
  const std::string found = search(platform, start == 0 ? "" : "\\", std::string_view(path).substr(start));
  return found.empty() ? path : found;
}

}  // namespace vantrelix::platform
