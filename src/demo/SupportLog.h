// What the support log has gained.
#pragma once

#include <cstdint>
#include <string>

namespace vantrelix::demo {

class SupportLog {
 public:
  SupportLog();
  // Since the last call, or since this object was made. Blank where the log cannot be read.
  std::string news();

 private:
  std::uint64_t read_ = 0;  // bytes
};

}  // namespace vantrelix::demo
