// A suite of its own and a scripted desktop of one 1920 x 1080 screen at 15 twips to the pixel: 28800 x 16200 twips.
#pragma once

#include <gtest/gtest.h>
#include <string>

#include "foundation/getINI.h"
#include "support/TempSuite.h"
#include "ui/ScriptedDesktop.h"

namespace vantrelix::test {

class PlacementFixture : public testing::Test {
 protected:
  std::string stored(const std::string& key, const std::string& section = "CONFIG") const {
    return getINIStr(section, key, "nothing");
  }
  void store(const std::string& key, const std::string& value, const std::string& section = "CONFIG") const {
    setINI(section, key, suite.file("QVDEFAULTS.INI"), value);
  }
  std::string defaultsFile() const {
    return suite.folder().exists("QVDEFAULTS.INI") ? suite.folder().read("QVDEFAULTS.INI") : "";
  }
  // A second screen of the same size, at a place in pixels.
  void addScreen(int left, int top = 0) {
    screen.screens.monitors.push_back({{left, top, 1920, 1080}, {left, top, 1920, 1080}});
  }

  TempSuite suite;
  ScriptedDesktop screen;
  DesktopInUse use{screen};
};

// A form of that size at that place, in twips.
struct PlacedForm : Form {
  explicit PlacedForm(Rectangle place = {0, 0, 6000, 3000}, std::string formName = "frmTest")
      : Form(std::move(formName)) {
    setGeometry(place);
  }
};

}  // namespace vantrelix::test
