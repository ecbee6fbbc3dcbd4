#include "demo/SupportLog.h"

#include <exception>

#include "foundation/errHand.h"
#include "platform/Platform.h"

namespace vantrelix::demo {

namespace {

std::string wholeLog() {
  try {
    const std::string path = GetTechSupFile();
    return platform::current().fileExists(path) ? platform::readWholeFile(path) : std::string();
  } catch (const std::exception&) {
    return "";
  }
}

}  // namespace

SupportLog::SupportLog() { news(); }

std::string SupportLog::news() {
  const std::string log = wholeLog();
  // A shorter log is a new one.
  std::string gained = log.substr(log.size() < read_ ? 0 : static_cast<std::size_t>(read_));
  read_ = log.size();
  return gained;
}

}  // namespace vantrelix::demo
