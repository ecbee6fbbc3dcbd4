// A window of the library: a dialog or a form that stands on the desktop by itself. Its geometry is its place on the
// desktop and the size of its inside, in twips; what shows it keeps both true while the user moves and sizes it.
#pragma once

#include <string>
#include <vector>

#include "ui/UserControl.h"

namespace vantrelix {

class CommandButton;
class MenuItem;

class Form : public UserControl {
 public:
  enum class WindowState { normal, minimised, maximised };

  explicit Form(std::string name);

  const std::string& caption() const { return caption_; }
  void setCaption(std::string caption) { assign(caption_, std::move(caption)); }

  WindowState windowState() const { return windowState_; }
  void setWindowState(WindowState state) { assign(windowState_, state); }
  void moveTo(int left, int top);
  // Whether a place was ever given; until then the desktop chooses one over the window in use.
  bool placed() const { return placed_; }

  // The bar under the title: each item opens its submenu. Empty for a form without one.
  const std::vector<MenuItem*>& menuBar() const { return menuBar_; }

  // A form comes up hidden; desktop().showModal and showModeless show it. Hiding it ends a modal run.
  void hide() { setVisible(false); }

  // The button that Enter presses and the one that Escape presses; none where null.
  CommandButton* defaultButton() const { return defaultButton_; }
  CommandButton* cancelButton() const { return cancelButton_; }
  void setDefaultButton(CommandButton* button) { assign(defaultButton_, button); }
  void setCancelButton(CommandButton* button) { assign(cancelButton_, button); }

  // The widget that has, or is to have, the keyboard; null where none was named yet.
  Widget* activeWidget() const { return activeWidget_; }
  void setFocus(Widget& widget) { assign(activeWidget_, &widget); }

  // The window has come up on the screen, its size settled; raised once for each showing.
  Signal<> activated;
  void userActivated() { activated(); }
  // The user closed the window by its frame.
  void userClose();

 protected:
  // What closing by the frame does: the cancel button, where there is one that can be pressed, then hide.
  virtual void queryUnload();
  // The item is the form's own.
  void addToMenuBar(MenuItem& item) { menuBar_.push_back(&item); }

 private:
  std::string caption_;
  bool placed_ = false;
  WindowState windowState_ = WindowState::normal;
  CommandButton* defaultButton_ = nullptr;
  CommandButton* cancelButton_ = nullptr;
  Widget* activeWidget_ = nullptr;
  std::vector<MenuItem*> menuBar_;
};

}  // namespace vantrelix
