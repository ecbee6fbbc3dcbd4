// A lookup control on an installation folder of its own, with its events counted and a library to read from.
#pragma once

#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "antenna/hdWrtAntDBF.h"
#include "controls/scLookAnt.h"
#include "foundation/getINI.h"
#include "foundation/suitePaths.h"
#include "support/TempSuite.h"
#include "tables/installSuite.h"
#include "ui/ScriptedDesktop.h"

namespace vantrelix::test {

class LookAntTest : public ::testing::Test {
 protected:
  LookAntTest() {
    control.NewAlert.listen([this] { events += "alert "; });
    control.ChangeAntenna.listen([this] { events += "antenna "; });
    control.ChangeMounting.listen([this] { events += "mounting "; });
    control.ChangeSize.listen([this] { events += "size "; });
  }

  // The events since the last call, in order.
  std::string heard() { return std::exchange(events, ""); }
  static void setDefault(const char* section, const char* key, const char* value) {
    setINI(section, key, getDefaultsINI(), value);
  }
  static std::string defaultUnit() { return getINIStr("Antenna Lookup", "Units", "(none)"); }
  // What a user does in a box: enters it, types, leaves it.
  static void enter(TextBox& box, const std::string& text) {
    box.userType(text);
    box.userBlur();
  }

  TempSuite suite;
  ScriptedDesktop screen;
  DesktopInUse use{screen};
  scLookAnt control;
  std::string events;
};

struct Cut {
  std::vector<double> angles;
  std::vector<double> values;
};

// With the library AMST0001: its antennas have the IDs T00010000001 and so on, in the order in which they are added.
class LookAntLibraryTest : public LookAntTest {
 protected:
  LookAntLibraryTest() { installSuite(suite.path()); }

  static void add(const std::string& description, double gain, const std::string& unit, const Cut& azimuth,
                  const Cut& elevation) {
    const std::string error =
        HDwrtAntDBF("T0001", description, gain, unit, static_cast<std::int16_t>(azimuth.angles.size()), azimuth.angles,
                    azimuth.values, static_cast<std::int16_t>(elevation.angles.size()), elevation.angles,
                    elevation.values, 824, 896);
    ASSERT_EQ(error, "");
  }
  // A panel of 12.5 dBi, the first antenna.
  static void addPanel() {
    add("Panel", 12.5, "dBi", {{0, 90, 180, 270}, {12.5, 4, -20, 4}}, {{-90, 0, 90}, {-12, 12.5, -15}});
  }
  void name(const char* id = "T00010000001") {
    control.sValueFile("AMST0001");
    control.sValueID(id);
  }
  void show(const char* id = "T00010000001") {
    name(id);
    control.GetAntPat();
  }
};

}  // namespace vantrelix::test
