#include "tables/standingFile.h"

#include <algorithm>
#include <array>

namespace vantrelix {

namespace {

struct Standing {
  platform::FileState state;
  std::int64_t since = 0;
};

// Where the file is remembered, or is to be.
Standing& placeOf(const platform::FileState& state) {
  static std::array<Standing, 16> known;
  static std::size_t next = 0;
  const auto found =
      std::find_if(known.begin(), known.end(), [&](const Standing& file) { return isSameFile(file.state, state); });
  return found != known.end() ? *found : known[next++ % known.size()];
}

}  // namespace

std::int64_t stoodFor(const platform::FileState& state) {
  const std::int64_t now = platform::current().steadyMilliseconds();
  Standing& standing = placeOf(state);
  if (standing.state != state) standing = {state, now};
  return now - standing.since;
}

void forgetStanding(const platform::FileState& state) { placeOf(state) = {}; }

}  // namespace vantrelix
