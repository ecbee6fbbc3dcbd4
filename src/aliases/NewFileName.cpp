#include "aliases/NewFileName.h"

#include <unordered_set>

#include "foundation/text.h"
#include "platform/Platform.h"

namespace vantrelix {

namespace {

std::string counted(int count, int digits) {
  std::string number = std::to_string(count);
  const auto length = static_cast<std::size_t>(digits);
  return number.size() < length ? std::string(length - number.size(), '0') + number : number;
}

}  // namespace

std::string NewFileName(const std::string& sPrefix, const std::string& sPath, const std::string& sExt, int nDigits) {
  std::unordered_set<std::string> taken;
  for (const std::string& file : platform::current().list(platform::current().findIgnoringCase(sPath))) {
    taken.insert(upperCase(file));
  }
  const std::string stem = sPrefix + "X";
  const std::string ending = "." + sExt;
  for (int count = 1;; ++count) {
    std::string name = stem;
    name += counted(count, nDigits);
    if (!taken.contains(upperCase(name + ending))) return name;
  }
}

}  // namespace vantrelix
