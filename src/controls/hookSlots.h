// The places of a control for hooks. A place is read as `slot()` and put as `slot(hook)`, like every property here; the
// hooks are shared with the host, which may hold one in several places.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "hooks/IOHooksDBF.h"
#include "hooks/IOHooksINI.h"

namespace vantrelix {

using IOHooksDBFPtr = std::shared_ptr<IOHooksDBF>;
using IOHooksINIPtr = std::shared_ptr<IOHooksINI>;

// Holds what was put; null where nothing was.
class DBFSlot {
 public:
  const IOHooksDBFPtr& operator()() const { return hook_; }
  void operator()(IOHooksDBFPtr hook) { hook_ = std::move(hook); }

 private:
  IOHooksDBFPtr hook_;
};

// The master INI hook: file and section for all values.
class INIMaster {
 public:
  // Makes an empty hook where there is none.
  const IOHooksINIPtr& operator()();
  // Putting null first empties the places that `onNull` knows.
  void operator()(IOHooksINIPtr hook);

  bool isSet() const { return hook_ != nullptr; }
  std::function<void()> onNull;

 private:
  IOHooksINIPtr hook_;
};

// The INI hook of one value.
class INISlot {
 public:
  // Once, before the first use: `variable` is the key of a hook that is made here.
  void bind(INIMaster& master, const char* variable) {
    master_ = &master;
    variable_ = variable;
  }

  // Where nothing was put, makes a hook of the master's file, section "Facility Data" and the value's own key. A
  // master is not made for it.
  const IOHooksINIPtr& operator()();
  void operator()(IOHooksINIPtr hook) { hook_ = std::move(hook); }

 private:
  INIMaster* master_ = nullptr;
  const char* variable_ = "";
  IOHooksINIPtr hook_;
};

}  // namespace vantrelix
