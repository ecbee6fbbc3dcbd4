// A list of lines of which the user chooses one.
#pragma once

#include <string>
#include <vector>

#include "ui/Widget.h"

namespace vantrelix {

class ListBox : public Widget {
 public:
  using Widget::Widget;

  const std::vector<std::string>& entries() const { return entries_; }
  // Selects nothing.
  void setEntries(std::vector<std::string> entries);
  void addItem(std::string entry);
  void clear() { setEntries({}); }
  int listIndex() const { return listIndex_; }  // -1 where nothing is selected
  void setListIndex(int index);                 // out of range selects nothing; raises no event
  std::string text() const;                     // of the selected entry
  // Whether its characters are all of one width, so that columns made of blanks line up.
  bool fixedPitch() const { return fixedPitch_; }
  void setFixedPitch(bool fixed) { assign(fixedPitch_, fixed); }

  // The user stands on an entry, by mouse or keyboard.
  Signal<> click;
  // The user wants just this entry: a double click.
  Signal<> doubleClick;
  void userSelect(int index);
  void userDoubleClick(int index);

 private:
  bool holds(int index) const { return index >= 0 && index < static_cast<int>(entries_.size()); }

  std::vector<std::string> entries_;
  int listIndex_ = -1;
  bool fixedPitch_ = false;
};

}  // namespace vantrelix
