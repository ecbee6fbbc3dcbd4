// A sign on a table that it is being edited.
#pragma once

#include <memory>
#include <string>

namespace vantrelix {

// As long as it lives, an opening of the table that denies writing fails with 3211, in this process and in others, once
// it has waited for a writer to go; all other openings, reading and writing go on.
class EditingMark {
 public:
  // The path of the table file, in the library's form. Fails as an opening does, and with 3211 where another denies
  // writing.
  explicit EditingMark(const std::string& path);
  ~EditingMark();
  EditingMark(const EditingMark&) = delete;
  EditingMark& operator=(const EditingMark&) = delete;

 private:
  struct Held;
  std::unique_ptr<Held> held_;
};

}  // namespace vantrelix
