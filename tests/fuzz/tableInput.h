// A table and its memo file out of one input of the fuzzer, laid into memory. The last two bytes of the input tell how
// many before them are the memo file, lowest byte first.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "foundation/suitePaths.h"
#include "platform/RunTimeFailure.h"
#include "support/MemoryPlatform.h"

namespace vantrelix::test {

inline constexpr const char* kTable = "/m/T.DBF";

// The platform of this process, with nothing in it but the input's files.
inline MemoryPlatform& memoryWith(const std::string& table, const std::string& memo) {
  static MemoryPlatform platform;
  static const platform::Substitute inUse(platform);
  setSuiteDir("/m");
  platform.clear();
  platform.put(kTable, table);
  platform.put("/m/T.FPT", memo);
  platform.put("/m/T.DBT", memo);
  return platform;
}

inline MemoryPlatform& memoryWith(const std::uint8_t* data, std::size_t size) {
  std::size_t memo = size < 2 ? 0 : data[size - 2] | static_cast<std::size_t>(data[size - 1]) << 8;
  if (memo + 2 > size) memo = 0;
  const std::size_t table = memo == 0 ? size : size - 2 - memo;
  const auto* bytes = reinterpret_cast<const char*>(data);
  return memoryWith(std::string(bytes, table), std::string(bytes + table, memo));
}

// Runs the work, in which a failure of the library's own kind is no finding. Whether it ended without one.
template <class Work>
bool attempt(const Work& work) {
  try {
    work();
    return true;
  } catch (const RunTimeFailure&) {
    return false;
  }
}

}  // namespace vantrelix::test
