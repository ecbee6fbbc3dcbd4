#include "tables/knownHeaders.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace vantrelix::dbf {

namespace {

constexpr std::size_t kMostKept = 16;

struct Known {
  std::string path;
  KnownFile file;
};

using AllKnown = std::vector<Known>;

// The one used last stands first.
AllKnown& allKnown() {
  static AllKnown kept;
  return kept;
}

const KnownFile& used(AllKnown::iterator known) {
  std::rotate(allKnown().begin(), known, known + 1);
  return allKnown().front().file;
}

}  // namespace

std::optional<KnownFile> knownFile(const std::string& path) {
  const auto found =
      std::find_if(allKnown().begin(), allKnown().end(), [&](const Known& known) { return known.path == path; });
  if (found == allKnown().end()) return std::nullopt;
  return used(found);
}

SharedHeader knownHeader(const platform::FileState& state) {
  const auto found =
      std::find_if(allKnown().begin(), allKnown().end(), [&](const Known& known) { return known.file.state == state; });
  return found == allKnown().end() ? nullptr : used(found).header;
}

void keepHeader(const std::string& path, const KnownFile& file) {
  AllKnown& all = allKnown();
  std::erase_if(all,
                [&](const Known& known) { return known.path == path || isSameFile(known.file.state, file.state); });
  if (all.size() == kMostKept) all.pop_back();
  all.insert(all.begin(), Known{path, file});
}

}  // namespace vantrelix::dbf
