#include "controls/scLookAnt.h"

#include "controls/antennaValues.h"

namespace vantrelix {

scLookAnt::scLookAnt(std::string name) : LibraryBoxControl(std::move(name), "scLookAnt", kAntennaTexts) {
  bindValues();
  addWidgets();
  setCaptions();
  setColours();
  setToolTips();
  layOut();
  nMinWidth_ = static_cast<std::int16_t>(width());
  cboUnit.setEntries({"dBd", "dBi", "REL"});
  cboPol.setEntries({"None", "Horizontal", "Vertical", "Circular", "Helical", "Other"});
  SetTabOrder();
  listenToKeys();
  listenToLeaving();
  listenToClicks();
  guardRegionalSettings();
}

scLookAnt::~scLookAnt() { DisconnectDBF(); }

}  // namespace vantrelix
