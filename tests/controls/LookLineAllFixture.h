// An all-lines control on its own installation folder with two lines.
#pragma once

#include <string>

#include "controls/LineFixture.h"
#include "controls/scLookLineALL.h"

namespace vantrelix::test {

class LookLineAllTest : public LineTest {
 protected:
  LookLineAllTest() {
    makeLines();
    control.NewAlert.listen([this] { ++alerts; });
  }
  void choose(int row) { control.cboLinesTX.userSelect(row); }
  void length(const std::string& text) {
    control.txtLen.userType(text);
    control.txtLen.userBlur();
  }

  scLookLineALL control;
  int alerts = 0;
};

}  // namespace vantrelix::test
