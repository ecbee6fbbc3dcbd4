// The menu of the import filters.
#pragma once

#include <deque>
#include <string>

#include "import/ImportFormat.h"
#include "ui/Signal.h"
#include "ui/widgets.h"

namespace vantrelix {

// `mnuImport`: an item for each format, in the order of their table, with a separator (caption "-") on either side of
// the legacy formats.
class ImportMenu : public Menu {
 public:
  ImportMenu();

  const std::string& caption() const { return caption_; }
  // The user has clicked the item of a format.
  Signal<const ImportFormat&> chosen;

 private:
  void add(const std::string& name, const std::string& caption);

  std::string caption_ = "Import";
  std::deque<MenuItem> held_;
};

}  // namespace vantrelix
