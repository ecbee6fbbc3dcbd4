// A lookup control that shows its library file and its ID in boxes of their own, and a unit.
#pragma once

#include <functional>
#include <string>

#include "controls/LookupControl.h"

namespace vantrelix {

class LibraryBoxControl : public LookupControl {
 public:
  // Nobody types into the boxes of file and ID: both are locked and disabled.
  TextBox txtFile{"txtFile"}, txtID{"txtID"};
  DropDownList cboUnit{"cboUnit"};
  // For developers: hidden, it steps through the table of TestInit.
  CommandButton Command1{"Command1"};
  Label lblDesc{"lblDesc"};

 protected:
  LibraryBoxControl(std::string name, const char* className, FacilityRecord::Texts texts);

  const std::string& heldFile() const override { return txtFile.text(); }
  void holdFile(std::string text) override { txtFile.setText(std::move(text)); }
  const std::string& heldID() const override { return txtID.text(); }
  void holdID(std::string text) override { txtID.setText(std::move(text)); }
  void lock(bool locked) override;

  // Keys of a box that holds a number; those that pass set bDirty and run `typed`.
  void takeNumbers(TextBox& box, std::function<void()> typed = {});

 private:
  void closeBoxes();
  void nextRow();
};

}  // namespace vantrelix
