// The port to the platform's user interface. A front end brings a real one; ScriptedDesktop serves tests and the
// command line.
#pragma once

#include <string>

#include "foundation/messages.h"
#include "ui/Form.h"
#include "ui/MonitorPort.h"
#include "ui/widgets.h"

namespace vantrelix {

class Desktop {
 public:
  virtual ~Desktop() = default;

  virtual MsgAnswer messageBox(const Message& message) = 0;
  // Gives the event loop one turn.
  virtual void doEvents() = 0;
  // The same, while what the user does waits for a later turn.
  virtual void doEventsWithoutInput() = 0;
  // Shows a menu at the pointer and runs the click of what is chosen.
  void popupMenu(Menu& menu) { popupMenu(menu, nullptr); }
  // The same below a widget that is shown, the first item that can be chosen highlighted; at the pointer where the
  // widget is null or not shown.
  virtual void popupMenu(Menu& menu, const Widget* below) = 0;

  // Shows a form over the window in use and returns once it is hidden. The form is its caller's.
  virtual void showModal(Form& form) = 0;
  // Shows a form and goes on. Where it may not take the keyboard, the window in use keeps it. The form's end, or its
  // hiding, takes the window away.
  enum class Activation { take, leave };
  virtual void showModeless(Form& form, Activation activation) = 0;
  // Asks for a line of text: blank where the user cancels.
  virtual std::string inputBox(const std::string& prompt, const std::string& title, const std::string& text) = 0;
  // Asks for files that exist, one or more.
  struct OpenFiles {
    std::string title;
    std::string folder;   // where the dialog begins; blank: where the platform likes
    std::string filter;   // descriptions and their patterns in turn, a NUL between any two
    int filterIndex = 1;  // the description chosen at first, counted from 1
  };
  // The path of one file, or a folder and the names in it with a NUL between any two, in the library's form. Blank
  // where the user cancels.
  virtual std::string openFiles(const OpenFiles& request) = 0;
  // Asks for the name of a file to write.
  struct SaveFile {
    std::string title;
    std::string folder;     // as in OpenFiles
    std::string name;       // proposed
    std::string filter;     // as in OpenFiles
    std::string extension;  // for a name without one; blank where a name needs none
    int filterIndex = 1;
  };
  // The path, in the library's form. Blank where the user cancels, or does not want a file that exists replaced.
  virtual std::string saveFile(const SaveFile& request) = 0;

  // The text other programs copied, and one for them; its lines end with CR LF.
  virtual std::string clipboardText() = 0;
  virtual void setClipboardText(const std::string& text) = 0;

  virtual MonitorPort& monitors() = 0;
};

// The path with an extension behind a name that has none: no letters and digits, a letter among them, behind its last
// point.
std::string withExtension(const std::string& path, const std::string& extension);

// The desktop in use. Without one set, a ScriptedDesktop that answers each message by its default button.
Desktop& desktop();

// Puts a desktop in use for its own lifetime, the message port of the lower layers included.
class DesktopInUse {
 public:
  explicit DesktopInUse(Desktop& desktop);
  ~DesktopInUse();
  DesktopInUse(const DesktopInUse&) = delete;
  DesktopInUse& operator=(const DesktopInUse&) = delete;

 private:
  Desktop* former_;
  MessagePort formerPort_;
};

}  // namespace vantrelix
