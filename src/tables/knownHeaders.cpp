#include "tables/knownHeaders.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace vantrelix::dbf {

namespace {

constexpr std::size_t kMostKept = 16;

struct Known {
  platform::FileState state;
  Header header;
};

// The one used last stands first.
std::vector<Known>& headers() {
  static std::vector<Known> kept;
  return kept;
}

auto findFile(const platform::FileState& state) {
  return std::find_if(headers().begin(), headers().end(), [&](const Known& known) {
    return known.state.device == state.device && known.state.inode == state.inode;
  });
}

}  // namespace

std::optional<Header> knownHeader(const platform::FileState& state) {
  const auto found = findFile(state);
  if (found == headers().end() || found->state != state) return std::nullopt;
  std::rotate(headers().begin(), found, found + 1);
  return headers().front().header;
}

void keepHeader(const platform::FileState& state, const Header& header) {
  const auto found = findFile(state);
  if (found != headers().end()) headers().erase(found);
  if (headers().size() == kMostKept) headers().pop_back();
  headers().insert(headers().begin(), Known{state, header});
}

}  // namespace vantrelix::dbf
