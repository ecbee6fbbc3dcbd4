#include "editor/selectedAntenna.h"

#include "foundation/messages.h"
#include "foundation/text.h"

namespace vantrelix {

namespace {

bool tellUnless(bool selected, const std::string& advice) {
  if (selected) return true;
  showInformation("No Antenna Selected",
                  "You must select an antenna by clicking the selection button to the left of the row to highlight the "
                  "antenna." +
                      std::string(kBlankLine) + advice);
  return false;
}

}  // namespace

bool requireSelection(const frmHDAntEditor& form, const std::string& advice) {
  return tellUnless(form.selectedRow() >= 0, advice);
}

bool requireAnySelection(const frmHDAntEditor& form, const std::string& advice) {
  const DataGrid& list = form.TDBGridAMS;
  return tellUnless(list.selBookmarks().count() > 0 && !list.bookmark().empty(), advice);
}

}  // namespace vantrelix
