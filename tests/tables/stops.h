// Work that is stopped at one of its calls to the system, in each way that a machine has.
#pragma once

#include <ostream>

#include "platform/FaultPlatform.h"

namespace vantrelix::test {

struct Stop {
  const char* name;
  void (*at)(platform::FaultPlatform& faults, int call);
  bool countsAll = false;  // calls of every kind, not those alone that change anything
  bool ends = false;       // the program with it: nobody takes back what came to the file unconfirmed

  friend void PrintTo(const Stop& stop, std::ostream* out) { *out << stop.name; }
};

inline constexpr Stop kStops[] = {
    {"failure", [](platform::FaultPlatform& faults, int call) { faults.failAt(call, failure::deviceIO); }},
    {"failure of any call",
     [](platform::FaultPlatform& faults, int call) { faults.failAnyAt(call, failure::deviceIO); }, true},
    {"full disk", [](platform::FaultPlatform& faults, int call) { faults.fillDiskAt(call); }},
    {"crash", [](platform::FaultPlatform& faults, int call) { faults.crashAt(call); }, false, true},
    {"torn crash", [](platform::FaultPlatform& faults, int call) { faults.crashAt(call, true); }, false, true},
};

struct StoppedRun {
  bool confirmed = false;  // the work said that it was done
  int calls = 0;           // that it came to
};

// Does `work`, which tells whether it was done or throws, on a machine that stops it so at that call.
template <class Work>
StoppedRun runStopped(const Stop& stop, int call, const Work& work) {
  platform::FaultPlatform faults(platform::current());
  const platform::Substitute substitute(faults);
  stop.at(faults, call);
  StoppedRun run;
  try {
    run.confirmed = work();
  } catch (const RunTimeFailure&) {
    // Not confirmed.
  }
  run.calls = stop.countsAll ? faults.anyCalls() : faults.calls();
  return run;
}

}  // namespace vantrelix::test
