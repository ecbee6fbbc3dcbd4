#include "ui/ListBox.h"

namespace vantrelix {

void ListBox::setEntries(std::vector<std::string> entries) {
  entries_ = std::move(entries);
  listIndex_ = -1;
  changed();
}

void ListBox::addItem(std::string entry) {
  entries_.push_back(std::move(entry));
  changed();
}

void ListBox::setListIndex(int index) { assign(listIndex_, holds(index) ? index : -1); }

std::string ListBox::text() const {
  return holds(listIndex_) ? entries_[static_cast<std::size_t>(listIndex_)] : std::string();
}

void ListBox::userSelect(int index) {
  if (!reachable() || !holds(index)) return;
  setListIndex(index);
  click();
}

void ListBox::userDoubleClick(int index) {
  if (!reachable() || !holds(index)) return;
  setListIndex(index);
  doubleClick();
}

}  // namespace vantrelix
