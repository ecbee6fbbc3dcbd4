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

// The platform of this process.
inline MemoryPlatform& memory() {
  static MemoryPlatform platform;
  static const platform::Substitute inUse(platform);
  return platform;
}

// With nothing in it but the input's files.
inline MemoryPlatform& memoryWith(const std::string& table, const std::string& memo) {
  MemoryPlatform& platform = memory();
  setSuiteDir("/m");
  platform.clear();
  platform.put(kTable, table);
  platform.put("/m/T.FPT", memo);
  platform.put("/m/T.DBT", memo);
  return platform;
}

// Leaves the table of an input and gives its memo file.
inline std::string cutMemo(std::string& input) {
  const auto byteAt = [&](std::size_t at) { return static_cast<std::size_t>(static_cast<unsigned char>(input[at])); };
  const std::size_t size = input.size();
  const std::size_t memo = size < 2 ? 0 : byteAt(size - 2) | byteAt(size - 1) << 8;
  if (memo == 0 || memo + 2 > size) return {};
  std::string file = input.substr(size - 2 - memo, memo);
  input.resize(size - 2 - memo);
  return file;
}

inline MemoryPlatform& memoryWith(const std::uint8_t* data, std::size_t size) {
  std::string table(reinterpret_cast<const char*>(data), size);
  const std::string memo = cutMemo(table);
  return memoryWith(table, memo);
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
