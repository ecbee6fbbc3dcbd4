#include "controls/scLookAnt.h"

#include "foundation/regional.h"
#include "foundation/text.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {

namespace {

// A log that cannot be written must not keep a host's form from coming up.
void guardRegionalSettings() {
  try {
    GetRegional(true);
  } catch (const RunTimeFailure&) {
    return;
  }
}

}  // namespace

scLookAnt::scLookAnt(std::string name)
    : LookupControl(
          std::move(name), "scLookAnt",
          {"Error in Antenna Lookup SaveDBF", "Error in Antenna Lookup SaveINI ", "Error in Antenna Save function"}) {
  bindValues();
  addWidgets();
  setCaptions();
  setColours();
  setToolTips();
  layOut();
  nMinWidth_ = static_cast<std::int16_t>(width());
  cboUnit.setEntries({"dBd", "dBi", "REL"});
  cboPol.setEntries({"None", "Horizontal", "Vertical", "Circular", "Helical", "Other"});
  cmdLook.setVisible(false);
  SetTabOrder();
  listenToKeys();
  listenToLeaving();
  listenToClicks();
  guardRegionalSettings();
}

scLookAnt::~scLookAnt() { DisconnectDBF(); }

void scLookAnt::setLibraryLook(LibraryLook look) {
  libraryLook_ = std::move(look);
  cmdLook.setVisible(libraryLook_ != nullptr);
}

}  // namespace vantrelix
