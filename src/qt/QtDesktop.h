// The desktop of a Qt program: real dialogs, menus and event loop. Needs a QApplication.
#pragma once

#include "qt/QtMonitors.h"
#include "ui/Desktop.h"

namespace vantrelix::qt {

class QtDesktop : public Desktop {
 public:
  MsgAnswer messageBox(const Message& message) override;
  void doEvents() override;
  void doEventsWithoutInput() override;
  using Desktop::popupMenu;
  void popupMenu(Menu& menu, const Widget* below) override;
  void showModal(Form& form) override;
  void showModeless(Form& form, Activation activation) override;
  std::string inputBox(const std::string& prompt, const std::string& title, const std::string& text) override;
  std::string openFiles(const OpenFiles& request) override;
  std::string saveFile(const SaveFile& request) override;
  std::string clipboardText() override;
  void setClipboardText(const std::string& text) override;
  MonitorPort& monitors() override;

 private:
  QtMonitors monitors_;
};

}  // namespace vantrelix::qt
