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

scLookAnt::scLookAnt(std::string name) : UserControl(std::move(name)) {
  bindValues();
  addWidgets();
  setCaptions();
  setColours();
  setToolTips();
  layOut();
  nMinWidth_ = static_cast<std::int16_t>(width());
  cboUnit.setEntries({"dBd", "dBi", "REL"});
  cboPol.setEntries({"None", "Horizontal", "Vertical", "Circular", "Helical", "Other"});
  for (TextBox* box : {&txtFile, &txtID}) {
    box->setLocked(true);
    box->setEnabled(false);
  }
  cmdLook.setVisible(false);
  Command1.setVisible(false);
  SetTabOrder();
  listenToKeys();
  listenToLeaving();
  listenToClicks();
  guardRegionalSettings();
}

scLookAnt::~scLookAnt() { DisconnectDBF(); }

void scLookAnt::raise(const Signal<>& event) const {
  if (!bLoading_) event();
}

void scLookAnt::Alerts(const std::string& text) {
  if (getLenTrim(text) == 0) {
    sAlerts_.clear();
    return;
  }
  sAlerts_ = AddALine(sAlerts_, text);
  raise(NewAlert);
}

void scLookAnt::setLibraryLook(LibraryLook look) {
  libraryLook_ = std::move(look);
  cmdLook.setVisible(libraryLook_ != nullptr);
}

}  // namespace vantrelix
