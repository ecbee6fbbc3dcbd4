#include "editor/selectedAntenna.h"

#include "foundation/messages.h"
#include "foundation/text.h"

namespace vantrelix {

bool requireSelection(const frmHDAntEditor& form, const std::string& advice) {
  if (form.selectedRow() >= 0) return true;
  showInformation("No Antenna Selected",
                  "You must select an antenna by clicking the selection button to the left of the row to highlight the "
                  "antenna." +
                      std::string(kBlankLine) + advice);
  return false;
}

}  // namespace vantrelix
