#include "ui/Desktop.h"

#include <utility>

#include "ui/ScriptedDesktop.h"

namespace vantrelix {

namespace {

Desktop*& inUse() {
  static Desktop* current = nullptr;
  return current;
}

}  // namespace

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
