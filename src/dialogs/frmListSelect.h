// A list to choose one line from. The caller fills List1, whose characters are of one width so that columns line up,
// may select the line that is current, and runs choose(). The window comes back where the user left it, at first as
// large as its lines ask for and centred on the screen.
#pragma once

#include <string>

#include "ui/Form.h"
#include "ui/ListBox.h"
#include "ui/widgets.h"

namespace vantrelix {

class frmListSelect : public Form {
 public:
  frmListSelect();

  Label Label1{"Label1"};  // what the caller has to say of the line the user stands on
  ListBox List1{"List1"};
  CommandButton cmdContinue{"cmdContinue"};  // Enter; to be pressed while a line is selected
  CommandButton cmdCancel{"cmdCancel"};      // Escape, and the window's frame

  // The user stands on another line.
  Signal<> ListClick;

  // Shows the window and returns once the user has left it: whether with a choice, by "Continue" or a double click.
  bool choose();
  bool chosen() const { return chosen_; }
  // The line that was chosen; blank without a choice.
  std::string choice() const { return chosen_ ? List1.text() : std::string(); }

 private:
  void followList() { cmdContinue.setEnabled(List1.listIndex() >= 0); }
  void leave(bool withChoice);

  bool chosen_ = false;
};

}  // namespace vantrelix
