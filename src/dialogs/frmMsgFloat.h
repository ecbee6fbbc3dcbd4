// A note that says what the program is at, and stays on the screen while it works. It never takes the keyboard, and
// only its owner takes it away: by unload, or with the object.
#pragma once

#include <string>

#include "ui/Form.h"
#include "ui/Timer.h"
#include "ui/widgets.h"

namespace vantrelix {

class frmMsgFloat : public Form {
 public:
  frmMsgFloat();

  Label Label1{"Label1"};
  // Grows the text by " ." at each tick while it runs; runs, at one tick a second, unless the owner disables it. It
  // ticks only in the turns that the owner gives the event loop.
  Timer Timer1{"Timer1"};

  // Shows the note, or gives a note that is shown a new text and caption.
  void show(const std::string& text, const std::string& caption);
  void unload() { hide(); }

 protected:
  // The work goes on, and so does its note.
  void queryUnload() override {}
};

}  // namespace vantrelix
