// The platform in use, with regional settings and a clock of the test's own. Calls can be made to fail as well.
#pragma once

#include "platform/FaultPlatform.h"

namespace vantrelix::test {

class SettingsPlatform : public platform::FaultPlatform {
 public:
  SettingsPlatform() : FaultPlatform(platform::current()) {}

  platform::Regional characters;
  platform::DateTime time{2026, 11, 21, 16, 2, 48};

  platform::Regional regional() override { return characters; }
  platform::DateTime now() override { return time; }
};

}  // namespace vantrelix::test
