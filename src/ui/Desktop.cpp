#include "ui/Desktop.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "ui/ScriptedDesktop.h"

namespace vantrelix {

namespace {

Desktop*& inUse() {
  static Desktop* current = nullptr;
  return current;
}

bool isLetter(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

// "1.5" and "4 GHz" behind a point are parts of a name.
bool hasExtension(std::string_view name) {
  const std::size_t point = name.rfind('.');
  if (point == std::string_view::npos) return false;
  const std::string_view last = name.substr(point + 1);
  const auto fits = [](char character) { return isLetter(character) || (character >= '0' && character <= '9'); };
  return std::all_of(last.begin(), last.end(), fits) && std::any_of(last.begin(), last.end(), isLetter);
}

}  // namespace

std::string withExtension(const std::string& path, const std::string& extension) {
  const std::string name = path.substr(path.find_last_of("\\/") + 1);
  if (name.empty() || extension.empty() || hasExtension(name)) return path;
  return path + (name.back() == '.' ? "" : ".") + extension;
}

Desktop& desktop() {
  static ScriptedDesktop fallback;
  return inUse() ? *inUse() : fallback;
}

DesktopInUse::DesktopInUse(Desktop& desktop)
    : former_(std::exchange(inUse(), &desktop)),
      formerPort_(setMessagePort([&desktop](const Message& message) { return desktop.messageBox(message); })) {}

DesktopInUse::~DesktopInUse() {
  inUse() = former_;
  setMessagePort(std::move(formerPort_));
}

}  // namespace vantrelix
