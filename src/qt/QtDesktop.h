// The desktop of a Qt program: real dialogs, menus and event loop. Needs a QApplication.
#pragma once

#include "ui/Desktop.h"

namespace vantrelix::qt {

class QtDesktop : public Desktop {
 public:
  MsgAnswer messageBox(const Message& message) override;
  void doEvents() override;
  void popupMenu(Menu& menu) override;
};

}  // namespace vantrelix::qt
