// A sign on a table that it is being edited.
#pragma once

#include <memory>
#include <string>

namespace vantrelix {

// As long as it lives, an opening of the table that denies writing, and another mark, fail with 3211, in this process
// and in others, once they have waited for a writer to go; all other openings, reading and writing go on.
class EditingMark {
 public:
  // The path of the table file, in the library's form. Fails as an opening that denies writing does: 3011 no such file,
  // 3051 cannot be opened, or not for writing, or held exclusively by another, 3211 marked already or another denies
  // writing.
  explicit EditingMark(const std::string& path);
  // The same; null in place of 3051 and 3211.
  static std::unique_ptr<EditingMark> unlessInUse(const std::string& path);
  ~EditingMark();
  EditingMark(const EditingMark&) = delete;
  EditingMark& operator=(const EditingMark&) = delete;

 private:
  struct Held;
  std::unique_ptr<Held> held_;
};

}  // namespace vantrelix
