#include "platform/posixTime.h"

#ifndef _WIN32

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string>

namespace vantrelix::platform::posix {

namespace {

DateTime convert(std::time_t seconds) {
  std::tm local{};
  ::tzset();
  ::localtime_r(&seconds, &local);
  return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
          local.tm_hour,        local.tm_min,     std::min(local.tm_sec, 59)};
}

struct Converted {
  std::time_t seconds;
  std::optional<std::string> zone;  // of the environment
  DateTime time;
};

}  // namespace

// Each conversion asks for the state of the machine's zone file; a program that writes asks many times in a second.
DateTime localTime(std::time_t seconds) {
  thread_local std::optional<Converted> last;
  const char* const set = std::getenv("TZ");
  const std::optional<std::string> zone = set != nullptr ? std::optional<std::string>(set) : std::nullopt;
  if (!last || last->seconds != seconds || last->zone != zone) last = {seconds, zone, convert(seconds)};
  return last->time;
}

}  // namespace vantrelix::platform::posix

#endif
