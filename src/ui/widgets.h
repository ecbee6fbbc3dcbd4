// The widget models that controls and forms are made of.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ui/Widget.h"

namespace vantrelix {

inline constexpr int kBackspaceKey = 8;

class TextBox : public Widget {
 public:
  using Widget::Widget;

  const std::string& text() const { return text_; }
  void setText(std::string text) { assign(text_, std::move(text)); }
  bool locked() const { return locked_; }
  void setLocked(bool locked) { assign(locked_, locked); }
  // Marks all text, as a box does when it gets the focus. A view that hears it selects what it shows.
  void setAllText() { selectAll(); }

  // A key is about to change the text; a listener that sets it to 0 swallows it. Code points; backspace stands for any
  // removal of text (delete, cut, undo).
  Signal<int&> keyPress;
  // The user changed the text.
  Signal<> change;
  // A mouse button (1 left, 2 right) was let go over the box, at a place in twips.
  Signal<int, int, int> mouseUp;
  Signal<> selectAll;

  // What the user does. A locked or disabled box takes nothing.
  // Whether the key passes; the view then makes the change and hands the text to userText.
  bool userKey(int key);
  void userText(const std::string& text);
  // A text pasted or dropped: what of it passes, character by character.
  std::string userPaste(std::string_view text);
  // A whole entry at once, key by key from an empty box: what a test or a script types.
  void userType(std::string_view text);
  void userMouseUp(int button, int x, int y) { mouseUp(button, x, y); }

 private:
  std::string text_;
  bool locked_ = false;
};

class DropDownList : public Widget {
 public:
  using Widget::Widget;

  const std::vector<std::string>& entries() const { return entries_; }
  void setEntries(std::vector<std::string> entries);
  void addItem(std::string entry);
  int listIndex() const { return listIndex_; }  // -1 where nothing is selected
  void setListIndex(int index);                 // out of range selects nothing
  std::string text() const;                     // of the selected entry
  bool locked() const { return locked_; }
  void setLocked(bool locked) { assign(locked_, locked); }

  Signal<> click;
  // Raises click, also for the entry that was selected already.
  void userSelect(int index);

 private:
  bool holds(int index) const;
  std::vector<std::string> entries_;
  int listIndex_ = -1;
  bool locked_ = false;
};

// Selects the first entry equal to text, both trimmed, folded where bFold is set; gives its index. Without a match the
// selection is cleared and -1 given.
int modSetComboBox(DropDownList& combo, std::string_view text, bool bFold);

class CheckBox : public Widget {
 public:
  using Widget::Widget;

  const std::string& caption() const { return caption_; }
  void setCaption(std::string caption) { assign(caption_, std::move(caption)); }
  int value() const { return value_; }  // 0 unchecked, 1 checked, 2 greyed
  void setValue(int value) { assign(value_, value); }

  Signal<> click;
  void userClick();

 private:
  std::string caption_;
  int value_ = 0;
};

class CommandButton : public Widget {
 public:
  using Widget::Widget;

  const std::string& caption() const { return caption_; }
  void setCaption(std::string caption) { assign(caption_, std::move(caption)); }

  Signal<> click;
  void userClick();

 private:
  std::string caption_;
};

class Label : public Widget {
 public:
  using Widget::Widget;

  const std::string& caption() const { return caption_; }
  void setCaption(std::string caption) { assign(caption_, std::move(caption)); }
  // Whether it is shown as something to be clicked.
  bool clickable() const { return clickable_; }
  void setClickable(bool clickable) { assign(clickable_, clickable); }

  // Raised for a clickable label alone.
  Signal<> click;
  void userClick();

 private:
  std::string caption_;
  bool clickable_ = false;
};

// A titled box round other widgets.
class Frame : public Widget {
 public:
  using Widget::Widget;

  const std::string& caption() const { return caption_; }
  void setCaption(std::string caption) { assign(caption_, std::move(caption)); }

 private:
  std::string caption_;
};

// A separating line; its geometry is the line's box.
class LineShape : public Widget {
 public:
  using Widget::Widget;
};

// A drawing surface with a user scale and a display list, so that a view can draw it sharp at any size.
class PictureBox : public Widget {
 public:
  using Widget::Widget;

  struct Line {
    double x1, y1, x2, y2;
    Color colour;
    friend bool operator==(const Line&, const Line&) = default;
  };
  // User coordinates of the left and top edge and the extent to the right and down; a negative height makes y grow
  // upward.
  struct Scale {
    double left = 0, top = 0, width = 1, height = 1;
    friend bool operator==(const Scale&, const Scale&) = default;
  };

  const Scale& scale() const { return scale_; }
  void setScale(const Scale& scale) { assign(scale_, scale); }
  const std::vector<Line>& lines() const { return lines_; }
  void Cls();
  void drawLine(double x1, double y1, double x2, double y2, Color colour);

 private:
  Scale scale_;
  std::vector<Line> lines_;
};

class Menu;

class MenuItem : public Widget {
 public:
  MenuItem(std::string name, std::string caption) : Widget(std::move(name)), caption_(std::move(caption)) {}

  const std::string& caption() const { return caption_; }
  void setCaption(std::string caption) { assign(caption_, std::move(caption)); }
  bool checked() const { return checked_; }
  void setChecked(bool checked) { assign(checked_, checked); }
  // The menu that the item opens; null for an item that is clicked.
  Menu* submenu() const { return submenu_; }
  void setSubmenu(Menu* menu) { assign(submenu_, menu); }

  Signal<> click;
  void userClick();

 private:
  std::string caption_;
  bool checked_ = false;
  Menu* submenu_ = nullptr;
};

// A menu, popped up or hung on a form's menu bar; refers to items that its owner holds.
class Menu : public Widget {
 public:
  using Widget::Widget;
  const std::vector<MenuItem*>& items() const { return items_; }
  void addItem(MenuItem& item) { items_.push_back(&item); }

 private:
  std::vector<MenuItem*> items_;
};

}  // namespace vantrelix
