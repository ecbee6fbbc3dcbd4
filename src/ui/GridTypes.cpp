#include "ui/GridTypes.h"

namespace vantrelix {

void SelBookmarks::add(const std::string& bookmark) {
  if (bookmark.empty() || !known_.insert(bookmark).second) return;
  items_.push_back(bookmark);
  tell();
}

void SelBookmarks::remove(int index) {
  known_.erase(item(index));
  items_.erase(items_.begin() + index);
  tell();
}

void SelBookmarks::assign(const std::vector<std::string>& bookmarks) {
  if (bookmarks == items_) return;
  replace(bookmarks);
  changed_();
}

void SelBookmarks::replace(std::vector<std::string> bookmarks) {
  items_.clear();
  known_.clear();
  for (std::string& bookmark : bookmarks) {
    if (!bookmark.empty() && known_.insert(bookmark).second) items_.push_back(std::move(bookmark));
  }
  ++revision_;
}

void SelBookmarks::tell() {
  ++revision_;
  changed_();
}

}  // namespace vantrelix
