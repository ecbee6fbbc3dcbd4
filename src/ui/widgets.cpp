#include "ui/widgets.h"

#include "foundation/text.h"

namespace vantrelix {

void DropDownList::setEntries(std::vector<std::string> entries) {
  if (entries == entries_ && listIndex_ == -1) return;
  entries_ = std::move(entries);
  listIndex_ = -1;
  changed();
}

void DropDownList::addItem(std::string entry) {
  entries_.push_back(std::move(entry));
  changed();
}

void DropDownList::setListIndex(int index) { assign(listIndex_, holds(index) ? index : -1); }

std::string DropDownList::text() const {
  return holds(listIndex_) ? entries_[static_cast<std::size_t>(listIndex_)] : std::string();
}

bool DropDownList::holds(int index) const { return index >= 0 && static_cast<std::size_t>(index) < entries_.size(); }

void DropDownList::userSelect(int index) {
  if (locked_ || !reachable() || !holds(index)) return;
  setListIndex(index);
  click();
}

int modSetComboBox(DropDownList& combo, std::string_view text, bool bFold) {
  const auto form = [bFold](std::string_view raw) { return bFold ? upperCase(trim(raw)) : trim(raw); };
  const std::string wanted = form(text);
  int index = 0;
  for (const std::string& entry : combo.entries()) {
    if (form(entry) == wanted) {
      combo.setListIndex(index);
      return index;
    }
    ++index;
  }
  combo.setListIndex(-1);
  return -1;
}

void CheckBox::userClick() {
  if (!reachable()) return;
  setValue(value_ == 0 ? 1 : 0);
  click();
}

void CommandButton::userClick() {
  if (reachable()) click();
}

void Label::userClick() {
  if (clickable_ && reachable()) click();
}

void MenuItem::userClick() {
  if (reachable()) click();
}

void PictureBox::Cls() {
  if (lines_.empty()) return;
  lines_.clear();
  changed();
}

void PictureBox::drawLine(double x1, double y1, double x2, double y2, Color colour) {
  lines_.push_back({x1, y1, x2, y2, colour});
  changed();
}

}  // namespace vantrelix
