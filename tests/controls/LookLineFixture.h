// A line lookup control on its own installation folder, and what it told its host.
#pragma once

#include <string>
#include <utility>

#include "controls/LineFixture.h"
#include "controls/scLookLine.h"

namespace vantrelix::test {

class LookLineTest : public LineTest {
 protected:
  LookLineTest() {
    control.NewAlert.listen([this] { events += "alert "; });
    control.ChangeLine.listen([this] { events += "line "; });
  }
  std::string heard() { return std::exchange(events, ""); }
  static void enter(TextBox& box, const std::string& text) {
    box.userType(text);
    box.userBlur();
  }
  // The line at 100 MHz and 100 ft, where the loss is the table's own figure.
  void show(const char* id = "L1") {
    control.sValueFile("LMST0001");
    control.sValueID(id);
    control.sValueLen("100");
    control.sValueFreq(100);
  }

  scLookLine control;
  std::string events;
};

}  // namespace vantrelix::test
